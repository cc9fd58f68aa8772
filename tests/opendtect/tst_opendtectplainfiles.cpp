// The files that the adapter reads itself say the same to it as to the host's library, whatever stands in them.

#include "host/opendtect/odwells.h"
#include "host/opendtect/plainfiles.h"
#include "odprogram.h"
#include "odsurvey.h"
#include "support/files.h"
#include "surveycontents.h"

#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <random>
#include <sstream>

#include <od_istream.h>
#include <ptrman.h>
#include <uistring.h>
#include <welldata.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellman.h>
#include <wellmarker.h>
#include <wellodreader.h>
#include <welltrack.h>

namespace {

const QByteArray top = "dTect V6.6\n%\nFri 20 Nov 2026, 17:09:32\n!\n";

QByteArray fileOf(const char *type, const QByteArray &rest)
{
    return QByteArray(top).replace('%', type) + rest;
}

QByteArray logFile(const QByteArray &name = "GR", const QByteArray &unit = "gAPI")
{
    return fileOf("Well Log",
                  "Depth-Unit: Meter\nName: " + name + "\nMnemonic: GR\nUnit of Measure: " + unit
                      + "\nHeader info: No\nStorage type: Binary\nDah range: 400`401\nLog range: 75`119.9\n!\n")
        + QByteArray(16, '\x41');
}

QByteArray wellFile(const QByteArray &rows = "504000.25\t6005000.5\t-30.1\t0\n504000.25\t6005000.5\t470\t500.1\n"
                                             "504030\t6005040.5\t556.6025390625\t600.7\n")
{
    return fileOf("Well",
                  "Depth-Unit: Meter\nUnique Well ID: UWI-2\nOperator: Own\nState: A\nCounty: X\n"
                  "Surface coordinate: (504000.25,6005000.5)\nReplacement velocity [from KB to SRD]: 2000\n"
                  "Ground Level elevation [GL]: 13.7\n!\n")
        + rows;
}

QByteArray markerFile()
{
    QByteArray lines = "Depth-Unit: Meter\n";
    const char *names[] = {"Top A", "top b", "Base"};
    const char *depths[] = {"100.1", "250", "599.9"};
    for (int i = 0; i < 3; ++i) {
        const QByteArray number = QByteArray::number(i + 1);
        lines += number + ".Name: " + names[i] + '\n' + number + ".Depth along hole: " + depths[i] + '\n' + number
            + ".Strat Level: -1\n" + number + ".Color: 1`20`255\n";
    }
    return fileOf("Well Markers", lines);
}

QString described(float value)
{
    return QString::number(static_cast<double>(value), 'g', 12);
}

QString described(const host::LogInfo &log)
{
    return log.name + QLatin1Char('|') + log.unit;
}

QString described(const host::WellHeader &header)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(header.x, 0, 'g', 17)
        .arg(header.y, 0, 'g', 17)
        .arg(described(header.kbElevation), described(header.groundElevation))
        .arg(header.totalDepth, 0, 'g', 17)
        .arg(header.typeCode);
}

QString described(const QVector<host::Marker> &markers)
{
    QString text;
    for (const host::Marker &marker : markers)
        text += marker.name + QLatin1Char('@') + described(marker.depth) + marker.color.name() + QLatin1Char(';');
    return text;
}

/// A well of the host's that its manager does not know.
class HostWell
{
public:
    HostWell()
        : m_data(new Well::Data)
    {
    }
    ~HostWell() { Well::MGR().wells() += m_data.ptr(); } // which deletes it
    HostWell(const HostWell &) = delete;
    HostWell &operator=(const HostWell &) = delete;
    Well::Data &operator*() { return *m_data; }
    Well::Data *operator->() { return m_data.ptr(); }

private:
    RefMan<Well::Data> m_data;
};

const QString unread = QStringLiteral("not read");

// What the host's library makes of the bytes.
QString hostLog(Well::Data &well, const QByteArray &bytes)
{
    well.logs().setEmpty();
    uiString reason;
    const Well::odReader reader("none", well, reason);
    std::istringstream stream(std::string(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    od_istream input(stream);
    if (!reader.addLog(input, true) || well.logs().size() != 1)
        return unread;
    const Well::Log &log = well.logs().getLog(0);
    return described(host::LogInfo{QString::fromUtf8(log.name().buf()), QString::fromUtf8(log.unitMeasLabel())});
}

QString hostWell(const QString &path)
{
    HostWell well;
    uiString reason;
    const Well::odReader reader(path.toUtf8().constData(), *well, reason);
    if (!reader.getInfo() || !reader.getTrack())
        return unread;
    host::WellHeader header;
    header.x = well->info().surfacecoord.x;
    header.y = well->info().surfacecoord.y;
    header.kbElevation = well->track().getKbElev();
    header.groundElevation = well->info().groundelev;
    header.totalDepth = static_cast<double>(well->track().td());
    header.typeCode = well->info().welltype_;
    return described(header);
}

QString hostMarkers(const QString &wellPath)
{
    HostWell well;
    uiString reason;
    const Well::odReader reader(wellPath.toUtf8().constData(), *well, reason);
    if (!reader.getInfo() || !reader.getTrack() || !reader.getMarkers())
        return unread;
    QVector<host::Marker> markers;
    for (int i = 0; i < well->markers().size(); ++i) {
        const Well::Marker &marker = *well->markers()[i];
        const Color color = marker.color();
        markers.append(
            {QString::fromUtf8(marker.name().buf()), marker.dah(), QColor(color.r(), color.g(), color.b())});
    }
    return described(markers);
}

/// Changes files a little, or more than that, the same way in each run.
class Mutator
{
public:
    QByteArray operator()(QByteArray bytes)
    {
        for (int i = number(3); i >= 0; --i)
            bytes = mutated(bytes);
        return bytes;
    }
    int number(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

private:
    QByteArray token()
    {
        static const QByteArray tokens[] = {
            "",   "",      " ",      "\t",    ":",        "\\",           "!",   "#-NL-#", "`",  "\r\n",
            "\n", "0",     "-1",     "1e3",   "+5",       "1e30",         ".5",  "7.",     "--", "@",
            "ø",  "\xff",  "Yes",    "Ascii", "Swapped",  "nan",          "inf", "(",      ",",  "gr",
            "GR", "Top A", "12.345", "0.1",   "16777217", "3.3333333333", "é"};
        return tokens[number(static_cast<int>(std::size(tokens)))];
    }
    QByteArray withRandomNumber(const QByteArray &bytes)
    {
        QVector<int> starts;
        for (int i = 1; i < bytes.size(); ++i)
            if (bytes.at(i) >= '0' && bytes.at(i) <= '9' && !(bytes.at(i - 1) >= '0' && bytes.at(i - 1) <= '9'))
                starts.append(i);
        if (starts.isEmpty())
            return bytes;
        const int at = starts.at(number(starts.size()));
        int end = at;
        while (end < bytes.size() && bytes.at(end) >= '0' && bytes.at(end) <= '9')
            ++end;
        const int digits = 1 + number(9);
        QByteArray text = QByteArray::number(number(1000));
        if (digits > 3)
            text += '.' + QByteArray::number(static_cast<int>(m_random() % 1000000000u)).left(digits);
        return bytes.left(at) + text + bytes.mid(end);
    }
    QByteArray mutated(const QByteArray &bytes)
    {
        QList<QByteArray> lines = bytes.split('\n');
        const int at = number(bytes.size() + 1);
        const int line = number(lines.size());
        switch (number(8)) {
        case 0:
            return bytes.left(at) + token() + bytes.mid(at);
        case 1:
            return bytes.left(at) + bytes.mid(at + 1 + number(3));
        case 2:
            lines.insert(line, lines.at(number(lines.size())));
            return lines.join('\n');
        case 3:
            lines.removeAt(line);
            return lines.join('\n');
        case 4:
            lines[line] = lines.at(line).left(lines.at(line).indexOf(':') + 2) + token() + token();
            return lines.join('\n');
        case 5:
            return bytes.left(at);
        default:
            return withRandomNumber(bytes);
        }
    }

    std::mt19937 m_random{20261122};
};

} // namespace

class TestOpendTectPlainFiles : public QObject
{
    Q_OBJECT

private slots:
    void headersAsTheHostWritesThemAreReadHere_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("all keys") << logFile();
        QTest::newRow("no unit") << logFile().replace("Unit of Measure: gAPI\n", "");
        QTest::newRow("empty unit") << logFile("GR", "");
        QTest::newRow("empty mnemonic") << logFile().replace("Mnemonic: GR", "Mnemonic: ");
        QTest::newRow("no mnemonic") << logFile().replace("Mnemonic: GR\n", "");
        QTest::newRow("not in ASCII") << logFile("πορώδες", "Ω·m");
        QTest::newRow("a colon in the name") << logFile("a: b :c");
        QTest::newRow("blanks and bars") << logFile("a | b  c", "1/m²");
        QTest::newRow("quotes and markup") << logFile("<b>\"x\"</b>", "'%s'");
        QTest::newRow("a name like a mark") << logFile("!x");
        QTest::newRow("a name like a comment") << logFile("--x");
        QTest::newRow("a name like a key") << logFile("Name: GR");
        QTest::newRow("an earlier release") << logFile().replace("V6.6", "V4.6");
        QTest::newRow("no samples") << logFile().chopped(16);
    }
    void headersAsTheHostWritesThemAreReadHere()
    {
        QFETCH(QByteArray, bytes);
        HostWell well;
        const auto info = opendtect::plainLogInfo(bytes);
        QVERIFY(info);
        QCOMPARE(described(*info), hostLog(*well, bytes));
    }

    void headersOfAnotherFormAreLeftToTheHost_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("cut") << logFile().left(150);
        QTest::newRow("mark cut off") << logFile().chopped(17);
        QTest::newRow("another type") << logFile().replace("Well Log", "Well Markers");
        QTest::newRow("type in small letters") << logFile().replace("Well Log", "well log");
        QTest::newRow("another version") << logFile().replace("V6.6", "V2.4");
        QTest::newRow("a later version") << logFile().replace("V6.6", "V7.0");
        QTest::newRow("no version") << logFile().replace("V6.6", "Vx.6");
        QTest::newRow("no date") << logFile().replace("Fri 20 Nov 2026, 17:09:32\n", "");
        QTest::newRow("Windows line ends") << logFile().chopped(16).replace("\n", "\r\n");
        QTest::newRow("parameters") << logFile().replace("Header info: No", "Header info: Yes");
        QTest::newRow("samples as text") << logFile().replace("Binary", "Ascii");
        QTest::newRow("samples swapped") << logFile().replace("Binary", "Swapped");
        QTest::newRow("no range") << logFile().replace("Dah range: 400`401\n", "");
        QTest::newRow("empty range") << logFile().replace("Dah range: 400`401", "Dah range: ");
        QTest::newRow("no name") << logFile().replace("Name: GR\n", "");
        QTest::newRow("empty name") << logFile("");
        QTest::newRow("two names") << logFile("GR\nName: GR2");
        QTest::newRow("unknown key") << logFile("GR\nOwn: x");
        QTest::newRow("key in small letters") << logFile().replace("Unit of", "unit of");
        QTest::newRow("escaped") << logFile("a\\:b");
        QTest::newRow("line end in the name") << logFile("a#-NL-#b");
        QTest::newRow("tab") << logFile("a\tb");
        QTest::newRow("no UTF-8") << logFile("G\xffR");
        QTest::newRow("two blanks in front") << logFile(" GR");
        QTest::newRow("blank behind") << logFile("GR ");
        QTest::newRow("no blank in front") << logFile().replace("Name: GR", "Name:GR");
        QTest::newRow("very long") << logFile(QByteArray(10000, 'x'));
    }
    void headersOfAnotherFormAreLeftToTheHost()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!opendtect::plainLogInfo(bytes));
    }

    void wellsOfAnotherFormAreLeftToTheHost_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray row = "504000.25\t6005000.5\t-30.1\t0\n";
        QTest::newRow("no track") << wellFile("");
        QTest::newRow("one point") << wellFile(row);
        QTest::newRow("depths not ascending") << wellFile(row + row);
        QTest::newRow("the same float") << wellFile("1\t1\t0\t16777216\n1\t1\t0\t16777217\n");
        QTest::newRow("three numbers") << wellFile(row + "1\t2\t3\n");
        QTest::newRow("blanks") << wellFile(row + "1 2 3 4\n");
        QTest::newRow("exponent") << wellFile(row + "1\t2\t3\t4e2\n");
        QTest::newRow("plus") << wellFile(row + "1\t2\t3\t+4\n");
        QTest::newRow("last line cut") << wellFile(row + "1\t2\t3\t40");
        QTest::newRow("rubbish behind") << wellFile(row + "1\t2\t3\t4\nrubbish\n");
        QTest::newRow("empty line behind") << wellFile(row + "1\t2\t3\t4\n\n");
        QTest::newRow("no place") << wellFile().replace("Surface coordinate: (504000.25,6005000.5)\n", "");
        QTest::newRow("place without brackets") << wellFile().replace("(504000.25,6005000.5)", "504000.25,6005000.5");
        QTest::newRow("undefined elevation") << wellFile().replace("13.7", "1e30");
        QTest::newRow("unknown key") << wellFile().replace("State:", "Own:");
    }
    void wellsOfAnotherFormAreLeftToTheHost()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(opendtect::plainWell(wellFile()));
        QVERIFY(opendtect::plainWell(wellFile().replace("UWI-2", "").replace("Own", "")));
        QVERIFY(!opendtect::plainWell(bytes));
        const QByteArray typed = wellFile().replace("County: X", "County: X\nWell type: Oil"); // the workbench's own
        QCOMPARE(opendtect::plainWell(typed)->header.typeCode, int(host::NoWellType));
    }

    void markersOfAnotherFormAreLeftToTheHost_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("transparent") << markerFile().replace("1.Color: 1`20`255", "1.Color: 1`20`255`30");
        QTest::newRow("colour out of range") << markerFile().replace("1.Color: 1`20`255", "1.Color: 1`20`256");
        QTest::newRow("octal colour") << markerFile().replace("1.Color: 1`20`255", "1.Color: 1`020`255");
        QTest::newRow("a level") << markerFile().replace("1.Strat Level: -1", "1.Strat Level: 4");
        QTest::newRow("above the track") << markerFile().replace("100.1", "-1");
        QTest::newRow("where the track begins") << markerFile().replace("100.1", "0");
        QTest::newRow("where the track ends") << markerFile().replace("599.9", "600.7");
        QTest::newRow("below the track") << markerFile().replace("599.9", "601");
        QTest::newRow("not in order") << markerFile().replace("250", "600");
        QTest::newRow("two of a depth") << markerFile().replace("250", "100.1");
        QTest::newRow("two of a name") << markerFile().replace("top b", "top a");
        QTest::newRow("no depth") << markerFile().replace("250", "1e30");
        QTest::newRow("no name") << markerFile().replace("top b", "");
        QTest::newRow("numbers with a gap") << markerFile().replace("3.", "4.");
        QTest::newRow("mark at the end") << markerFile() + "!\n";
        QTest::newRow("a line too much") << markerFile() + "4.Name: x\n";
        QTest::newRow("last line cut") << markerFile().chopped(1);
    }
    void markersOfAnotherFormAreLeftToTheHost()
    {
        QFETCH(QByteArray, bytes);
        const auto well = opendtect::plainWell(wellFile());
        QCOMPARE(opendtect::plainMarkers(markerFile(), *well)->size(), 3);
        QVERIFY(!opendtect::plainMarkers(bytes, *well));
    }

    void theHostReadsTheSameInChangedHeadersOfLogs()
    {
        Mutator mutate;
        HostWell well;
        int read = 0;
        for (int i = 0; i < 20000; ++i) {
            const QByteArray bytes = mutate(logFile());
            const auto info = opendtect::plainLogInfo(bytes);
            if (!info)
                continue;
            ++read;
            if (described(*info) != hostLog(*well, bytes))
                QFAIL(qPrintable(QStringLiteral("%1 and %2 of %3")
                                     .arg(described(*info), hostLog(*well, bytes), QString::fromUtf8(bytes))));
        }
        QVERIFY2(read > 2000 && read < 15000, qPrintable(QString::number(read)));
    }

    void theHostReadsTheSameInChangedWells()
    {
        Mutator mutate;
        const QString path = m_folder.filePath("w.well");
        int read = 0;
        for (int i = 0; i < 8000; ++i) {
            const QByteArray bytes = mutate(wellFile());
            const auto well = opendtect::plainWell(bytes);
            if (!well)
                continue;
            ++read;
            files::write(path, bytes);
            if (described(well->header) != hostWell(path))
                QFAIL(qPrintable(QStringLiteral("%1 and %2 of %3")
                                     .arg(described(well->header), hostWell(path), QString::fromUtf8(bytes))));
        }
        QVERIFY2(read > 800 && read < 6000, qPrintable(QString::number(read)));
    }

    void theHostReadsTheSameInChangedMarkers()
    {
        Mutator mutate;
        const QString path = m_folder.filePath("m.well");
        const QString markerPath = m_folder.filePath("m.wlm");
        files::write(path, wellFile());
        const auto well = opendtect::plainWell(wellFile());
        int read = 0;
        for (int i = 0; i < 20000; ++i) {
            const QByteArray bytes = mutate(markerFile());
            const auto markers = opendtect::plainMarkers(bytes, *well);
            if (!markers)
                continue;
            ++read;
            files::write(markerPath, bytes);
            if (described(*markers) != hostMarkers(path))
                QFAIL(qPrintable(QStringLiteral("%1 and %2 of %3")
                                     .arg(described(*markers), hostMarkers(path), QString::fromUtf8(bytes))));
        }
        QVERIFY2(read > 500 && read < 15000, qPrintable(QString::number(read)));
    }

    // Files of both kinds in one well: numbering, names and the track must not depend on who reads which.
    void filesOfBothFormsStandSideBySide()
    {
        const QString survey = odsurvey::open("BothForms");
        for (const odsurvey::Well &well : surveycontents::wells())
            odsurvey::add(well);
        const QString stem = survey + "/WellInfo/15_9-F_1";
        const auto change = [&stem](const char *ending, const char *before, const char *after) {
            const QByteArray bytes = files::read(stem + ending);
            QVERIFY(bytes.contains(before));
            files::write(stem + ending, QByteArray(bytes).replace(before, after));
        };
        change("^2.wll", "Header info: No", "Header info: Yes");
        change("^2.wll", "2.65\n!\n", "2.65\n!\nOwn: 1\n!\n");
        change("^3.wll", "Name: one sample", "Name: GR"); // the host does not find a second log of a name
        change(".wlm", "1`2`3", "1`2`3`4");
        files::write(stem.chopped(8) + "Deviated.track", fileOf("Well Track", "1\t2\t-5\t0\n1\t2\t2590\t2600\n"));
        odsurvey::makeCurrent("Start");
        odsurvey::makeCurrent("BothForms");

        opendtect::OdWells wells([](const QString &) {});
        const QVector<odsurvey::Well> expected = odsurvey::readAll();
        const QVector<host::WellEntry> list = wells.list().value;
        QCOMPARE(list.size(), expected.size());
        for (int i = 0; i < list.size(); ++i) {
            const QString key = list.at(i).key;
            const auto isThis = [&](const odsurvey::Well &well) { return well.header.name == list.at(i).name; };
            odsurvey::Well well = *std::find_if(expected.begin(), expected.end(), isThis);
            QCOMPARE(described(wells.header(key).value), described(well.header));
            QCOMPARE(described(wells.markers(key).value), described(well.markers));
            const QVector<host::LogInfo> logs = wells.logs(key).value;
            QCOMPARE(logs.size(), well.logs.size());
            for (int log = 0; log < logs.size(); ++log) {
                QCOMPARE(described(logs.at(log)), described({well.logs.at(log).name, well.logs.at(log).unit}));
                QCOMPARE(wells.log(key, log).value.values, well.logs.at(log).values);
            }
        }
        QCOMPARE(wells.logs(list.first().key).value.size(), 3);
        QVERIFY(!wells.writeLog(list.first().key, {"NEW", "m", {1, 2}, {3, 4}}).ok());
    }

private:
    QTemporaryDir m_folder;
};

OD_TEST_MAIN(TestOpendTectPlainFiles)
#include "tst_opendtectplainfiles.moc"
