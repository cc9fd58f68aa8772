#pragma once

#include "datastore/calibrationfile.h"
#include "programs/batch/command.h"

struct CorrelationProperties;
struct Project;
struct ProjectData;

/// Names of what a survey and its project hold.
namespace batch {

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

/// What messages call the calibration points of a well and group.
QString pointsOfWell(const QString &wellName, const QString &group);
/// The calibration points; why they cannot be read goes to the failures.
CalibrationRecord readPoints(Session &session, const QString &wellName, const QString &group, QStringList *failures);

/// What the shell calls a kind of names; empty where it is no kind of names.
QString shellWordOf(WordKind kind);
/// All of them.
QStringList shellWords();
/// What the shell offers for a word of the kind: \a current is what of the word is there, \a operands those of the command,
/// \a well that of --well.
QStringList namesToOffer(Session &session, const QString &shellWord, const QString &current,
                         const QStringList &operands, const QString &well);

} // namespace batch
