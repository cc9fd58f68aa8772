#pragma once

#include <QStringList>

struct CorrelationProperties;
struct Project;
struct ProjectData;

/// Names of what a survey and its project hold.
namespace batch {

class Session;

/// What follows "has no well NAME": the one of \a names that differs by its letters' case, or all where they are few.
QString insteadOf(const QString &name, const QStringList &names);

/// "WELL" or "WELL:TEMPLATE"; names of both may hold a ":" themselves.
struct DrawnWell
{
    QString wellName;
    QString wellKey;
    QString templateName; ///< "Default" where none is given
    QString problem; ///< why there is no such well, a sentence; empty when there is
};
DrawnWell drawnWell(Session &session, const QString &word);

/// The templates with which the well may be drawn, by name.
QStringList templatesOf(const Project &project, const QString &wellName);
QStringList correlationNames(const Project &project);
/// The markers of the correlation's wells, in the order in which they come.
QStringList markersOf(const ProjectData &data, const CorrelationProperties &properties);

/// The mnemonics that the headers of LAS files name.
QStringList curvesOf(const QStringList &files);

} // namespace batch
