#include "datastore/curvegrouptable.h"

#include "base/filesystemcalls.h"
#include "support/badbytes.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/unprivileged.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

namespace {

CurveGroupTable tableOf(const QByteArray &bytes)
{
    CurveGroupTable table;
    table.merge(bytes);
    return table;
}

QByteArray reread(const QByteArray &bytes)
{
    return tableOf(bytes).toBytes();
}

ino_t inodeOf(const QString &path)
{
    struct stat info;
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_ino : 0;
}

} // namespace

class tst_curvegrouptable : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_folder->path()).mkdir("CurveGroups"));
        m_path = m_folder->filePath("CurveGroups/CurveGroupTable.txt");
    }

    void anEntryIsTwoTrimmedParts()
    {
        const CurveGroupTable table = tableOf("  GR\t | \tGamma  \nDT|Sonic\n");
        QCOMPARE(table.size(), 2);
        QCOMPARE(table.group("GR"), QString("Gamma"));
        QCOMPARE(table.group("DT"), QString("Sonic"));
    }

    void wideWhiteSpaceIsTrimmedToo()
    {
        QCOMPARE(reread(QString("\u00A0GR\u2003|\u3000Shale\u00A0Volume\u0085\n").toUtf8()),
                 QString("GR | Shale\u00A0Volume\n").toUtf8());
    }

    void namesAreComparedExactly()
    {
        const CurveGroupTable table = tableOf("GR | Gamma\ngr | Others\n");
        QCOMPARE(table.size(), 2);
        QCOMPARE(table.group("GR"), QString("Gamma"));
        QCOMPARE(table.group("gr"), QString("Others"));
        QVERIFY(table.group("Gr").isEmpty());
    }

    void threePartsGiveAnEntryOfTheFirstTwo()
    {
        QCOMPARE(reread("GR | Gamma | third | fourth\n"), QByteArray("GR | Gamma\n"));
    }

    void aLineWithoutABarIsIgnored()
    {
        QCOMPARE(reread("GR Gamma\n\n   \nDT | Sonic\n"), QByteArray("DT | Sonic\n"));
    }

    void emptyPartsCount()
    {
        const CurveGroupTable table = tableOf("GR||Gamma\n|Sonic\n");
        QCOMPARE(table.size(), 2);
        QCOMPARE(table.group("GR"), QString());
        QCOMPARE(table.group(""), QString("Sonic"));
    }

    void aLaterLineReplacesAnEarlierOne()
    {
        QCOMPARE(reread("GR | Gamma\nDT | Sonic\nGR | Others\n"), QByteArray("DT | Sonic\nGR | Others\n"));
    }

    void readingAddsToWhatIsThere()
    {
        CurveGroupTable table = tableOf("GR | Gamma\nDT | Sonic\n");
        files::write(m_path, "DT | Others\nSP | Sp\n");
        table.read(m_folder->path());
        QCOMPARE(table.toBytes(), QByteArray("DT | Others\nGR | Gamma\nSP | Sp\n"));
    }

    void aMissingOrUnreadableFileLeavesTheTable()
    {
        CurveGroupTable table = tableOf("GR | Gamma\n");
        table.read(m_folder->path());
        table.read(m_folder->filePath("no such project"));
        QVERIFY(QDir().mkdir(m_path));
        table.read(m_folder->path());
        QCOMPARE(table.toBytes(), QByteArray("GR | Gamma\n"));
    }

    void everyEntryIsOneLineInTheOrderOfTheNames()
    {
        CurveGroupTable table;
        table.set("SP", "Sp");
        table.set("GR", "Gamma");
        table.set("DT", "Sonic");
        table.set("VSH_log", "Shale Volume");
        table.write(m_folder->path());
        QCOMPARE(files::read(m_path), QByteArray("DT | Sonic\nGR | Gamma\nSP | Sp\nVSH_log | Shale Volume\n"));
    }

    void textIsUtf8()
    {
        CurveGroupTable table;
        table.set(QString("Größe \u2126"), "Gamma");
        table.write(m_folder->path());
        QCOMPARE(files::read(m_path),
                 QByteArray("Gr\xC3\xB6\xC3\x9F"
                            "e \xE2\x84\xA6 | Gamma\n"));
        CurveGroupTable again;
        again.read(m_folder->path());
        QCOMPARE(again.group(QString("Größe \u2126")), QString("Gamma"));
    }

    void aLineBreakInANameDoesNotBreakTheFile()
    {
        CurveGroupTable table;
        table.set("A\nB | Sonic\r", "Gamma");
        table.set("C", "Ga\nmma");
        QCOMPARE(table.toBytes(), QString("A B \u00A6 Sonic | Gamma\nC | Ga mma\n").toUtf8());
    }

    void everyNameReadsBackAsItIsKept()
    {
        CurveGroupTable table;
        QStringList names = badbytes::names();
        names << "G|Density"
              << "|"
              << " x "
              << "a\n"
              << QString(QChar(0xFEFF)) + "GR" << QString(QChar(0x2003)) + "y";
        for (const QString &name : qAsConst(names)) {
            table.set(name, "of " + name);
            QCOMPARE(table.group(name), table.group(textfields::fieldName(name)));
        }
        const CurveGroupTable again = tableOf(table.toBytes());
        QCOMPARE(again.size(), table.size());
        QCOMPARE(again.toBytes(), table.toBytes());
        for (const QString &name : qAsConst(names)) {
            QVERIFY(!again.group(name).isEmpty());
            QCOMPARE(again.group(name), table.group(name));
        }
    }

    void namesThatTheFileCannotTellApartAreOne()
    {
        CurveGroupTable table;
        table.set(" A|B", "Gamma");
        QCOMPARE(table.group(QString("A\u00A6B")), QString("Gamma"));
        table.set(QString("A\u00A6B\n"), "Sonic");
        QCOMPARE(table.size(), 1);
        QCOMPARE(table.group("A|B"), QString("Sonic"));
    }

    void anEmptyTableIsAnEmptyFile()
    {
        files::write(m_path, "GR | Gamma\n");
        CurveGroupTable().write(m_folder->path());
        QCOMPARE(files::read(m_path), QByteArray());
    }

    void anUnchangedFileIsNotWrittenAgain()
    {
        CurveGroupTable table = tableOf("GR | Gamma\nDT | Sonic\n");
        table.write(m_folder->path());
        const ino_t inode = inodeOf(m_path);
        FailingDisk disk;
        {
            const base::ScopedFileSystemCalls scope(disk);
            table.write(m_folder->path());
        }
        QVERIFY(disk.written.isEmpty());
        QCOMPARE(inodeOf(m_path), inode);
        files::write(m_path, "DT | Sonic\nGR | Gamma\n\n"); // the same entries, other bytes
        table.write(m_folder->path());
        QCOMPARE(files::read(m_path), QByteArray("DT | Sonic\nGR | Gamma\n"));
    }

    void theFileOfAnotherProjectIsWrittenToo()
    {
        files::write(m_path, "GR | Gamma\n");
        const QTemporaryDir other;
        QVERIFY(QDir(other.path()).mkdir("CurveGroups"));
        CurveGroupTable table;
        table.read(m_folder->path());
        table.write(other.path());
        QCOMPARE(files::read(other.filePath("CurveGroups/CurveGroupTable.txt")), QByteArray("GR | Gamma\n"));
    }

    void aFileThatVanishedBeforeReadingIsMade()
    {
        CurveGroupTable table;
        files::write(m_path, "GR | Gamma\n");
        table.read(m_folder->path());
        QVERIFY(QFile::remove(m_path));
        table.read(m_folder->path());
        table.write(m_folder->path());
        QCOMPARE(files::read(m_path), QByteArray("GR | Gamma\n"));
    }

    void theFolderIsNotMade()
    {
        QVERIFY(QDir(m_folder->path()).rmdir("CurveGroups"));
        tableOf("GR | Gamma\n").write(m_folder->path());
        QVERIFY(files::snapshot(m_folder->path()).isEmpty());
    }

    void aFailingDiskLeavesTheOldFileWhole_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &row : failingSteps)
            QTest::newRow(row.name) << int(row.step);
    }

    void aFailingDiskLeavesTheOldFileWhole()
    {
        QFETCH(int, step);
        files::write(m_path, "old | Others\n");
        FailingDisk disk(static_cast<FailingDisk::Step>(step));
        {
            const base::ScopedFileSystemCalls scope(disk);
            tableOf("GR | Gamma\n").write(m_folder->path());
        }
        QCOMPARE(files::snapshot(m_folder->path()).size(), 2);
        QCOMPARE(files::read(m_path), QByteArray("old | Others\n"));
    }

    void aReadOnlyFileOrFolderStaysAsItIs()
    {
        files::write(m_path, "old | Others\n");
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(m_folder->filePath("CurveGroups"), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(m_path, QFile::Permissions(0x4444)));
        const auto write = [this] {
            tableOf("GR | Gamma\n").write(m_folder->path());
            return 0;
        };
        QCOMPARE(testing_support::runUnprivileged(write), 0);
        QVERIFY(QFile::setPermissions(m_path, QFile::Permissions(0x6666)));
        QVERIFY(QFile::setPermissions(m_folder->filePath("CurveGroups"), QFile::Permissions(0x5555)));
        QCOMPARE(testing_support::runUnprivileged(write), 0);
        QCOMPARE(files::snapshot(m_folder->path()).size(), 2);
        QCOMPARE(files::read(m_path), QByteArray("old | Others\n"));
    }

    void anUnreadableFileLeavesTheTable()
    {
        files::write(m_path, "GR | Gamma\n");
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(m_path, QFile::Permissions()));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     CurveGroupTable table = tableOf("DT | Sonic\n");
                     table.read(m_folder->path());
                     return table.size();
                 }),
                 1);
    }

    void aFileThatCannotBeReadIsNotWrittenOver()
    {
        files::write(m_path, "GR | Gamma\n");
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(m_folder->filePath("CurveGroups"), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(m_path, QFile::Permissions(0x2222)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     const bool isWritten = tableOf("DT | Sonic\n").write(m_folder->path());
                     CurveGroupTable read = tableOf("DT | Sonic\n");
                     read.read(m_folder->path());
                     // Also when it could be read by now: its entries are not in this table.
                     return isWritten || read.write(m_folder->path()) ? 1 : 0;
                 }),
                 0);
        QVERIFY(QFile::setPermissions(m_path, QFile::Permissions(0x6666)));
        QCOMPARE(files::read(m_path), QByteArray("GR | Gamma\n"));
    }

    void aFileThatBecameReadableInBetweenIsNotWrittenOver()
    {
        QVERIFY(QDir().mkdir(m_path));
        CurveGroupTable table = tableOf("DT | Sonic\n");
        table.read(m_folder->path());
        QVERIFY(QDir().rmdir(m_path));
        files::write(m_path, "GR | Gamma\n");
        QVERIFY(!table.write(m_folder->path()));
        QCOMPARE(files::read(m_path), QByteArray("GR | Gamma\n"));
        QVERIFY(table.write(m_folder->path())); // asked once more it looks at the file
    }

    void aLinkToNothingIsNotReplaced()
    {
        QVERIFY(QFile::link("/no such file", m_path));
        QVERIFY(!tableOf("DT | Sonic\n").write(m_folder->path()));
        QCOMPARE(QFileInfo(m_path).symLinkTarget(), QString("/no such file"));
    }

    void theProcessHasOneTable()
    {
        CurveGroupTable::instance().clear();
        CurveGroupTable::instance().set("GR", "Gamma");
        files::write(m_path, "DT | Sonic\n");
        CurveGroupTable::instance().read(m_folder->path());
        QCOMPARE(CurveGroupTable::instance().toBytes(), QByteArray("DT | Sonic\nGR | Gamma\n"));
        CurveGroupTable::instance().clear();
        QCOMPARE(CurveGroupTable::instance().size(), 0);
    }

    void allLineEndsAndEncodingsAreRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("CRLF") << QByteArray("DT | Sonic\r\nGR | Gamma\r\n");
        QTest::newRow("CR") << QByteArray("DT | Sonic\rGR | Gamma\r");
        QTest::newRow("no final line feed") << QByteArray("DT | Sonic\nGR | Gamma");
        QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF"
                                                       "DT | Sonic\nGR | Gamma\n");
        QTest::newRow("byte order mark inside") << QByteArray("DT | Sonic\n\xEF\xBB\xBFGR | Gamma\n");
        QTest::newRow("UTF-16") << QByteArray("\xFF\xFE", 2)
                + QByteArray(reinterpret_cast<const char *>(u"DT | Sonic\nGR | Gamma\n"), 44);
    }

    void allLineEndsAndEncodingsAreRead()
    {
        QFETCH(QByteArray, bytes);
        QCOMPARE(reread(bytes), QByteArray("DT | Sonic\nGR | Gamma\n"));
    }

    void textThatIsNoUtf8IsReadAsWindows1252()
    {
        QCOMPARE(reread("Gr\xF6\xDF"
                        "e | Gamma\n"),
                 QString("Größe | Gamma\n").toUtf8());
    }

    void everyPrefixIsRead()
    {
        const QByteArray whole = QString("DT | Sonic\r\nGröße | Gamma | x\nno bar\n | \nSP | Sp").toUtf8();
        for (int size = 0; size <= whole.size(); ++size) {
            const QByteArray bytes = reread(whole.left(size));
            QCOMPARE(reread(bytes), bytes);
        }
        QCOMPARE(reread(QByteArray()), QByteArray());
    }

    void binaryBytesAreRead()
    {
        const QByteArray bytes = reread(badbytes::binary(1 << 20));
        QVERIFY(!bytes.isEmpty());
        QCOMPARE(reread(bytes), bytes);
    }

    void aLineOfTenThousandFieldsIsOneEntry()
    {
        QCOMPARE(reread(badbytes::manyFields("field")), QByteArray("field | field\n"));
        QCOMPARE(reread(QByteArray(10000, '|')), QByteArray(" | \n"));
    }

    void aHugeFileIsRead()
    {
        const CurveGroupTable table = tableOf(badbytes::huge("GR | Gamma\nDT | Sonic\n"));
        QCOMPARE(table.group("GR"), QString("Gamma"));
        QCOMPARE(table.group("DT"), QString("Sonic"));
    }

    void hundredThousandEntriesAreRead()
    {
        QByteArray bytes;
        for (int i = 100000; i < 200000; ++i)
            bytes += "LOG" + QByteArray::number(i) + " | Gamma\n";
        QCOMPARE(tableOf(bytes).toBytes(), bytes);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(tst_curvegrouptable)
#include "tst_curvegrouptable.moc"
