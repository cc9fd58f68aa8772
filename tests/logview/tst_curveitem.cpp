#include "base/gradientcombobox.h"
#include "base/linestylebox.h"
#include "displayfixture.h"
#include "logview/curveheaderitem.h"
#include "logview/curveitempropertywidget.h"
#include "logview/geometry/curvepath.h"
#include "logview/geometry/displaystyle.h"
#include "logview/pointitem.h"
#include "logview/trackitempropertywidget.h"
#include "penrecorder.h"
#include "support/testmain.h"

#include <QColorDialog>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <limits>
#include <utility>

namespace {

// One curve line of a track file.
QByteArray line(const char *curve, const char *limits, const char *fills = "0,#ffffff|0,#ffffff|None | None",
                const char *rest = "0 | 0")
{
    return QByteArray("Gamma | ") + curve + " | " + limits + " | #0000ff|" + fills + " | " + rest + "\n";
}

struct CurveFixture : DisplayFixture
{
    CurveFixture() { well().header.totalDepth = 1000; }
    void showLinear(const QByteArray &lines)
    {
        addTrack(1, "Linear\n" + lines);
        show();
    }
    int y(double depth) const { return static_cast<int>(track(0)->axis().toPixel(depth)); }
    QColor at(int x, double depth) const { return pixel(x, y(depth)); }
    // The column of the blue line at a depth; -1 where there is none.
    int lineColumn(double depth) const
    {
        const QImage row = picture(scene(), QRect(0, y(depth), 200, 1));
        for (int x = 0; x < row.width(); ++x)
            if (row.pixelColor(x, 0) == QColor(0, 0, 255))
                return x;
        return -1;
    }
};

void answerColorDialog(const QColor &color)
{
    QTimer::singleShot(0, [color] {
        auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
        if (!dialog || dialog->windowTitle() != QLatin1String("Select Color"))
            qFatal("no colour dialog");
        dialog->setCurrentColor(color.isValid() ? color : dialog->currentColor());
        if (color.isValid())
            dialog->accept();
        else
            dialog->reject();
    });
}

} // namespace

class tst_curveitem : public QObject
{
    Q_OBJECT

private slots:
    void linesStandWhereTheirValuesAre();
    void mirroredLimits();
    void logarithmicTracks();
    void breaksAndSkippedSamples();
    void fillToTheBoundaries();
    void fillBetweenCurves();
    void curveNumbersCountUndrawnLines();
    void colourBars();
    void missingColourBar();
    void fillsOfScaledScreensHaveNoGaps();
    void theLeftFillGoesFirst();
    void linesLieOverFillsAndPointsOverLines();
    void theLastSampleIsDrawn();
    void shapeIsTheWholeCurve();
    void pickingByTheLine();
    void onlyWhatShowsIsRead();
    void selectionPens();
    void headerLayout();
    void headersStandBelowOneAnother();
    void panelRows();
    void panelSlots();
    void cancelledColours();
    void calibrationPoints();
    void pointsAreDrawn();
    void capsAndJoins();
    void gradientBox();
    void badLogs_data();
    void badLogs();
    void badTemplates();
};

void tst_curveitem::linesStandWhereTheirValuesAre()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 400, 400.1F, 1000}, {75, 75, 200, 200});
    f.showLinear(line("GR", "0 | 150"));
    QCOMPARE(f.curve(0, 0)->scale().width, 192.0F);
    QVERIFY(qAbs(f.lineColumn(200) - 96) <= 1);
    QVERIFY(qAbs(f.lineColumn(700) - 192) <= 1); // beyond the limit: along the edge
}

void tst_curveitem::mirroredLimits()
{
    CurveFixture f;
    f.addLog(QStringLiteral("NPHI"), {0, 1000}, {0.45F, 0.45F});
    f.showLinear(line("NPHI", "0.60 | 0"));
    QVERIFY(qAbs(f.lineColumn(500) - 48) <= 1);
}

void tst_curveitem::logarithmicTracks()
{
    CurveFixture f;
    f.addLog(QStringLiteral("LLD"), {0, 300, 300.1F, 600, 600.1F, 1000}, {2, 2, 0.02F, 0.02F, 5000, 5000});
    f.addTrack(1, "Logrithmic\n" + line("LLD", "0.2 | 2000"));
    f.show();
    QVERIFY(qAbs(f.lineColumn(150) - 48) <= 1);
    QVERIFY(qAbs(f.lineColumn(450) - 48) <= 1); // as far from 0.2 as 2 is
    QCOMPARE(f.lineColumn(800), -1); // outside: a break, no line along the edge
    f.choose(f.panelOf(f.track(0)), "trackTypeBox", QStringLiteral("Normal"));
    QVERIFY(f.lineColumn(800) >= 190);
}

void tst_curveitem::breaksAndSkippedSamples()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 100, 200, 300, 400}, {75, 75, 1e30F, 75, 75});
    f.showLinear(line("GR", "0 | 150"));
    QVERIFY(f.lineColumn(50) > 0);
    QCOMPARE(f.lineColumn(150), -1);
    QCOMPARE(f.lineColumn(250), -1);
    QVERIFY(f.lineColumn(350) > 0);
    int moves = 0;
    const QPainterPath path = f.curve(0, 0)->shape();
    for (int i = 0; i < path.elementCount(); ++i)
        moves += path.elementAt(i).isMoveTo();
    QCOMPARE(moves, 2);
}

void tst_curveitem::fillToTheBoundaries()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150", "0,#ff0000|0,#00ff00|Left Boundary | None"));
    QCOMPARE(f.at(40, 505), QColor(255, 0, 0));
    QVERIFY(f.at(140, 505) != QColor(255, 0, 0));
    CurveFixture right;
    right.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    right.showLinear(line("GR", "0 | 150", "0,#ff0000|0,#00ff00|None | Right Boundary"));
    QCOMPARE(right.at(140, 505), QColor(0, 255, 0));
    QVERIFY(right.at(40, 505) != QColor(0, 255, 0));
}

void tst_curveitem::fillBetweenCurves()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 500, 501, 1000}, {100, 100, 20, 20});
    f.addLog(QStringLiteral("SP"), {0, 500, 501, 1000}, {50, 50, 50, 50});
    f.showLinear(line("GR", "0 | 150", "0,#ff0000|0,#00ff00|Curve_2 | None") + line("SP", "0 | 150"));
    QCOMPARE(f.at(100, 255), QColor(255, 0, 0)); // SP lies left of GR
    QCOMPARE(f.at(40, 755), QColor(Qt::white)); // and here right of it
    f.track(0)->setWidthInches(4); // both curves move
    QCOMPARE(f.at(190, 255), QColor(255, 0, 0));
    QVERIFY(f.at(110, 255) != QColor(255, 0, 0));
    f.choose(f.panelOf(f.track(0)), "trackTypeBox", QStringLiteral("Logrithmic"));
    QVERIFY(f.at(190, 255) != QColor(255, 0, 0)); // a minimum of 0 has no logarithm
}

void tst_curveitem::curveNumbersCountUndrawnLines()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {100, 100});
    f.addLog(QStringLiteral("SP"), {0, 1000}, {50, 50});
    f.showLinear(line("Default", "0 | 1") + line("GR", "0 | 150", "0,#ff0000|0,#00ff00|Curve_3 | None")
                 + line("SP", "0 | 150"));
    QCOMPARE(f.track(0)->curves().size(), 2);
    QCOMPARE(f.at(100, 255), QColor(255, 0, 0));
}

void tst_curveitem::colourBars()
{
    CurveFixture f;
    QTemporaryDir data;
    QDir().mkpath(data.filePath(QStringLiteral("ColorBars")));
    QImage bar(10, 4, QImage::Format_RGB32);
    for (int x = 0; x < 10; ++x)
        for (int y = 0; y < 4; ++y)
            bar.setPixelColor(x, y, QColor(x * 20, 100, 0));
    bar.save(data.filePath(QStringLiteral("ColorBars/cb_3.png")));
    f.host.dataFolder = data.path();
    f.addLog(QStringLiteral("GR"), {0, 499, 500, 1000}, {20, 20, 80, 80});
    f.showLinear(line("GR", "0 | 100", "3,#ff0000|0,#ffffff|Left Boundary | None"));
    QCOMPARE(f.at(10, 205), QColor(20, 100, 0)); // 20 × 9 / 100
    QCOMPARE(f.at(10, 705), QColor(140, 100, 0)); // 80 × 9 / 100
    const QImage header = f.picture(f.display->headerView()->scene(), QRect(0, 20, 192, 45));
    QCOMPARE(header.pixelColor(6, 3), QColor(0, 100, 0)); // the bar, from its left end to its right
    QCOMPARE(header.pixelColor(184, 3), QColor(180, 100, 0));
    QCOMPARE(header.pixelColor(187, 3), QColor(Qt::white));
    // A right fill has a bar of its own.
    CurveFixture right;
    right.host.dataFolder = data.path();
    right.addLog(QStringLiteral("GR"), {0, 1000}, {20, 20});
    right.showLinear(line("GR", "0 | 100", "0,#ff0000|3,#ffffff|None | Right Boundary"));
    QCOMPARE(right.at(150, 505), QColor(20, 100, 0));
    // Without a colour of the bar and without another one nothing is filled.
    CurveFixture beyond;
    beyond.host.dataFolder = data.path();
    beyond.addLog(QStringLiteral("GR"), {0, 1000}, {100, 100});
    beyond.showLinear(line("GR", "0 | 100", "3,nocolour|0,#ffffff|Left Boundary | None"));
    QCOMPARE(beyond.at(30, 505), QColor(Qt::white));
    // Another fill colour takes the bar's place.
    f.curve(0, 0)->setFillColor(QColor(1, 2, 3));
    QCOMPARE(f.at(10, 705), QColor(1, 2, 3));
}

// There a row of the scene is several of the screen: a sample between the middles of two rows of the scene shows.
void tst_curveitem::fillsOfScaledScreensHaveNoGaps()
{
    CurveFixture f;
    QTemporaryDir data;
    QDir().mkpath(data.filePath(QStringLiteral("ColorBars")));
    QImage bar(10, 4, QImage::Format_RGB32);
    bar.fill(QColor(20, 100, 0));
    bar.save(data.filePath(QStringLiteral("ColorBars/cb_3.png")));
    f.host.dataFolder = data.path();
    QVector<float> depths;
    QVector<float> values;
    for (int i = 0; i <= 20000; ++i) {
        depths.append(static_cast<float>(i) / 20);
        values.append(i % 2 == 0 ? 50 : 60);
    }
    f.addLog(QStringLiteral("GR"), depths, values);
    f.showLinear(line("GR", "0 | 100", "3,#ff0000|0,#ffffff|Left Boundary | None"));
    for (const double factor : {1.0, 1.25, 1.5, 2.0}) {
        for (const double scrolled : {0.0, 1.0}) {
            QImage image(QSize(192, 300) * factor, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            painter.scale(factor, factor);
            f.scene()->render(&painter, QRectF(0, -scrolled, 192, 300), QRectF(0, 100, 192, 300));
            const int column = static_cast<int>(30 * factor);
            for (int y = 4; y < image.height() - 8; ++y)
                QVERIFY2(image.pixelColor(column, y) == QColor(20, 100, 0),
                         qPrintable(QStringLiteral("row %1 at %2").arg(y).arg(factor)));
        }
    }
}

void tst_curveitem::missingColourBar()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {50, 50});
    f.showLinear(line("GR", "0 | 100", "77,#ff8000|0,#ffffff|Left Boundary | None"));
    QCOMPARE(f.at(30, 505), QColor(255, 128, 0)); // the colour kept in the line
    f.picture(f.display->headerView()->scene(), QRect(0, 0, 192, 100));
}

void tst_curveitem::theLeftFillGoesFirst()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150", "0,#ff0000|0,#00ff00|Left Boundary | Right Boundary"));
    QCOMPARE(f.at(40, 505), QColor(255, 0, 0));
    QVERIFY(f.at(140, 505) != QColor(0, 255, 0));
    CurveFixture missing; // up to a curve that the track has not: nothing is filled, also not to the right
    missing.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    missing.showLinear(line("GR", "0 | 150", "0,#ff0000|0,#00ff00|Curve_99 | Right Boundary"));
    QVERIFY(missing.at(140, 505) != QColor(0, 255, 0));
}

void tst_curveitem::linesLieOverFillsAndPointsOverLines()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    CalibrationRecord record;
    record.wellName = QStringLiteral("W");
    record.groupName = QStringLiteral("Gamma");
    record.depths = {500};
    record.values = {75};
    files::write(calibrationPath(f.survey.path() + QStringLiteral("/WLC"), record.wellName, record.groupName),
                 calibrationBytes(record));
    f.showLinear(
        line("GR", "0 | 150", "0,#ffff00|0,#ffffff|Left Boundary | None", "0 | 4 | 1 | #ff0000 | 3 | Circle"));
    QCOMPARE(f.at(95, 305), QColor(0, 0, 255)); // half of the wide line reaches over the fill
    QCOMPARE(f.at(40, 305), QColor(255, 255, 0));
    QCOMPARE(f.at(96, 500), QColor(255, 0, 0));
    // In feet and below the sea the point stands at its depth as it is in the file.
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    QCOMPARE(f.curve(0, 0)->calibrationPoints().first().position.y(), f.y(500));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("METER"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    QCOMPARE(f.curve(0, 0)->calibrationPoints().first().position.y(), f.y(500));
}

// Rounding puts this end depth a hair below the track.
void tst_curveitem::theLastSampleIsDrawn()
{
    CurveFixture f;
    f.well().header.totalDepth = 4629.5;
    f.well().header.kbElevation = 33.17F;
    f.addLog(QStringLiteral("GR"), {0, 1000, 2000, 4629.5F}, {75, 30, 60, 75});
    f.showLinear(line("GR", "0 | 150"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    QCOMPARE(f.curve(0, 0)->shape().elementCount(), 4);
}

void tst_curveitem::shapeIsTheWholeCurve()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 400, 1000}, {75, 30, 75});
    f.showLinear(line("GR", "0 | 150"));
    f.picture(f.scene(), QRect(0, 100, 192, 20)); // whatever part was painted
    const QRectF bounds = f.curve(0, 0)->shape().boundingRect();
    QCOMPARE(bounds.top(), 0.0);
    QVERIFY(qAbs(bounds.bottom() - static_cast<double>(f.track(0)->height())) < 0.01);
    f.type(f.panel(), "scaleEdit", QStringLiteral("500"));
    QVERIFY(qAbs(f.curve(0, 0)->shape().boundingRect().bottom() - static_cast<double>(f.track(0)->height())) < 0.01);
}

void tst_curveitem::pickingByTheLine()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150"));
    const CurveItem *curve = f.curve(0, 0);
    QVERIFY(curve->contains(QPointF(96, 500)));
    QVERIFY(curve->contains(QPointF(98, 500)));
    for (const int dx : {-3, 0, 3}) {
        QVERIFY2(f.scene()->items(QPointF(96 + dx, 500)).contains(f.curve(0, 0)), qPrintable(QString::number(dx)));
        QGraphicsView *view = f.display->logView();
        view->centerOn(96, 500);
        QVERIFY(view->items(view->mapFromScene(QPointF(96 + dx, 500))).contains(f.curve(0, 0)));
    }
    QVERIFY(
        !f.display->logView()->items(f.display->logView()->mapFromScene(QPointF(102, 500))).contains(f.curve(0, 0)));
    QVERIFY(!curve->contains(QPointF(60, 500))); // not what a path from line to line would enclose
    QPainterPath area;
    area.addRect(90, 100, 20, 5);
    QVERIFY(curve->collidesWithPath(area));
}

// Ten samples a row of pixels, and two curves and a fill that show 300 rows of them.
void tst_curveitem::onlyWhatShowsIsRead()
{
    CurveFixture f;
    QVector<float> depths;
    QVector<float> values;
    for (int i = 0; i < 40000; ++i) {
        depths.append(static_cast<float>(i) / 40);
        values.append(static_cast<float>(20 + i * 7 % 100));
    }
    f.addLog(QStringLiteral("GR"), depths, values);
    f.showLinear(line("GR", "0 | 150") + line("GR", "0 | 150", "0,#ff0000|0,#00ff00|Left Boundary | None"));
    QVERIFY(QTest::qWaitForWindowExposed(f.display.get()));
    const auto paint = [&f](int top) { f.picture(f.scene(), QRect(0, top, 192, 300)); };
    qint64 read = logview::readSampleCount();
    const auto readSince = [&read] {
        return logview::readSampleCount() - std::exchange(read, logview::readSampleCount());
    };
    paint(1500);
    const qint64 first = readSince();
    QVERIFY2(first > 2 * 3000 && first < 4 * 3000, qPrintable(QString::number(first)));
    QCoreApplication::processEvents();
    f.display->logView()->viewport()->repaint();
    readSince();
    for (int y = 10; y < 60; y += 5)
        QTest::mouseMove(f.display->logView()->viewport(), QPoint(100, y));
    const qint64 hovered = readSince();
    QVERIFY2(hovered < 10 * 4 * 50, qPrintable(QString::number(hovered))); // what lies under the pointer
    paint(1500);
    f.curve(0, 0)->setLineColor(Qt::magenta);
    f.curve(0, 1)->setFillColor(Qt::magenta);
    readSince();
    paint(1500);
    QVERIFY(readSince() < first / 2); // the fill, and the lines that the edges of the picture cut
    paint(1520);
    QVERIFY(readSince() < first / 2);
    f.type(f.panel(), "scaleEdit", QStringLiteral("500"));
    QCoreApplication::processEvents();
    readSince();
    paint(4000);
    const qint64 zoomed = readSince();
    QVERIFY2(zoomed > 2 * 1500 && zoomed < first, qPrintable(QString::number(zoomed)));
}

void tst_curveitem::selectionPens()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150", "0,#ffffff|0,#ffffff|None | None", "0 | 1"));
    CurveItem *curve = f.curve(0, 0);
    QCOMPARE(curve->currentPen().width(), 2);
    QCOMPARE(curve->currentPen().color(), QColor(0, 0, 255));
    QCOMPARE(curve->currentPen().capStyle(), Qt::RoundCap);
    QCOMPARE(curve->currentPen().joinStyle(), Qt::RoundJoin);
    curve->setSelected(true);
    QVERIFY(f.headerOf(curve)->isSelected());
    QCOMPARE(curve->currentPen().width(), 4);
    QCOMPARE(f.at(97, 505), curve->currentPen().color());
    curve->setSelected(false);
    QVERIFY(!f.headerOf(curve)->isSelected());
}

void tst_curveitem::headerLayout()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150", "0,#ffcc00|0,#ffffff|Left Boundary | None"));
    const QImage image = f.picture(f.display->headerView()->scene(), QRect(0, 20, 192, 45));
    QCOMPARE(image.pixelColor(10, 4), QColor(255, 204, 0)); // the fill
    QCOMPARE(image.pixelColor(3, 4), QColor(Qt::white));
    QCOMPARE(image.pixelColor(190, 4), QColor(Qt::white));
    for (const int x : {6, 96, 185})
        QCOMPARE(image.pixelColor(x, 22), QColor(0, 0, 255)); // a piece of the line
    f.curve(0, 0)->setSelected(true);
    QCOMPARE(f.picture(f.display->headerView()->scene(), QRect(96, 42, 1, 1)).pixelColor(0, 0),
             f.curve(0, 0)->currentPen().color());
    const auto hasText = [&image](const QRect &area) {
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                if (image.pixelColor(x, y).lightness() < 90 && image.pixelColor(x, y) != QColor(0, 0, 255))
                    return true;
        return false;
    };
    QVERIFY(hasText(QRect(80, 2, 30, 17))); // the name
    QVERIFY(hasText(QRect(5, 25, 15, 16))); // minimum, left
    QVERIFY(hasText(QRect(80, 25, 30, 16))); // unit
    QVERIFY(hasText(QRect(160, 25, 26, 16))); // maximum, right
    QVERIFY(!hasText(QRect(40, 25, 20, 16)));
}

void tst_curveitem::headersStandBelowOneAnother()
{
    CurveFixture f;
    f.showLinear(line("A", "0 | 1") + line("B", "0 | 1") + line("C", "0 | 1"));
    for (int k = 0; k < 3; ++k)
        QCOMPARE(f.headerOf(f.curve(0, k))->scenePos(), QPointF(0, 20 + 45 * k));
    f.scene()->selection().selectOnly(f.curve(0, 0));
    f.scene()->deleteCurve(); // the others move up
    for (int k = 0; k < 2; ++k)
        QCOMPARE(f.headerOf(f.curve(0, k))->scenePos(), QPointF(0, 20 + 45 * k));
    f.track(0)->setWidthInches(3);
    QCOMPARE(f.headerOf(f.curve(0, 0))->boundingRect().width(), 288.0);
}

void tst_curveitem::panelRows()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150", "0,#ffcc00|0,#ffffff|None | None", "2 | 3"));
    CurveItemPropertyWidget *panel = f.panelOf(f.curve(0, 0));
    const auto label = [panel](const char *name) {
        return panel->findChild<QLabel *>(QString::fromLatin1(name))->text();
    };
    QCOMPARE(f.captions(panel),
             (QStringList{"Curve Property", "Well Name", "W", "Curve Name", "Group Name", "Gamma", "Unit", "gapi",
                          "Line Color", "Line Style", "Line Width", "Fill Color"}));
    QCOMPARE(label("titleLabel"), QString("Curve Property"));
    QCOMPARE(label("wellNameLabel"), QString("W"));
    QCOMPARE(label("groupNameLabel"), QString("Gamma"));
    QCOMPARE(label("unitLabel"), QString("gapi"));
    QCOMPARE(f.text(panel, "curveNameEdit"), QString("GR"));
    const auto *style = panel->findChild<QComboBox *>(QStringLiteral("lineStyleBox"));
    const auto *width = panel->findChild<QComboBox *>(QStringLiteral("lineWidthBox"));
    QCOMPARE(style->currentIndex(), 2);
    QCOMPARE(width->currentIndex(), 3);
    QCOMPARE(f.curve(0, 0)->pen().style(), Qt::DotLine);
    QCOMPARE(f.curve(0, 0)->pen().width(), 4);
    for (const char *button : {"lineColorButton", "fillColorButton"})
        QVERIFY(panel->findChild<QPushButton *>(QString::fromLatin1(button)));
}

void tst_curveitem::panelSlots()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150", "0,#ffcc00|0,#ffffff|Left Boundary | None"));
    CurveItem *curve = f.curve(0, 0);
    CurveItemPropertyWidget *panel = f.panelOf(curve);
    f.type(panel, "curveNameEdit", QStringLiteral("Gamma Ray"));
    QCOMPARE(curve->curveName(), QString("Gamma Ray"));
    QCOMPARE(curve->samples().size(), 2);
    panel->findChild<QComboBox *>(QStringLiteral("lineStyleBox"))->setCurrentIndex(1);
    QCOMPARE(curve->pen().style(), Qt::DashLine);
    panel->findChild<QComboBox *>(QStringLiteral("lineWidthBox"))->setCurrentIndex(4);
    QCOMPARE(curve->pen().width(), 5);
    answerColorDialog(QColor(10, 20, 30));
    panel->findChild<QPushButton *>(QStringLiteral("lineColorButton"))->click();
    QCOMPARE(curve->pen().color(), QColor(10, 20, 30));
    answerColorDialog(QColor(40, 50, 60));
    panel->findChild<QPushButton *>(QStringLiteral("fillColorButton"))->click();
    QCOMPARE(curve->fillStyle().color, QColor(40, 50, 60));
    QCOMPARE(f.at(20, 505), QColor(40, 50, 60));
    for (const char *slot : {"curveNameChanged()", "lineColorChanged()", "fillColorChanged()",
                             "lineStyleChanged(int)", "lineWidthChanged(int)"})
        QVERIFY(panel->metaObject()->indexOfSlot(slot) >= 0);
}

void tst_curveitem::cancelledColours()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150"));
    CurveItemPropertyWidget *panel = f.panelOf(f.curve(0, 0));
    answerColorDialog(QColor());
    panel->findChild<QPushButton *>(QStringLiteral("lineColorButton"))->click();
    QCOMPARE(f.curve(0, 0)->pen().color(), QColor(0, 0, 255));
}

void tst_curveitem::calibrationPoints()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    CalibrationRecord record;
    record.wellName = QStringLiteral("W");
    record.groupName = QStringLiteral("Gamma");
    record.depths = {100, 200, 2000};
    record.values = {30, 300, 75};
    files::write(calibrationPath(f.survey.path() + QStringLiteral("/WLC"), record.wellName, record.groupName),
                 calibrationBytes(record));
    f.showLinear(line("GR", "0 | 150", "0,#ffffff|0,#ffffff|None | None", "0 | 0 | 1 | #ff0000 | 4 | Circle")
                 + line("GR", "0 | 150", "0,#ffffff|0,#ffffff|None | None", "0 | 0 | 0 | #ff0000 | 4 | Circle"));
    QCOMPARE(f.curve(0, 1)->calibrationPoints().size(), 0); // not shown
    const CurveItem *curve = f.curve(0, 0);
    QCOMPARE(curve->calibrationPoints().size(), 3);
    QCOMPARE(curve->calibrationPoints().at(0).position, QPoint(38, f.y(100)));
    QCOMPARE(curve->calibrationPoints().at(1).position.x(), 384); // not clamped
    QCOMPARE(f.at(38, 100), QColor(255, 0, 0));
    int visible = 0;
    for (const QGraphicsItem *child : curve->childItems())
        visible += child->isVisible();
    QCOMPARE(visible, 2); // the one below the range is not drawn
    const QString readout = f.track(0)->readout(QPointF(39, f.y(100) + 1));
    QVERIFY2(readout.contains(QLatin1String("GR:75 | 30 | GR:75 | ")), qPrintable(readout));
    QVERIFY(!f.track(0)->readout(QPointF(60, f.y(100))).contains(QLatin1String(" 30 ")));
    f.type(f.panel(), "scaleEdit", QStringLiteral("500"));
    QCOMPARE(curve->calibrationPoints().at(0).position, QPoint(38, f.y(100)));
}

void tst_curveitem::pointsAreDrawn()
{
    const auto draw = [](int shapeCode) {
        QGraphicsScene scene;
        auto *point = new PointItem(QColor(255, 0, 0), 6, shapeCode);
        scene.addItem(point);
        if (point->boundingRect() != QRectF(-6, -6, 12, 12)
            || point->shape().boundingRect() != QRectF(-6, -6, 12, 12))
            qFatal("wrong bounds");
        return DisplayFixture::picture(&scene, QRect(-10, -10, 20, 20));
    };
    const QImage circle = draw(1);
    const QImage square = draw(2);
    QCOMPARE(circle.pixelColor(10, 10), QColor(255, 0, 0));
    QCOMPARE(square.pixelColor(4, 7), QColor(255, 0, 0));
    QCOMPARE(circle.pixelColor(4, 7), QColor(Qt::white)); // round
    QCOMPARE(square.pixelColor(4, 4), QColor(Qt::white)); // a bevelled corner
    QCOMPARE(draw(7), square);
    QGraphicsRectItem parent;
    const auto *child = new PointItem(Qt::black, 2, 1, &parent);
    QCOMPARE(child->parentItem(), &parent);
}

void tst_curveitem::capsAndJoins()
{
    const auto pen = [](const QColor &color, int width, Qt::PenCapStyle cap, Qt::PenJoinStyle join) {
        return QPen(QBrush(color), width, Qt::SolidLine, cap, join);
    };
    for (const int shapeCode : {1, 2}) {
        QGraphicsScene scene;
        scene.addItem(new PointItem(QColor(255, 0, 0), 6, shapeCode));
        QCOMPARE(pensOfScene(scene, QRect(-10, -10, 20, 20)),
                 QVector<QPen>{pen(QColor(255, 0, 0), 6, Qt::SquareCap, Qt::BevelJoin)});
    }
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("GR", "0 | 150", "0,#ffffff|0,#ffffff|None | None", "0 | 1"));
    const QVector<QPen> pens = pensOfScene(*f.scene(), QRect(-10, 0, 300, 300));
    QVERIFY(pens.contains(pen(QColor(0, 0, 255), 2, Qt::RoundCap, Qt::RoundJoin))); // the line
    QVERIFY(pens.contains(pen(Qt::black, 2, Qt::SquareCap, Qt::BevelJoin))); // the track's outline
}

void tst_curveitem::gradientBox()
{
    QTemporaryDir data;
    QDir().mkpath(data.filePath(QStringLiteral("ColorBars")));
    QImage bar(30, 4, QImage::Format_RGB32);
    bar.fill(Qt::red);
    for (const char *name : {"cb_10.png", "cb_2.png", "cb_1.png"})
        bar.save(data.filePath(QStringLiteral("ColorBars/") + QString::fromLatin1(name)));
    files::write(data.filePath(QStringLiteral("ColorBars/cb_3.png")), "no picture");
    GradientComboBox box(data.path());
    QVector<int> numbers;
    for (int i = 0; i < box.count(); ++i) {
        numbers.append(box.itemData(i).toInt());
        QVERIFY(box.itemText(i).isEmpty());
    }
    QCOMPARE(numbers, (QVector<int>{0, 1, 2, 3, 10}));
    QCOMPARE(box.iconSize(), QSize(50, 20));
    QCOMPARE(box.minimumWidth(), 60);
    QCOMPARE(box.itemData(1, Qt::SizeHintRole).toSize().height(), 20);
    QCOMPARE(box.itemIcon(0).availableSizes().first(), QSize(100, 20));
    QCOMPARE(box.itemIcon(1).availableSizes().first(), QSize(50, 20));
    const QImage swatch = box.itemIcon(0).pixmap(100, 20).toImage();
    QCOMPARE(swatch.pixelColor(50, 10), QColor(Qt::white));
    for (const QPoint &corner : {QPoint(0, 0), QPoint(99, 0), QPoint(0, 19), QPoint(99, 19)})
        QCOMPARE(swatch.pixelColor(corner), QColor(Qt::black)); // outlined
    QCOMPARE(box.itemIcon(1).pixmap(50, 20).toImage().pixelColor(25, 10), QColor(Qt::red));
    QVERIFY(box.itemIcon(3).isNull()); // no picture
    QSignalSpy activated(&box, &GradientComboBox::itemIsActivated);
    box.show();
    QTest::keyClick(&box, Qt::Key_Down);
    QCOMPARE(activated.size(), 1);
    QCOMPARE(box.barNumber(), 1);
}

void tst_curveitem::badLogs_data()
{
    QTest::addColumn<QVector<float>>("depths");
    QTest::addColumn<QVector<float>>("values");
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    using Floats = QVector<float>;
    QTest::newRow("empty") << Floats() << Floats();
    QTest::newRow("one sample") << Floats{500} << Floats{50};
    QTest::newRow("unsorted") << Floats{500, 100, 900, 300} << Floats{50, 60, 70, 80};
    QTest::newRow("not finite") << Floats{100, 200, 300, 400} << Floats{nan, infinity, -infinity, 50};
    QTest::newRow("all null") << Floats{100, 200} << Floats{1e30F, 1e30F};
    QTest::newRow("one depth") << Floats{100, 100, 100} << Floats{1, 2, 3};
    QTest::newRow("negative") << Floats{100, 200} << Floats{-5, -6};
    QTest::newRow("huge") << Floats{100, 200} << Floats{3e38F, -3e38F};
}

void tst_curveitem::badLogs()
{
    QFETCH(QVector<float>, depths);
    QFETCH(QVector<float>, values);
    const char *limits[] = {"0 | 150", "5 | 5", "0 | 0", "-10 | 100", "1e308 | -1e308", "nan | nan"};
    const char *fills[] = {"0,#ff0000|0,#ffffff|Left Boundary | None", "1,#ff0000|1,#ffffff|None | Right Boundary",
                           "0,#ff0000|0,#ffffff|Curve_1 | None", "2,#ff0000|0,#ffffff|Curve_2 | Curve_99"};
    for (const char *type : {"Linear\n", "Logrithmic\n"})
        for (const char *limit : limits) {
            CurveFixture f;
            f.addLog(QStringLiteral("GR"), depths, values);
            QByteArray lines;
            for (const char *fill : fills)
                lines += line("GR", limit, fill);
            f.addTrack(1, type + lines);
            f.show();
            f.picture(f.scene(), QRect(0, 0, 200, 1500));
            f.picture(f.display->headerView()->scene(), QRect(0, 0, 200, 200));
            f.track(0)->readout(QPointF(50, 500));
            f.curve(0, 0)->shape();
            QVERIFY(f.asker.boxes.isEmpty());
        }
}

void tst_curveitem::badTemplates()
{
    CurveFixture f;
    f.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    f.showLinear(line("MISSING", "0 | 150", "0,#ff0000|0,#ffffff|Curve_99 | None")
                 + line("GR", "0 | 150", "0,#ff0000|0,#ffffff|Curve_x | None")
                 + line("GR", "0 | 150", "0,#ff0000|0,#ffffff|Curve_1 | None")
                 + line("GR", "0 | 150", "-5,#ff0000|0,nocolour|Left Boundary | Curve_-1", "9 | 9"));
    QCOMPARE(f.track(0)->curves().size(), 4);
    QVERIFY(!f.curve(0, 0)->fillStyle().isOn);
    QVERIFY(!f.curve(0, 1)->fillStyle().isOn);
    QVERIFY(f.curve(0, 2)->fillStyle().isOn); // up to a curve the well has not: nothing is filled
    f.picture(f.scene(), QRect(0, 0, 200, 1500));
    f.picture(f.display->headerView()->scene(), QRect(0, 0, 200, 200));
    // A fill without a colour fills nothing.
    CurveFixture colourless;
    colourless.addLog(QStringLiteral("GR"), {0, 1000}, {75, 75});
    colourless.showLinear(line("GR", "0 | 150", "0,nocolour|0,#ffffff|Left Boundary | None"));
    QCOMPARE(colourless.at(40, 505), QColor(Qt::white));
}

LORVA_TEST_MAIN(tst_curveitem)
#include "tst_curveitem.moc"
