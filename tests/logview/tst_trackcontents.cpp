#include "base/colorbar.h"
#include "logview/geometry/calibrationplacement.h"
#include "logview/geometry/perforationgeometry.h"
#include "support/testmain.h"

#include "datastore/curvegroups.h"
#include "support/files.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace logview;
using namespace base;

/// What stands in a track beside grid and curves: perforation zones, calibration points; and the colour bars.
class tst_trackcontents : public QObject
{
    Q_OBJECT

private slots:
    void zoneColours()
    {
        const QColor oil(0, 100, 0);
        const QColor gas(255, 0, 0);
        const QColor water(64, 164, 223);
        const auto is = [](const char *type, const QColor &left, const QColor &right) {
            const ZoneColors colors = zoneColors(QString::fromLatin1(type));
            return colors.left == left && colors.right == right;
        };
        QVERIFY(is("Oil", oil, oil));
        QVERIFY(is("Gas", gas, gas));
        QVERIFY(is("Water", water, water));
        QVERIFY(is("Dry", QColor(128, 128, 128), QColor(128, 128, 128)));
        QVERIFY(is("Not Tested", QColor(0, 0, 0), QColor(0, 0, 0)));
        QVERIFY(is("Oil-Gas", oil, gas));
        QVERIFY(is("Oil-Water", oil, water));
        QVERIFY(is("Gas-Water", gas, water));
        QVERIFY(!zoneColors(QStringLiteral("Mud")).left.isValid());
        for (const QString &type : zoneTypeNames())
            QVERIFY2(zoneColors(type).left.isValid() && zoneColors(type).right.isValid(), qPrintable(type));
    }

    void zonesStandAtTheirDepths()
    {
        const DepthAxis axis{0, 1000, 2000.7F};
        const QVector<ZoneGeometry> zones = zoneGeometry(zonesOf({{100, 150, "Oil-Gas"}}), axis, {}, 48, 0, 2000);
        QCOMPARE(zones.size(), 1);
        QCOMPARE(zones.first().left, QRectF(0, 200, 24, 100)); // by the whole-pixel height, 2000
        QCOMPARE(zones.first().right, QRectF(24, 200, 24, 100));
        QCOMPARE(zones.first().outline(), QRectF(0, 200, 48, 100));
        QCOMPARE(zones.first().label, QStringLiteral("Oil-Gas"));
        QCOMPARE(zones.first().colors.right, QColor(255, 0, 0));
        const QVector<ZoneGeometry> deeper =
            zoneGeometry(zonesOf({{100, 150, "Oil"}}), {-25, 975, 1000}, {TvdSubsea, Metre, 25}, 48, 0, 1000);
        QCOMPARE(deeper.first().left, QRectF(0, 100, 24, 50));
    }

    void zonesAreCutOrLeftOut()
    {
        const DepthAxis axis{100, 1100, 1000};
        constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
        const PerforationRecord record = zonesOf({{50, 150, "Oil"},
                                                  {1050, 9000, "Gas"},
                                                  {10, 90, "Oil"},
                                                  {1200, 1300, "Oil"},
                                                  {notANumber, 300, "Oil"},
                                                  {300, notANumber, "Oil"},
                                                  {700, 600, "Odd"}});
        const QVector<ZoneGeometry> zones = zoneGeometry(record, axis, {}, 48, 0, 1000);
        QCOMPARE(zones.size(), 3);
        QCOMPARE(zones.at(0).outline(), QRectF(0, 0, 48, 50));
        QCOMPARE(zones.at(1).outline(), QRectF(0, 950, 48, 50));
        QCOMPARE(zones.at(2).outline(), QRectF(0, 500, 48, 100));
        QVERIFY(!zones.at(2).colors.left.isValid());
        QCOMPARE(zoneGeometry(record, axis, {}, 48, 400, 450).size(), 0);
        QCOMPARE(zoneGeometry(record, axis, {}, 48, 590, 700).size(), 1);
        QVERIFY(zoneGeometry(record, DepthAxis::of(5, 5), {}, 48, 0, 1000).isEmpty());
        QVERIFY(zoneGeometry(record, axis, {}, -3, 0, 1000).isEmpty());
        PerforationRecord ragged = record;
        ragged.zoneTypes.clear();
        QVERIFY(zoneGeometry(ragged, axis, {}, 48, 0, 1000).isEmpty());
    }

    void labelsAreCentredWhereTheyFit()
    {
        const ZoneGeometry zone =
            zoneGeometry(zonesOf({{100, 150, "Oil"}}), {0, 1000, 1000}, {}, 48, 0, 1000).first();
        QFont font(QStringLiteral("Times"));
        font.setPointSize(8);
        const ZoneLabel label = zoneLabel(zone, font, nullptr, {});
        QCOMPARE(label.text, QString("Oil"));
        QCOMPARE(label.font, font);
        QCOMPARE(label.color, QColor(Qt::black));
        QCOMPARE(label.rect.center(), QPointF(24, 125));
        QVERIFY(label.rect.height() > 8 && label.rect.width() > 8);
        // Away from what is taken, as near to the middle as there is room.
        const double height = label.rect.height();
        QCOMPARE(zoneLabel(zone, font, nullptr, {QRectF(0, 115, 48, 12)}).rect.top(), 127.0);
        QCOMPARE(zoneLabel(zone, font, nullptr, {QRectF(0, 123, 48, 12)}).rect.bottom(), 123.0);
        QCOMPARE(zoneLabel(zone, font, nullptr, {QRectF(0, 123, 48, 12), QRectF(0, 100, 48, 15)}).rect.top(), 135.0);
        QVERIFY(zoneLabel(zone, font, nullptr, {QRectF(0, 100, 48, 50)}).text.isEmpty());
        QVERIFY(height < 50);
    }

    void labelsBreakOrShrink()
    {
        QFont font(QStringLiteral("Times"));
        font.setPointSize(8);
        const QFontMetricsF metrics(font);
        const auto label = [&](const char *type, double width, double height) {
            ZoneGeometry zone;
            zone.left = QRectF(0, 0, width / 2, height);
            zone.right = QRectF(width / 2, 0, width / 2, height);
            zone.label = QString::fromLatin1(type);
            zone.colors = zoneColors(zone.label);
            return zoneLabel(zone, font, nullptr, {});
        };
        const double whole = metrics.horizontalAdvance(QStringLiteral("Not Tested"));
        QCOMPARE(label("Not Tested", whole, 100).text, QString("Not Tested"));
        QCOMPARE(label("Not Tested", whole - 0.5, 100).text, QString("Not\nTested"));
        QCOMPARE(label("Not Tested", whole - 0.5, 100).font.pointSize(), 8);
        QCOMPARE(label("Not Tested", whole - 0.5, 100).color, QColor(Qt::white));
        QCOMPARE(label("Oil-Water", 30, 100).text, QString("Oil-\nWater"));
        QCOMPARE(label("Oil-Water", 30, 100).color, QColor(Qt::black));
        const ZoneLabel low = label("Oil-Water", 40, 11); // no room for a second line
        QCOMPARE(low.text, QString("Oil-Water"));
        QVERIFY(low.font.pointSize() < 8 && low.font.pointSize() >= 5);
        QVERIFY(label("Water", 20, 100).font.pointSize() < 8); // nothing to break at
        QVERIFY(label("Water", 5, 100).text.isEmpty());
        QVERIFY(label("Water", 100, 5).text.isEmpty());
        QVERIFY(label("", 100, 100).text.isEmpty());
    }

    void calibrationPointsAreLinearAndTruncated()
    {
        const DepthAxis axis{0, 1000, 999.9F};
        CalibrationRecord record;
        record.depths = {0, 500.7F, 1000, 1200, -3};
        record.values = {10.4F, 200, -50.7F, 20, 20};
        for (const bool isLogarithmic : {false, true}) {
            const QVector<CalibrationPoint> points = placeCalibration(record, axis, {isLogarithmic, 0, 100, 200});
            QCOMPARE(points.size(), 5);
            QCOMPARE(points.at(0).position, QPoint(20, 0)); // 20.8
            QCOMPARE(points.at(1).position, QPoint(400, 500)); // beyond the track, 500.65 truncated
            QCOMPARE(points.at(2).position, QPoint(-101, 999)); // -101.4 and 999.9
            QCOMPARE(points.at(4).position.y(), -2); // -2.9997
            QCOMPARE(points.at(1).value, 200.0F);
            QCOMPARE(points.at(1).depth, 500.7F);
            QVERIFY(points.at(0).isInRange && points.at(2).isInRange);
            QVERIFY(!points.at(3).isInRange && !points.at(4).isInRange);
        }
        QCOMPARE(placeCalibration(record, axis, {false, 100, 0, 200}).at(0).position.x(), 179);
        QCOMPARE(placeCalibration(record, axis, {false, 0, 100, 200}, {MeasuredDepth, Feet, 0}).at(1).position.y(),
                 static_cast<int>(static_cast<double>(static_cast<float>(static_cast<double>(500.7F) * 3.28084))
                                  * 0.9999));
    }

    void calibrationPointsThatStandNowhere()
    {
        CalibrationRecord record;
        constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
        record.depths = {notANumber, 10, 20};
        record.values = {1, notANumber};
        QVERIFY(placeCalibration(record, {0, 1000, 1000}, {false, 0, 100, 200}).isEmpty());
        record.depths = {10};
        record.values = {5};
        QVERIFY(placeCalibration(record, {0, 1000, 1000}, {false, 5, 5, 200}).isEmpty());
        QVERIFY(placeCalibration(record, DepthAxis::of(5, 5), {false, 0, 100, 200}).isEmpty());
        record.values = {3e38F};
        QCOMPARE(placeCalibration(record, {0, 1000, 1000}, {false, 0, 1e-30F, 200}).first().position.x(),
                 std::numeric_limits<int>::max());
    }

    void theTopmostPointUnderTheMouse()
    {
        CalibrationRecord record;
        record.depths = {100, 102, 500, 2000};
        record.values = {50, 50, 50, 50};
        const QVector<CalibrationPoint> points = placeCalibration(record, {0, 1000, 1000}, {false, 0, 100, 200});
        QCOMPARE(calibrationAt(points, QPointF(100, 101), 4), 1);
        QCOMPARE(calibrationAt(points, QPointF(104, 96), 4), 0);
        QCOMPARE(calibrationAt(points, QPointF(104.5, 100), 4), -1);
        QCOMPARE(calibrationAt(points, QPointF(100, 2000), 4), -1); // not shown
    }

    void coloursComeFromTheMiddleRow()
    {
        const QTemporaryDir setup;
        QImage image(4, 5, QImage::Format_RGB32);
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 4; ++x)
                image.setPixel(x, y, qRgb(10 * x, 20 * y, 7));
        save(setup, "ColorBars/cb_3.png", image);
        const ColorBar bar = loadColorBar(setup.path(), 3);
        QCOMPARE(bar.number, 3);
        QCOMPARE(bar.image.size(), QSize(4, 5));
        QCOMPARE(bar.colors, (QVector<QRgb>{qRgb(0, 40, 7), qRgb(10, 40, 7), qRgb(20, 40, 7), qRgb(30, 40, 7)}));
    }

    void barsThatAreMissingOrNoImages()
    {
        const QTemporaryDir setup;
        files::write(setup.filePath(QStringLiteral("ColorBars/cb_1.png")), "no picture");
        files::write(setup.filePath(QStringLiteral("ColorBars/cb_2.png")), QByteArray());
        for (const int number : {-1, 0, 1, 2, 7}) {
            const ColorBar bar = loadColorBar(setup.path(), number);
            QVERIFY(bar.isNull() && bar.image.isNull() && bar.number == 0);
        }
        QVERIFY(loadColorBar(setup.filePath(QStringLiteral("nowhere")), 1).isNull());
        QVERIFY(colorBarNumbers(setup.filePath(QStringLiteral("nowhere"))).isEmpty());
    }

    void barsAreListedByNumber()
    {
        const QTemporaryDir setup;
        for (const char *name : {"cb_10.png", "cb_2.png", "cb_1.png", "cb_02.png", "cb_0.png", "cb_x.png",
                                 "cb_3.png.txt", "other.png", "cb_4.jpg"})
            files::write(setup.filePath(QStringLiteral("ColorBars/") + QLatin1String(name)), "x");
        QVERIFY(QDir(setup.filePath(QStringLiteral("ColorBars"))).mkdir(QStringLiteral("cb_5.png")));
        QCOMPARE(colorBarNumbers(setup.path()), (QVector<int>{1, 2, 10}));
    }

    void bothFolderNamesAreTheSameFolder()
    {
        const QTemporaryDir setup;
        save(setup, "Colorbars/cb_1.png", QImage(3, 3, QImage::Format_RGB32));
        QCOMPARE(loadColorBar(setup.path(), 1).colors.size(), 3);
        QCOMPARE(colorBarNumbers(setup.path()), QVector<int>{1});
    }

private:
    struct Zone
    {
        float top;
        float bottom;
        const char *type;
    };
    static PerforationRecord zonesOf(const QVector<Zone> &zones)
    {
        PerforationRecord record;
        record.zoneCount = zones.size();
        for (const Zone &zone : zones) {
            record.names.append(QStringLiteral("zone"));
            record.tops.append(zone.top);
            record.bottoms.append(zone.bottom);
            record.zoneTypes.append(QString::fromLatin1(zone.type));
        }
        return record;
    }
    static void save(const QTemporaryDir &folder, const char *name, const QImage &image)
    {
        const QString path = folder.filePath(QString::fromLatin1(name));
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QVERIFY(image.save(path));
    }
};

LORVA_TEST_MAIN(tst_trackcontents)
#include "tst_trackcontents.moc"
