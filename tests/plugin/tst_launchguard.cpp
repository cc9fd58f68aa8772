// What happens to the plug-in's windows when the survey changes, or the host goes, while code of theirs is on the stack.

#include "datastore/curvegrouptable.h"
#include "las/wellimportdialog.h"
#include "mainwin/projecttreeitems.h"
#include "mainwin/projecttreewidget.h"
#include "plugin/lorvaosmgr.h"
#include "support/boxdriver.h"
#include "support/files.h"
#include "support/testmain.h"
#include "watchfulhost.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QDir>
#include <QMenu>
#include <QPrintPreviewDialog>
#include <QTemporaryDir>

#include <memory>

class tst_launchguard : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        CurveGroupTable::instance().clear();
        m_folder = std::make_unique<QTemporaryDir>();
        m_window = new QWidget;
        m_window->show();
        m_host = std::make_unique<WatchfulHost>();
        m_host->survey = newSurvey("Survey");
        m_host->dataFolder = QStringLiteral(LORVA_SOURCE_DIR "/icons");
        m_host->window = m_window;
        for (const char *name : {"A", "B", "C"}) {
            host::WellHeader header;
            header.name = QString::fromLatin1(name);
            header.totalDepth = 1000;
            const QString key = m_host->addWell(header);
            m_host->find(key)->logs = {{"GR", "gapi", {100, 200}, {3, 4}}};
            m_host->find(key)->markers = {{"Top", 150, Qt::red}, {"Base", 250, Qt::blue}};
        }
        m_manager = std::make_unique<lorvaosMgr>(*m_host);
        m_host->trigger();
        m_boxes = std::make_unique<BoxDriver>();
    }

    void cleanup()
    {
        m_boxes.reset();
        m_manager.reset();
        m_host.reset();
        delete m_window;
        QVERIFY(!QApplication::overrideCursor());
    }

    void theSurveyChangesWhileSyncWarns()
    {
        m_host->storedWells[0].isUnreadable = true;
        m_host->storedWells[1].isUnreadable = true;
        changeSurveyAtTheFirstBox();
        action("syncAction")->trigger();
        // The warning that stood there; what Sync would have said of the other well and at its end is of no survey.
        QCOMPARE(m_boxes->seen.size(), 1);
        verifyGone();
    }

    void theSurveyChangesWhileAReportTells()
    {
        m_host->storedWells[0].logs.clear();
        action("syncAction")->trigger();
        m_boxes->seen.clear();
        const QString oldProject = m_host->survey + "/WLC";
        changeSurveyAtTheFirstBox();
        action("wellsReportAction")->trigger();
        QCOMPARE(m_boxes->seen.size(), 1);
        QCOMPARE(m_boxes->seen.first().text, QString("logs are not available for this well :A"));
        // The wells of the other survey have no place in a report of this one.
        QVERIFY(!QFileInfo::exists(oldProject + "/B_logsInfo.txt"));
        verifyGone();
    }

    void theSurveyChangesWhileMarkersReportReads()
    {
        m_host->storedWells[0].isUnreadable = true;
        changeSurveyAtTheHostsBox();
        m_host->storedWells[1].isUnreadable = true;
        action("markersReportAction")->trigger();
        QCOMPARE(m_host->errors.size(), 1);
        verifyGone();
    }

    void theSurveyChangesWhileFilesAreChosen()
    {
        action("importAction")->trigger();
        const QPointer<WellImportDialog> dialog = m_manager->mainWindow()->findChild<WellImportDialog *>();
        const QString file = lasFile();
        dialog->chooseFiles = [&](QWidget *, const QString &, const QString &) {
            m_host->changeSurvey(newSurvey("Other"));
            [&dialog] { QVERIFY2(dialog, "the dialog is still to take the answer"); }();
            return QStringList{file};
        };
        dialog->selectLasFilesClicked();
        verifyGone();
        QVERIFY(!dialog);
    }

    void nothingIsWrittenIntoTheOtherSurvey()
    {
        action("importAction")->trigger();
        auto *dialog = m_manager->mainWindow()->findChild<WellImportDialog *>();
        const QString file = lasFile();
        dialog->chooseFiles = [&file](QWidget *, const QString &, const QString &) { return QStringList{file}; };
        dialog->selectLasFilesClicked();
        m_host->storedWells[0].logs.append({"SP", "mv", {10, 20}, {1, 1}}); // behind the dialog's back
        m_boxes->answers = QStringList{"Yes"}; // to overwriting it
        changeSurveyAtTheFirstBox();
        dialog->importSelectedClicked();
        QCOMPARE(m_boxes->seen.size(), 1);
        QCOMPARE(m_boxes->seen.first().title, QString("Writing Well Logs"));
        for (const host::LogData &log : qAsConst(m_host->storedWells[0].logs))
            if (log.name == "SP")
                QCOMPARE(log.values, (QVector<float>{1, 1}));
        QVERIFY(m_host->errors.isEmpty());
        verifyGone();
    }

    void theSurveyChangesWhileADisplayIsBuilt()
    {
        m_host->storedWells[0].isUnreadable = true;
        changeSurveyAtTheHostsBox();
        clickWell(0);
        QVERIFY(!m_host->errors.isEmpty());
        QCOMPARE(m_host->errors.size(), 1);
        verifyGone();
    }

    void theSurveyChangesWhileMarkersAreShown()
    {
        clickWell(0);
        m_host->storedWells[0].isUnreadable = true;
        changeSurveyAtTheHostsBox();
        QTreeWidgetItem *markers = markersBranch(tree()->wellsItem()->child(0));
        markers->setCheckState(0, Qt::Checked);
        emit tree()->itemClicked(markers, 0);
        QCOMPARE(m_host->errors.size(), 1);
        verifyGone();
    }

    void theSurveyChangesWhileAMenuIsOpen()
    {
        bool isOpen = false;
        QTimer::singleShot(0, this, [&] {
            QPointer<QWidget> menu = QApplication::activePopupWidget();
            isOpen = menu;
            m_host->changeSurvey(newSurvey("Other"));
            QVERIFY(menu);
            QTest::keyClick(menu, Qt::Key_Escape);
        });
        QTreeWidgetItem *correlations = tree()->correlationsItem();
        const QPoint position = tree()->visualItemRect(correlations).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, tree()->viewport()->mapToGlobal(position));
        QApplication::sendEvent(tree()->viewport(), &event);
        QVERIFY(isOpen);
        verifyGone();
    }

    void theSurveyChangesWhileAPreviewIsShown()
    {
        clickWell(0);
        bool isShown = false;
        QTimer::singleShot(0, this, [&] {
            QPointer<QWidget> preview = QApplication::activeModalWidget();
            isShown = qobject_cast<QPrintPreviewDialog *>(preview.data());
            m_host->changeSurvey(newSurvey("Other"));
            QCoreApplication::processEvents();
            QVERIFY(preview);
            qobject_cast<QDialog *>(preview.data())->reject();
        });
        action("printAction")->trigger();
        QVERIFY(isShown);
        verifyGone();
    }

    void theSurveyChangesWhileExitAsks_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::newRow("yes") << "Yes";
        QTest::newRow("no") << "No";
    }

    void theSurveyChangesWhileExitAsks()
    {
        QFETCH(QString, answer);
        m_boxes->answers = QStringList{answer};
        changeSurveyAtTheFirstBox();
        action("exitAction")->trigger();
        QCOMPARE(m_boxes->seen.size(), 1);
        verifyGone();
    }

    void theHostsWindowGoesWhileABoxStands()
    {
        m_host->storedWells[0].isUnreadable = true;
        m_host->storedWells[1].isUnreadable = true;
        const QPointer<MainWindow> mainWindow = m_manager->mainWindow();
        m_boxes->onBox = [&] {
            dropHostWindow();
            QVERIFY(mainWindow);
            QVERIFY(!mainWindow->isVisible());
        };
        action("syncAction")->trigger();
        QCOMPARE(m_boxes->seen.size(), 1);
        QVERIFY(mainWindow);
        QCoreApplication::processEvents();
        QVERIFY(!mainWindow && !m_manager->launcher());
        m_boxes->onBox = nullptr;
        m_host->trigger();
        QVERIFY(m_manager->mainWindow()->isVisible());
    }

    void markersOfTheOtherSurveyAreNoNews()
    {
        m_host->storedWells[0].isUnreadable = true;
        QSet<QString> read;
        m_host->onMarkers = [&read](const QString &key) { read.insert(key); };
        m_boxes->onBox = [this, &read] {
            m_boxes->onBox = nullptr;
            m_host->changeSurvey(newSurvey("Other"));
            read.clear();
            QVERIFY(m_host->writeMarkers(m_host->storedWells.at(1).key, {}).ok());
        };
        action("syncAction")->trigger();
        QVERIFY(read.isEmpty());
        verifyGone();
    }

    void aClickWhileABoxStandsLaunchesWhenItHasGone()
    {
        const QPointer<MainWindow> first = m_manager->mainWindow();
        m_boxes->onBox = [this, &first] {
            m_host->trigger();
            m_host->trigger();
            QVERIFY(first);
        };
        int lists = 0;
        action("exitAction")->trigger();
        m_boxes->onBox = nullptr;
        QVERIFY(first);
        m_host->onList = [&lists] { ++lists; };
        QCoreApplication::processEvents();
        QVERIFY(!first);
        QVERIFY(m_manager->mainWindow()->isVisible());
        QCOMPARE(lists, 1);
    }

    void theManagerMayGoWhileALaunchIsDue()
    {
        m_boxes->onBox = [this] {
            m_host->trigger();
            m_host->changeSurvey(newSurvey("Other"));
        };
        action("exitAction")->trigger();
        m_manager.reset();
        QCoreApplication::processEvents();
        QVERIFY(m_window->children().isEmpty());
    }

    // ---- the end of the host

    void aClosingHostClosesTheWindowWithoutAQuestion()
    {
        const QPointer<MainWindow> mainWindow = m_manager->mainWindow();
        m_host->announceClosing();
        QVERIFY(!mainWindow);
        QVERIFY(!m_manager->launcher());
        QVERIFY(m_boxes->seen.isEmpty());
        m_host->announceClosing();
    }

    void aHostThatClosesWhileABoxStandsHidesTheWindow()
    {
        m_host->storedWells[0].isUnreadable = true;
        const QPointer<MainWindow> mainWindow = m_manager->mainWindow();
        bool isHidden = false;
        m_boxes->onBox = [&] {
            m_host->announceClosing();
            isHidden = mainWindow && !mainWindow->isVisible();
        };
        action("syncAction")->trigger();
        QCOMPARE(m_boxes->seen.size(), 1);
        QVERIFY(isHidden);
        QCoreApplication::processEvents();
        QVERIFY(!mainWindow);
    }

    void aHostWithoutItsWindowIsNotAskedForAnother()
    {
        const QPointer<MainWindow> mainWindow = m_manager->mainWindow();
        m_window->hide();
        QVERIFY(mainWindow->close());
        QVERIFY(!mainWindow->isVisible());
        QVERIFY(m_boxes->seen.isEmpty());
    }

private:
    QString newSurvey(const QString &name)
    {
        const QString path = m_folder->filePath(name);
        QDir().mkdir(path);
        return path;
    }

    QString lasFile()
    {
        const QString path = m_folder->filePath("a.las");
        files::write(path,
                     "~W\nSTRT.M 10 :\nSTOP.M 20 :\nNULL. -999.25 :\nUWI. A :\n~C\nDEPT.M :\nGR.gapi :\nSP.mv :\n"
                     "~A\n10 1 7\n20 2 8\n");
        return path;
    }

    ProjectTreeWidget *tree() const { return m_manager->mainWindow()->projectTree(); }
    QAction *action(const char *name) const
    {
        return m_manager->mainWindow()->findChild<QAction *>(QString::fromLatin1(name));
    }

    void clickWell(int index)
    {
        QTreeWidgetItem *well = tree()->wellsItem()->child(index);
        well->setCheckState(0, Qt::Checked);
        emit tree()->itemClicked(well, 0);
    }

    void change()
    {
        const QPointer<MainWindow> mainWindow = m_manager->mainWindow();
        m_host->changeSurvey(newSurvey("Other"));
        QVERIFY2(mainWindow, "the window goes when the operation has returned");
        QVERIFY(files::snapshot(m_host->survey).isEmpty());
    }

    void changeSurveyAtTheFirstBox()
    {
        m_boxes->onBox = [this] {
            m_boxes->onBox = nullptr;
            change();
        };
    }

    void changeSurveyAtTheHostsBox()
    {
        m_host->onError = [this] {
            m_host->onError = nullptr;
            change();
            QCoreApplication::processEvents(); // as the box's own loop would
        };
    }

    void dropHostWindow()
    {
        m_host->window = nullptr;
        delete m_window;
    }

    // The windows stood until here, and go with the next events; the new survey was not touched.
    void verifyGone()
    {
        const QPointer<MainWindow> mainWindow = m_manager->mainWindow();
        QVERIFY(mainWindow);
        QCoreApplication::processEvents();
        QVERIFY(!mainWindow && !m_manager->mainWindow() && !m_manager->launcher());
        QVERIFY(m_window->findChildren<QWidget *>().isEmpty());
        QVERIFY(m_host->survey.endsWith("/Other"));
        QVERIFY(files::snapshot(m_host->survey).isEmpty());
        m_host->trigger();
        QVERIFY(m_manager->mainWindow()->isVisible());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QPointer<QWidget> m_window;
    std::unique_ptr<WatchfulHost> m_host;
    std::unique_ptr<lorvaosMgr> m_manager;
    std::unique_ptr<BoxDriver> m_boxes;
};

LORVA_TEST_MAIN(tst_launchguard)
#include "tst_launchguard.moc"
