#pragma once

#include "datastore/projectdata.h"
#include "support/memoryhost.h"
#include "support/scriptedasker.h"

#include <QTemporaryDir>

#include <memory>

/// A survey folder with an opened and seeded project, a host in memory and the data of a launch on them.
class ProjectFixture
{
public:
    ProjectFixture();

    /// Adds a well with logs (name, unit "gapi", three samples 1, 2, 3 at 100, 200, 300) and markers to the host.
    QString addWell(const QString &name, const QStringList &logs = {}, const QStringList &markers = {});
    /// Reads host and project folder as a launch does.
    void open();
    QString path(const QString &fragment) const { return survey.path() + QStringLiteral("/WLC") + fragment; }
    /// Makes a template folder with one track; an empty well name means a global one.
    void addTemplate(const QString &name, const QString &wellName = {});
    void addCorrelation(const QString &name);

    QTemporaryDir survey;
    MemoryHost host;
    ScriptedAsker asker;
    std::unique_ptr<ProjectData> launch;
};
