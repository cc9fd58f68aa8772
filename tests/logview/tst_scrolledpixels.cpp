#include "datastore/calibrationfile.h"
#include "displayfixture.h"
#include "paintwatch.h"
#include "support/testmain.h"

#include <QBackingStore>
#include <QProcess>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>
#include <cstring>

namespace {

const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";

// One of everything that a display draws.
struct ScrollFixture : DisplayFixture
{
    ScrollFixture()
    {
        QVector<float> depths;
        QVector<float> values;
        for (int i = 0; i < 15000; ++i) {
            depths.append(static_cast<float>(i) / 10);
            values.append(75 + 70 * std::sin(static_cast<float>(i) / 7) * std::cos(static_cast<float>(i) / 310));
        }
        addLog(QStringLiteral("GR"), depths, values);
        addLog(QStringLiteral("CALI"), {0, 300, 600, 900, 1200, 1500}, {10, 140, 20, 130, 30, 120});
        addTrack(1, depthTrack);
        addTrack(
            2,
            "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffee00|0,#ffffff|Left Boundary | None | 0 | 0 | 1 | "
            "#ff0000 | 4 | Circle\nCaliper | CALI | 0 | 150 | #aa0000|0,#ffffff|0,#ffffff|None | None | 1 | 1\n");
        addTrack(3, "Logrithmic\nGamma | GR | 1 | 1000 | #0000aa|0,#ffffff|0,#ffffff|None | None | 0 | 2\n");
        files::write(path(QStringLiteral("/W_perforationZone.txt")), "2\nA|100|200|Oil-Gas\nB|300|312|Water\n");
        CalibrationRecord record;
        record.wellName = QStringLiteral("W");
        record.groupName = QStringLiteral("Gamma");
        for (float depth = 20; depth < 1500; depth += 20) {
            record.depths.append(depth);
            record.values.append(75);
        }
        files::write(calibrationPath(survey.path() + QStringLiteral("/WLC"), record.wellName, record.groupName),
                     calibrationBytes(record));
        addMarker(QStringLiteral("Top"), 90);
        addMarker(QStringLiteral("A long name of a formation"), 133.3F);
        addMarker(QStringLiteral("Base"), 260);
        show();
        for (const WellMarker &marker : launch->catalogue.markers(QStringLiteral("W")))
            showMarker(marker.name);
        if (!QTest::qWaitForWindowExposed(display.get()))
            qFatal("no window");
        QCoreApplication::processEvents();
        // The view must not end within a pixel of a scaled screen, which it would share with its frame.
        display->resize(display->width(), display->height() + display->logView()->viewport()->height() % 2);
        QCoreApplication::processEvents();
    }

    // What stands in the window, without anything being painted for it.
    QImage screenshot() const
    {
        QCoreApplication::processEvents();
        const QPaintDevice *window = display->backingStore()->paintDevice();
        if (window->devType() != QInternal::Image)
            qFatal("the window is no image");
        QImage image = static_cast<const QImage *>(window)->convertToFormat(QImage::Format_RGB32);
        image.setDevicePixelRatio(1);
        return image;
    }
    // The same after all of it was painted anew.
    QImage fresh() const
    {
        for (QWidget *widget : display->findChildren<QWidget *>())
            widget->update();
        return screenshot();
    }
    // What the log view has to show, painted without the view. The picture is as large as the window, because lines
    // that leave a device are cut at its edges, which moves some of their pixels.
    QImage rendered() const
    {
        const QGraphicsView *view = display->logView();
        QImage image(display->size() * display->devicePixelRatioF(), QImage::Format_RGB32);
        image.fill(Qt::white);
        image.setDevicePixelRatio(display->devicePixelRatioF());
        QPainter painter(&image);
        const QRectF viewport(view->viewport()->mapTo(display.get(), QPoint()), view->viewport()->size());
        view->scene()->render(&painter, viewport, QRectF(view->mapToScene(0, 0), viewport.size()));
        painter.end();
        image.setDevicePixelRatio(1);
        return logViewOf(image);
    }
    // The log view's part of a screenshot.
    QImage logViewOf(const QImage &image) const
    {
        const QWidget *viewport = display->logView()->viewport();
        const double ratio = display->devicePixelRatioF();
        const QPointF corner = ratio * QPointF(viewport->mapTo(display.get(), QPoint()));
        return image.copy(QRect(corner.toPoint(), viewport->size() * ratio));
    }
    QScrollBar *bar() const { return display->logView()->verticalScrollBar(); }
    // One notch is 120.
    void turnWheel(int angle, Qt::KeyboardModifiers modifiers = {}) const
    {
        QWidget *viewport = display->logView()->viewport();
        const QPoint place(100, 100);
        QWheelEvent event(place, viewport->mapToGlobal(place), {}, {0, angle}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(viewport, &event);
    }
    // A cursor that is set does not arrive at the same pixel of a scaled screen.
    void moveMouse(const QPoint &place) const
    {
        QMouseEvent event(QEvent::MouseMove, place, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(display->logView()->viewport(), &event);
    }
};

// Where two images differ; an empty text when they do not.
QString differences(const QImage &a, const QImage &b)
{
    if (a.size() != b.size())
        return QStringLiteral("sizes");
    QRect where;
    int count = 0;
    const auto bytes = static_cast<size_t>(a.width()) * sizeof(QRgb);
    for (int y = 0; y < a.height(); ++y) {
        if (std::memcmp(a.constScanLine(y), b.constScanLine(y), bytes) == 0)
            continue;
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) == b.pixel(x, y))
                continue;
            where |= QRect(x, y, 1, 1);
            ++count;
        }
    }
    return count == 0 ? QString()
                      : QStringLiteral("%1 pixels in %2,%3 %4x%5")
                            .arg(count)
                            .arg(where.x())
                            .arg(where.y())
                            .arg(where.width())
                            .arg(where.height());
}

} // namespace

/// What a view shows after it was scrolled, or an item of it moved, is what it would paint anew. The program tests one
/// device pixel ratio and starts itself for others.
class tst_scrolledpixels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QGuiApplication::platformName() == QLatin1String("xcb"))
            QSKIP("the X server scrolls what it has, and the picture in memory stays");
    }
    void theWholeViewIsPainted();
    void onlyTheStripThatComesIntoViewIsPainted();
    void onlyTheSamplesOfTheStripAreRead();
    void steps_data();
    void steps();
    void sideways();
    void wheel();
    void aMarkerThatMoves();
    void theCursorLeavesNothingBehind();
    void scaledScreens_data();
    void scaledScreens();

private:
    static double ratio() { return qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble(); }
};

void tst_scrolledpixels::theWholeViewIsPainted()
{
    ScrollFixture f;
    QCOMPARE(f.display->devicePixelRatioF(), ratio());
    f.bar()->setValue(700);
    const QImage shown = f.logViewOf(f.screenshot());
    QVERIFY(f.display->logView()->viewport()->height() > 300);
    QCOMPARE(shown.size(), f.display->logView()->viewport()->size() * ratio());
    // Its last rows and columns as well as its first ones.
    QCOMPARE(differences(shown, f.rendered()), QString());
}

// Where a step is a whole number of the screen's pixels.
void tst_scrolledpixels::onlyTheStripThatComesIntoViewIsPainted()
{
    ScrollFixture f;
    QWidget *viewport = f.display->logView()->viewport();
    f.bar()->setValue(700);
    f.fresh();
    for (const int step : {1, 40, -7}) {
        PaintWatch watch(viewport);
        f.bar()->setValue(f.bar()->value() + step);
        QCoreApplication::processEvents();
        const bool isWhole = ratio() == std::floor(ratio());
        // One more is that over which the handle below the headers lies.
        QCOMPARE(watch.rows(), isWhole ? std::abs(step) + 1 : viewport->height());
    }
}

// Also with the line at the mouse in the middle of the view, and however far the view has come.
void tst_scrolledpixels::onlyTheSamplesOfTheStripAreRead()
{
    ScrollFixture f;
    f.bar()->setValue(700);
    f.fresh();
    qint64 before = logview::readSampleCount();
    f.fresh();
    const qint64 again = logview::readSampleCount() - before;
    QVERIFY2(again < 10, qPrintable(QString::number(again))); // the dashes are measured from the place before them
    f.moveMouse(QPoint(120, 200));
    QCoreApplication::processEvents();
    for (int i = 0; i < 40; ++i) {
        before = logview::readSampleCount();
        f.bar()->setValue(f.bar()->value() + 40);
        QCoreApplication::processEvents();
        const qint64 read = logview::readSampleCount() - before;
        // Of two curves and a fill 106 each in the strip, and some around it and around the two other rows.
        if (ratio() == std::floor(ratio()))
            QVERIFY2(read > 300 && read < 700, qPrintable(QString::number(read)));
    }
}

void tst_scrolledpixels::steps_data()
{
    QTest::addColumn<int>("step");
    for (const int step : {1, 20, 57, 60, 113})
        QTest::addRow("%d", step) << step;
}

void tst_scrolledpixels::steps()
{
    QFETCH(int, step);
    ScrollFixture f;
    f.bar()->setValue(100);
    f.fresh();
    for (int i = 0; i < 10; ++i) {
        f.bar()->setValue(f.bar()->value() + (i < 7 ? step : -step));
        const QImage scrolled = f.screenshot();
        QCOMPARE(differences(scrolled, f.fresh()), QString());
    }
    QCOMPARE(f.bar()->value(), 100 + 4 * step);
    QCOMPARE(differences(f.logViewOf(f.screenshot()), f.rendered()), QString());
}

void tst_scrolledpixels::sideways()
{
    ScrollFixture f;
    f.display->resize(240, 500);
    QTRY_VERIFY(f.display->logView()->horizontalScrollBar()->maximum() > 100);
    f.fresh();
    for (const int value : {-60, -43, 1, 20, 77, 80, 30, 31}) {
        f.display->logView()->horizontalScrollBar()->setValue(value);
        const QImage scrolled = f.screenshot(); // with the headers
        QCOMPARE(differences(scrolled, f.fresh()), QString());
    }
}

void tst_scrolledpixels::wheel()
{
    ScrollFixture f;
    f.fresh();
    for (int i = 0; i < 15; ++i) {
        const int before = f.bar()->value();
        f.turnWheel(i < 10 ? -120 : 120);
        QVERIFY(f.bar()->value() != before);
        const QImage scrolled = f.screenshot();
        QCOMPARE(differences(scrolled, f.fresh()), QString());
    }
}

void tst_scrolledpixels::aMarkerThatMoves()
{
    ScrollFixture f;
    WellLogsView *view = f.display->logView();
    f.bar()->setValue(300);
    view->startPicking();
    f.fresh();
    for (const int y : {20, 21, 60, 63, 117, 250, 120, 300, 299}) {
        f.moveMouse(QPoint(120, y));
        QCOMPARE(f.scene()->markers().last()->y(), view->mapToScene(0, y).y());
        const QImage moved = f.screenshot();
        QCOMPARE(differences(moved, f.fresh()), QString());
    }
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(120, 200));
    const QImage placed = f.screenshot();
    QCOMPARE(differences(placed, f.fresh()), QString());
}

void tst_scrolledpixels::theCursorLeavesNothingBehind()
{
    ScrollFixture f;
    f.bar()->setValue(300);
    f.fresh();
    for (int i = 0; i < 3; ++i) {
        for (int y = 0; y < 320; y += 1 + i)
            f.moveMouse(QPoint(120, y)), QCoreApplication::processEvents();
        const QImage moved = f.screenshot();
        QCOMPARE(differences(moved, f.fresh()), QString());
        f.turnWheel(-120);
    }
    QEvent leave(QEvent::Leave);
    f.moveMouse(QPoint(120, 57));
    f.screenshot();
    QCoreApplication::sendEvent(f.display->logView()->viewport(), &leave);
    const QImage left = f.screenshot();
    QCOMPARE(differences(left, f.fresh()), QString());
}

void tst_scrolledpixels::scaledScreens_data()
{
    QTest::addColumn<QString>("factor");
    QTest::newRow("1.5") << QStringLiteral("1.5");
    QTest::newRow("2") << QStringLiteral("2");
}

void tst_scrolledpixels::scaledScreens()
{
    QFETCH(QString, factor);
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), factor);
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("theWholeViewIsPainted"), QStringLiteral("onlyTheStripThatComesIntoViewIsPainted"),
                 QStringLiteral("onlyTheSamplesOfTheStripAreRead"), QStringLiteral("steps"),
                 QStringLiteral("sideways"), QStringLiteral("wheel"), QStringLiteral("aMarkerThatMoves"),
                 QStringLiteral("theCursorLeavesNothingBehind")});
    QVERIFY(child.waitForFinished(300000));
    const QByteArray output = child.readAll();
    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, output.constData());
    QVERIFY2(output.contains("Totals: 14 passed, 0 failed, 0 skipped"), output.constData());
}

LORVA_TEST_MAIN(tst_scrolledpixels)
#include "tst_scrolledpixels.moc"
