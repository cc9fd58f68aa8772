#include "displayfixture.h"
#include "paintwatch.h"
#include "support/testmain.h"

#include <QBackingStore>
#include <QMenu>
#include <QProcess>
#include <QScrollBar>
#include <QWheelEvent>

namespace {

const QByteArray gammaTrack =
    "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffee00|0,#ffffff|Left Boundary | None | 0 | 0\n";
const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";
const QColor cursorColor(0x50, 0x50, 0x50);

struct CursorFixture : DisplayFixture
{
    CursorFixture()
    {
        QVector<float> depths;
        QVector<float> values;
        for (int i = 0; i < 15000; ++i) {
            depths.append(static_cast<float>(i) / 10);
            values.append(static_cast<float>(30 + i % 97));
        }
        addLog(QStringLiteral("GR"), depths, values);
        addTrack(1, gammaTrack);
        addTrack(2, depthTrack);
        addTrack(3, gammaTrack);
        addMarker(QStringLiteral("Top"), 90);
        show();
        showMarker(QStringLiteral("Top"));
        if (!QTest::qWaitForWindowExposed(display.get()))
            qFatal("no window");
        QCoreApplication::processEvents();
    }
    WellLogsView *view() const { return display->logView(); }
    QWidget *viewport() const { return view()->viewport(); }
    QScrollBar *bar() const { return view()->verticalScrollBar(); }
    double ratio() const { return display->devicePixelRatioF(); }
    void moveMouse(const QPoint &place) const
    {
        QMouseEvent event(QEvent::MouseMove, place, viewport()->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(viewport(), &event);
    }
    void leave() const
    {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(viewport(), &event);
    }
    void turnWheel(int angle) const
    {
        const QPoint place(100, 100);
        QWheelEvent event(place, viewport()->mapToGlobal(place), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(viewport(), &event);
    }
    // What stands in the window, without anything being painted for it.
    QImage window() const
    {
        QCoreApplication::processEvents();
        const QPaintDevice *device = display->backingStore()->paintDevice();
        if (device->devType() != QInternal::Image)
            qFatal("the window is no image");
        QImage image = static_cast<const QImage *>(device)->convertToFormat(QImage::Format_RGB32);
        image.setDevicePixelRatio(1);
        return image;
    }
    QImage fresh() const
    {
        for (QWidget *widget : display->findChildren<QWidget *>())
            widget->update();
        return window();
    }
    // The log view's part of it: the line below it tells what the mouse reads.
    QImage log(const QImage &image) const
    {
        const QPointF corner = ratio() * QPointF(viewport()->mapTo(display.get(), QPoint()));
        return image.copy(QRect(corner.toPoint(), viewport()->size() * ratio()));
    }
    // The color in the window at the middle of a pixel of the viewport.
    QColor colorIn(const QImage &image, int x, int y) const
    {
        const QPointF place = ratio() * (QPointF(viewport()->mapTo(display.get(), QPoint(x, y))) + QPointF(0.5, 0.5));
        return image.pixelColor(static_cast<int>(place.x()), static_cast<int>(place.y()));
    }
    // The rows of the viewport on which the line stands, right of all curves and texts.
    QVector<int> lineRows() const
    {
        QVector<int> rows;
        const QImage image = window();
        for (int y = 0; y < viewport()->height(); ++y)
            if (colorIn(image, lineColumn(), y) == cursorColor)
                rows.append(y);
        return rows;
    }
    int lineColumn() const { return view()->mapFromScene(track(2)->x() + 180, 0).x(); }
};

QImage picture(WellDisplayWidget &display)
{
    QImage image(200, 400, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    display.renderTo(painter);
    return image;
}

} // namespace

/// The line at the depth of the mouse. The program tests one device pixel ratio and starts itself for others.
class tst_depthcursor : public QObject
{
    Q_OBJECT

private slots:
    void standsAtTheMouse();
    void spansTheTracksAndNoMore();
    void onlyTwoStripsArePainted();
    void leavesNothingBehind();
    void leavesNothingBehindAfterAChange();
    void goesWithTheMouse();
    void isInNoPicture();
    void theReadoutFollowsScrolling();
    void scaledScreens_data();
    void scaledScreens();
};

void tst_depthcursor::standsAtTheMouse()
{
    CursorFixture f;
    QCOMPARE(f.ratio(), qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble());
    f.bar()->setValue(700);
    QVERIFY(f.lineRows().isEmpty());
    for (const int row : {100, 101, 103, 57, 0, f.viewport()->height() - 1, 200}) {
        f.moveMouse(QPoint(120, row));
        QCOMPARE(f.lineRows(), QVector<int>{row});
    }
    f.turnWheel(-120);
    QCOMPARE(f.lineRows(), QVector<int>{200});
    f.bar()->setValue(0);
    QCOMPARE(f.lineRows(), QVector<int>{200});
    f.type(f.panel(), "scaleEdit", QStringLiteral("500"));
    QCOMPARE(f.lineRows(), QVector<int>{200});
}

void tst_depthcursor::spansTheTracksAndNoMore()
{
    CursorFixture f;
    f.bar()->setValue(700);
    f.moveMouse(QPoint(120, 150));
    const int left = f.view()->mapFromScene(0, 0).x();
    const int right = left + f.scene()->sceneWidth();
    QVERIFY(left > 20 && right < f.viewport()->width() - 20);
    for (const int x : {left, left + 60, left + 220, right - 1})
        QCOMPARE(f.colorIn(f.window(), x, 150), cursorColor);
    for (const int x : {left - 6, right + 4})
        QCOMPARE(f.colorIn(f.window(), x, 150), QColor(Qt::white));
    // Below the tracks there is no depth.
    f.bar()->setValue(f.bar()->maximum());
    const int end = f.view()->mapFromScene(0, f.scene()->trackHeight()).y();
    f.moveMouse(QPoint(120, end + 10));
    QVERIFY(f.lineRows().isEmpty());
    f.moveMouse(QPoint(120, end - 10));
    QCOMPARE(f.lineRows(), QVector<int>{end - 10});
}

void tst_depthcursor::onlyTwoStripsArePainted()
{
    CursorFixture f;
    f.bar()->setValue(700);
    f.moveMouse(QPoint(120, 50));
    QCoreApplication::processEvents();
    for (const int row : {51, 70, 300}) {
        PaintWatch watch(f.viewport());
        f.moveMouse(QPoint(120, row));
        QCoreApplication::processEvents();
        QVERIFY(!watch.painted.isEmpty());
        QVERIFY2(watch.rows() <= 2, qPrintable(QString::number(watch.rows())));
    }
    // Into another track, and out of all.
    for (const int x : {f.view()->mapFromScene(220, 0).x(), f.lineColumn(), 20}) {
        PaintWatch watch(f.viewport());
        f.moveMouse(QPoint(x, 280));
        f.moveMouse(QPoint(x, 290));
        QCoreApplication::processEvents();
        QVERIFY2(watch.rows() <= 3, qPrintable(QString::number(watch.rows())));
    }
    f.moveMouse(QPoint(120, 300));
    QCoreApplication::processEvents();
    PaintWatch watch(f.viewport());
    f.moveMouse(QPoint(150, 300)); // along the line
    QCoreApplication::processEvents();
    QVERIFY(watch.painted.isEmpty());
}

// What is left where the line was is what was there before, pixel for pixel.
void tst_depthcursor::leavesNothingBehind()
{
    CursorFixture f;
    f.bar()->setValue(300);
    const QImage before = f.log(f.fresh());
    for (const int row : {20, 21, 24, 117, 116, 90, 55, 200}) {
        f.moveMouse(QPoint(120, row));
        QVERIFY(f.log(f.window()) != before);
    }
    for (int row = 0; row < 300; ++row) {
        f.moveMouse(QPoint(120, row));
        QCoreApplication::processEvents();
    }
    f.leave();
    QVERIFY(f.log(f.window()) == before);
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        QSKIP("the X server scrolls what it has, and the picture in memory stays");
    f.moveMouse(QPoint(120, 33));
    for (int i = 0; i < 6; ++i) {
        f.turnWheel(i < 4 ? -120 : 120);
        const QImage scrolled = f.window();
        QVERIFY(scrolled == f.fresh());
        f.moveMouse(QPoint(120, 33 + 7 * i));
        const QImage moved = f.window();
        QVERIFY(moved == f.fresh());
    }
    f.leave();
    const QImage left = f.window();
    QVERIFY(left == f.fresh());
}

// What is painted below the line in the meantime counts.
void tst_depthcursor::leavesNothingBehindAfterAChange()
{
    CursorFixture f;
    f.moveMouse(QPoint(120, 100));
    f.window();
    f.curve(0, 0)->setLineColor(Qt::red);
    f.moveMouse(QPoint(120, 105)); // before and after the change is painted
    f.window();
    f.moveMouse(QPoint(120, 110));
    const QImage moved = f.window();
    QVERIFY(moved == f.fresh());
    f.leave();
    f.curve(0, 0)->setLineColor(Qt::blue);
    f.window();
    f.moveMouse(QPoint(120, 60));
    f.window();
    f.moveMouse(QPoint(120, 64));
    const QImage last = f.window();
    QVERIFY(last == f.fresh());
    // A picture of the window in between leaves no trace in it.
    f.display->grab();
    f.viewport()->grab(QRect(3, 50, 100, 30));
    f.moveMouse(QPoint(120, 70));
    const QImage afterGrab = f.window();
    QVERIFY(afterGrab == f.fresh());
    QImage larger(f.display->size() * 3, QImage::Format_RGB32);
    larger.setDevicePixelRatio(3);
    f.display->render(&larger);
    for (int row = 0; row < 300; ++row) {
        f.moveMouse(QPoint(120, row));
        QCoreApplication::processEvents();
    }
    const QImage afterRendering = f.window();
    QVERIFY(afterRendering == f.fresh());
}

void tst_depthcursor::goesWithTheMouse()
{
    CursorFixture f;
    f.moveMouse(QPoint(120, 100));
    QVERIFY(!f.lineRows().isEmpty());
    f.leave();
    QVERIFY(f.lineRows().isEmpty());
    f.moveMouse(QPoint(120, 100));
    QCOMPARE(f.lineRows(), QVector<int>{100});
}

void tst_depthcursor::isInNoPicture()
{
    CursorFixture f;
    const QString path = f.path(QStringLiteral("/W.tiff"));
    const QImage printed = picture(*f.display);
    f.display->savePicture();
    const QByteArray saved = files::read(path);
    QVERIFY(!saved.isEmpty());
    f.moveMouse(QPoint(120, 100));
    QVERIFY(!f.lineRows().isEmpty());
    QVERIFY(picture(*f.display) == printed);
    f.display->savePicture();
    QCOMPARE(files::read(path), saved);
}

void tst_depthcursor::theReadoutFollowsScrolling()
{
    CursorFixture f;
    const QPoint place(f.view()->mapFromScene(60, 0).x(), 100);
    f.moveMouse(place);
    const auto expected = [&] { return f.track(0)->readout(f.view()->mapToScene(place)); };
    QCOMPARE(f.statusText(), expected());
    const QString first = f.statusText();
    f.turnWheel(-120);
    QCOMPARE(f.statusText(), expected());
    QVERIFY(f.statusText() != first);
    f.bar()->setValue(2000);
    QCOMPARE(f.statusText(), expected());
    QTest::keyClick(f.view(), Qt::Key_PageDown);
    QCOMPARE(f.statusText(), expected());
    f.type(f.panel(), "scaleEdit", QStringLiteral("200"));
    QCOMPARE(f.statusText(), expected());
    // A mouse that is elsewhere reads nothing.
    f.leave();
    f.display->setStatusLabel(QStringLiteral("kept"));
    f.bar()->setValue(2500);
    QCOMPARE(f.statusText(), QString("kept"));
}

void tst_depthcursor::scaledScreens_data()
{
    QTest::addColumn<QString>("factor");
    QTest::newRow("1.25") << QStringLiteral("1.25");
    QTest::newRow("1.5") << QStringLiteral("1.5");
    QTest::newRow("1.75") << QStringLiteral("1.75");
    QTest::newRow("2") << QStringLiteral("2");
}

void tst_depthcursor::scaledScreens()
{
    QFETCH(QString, factor);
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), factor);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen")); // its windows are in memory
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("standsAtTheMouse"), QStringLiteral("spansTheTracksAndNoMore"),
                 QStringLiteral("onlyTwoStripsArePainted"), QStringLiteral("leavesNothingBehind"),
                 QStringLiteral("leavesNothingBehindAfterAChange"), QStringLiteral("goesWithTheMouse")});
    QVERIFY(child.waitForFinished(300000));
    const QByteArray output = child.readAll();
    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, output.constData());
    QVERIFY2(output.contains("Totals: 8 passed, 0 failed, 0 skipped"), output.constData());
}

LORVA_TEST_MAIN(tst_depthcursor)
#include "tst_depthcursor.moc"
