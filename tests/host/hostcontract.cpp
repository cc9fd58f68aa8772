#include "hostcontract.h"

#include "support/files.h"

#include <QFileInfo>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr float undefined = host::undefinedValue;

using Samples = QVector<float>;

host::LogData logOf(const QString &name, const Samples &depths, const Samples &values, const QString &unit = "gAPI")
{
    return {name, unit, depths, values};
}

host::LogData smallLog(const QString &name, float value = 1)
{
    return logOf(name, {100, 101}, {value, value + 1});
}

/// Writes down what it is told, with the survey current at that moment.
class Notes : public host::Listener
{
public:
    explicit Notes(host::Host &told)
        : m_host(told)
    {
        m_host.addListener(this);
    }
    ~Notes() override { m_host.removeListener(this); }

    void markersChanged(const QString &wellKey) override
    {
        lines.append("markers " + wellKey);
        if (onCall)
            onCall();
    }
    void surveyChanged() override
    {
        lines.append("survey " + m_host.surveyName());
        if (onCall)
            onCall();
    }

    QStringList lines;
    std::function<void()> onCall;

private:
    host::Host &m_host;
};

} // namespace

QString HostContract::addNamed(const QString &name)
{
    host::WellHeader header;
    header.name = name;
    header.kbElevation = 30;
    header.groundElevation = 20;
    header.totalDepth = 3000;
    return addWell(header);
}

QStringList HostContract::listedNames()
{
    QStringList names;
    for (const host::WellEntry &entry : wells().list().value)
        names.append(entry.name);
    return names;
}

QStringList HostContract::logNames(const QString &key)
{
    QStringList names;
    for (const host::LogInfo &log : wells().logs(key).value)
        names.append(log.name);
    return names;
}

QStringList HostContract::markerNames(const QString &key)
{
    QStringList names;
    for (const host::Marker &marker : wells().markers(key).value)
        names.append(marker.name);
    return names;
}

QString HostContract::markerPath(const QString &wellName)
{
    return host().surveyDirectory() + QStringLiteral("/WellInfo/") + wellName + QStringLiteral(".wlm");
}

void HostContract::addHiddenMarker(const QString &wellName, const QString &markerName)
{
    QByteArray bytes = files::read(markerPath(wellName));
    const QByteArray number = QByteArray::number(bytes.count(".Name: ") + 1);
    bytes += number + ".Name: " + markerName.toUtf8() + '\n' + number + ".Depth along hole: 99000\n" + number
        + ".Strat Level: -1\n" + number + ".Color: 0`0`0\n";
    files::write(markerPath(wellName), bytes);
}

bool HostContract::isMarkerStored(const QString &wellName, const QString &markerName)
{
    return files::read(markerPath(wellName)).contains(".Name: " + markerName.toUtf8() + '\n');
}

bool HostContract::isSameLength(double read, double written) const
{
    const double tolerance = isInFeet() ? std::fabs(written) * 1.2e-7 : 0;
    return std::fabs(read - written) <= tolerance;
}

bool HostContract::areSameDepths(const QVector<float> &read, const QVector<float> &written) const
{
    return std::equal(read.begin(), read.end(), written.begin(), written.end(), [this](float a, float b) {
        return isSameLength(static_cast<double>(a), static_cast<double>(b));
    });
}

void HostContract::init()
{
    makeHost();
}

void HostContract::cleanup()
{
    destroyHost();
}

void HostContract::foldersHaveNoSeparatorAtTheEnd()
{
    for (const QString &folder : {host().surveyDirectory(), host().setupDataFolder(), host().documentationFolder()}) {
        QVERIFY(QFileInfo(folder).isAbsolute());
        QVERIFY(!folder.endsWith('/'));
    }
    QVERIFY(QFileInfo(host().surveyDirectory()).isDir());
    QVERIFY(QFileInfo(host().setupDataFolder() + "/icons.Default").isDir());
}

void HostContract::surveyNameIsTheFolderName()
{
    QCOMPARE(host().surveyName(), QFileInfo(host().surveyDirectory()).fileName());
    QVERIFY(!host().surveyName().isEmpty());
}

void HostContract::iconsComeByFileName()
{
    const QIcon icon = host().icon("LORVA_wlc.png");
    QVERIFY(!icon.isNull());
    QVERIFY(!icon.pixmap(16, 16).isNull());
    QVERIFY(host().icon("no such picture.png").isNull());
    QVERIFY(host().icon(QString()).isNull());
}

void HostContract::anEmptySurveyListsNothing()
{
    const auto list = wells().list();
    QVERIFY2(list.ok(), qPrintable(list.error));
    QVERIFY(list.value.isEmpty());
}

void HostContract::wellsAreSortedByName()
{
    for (const char *name : {"beta", "Zulu", "Alpha 2", "alpha 10", "Beta2", "10", "9", "_x"})
        addNamed(name);
    // By character, letter case aside: no numbers are recognised.
    QCOMPARE(listedNames(), (QStringList{"10", "9", "alpha 10", "Alpha 2", "beta", "Beta2", "Zulu", "_x"}));
}

void HostContract::wellsOfOneNameHaveTheirOwnKeys()
{
    const QString first = addNamed("Twin");
    const QString second = addNamed("Twin");
    QVERIFY(first != second);
    QCOMPARE(listedNames(), (QStringList{"Twin", "Twin"}));
    QVERIFY(wells().writeLog(second, smallLog("ONLY")).ok());
    QVERIFY(logNames(first).isEmpty());
    QCOMPARE(logNames(second), QStringList{"ONLY"});
}

void HostContract::namesOfAnyScriptComeBack()
{
    const QString arabic = QString::fromUtf8("بئر ١/٢");
    const QString chinese = QString::fromUtf8("井 %41 \U0001F600");
    const QString key = addNamed(arabic);
    QVERIFY(wells().writeLog(key, smallLog(chinese)).ok());
    QVERIFY(wells().writeMarkers(key, {{chinese, 12, Qt::red}}).ok());
    QCOMPARE(listedNames(), QStringList{arabic});
    QCOMPARE(wells().header(key).value.name, arabic);
    QCOMPARE(logNames(key), QStringList{chinese});
    QCOMPARE(markerNames(key), QStringList{chinese});
}

void HostContract::aDamagedListIsAnError()
{
    addNamed("A");
    damageList();
    const auto list = wells().list();
    QVERIFY(!list.ok());
    QVERIFY(list.value.isEmpty());
}

void HostContract::headerGivesWhatTheWellHas()
{
    host::WellHeader header;
    header.name = "Header";
    header.x = 504000.25;
    header.y = 6005000.5;
    header.kbElevation = 30.5f;
    header.groundElevation = 12.25f;
    header.totalDepth = 2000.75;
    header.typeCode = host::GasWell;
    const auto read = wells().header(addWell(header));
    QVERIFY2(read.ok(), qPrintable(read.error));
    QCOMPARE(read.value.name, header.name);
    QCOMPARE(read.value.x, header.x);
    QCOMPARE(read.value.y, header.y);
    QVERIFY(isSameLength(static_cast<double>(read.value.kbElevation), static_cast<double>(header.kbElevation)));
    QVERIFY(
        isSameLength(static_cast<double>(read.value.groundElevation), static_cast<double>(header.groundElevation)));
    QVERIFY(isSameLength(read.value.totalDepth, header.totalDepth));
    QCOMPARE(read.value.typeCode, header.typeCode);
}

void HostContract::undefinedGroundElevationStaysUndefined()
{
    host::WellHeader header;
    header.name = "A";
    header.kbElevation = 0;
    header.totalDepth = 100;
    const auto read = wells().header(addWell(header));
    QVERIFY(read.ok());
    QVERIFY(host::isUndefined(read.value.groundElevation));
    QCOMPARE(read.value.kbElevation, 0.0f);
}

void HostContract::aLogMayEndAtTheTotalDepth_data()
{
    QTest::addColumn<double>("totalDepth");
    QTest::newRow("rounded up") << 3427.33;
    QTest::newRow("rounded down") << 1640.07;
    QTest::newRow("exact") << 2000.5;
}

// Both are single precision, which is the reason to compare them so: widened, the one that was rounded up is deeper.
void HostContract::aLogMayEndAtTheTotalDepth()
{
    QFETCH(double, totalDepth);
    host::WellHeader header;
    header.name = "A";
    header.kbElevation = 0;
    header.totalDepth = totalDepth;
    const QString key = addWell(header);
    const auto end = static_cast<float>(totalDepth);
    QVERIFY(wells().writeLog(key, logOf("X", {end - 1, end}, {1, 2})).ok());
    QVERIFY(areSameDepths({static_cast<float>(wells().header(key).value.totalDepth)}, {end}));
    QVERIFY(areSameDepths({wells().log(key, 0).value.depths.last()}, {end}));
}

void HostContract::unknownKeysAreErrors_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("empty") << "";
    QTest::newRow("number") << "100050.4711";
    QTest::newRow("negative") << "100050.-1";
    QTest::newRow("folder") << "100050";
    QTest::newRow("words") << "no key at all";
    QTest::newRow("path") << "../../etc/passwd";
}

void HostContract::unknownKeysAreErrors()
{
    QFETCH(QString, key);
    const QString known = addNamed("A");
    QVERIFY(wells().writeLog(known, smallLog("GR")).ok());
    QVERIFY(!wells().header(key).ok());
    QVERIFY(!wells().logs(key).ok());
    QVERIFY(!wells().log(key, 0).ok());
    QVERIFY(!wells().markers(key).ok());
    QVERIFY(!wells().writeLog(key, smallLog("GR")).ok());
    Notes notes(host());
    QVERIFY(!wells().writeMarkers(key, {{"Top", 10, Qt::red}}).ok());
    QVERIFY(notes.lines.isEmpty());
    wells().reload(key);
    QCOMPARE(listedNames(), QStringList{"A"});
    QCOMPARE(logNames(known), QStringList{"GR"});
}

void HostContract::aNewWellHasNoLogsAndNoMarkers()
{
    const QString key = addNamed("A");
    QVERIFY(wells().logs(key).ok());
    QVERIFY(wells().logs(key).value.isEmpty());
    QVERIFY(wells().markers(key).ok());
    QVERIFY(wells().markers(key).value.isEmpty());
}

void HostContract::writtenLogsComeBackInTheirOrder()
{
    const QString key = addNamed("A");
    QVERIFY(wells().writeLog(key, logOf("RHOB", {1, 2}, {2.5f, 2.25f}, "g/cc")).ok());
    QVERIFY(wells().writeLog(key, logOf("AA", {1, 2}, {1, 2}, "")).ok());
    QVERIFY(wells().writeLog(key, logOf("GR", {1, 2}, {3, 4}, "gAPI")).ok());
    QCOMPARE(logNames(key), (QStringList{"RHOB", "AA", "GR"}));
    const auto infos = wells().logs(key).value;
    QCOMPARE(infos.at(0).unit, QString("g/cc"));
    QCOMPARE(infos.at(1).unit, QString());
    QCOMPARE(infos.at(2).unit, QString("gAPI"));
    for (int i = 0; i < 3; ++i) {
        const auto log = wells().log(key, i);
        QVERIFY(log.ok());
        QCOMPARE(log.value.name, infos.at(i).name);
        QCOMPARE(log.value.unit, infos.at(i).unit);
    }
    QCOMPARE(wells().log(key, 2).value.values, (Samples{3, 4}));
}

void HostContract::samplesComeBackToTheLastBit()
{
    const QString key = addNamed("A");
    const Samples depths{0.1f, 0.2f, 1000.1524f, 2999.9998f};
    const Samples values{-999.25f, 1e-30f, 3.4e38f, -0.1f};
    QVERIFY(wells().writeLog(key, logOf("X", depths, values)).ok());
    const host::LogData read = wells().log(key, 0).value;
    QVERIFY(areSameDepths(read.depths, depths));
    QVERIFY(read.values == values);
}

void HostContract::logsAreStoredByDepth_data()
{
    QTest::addColumn<QVector<float>>("depths");
    QTest::addColumn<QVector<float>>("values");
    QTest::addColumn<QVector<float>>("sortedDepths");
    QTest::addColumn<QVector<float>>("sortedValues");
    QTest::newRow("falling") << Samples{3, 2, 1} << Samples{30, 20, 10} << Samples{1, 2, 3} << Samples{10, 20, 30};
    // The last line of the file was cut within its first number.
    QTest::newRow("falling, with a cut end") << Samples{9618, 9617, 9616, 59} << Samples{4, 3, 2, 1}
                                             << Samples{59, 9616, 9617, 9618} << Samples{1, 2, 3, 4};
    QTest::newRow("rising, with a cut end")
        << Samples{100, 101, 102, 1} << Samples{2, 3, 4, 1} << Samples{1, 100, 101, 102} << Samples{1, 2, 3, 4};
    QTest::newRow("one depth several times") << Samples{5, 3, 3, 1, 3} << Samples{50, 31, 32, 10, 33}
                                             << Samples{1, 3, 3, 3, 5} << Samples{10, 31, 32, 33, 50};
    QTest::newRow("one depth only") << Samples{2, 2} << Samples{1, 2} << Samples{2, 2} << Samples{1, 2};
    QTest::newRow("undefined where the sorted log ends")
        << Samples{3, 1, 2} << Samples{undefined, undefined, 20} << Samples{2} << Samples{20};
}

void HostContract::logsAreStoredByDepth()
{
    QFETCH(QVector<float>, depths);
    QFETCH(QVector<float>, values);
    QFETCH(QVector<float>, sortedDepths);
    const QString key = addNamed("A");
    QVERIFY(wells().writeLog(key, logOf("X", depths, values)).ok());
    const host::LogData read = wells().log(key, 0).value;
    QVERIFY(areSameDepths(read.depths, sortedDepths));
    QTEST(read.values, "sortedValues");
}

void HostContract::undefinedSamplesStayUndefined()
{
    const QString key = addNamed("A");
    QVERIFY(wells().writeLog(key, logOf("X", {1, 2, 3, 4}, {1, undefined, undefined, 4})).ok());
    const host::LogData read = wells().log(key, 0).value;
    QVERIFY(areSameDepths(read.depths, Samples{1, 2, 3, 4}));
    QCOMPARE(read.values.size(), 4);
    QCOMPARE(read.values.at(0), 1.0f);
    QVERIFY(host::isUndefined(read.values.at(1)));
    QVERIFY(host::isUndefined(read.values.at(2)));
    QCOMPARE(read.values.at(3), 4.0f);
}

void HostContract::undefinedEndsAreLeftOut()
{
    const QString key = addNamed("A");
    QVERIFY(
        wells()
            .writeLog(
                key, logOf("X", {1, 2, 3, 4, 5, 6, 7}, {undefined, undefined, 3, undefined, 5, undefined, undefined}))
            .ok());
    const host::LogData read = wells().log(key, 0).value;
    QVERIFY(areSameDepths(read.depths, Samples{3, 4, 5}));
    QCOMPARE(read.values.at(0), 3.0f);
    QVERIFY(host::isUndefined(read.values.at(1)));
    QCOMPARE(read.values.at(2), 5.0f);
}

void HostContract::aLogOfTheSameNameIsReplacedInItsPlace()
{
    const QString key = addNamed("A");
    for (const char *name : {"GR", "DT", "RT"})
        QVERIFY(wells().writeLog(key, smallLog(name)).ok());
    QVERIFY(wells().writeLog(key, logOf("DT", {5, 6, 7}, {50, 60, 70}, "us/ft")).ok());
    QCOMPARE(logNames(key), (QStringList{"GR", "DT", "RT"}));
    const host::LogData read = wells().log(key, 1).value;
    QVERIFY(areSameDepths(read.depths, Samples{5, 6, 7}));
    QCOMPARE(read.values, (Samples{50, 60, 70}));
    QCOMPARE(read.unit, QString("us/ft"));
    QCOMPARE(wells().log(key, 0).value.values, (Samples{1, 2}));
    QCOMPARE(wells().log(key, 2).value.values, (Samples{1, 2}));
}

void HostContract::logNamesAreComparedExactly()
{
    const QString key = addNamed("A");
    for (const char *name : {"GR", "gr", "GR_1"})
        QVERIFY(wells().writeLog(key, smallLog(name)).ok());
    QCOMPARE(logNames(key), (QStringList{"GR", "gr", "GR_1"}));
}

void HostContract::aLogWithoutADefinedSampleIsRefused_data()
{
    QTest::addColumn<QVector<float>>("depths");
    QTest::addColumn<QVector<float>>("values");
    QTest::addColumn<QString>("name");
    QTest::newRow("no samples") << Samples{} << Samples{} << "GR";
    QTest::newRow("one undefined") << Samples{1} << Samples{undefined} << "GR";
    QTest::newRow("all undefined") << Samples{1, 2, 3} << Samples{undefined, undefined, undefined} << "GR";
    QTest::newRow("depths without values") << Samples{1, 2} << Samples{1} << "GR";
    QTest::newRow("no name") << Samples{1, 2} << Samples{1, 2} << "";
}

void HostContract::aLogWithoutADefinedSampleIsRefused()
{
    QFETCH(QVector<float>, depths);
    QFETCH(QVector<float>, values);
    QFETCH(QString, name);
    const QString key = addNamed("A");
    QVERIFY(wells().writeLog(key, smallLog("GR", 7)).ok());
    const host::Status status = wells().writeLog(key, logOf(name, depths, values));
    QVERIFY(!status.ok());
    QCOMPARE(logNames(key), QStringList{"GR"});
    QCOMPARE(wells().log(key, 0).value.values, (Samples{7, 8}));
}

void HostContract::aLogIndexOutsideTheListIsAnError()
{
    const QString key = addNamed("A");
    QVERIFY(!wells().log(key, 0).ok());
    QVERIFY(wells().writeLog(key, smallLog("GR")).ok());
    QVERIFY(wells().log(key, 0).ok());
    QVERIFY(!wells().log(key, 1).ok());
    QVERIFY(!wells().log(key, -1).ok());
    QVERIFY(!wells().log(key, std::numeric_limits<int>::max()).ok());
}

void HostContract::aLogWrittenIsNobodyElsesLog()
{
    const QString a = addNamed("Probe_2");
    const QString b = addNamed("Probe_2_A");
    QVERIFY(wells().writeLog(a, smallLog("GR", 1)).ok());
    QVERIFY(wells().writeLog(b, smallLog("GR", 5)).ok());
    QCOMPARE(wells().log(a, 0).value.values, (Samples{1, 2}));
    QCOMPARE(wells().log(b, 0).value.values, (Samples{5, 6}));
}

void HostContract::markersComeSortedByDepth()
{
    const QString key = addNamed("A");
    QVERIFY(wells().writeMarkers(key, {{"C", 300.5f, Qt::red}, {"B", 10, Qt::red}, {"A", 200, Qt::red}}).ok());
    QCOMPARE(markerNames(key), (QStringList{"B", "A", "C"}));
    QCOMPARE(wells().markers(key).value.at(2).depth, 300.5f);
}

void HostContract::ofTwoMarkersWithOneNameTheFirstIsKept()
{
    const QString key = addNamed("A");
    QVERIFY(wells().writeMarkers(key, {{"Top", 300, Qt::red}, {"Base", 200, Qt::red}, {"Top", 100, Qt::blue}}).ok());
    QCOMPARE(markerNames(key), (QStringList{"Base", "Top"}));
    QCOMPARE(wells().markers(key).value.at(1).depth, 300.0f);
    QCOMPARE(wells().markers(key).value.at(1).color, QColor(255, 0, 0));
}

void HostContract::writingMarkersReplacesTheWholeSet()
{
    const QString key = addNamed("A");
    QVERIFY(wells().writeMarkers(key, {{"Old", 10, Qt::red}, {"Kept", 20, Qt::red}}).ok());
    QVERIFY(wells().writeMarkers(key, {{"Kept", 25, Qt::blue}, {"New", 30, Qt::red}}).ok());
    QCOMPARE(markerNames(key), (QStringList{"Kept", "New"}));
    QCOMPARE(wells().markers(key).value.at(0).depth, 25.0f);
    QVERIFY(wells().writeMarkers(key, {}).ok());
    QVERIFY(wells().markers(key).ok());
    QVERIFY(wells().markers(key).value.isEmpty());
}

void HostContract::markerColorsComeBack()
{
    const QString key = addNamed("A");
    const QVector<QColor> colors{QColor(255, 0, 0), QColor(1, 2, 3), QColor(0, 0, 0), QColor(255, 255, 255)};
    QVector<host::Marker> markers;
    for (int i = 0; i < colors.size(); ++i)
        markers.append({QString::number(i), static_cast<float>(i), colors.at(i)});
    QVERIFY(wells().writeMarkers(key, markers).ok());
    const auto read = wells().markers(key).value;
    QCOMPARE(read.size(), colors.size());
    for (int i = 0; i < colors.size(); ++i)
        QCOMPARE(read.at(i).color, colors.at(i));
}

void HostContract::writingMarkersIsAnnouncedOnce()
{
    const QString key = addNamed("A");
    const QString other = addNamed("B");
    Notes notes(host());
    host().addListener(&notes); // a second time
    QStringList seen;
    notes.onCall = [&] { seen = markerNames(key); };
    QVERIFY(wells().writeMarkers(key, {{"Top", 10, Qt::red}}).ok());
    QCOMPARE(notes.lines, QStringList{"markers " + key});
    QCOMPARE(seen, QStringList{"Top"}); // what is announced is there already
    QVERIFY(wells().writeLog(key, smallLog("GR")).ok());
    wells().reload(key);
    QCOMPARE(notes.lines.size(), 1);
    QVERIFY(wells().writeMarkers(other, {}).ok());
    QCOMPARE(notes.lines.last(), "markers " + other);
}

void HostContract::aListenerTakenOutIsToldNothing()
{
    const QString key = addNamed("A");
    Notes notes(host());
    Notes stays(host());
    host().removeListener(&notes);
    host().removeListener(&notes);
    QVERIFY(wells().writeMarkers(key, {}).ok());
    openOtherSurvey();
    QVERIFY(notes.lines.isEmpty());
    QCOMPARE(stays.lines.size(), 2);
}

void HostContract::aListenerMayTakeOutTheNext()
{
    Notes first(host());
    auto second = std::make_unique<Notes>(host());
    Notes third(host());
    first.onCall = [&second] { second.reset(); };
    openOtherSurvey();
    QVERIFY(!second);
    QCOMPARE(first.lines.size(), 1);
    QCOMPARE(third.lines.size(), 1);
    const QString key = addNamed("A");
    auto fourth = std::make_unique<Notes>(host());
    first.onCall = [&fourth] { fourth.reset(); };
    QVERIFY(wells().writeMarkers(key, {}).ok());
    QVERIFY(!fourth);
    QCOMPARE(third.lines.size(), 2);
}

void HostContract::reloadKeepsWhatIsStored()
{
    const QString key = addNamed("A");
    QVERIFY(wells().writeLog(key, smallLog("GR")).ok());
    QVERIFY(wells().writeMarkers(key, {{"Top", 10, Qt::red}}).ok());
    wells().reload(key);
    QCOMPARE(logNames(key), QStringList{"GR"});
    QCOMPARE(wells().log(key, 0).value.values, (Samples{1, 2}));
    QCOMPARE(markerNames(key), QStringList{"Top"});
}

void HostContract::aChangeOfSurveyIsAnnouncedAfterIt()
{
    const QString before = host().surveyName();
    Notes notes(host());
    openOtherSurvey();
    QVERIFY(host().surveyName() != before);
    QCOMPARE(notes.lines, QStringList{"survey " + host().surveyName()});
}

void HostContract::wellsOfTheOldSurveyAreGone()
{
    const QString key = addNamed("A");
    host::Wells &kept = wells();
    openOtherSurvey();
    QCOMPARE(&wells(), &kept);
    QVERIFY(kept.list().ok());
    QVERIFY(kept.list().value.isEmpty());
    QVERIFY(!kept.header(key).ok());
}

void HostContract::actionsAreAppendedAndTriggered()
{
    const QStringList before = menuTexts();
    int firstClicks = 0;
    int secondClicks = 0;
    const int first = host().appendAction({"&First", "LORVA_wlc.png", [&firstClicks] { ++firstClicks; }});
    const int second = host().appendAction({"Second", "", [&secondClicks] { ++secondClicks; }});
    QVERIFY(first != second);
    QCOMPARE(menuTexts(), before + (QStringList{"&First", "Second"}));
    click("&First");
    click("&First");
    click("Second");
    QCOMPARE(firstClicks, 2);
    QCOMPARE(secondClicks, 1);
}

void HostContract::anActionIsTakenOutByItsId()
{
    const QStringList before = menuTexts();
    QVector<int> ids;
    for (const char *text : {"One", "Two", "Three"})
        ids.append(host().appendAction({text, "", [] {}}));
    host().removeAction(ids.at(0));
    host().removeAction(ids.at(0));
    host().removeAction(-1);
    host().removeAction(4711);
    QCOMPARE(menuTexts(), before + (QStringList{"Two", "Three"}));
    const int fourth = host().appendAction({"Four", "", [] {}});
    QVERIFY(!ids.contains(fourth));
    host().removeAction(ids.at(2));
    QCOMPARE(menuTexts(), before + (QStringList{"Two", "Four"}));
}

void HostContract::anActionMayTakeItselfOut()
{
    const QStringList before = menuTexts();
    int clicks = 0;
    int id = 0;
    id = host().appendAction({"Once", "", [&] {
                                  ++clicks;
                                  host().removeAction(id);
                                  ++clicks; // what it holds lives until it is through
                              }});
    click("Once");
    QCOMPARE(clicks, 2);
    QCOMPARE(menuTexts(), before);
}

void HostContract::whatWasReadIsWrittenBackToTheLastBit()
{
    const QString key = addNamed("A");
    Samples depths;
    QVector<host::Marker> markers;
    for (int i = 1; i <= 2000; ++i) {
        depths.append(1.4567f * static_cast<float>(i));
        markers.append({QString::number(i), depths.last(), Qt::red});
    }
    QVERIFY(wells().writeLog(key, logOf("X", depths, Samples(depths.size(), 1))).ok());
    QVERIFY(wells().writeMarkers(key, markers).ok());
    const host::LogData log = wells().log(key, 0).value;
    QVERIFY(areSameDepths(log.depths, depths));
    const QVector<host::Marker> read = wells().markers(key).value;
    QCOMPARE(read.size(), markers.size());
    QVERIFY(wells().writeLog(key, log).ok());
    QVERIFY(wells().writeMarkers(key, read).ok());
    QVERIFY(wells().log(key, 0).value.depths == log.depths);
    const QVector<host::Marker> again = wells().markers(key).value;
    for (int i = 0; i < read.size(); ++i) {
        QCOMPARE(read.at(i).depth, markers.at(i).depth); // as near as the digits in the host's file have it
        QVERIFY(again.at(i).depth == read.at(i).depth);
    }
}

void HostContract::hiddenMarkersAreKeptOrNamed()
{
    const QString key = addNamed("A");
    QVERIFY(wells().writeMarkers(key, {{"Top", 10, Qt::red}}).ok());
    addHiddenMarker("A", "Below");
    addHiddenMarker("A", "Too deep");
    wells().reload(key);
    QCOMPARE(markerNames(key), QStringList{"Top"});
    const auto anew = wells().markersLostByWriting(key, {{"Too deep", 5, Qt::red}, {"Below", 6, Qt::red}});
    QCOMPARE(anew.error, QString());
    QCOMPARE(anew.value, QStringList());
    const QVector<host::Marker> set{{"Top", 10, Qt::red}, {"New", 20, Qt::red}, {"Below", 30, Qt::red}};
    const auto lost = wells().markersLostByWriting(key, set);
    QCOMPARE(lost.error, QString());
    QVERIFY(wells().writeMarkers(key, set).ok());
    QCOMPARE(markerNames(key), (QStringList{"Top", "New", "Below"}));
    QCOMPARE(lost.value, isMarkerStored("A", "Too deep") ? QStringList() : QStringList{"Too deep"});
    QVERIFY(!wells().markersLostByWriting("no key", set).ok());
}
