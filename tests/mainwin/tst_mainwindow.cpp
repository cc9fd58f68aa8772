#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QAction>
#include <QDesktopServices>
#include <QDockWidget>
#include <QMenuBar>
#include <QPrintPreviewDialog>
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

struct WindowFixture : ProjectFixture
{
    WindowFixture()
    {
        addWell(QStringLiteral("A"), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        open();
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
        QTest::newRow("Sync Data") << "syncdb_wlc.png" << "User can Sync update data from data base" << true;
        QTest::newRow("Import Well logs")
            << "import_wlc.png" << "User can import well logs from LAS file. Here user can select multiple LAS file."
            << false;
        QTest::newRow("Export Well logs") << "export_wlc.png" << "User can export well logs in ASCII Text format." << false;
        QTest::newRow("Print") << "" << "User can print only Log Section." << true;
        QTest::newRow("Exit") << "exit_wlc.png" << "Exit" << true;
        QTest::newRow("Wells Info Report") << "" << "User can export the Wells logs information in ASCII text file." << true;
        QTest::newRow("Markers Report") << "" << "User can export the Wells Markers information in ASCII text file." << true;
        QTest::newRow("Documentation") << "help_wlc.png" << "User Manual Documentation." << true;
        QTest::newRow("About") << "about_wlc.png" << "About Plugin Information." << true;
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

    void statusBarShowsTheTips()
    {
        WindowFixture fixture;
        QStatusTipEvent event(fixture.action("Documentation")->statusTip());
        QApplication::sendEvent(fixture.window.get(), &event);
        QCOMPARE(fixture.window->statusBar()->currentMessage(), QStringLiteral("User Manual Documentation."));
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
        dock->toggleViewAction()->trigger();
        QVERIFY(!dock->isVisible());
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
        QCOMPARE(box.buttons, (QVector<base::BoxButton> {base::BoxButton::Yes, base::BoxButton::No}));
        QCOMPARE(qobject_cast<QTabWidget *>(fixture.window->centralWidget())->count(), 3);
    }

    void exitWithYesHidesTheWindow()
    {
        WindowFixture fixture;
        fixture.asker.answers = {base::BoxButton::Yes};
        QVERIFY(fixture.window->close());
        QVERIFY(!fixture.window->isVisible());
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
        QTimer::singleShot(0, fixture.window.get(), [&isWindow] {
            auto *dialog = qobject_cast<QPrintPreviewDialog *>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            isWindow = dialog->windowFlags().testFlag(Qt::Window);
            dialog->reject();
        });
        fixture.action("Print")->trigger();
        QVERIFY(isWindow);
        QPrinter printer;
        printer.setOutputFileName(pdf);
        QVERIFY(QMetaObject::invokeMethod(fixture.window.get(), "printPreView", Q_ARG(QPrinter *, &printer)));
        QVERIFY(!QFileInfo::exists(pdf)); // nobody painted
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
        QCOMPARE(box.buttons, QVector<base::BoxButton> {base::BoxButton::Ok});
    }

    void syncForgetsWellsThatAreGone()
    {
        WindowFixture fixture;
        fixture.host.storedWells.clear();
        fixture.action("Sync Data")->trigger();
        QCOMPARE(fixture.window->projectTree()->wellsItem()->childCount(), 0);
        QCOMPARE(fixture.launch->catalogue.wellCount(), 0);
    }

    void changedMarkersReachTheTree()
    {
        WindowFixture fixture;
        fixture.host.storedWells[0].markers.append({QStringLiteral("Second"), 700, QColor()});
        fixture.launch->catalogue.refreshMarkerNames(0);
        fixture.window->markersChanged(0);
        QCOMPARE(markersBranch(fixture.window->projectTree()->wellsItem()->child(0))->childCount(), 2);
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
        for (const char *slot : {"syncODDBActionClicked()", "importWellLogsActionClicked()", "exportWellLogsActionClicked()",
                                 "printActionClicked()", "generateReportActionClicked()",
                                 "generateMarkersReportActionClicked()", "documentActionClicked()",
                                 "printPreView(QPrinter*)"})
            QVERIFY2(MainWindow::staticMetaObject.indexOfSlot(slot) >= 0, slot);
    }
};

LORVA_TEST_MAIN(tst_mainwindow)
#include "tst_mainwindow.moc"
