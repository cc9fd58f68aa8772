// The whole plug-in on the host's libraries: from the click on its action to the wells in its window.

#include "datastore/curvegrouptable.h"
#include "host/opendtect/opendtecthost.h"
#include "mainwin/projecttreewidget.h"
#include "manywells.h"
#include "odprogram.h"
#include "odsurvey.h"
#include "plugin/lorvaosmgr.h"
#include "support/boxdriver.h"
#include "support/files.h"
#include "surveycontents.h"

#include <QMenu>
#include <QTest>

#include <ioman.h>
#include <uimainwin.h>
#include <uimenu.h>
#include <uistring.h>
#include <welldata.h>
#include <wellman.h>
#include <wellmarker.h>

class TestOpendTectLaunch : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        static int number = 0;
        CurveGroupTable::instance().clear();
        m_survey = odsurvey::open(QStringLiteral("Launch_%1").arg(++number));
        for (const odsurvey::Well &well : surveycontents::wells())
            m_keys.append(odsurvey::add(well));
        m_window = std::make_unique<uiMainWin>(nullptr, toUiString("Host"), 0, true);
        m_menu = std::make_unique<uiMenu>(toUiString("Utilities"));
        m_host = std::make_unique<opendtect::OpendTectHost>(m_window.get(), m_menu.get());
        m_manager = std::make_unique<lorvaosMgr>(*m_host);
    }

    void cleanup()
    {
        m_manager.reset();
        QCOMPARE(m_menu->nrActions(), 0);
        m_host.reset();
        m_menu.reset();
        m_window.reset();
        m_keys.clear();
    }

    void theClickEndsInTheMainWindow()
    {
        click();
        QVERIFY(m_boxes.seen.isEmpty());
        QVERIFY(m_manager->mainWindow());
        QVERIFY(m_manager->mainWindow()->isVisible());
        QCOMPARE(m_manager->mainWindow()->parentWidget(), m_window->qWidget());
    }

    void theWindowShowsTheWellsInTheHostsOrder()
    {
        click();
        QStringList expected;
        for (const odsurvey::Well &well : surveycontents::wells())
            expected.append(well.header.name);
        const QTreeWidgetItem *wells = tree().wellsItem();
        QStringList names;
        for (int i = 0; i < wells->childCount(); ++i)
            names.append(wells->child(i)->text(0));
        QCOMPARE(names, expected);
    }

    void theProjectFolderLiesInTheSurvey()
    {
        click();
        for (const char *folder : {"Correlations", "CurveGroups", "DefaultLogs", "Templates/Global/Default"})
            QVERIFY2(QFileInfo(m_survey + "/WLC/" + folder).isDir(), folder);
        const QByteArray defaults = files::read(m_survey + "/WLC/DefaultLogs/Deviated.txt");
        QVERIFY2(defaults.contains("DT"), defaults.constData());
    }

    void noWellStaysInTheHostsMemory()
    {
        click();
        QCOMPARE(Well::MGR().wells().size(), 0);
    }

    void anotherSurveyClosesTheWindows()
    {
        click();
        const QPointer<MainWindow> window(m_manager->mainWindow());
        odsurvey::open(m_host->surveyName() + "_next");
        QVERIFY(!window);
        QCOMPARE(m_menu->getQMenu()->actions().size(), 1);
        click();
        QVERIFY(m_manager->mainWindow());
        QVERIFY(QFileInfo(m_host->surveyDirectory() + "/WLC").isDir());
    }

    // The host has asked whether to exit; after that there is nobody who could stay.
    void theEndOfTheHostClosesTheWindowsWithoutAQuestion()
    {
        click();
        const QPointer<MainWindow> window(m_manager->mainWindow());
        IOM().applicationClosing.trigger();
        QVERIFY(!window);
        QVERIFY(m_boxes.seen.isEmpty());
        QCOMPARE(Well::MGR().wells().size(), 0);
    }

    void aLaunchReadsTheListOfWellsOnce()
    {
        QTest::qWait(150); // a file that was changed just now is read again
        odsurvey::OpenedFiles opened(m_survey + "/WellInfo");
        click();
        QVERIFY(opened.take(".omf") <= 3);
    }

    void markersEditedInTheHostAppearInTheTree()
    {
        click();
        Well::Data *loaded = Well::MGR().get(MultiID(m_keys.first().toLatin1().constData()));
        emit qGuiApp->focusWindowChanged(nullptr); // as when the host opens its window on the well
        loaded->markers().insertNew(new Well::Marker("Edited", 500));
        QVERIFY(tree().findItems("Edited", Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
        loaded->markerschanged.trigger();
        QCOMPARE(tree().findItems("Edited", Qt::MatchExactly | Qt::MatchRecursive).size(), 1);
    }

private:
    ProjectTreeWidget &tree() { return *m_manager->mainWindow()->projectTree(); }
    void click() { m_menu->getQMenu()->actions().last()->trigger(); }

    QString m_survey;
    QStringList m_keys;
    BoxDriver m_boxes;
    std::unique_ptr<uiMainWin> m_window;
    std::unique_ptr<uiMenu> m_menu;
    std::unique_ptr<opendtect::OpendTectHost> m_host;
    std::unique_ptr<lorvaosMgr> m_manager;
};

OD_TEST_MAIN(TestOpendTectLaunch)
#include "tst_opendtectlaunch.moc"
