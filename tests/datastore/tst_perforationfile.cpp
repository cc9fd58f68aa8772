#include "datastore/perforationfile.h"

#include "base/filesystemcalls.h"
#include "datastore/curvegroups.h"
#include "support/badbytes.h"
#include "support/commalocale.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/unprivileged.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

PerforationRecord record(const QString &well, const QStringList &names = {}, const QVector<float> &tops = {},
                         const QVector<float> &bottoms = {}, const QStringList &types = {})
{
    PerforationRecord result;
    result.wellName = well;
    result.zoneCount = names.size();
    result.names = names;
    result.tops = tops;
    result.bottoms = bottoms;
    result.zoneTypes = types;
    return result;
}

PerforationRecord oneZone(const QString &name, float top = 1, const QString &type = "Oil")
{
    return record("W", {name}, {top}, {2}, {type});
}

PerforationRecord parse(const QByteArray &bytes)
{
    return parsePerforation(bytes, "W");
}

using Floats = QVector<float>;

} // namespace

class tst_perforationfile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_asker = {};
    }

    void theFileIsCalledAfterTheWell()
    {
        QCOMPARE(perforationPath("/p", "Well 1"), QString("/p/Well 1_perforationZone.txt"));
        QCOMPARE(perforationPath("/p", "15/9-F-1"), QString("/p/15%2F9-F-1_perforationZone.txt"));
    }

    void theBytesAreThese()
    {
        QCOMPARE(perforationBytes(record("W", {"Upper", QString("Nedre sonе")}, {1000, 1234567},
                                         {1010.123F, 0.00001F}, {"Oil", "Not Tested"})),
                 QString("2\nUpper|1000|1010.12|Oil\nNedre sonе|1.23457e+06|1e-05|Not Tested\n").toUtf8());
        QCOMPARE(perforationBytes(record("W")), QByteArray("0\n"));
    }

    void theCountIsThatOfTheLines()
    {
        PerforationRecord zones = record("W", {"A", "B", "C"}, {1, 2}, {3, 4, 5}, {"Oil", "Gas", "Dry"});
        zones.zoneCount = 7;
        QCOMPARE(perforationBytes(zones), QByteArray("2\nA|1|3|Oil\nB|2|4|Gas\n"));
    }

    void numbersDoNotDependOnTheLocale()
    {
        const testing_support::CommaLocale locale;
        if (!locale.isInForce())
            QSKIP("No locale with a decimal comma can be made here");
        QCOMPARE(perforationBytes(oneZone("A", 1000.5F)), QByteArray("1\nA|1000.5|2|Oil\n"));
        QCOMPARE(parse("1\nA|1000.5|2|Oil\n").tops, Floats({1000.5F}));
    }

    void aNewFileIsWrittenWithoutAQuestion()
    {
        QVERIFY(write(oneZone("A")));
        QCOMPARE(files::read(path()), QByteArray("1\nA|1|2|Oil\n"));
        QVERIFY(m_asker.boxes.isEmpty());
    }

    void anExistingFileIsReplacedAfterYes()
    {
        files::write(path(), "old");
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(write(oneZone("A")));
        QCOMPARE(files::read(path()), QByteArray("1\nA|1|2|Oil\n"));
        expectOnlyTheQuestion();
    }

    void anExistingFileStaysAfterNo()
    {
        files::write(path(), "old");
        m_asker.answers = {base::BoxButton::No};
        QVERIFY(!write(oneZone("A")));
        QCOMPARE(files::read(path()), QByteArray("old"));
        expectOnlyTheQuestion();
    }

    void aFailingDiskIsToldAndTheOldFileStays_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &row : failingSteps)
            QTest::newRow(row.name) << int(row.step);
    }

    void aFailingDiskIsToldAndTheOldFileStays()
    {
        QFETCH(int, step);
        FailingDisk disk(static_cast<FailingDisk::Step>(step));
        const base::ScopedFileSystemCalls scope(disk);
        QVERIFY(!write(oneZone("A")));
        QVERIFY(files::snapshot(m_folder->path()).isEmpty());
        QCOMPARE(m_asker.boxes.size(), 1);
        expectCannotCreate(m_asker.boxes.at(0));

        m_asker = {};
        files::write(path(), "old");
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(!write(oneZone("A")));
        QCOMPARE(files::snapshot(m_folder->path()).size(), 1);
        QCOMPARE(files::read(path()), QByteArray("old"));
        QCOMPARE(m_asker.boxes.size(), 2);
        expectCannotCreate(m_asker.boxes.at(1));
    }

    void aFolderInPlaceOfTheFileIsTold()
    {
        QVERIFY(QDir().mkdir(path()));
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(!write(oneZone("A")));
        QCOMPARE(m_asker.boxes.size(), 2);
        expectCannotCreate(m_asker.boxes.at(1));
        QVERIFY(readPerforation(m_folder->path(), "W").names.isEmpty());
        QCOMPARE(m_asker.boxes.size(), 2);
    }

    void aReadOnlyFolderIsTold()
    {
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555)));
        QCOMPARE(
            testing_support::runUnprivileged([this] { return write(oneZone("A")) ? 100 : m_asker.boxes.size(); }), 1);
        QVERIFY(files::snapshot(m_folder->path()).isEmpty());
    }

    void aWriteProtectedFileStaysAlsoAfterYes()
    {
        files::write(path(), "old");
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions(0x4444)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     m_asker.answers = {base::BoxButton::Yes};
                     const bool isWritten = write(oneZone("A"));
                     return isWritten ? 100 : m_asker.boxes.size();
                 }),
                 2);
        QCOMPARE(files::read(path()), QByteArray("old"));
        QCOMPARE(files::snapshot(m_folder->path()).size(), 1);
    }

    void aFileInAReadOnlyFolderStaysAlsoAfterYes()
    {
        files::write(path(), "old");
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions(0x6666)));
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     m_asker.answers = {base::BoxButton::Yes};
                     const bool isWritten = write(oneZone("A"));
                     const bool isTold = m_asker.boxes.size() == 2
                         && m_asker.boxes.at(1).text
                             == "Unable to create file please check file read/write permission.";
                     return !isWritten && isTold ? 0 : 1;
                 }),
                 0);
        QCOMPARE(files::read(path()), QByteArray("old"));
    }

    void aLinkIsReplacedAndItsTargetStays()
    {
        const QTemporaryDir elsewhere;
        files::write(elsewhere.filePath("target"), QByteArray("1\nT|1|2|Gas\n"));
        QVERIFY(QFile::link(elsewhere.filePath("target"), path()));
        QCOMPARE(readPerforation(m_folder->path(), "W").names, QStringList("T"));
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(write(oneZone("A")));
        QVERIFY(!QFileInfo(path()).isSymLink());
        QCOMPARE(files::read(elsewhere.filePath("target")), QByteArray("1\nT|1|2|Gas\n"));
        QCOMPARE(readPerforation(m_folder->path(), "W").names, QStringList("A"));
    }

    void aFileThatMayNotBeReadIsEmptyWithoutABox()
    {
        files::write(path(), "1\nA|1|2|Oil\n");
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions()));
        QCOMPARE(testing_support::runUnprivileged(
                     [this] { return readPerforation(m_folder->path(), "W").names.size() + m_asker.boxes.size(); }),
                 0);
    }

    void whatWasWrittenReadsBack_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"Zone A", "", "Größe: 5", "-1", "zone,with;signs", "%7C"})
            QTest::newRow(name) << QString(name);
    }

    void whatWasWrittenReadsBack()
    {
        QFETCH(QString, name);
        const PerforationRecord zones = record("W", {"first", name, name, "last"}, {1, 1000.5F, 0, -5},
                                               {2, 1e6F, 0.125F, -4}, {"Oil", "Gas-Water", "", "own type"});
        QVERIFY(write(zones));
        const PerforationRecord read = readPerforation(m_folder->path(), "W");
        QCOMPARE(read.wellName, QString("W"));
        QCOMPARE(read.zoneCount, 4);
        QCOMPARE(read.names, zones.names);
        QCOMPARE(read.tops, zones.tops);
        QCOMPARE(read.bottoms, zones.bottoms);
        QCOMPARE(read.zoneTypes, zones.zoneTypes);
        QCOMPARE(perforationBytes(read), files::read(path()));
    }

    void everyZoneTypeReadsBack()
    {
        for (const QString &type : zoneTypeNames())
            QCOMPARE(parse(perforationBytes(oneZone("A", 1, type))).zoneTypes, QStringList(type));
    }

    void namesThatWouldBreakTheLineAreChanged()
    {
        QCOMPARE(perforationBytes(oneZone("A|B\nC\rD", 1, "x|y")),
                 QString("1\nA\u00A6B C D|1|2|x\u00A6y\n").toUtf8());
        QCOMPARE(parse(perforationBytes(oneZone("A|B"))).names, QStringList(QString("A\u00A6B")));
    }

    void namesAreWrittenTrimmed()
    {
        QCOMPARE(perforationBytes(oneZone(" A ", 1, "\tOil\n")), QByteArray("1\nA|1|2|Oil\n"));
        for (const QString &name : badbytes::names() + QStringList({"|", " x|y\n"})) {
            const QByteArray bytes = perforationBytes(oneZone(name, 1, name));
            const PerforationRecord read = parse(bytes);
            QCOMPARE(read.names.size(), 1);
            QCOMPARE(read.names, read.zoneTypes);
            QCOMPARE(perforationBytes(read), bytes);
        }
    }

    void whatIsNoNumberIsWrittenAsZero()
    {
        QCOMPARE(
            perforationBytes(record("W", {"A"}, {std::nanf("")}, {std::numeric_limits<float>::infinity()}, {"Oil"})),
            QByteArray("1\nA|0|0|Oil\n"));
    }

    void aMissingFileIsAnEmptyRecord()
    {
        const PerforationRecord read = readPerforation(m_folder->path(), "W");
        QCOMPARE(read.wellName, QString("W"));
        QCOMPARE(read.zoneCount, 0);
        QVERIFY(read.names.isEmpty());
    }

    void aCountBelowOneIsAnEmptyRecord_data()
    {
        QTest::addColumn<QByteArray>("count");
        for (const char *count : {"0", "-1", "", "one", "1.5", "1 zone", "99999999999", "0x1"})
            QTest::newRow(count) << QByteArray(count);
    }

    void aCountBelowOneIsAnEmptyRecord()
    {
        QFETCH(QByteArray, count);
        const PerforationRecord read = parse(count + "\nA|1|2|Oil\n");
        QCOMPARE(read.zoneCount, 0);
        QVERIFY(read.names.isEmpty() && read.tops.isEmpty() && read.bottoms.isEmpty() && read.zoneTypes.isEmpty());
    }

    void linesBeyondTheCountAreReadToo()
    {
        const PerforationRecord read = parse(" 1 \nA|1|2|Oil\nB|3|4|Gas\n");
        QCOMPARE(read.names, QStringList({"A", "B"}));
        QCOMPARE(read.zoneCount, 2);
    }

    void fewerLinesThanTheCountAreWhatThereIs()
    {
        QCOMPARE(parse("1000000000\nA|1|2|Oil\n").zoneCount, 1);
        QCOMPARE(parse("5\n").zoneCount, 0);
    }

    void onlyLinesOfFourPartsAreRead()
    {
        const PerforationRecord read =
            parse("9\nA|1|2\nB|1|2|Oil|x\nC|1\n\nD\n  E|1|2|Oil  \n|F||3|4||Gas|\nG||4|Oil\n"
                  "||||\n||1|2\n|1|two|Oil\n");
        QCOMPARE(read.names, QStringList({"E", "F"}));
        QCOMPARE(read.tops, Floats({1, 3}));
        QCOMPARE(read.bottoms, Floats({2, 4}));
        QCOMPARE(read.zoneTypes, QStringList({"Oil", "Gas"}));
    }

    void everyPartIsTrimmed()
    {
        const PerforationRecord read = parse("1\n \tUpper zone \t| 10.5 | +20 | Oil-Gas \n");
        QCOMPARE(read.names, QStringList("Upper zone"));
        QCOMPARE(read.tops, Floats({10.5F}));
        QCOMPARE(read.bottoms, Floats({20}));
        QCOMPARE(read.zoneTypes, QStringList("Oil-Gas"));
    }

    void textThatIsNoNumberIsZero()
    {
        const PerforationRecord read = parse("3\nA|x|1,5|Oil\nB|nan|inf|Oil\nC|1e39|1e400|Oil\n");
        QCOMPARE(read.tops, Floats({0, 0, 0}));
        QCOMPARE(read.bottoms, Floats({0, 0, 0}));
    }

    void anUnknownTypeIsKept() { QCOMPARE(parse("1\nA|1|2|Helium\n").zoneTypes, QStringList("Helium")); }

    void allLineEndsAndEncodingsAreRead()
    {
        for (const QByteArray &bytes :
             {QByteArray("2\r\nA|1|2|Oil\r\nB|3|4|Gas\r\n"), QByteArray("2\rA|1|2|Oil\rB|3|4|Gas\r"),
              QByteArray("2\nA|1|2|Oil\nB|3|4|Gas"),
              QByteArray("\xEF\xBB\xBF"
                         "2\nA|1|2|Oil\nB|3|4|Gas\n")})
            QCOMPARE(parse(bytes).names, QStringList({"A", "B"}));
        QCOMPARE(parse("1\nGr\xF6\xDF"
                       "e|1|2|Oil\n")
                     .names,
                 QStringList(QString("Größe")));
        QCOMPARE(parse(QString("1\n\u2003A\u00A0|1|2|Oil\n").toUtf8()).names, QStringList("A"));
    }

    void everyPrefixIsRead()
    {
        const QByteArray whole = QString("2\r\nGröße|1|2|Oil\nB|3|4|Gas\n").toUtf8();
        for (int size = 0; size <= whole.size(); ++size) {
            const PerforationRecord read = parse(whole.left(size));
            QCOMPARE(read.names.size(), read.zoneCount);
            QCOMPARE(read.tops.size(), read.zoneCount);
            QCOMPARE(read.bottoms.size(), read.zoneCount);
            QCOMPARE(read.zoneTypes.size(), read.zoneCount);
        }
        QCOMPARE(parse(whole).zoneCount, 2);
    }

    void badBytesAreRead()
    {
        QCOMPARE(parse(badbytes::binary(1 << 20)).zoneCount, 0);
        const PerforationRecord read = parse("5\n" + badbytes::binary(1 << 20));
        for (float value : read.tops + read.bottoms)
            QVERIFY(std::isfinite(value));
        QCOMPARE(parse("5\n" + badbytes::manyFields("7")).zoneCount, 0);
        QCOMPARE(parse("5\n" + QByteArray(10000, '|')).zoneCount, 0);
    }

    void aHugeFileIsRead() { QCOMPARE(parse(badbytes::huge("1\nA|1|2|Oil\n")).names, QStringList("A")); }

    void hundredThousandZonesAreRead()
    {
        QCOMPARE(parse("1\n" + QByteArray("A|1|2|Oil\n").repeated(100000)).zoneCount, 100000);
    }

    void hostileNamesStayInTheFolder()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("project"));
        const QString project = m_folder->filePath("project");
        int count = 0;
        for (const QString &well : badbytes::names()) {
            QVERIFY(writePerforation(project, record(well, {"A"}, {1}, {2}, {"Oil"}), m_asker));
            QCOMPARE(readPerforation(project, well).names, QStringList("A"));
            QCOMPARE(QDir(project).entryList(QDir::Files | QDir::Hidden).size(), ++count);
        }
        QVERIFY(m_asker.boxes.isEmpty());
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList("project"));
    }

private:
    QString path() const { return perforationPath(m_folder->path(), "W"); }
    bool write(const PerforationRecord &zones) { return writePerforation(m_folder->path(), zones, m_asker); }

    void expectOnlyTheQuestion()
    {
        QCOMPARE(m_asker.boxes.size(), 1);
        const base::Box &box = m_asker.boxes.at(0);
        QCOMPARE(box.icon, base::BoxIcon::Question);
        QCOMPARE(box.title, QString("Well Perforation Data Write"));
        QCOMPARE(box.text,
                 QString("Well Perforation data for this well is already exists.\nWould you like to update it?"));
        QVERIFY(box.buttons == QVector<base::BoxButton>({base::BoxButton::Yes, base::BoxButton::No}));
    }

    static void expectCannotCreate(const base::Box &box)
    {
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, QString("Well Perforation Data Write"));
        QCOMPARE(box.text, QString("Unable to create file please check file read/write permission."));
        QVERIFY(box.buttons == QVector<base::BoxButton>({base::BoxButton::Ok}));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    ScriptedAsker m_asker;
};

QTEST_GUILESS_MAIN(tst_perforationfile)
#include "tst_perforationfile.moc"
