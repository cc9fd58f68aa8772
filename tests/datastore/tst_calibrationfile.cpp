#include "datastore/calibrationfile.h"

#include "base/filesystemcalls.h"
#include "base/safename.h"
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

CalibrationRecord record(const QString &well, const QString &group, const QVector<float> &depths = {},
                         const QVector<float> &values = {})
{
    CalibrationRecord result;
    result.wellName = well;
    result.groupName = group;
    result.depths = depths;
    result.values = values;
    return result;
}

QByteArray points(const QByteArray &lines)
{
    return "WellName :W\nGroupName :Gamma\n" + lines;
}

CalibrationParse parse(const QByteArray &bytes)
{
    return parseCalibration(bytes, "W", "Gamma");
}

using Floats = QVector<float>;

} // namespace

class tst_calibrationfile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_asker = {};
    }

    void theFileIsCalledAfterWellAndGroup()
    {
        QCOMPARE(calibrationPath("/p", "Well 1", "Shale Volume"),
                 QString("/p/Well 1_Shale Volume_calibrationPoints.txt"));
        QCOMPARE(calibrationPath("/p", "15/9-F-1", "Gamma"), QString("/p/15%2F9-F-1_Gamma_calibrationPoints.txt"));
    }

    // Files of an earlier version are to be found: how much of an overlong name is kept does not change.
    void overlongNamesKeepTheirFile()
    {
        const QString name = calibrationPath(QString(), QString(300, 'w'), QString(300, 'g')).mid(1);
        QCOMPARE(name.size(), 255);
        QCOMPARE(name.count('w'), 89);
        QCOMPARE(name.count('g'), 57);
    }

    void theBytesAreThese()
    {
        QCOMPARE(calibrationBytes(record("Well 1", "Gamma", {1000.5F, 1001}, {45, -0.25F})),
                 QByteArray("WellName :Well 1\nGroupName :Gamma\n1000.5|45\n1001|-0.25\n"));
        QCOMPARE(calibrationBytes(record("", "")), QByteArray("WellName :\nGroupName :\n"));
        QCOMPARE(calibrationBytes(record(QString("Brønn"), "Sp")),
                 QByteArray("WellName :Br\xC3\xB8nn\nGroupName :Sp\n"));
    }

    void numbersHaveSixSignificantDigits_data()
    {
        QTest::addColumn<float>("value");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("whole") << 1234.0F << QByteArray("1234");
        QTest::newRow("zero") << 0.0F << QByteArray("0");
        QTest::newRow("minus zero") << -0.0F << QByteArray("-0");
        QTest::newRow("rounded") << 1234.5678F << QByteArray("1234.57");
        QTest::newRow("rounded to even digits") << 0.1F << QByteArray("0.1");
        QTest::newRow("six digits") << 123456.7F << QByteArray("123457");
        QTest::newRow("seven digits") << 1234567.0F << QByteArray("1.23457e+06");
        QTest::newRow("million") << 1e6F << QByteArray("1e+06");
        QTest::newRow("just below a million") << 999999.4F << QByteArray("999999");
        QTest::newRow("rounds up to a million") << 999999.9F << QByteArray("1e+06");
        QTest::newRow("small fixed") << 0.0001F << QByteArray("0.0001");
        QTest::newRow("small exponent") << 0.00001F << QByteArray("1e-05");
        QTest::newRow("negative") << -2500.125F << QByteArray("-2500.12");
        QTest::newRow("largest") << std::numeric_limits<float>::max() << QByteArray("3.40282e+38");
        QTest::newRow("smallest") << std::numeric_limits<float>::denorm_min() << QByteArray("1.4013e-45");
    }

    void numbersHaveSixSignificantDigits()
    {
        QFETCH(float, value);
        QFETCH(QByteArray, text);
        QCOMPARE(calibrationBytes(record("W", "Gamma", {value}, {1})), points(text + "|1\n"));
        QCOMPARE(calibrationBytes(record("W", "Gamma", {1}, {value})), points("1|" + text + "\n"));
    }

    void numbersDoNotDependOnTheLocale()
    {
        const testing_support::CommaLocale locale;
        if (!locale.isInForce())
            QSKIP("No locale with a decimal comma can be made here");
        QCOMPARE(calibrationBytes(record("W", "Gamma", {1000.5F}, {0.25F})), points("1000.5|0.25\n"));
        QCOMPARE(parse(points("1000.5|0.25\n")).record.depths, Floats({1000.5F}));
        QCOMPARE(parse(points("1000,5|0,25\n")).record.depths, Floats({0}));
    }

    void whatIsNoNumberIsWrittenAsZero()
    {
        const float infinity = std::numeric_limits<float>::infinity();
        QCOMPARE(calibrationBytes(record("W", "Gamma", {std::nanf(""), infinity, 1}, {2, 3, -infinity})),
                 points("0|2\n0|3\n1|0\n"));
    }

    void aLineBreakInANameDoesNotBreakTheHeadings()
    {
        const CalibrationRecord written = record("A\nB|C ", "Gam\rma|1", {1}, {2});
        QCOMPARE(calibrationBytes(written), QByteArray("WellName :A B|C \nGroupName :Gam ma|1\n1|2\n"));
        QVERIFY(write(written));
        QCOMPARE(readCalibration(m_folder->path(), "A\nB|C ", "Gam\rma|1", m_asker).depths, Floats({1}));
        QVERIFY(m_asker.boxes.isEmpty());
    }

    void unequalListsGiveTheCommonPoints()
    {
        QCOMPARE(calibrationBytes(record("W", "Gamma", {1, 2, 3}, {4})), points("1|4\n"));
        QCOMPARE(calibrationBytes(record("W", "Gamma", {1}, {4, 5})), points("1|4\n"));
    }

    void aNewFileIsWrittenWithoutAQuestion()
    {
        QVERIFY(write(record("W", "Gamma", {1}, {2})));
        QCOMPARE(files::read(path()), points("1|2\n"));
        QVERIFY(m_asker.boxes.isEmpty());
    }

    void everyGroupOfAWellHasAFile()
    {
        QVERIFY(write(record("W", "Gamma", {1}, {2})));
        QVERIFY(write(record("W", "Shale Volume", {3}, {4})));
        QCOMPARE(files::snapshot(m_folder->path()).keys(),
                 QStringList({"W_Gamma_calibrationPoints.txt", "W_Shale Volume_calibrationPoints.txt"}));
        QCOMPARE(readCalibration(m_folder->path(), "W", "Gamma", m_asker).depths, Floats({1}));
        QCOMPARE(readCalibration(m_folder->path(), "W", "Shale Volume", m_asker).depths, Floats({3}));
        QVERIFY(m_asker.boxes.isEmpty());
    }

    void anExistingFileIsReplacedAfterYes()
    {
        files::write(path(), "old");
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(write(record("W", "Gamma", {1}, {2})));
        QCOMPARE(files::read(path()), points("1|2\n"));
        expectOnlyTheQuestion();
    }

    void anExistingFileStaysAfterNo()
    {
        files::write(path(), "old");
        m_asker.answers = {base::BoxButton::No};
        QVERIFY(!write(record("W", "Gamma", {1}, {2})));
        QCOMPARE(files::read(path()), QByteArray("old"));
        expectOnlyTheQuestion();
    }

    void aClosedQuestionIsNoYes()
    {
        files::write(path(), "old");
        m_asker.answers = {base::BoxButton::Ok};
        QVERIFY(!write(record("W", "Gamma", {1}, {2})));
        QCOMPARE(files::read(path()), QByteArray("old"));
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
        QVERIFY(!write(record("W", "Gamma", {1}, {2})));
        QVERIFY(files::snapshot(m_folder->path()).isEmpty());
        QCOMPARE(m_asker.boxes.size(), 1);
        expectCannotCreate(m_asker.boxes.at(0));

        m_asker = {};
        files::write(path(), "old");
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(!write(record("W", "Gamma", {1}, {2})));
        QCOMPARE(files::snapshot(m_folder->path()).size(), 1);
        QCOMPARE(files::read(path()), QByteArray("old"));
        QCOMPARE(m_asker.boxes.size(), 2);
        expectCannotCreate(m_asker.boxes.at(1));
    }

    void aFolderInPlaceOfTheFileIsTold()
    {
        QVERIFY(QDir().mkdir(path()));
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(!write(record("W", "Gamma", {1}, {2})));
        QCOMPARE(m_asker.boxes.size(), 2);
        expectCannotCreate(m_asker.boxes.at(1));
    }

    void aMissingProjectFolderIsToldAndNotMade()
    {
        QVERIFY(!writeCalibration(m_folder->filePath("gone"), record("W", "Gamma"), m_asker));
        QCOMPARE(m_asker.boxes.size(), 1);
        expectCannotCreate(m_asker.boxes.at(0));
        QVERIFY(files::snapshot(m_folder->path()).isEmpty());
    }

    void aReadOnlyFolderIsTold()
    {
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     const bool isWritten = write(record("W", "Gamma", {1}, {2}));
                     const bool isTold = m_asker.boxes.size() == 1
                         && m_asker.boxes.at(0).text
                             == "Unable to create file please check file read/write permission.";
                     return !isWritten && isTold ? 0 : 1;
                 }),
                 0);
        QVERIFY(files::snapshot(m_folder->path()).isEmpty());
    }

    void aWriteProtectedFileStaysAlsoAfterYes()
    {
        files::write(path(), "old");
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions(0x4444)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     m_asker.answers = {base::BoxButton::Yes};
                     const bool isWritten = write(record("W", "Gamma", {1}, {2}));
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
                     const bool isWritten = write(record("W", "Gamma", {1}, {2}));
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
        files::write(elsewhere.filePath("target"), points("7|8\n"));
        QVERIFY(QFile::link(elsewhere.filePath("target"), path()));
        QCOMPARE(readCalibration(m_folder->path(), "W", "Gamma", m_asker).depths, Floats({7}));
        m_asker.answers = {base::BoxButton::Yes};
        QVERIFY(write(record("W", "Gamma", {1}, {2})));
        QVERIFY(!QFileInfo(path()).isSymLink());
        QCOMPARE(files::read(elsewhere.filePath("target")), points("7|8\n"));
        QCOMPARE(readCalibration(m_folder->path(), "W", "Gamma", m_asker).depths, Floats({1}));
    }

    void aFileThatMayNotBeReadIsTold()
    {
        files::write(path(), points("7|8\n"));
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions()));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     const bool isEmpty = readCalibration(m_folder->path(), "W", "Gamma", m_asker).depths.isEmpty();
                     const bool isTold =
                         m_asker.boxes.size() == 1 && m_asker.boxes.at(0).title == "Well Calibration Data Reader";
                     return isEmpty && isTold ? 0 : 1;
                 }),
                 0);
    }

    void whatWasWrittenReadsBack()
    {
        const CalibrationRecord written = record("Well: the 1st", "Gamma", {1000.5F, -3, 1e6F}, {0, 0.125F, -1e-5F});
        QVERIFY(write(written));
        const CalibrationRecord read = readCalibration(m_folder->path(), "Well: the 1st", "Gamma", m_asker);
        QCOMPARE(read.wellName, written.wellName);
        QCOMPARE(read.groupName, written.groupName);
        QCOMPARE(read.depths, written.depths);
        QCOMPARE(read.values, written.values);
        QCOMPARE(calibrationBytes(read), calibrationBytes(written));
        QVERIFY(m_asker.boxes.isEmpty());
    }

    void aMissingFileIsAnEmptyRecordWithoutABox()
    {
        const CalibrationRecord read = readCalibration(m_folder->path(), "W", "Gamma", m_asker);
        QCOMPARE(read.wellName, QString("W"));
        QCOMPARE(read.groupName, QString("Gamma"));
        QVERIFY(read.depths.isEmpty() && read.values.isEmpty());
        QVERIFY(m_asker.boxes.isEmpty());
    }

    void aHeadingWithoutAColonIsTold_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("first line") << QByteArray("WellName W\nGroupName :Gamma\n1|2\n");
        QTest::newRow("second line") << QByteArray("WellName :W\nGroupName Gamma\n1|2\n");
        QTest::newRow("second line of another well") << QByteArray("WellName :V\nGroupName Gamma\n1|2\n");
        QTest::newRow("both") << QByteArray("1|2\n3|4\n");
        QTest::newRow("only one line") << QByteArray("WellName :W\n");
        QTest::newRow("binary") << QByteArray(1000, '\xFF');
    }

    void aHeadingWithoutAColonIsTold()
    {
        QFETCH(QByteArray, bytes);
        files::write(path(), bytes);
        const CalibrationRecord read = readCalibration(m_folder->path(), "W", "Gamma", m_asker);
        QVERIFY(read.depths.isEmpty() && read.values.isEmpty());
        QCOMPARE(m_asker.boxes.size(), 1);
        expectCannotRead(m_asker.boxes.at(0));
        QCOMPARE(files::read(path()), bytes);
    }

    void aFileThatCannotBeOpenedIsTold()
    {
        QVERIFY(QDir().mkdir(path()));
        QVERIFY(readCalibration(m_folder->path(), "W", "Gamma", m_asker).depths.isEmpty());
        QCOMPARE(m_asker.boxes.size(), 1);
        expectCannotRead(m_asker.boxes.at(0));
    }

    void otherNamesGiveNoPointsAndNoBox_data()
    {
        QTest::addColumn<QByteArray>("heading");
        QTest::newRow("well") << QByteArray("WellName :V\nGroupName :Gamma\n");
        QTest::newRow("group") << QByteArray("WellName :W\nGroupName :Sonic\n");
        QTest::newRow("letter case") << QByteArray("WellName :w\nGroupName :Gamma\n");
        QTest::newRow("blank behind the colon") << QByteArray("WellName : W\nGroupName :Gamma\n");
        QTest::newRow("blank at the end") << QByteArray("WellName :W \nGroupName :Gamma\n");
        QTest::newRow("longer") << QByteArray("WellName :W:1\nGroupName :Gamma\n");
        QTest::newRow("nothing") << QByteArray("WellName :\nGroupName :\n");
    }

    void otherNamesGiveNoPointsAndNoBox()
    {
        QFETCH(QByteArray, heading);
        files::write(path(), heading + "1|2\n");
        QVERIFY(readCalibration(m_folder->path(), "W", "Gamma", m_asker).depths.isEmpty());
        QVERIFY(m_asker.boxes.isEmpty());
    }

    void onlyWhatFollowsTheColonCounts()
    {
        QCOMPARE(parse("Well:W\nanything at all :Gamma\n1|2\n").record.depths, Floats({1}));
    }

    void pointsAreReadLineByLine()
    {
        const CalibrationRecord read = parse(points("  1000.5 | 45 \n\n||2||3||4\n+7|-8e1\nx|y\n5\n|\n9|")).record;
        QCOMPARE(read.depths, Floats({1000.5F, 2, 7, 0}));
        QCOMPARE(read.values, Floats({45, 3, -80, 0}));
    }

    void whatNoFloatHoldsIsZero()
    {
        const CalibrationRecord read =
            parse(points("nan|inf\n1e39|-1e39\n1e400|1e-400\n0x10|1,5\n1e38|1e-46\n")).record;
        QCOMPARE(read.depths, Floats({0, 0, 0, 0, 1e38F}));
        QCOMPARE(read.values, Floats({0, 0, 0, 0, 0}));
    }

    void allLineEndsAndEncodingsAreRead()
    {
        const QByteArray bytes = points("1|2\n3|4\n");
        QByteArray crlf = bytes;
        crlf.replace("\n", "\r\n");
        QByteArray cr = bytes;
        cr.replace('\n', '\r');
        for (const QByteArray &variant : {bytes, crlf, cr, bytes.left(bytes.size() - 1), "\xEF\xBB\xBF" + bytes}) {
            QCOMPARE(parse(variant).record.depths, Floats({1, 3}));
            QCOMPARE(parse(variant).record.values, Floats({2, 4}));
        }
        QCOMPARE(parseCalibration("WellName :Br\xF8nn\nGroupName :Sp\n1|2\n", QString("Brønn"), "Sp").record.depths,
                 Floats({1}));
    }

    void everyPrefixIsRead()
    {
        const QByteArray whole = points("1000.5|45\n1001|46.5\n");
        const int headings = points("").size();
        for (int size = 0; size <= whole.size(); ++size) {
            const CalibrationParse read = parse(whole.left(size));
            QCOMPARE(read.record.depths.size(), read.record.values.size());
            QCOMPARE(read.isMalformed, size < headings - 6); // until the second colon is there
            QVERIFY(read.record.depths.isEmpty() || size > headings);
        }
    }

    void badBytesAreRead()
    {
        QVERIFY(parse(badbytes::binary(1 << 20)).record.depths.isEmpty());
        const CalibrationRecord read = parse(points(badbytes::binary(1 << 20))).record;
        QCOMPARE(read.depths.size(), read.values.size());
        for (float value : read.depths + read.values)
            QVERIFY(std::isfinite(value));
        QCOMPARE(parse(points(badbytes::manyFields("7"))).record.depths, Floats({7}));
        QVERIFY(parse(points(QByteArray(10000, '|'))).record.depths.isEmpty());
    }

    void aHugeFileIsRead()
    {
        const CalibrationRecord read = parse(badbytes::huge(points("1|2\n"))).record;
        QCOMPARE(read.depths.size(), 1 + 4);
        QCOMPARE(read.depths.first(), 1.0F);
    }

    void hundredThousandPointsAreRead()
    {
        QCOMPARE(parse(points(QByteArray("1|2\n").repeated(100000))).record.depths.size(), 100000);
    }

    void hostileNamesStayInTheFolder()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("project"));
        const QString project = m_folder->filePath("project");
        int count = 0;
        for (const QString &well : badbytes::names()) {
            for (const QString &group : {QString("Gamma"), QString("../x"), QString(300, 'g')}) {
                QVERIFY(writeCalibration(project, record(well, group, {1}, {2}), m_asker));
                QCOMPARE(readCalibration(project, well, group, m_asker).depths, Floats({1}));
                QCOMPARE(QDir(project).entryList(QDir::Files | QDir::Hidden).size(), ++count);
            }
        }
        QVERIFY(m_asker.boxes.isEmpty());
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList("project"));
    }

private:
    QString path() const { return calibrationPath(m_folder->path(), "W", "Gamma"); }
    bool write(const CalibrationRecord &points) { return writeCalibration(m_folder->path(), points, m_asker); }

    void expectOnlyTheQuestion()
    {
        QCOMPARE(m_asker.boxes.size(), 1);
        const base::Box &box = m_asker.boxes.at(0);
        QCOMPARE(box.icon, base::BoxIcon::Question);
        QCOMPARE(box.title, QString("Well Calibration Data Write"));
        QCOMPARE(box.text,
                 QString("Well Calibration data for this well is already exists.\nWould you like to update it?"));
        QVERIFY(box.buttons == QVector<base::BoxButton>({base::BoxButton::Yes, base::BoxButton::No}));
    }

    static void expectWarning(const base::Box &box, const QString &title, const QString &text)
    {
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, title);
        QCOMPARE(box.text, text);
        QVERIFY(box.buttons == QVector<base::BoxButton>({base::BoxButton::Ok}));
    }

    static void expectCannotCreate(const base::Box &box)
    {
        expectWarning(box, "Well Calibration Data Write",
                      "Unable to create file please check file read/write permission.");
    }

    static void expectCannotRead(const base::Box &box)
    {
        expectWarning(box, "Well Calibration Data Reader",
                      "Unable to read file please check file read/write permission.");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    ScriptedAsker m_asker;
};

QTEST_GUILESS_MAIN(tst_calibrationfile)
#include "tst_calibrationfile.moc"
