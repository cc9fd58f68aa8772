// Draws the windows of the workbench and of the plug-in into pictures, for machines without a display and for the
// documents: lorva-pictures [--documents] [--dark] SURVEY_DIR PICTURE_DIR

#include "base/usersettings.h"
#include "demo/demosurvey.h"
#include "programs/decodedarguments.h"
#include "programs/paperpictures.h"
#include "programs/picturefolder.h"
#include "programs/pluginpictures.h"
#include "programs/pluginwindow.h"
#include "programs/unattended.h"
#include "programs/workbenchpictures.h"
#include "workbench/filechooser.h"
#include "workbench/legiblestyle.h"
#include "workbench/messagespanel.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr int sectionWells = 20;

QPalette darkPalette()
{
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::AlternateBase, QColor(53, 53, 53));
    return dark;
}

void printMissingPlugin(const workbench::PluginLoader &loader, const QStringList &folders)
{
    std::fprintf(stderr, "No plug-in was started from %s.\n", qUtf8Printable(folders.join(QStringLiteral(", "))));
    for (const workbench::PluginReport &report : loader.reports())
        if (!report.error.isEmpty())
            std::fprintf(stderr, "%s: %s\n", qUtf8Printable(report.file), qUtf8Printable(report.error));
}

void printMessages(const workbench::WorkbenchWindow &window)
{
    const auto *panel = window.findChild<workbench::MessagesPanel *>();
    for (const QString &message : panel->messages())
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

/// Opens the plug-in's window on the survey of the workbench; null when it opens none.
QMainWindow *openPlugin(const workbench::WorkbenchWindow &window)
{
    programs::pluginAction(window.utilitiesMenu())->trigger();
    QMainWindow *main = programs::PluginWindow::below(&window);
    if (!main) {
        std::fprintf(stderr, "The plug-in has opened no main window.\n");
        return nullptr;
    }
    main->showNormal();
    main->resize(1560, 900);
    // The screen without a display is small: the docks grew with the window.
    main->resizeDocks({main->findChild<QDockWidget *>(QStringLiteral("propertiesDock"))}, {220}, Qt::Horizontal);
    return main;
}

void drawPlugin(QMainWindow *window, const QString &survey, programs::PictureFolder *pictures)
{
    const programs::PluginWindow plugin(window);
    drawDisplays(plugin, pictures);
    drawTreeMenu(plugin, pictures);
    drawExchange(plugin, survey, pictures);
    drawCorrelations(plugin, pictures);
    drawWellData(plugin, survey, pictures);
    drawTemplateEditors(plugin, pictures);
}

/// What the documents show in both palettes, in the dark one.
void drawDark(QMainWindow *window, const QString &survey, programs::PictureFolder *pictures)
{
    const programs::PluginWindow plugin(window);
    const QPalette light = QApplication::palette();
    QApplication::setPalette(darkPalette());
    pictures->setNameEnd(QStringLiteral("-dark"));
    drawTemplateEditors(plugin, pictures);
    drawWellData(plugin, survey, pictures);
    pictures->setNameEnd(QString());
    QApplication::setPalette(light);
}

/// A correlation of many wells: a survey of its own.
void drawSection(workbench::WorkbenchWindow &window, programs::PictureFolder *pictures)
{
    const QTemporaryDir folder;
    const QString survey = folder.filePath(QStringLiteral("Section"));
    const QString problem = demo::makeSectionSurvey(survey, sectionWells);
    QMainWindow *main = problem.isEmpty() && window.openSurvey(survey) ? openPlugin(window) : nullptr;
    if (main)
        drawWideCorrelation(programs::PluginWindow(main), pictures);
    else
        pictures->save(nullptr, QStringLiteral("correlation-20wells"));
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments = programs::decodedArguments(argc, argv);
    const bool isDark = arguments.removeAll(QStringLiteral("--dark")) > 0;
    const bool isForDocuments = arguments.removeAll(QStringLiteral("--documents")) > 0;
    if (arguments.size() != 2 || arguments.first().startsWith(QLatin1Char('-'))) {
        std::fprintf(stderr, "Usage: lorva-pictures [--documents] [--dark] SURVEY_DIR PICTURE_DIR\n");
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true); // the user's own settings stay out of it
    const QTemporaryDir settings;
    base::keepSettingsIn(settings.path());
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("LORVA"));
    QApplication::setApplicationName(QStringLiteral("pictures"));
    QApplication::setStyle(new workbench::LegibleStyle); // as the workbench has it
    if (isDark)
        QApplication::setPalette(darkPalette());

    const QString survey = QDir::current().absoluteFilePath(arguments.first());
    programs::PictureFolder pictures(arguments.last(), QDir::cleanPath(survey));
    const unattended::BoxCloser closer;
    unattended::PrintingAsker asker;
    workbench::WorkbenchHost host(workbench::WorkbenchHost::installedDataFolder());
    workbench::PluginLoader loader;
    workbench::WorkbenchWindow window(host, asker, workbench::dialogFileChooser());
    host.setWindow(&window, window.utilitiesMenu(), window.wellsMenu());
    window.resize(1200, 760);
    window.show();
    const QStringList folders = workbench::PluginLoader::searchFolders({});
    loader.loadAll(folders);
    window.setPluginReports(loader.reports());
    if (!window.openSurvey(survey))
        return 1;
    printMessages(window);
    pictures.save(&window, QStringLiteral("workbench"));
    drawManagedWells(host, asker, &pictures);
    drawNewWells(survey, asker, &pictures);
    drawTops(host, asker, &pictures);
    if (!programs::pluginAction(window.utilitiesMenu())) {
        printMissingPlugin(loader, folders);
        return 1;
    }
    QMainWindow *main = openPlugin(window);
    pictures.save(programs::childWindow(&window, "Launcher"), QStringLiteral("launcher"));
    if (!main)
        return 1;
    drawPlugin(main, survey, &pictures);
    drawPaper(host, asker, &pictures);
    if (isForDocuments) {
        drawDark(main, survey, &pictures);
        drawSection(window, &pictures);
    }
    return pictures.isComplete() ? 0 : 1;
}
