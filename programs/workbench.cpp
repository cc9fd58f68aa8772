// The program: reads the command line, puts the parts together and runs.

#include "base/messageboxasker.h"
#include "demo/demosurvey.h"
#include "programs/decodedarguments.h"
#include "programs/guidedtour.h"
#include "programs/lashandover.h"
#include "programs/surveypreparation.h"
#include "programs/wellrenaming.h"
#include "workbench/commandline.h"
#include "workbench/legiblestyle.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTimer>

#include <clocale>
#include <cstdio>

namespace {

constexpr int usageExitCode = 2;

void print(std::FILE *stream, const QString &text)
{
    std::fprintf(stream, "%s\n", qUtf8Printable(text));
}

int makeDemo(const QString &folder, int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString path = QDir::cleanPath(QDir::current().absoluteFilePath(folder));
    const QString error = demo::makeDemoSurvey(path);
    print(error.isEmpty() ? stdout : stderr, error.isEmpty() ? path : error);
    return error.isEmpty() ? 0 : 1;
}

int run(const workbench::CommandLine &line, int argc, char **argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setStyle(new workbench::LegibleStyle);
    QApplication::setOrganizationName(QStringLiteral("LORVA"));
    QApplication::setApplicationName(QStringLiteral("workbench"));
    const bool asksForFilesOnly = line.surveyFolder.isEmpty() && !line.showsTour && line.pluginFolders.isEmpty();
    if (asksForFilesOnly && programs::handOverLasFiles(line.lasFiles)) {
        print(stdout, QStringLiteral("The workbench that runs already takes the files."));
        return 0;
    }

    // Gone in the opposite order: the window with all windows of plug-ins, the plug-ins' code, the host they use.
    workbench::WorkbenchHost host(workbench::WorkbenchHost::installedDataFolder());
    QApplication::setWindowIcon(host.icon(QStringLiteral("LORVA_wlc.png")));
    base::MessageBoxAsker asker;
    workbench::PluginLoader loader;
    workbench::WorkbenchWindow window(host, asker, workbench::dialogFileChooser());
    window.setSurveyPreparation(programs::prepareSurvey);
    host.store().setWellRenamed([&host](const QString &oldName, const QString &newName, const QStringList &others) {
        const QStringList problems = programs::followRenamedWell(host.surveyDirectory(), oldName, newName, others);
        if (!problems.isEmpty())
            host.showError(problems.join(u'\n'));
    });
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (!data.isEmpty())
        window.setDemoSurvey(data + QStringLiteral("/lorva/surveys/Demo"), demo::makeDemoSurvey);
    host.setWindow(&window, window.utilitiesMenu(), window.wellsMenu());
    // A plug-in may have windows without a parent; they do not keep a program alive that has no window of its own.
    QObject::connect(&window, &workbench::WorkbenchWindow::closed, &application, &QApplication::quit,
                     Qt::QueuedConnection);
    window.show();
    loader.loadAll(workbench::PluginLoader::searchFolders(line.pluginFolders));
    window.setPluginReports(loader.reports());
    window.openAtStart(line.surveyFolder);
    // When the window is on the screen.
    if (line.showsTour)
        QTimer::singleShot(0, &window, [&window] { programs::showTour(window); });
    if (!line.lasFiles.isEmpty())
        QTimer::singleShot(0, &window, [&window, &line] { window.openLasFiles(line.lasFiles); });
    const programs::LasReceiver receiver(window, [&window](const QStringList &files) { window.openLasFiles(files); });
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    std::setlocale(LC_ALL, ""); // file names on the command line are in the user's encoding
    const workbench::CommandLine line = workbench::parseCommandLine(programs::decodedArguments(argc, argv));
    switch (line.action) {
    case workbench::CommandLine::Action::ShowHelp:
        print(stdout, workbench::helpText());
        return 0;
    case workbench::CommandLine::Action::ShowVersion:
        print(stdout, workbench::versionText());
        return 0;
    case workbench::CommandLine::Action::Refuse:
        print(stderr, QStringLiteral("lorva-workbench: ") + line.error);
        print(stderr, workbench::usageLine());
        return usageExitCode;
    case workbench::CommandLine::Action::MakeDemo:
        return makeDemo(line.demoFolder, argc, argv);
    case workbench::CommandLine::Action::Run:
        break;
    }
    return run(line, argc, argv);
}
