#include "displayfixture.h"
#include "logview/geometry/depthscales.h"
#include "logview/geometry/samplelookup.h"
#include "logview/welllogsviewwidget.h"
#include "logview/wheelsteps.h"
#include "support/testmain.h"

#include <QScrollBar>
#include <QTabWidget>
#include <QTreeWidget>
#include <QWheelEvent>

#include <limits>

namespace {

const QByteArray gammaTrack = "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";

struct NavigationFixture : DisplayFixture
{
    explicit NavigationFixture(float firstDepth = 0)
    {
        addLog(QStringLiteral("GR"), {firstDepth, 700, 1000, 1500}, {75, 80, 85, 90});
        addTrack(1, gammaTrack);
        addTrack(2, depthTrack);
    }
    void open1500()
    {
        show();
        QVERIFY(QTest::qWaitForWindowExposed(display.get()));
    }
    WellLogsView *view() const { return display->logView(); }
    QWidget *viewport() const { return view()->viewport(); }
    QScrollBar *bar() const { return view()->verticalScrollBar(); }
    // Measured depth in metres that stands on a row of the view.
    double depthAt(int row) const
    {
        return scene()->depthReference().toMeasuredM(scene()->depthAxis().toDepth(view()->mapToScene(0, row).y()));
    }
    double metresPerRow() const { return qAbs(depthAt(101) - depthAt(100)); }
    int middle() const { return viewport()->height() / 2; }
    void turnWheel(const QPoint &place, int angle, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const
    {
        QWheelEvent event(place, viewport()->mapToGlobal(place), {}, {0, angle}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(viewport(), &event);
    }
    void mouse(QEvent::Type type, const QPoint &place, Qt::MouseButton button = Qt::NoButton,
               Qt::MouseButtons held = Qt::NoButton) const
    {
        QMouseEvent event(type, place, viewport()->mapToGlobal(place), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(viewport(), &event);
    }
    QString scaleText() const { return text(panel(), "scaleEdit"); }
};

// The well in a tab, and a template that stays when the well gets another name.
struct RenamingFixture : NavigationFixture
{
    RenamingFixture()
        : NavigationFixture(600)
    {
        files::write(path(QStringLiteral("/Templates/Global/T/Track_1.txt")), gammaTrack);
        open();
        launch->project.globalTemplateNames = globalTemplateNames(launch->project);
        logs = std::make_unique<WellLogsViewWidget>(*launch, &dock, &tree);
        logs->resize(800, 700);
        logs->show();
        if (!QTest::qWaitForWindowExposed(logs.get()))
            qFatal("the displays do not come up");
        logs->addWellDisWidget(QStringLiteral("W"), QStringLiteral("T"));
        QCoreApplication::processEvents();
    }
    void rename(const char *name)
    {
        well().header.name = QString::fromLatin1(name);
        launch->catalogue.build();
        logs->synchronise();
        QCoreApplication::processEvents();
    }

    QTreeWidget tree;
    std::unique_ptr<WellLogsViewWidget> logs;
};

} // namespace

/// Where a display opens, and how mouse and keys move along its depths.
class tst_depthnavigation : public QObject
{
    Q_OBJECT

private slots:
    void scalesOfTheList_data();
    void scalesOfTheList();
    void stepsOfAWheel();
    void shallowestSamples();

    void opensAtTheFirstSample();
    void opensAtTheFirstValueOfAnyTrack();
    void opensAtTheTopWithoutSamples();
    void opensInATabAtTheFirstSample();
    void aDisplayThatWasSeenKeepsItsMiddle();
    void aDisplayThatWasScrolledStaysThere();
    void typeUnitScaleAndRangeKeepTheDepth();
    void aWidthKeepsThePlaceExactly();
    void anotherTemplateKeepsTheDepth();
    void displayedAgainAndAgainTheDepthDoesNotCreep();
    void anotherTemplateKeepsADepthOfAnotherScale();
    void aRenamedWellKeepsTheDepth();
    void aRenamedWellKeepsWhatItsPanelSays();

    void theWheelWalksTheScales();
    void theWheelKeepsTheDepthUnderTheMouse();
    void theWheelThereAndBackLosesNothing();
    void theWheelStopsAtTheEndsOfTheDepths();
    void theWheelWithoutCtrlScrolls();
    void fineWheels();
    void keys();
    void theMiddleButtonDrags();
    void theMiddleButtonDragsWhilePicking();
    void aReleaseThatWentElsewhere();
};

void tst_depthnavigation::scalesOfTheList_data()
{
    QTest::addColumn<float>("scale");
    QTest::addColumn<int>("steps");
    QTest::addColumn<float>("expected");
    const QVector<float> scales{100, 200, 500, 1000, 2000, 5000, 10000};
    for (int i = 0; i + 1 < scales.size(); ++i) {
        QTest::addRow("coarser than %g", static_cast<double>(scales.at(i))) << scales.at(i) << 1 << scales.at(i + 1);
        QTest::addRow("finer than %g", static_cast<double>(scales.at(i + 1)))
            << scales.at(i + 1) << -1 << scales.at(i);
    }
    QTest::newRow("finest") << 100.0F << -1 << 100.0F;
    QTest::newRow("coarsest") << 10000.0F << 1 << 10000.0F;
    QTest::newRow("between, coarser") << 750.0F << 1 << 1000.0F;
    QTest::newRow("between, finer") << 750.0F << -1 << 500.0F;
    QTest::newRow("finer than the list, on") << 20.0F << -3 << 20.0F;
    QTest::newRow("finer than the list, back") << 20.0F << 1 << 100.0F;
    QTest::newRow("coarser than the list, on") << 40000.0F << 2 << 40000.0F;
    QTest::newRow("coarser than the list, back") << 40000.0F << -1 << 10000.0F;
    QTest::newRow("three") << 200.0F << 3 << 2000.0F;
    QTest::newRow("a million") << 200.0F << 1000000 << 10000.0F;
    QTest::newRow("none") << 750.0F << 0 << 750.0F;
}

void tst_depthnavigation::scalesOfTheList()
{
    QFETCH(float, scale);
    QFETCH(int, steps);
    QFETCH(float, expected);
    QCOMPARE(logview::steppedScale(scale, steps), expected);
}

void tst_depthnavigation::stepsOfAWheel()
{
    logview::WheelSteps wheel;
    QCOMPARE(wheel.take(120), 1);
    QCOMPARE(wheel.take(-240), -2);
    QCOMPARE(wheel.take(50), 0);
    QCOMPARE(wheel.take(0), 0);
    QCOMPARE(wheel.take(50), 0);
    QCOMPARE(wheel.take(50), 1); // 30 are left
    QCOMPARE(wheel.take(-100), 0);
    QCOMPARE(wheel.take(-20), -1);
    QCOMPARE(wheel.take(110), 0);
    QCOMPARE(wheel.take(-119), 0);
}

void tst_depthnavigation::shallowestSamples()
{
    const auto shallowest = [](const QVector<float> &depths, const QVector<float> &values) {
        return logview::shallowestDepthM(logview::CurveSamples(depths, values)).value_or(-1);
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    QCOMPARE(shallowest({}, {}), -1.0);
    QCOMPARE(shallowest({10, 20, 30}, {-999.25, nan, 5}), 30.0);
    QCOMPARE(shallowest({10, 20, 30}, {-999.25, -999.25, -999.25}), -1.0);
    QCOMPARE(shallowest({30, 20, 10}, {5, 5, -999.25}), 20.0);
    QCOMPARE(shallowest({20, 10, nan, 30}, {5, 5, 5, 5}), 10.0);
    QCOMPARE(shallowest({10, 20}, {1, 2}), 10.0);
}

void tst_depthnavigation::opensAtTheFirstSample()
{
    NavigationFixture f(600);
    f.open1500();
    // The range stays what it is.
    QCOMPARE(f.text(f.panel(), "startDepthEdit"), QString("0"));
    QCOMPARE(f.text(f.panel(), "endDepthEdit"), QString("1500"));
    const double row = f.scene()->depthAxis().toScenePixel(600) - f.view()->mapToScene(0, 0).y();
    QVERIFY2(row > 0 && row < f.viewport()->height() / 10, qPrintable(QString::number(row)));
}

void tst_depthnavigation::opensAtTheFirstValueOfAnyTrack()
{
    NavigationFixture f(600);
    f.addLog(QStringLiteral("CALI"), {100, 400, 1200}, {-999.25F, 8, 9});
    f.addTrack(3, "Linear\nCaliper | CALI | 6 | 16 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n");
    f.open1500();
    const double row = f.scene()->depthAxis().toScenePixel(400) - f.view()->mapToScene(0, 0).y();
    QVERIFY2(row > 0 && row < f.viewport()->height() / 10, qPrintable(QString::number(row)));
}

void tst_depthnavigation::opensAtTheTopWithoutSamples()
{
    for (const float value : {-999.25F, std::numeric_limits<float>::quiet_NaN()}) {
        NavigationFixture f;
        f.well().logs = {{QStringLiteral("GR"), QStringLiteral("gapi"), {600, 700}, {value, value}}};
        f.open1500();
        QCOMPARE(f.bar()->value(), 0);
    }
}

// As in the main window: the page gets its size after it was built.
void tst_depthnavigation::opensInATabAtTheFirstSample()
{
    NavigationFixture f;
    f.well().logs.first().depths = {1450, 1460, 1470, 1480};
    f.open();
    QTabWidget tabs;
    tabs.resize(700, 900);
    tabs.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tabs));
    auto *display = new WellDisplayWidget(*f.launch, QStringLiteral("W"), QStringLiteral("T"), nullptr);
    tabs.addTab(display, QString());
    QCoreApplication::processEvents();
    QScrollBar *bar = display->logView()->verticalScrollBar();
    QCOMPARE(bar->value(), bar->maximum()); // 1450 m would stand higher if the display went on
    display->openAtDepth(700);
    tabs.resize(700, 500);
    QCoreApplication::processEvents();
    QVERIFY(qAbs(display->depthInView() - 700) < 60); // seen: only its top stays
}

// Where it opened counts no more once it was seen: another scale leaves what is in the middle.
void tst_depthnavigation::aDisplayThatWasSeenKeepsItsMiddle()
{
    NavigationFixture f(600);
    f.open1500();
    QCoreApplication::processEvents();
    const double depth = f.depthAt(f.middle());
    QVERIFY(qAbs(depth - 600) > 5);
    f.type(f.panel(), "scaleEdit", QStringLiteral("200"));
    QVERIFY2(qAbs(f.depthAt(f.middle()) - depth) <= f.metresPerRow(),
             qPrintable(QString::number(f.depthAt(f.middle()) - depth)));
}

void tst_depthnavigation::aDisplayThatWasScrolledStaysThere()
{
    NavigationFixture f(600);
    f.show();
    f.bar()->setValue(77); // before it was seen
    f.display->resize(800, 700);
    QVERIFY(QTest::qWaitForWindowExposed(f.display.get()));
    QCOMPARE(f.bar()->value(), 77);
    f.type(f.panel(), "scaleEdit", QStringLiteral("500"));
    QVERIFY(f.depthAt(f.middle()) < 150);
}

void tst_depthnavigation::typeUnitScaleAndRangeKeepTheDepth()
{
    NavigationFixture f;
    f.open1500();
    f.bar()->setValue(static_cast<int>(f.scene()->depthAxis().toScenePixel(900)) - f.middle());
    const double depth = f.depthAt(f.middle());
    QVERIFY(qAbs(depth - 900) < 1);
    const auto isKept = [&] { return qAbs(f.depthAt(f.middle()) - depth) <= f.metresPerRow(); };
    for (int round = 0; round < 2; ++round) {
        f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
        QVERIFY(isKept());
        f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
        QVERIFY(isKept());
        f.type(f.panel(), "scaleEdit", QStringLiteral("200"));
        QVERIFY(isKept());
        f.choose(f.panel(), "depthTypeBox", QStringLiteral("MD"));
        QVERIFY(isKept());
        f.type(f.panel(), "scaleEdit", QStringLiteral("3000"));
        QVERIFY(isKept());
        f.choose(f.panel(), "depthUnitBox", QStringLiteral("METER"));
        f.type(f.panel(), "scaleEdit", QStringLiteral("1000"));
        QVERIFY(isKept());
        f.type(f.panel(), "startDepthEdit", QStringLiteral("500"));
        QVERIFY(isKept());
        f.type(f.panel(), "startDepthEdit", QStringLiteral("0"));
        QVERIFY(isKept());
    }
}

void tst_depthnavigation::aWidthKeepsThePlaceExactly()
{
    NavigationFixture f;
    f.open1500();
    for (const int value : {1, 777, 1234, 4321, f.bar()->maximum()}) {
        f.bar()->setValue(value);
        f.track(0)->setWidthInches(f.track(0)->width() / 96 + 0.5F);
        QCOMPARE(f.bar()->value(), value);
    }
    // Rows finer than what a depth in single precision can tell.
    f.type(f.panel(), "scaleEdit", QStringLiteral("0.01"));
    for (const int value : {300000003, 400000001}) {
        f.bar()->setValue(value);
        f.track(0)->setWidthInches(f.track(0)->width() / 96 + 0.5F);
        QCOMPARE(f.bar()->value(), value);
    }
}

void tst_depthnavigation::anotherTemplateKeepsTheDepth()
{
    NavigationFixture f(600);
    files::write(f.path(QStringLiteral("/Templates/W/U/Track_1.txt")), gammaTrack + gammaTrack.mid(7));
    f.open();
    QTreeWidget tree;
    WellLogsViewWidget view(*f.launch, &f.dock, &tree);
    view.resize(800, 700);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    for (const double depth : {20.0, 432.1, 1000.0, 1490.0}) {
        view.addWellDisWidget(QStringLiteral("W"), QStringLiteral("T"));
        QCoreApplication::processEvents();
        WellLogsView *log = view.currentDisplay()->logView();
        const WellLogsScene *scene = view.currentDisplay()->scene();
        log->centerOn(0, scene->depthAxis().toScenePixel(depth));
        QCoreApplication::processEvents();
        const double before = view.currentDisplay()->depthInView();
        view.addWellDisWidget(QStringLiteral("W"), QStringLiteral("U"));
        QCoreApplication::processEvents();
        QCOMPARE(view.displayedWells().size(), 1);
        // At the ends the view, which is a little lower now, cannot centre it.
        QVERIFY2(qAbs(view.currentDisplay()->depthInView() - before) < (depth > 100 && depth < 1400 ? 0.6 : 10),
                 qPrintable(QString::number(view.currentDisplay()->depthInView())));
    }
}

// While a display finds its size it may have a scroll bar below for a moment, and be seen with it.
void tst_depthnavigation::displayedAgainAndAgainTheDepthDoesNotCreep()
{
    NavigationFixture f(600);
    for (const int track : {3, 4, 5})
        f.addTrack(track, gammaTrack);
    f.open();
    QTreeWidget tree;
    WellLogsViewWidget view(*f.launch, &f.dock, &tree);
    view.resize(1200, 900);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.addWellDisWidget(QStringLiteral("W"), QStringLiteral("T"));
    QCoreApplication::processEvents();
    const auto log = [&view] { return view.currentDisplay()->logView(); };
    QVERIFY(log()->sceneRect().width() > 640 && log()->horizontalScrollBar()->maximum() == 0);
    log()->verticalScrollBar()->setValue(2000);
    QCoreApplication::processEvents();
    for (int i = 0; i < 5; ++i) {
        view.addWellDisWidget(QStringLiteral("W"), QStringLiteral("T"));
        QCoreApplication::processEvents();
        QVERIFY2(qAbs(log()->verticalScrollBar()->value() - 2000) <= 1,
                 qPrintable(QString::number(log()->verticalScrollBar()->value())));
    }
    // A window of another size shows the same below its top.
    const int top = log()->verticalScrollBar()->value();
    view.resize(1200, 700);
    QCoreApplication::processEvents();
    QCOMPARE(log()->verticalScrollBar()->value(), top);
    // Also when it was scrolled meanwhile and gets a scroll bar below.
    log()->verticalScrollBar()->setValue(1500);
    view.resize(600, 700);
    QCoreApplication::processEvents();
    QVERIFY(log()->horizontalScrollBar()->maximum() > 0);
    QCOMPARE(log()->verticalScrollBar()->value(), 1500);
}

void tst_depthnavigation::anotherTemplateKeepsADepthOfAnotherScale()
{
    NavigationFixture f(600);
    f.open();
    QTreeWidget tree;
    WellLogsViewWidget view(*f.launch, &f.dock, &tree);
    view.resize(800, 700);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.addWellDisWidget(QStringLiteral("W"), QStringLiteral("T"));
    QCoreApplication::processEvents();
    for (const char *change : {"200", "5000"}) {
        const WellDisplayWidget *display = view.currentDisplay();
        f.type(display->scene()->panel(), "scaleEdit", QString::fromLatin1(change));
        display->logView()->centerOn(0, display->scene()->depthAxis().toScenePixel(800));
        const double before = display->depthInView();
        QVERIFY(qAbs(before - 800) < 3);
        view.addWellDisWidget(QStringLiteral("W"), QStringLiteral("T"));
        QCoreApplication::processEvents();
        QCOMPARE(f.text(view.currentDisplay()->scene()->panel(), "scaleEdit"), QString("1000"));
        QVERIFY(qAbs(view.currentDisplay()->depthInView() - before) < 0.6);
    }
}

void tst_depthnavigation::aRenamedWellKeepsTheDepth()
{
    RenamingFixture f;
    f.logs->currentDisplay()->logView()->verticalScrollBar()->setValue(4000);
    const double before = f.logs->currentDisplay()->depthInView();
    f.rename("V");
    QCOMPARE(f.logs->displayedWells(), QStringList("V"));
    QVERIFY(qAbs(f.logs->currentDisplay()->depthInView() - before) < 0.6);
}

void tst_depthnavigation::aRenamedWellKeepsWhatItsPanelSays()
{
    RenamingFixture f;
    const auto panel = [&f] { return f.logs->currentDisplay()->scene()->panel(); };
    const auto says = [&f, &panel] {
        QStringList texts;
        for (const char *field : {"scaleEdit", "startDepthEdit", "endDepthEdit"})
            texts.append(f.text(panel(), field));
        for (const char *box : {"depthTypeBox", "depthUnitBox"})
            texts.append(panel()->findChild<QComboBox *>(QString::fromLatin1(box))->currentText());
        return texts.join(QLatin1Char(' '));
    };
    f.choose(panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    f.choose(panel(), "depthUnitBox", QStringLiteral("FEET"));
    f.type(panel(), "scaleEdit", QStringLiteral("500"));
    f.rename("V");
    QCOMPARE(f.logs->currentDisplay()->wellName(), QString("V"));
    QCOMPARE(says(), QString("500 -82.021 4839.24 TVDSS FEET"));
    f.type(panel(), "startDepthEdit", QStringLiteral("1000.5"));
    f.type(panel(), "endDepthEdit", QStringLiteral("2000"));
    const double height = f.logs->currentDisplay()->scene()->sceneRect().height();
    f.rename("U");
    QCOMPARE(says(), QString("500 1000.5 2000 TVDSS FEET"));
    QCOMPARE(f.logs->currentDisplay()->scene()->sceneRect().height(), height);
    // Another depth of the well is shown whole.
    f.well().header.totalDepth = 1600;
    f.rename("T");
    QCOMPARE(says(), QString("500 -82.021 5167.32 TVDSS FEET"));
    f.type(panel(), "startDepthEdit", QStringLiteral("0"));
    f.well().header.kbElevation = 30;
    f.rename("S");
    QCOMPARE(says(), QString("500 -98.4252 5150.92 TVDSS FEET"));
}

void tst_depthnavigation::theWheelWalksTheScales()
{
    NavigationFixture f;
    f.open1500();
    const QPoint place(100, 150);
    QStringList seen;
    for (int i = 0; i < 5; ++i) {
        f.turnWheel(place, 120);
        seen += f.scaleText();
    }
    QCOMPARE(seen, (QStringList{"500", "200", "100", "100", "100"}));
    QCOMPARE(f.track(0)->scale(), 100.0F);
    seen.clear();
    for (int i = 0; i < 8; ++i) {
        f.turnWheel(place, -120);
        seen += f.scaleText();
    }
    QCOMPARE(seen, (QStringList{"200", "500", "1000", "2000", "5000", "10000", "10000", "10000"}));
    QCOMPARE(f.scene()->trackHeight(), logview::toInt(static_cast<double>(logview::trackHeight(0, 1500, 10000))));
    f.type(f.panel(), "scaleEdit", QStringLiteral("750"));
    f.turnWheel(place, 120);
    QCOMPARE(f.scaleText(), QString("500"));
    // The field counts as untouched: leaving it changes nothing.
    f.bar()->setValue(3000);
    emit f.panel()->findChild<QLineEdit *>(QStringLiteral("scaleEdit"))->editingFinished();
    QCOMPARE(f.bar()->value(), 3000);
}

void tst_depthnavigation::theWheelKeepsTheDepthUnderTheMouse()
{
    NavigationFixture f;
    f.open1500();
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    for (const int row : {3, 111, f.viewport()->height() - 5}) {
        f.type(f.panel(), "scaleEdit", QStringLiteral("1000"));
        f.bar()->setValue(2500);
        for (const int angle : {120, 120, -120, -120, 120, 120, 120}) {
            const double before = f.depthAt(row);
            const double tolerance = f.metresPerRow();
            f.turnWheel(QPoint(120, row), angle);
            QVERIFY(qAbs(f.depthAt(row) - before) <= tolerance + f.metresPerRow());
        }
        QCOMPARE(f.scaleText(), QString("100"));
    }
}

void tst_depthnavigation::theWheelThereAndBackLosesNothing()
{
    NavigationFixture f;
    f.well().header.totalDepth = 60000; // at 1:10000 still longer than the view
    f.open1500();
    f.type(f.panel(), "scaleEdit", QStringLiteral("100"));
    f.bar()->setValue(1000003);
    for (int i = 0; i < 6; ++i)
        f.turnWheel(QPoint(120, 77), -120);
    QCOMPARE(f.scaleText(), QString("10000"));
    for (int i = 0; i < 6; ++i)
        f.turnWheel(QPoint(120, 77), 120);
    QVERIFY2(qAbs(f.bar()->value() - 1000003) <= 1, qPrintable(QString::number(f.bar()->value())));
}

// Where everything fits into the view, the mouse points at another depth, and that one counts from there on.
void tst_depthnavigation::theWheelStopsAtTheEndsOfTheDepths()
{
    NavigationFixture f;
    f.open1500();
    f.display->resize(800, 1100);
    QCoreApplication::processEvents();
    f.bar()->setValue(3000);
    const QPoint place(120, 60);
    for (int i = 0; i < 3; ++i)
        f.turnWheel(place, -120);
    QCOMPARE(f.bar()->maximum(), 0);
    const double pointedAt = f.depthAt(place.y());
    const double tolerance = f.metresPerRow();
    for (int i = 0; i < 3; ++i)
        f.turnWheel(place, 120);
    QCOMPARE(f.scaleText(), QString("1000"));
    QVERIFY(qAbs(f.depthAt(place.y()) - pointedAt) <= tolerance);
}

void tst_depthnavigation::theWheelWithoutCtrlScrolls()
{
    NavigationFixture f;
    f.open1500();
    f.turnWheel(QPoint(100, 100), -120, Qt::NoModifier);
    QVERIFY(f.bar()->value() > 0);
    QCOMPARE(f.scaleText(), QString("1000"));
    const int value = f.bar()->value();
    f.turnWheel(QPoint(100, 100), 0, Qt::ControlModifier);
    QCOMPARE(f.bar()->value(), value);
    QCOMPARE(f.scaleText(), QString("1000"));
}

void tst_depthnavigation::fineWheels()
{
    NavigationFixture f;
    f.open1500();
    for (int i = 0; i < 7; ++i)
        f.turnWheel(QPoint(100, 100), -15);
    QCOMPARE(f.scaleText(), QString("1000"));
    f.turnWheel(QPoint(100, 100), -15);
    QCOMPARE(f.scaleText(), QString("2000"));
    f.turnWheel(QPoint(100, 100), 360);
    QCOMPARE(f.scaleText(), QString("200"));
}

void tst_depthnavigation::keys()
{
    NavigationFixture f;
    f.open1500();
    QTest::keyClick(f.view(), Qt::Key_End);
    QCOMPARE(f.bar()->value(), f.bar()->maximum());
    QTest::keyClick(f.view(), Qt::Key_PageUp);
    const int page = f.bar()->maximum() - f.bar()->value();
    QVERIFY(page > f.viewport()->height() * 3 / 4 && page <= f.viewport()->height());
    QTest::keyClick(f.view(), Qt::Key_Home);
    QCOMPARE(f.bar()->value(), f.bar()->minimum());
    QTest::keyClick(f.view(), Qt::Key_PageDown);
    QCOMPARE(f.bar()->value(), page);
    QTest::keyClick(f.view(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(f.bar()->value(), f.bar()->maximum());
    QTest::keyClick(f.view(), Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(f.bar()->value(), f.bar()->minimum());
    QTest::keyClick(f.view(), Qt::Key_End, Qt::AltModifier);
    QCOMPARE(f.bar()->value(), f.bar()->minimum());
}

void tst_depthnavigation::theMiddleButtonDrags()
{
    NavigationFixture f;
    f.open1500();
    f.display->resize(200, 500);
    QTRY_VERIFY(f.view()->horizontalScrollBar()->maximum() > f.view()->horizontalScrollBar()->minimum() + 20);
    f.bar()->setValue(1000);
    const int left = f.view()->horizontalScrollBar()->value();
    const QWidget *panel = f.dock.widget();
    f.mouse(QEvent::MouseButtonPress, QPoint(100, 200), Qt::MiddleButton, Qt::MiddleButton);
    QCOMPARE(f.viewport()->cursor().shape(), Qt::ClosedHandCursor);
    f.mouse(QEvent::MouseMove, QPoint(90, 150), Qt::NoButton, Qt::MiddleButton);
    QCOMPARE(f.bar()->value(), 1050);
    QCOMPARE(f.view()->horizontalScrollBar()->value(), left + 10);
    f.mouse(QEvent::MouseMove, QPoint(95, 210), Qt::NoButton, Qt::MiddleButton);
    QCOMPARE(f.bar()->value(), 990);
    f.mouse(QEvent::MouseButtonRelease, QPoint(95, 210), Qt::MiddleButton);
    QVERIFY(f.viewport()->cursor().shape() != Qt::ClosedHandCursor);
    f.mouse(QEvent::MouseMove, QPoint(95, 300));
    QCOMPARE(f.bar()->value(), 990);
    QVERIFY(f.scene()->selectedItems().isEmpty());
    QCOMPARE(f.dock.widget(), panel);
}

void tst_depthnavigation::theMiddleButtonDragsWhilePicking()
{
    NavigationFixture f;
    f.open1500();
    f.bar()->setValue(1000);
    f.view()->startPicking();
    const MarkerItem *marker = f.scene()->markers().last();
    f.mouse(QEvent::MouseMove, QPoint(100, 200));
    QCOMPARE(marker->y(), 1200.0);
    f.mouse(QEvent::MouseButtonPress, QPoint(100, 200), Qt::MiddleButton, Qt::MiddleButton);
    f.mouse(QEvent::MouseMove, QPoint(100, 150), Qt::NoButton, Qt::MiddleButton);
    QCOMPARE(f.bar()->value(), 1050);
    QCOMPARE(marker->y(), 1200.0); // the paper went along
    f.mouse(QEvent::MouseButtonRelease, QPoint(100, 150), Qt::MiddleButton);
    QVERIFY(f.view()->isPicking());
    QCOMPARE(f.viewport()->cursor().shape(), Qt::CrossCursor);
    f.turnWheel(QPoint(100, 150), -120, Qt::NoModifier);
    QCOMPARE(marker->y(), static_cast<double>(f.bar()->value() + 150)); // under the mouse, which stood still
    QTest::keyClick(f.view(), Qt::Key_Escape);
    QVERIFY(f.viewport()->cursor().shape() != Qt::CrossCursor);
}

void tst_depthnavigation::aReleaseThatWentElsewhere()
{
    NavigationFixture f;
    f.open1500();
    f.bar()->setValue(1000);
    f.mouse(QEvent::MouseButtonPress, QPoint(100, 200), Qt::MiddleButton, Qt::MiddleButton);
    f.mouse(QEvent::MouseMove, QPoint(100, 100)); // no button is held any more
    QCOMPARE(f.bar()->value(), 1000);
    QVERIFY(f.viewport()->cursor().shape() != Qt::ClosedHandCursor);
}

LORVA_TEST_MAIN(tst_depthnavigation)
#include "tst_depthnavigation.moc"
