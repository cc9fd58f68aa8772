// The workbench as its program puts it together: the real window, the loader and the built plug-in, in the order of
// the program's main.

#include "demo/demosurvey.h"
#include "support/boxdriver.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QDir>
#include <QMenu>
#include <QPointer>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace workbench;

namespace {

const QString actionText = QStringLiteral("&LORVA OS 0.0");

/// The objects of the program, gone in the order in which the program lets them go.
struct Program
{
    explicit Program(const QString &survey)
        : host(QStringLiteral(LORVA_BINARY_DIR "/share/lorva"))
        , window(host, asker, dialogFileChooser())
    {
        host.setWindow(&window, window.utilitiesMenu(), window.wellsMenu());
        window.show();
        loader.loadAll({QStringLiteral(LORVA_BINARY_DIR "/lib/lorva/plugins")});
        window.setPluginReports(loader.reports());
        window.openAtStart(survey);
    }

    QAction *lastAction() { return window.utilitiesMenu()->actions().last(); }

    QWidgetList pluginWindows(const char *className)
    {
        QWidgetList found;
        for (QWidget *child : window.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
            if (child->inherits(className))
                found.append(child);
        return found;
    }
    QWidget *mainWindow() { return pluginWindows("MainWindow").value(0); }
    QWidget *launcher() { return pluginWindows("Launcher").value(0); }

    WorkbenchHost host;
    ScriptedAsker asker;
    PluginLoader loader;
    WorkbenchWindow window;
};

} // namespace

class tst_workbenchprogram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_root.filePath("settings"));
        m_original = m_root.filePath("original/Demo");
        QCOMPARE(demo::makeDemoSurvey(m_original), QString());
        QVERIFY(QDir(m_original + "/WLC").removeRecursively());
        QVERIFY(QDir(m_original + "/Import").removeRecursively()); // large, and nothing reads it
    }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_boxes = std::make_unique<BoxDriver>();
        m_program = std::make_unique<Program>(newSurvey("Demo"));
        QVERIFY(m_program->asker.boxes.isEmpty());
    }

    void cleanup()
    {
        m_program.reset();
        m_boxes.reset();
    }

    void utilitiesEndsWithTheAction()
    {
        QCOMPARE(m_program->loader.reports().size(), 1);
        QCOMPARE(m_program->loader.reports().first().error, QString());
        QCOMPARE(m_program->lastAction()->text(), actionText);
        QVERIFY(!m_program->lastAction()->icon().isNull());
        QVERIFY(m_program->lastAction()->isEnabled());
        QVERIFY(m_program->window.utilitiesMenu()->menuAction()->isEnabled());
    }

    void theMenuOfWellsEndsWithPaper()
    {
        QAction *paper = m_program->window.wellsMenu()->actions().last();
        QCOMPARE(paper->text(), QString("Save as &PDF at true scale…"));
        paper->trigger(); // nothing is open yet
        QCOMPARE(m_boxes->seen.size(), 1);
        QCOMPARE(m_boxes->seen.first().title, QString("Save as PDF at true scale"));
        QCOMPARE(m_boxes->seen.first().text,
                 QString("Open LORVA OS first, and display a well or a correlation there."));
        m_program->lastAction()->trigger();
        paper->trigger(); // nor is anything displayed
        QCOMPARE(m_boxes->seen.size(), 2);
        QVERIFY(m_boxes->seen.last().text.startsWith(QStringLiteral("Nothing is displayed.")));
    }

    void twoClicksGiveOneMainWindow()
    {
        m_program->lastAction()->trigger();
        const QPointer<QWidget> first(m_program->mainWindow());
        QVERIFY(first);
        m_program->lastAction()->trigger();
        QVERIFY(!first);
        QCOMPARE(m_program->pluginWindows("MainWindow").size(), 1);
        QCOMPARE(m_program->pluginWindows("Launcher").size(), 1);
        QVERIFY(m_program->mainWindow()->isMaximized());
        QVERIFY(m_boxes->seen.isEmpty());
    }

    void theWindowsCarryTheIcon()
    {
        m_program->lastAction()->trigger();
        const QSize size(32, 32);
        const QImage icon = m_program->host.icon("LORVA_wlc.png").pixmap(size).toImage();
        QVERIFY(!icon.isNull());
        QCOMPARE(m_program->launcher()->windowIcon().pixmap(size).toImage(), icon);
        QCOMPARE(m_program->mainWindow()->windowIcon().pixmap(size).toImage(), icon);
    }

    void anotherSurveyTakesThePluginsWindowsAlong()
    {
        m_program->lastAction()->trigger();
        const QPointer<QWidget> mainWindow(m_program->mainWindow());
        const QPointer<QWidget> launcher(m_program->launcher());
        const QString other = newSurvey("Other");
        const auto before = files::snapshot(other);
        QVERIFY(m_program->window.openSurvey(other));
        QVERIFY(!mainWindow && !launcher);
        QCOMPARE(files::snapshot(other), before);
        m_program->lastAction()->trigger();
        QVERIFY(m_program->mainWindow()->isVisible());
        QVERIFY(QFileInfo::exists(other + "/WLC/CurveGroups/Others.txt"));
    }

    void aRefusedSurveyLeavesThem()
    {
        m_program->lastAction()->trigger();
        const QPointer<QWidget> mainWindow(m_program->mainWindow());
        QVERIFY(!m_program->window.openSurvey(m_folder->filePath("none")));
        QCOMPARE(m_program->asker.boxes.size(), 1);
        QVERIFY(mainWindow && mainWindow->isVisible());
    }

    void closingAsksThePluginsMainWindow()
    {
        m_program->lastAction()->trigger();
        QSignalSpy closed(&m_program->window, &WorkbenchWindow::closed);
        m_boxes->answers = QStringList{"No"};
        QVERIFY(!m_program->window.close());
        QCOMPARE(m_boxes->seen.size(), 1);
        QVERIFY(m_program->mainWindow()->isVisible());
        QVERIFY(m_program->window.isVisible());
        QVERIFY(closed.isEmpty());
        m_boxes->answers = QStringList{"Yes"};
        QVERIFY(m_program->window.close());
        QCOMPARE(m_boxes->seen.size(), 2);
        QVERIFY(!m_program->mainWindow()); // it goes with the program
        QVERIFY(!m_program->window.isVisible());
        QCOMPARE(closed.size(), 1);
    }

    void theProgramMayGoWithThePluginsWindowOpen()
    {
        m_program->lastAction()->trigger();
        const QPointer<QWidget> mainWindow(m_program->mainWindow());
        m_program.reset();
        QVERIFY(!mainWindow);
        QVERIFY(m_boxes->seen.isEmpty());
    }

private:
    QString newSurvey(const char *name)
    {
        const QString path = m_folder->filePath(QLatin1String("root/") + QLatin1String(name));
        files::copyFolder(m_original, path);
        return path;
    }

    QTemporaryDir m_root;
    QString m_original;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<BoxDriver> m_boxes;
    std::unique_ptr<Program> m_program;
};

LORVA_TEST_MAIN(tst_workbenchprogram)
#include "tst_workbenchprogram.moc"
