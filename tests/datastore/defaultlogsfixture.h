#pragma once

#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/literaldefaultlogs.h"
#include "datastore/projectdata.h"
#include "support/files.h"
#include "support/memoryhost.h"
#include "support/scriptedasker.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

struct Log
{
    QString name;
    QString unit;
};

/// A project folder with empty sub-folders, a host in memory and what works on both.
struct Survey
{
    Survey()
        : data(host, asker)
    {
        host.survey = root.path();
        data.project.groupNames = curveGroupNames();
        for (const char *name : {"Correlations", "CurveGroups", "DefaultLogs", "Templates/Global"})
            QDir().mkpath(root.filePath(QString("WLC/") + name));
        openProject(host, &data.project);
        CurveGroupTable::instance().clear();
    }

    QString addWell(const QString &name, const QVector<Log> &logs)
    {
        host::WellHeader header;
        header.name = name;
        const QString key = host.addWell(header);
        for (const Log &log : logs)
            host.find(key)->logs.append({log.name, log.unit, {1}, {2}});
        return key;
    }

    void run()
    {
        data.catalogue.build();
        runDefaultLogsPass(data);
    }

    // As a new process finds it: nothing of the table in memory.
    void runInNewProcess()
    {
        CurveGroupTable::instance().clear();
        run();
    }

    QString path(const QString &file) const { return data.project.projectFolder + '/' + file; }
    QByteArray defaults(const QString &well) const { return files::read(path("DefaultLogs/" + well + ".txt")); }
    QByteArray group(const QString &name) const { return files::read(path("CurveGroups/" + name + ".txt")); }
    QByteArray table() const { return group("CurveGroupTable"); }

    QTemporaryDir root;
    MemoryHost host;
    ScriptedAsker asker;
    ProjectData data;
};
