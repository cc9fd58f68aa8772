// Draws the windows of the workbench and of the plug-in into pictures, for machines without a display:
// lorva-pictures SURVEY_DIR PICTURE_DIR

#include "base/atomicfile.h"
#include "programs/unattended.h"
#include "workbench/filechooser.h"
#include "workbench/messagespanel.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QMenu>
#include <QPixmap>
#include <QStandardPaths>
#include <QTreeWidget>

#include <cstdio>

namespace {

/// Saves pictures of widgets into one folder and tells where they are, or which could not be made and why.
class PictureFolder
{
public:
    explicit PictureFolder(const QString &path)
        : m_path(QDir(path).absolutePath())
    {
        QDir().mkpath(m_path);
    }

    void save(QWidget *widget, const QString &name)
    {
        const QString file = m_path + QLatin1Char('/') + name;
        const QString problem = widget ? write(widget, file) : QStringLiteral("there is no such window");
        if (problem.isEmpty())
            std::printf("%s\n", qUtf8Printable(file));
        else
            std::fprintf(stderr, "Cannot draw %s: %s.\n", qUtf8Printable(file), qUtf8Printable(problem));
        m_isComplete = m_isComplete && problem.isEmpty();
    }

    /// Whether every picture was made.
    bool isComplete() const { return m_isComplete; }

private:
    static QString write(QWidget *widget, const QString &file)
    {
        QCoreApplication::processEvents();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        if (!widget->grab().save(&buffer, "PNG"))
            return QStringLiteral("the picture cannot be encoded");
        return base::writeFileAtomically(file, bytes).error;
    }

    QString m_path;
    bool m_isComplete = true;
};

QWidget *childWindow(const QWidget *parent, const char *className)
{
    for (QWidget *widget : parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (widget->inherits(className))
            return widget;
    return nullptr;
}

void expandFirstWell(QWidget *mainWindow)
{
    auto *tree = mainWindow->findChild<QTreeWidget *>(QStringLiteral("ProjectTreeWidget"));
    if (!tree || tree->topLevelItemCount() == 0 || tree->topLevelItem(0)->childCount() == 0)
        return;
    QTreeWidgetItem *well = tree->topLevelItem(0)->child(0);
    well->setExpanded(true);
    for (int i = 0; i < well->childCount(); ++i)
        well->child(i)->setExpanded(true);
}

// The entry that a plug-in added; a menu without one holds a disabled line that says so.
QAction *pluginAction(const QMenu *utilities)
{
    QAction *last = utilities->isEmpty() ? nullptr : utilities->actions().last();
    return last && last->isEnabled() ? last : nullptr;
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

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "Usage: lorva-pictures SURVEY_DIR PICTURE_DIR\n");
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true); // the user's own settings stay out of it
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("LORVA"));
    QApplication::setApplicationName(QStringLiteral("pictures"));

    PictureFolder pictures(QFile::decodeName(argv[2]));
    const unattended::BoxCloser closer;
    unattended::PrintingAsker asker;
    workbench::WorkbenchHost host(workbench::WorkbenchHost::installedDataFolder());
    workbench::PluginLoader loader;
    workbench::WorkbenchWindow window(host, asker, workbench::dialogFileChooser());
    host.setWindow(&window, window.utilitiesMenu());
    window.resize(1200, 760);
    window.show();
    const QStringList folders = workbench::PluginLoader::searchFolders({});
    loader.loadAll(folders);
    window.setPluginReports(loader.reports());
    if (!window.openSurvey(QDir::current().absoluteFilePath(QFile::decodeName(argv[1]))))
        return 1;
    printMessages(window);
    pictures.save(&window, QStringLiteral("workbench.png"));
    QAction *action = pluginAction(window.utilitiesMenu());
    if (!action) {
        printMissingPlugin(loader, folders);
        return 1;
    }
    action->trigger();
    pictures.save(childWindow(&window, "Launcher"), QStringLiteral("launcher.png"));
    QWidget *mainWindow = childWindow(&window, "MainWindow");
    if (mainWindow) {
        mainWindow->showNormal();
        mainWindow->resize(1400, 900);
        expandFirstWell(mainWindow);
    }
    pictures.save(mainWindow, QStringLiteral("mainwindow.png"));
    return pictures.isComplete() ? 0 : 1;
}
