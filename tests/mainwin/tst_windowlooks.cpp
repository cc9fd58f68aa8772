#include "correlation/correlationviewtabwidget.h"
#include "las/exportcurvesinascii.h"
#include "las/welllogexport.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QAction>
#include <QDir>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTemporaryDir>

#include "base/usersettings.h"

namespace {

const QByteArray gammaTrack = "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";

struct WindowFixture : ProjectFixture
{
    WindowFixture()
    {
        addWell(QStringLiteral("A"), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        addWell(QStringLiteral("B"), {QStringLiteral("GR")});
        files::write(path(QStringLiteral("/Templates/Global/Default/Track_1.txt")), gammaTrack);
        files::write(path(QStringLiteral("/Correlations/North/properties.txt")), "0\n");
        open();
        base::keepSettingsIn(settings.path());
        makeWindow();
    }
    void makeWindow()
    {
        window.reset();
        window = std::make_unique<MainWindow>(*launch);
        window->showNormal();
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get()))
            qFatal("the window gets no focus");
    }
    template<class Widget>
    Widget *find(const char *name) const
    {
        auto *widget = window->findChild<Widget *>(QString::fromLatin1(name));
        if (!widget)
            qFatal("no %s", name);
        return widget;
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window.get(), static_cast<Qt::Key>(key), modifiers);
    }
    QString place() const { return find<QLabel>("placeLabel")->text(); }
    // The hint that is seen on the work area in front; empty without one.
    QString hint() const
    {
        const QWidget *page = find<QTabWidget>("centralTabs")->currentWidget();
        for (const QLabel *label : window->findChildren<QLabel *>(QStringLiteral("emptyHint")))
            if (label == page || (page->isAncestorOf(label) && label->isVisible()))
                return label->text();
        return {};
    }
    WellLogsViewWidget *logs() const { return find<WellLogsViewWidget>("WellLogsViewWidget"); }
    CorrelationViewTabWidget *correlations() const
    {
        return find<CorrelationViewTabWidget>("CorrelationViewTabWidget");
    }

    QTemporaryDir settings;
    std::unique_ptr<MainWindow> window;
};

} // namespace

/// What the main window is to its user beside its work: sizes and docks that stay, keys, hints, places.
class tst_windowlooks : public QObject
{
    Q_OBJECT

private slots:
    void aFirstWindowLeavesSomethingOfTheScreen();
    void sizeAndDocksAreKept();
    void aMaximizedWindowKeepsItsOtherSize();
    void aWindowThatWasNeverShownKeepsNothing();
    void nonsenseInTheSettings();
    void shortcuts_data();
    void shortcuts();
    void theWindowClosesTheTabInFront();
    void emptyAreasSayWhatToDo();
    void aSurveyWithoutWellsSaysWhatHelps();
    void theStatusBarSaysWhereReportsLie();
    void theStatusBarSaysWhereExportsLie();
};

void tst_windowlooks::aFirstWindowLeavesSomethingOfTheScreen()
{
    const WindowFixture f;
    const QRect screen = f.window->screen()->availableGeometry();
    QVERIFY(screen.contains(f.window->geometry()));
    QVERIFY(f.window->width() >= screen.width() * 3 / 4 && f.window->width() < screen.width());
    QVERIFY(f.window->height() >= screen.height() * 3 / 4 && f.window->height() < screen.height());
}

void tst_windowlooks::sizeAndDocksAreKept()
{
    WindowFixture f;
    f.window->setGeometry(30, 40, 700, 555);
    auto *properties = f.find<QDockWidget>("propertiesDock");
    f.window->addDockWidget(Qt::LeftDockWidgetArea, properties);
    f.window->resizeDocks({f.find<QDockWidget>("projectDataDock")}, {310}, Qt::Horizontal);
    QCoreApplication::processEvents();
    const int width = f.find<QDockWidget>("projectDataDock")->width();
    QVERIFY(width > 290);
    f.makeWindow(); // a launch deletes the window of the one before
    QCOMPARE(f.window->geometry(), QRect(30, 40, 700, 555));
    QCOMPARE(f.window->dockWidgetArea(f.find<QDockWidget>("propertiesDock")), Qt::LeftDockWidgetArea);
    QTRY_COMPARE(f.find<QDockWidget>("projectDataDock")->width(), width);
    f.find<QDockWidget>("propertiesDock")->close();
    f.window->closeWithoutAsking();
    f.makeWindow();
    QVERIFY(!f.find<QDockWidget>("propertiesDock")->isVisible());
    QVERIFY(f.find<QDockWidget>("projectDataDock")->isVisible());
}

void tst_windowlooks::aMaximizedWindowKeepsItsOtherSize()
{
    WindowFixture f;
    f.window->setGeometry(30, 40, 690, 500);
    f.window->showMaximized();
    const bool isMaximized = QTest::qWaitFor([&f] { return f.window->width() > 700; });
    if (!isMaximized && QGuiApplication::platformName() == QLatin1String("xcb"))
        QSKIP("no window manager maximizes windows here");
    QVERIFY(isMaximized);
    f.window.reset();
    f.window = std::make_unique<MainWindow>(*f.launch);
    f.window->showMaximized(); // as a launch does
    QTRY_VERIFY(f.window->width() > 700);
    f.window->showNormal();
    QTRY_COMPARE(f.window->size(), QSize(690, 500));
}

void tst_windowlooks::aWindowThatWasNeverShownKeepsNothing()
{
    WindowFixture f;
    f.window->setGeometry(30, 40, 690, 500);
    f.window.reset();
    {
        MainWindow unseen(*f.launch);
        unseen.setGeometry(0, 0, 200, 200);
    }
    f.makeWindow();
    QCOMPARE(f.window->size(), QSize(690, 500));
}

void tst_windowlooks::nonsenseInTheSettings()
{
    WindowFixture f;
    f.window.reset();
    base::pluginSettings().setValue(QStringLiteral("MainWindow/geometry"), QByteArray("nonsense"));
    base::pluginSettings().setValue(QStringLiteral("MainWindow/docks"), 17);
    f.makeWindow();
    QVERIFY(f.window->screen()->availableGeometry().contains(f.window->geometry()));
    QVERIFY(f.find<QDockWidget>("projectDataDock")->isVisible());
}

void tst_windowlooks::shortcuts_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("action");
    const int ctrl = Qt::ControlModifier;
    QTest::newRow("F5") << int(Qt::Key_F5) << 0 << "syncAction";
    QTest::newRow("Ctrl+I") << int(Qt::Key_I) << ctrl << "importAction";
    QTest::newRow("Ctrl+E") << int(Qt::Key_E) << ctrl << "exportAction";
    QTest::newRow("Ctrl+P") << int(Qt::Key_P) << ctrl << "printAction";
}

void tst_windowlooks::shortcuts()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, action);
    WindowFixture f;
    auto *found = f.window->findChild<QAction *>(action);
    found->disconnect(f.window.get()); // what it does has tests of its own
    int triggered = 0;
    connect(found, &QAction::triggered, this, [&] { ++triggered; });
    f.press(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(triggered, 1);
}

void tst_windowlooks::theWindowClosesTheTabInFront()
{
    WindowFixture f;
    f.logs()->addWellDisWidget(QStringLiteral("A"), QStringLiteral("Default"));
    f.logs()->addWellDisWidget(QStringLiteral("B"), QStringLiteral("Default"));
    f.logs()->setCurrentTab(0);
    f.press(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(f.logs()->displayedWells(), QStringList("B"));
    f.correlations()->addCorrelation(f.window->projectTree()->correlationsItem()->child(0));
    QCOMPARE(f.correlations()->names().size(), 1);
    f.press(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(f.correlations()->names().isEmpty());
    QCOMPARE(f.logs()->displayedWells(), QStringList("B")); // not in front
    f.press(Qt::Key_W, Qt::ControlModifier); // nothing to close
    f.find<QTabWidget>("centralTabs")->setCurrentIndex(2);
    f.press(Qt::Key_W, Qt::ControlModifier);
    f.find<QTabWidget>("centralTabs")->setCurrentIndex(0);
    f.press(Qt::Key_W, Qt::ControlModifier);
    f.press(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(f.logs()->displayedWells().isEmpty());
    QVERIFY(f.window->isVisible());
    QVERIFY(f.asker.boxes.isEmpty());
}

void tst_windowlooks::emptyAreasSayWhatToDo()
{
    WindowFixture f;
    auto *pages = f.find<QTabWidget>("centralTabs");
    QVERIFY(f.hint().startsWith(QLatin1String("Check a well in the project tree")));
    f.logs()->addWellDisWidget(QStringLiteral("A"), QStringLiteral("Default"));
    QCOMPARE(f.hint(), QString());
    f.logs()->addWellDisWidget(QStringLiteral("A"), QStringLiteral("Default")); // displayed anew
    QCOMPARE(f.hint(), QString());
    f.logs()->tabClose(0);
    QVERIFY(!f.hint().isEmpty());
    pages->setCurrentIndex(1);
    QVERIFY(f.hint().startsWith(QLatin1String("Double-click a correlation")));
    f.correlations()->addCorrelation(f.window->projectTree()->correlationsItem()->child(0));
    QCOMPARE(f.hint(), QString());
    f.correlations()->closeCurrent();
    QVERIFY(!f.hint().isEmpty());
}

void tst_windowlooks::aSurveyWithoutWellsSaysWhatHelps()
{
    const QString noWells = QStringLiteral("This survey has no wells yet.");
    const QString check = QStringLiteral("Check a well in the project tree");
    WindowFixture f;
    f.host.storedWells.clear();
    const auto sync = [&f] { f.window->findChild<QAction *>(QStringLiteral("syncAction"))->trigger(); };
    sync();
    QVERIFY2(f.hint().startsWith(noWells), qPrintable(f.hint()));
    f.makeWindow(); // a launch without wells
    QVERIFY(f.hint().startsWith(noWells));
    f.addWell(QStringLiteral("C"), {QStringLiteral("GR")});
    sync();
    QVERIFY(f.hint().startsWith(check));
}

void tst_windowlooks::theStatusBarSaysWhereReportsLie()
{
    for (const char *action : {"wellsReportAction", "markersReportAction"}) {
        WindowFixture f;
        QCOMPARE(f.place(), QString());
        f.window->findChild<QAction *>(QString::fromLatin1(action))->trigger();
        QVERIFY2(f.place().endsWith(QLatin1String(" in ") + f.launch->project.projectFolder), qPrintable(f.place()));
        QVERIFY(f.find<QLabel>("placeLabel")->isVisible());
    }
    // A report that was not written lies nowhere.
    WindowFixture failing;
    QDir().mkpath(failing.path(QStringLiteral("/Well_Markers_Info.txt/in its place")));
    failing.window->findChild<QAction *>(QStringLiteral("markersReportAction"))->trigger();
    QCOMPARE(failing.place(), QString());
}

void tst_windowlooks::theStatusBarSaysWhereExportsLie()
{
    WindowFixture f;
    const QTemporaryDir out;
    f.window->findChild<QAction *>(QStringLiteral("exportAction"))->trigger();
    auto *dialog = f.window->findChild<WellLogExport *>();
    dialog->findChild<QListWidget *>(QStringLiteral("wellList"))->item(0)->setCheckState(Qt::Checked);
    dialog->findChild<QListWidget *>(QStringLiteral("logList"))->item(0)->setCheckState(Qt::Checked);
    dialog->findChild<QLineEdit *>(QStringLiteral("folderEdit"))->setText(out.filePath(QStringLiteral("missing")));
    dialog->exportBtnClicked();
    QCOMPARE(f.place(), QString()); // there is no such folder
    dialog->findChild<QLineEdit *>(QStringLiteral("folderEdit"))->setText(out.path());
    dialog->exportBtnClicked();
    QVERIFY2(f.place().endsWith(QLatin1String(" in ") + out.path()), qPrintable(f.place()));

    dialog->curvesInAsciiClicked();
    auto *ascii = dialog->findChild<ExportCurvesInAscii *>();
    ascii->exportClicked(); // nothing is checked
    QVERIFY(f.place().endsWith(out.path()));
    ascii->selectAllToggle(true);
    ascii->exportClicked();
    QVERIFY2(f.place().endsWith(QLatin1String("/WLC/Wells")), qPrintable(f.place()));
}

LORVA_TEST_MAIN(tst_windowlooks)
#include "tst_windowlooks.moc"
