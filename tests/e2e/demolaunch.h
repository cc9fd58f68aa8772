#pragma once

#include "demo/demosurvey.h"
#include "support/boxdriver.h"
#include "workbench/hostaccess.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QTemporaryDir>

/// The built plug-in, launched from the workbench's host on a fresh demo survey on disk. The plug-in's classes are
/// its own: tests know its widgets by their names only. Ends as the workbench does: plug-ins first, then the host.
struct DemoLaunch
{
    DemoLaunch()
        : survey(folder.filePath("Demo"))
        , host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
    {
        const QString problem = demo::makeDemoSurvey(survey);
        if (!problem.isEmpty())
            qFatal("%s", qPrintable(problem));
        QMenu *menu = window.menuBar()->addMenu("&Utilities");
        window.show();
        host.setWindow(&window, menu);
        host.setSurvey(survey);
        loader.loadAll({QStringLiteral(LORVA_BINARY_DIR "/lib/lorva/plugins")});
        if (menu->actions().isEmpty())
            qFatal("The plug-in was not loaded.");
        menu->actions().last()->trigger();
    }

    QTemporaryDir folder;
    QString survey;
    BoxDriver boxes;
    QMainWindow window;
    workbench::WorkbenchHost host;
    workbench::PluginLoader loader;
};
