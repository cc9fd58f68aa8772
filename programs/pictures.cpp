// Draws the windows of the workbench and of the plug-in into pictures, for machines without a display:
// lorva-pictures SURVEY_DIR PICTURE_DIR

#include "base/atomicfile.h"
#include "base/messageboxasker.h"
#include "workbench/filechooser.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QMenu>
#include <QPixmap>
#include <QSettings>
#include <QStandardPaths>
#include <QTreeWidget>

#include <cstdio>

namespace {

/// Saves pictures of widgets into one folder and tells where they are.
class PictureFolder
{
public:
    explicit PictureFolder(const QString &path)
        : m_path(QDir(path).absolutePath())
    {
        QDir().mkpath(m_path);
    }

    bool save(QWidget *widget, const QString &name) const
    {
        if (!widget)
            return false;
        QCoreApplication::processEvents();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        const QString file = m_path + QLatin1Char('/') + name;
        if (!widget->grab().save(&buffer, "PNG"))
            return false;
        const base::WriteResult result = base::writeFileAtomically(file, bytes);
        if (result.ok())
            std::printf("%s\n", qUtf8Printable(file));
        else
            std::fprintf(stderr, "Cannot write %s: %s\n", qUtf8Printable(file), qUtf8Printable(result.error));
        return result.ok();
    }

private:
    QString m_path;
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

    const PictureFolder pictures(QString::fromLocal8Bit(argv[2]));
    workbench::WorkbenchHost host(workbench::WorkbenchHost::installedDataFolder());
    base::MessageBoxAsker asker;
    workbench::PluginLoader loader;
    workbench::WorkbenchWindow window(host, asker, workbench::dialogFileChooser());
    host.setWindow(&window, window.utilitiesMenu());
    window.resize(1200, 760);
    window.show();
    loader.loadAll(workbench::PluginLoader::searchFolders({}));
    window.setPluginReports(loader.reports());
    if (!window.openSurvey(QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[1]))))
        return 1;
    bool isComplete = pictures.save(&window, QStringLiteral("workbench.png"));
    if (window.utilitiesMenu()->actions().isEmpty()) {
        std::fprintf(stderr, "The plug-in was not loaded.\n");
        return 1;
    }
    window.utilitiesMenu()->actions().last()->trigger();
    isComplete = pictures.save(childWindow(&window, "Launcher"), QStringLiteral("launcher.png")) && isComplete;
    if (QWidget *mainWindow = childWindow(&window, "MainWindow")) {
        mainWindow->showNormal();
        mainWindow->resize(1400, 900);
        expandFirstWell(mainWindow);
        isComplete = pictures.save(mainWindow, QStringLiteral("mainwindow.png")) && isComplete;
    }
    return isComplete ? 0 : 1;
}
