#include "base/usersettings.h"
#include "las/wellimportdialog.h"
#include "las/welllogexport.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/modaldialog.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QDockWidget>
#include <QMenuBar>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>

namespace {

QStringList actionTexts(const QWidget *widget)
{
    QStringList texts;
    for (const QAction *action : widget->actions())
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}

QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromLatin1(text));
    return result;
}

class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    UrlCatcher() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~UrlCatcher() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QVector<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls.append(url); }
};

/// Counts how often a widget is painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QObject *watched) { watched->installEventFilter(this); }
    int painted = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        painted += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

struct WindowFixture : ProjectFixture
{
    WindowFixture()
    {
        addWell(QStringLiteral("A"), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        open();
        base::keepSettingsIn(settings.path()); // not what the window of another test left
        window = std::make_unique<MainWindow>(*launch);
        window->show();
    }
    QAction *action(const char *text) const
    {
        for (QAction *action : window->findChildren<QAction *>())
            if (action->text() == QLatin1String(text))
                return action;
        qFatal("No action %s", text);
    }
    QTemporaryDir settings;
    std::unique_ptr<MainWindow> window;
};

} // namespace

class tst_mainwindow : public QObject
{
    Q_OBJECT

private slots:
    void titleAndIcon()
    {
        WindowFixture fixture;
        QCOMPARE(fixture.window->windowTitle(), QStringLiteral("HESKO Log Interpretation Software V0.1"));
        QVERIFY(!fixture.window->windowIcon().isNull());
        QVERIFY(fixture.window->findChild<QStatusBar *>());
    }

    void actions_data()
    {
        QTest::addColumn<QString>("icon");
        QTest::addColumn<QString>("statusTip");
        QTest::addColumn<bool>("isReady");
        QTest::newRow("Sync Data") << "syncdb_wlc.png"
                                   << "User can Sync update data from data base" << true;
        QTest::newRow("Import Well logs")
            << "import_wlc.png"
            << "User can import well logs from LAS file. Here user can select multiple LAS file." << true;
        QTest::newRow("Export Well logs") << "export_wlc.png"
                                          << "User can export well logs in ASCII Text format." << true;
        QTest::newRow("Print") << ""
                               << "User can print only Log Section." << true;
        QTest::newRow("Exit") << "exit_wlc.png"
                              << "Exit" << true;
        QTest::newRow("Wells Info Report")
            << ""
            << "User can export the Wells logs information in ASCII text file." << true;
        QTest::newRow("Markers Report") << ""
                                        << "User can export the Wells Markers information in ASCII text file."
                                        << true;
        QTest::newRow("Documentation") << "help_wlc.png"
                                       << "User Manual Documentation." << true;
        QTest::newRow("About") << "about_wlc.png"
                               << "About Plugin Information." << true;
    }

    void actions()
    {
        QFETCH(QString, icon);
        WindowFixture fixture;
        const QAction *action = fixture.action(QTest::currentDataTag());
        QTEST(action->statusTip(), "statusTip");
        QTEST(action->isEnabled(), "isReady");
        QCOMPARE(action->icon().isNull(), icon.isEmpty());
        if (!icon.isEmpty())
            QCOMPARE(action->icon().pixmap(16).toImage(), fixture.host.icon(icon).pixmap(16).toImage());
    }

    // Wide enough at first for the names of most markers; the user may make it narrower.
    void theTreeHasRoomForNames()
    {
        WindowFixture fixture;
        fixture.window->resize(1400, 900);
        auto *dock = fixture.window->findChild<QDockWidget *>(QStringLiteral("projectDataDock"));
        QCoreApplication::processEvents();
        QCOMPARE(dock->width(), 320);
        fixture.window->resizeDocks({dock}, {100}, Qt::Horizontal);
        QCoreApplication::processEvents();
        QCOMPARE(dock->width(), 250);
    }

    void statusBarShowsTheTips()
    {
        WindowFixture fixture;
        for (QAction *entry : fixture.window->menuBar()->actions()) {
            QMenu *menu = entry->menu();
            menu->popup(fixture.window->mapToGlobal(QPoint(10, 10)));
            for (QAction *action : menu->actions()) {
                if (action->isSeparator() || action->statusTip().isEmpty())
                    continue;
                menu->setActiveAction(action);
                QCOMPARE(fixture.window->statusBar()->currentMessage(), action->statusTip());
            }
            menu->close();
        }
    }

    void everythingIsOwnedByTheWindow()
    {
        WindowFixture fixture;
        QVector<QPointer<QObject>> parts;
        for (const char *name :
             {"syncAction", "importAction", "exportAction", "printAction", "exitAction", "wellsReportAction",
              "markersReportAction", "documentationAction", "aboutAction", "fileMenu", "utilitiesMenu", "viewMenu",
              "helpMenu", "toolBar", "projectDataDock", "propertiesDock", "centralTabs", "ProjectTreeWidget"}) {
            parts.append(fixture.window->findChild<QObject *>(QString::fromLatin1(name)));
            QVERIFY2(parts.last(), name);
        }
        auto *tabs = qobject_cast<QTabWidget *>(fixture.window->centralWidget());
        for (int i = 0; i < tabs->count(); ++i)
            parts.append(tabs->widget(i));
        fixture.window.reset();
        for (const QPointer<QObject> &part : qAsConst(parts))
            QVERIFY(!part);
    }

    void menus()
    {
        WindowFixture fixture;
        QStringList titles;
        QVector<QMenu *> menus;
        for (QAction *action : fixture.window->menuBar()->actions()) {
            titles.append(action->text());
            menus.append(action->menu());
        }
        QCOMPARE(titles, strings({"&File", "&Utilities", "&View", "&Help"}));
        QCOMPARE(actionTexts(menus.at(0)),
                 strings({"Sync Data", "-", "Import Well logs", "Export Well logs", "-", "Print", "Exit"}));
        QCOMPARE(actionTexts(menus.at(1)), strings({"Wells Info Report", "Markers Report"}));
        QCOMPARE(actionTexts(menus.at(2)), strings({"Project Data", "Properties"}));
        QCOMPARE(actionTexts(menus.at(3)), strings({"Documentation", "About"}));
    }

    void toolBar()
    {
        WindowFixture fixture;
        const auto bars = fixture.window->findChildren<QToolBar *>();
        QCOMPARE(bars.size(), 1);
        QCOMPARE(bars.first()->windowTitle(), QStringLiteral("Toolbar"));
        QCOMPARE(actionTexts(bars.first()), strings({"Sync Data", "-"}));
    }

    void docks()
    {
        WindowFixture fixture;
        QStringList titles;
        for (const QDockWidget *dock : fixture.window->findChildren<QDockWidget *>())
            titles.append(dock->windowTitle());
        QCOMPARE(titles, strings({"Project Data", "Properties"}));
        auto *dock = fixture.window->findChild<QDockWidget *>(QStringLiteral("projectDataDock"));
        QCOMPARE(dock->minimumWidth(), 250);
        QCOMPARE(dock->widget(), fixture.window->projectTree());
        for (QDockWidget *shown : fixture.window->findChildren<QDockWidget *>()) {
            QAction *entry = fixture.action(qPrintable(shown->windowTitle()));
            QCOMPARE(entry, shown->toggleViewAction());
            entry->trigger();
            QVERIFY(!shown->isVisible());
            entry->trigger();
            QVERIFY(shown->isVisible());
        }
    }

    void centralTabs()
    {
        WindowFixture fixture;
        auto *tabs = qobject_cast<QTabWidget *>(fixture.window->centralWidget());
        QVERIFY(tabs);
        QVERIFY(!tabs->isMovable());
        QVERIFY(!tabs->tabsClosable());
        QStringList titles;
        for (int i = 0; i < tabs->count(); ++i)
            titles.append(tabs->tabText(i));
        QCOMPARE(titles, strings({"Well Logs View", "Correlation View", "Well Data Manager"}));
    }

    void exitAsksAndNoKeepsTheWindow()
    {
        WindowFixture fixture;
        fixture.asker.answers = {base::BoxButton::No};
        fixture.action("Exit")->trigger();
        QVERIFY(fixture.window->isVisible());
        QCOMPARE(fixture.asker.boxes.size(), 1);
        const base::Box &box = fixture.asker.boxes.first();
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, QStringLiteral("Exit"));
        QCOMPARE(box.text, QStringLiteral("Do you really want to exit ?"));
        QCOMPARE(box.buttons, (QVector<base::BoxButton>{base::BoxButton::Yes, base::BoxButton::No}));
        QVERIFY(box.defaultButton == base::BoxButton::No);
        QCOMPARE(qobject_cast<QTabWidget *>(fixture.window->centralWidget())->count(), 3);
    }

    void exitWithYesHidesTheWindow()
    {
        WindowFixture fixture;
        fixture.asker.answers = {base::BoxButton::Yes};
        fixture.action("Exit")->trigger();
        QVERIFY(!fixture.window->isVisible());
        QCOMPARE(fixture.asker.boxes.size(), 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        fixture.window->show(); // only hidden, not deleted
        QCOMPARE(fixture.window->projectTree()->wellsItem()->childCount(), 1);
    }

    void aboutDoesNothing()
    {
        WindowFixture fixture;
        fixture.action("About")->trigger();
        QVERIFY(fixture.asker.boxes.isEmpty());
        QVERIFY(!QApplication::activeModalWidget());
    }

    void documentationOpensTheManual()
    {
        WindowFixture fixture;
        fixture.host.dataFolder = fixture.survey.path();
        UrlCatcher catcher;
        fixture.action("Documentation")->trigger();
        QVERIFY(catcher.urls.isEmpty()); // no such file: silence
        QVERIFY(fixture.asker.boxes.isEmpty());
        const QString manual = fixture.survey.filePath(QStringLiteral("doc/LORVA_doc.pdf"));
        files::write(manual, "%PDF-1.4");
        fixture.action("Documentation")->trigger();
        QCOMPARE(catcher.urls.size(), 1);
        QCOMPARE(catcher.urls.first(), QUrl(QStringLiteral("file:///") + manual));
    }

    void printPreviewOfTheDataManagerIsAnEmptyPage()
    {
        WindowFixture fixture;
        qobject_cast<QTabWidget *>(fixture.window->centralWidget())->setCurrentIndex(2);
        const QString pdf = fixture.survey.filePath(QStringLiteral("empty.pdf"));
        bool isWindow = false;
        int pages = 0;
        whenModal<QPrintPreviewDialog>(fixture.window.get(), [&isWindow, &pages](QPrintPreviewDialog *dialog) {
            isWindow = (dialog->windowFlags() & Qt::WindowType_Mask) == Qt::Window;
            QCoreApplication::processEvents();
            pages = dialog->findChild<QPrintPreviewWidget *>()->pageCount();
            dialog->reject();
        });
        fixture.action("Print")->trigger();
        QVERIFY(isWindow);
        QCOMPARE(pages, 1);
        QPrinter printer;
        printer.setOutputFileName(pdf);
        QVERIFY(QMetaObject::invokeMethod(fixture.window.get(), "printPreView", Q_ARG(QPrinter *, &printer)));
        QVERIFY(!QFileInfo::exists(pdf)); // nothing is printed
    }

    void checkingInTheTreeShowsAndHides()
    {
        WindowFixture fixture;
        auto *view = fixture.window->findChild<WellLogsViewWidget *>();
        QTreeWidgetItem *well = fixture.window->projectTree()->wellsItem()->child(0);
        const auto toggle = [&fixture](QTreeWidgetItem *item, Qt::CheckState state) {
            item->setCheckState(0, state);
            emit fixture.window->projectTree()->itemClicked(item, 0);
        };
        toggle(well, Qt::Checked);
        QCOMPARE(view->displayedWells(), QStringList{QStringLiteral("A")});
        auto *properties = fixture.window->findChild<QDockWidget *>(QStringLiteral("propertiesDock"));
        QCOMPARE(properties->widget(), view->currentDisplay()->scene()->panel());
        QTreeWidgetItem *markers = nullptr;
        for (int i = 0; i < well->childCount(); ++i)
            if (well->child(i)->text(0) == QLatin1String("Markers"))
                markers = well->child(i);
        QVERIFY(markers);
        toggle(markers->child(0), Qt::Checked);
        QVERIFY(view->currentDisplay()->scene()->markers().find(QStringLiteral("Top")));
        toggle(markers->child(0), Qt::Unchecked);
        QVERIFY(view->currentDisplay()->scene()->markers().all().isEmpty());
        toggle(well, Qt::Unchecked);
        QVERIFY(view->displayedWells().isEmpty());
        QVERIFY(!properties->widget());
        toggle(well, Qt::Checked);
        view->tabClose(0);
        QCOMPARE(well->checkState(0), Qt::Unchecked);
    }

    void aSavedMarkerIsCheckedInTheTree()
    {
        WindowFixture fixture;
        auto *view = fixture.window->findChild<WellLogsViewWidget *>();
        ProjectTreeWidget *tree = fixture.window->projectTree();
        emit tree->sendWellDisplayProperties(QStringLiteral("A"), QStringLiteral("Default"));
        tree->addMarker(QStringLiteral("A"), QStringLiteral("New_0")); // as the host's news does
        int asked = 0;
        connect(tree, &ProjectTreeWidget::displayMarker, this, [&asked] { ++asked; });
        emit view->currentDisplay()->markerSaved(QStringLiteral("A"), QStringLiteral("New_0"));
        const QList<QTreeWidgetItem *> found =
            tree->findItems(QStringLiteral("New_0"), Qt::MatchExactly | Qt::MatchRecursive);
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first()->checkState(0), Qt::Checked);
        QCOMPARE(asked, 0);
        tree->checkShownMarker(QStringLiteral("A"), QStringLiteral("Gone"));
        tree->checkShownMarker(QStringLiteral("Gone"), QStringLiteral("Top"));
    }

    void aPreviewWritesThePictureOnce()
    {
        WindowFixture fixture;
        const QString picture = fixture.path(QStringLiteral("/A.tiff"));
        emit fixture.window->projectTree()->sendWellDisplayProperties(QStringLiteral("A"), QStringLiteral("Default"));
        FailingDisk disk; // counts what is written
        whenModal<QPrintPreviewDialog>(fixture.window.get(), [](QPrintPreviewDialog *dialog) {
            auto *preview = dialog->findChild<QPrintPreviewWidget *>();
            preview->updatePreview();
            preview->setLandscapeOrientation(); // another page
            dialog->reject();
        });
        {
            const base::ScopedFileSystemCalls scope(disk);
            fixture.action("Print")->trigger();
        }
        QCOMPARE(disk.written.filter(fixture.survey.path()), QStringList{picture}); // beside the preview's size
        QVERIFY(!QImage(picture).isNull());

        // Another preview writes it anew, and so does a print without one.
        const QString pdf = fixture.survey.filePath(QStringLiteral("page.pdf"));
        for (int i = 0; i < 2; ++i) {
            QVERIFY(QFile::remove(picture));
            QPrinter printer(QPrinter::ScreenResolution);
            printer.setOutputFileName(pdf);
            fixture.window->printPreView(&printer);
            QVERIFY(QFile::exists(picture));
        }
        QVERIFY(QFileInfo(pdf).size() > 1000);
    }

    void documentationInAFolderWithOddCharacters()
    {
        WindowFixture fixture;
        fixture.host.dataFolder = fixture.survey.filePath(QString::fromUtf8("50% #1?[ø] a%20b"));
        const QString manual = fixture.host.documentationFolder() + QStringLiteral("/LORVA_doc.pdf");
        files::write(manual, "%PDF-1.4");
        UrlCatcher catcher;
        fixture.action("Documentation")->trigger();
        QCOMPARE(catcher.urls.size(), 1);
        QVERIFY(catcher.urls.first().isValid());
        QCOMPARE(catcher.urls.first().path(QUrl::FullyDecoded), QLatin1Char('/') + manual);
        QVERIFY(catcher.urls.first().toString().startsWith(QStringLiteral("file:////")));
    }

    void theWindowMayGoWhileThePreviewIsShown()
    {
        WindowFixture fixture;
        bool isShown = false;
        QObject context;
        whenModal<QPrintPreviewDialog>(&context, [&fixture, &isShown](QPrintPreviewDialog *) {
            isShown = true;
            fixture.window.reset();
        });
        fixture.window->printActionClicked();
        QVERIFY(isShown);
        QVERIFY(!fixture.window);
    }

    void syncShowsNewWellsTemplatesAndCorrelations()
    {
        WindowFixture fixture;
        fixture.addWell(QStringLiteral("New"), {QStringLiteral("GR")});
        fixture.addTemplate(QStringLiteral("Fresh"));
        fixture.addCorrelation(QStringLiteral("Line 1"));
        QVERIFY(QMetaObject::invokeMethod(fixture.window.get(), "syncODDBActionClicked"));
        ProjectTreeWidget *tree = fixture.window->projectTree();
        QCOMPARE(tree->wellsItem()->childCount(), 2);
        QCOMPARE(tree->wellsItem()->child(1)->text(0), QStringLiteral("New"));
        QCOMPARE(globalBranch(tree->wellsItem()->child(0))->childCount(), 3);
        QCOMPARE(tree->correlationsItem()->childCount(), 1);
        QCOMPARE(fixture.launch->catalogue.indexOf(QStringLiteral("New")), 1);
        QCOMPARE(fixture.asker.boxes.size(), 1);
        const base::Box &box = fixture.asker.boxes.first();
        QCOMPARE(box.icon, base::BoxIcon::Information);
        QCOMPARE(box.title, QStringLiteral("Sync Data"));
        QCOMPARE(box.text, QStringLiteral("synchronization done !"));
        QCOMPARE(box.buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
    }

    void syncForgetsWellsThatAreGone()
    {
        WindowFixture fixture;
        fixture.host.storedWells.clear();
        fixture.action("Sync Data")->trigger();
        QCOMPARE(fixture.window->projectTree()->wellsItem()->childCount(), 0);
        QCOMPARE(fixture.launch->catalogue.wellCount(), 0);
    }

    void syncWithWellsThatCannotBeListedChangesNothing()
    {
        WindowFixture fixture;
        ProjectTreeWidget *tree = fixture.window->projectTree();
        tree->wellsItem()->child(0)->setCheckState(0, Qt::Checked);
        fixture.host.listFails = true;
        fixture.action("Sync Data")->trigger();
        QCOMPARE(fixture.asker.boxes.size(), 1);
        const base::Box &box = fixture.asker.boxes.first();
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, QStringLiteral("Sync Data"));
        QCOMPARE(box.text,
                 QStringLiteral("The wells of the survey cannot be listed; nothing was changed.\n"
                                "The list of wells cannot be read."));
        QCOMPARE(fixture.launch->catalogue.wellCount(), 1);
        QCOMPARE(tree->wellsItem()->childCount(), 1);
        QCOMPARE(tree->wellsItem()->child(0)->checkState(0), Qt::Checked);
        fixture.host.listFails = false;
        fixture.action("Sync Data")->trigger();
        QCOMPARE(fixture.asker.boxes.last().text, QStringLiteral("synchronization done !"));
    }

    void syncRebuildsTheWholeCatalogue()
    {
        WindowFixture fixture;
        fixture.host.storedWells[0].logs.append({QStringLiteral("DT"), QStringLiteral("us/ft"), {1}, {2}});
        fixture.host.storedWells[0].markers.append({QStringLiteral("Base"), 700, QColor()});
        const QString key = fixture.addWell(QStringLiteral("0"), {QStringLiteral("SP")}); // comes first
        fixture.action("Sync Data")->trigger();
        const WellsCatalogue &catalogue = fixture.launch->catalogue;
        QCOMPARE(catalogue.wellNames(), strings({"0", "A"}));
        QCOMPARE(catalogue.wellKey(0), key);
        QCOMPARE(catalogue.logNames(1), strings({"GR", "DT"}));
        QCOMPARE(catalogue.markerNames(1), strings({"Top", "Base"}));
        QCOMPARE(catalogue.indexOf(QStringLiteral("A")), 1);
        const ProjectTreeWidget *tree = fixture.window->projectTree();
        for (int well = 0; well < 2; ++well) {
            QCOMPARE(tree->wellsItem()->child(well)->text(0), catalogue.wellNames().at(well));
            QCOMPARE(logsBranch(tree->wellsItem()->child(well))->childCount(), catalogue.logNames(well).size());
            QCOMPARE(markersBranch(tree->wellsItem()->child(well))->childCount(), catalogue.markerNames(well).size());
        }
    }

    void syncTellsOfAnUnreadableFolderFirst()
    {
        WindowFixture fixture;
        const QString folder = fixture.path(QStringLiteral("/Correlations"));
        QVERIFY(QDir().rmdir(folder));
        files::write(folder, "a file");
        fixture.action("Sync Data")->trigger();
        QCOMPARE(fixture.asker.boxes.size(), 2);
        QCOMPARE(fixture.asker.boxes.at(0).title, QStringLiteral("Project Data"));
        QVERIFY(fixture.asker.boxes.at(0).text.endsWith(QLatin1Char('\n') + folder));
        QCOMPARE(fixture.asker.boxes.at(1).text, QStringLiteral("synchronization done !"));
    }

    void changedMarkersReachTheTree()
    {
        WindowFixture fixture;
        fixture.host.storedWells[0].markers.append({QStringLiteral("Second"), 700, QColor()});
        fixture.launch->catalogue.refreshMarkerNames(0);
        fixture.window->markersChanged(0);
        QCOMPARE(markersBranch(fixture.window->projectTree()->wellsItem()->child(0))->childCount(), 2);
    }

    void importShowsNewLogsInTheTree()
    {
        WindowFixture fixture;
        const QString path = fixture.survey.filePath(QStringLiteral("a.las"));
        files::write(
            path, "~W\nSTRT.M 10 :\nSTOP.M 20 :\nNULL. -999.25 :\nUWI. A :\n~C\nDEPT.M :\nSP.mv :\n~A\n10 1\n20 2\n");
        fixture.action("Import Well logs")->trigger();
        auto *dialog = fixture.window->findChild<WellImportDialog *>();
        QVERIFY(dialog && dialog->isVisible());
        dialog->chooseFiles = [&path](QWidget *, const QString &, const QString &) { return QStringList{path}; };
        dialog->selectLasFilesClicked();
        dialog->importSelectedClicked();
        const QTreeWidgetItem *logs = logsBranch(fixture.window->projectTree()->wellsItem()->child(0));
        QStringList names;
        for (int i = 0; i < logs->childCount(); ++i)
            names.append(logs->child(i)->text(0));
        QCOMPARE(names, strings({"GR", "DEPT", "SP"}));
        QPointer<WellImportDialog> closed(dialog);
        dialog->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!closed);
    }

    void exportDialogOpens()
    {
        WindowFixture fixture;
        QVERIFY(QMetaObject::invokeMethod(fixture.window.get(), "exportWellLogsActionClicked"));
        QPointer<WellLogExport> dialog(fixture.window->findChild<WellLogExport *>());
        QVERIFY(dialog && dialog->isVisible());
        dialog->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!dialog);
    }

    void theWindowIsRepaintedWhileAReportRuns()
    {
        for (const char *report : {"Wells Info Report", "Markers Report"}) {
            WindowFixture fixture;
            QVERIFY(QTest::qWaitForWindowExposed(fixture.window.get()));
            QCoreApplication::processEvents();
            QAction *action = fixture.action(report);
            PaintCounter counter(fixture.window.get());
            fixture.window->update();
            action->trigger();
            QVERIFY2(counter.painted > 0, report);
            QCOMPARE(fixture.asker.boxes.last().text, QStringLiteral("Done !"));
        }
    }

    void aReportEndsWhenTheHostGoesToAnotherSurvey()
    {
        for (const char *report : {"Wells Info Report", "Markers Report"}) {
            WindowFixture fixture;
            QTimer::singleShot(0, fixture.window.get(), [&] { fixture.host.survey += QStringLiteral("/other"); });
            fixture.action(report)->trigger();
            QVERIFY(fixture.asker.boxes.isEmpty());
            QVERIFY(!QFile::exists(fixture.path(QStringLiteral("/A_logsInfo.txt"))));
            QVERIFY(!QFile::exists(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
        }
    }

    void reportsAreWiredToTheirEntries()
    {
        WindowFixture fixture;
        fixture.action("Wells Info Report")->trigger();
        fixture.action("Markers Report")->trigger();
        QVERIFY(QFileInfo::exists(fixture.path(QStringLiteral("/A_logsInfo.txt"))));
        QVERIFY(QFileInfo::exists(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
        QCOMPARE(fixture.asker.boxes.size(), 2);
    }

    void slotsHaveTheirNames()
    {
        for (const char *slot :
             {"syncODDBActionClicked()", "importWellLogsActionClicked()", "exportWellLogsActionClicked()",
              "printActionClicked()", "generateReportActionClicked()", "generateMarkersReportActionClicked()",
              "documentActionClicked()", "printPreView(QPrinter*)"})
            QVERIFY2(MainWindow::staticMetaObject.indexOfSlot(slot) >= 0, slot);
    }
};

LORVA_TEST_MAIN(tst_mainwindow)
#include "tst_mainwindow.moc"
