#include "mainwin/wellreports.h"

#include <QTest>

#include <limits>

class tst_wellreports : public QObject
{
    Q_OBJECT

private slots:
    void breakZone_data()
    {
        QTest::addColumn<QVector<double>>("values");
        QTest::addColumn<double>("expected");
        const double n = -999.25;
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("no samples") << QVector<double>{} << 0.0;
        QTest::newRow("all null") << QVector<double>{n, n, n} << 0.0;
        QTest::newRow("no null") << QVector<double>{1, 2, 3} << 0.0;
        QTest::newRow("null only before the data") << QVector<double>{n, n, 1, 2} << 0.0;
        QTest::newRow("null, 5, 6, null, 7") << QVector<double>{n, 5, 6, n, 7} << 40.0;
        QTest::newRow("only the first gap counts") << QVector<double>{1, n, 2, n, 3} << 20.0;
        QTest::newRow("null after the data") << QVector<double>{1, 2, n} << 30.0;
        QTest::newRow("NaN is no null at the start") << QVector<double>{nan, n, 1} << 20.0;
        QTest::newRow("NaN is no null inside") << QVector<double>{1, nan, 2} << 0.0;
        QTest::newRow("equality is exact") << QVector<double>{1, -999.2500001, n} << 30.0;
    }

    void breakZone()
    {
        QFETCH(QVector<double>, values);
        QVector<double> depths;
        for (int i = 0; i < values.size(); ++i)
            depths.append(10.0 * (i + 1));
        QTEST(wellreports::breakZoneDepth(depths, values, -999.25), "expected");
    }

    void breakZoneUsesTheLogsOwnNullValue() { QCOMPARE(wellreports::breakZoneDepth({1, 2, 3}, {5, 0, 6}, 0), 2.0); }

    void logsHeader()
    {
        QCOMPARE(wellreports::logsHeaderLine(),
                 QByteArray("Curve Name      Start Depth End Depth  Break Zone Depth\n"));
    }

    void logRow()
    {
        LogCurveData curve;
        curve.logName = QStringLiteral("GR");
        curve.depths = {800.1234, 801, 802};
        curve.values = {1, nullSampleValue, 3};
        QCOMPARE(wellreports::logLine(curve), QByteArray("GR              800.1234     802.0000     801.0000    \n"));
    }

    void logRowWithoutSamples()
    {
        LogCurveData curve;
        curve.logName = QStringLiteral("EMPTY");
        QCOMPARE(wellreports::logLine(curve), QByteArray("EMPTY           0.0000       0.0000       0.0000      \n"));
    }

    void aFieldLongerThanItsWidthIsWrittenWhole()
    {
        LogCurveData curve;
        curve.logName = QStringLiteral("A_LOG_WITH_A_LONG_NAME");
        curve.depths = {123456789.5};
        curve.values = {1};
        QCOMPARE(wellreports::logLine(curve),
                 QByteArray("A_LOG_WITH_A_LONG_NAME 123456789.5000 123456789.5000 0.0000      \n"));
    }

    void markersHeader()
    {
        QCOMPARE(wellreports::markersHeaderLine(),
                 QByteArray("Well Name       X          Y          MD         TVDSS      Marker Name    \n"));
    }

    void markerRow()
    {
        WellRecord well;
        well.wellName = QStringLiteral("Aldra-1");
        well.x = 500000.126;
        well.y = -12.5;
        const WellMarker marker{QStringLiteral("Top A"), 1234.5F, 1209.25, QColor()};
        QCOMPARE(wellreports::markerLine(well, marker),
                 QByteArray("Aldra-1         500000.13  -12.50     1234.50    1209.25    Top A          \n"));
    }

    void markerDepthsAreSinglePrecision()
    {
        WellRecord well;
        const WellMarker marker{QStringLiteral("T"), 16777217.0F, 16777217.0, QColor()};
        QVERIFY(wellreports::markerLine(well, marker).contains("16777216.00 16777216.00"));
    }

    void widthsCountCharacters()
    {
        WellRecord well;
        well.wellName = QString::fromUtf8("Ålesund-Ø1");
        const WellMarker marker{QStringLiteral("T"), 1, 1, QColor()};
        QVERIFY(QString::fromUtf8(wellreports::markerLine(well, marker))
                    .startsWith(well.wellName + QStringLiteral("      0.00")));
    }
};

QTEST_GUILESS_MAIN(tst_wellreports)
#include "tst_wellreports.moc"
