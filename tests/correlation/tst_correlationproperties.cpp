#include "correlation/correlationproperties.h"

#include <QTest>

#include <limits>

namespace {

correlation::KnownNames nothingKnown()
{
    return {};
}

correlation::KnownNames knowing(const QStringList &wells, const QStringList &templates)
{
    return {[wells](const QString &well) { return wells.contains(well); },
            [templates](const QString &, const QString &name) { return templates.contains(name); }};
}

CorrelationProperties parsed(const QByteArray &bytes, bool *isWhole = nullptr)
{
    return correlation::parseProperties(bytes, nothingKnown(), isWhole);
}

CorrelationZone zone(const QString &name, const QString &start, const QString &end)
{
    CorrelationZone result;
    result.name = name;
    result.start = start;
    result.end = end;
    result.color = "#ff8000";
    return result;
}

CorrelationProperties usual()
{
    CorrelationProperties properties;
    properties.name = "North flank";
    properties.trackWidth = 0.75;
    properties.scale = 500;
    properties.wells = {{"15/9-F-1", "Default"}, {"B 2", "Simple"}};
    properties.markers = QStringList{"Top Sand", "Base Sand"};
    properties.showsPerforations = true;
    CorrelationZone typed = zone("Lower", "1500", "Base Sand");
    typed.isStartUserDepth = true;
    typed.isVisible = false;
    properties.zones = {zone("Upper", "Top Sand", "Base Sand"), typed};
    return properties;
}

const QByteArray usualBytes = "Correlation:North flank\n"
                              "TrackWidth:0.75\n"
                              "Scale:500\n"
                              "Number Of Wells:2\n"
                              "15/9-F-1:Default\n"
                              "B 2:Simple\n"
                              "Marker:2\n"
                              "Top Sand\n"
                              "Base Sand\n"
                              "Perforation Flag:1\n"
                              "Zones:2\n"
                              "Upper|Top Sand|Base Sand|#ff8000|1|0|0\n"
                              "Lower|1500|Base Sand|#ff8000|0|1|0\n";

} // namespace

class tst_correlationproperties : public QObject
{
    Q_OBJECT

private slots:
    void linesStandInTheirOrder() { QCOMPARE(correlation::propertiesBytes(usual()), usualBytes); }

    void defaultsAreThoseOfTheChoosers()
    {
        CorrelationProperties properties;
        properties.name = "New";
        QCOMPARE(correlation::propertiesBytes(properties),
                 QByteArray("Correlation:New\nTrackWidth:1.2\nScale:1000\nNumber Of Wells:0\nMarker:0\n"
                            "Perforation Flag:0\nZones:0\n"));
    }

    void everythingIsReadBack()
    {
        bool isWhole = false;
        const CorrelationProperties read = parsed(usualBytes, &isWhole);
        QVERIFY(isWhole);
        QCOMPARE(read.name, QString("North flank"));
        QCOMPARE(read.trackWidth, 0.75);
        QCOMPARE(read.scale, 500.0);
        QCOMPARE(read.wells.size(), 2);
        QCOMPARE(read.wells.at(0).wellName, QString("15/9-F-1"));
        QCOMPARE(read.wells.at(1).templateName, QString("Simple"));
        QCOMPARE(read.markers, QStringList({"Top Sand", "Base Sand"}));
        QVERIFY(read.showsPerforations);
        QCOMPARE(read.zones.size(), 2);
        QCOMPARE(read.zones.at(0).name, QString("Upper"));
        QCOMPARE(read.zones.at(0).end, QString("Base Sand"));
        QVERIFY(read.zones.at(0).isVisible);
        QVERIFY(!read.zones.at(0).isStartUserDepth);
        QVERIFY(!read.zones.at(0).isEndUserDepth);
        QCOMPARE(read.zones.at(1).start, QString("1500"));
        QVERIFY(read.zones.at(1).isStartUserDepth);
        QVERIFY(!read.zones.at(1).isEndUserDepth);
        QVERIFY(!read.zones.at(1).isVisible);
        QCOMPARE(correlation::propertiesBytes(read), usualBytes);
    }

    void theEndMayBeTheTypedDepth()
    {
        const auto read =
            parsed("Correlation:A\nTrackWidth:1\nScale:1\nNumber Of Wells:0\nMarker:0\nPerforation Flag:0\n"
                   "Zones:1\nZ|Top|1600.5|#000000|1|0|1\n");
        QVERIFY(!read.zones.at(0).isStartUserDepth);
        QVERIFY(read.zones.at(0).isEndUserDepth);
        QCOMPARE(read.zones.at(0).end, QString("1600.5"));
    }

    void blanksAroundMarkersAreNotKept()
    {
        const auto read = parsed(QByteArray(usualBytes).replace("\nTop Sand\n", "\n\t Top Sand  \n"));
        QCOMPARE(read.markers, QStringList({"Top Sand", "Base Sand"}));
    }

    void anyLineEndAndAByteOrderMark_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("CRLF") << QByteArray(usualBytes).replace("\n", "\r\n");
        QTest::newRow("CR") << QByteArray(usualBytes).replace('\n', '\r');
        QTest::newRow("mark") << "\xEF\xBB\xBF" + usualBytes;
        QTest::newRow("no last line end") << usualBytes.chopped(1);
    }

    void anyLineEndAndAByteOrderMark()
    {
        QFETCH(QByteArray, bytes);
        bool isWhole = false;
        QCOMPARE(correlation::propertiesBytes(parsed(bytes, &isWhole)), usualBytes);
        QVERIFY(isWhole);
    }

    void everyBeginningOfAFileIsRead()
    {
        for (int length = 0; length < usualBytes.size() - 1; ++length) {
            bool isWhole = true;
            const CorrelationProperties read = parsed(usualBytes.left(length), &isWhole);
            // A cut inside the last line leaves all lines.
            QCOMPARE(isWhole, length > usualBytes.lastIndexOf('\n', usualBytes.size() - 2) + 1);
            QVERIFY(read.wells.size() <= 2 && read.markers.size() <= 2 && read.zones.size() <= 2);
            const QByteArray written = correlation::propertiesBytes(read);
            QCOMPARE(correlation::propertiesBytes(parsed(written)), written);
        }
    }

    void wrongCountsHideNothing_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        for (const char *text : {"0", "1", "3", "99", "2000000000", "99999999999", "-1", "x", ""}) {
            const QByteArray count(text);
            QTest::newRow("wells " + count) << QByteArray("Wells:2") << "Wells:" + count;
            QTest::newRow("markers " + count) << QByteArray("Marker:2") << "Marker:" + count;
        }
    }

    void wrongCountsHideNothing()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        bool isWhole = true;
        const CorrelationProperties read = parsed(QByteArray(usualBytes).replace(from, to), &isWhole);
        QVERIFY(!isWhole);
        QCOMPARE(correlation::propertiesBytes(read), usualBytes);
    }

    void zonesEndWithTheFileOrTheirCount()
    {
        bool isWhole = true;
        QCOMPARE(parsed(QByteArray(usualBytes).replace("Zones:2", "Zones:9"), &isWhole).zones.size(), 2);
        QVERIFY(!isWhole);
        QCOMPARE(parsed(QByteArray(usualBytes).replace("Zones:2", "Zones:1"), &isWhole).zones.size(), 1);
        QVERIFY(isWhole);
        QCOMPARE(parsed(QByteArray(usualBytes).replace("Zones:2", "Zones:-7"), &isWhole).zones.size(), 0);
    }

    void aMarkerMayBeCalledLikeAKey()
    {
        CorrelationProperties properties = usual();
        properties.markers = QStringList{"Perforation Flag:1", "Zones:3"};
        properties.wells.append(CorrelationWell{"Marker", "2"});
        const QByteArray written = correlation::propertiesBytes(properties);
        bool isWhole = false;
        QCOMPARE(correlation::propertiesBytes(parsed(written, &isWhole)), written);
        QVERIFY(isWhole);
        QCOMPARE(parsed(written).markers, properties.markers);
    }

    void numbersThatAreNoneCountAsTheDefaults_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const char *text : {"abc", "nan", "inf", "1e400", "1,5"})
            QTest::newRow(text) << QByteArray(text);
    }

    void numbersThatAreNoneCountAsTheDefaults()
    {
        QFETCH(QByteArray, text);
        bool isWhole = true;
        const auto width = parsed(QByteArray(usualBytes).replace("0.75", text), &isWhole);
        QCOMPARE(width.trackWidth, 1.2);
        QVERIFY(!isWhole);
        QCOMPARE(parsed(QByteArray(usualBytes).replace("Scale:500", "Scale:" + text)).scale, 1000.0);
    }

    void scalesAreKeptAsTheyStand()
    {
        QCOMPARE(parsed(QByteArray(usualBytes).replace("Scale:500", "Scale:0")).scale, 0.0);
        QCOMPARE(parsed(QByteArray(usualBytes).replace("Scale:500", "Scale:-20")).scale, -20.0);
        CorrelationProperties properties = usual();
        properties.scale = 1234567.0;
        QVERIFY(correlation::propertiesBytes(properties).contains("\nScale:1.23457e+06\n"));
        properties.scale = std::numeric_limits<double>::quiet_NaN();
        properties.trackWidth = std::numeric_limits<double>::infinity();
        QVERIFY(correlation::propertiesBytes(properties).contains("\nTrackWidth:1.2\nScale:1000\n"));
    }

    void namesWithColonsAreToldByWhatIsKnown()
    {
        const auto known = knowing({"A:B", "A", "W"}, {"T", "C:T", "x:y:z"});
        const auto split = [&known](const char *line) {
            const CorrelationWell well = correlation::splitWellLine(QString::fromLatin1(line), known);
            return QString(well.wellName + " + " + well.templateName);
        };
        QCOMPARE(split("A:T"), QString("A + T"));
        QCOMPARE(split("A:B:T"), QString("A:B + T"));
        QCOMPARE(split("A:C:T"), QString("A + C:T"));
        QCOMPARE(split("W:x:y:z"), QString("W + x:y:z"));
        // Nothing fits: the first two parts.
        QCOMPARE(split("A:Q:T"), QString("A + Q"));
        QCOMPARE(split("unknown:T"), QString("unknown + T"));
        QCOMPARE(split("no colon"), QString("no colon + "));
        QCOMPARE(split(":T"), QString(" + T"));
        // The template has gone, or the well.
        const auto without = [&known](const char *line) {
            auto left = known;
            left.isWell = [](const QString &wellName) { return wellName == "N:1" || wellName == "W"; };
            const CorrelationWell well = correlation::splitWellLine(QString::fromLatin1(line), left);
            return QString(well.wellName + " + " + well.templateName);
        };
        QCOMPARE(without("N:1:gone"), QString("N:1 + gone"));
        QCOMPARE(without("N:1:T"), QString("N:1 + T"));
        QCOMPARE(without("N:2:T"), QString("N:2 + T"));
        QCOMPARE(without("N:2:C:T"), QString("N:2 + C:T"));
        QCOMPARE(without("N:2:gone"), QString("N + 2")); // neither is there
        QCOMPARE(without("W:N:T"), QString("W + N")); // what is named first is there
        const auto nameless = knowing({""}, {"C:T"});
        QCOMPARE(correlation::splitWellLine(":C:T", nameless).templateName, QString("C:T"));
    }

    void namesThatCouldNotBeReadBackAreWrittenOtherwise()
    {
        CorrelationProperties properties = usual();
        properties.name = "two\nlines";
        properties.wells = {{"we\rll", "temp\nlate"}};
        properties.markers = QStringList{"  Top\nSand "};
        properties.zones = {zone("a|b", "Top|1", "c\nd")};
        const QByteArray written = correlation::propertiesBytes(properties);
        QVERIFY(written.startsWith("Correlation:two lines\n"));
        QVERIFY(written.contains("\nwe ll:temp late\n"));
        QVERIFY(written.contains("\nMarker:1\nTop Sand\nPerf"));
        QVERIFY(written.endsWith("\na\xC2\xA6"
                                 "b|Top\xC2\xA6"
                                 "1|c d|#ff8000|1|0|0\n"));
        bool isWhole = false;
        QCOMPARE(correlation::propertiesBytes(parsed(written, &isWhole)), written);
        QVERIFY(isWhole);
    }

    void aZoneWithoutAColorIsLightGrey()
    {
        for (const char *color : {"", "red", "#12345", "#gggggg", "#1234567", "#ffffff\n"}) {
            CorrelationProperties properties = usual();
            properties.zones[0].color = QString::fromLatin1(color);
            QVERIFY2(correlation::propertiesBytes(properties).contains("|Base Sand|#c0c0c0|1|0|0\n"), color);
        }
        QCOMPARE(parsed(QByteArray(usualBytes).replace("#ff8000", "blue")).zones.at(0).color, QString("#c0c0c0"));
        QCOMPARE(parsed(QByteArray(usualBytes).replace("#ff8000", "#FF80aB")).zones.at(0).color, QString("#FF80aB"));
    }

    void shortAndLongZoneLines()
    {
        const QByteArray head =
            "Correlation:A\nTrackWidth:1\nScale:1\nNumber Of Wells:0\nMarker:0\nPerforation Flag:7\n";
        const auto read = parsed(head + "Zones:3\n\nZ|Top\nZ|a|b|#000000|1|1|1|more\n");
        QVERIFY(read.showsPerforations);
        QCOMPARE(read.zones.size(), 3);
        QVERIFY(!read.zones.at(0).isVisible);
        QCOMPARE(read.zones.at(1).start, QString("Top"));
        QCOMPARE(read.zones.at(1).end, QString());
        QVERIFY(read.zones.at(2).isVisible && read.zones.at(2).isStartUserDepth && read.zones.at(2).isEndUserDepth);
    }

    void namesAreTextOfAnyLanguage()
    {
        CorrelationProperties properties = usual();
        properties.name = QString::fromUtf8("Ås-fältet");
        properties.markers = QStringList{QString::fromUtf8("قمة الرمل")};
        QCOMPARE(parsed(correlation::propertiesBytes(properties)).markers, properties.markers);
        QCOMPARE(parsed("Correlation:\xC5s\nTrackWidth:1\n").name, QString::fromUtf8("Ås"));
    }
};

QTEST_APPLESS_MAIN(tst_correlationproperties)
#include "tst_correlationproperties.moc"
