#include "datastore/groupfiles.h"

#include "base/filesystemcalls.h"
#include "support/badbytes.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/unprivileged.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class tst_groupfiles : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_folder->path()).mkdir("CurveGroups"));
    }

    void everyLineIsATrimmedEntry()
    {
        QCOMPARE(parseGroupFile(" LLD \n\tLLS\nMSFL"), QStringList({"LLD", "LLS", "MSFL"}));
    }

    void emptyLinesAreEmptyEntries()
    {
        QCOMPARE(parseGroupFile("\nLLD\n\n  \nLLS\n"), QStringList({"", "LLD", "", "", "LLS"}));
        QCOMPARE(parseGroupFile("\n"), QStringList({""}));
        QCOMPARE(parseGroupFile(""), QStringList());
    }

    void aFileIsReadByTheNameOfItsGroup()
    {
        files::write(path("Shale Volume.txt"), "VSH_log\nSP_VSH_log");
        QCOMPARE(readGroupFile(m_folder->path(), "Shale Volume"), QStringList({"VSH_log", "SP_VSH_log"}));
    }

    void aMissingOrUnreadableFileIsAnEmptyList()
    {
        QCOMPARE(readGroupFile(m_folder->path(), "Gamma"), QStringList());
        QCOMPARE(readGroupFile(m_folder->filePath("no such project"), "Gamma"), QStringList());
        QVERIFY(QDir().mkdir(path("Gamma.txt")));
        QCOMPARE(readGroupFile(m_folder->path(), "Gamma"), QStringList());
    }

    void aNewNameIsAppended()
    {
        files::write(path("Gamma.txt"), "GR");
        addMnemonicToGroup(m_folder->path(), "Gamma", "GR1");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR\nGR1\n"));
    }

    void theFirstNameMakesTheFile()
    {
        addMnemonicToGroup(m_folder->path(), "Gamma", "GR");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR\n"));
    }

    void theNameIsTrimmed()
    {
        addMnemonicToGroup(m_folder->path(), "Gamma", " \tGR ");
        addMnemonicToGroup(m_folder->path(), "Gamma", "GR");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR\n"));
    }

    void everyEntryIsWrittenTrimmed()
    {
        files::write(path("Gamma.txt"), "  A\r\n\nB  \n\t\nC");
        addMnemonicToGroup(m_folder->path(), "Gamma", "D");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("A\n\nB\n\nC\nD\n"));
    }

    void aListedNameLeavesTheFile()
    {
        files::write(path("Gamma.txt"), "  A\r\n\n GR\t\nC");
        FailingDisk disk;
        {
            const base::ScopedFileSystemCalls scope(disk);
            addMnemonicToGroup(m_folder->path(), "Gamma", "GR");
            addMnemonicToGroup(m_folder->path(), "Gamma", "");
        }
        QVERIFY(disk.written.isEmpty());
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("  A\r\n\n GR\t\nC"));
    }

    void letterCaseCounts()
    {
        files::write(path("Gamma.txt"), "GR");
        addMnemonicToGroup(m_folder->path(), "Gamma", "gr");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR\ngr\n"));
    }

    void anEmptyNameIsAnEntry()
    {
        addMnemonicToGroup(m_folder->path(), "Gamma", "");
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("\n"));
    }

    void namesThatReadBackOtherwiseDoNotPileUp_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("line breaks") << "A\nB\rC";
        QTest::newRow("half a character") << QString(QChar(0xD800)) + "GR";
        QTest::newRow("byte order mark") << QString(QChar(0xFEFF)) + "GR";
        QTest::newRow("wide space") << QString(QChar(0x2003)) + "GR" + QChar(0x00A0);
        QTest::newRow("NUL") << QString("G") + QChar(0) + "R";
        QTest::newRow("bar") << "G|R";
    }

    void namesThatReadBackOtherwiseDoNotPileUp()
    {
        QFETCH(QString, name);
        addMnemonicToGroup(m_folder->path(), "Gamma", name);
        const QByteArray once = files::read(path("Gamma.txt"));
        QCOMPARE(once.count('\n'), 1);
        addMnemonicToGroup(m_folder->path(), "Gamma", name);
        QCOMPARE(files::read(path("Gamma.txt")), once);
    }

    void theFolderIsNotMade()
    {
        QVERIFY(QDir(m_folder->path()).rmdir("CurveGroups"));
        addMnemonicToGroup(m_folder->path(), "Gamma", "GR");
        QVERIFY(files::snapshot(m_folder->path()).isEmpty());
    }

    void severalAdditionsAreOneWrite()
    {
        files::write(path("Gamma.txt"), "GR");
        files::write(path("Sonic.txt"), "DT");
        FailingDisk disk;
        {
            const base::ScopedFileSystemCalls scope(disk);
            GroupFiles group(m_folder->path());
            group.add("Gamma", "A");
            group.add("Sp", "SP");
            group.add("Gamma", "GR");
            group.add("Sonic", "DT");
            group.add("Gamma", "B");
            group.add("Gamma", "A");
            QVERIFY(disk.written.isEmpty());
            group.write();
            group.write();
        }
        disk.written.sort();
        QCOMPARE(disk.written, QStringList({path("Gamma.txt"), path("Sp.txt")}));
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR\nA\nB\n"));
        QCOMPARE(files::read(path("Sp.txt")), QByteArray("SP\n"));
        QCOMPARE(files::read(path("Sonic.txt")), QByteArray("DT"));
    }

    void aGroupNameIsNoPath_data()
    {
        QTest::addColumn<QString>("group");
        for (const QString &name : badbytes::names())
            QTest::newRow(qPrintable(QString("\"%1\"").arg(name.left(20)))) << name;
        QTest::newRow("the table") << "CurveGroupTable";
        QTest::newRow("what the table becomes") << "%43urveGroupTable";
    }

    void aGroupNameIsNoPath()
    {
        QFETCH(QString, group);
        files::write(path("CurveGroupTable.txt"), "a table");
        files::write(path("Gamma.txt"), "GR");
        files::write(m_folder->filePath("x.txt"), "another");
        auto before = files::snapshot(m_folder->path());
        addMnemonicToGroup(m_folder->path(), group, "LOG");
        auto after = files::snapshot(m_folder->path());
        QCOMPARE(after.size(), before.size() + 1);
        QCOMPARE(readGroupFile(m_folder->path(), group), QStringList("LOG"));
        for (auto entry = before.begin(); entry != before.end(); ++entry)
            QCOMPARE(after.take(entry.key()), entry.value());
        QVERIFY(after.firstKey().startsWith("CurveGroups/"));
        QCOMPARE(after.first(), QByteArray("LOG\n"));
    }

    void noTwoGroupNamesShareAFile()
    {
        QStringList groups = badbytes::names();
        groups << "CurveGroupTable"
               << "%43urveGroupTable"
               << "Gamma"
               << "gamma" << QString(300, 'm') << "%FF";
        for (const QString &group : groups)
            addMnemonicToGroup(m_folder->path(), group, group.left(5) + "!");
        QCOMPARE(QDir(path("")).entryList(QDir::Files | QDir::Hidden).size(), groups.size());
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
        files::write(path("Gamma.txt"), "GR");
        FailingDisk disk(static_cast<FailingDisk::Step>(step));
        {
            const base::ScopedFileSystemCalls scope(disk);
            addMnemonicToGroup(m_folder->path(), "Gamma", "A");
            addMnemonicToGroup(m_folder->path(), "Sonic", "DT");
        }
        QCOMPARE(files::snapshot(m_folder->path()).size(), 2);
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR"));
    }

    void aReadOnlyFolderIsSilent()
    {
        files::write(path("Gamma.txt"), "GR");
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(path("Gamma.txt"), QFile::Permissions(0x6666)));
        QVERIFY(QFile::setPermissions(path(""), QFile::Permissions(0x5555)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     addMnemonicToGroup(m_folder->path(), "Gamma", "A");
                     addMnemonicToGroup(m_folder->path(), "Sonic", "DT");
                     return 0;
                 }),
                 0);
        QCOMPARE(files::snapshot(m_folder->path()).size(), 2);
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR"));
    }

    void aFileThatCannotBeReadIsNotWrittenOver()
    {
        files::write(path("Gamma.txt"), "GR");
        QVERIFY(QFile::link("/no such file", path("Sonic.txt")));
        for (const QString &folder : {m_folder->path(), path("")})
            QVERIFY(QFile::setPermissions(folder, QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(path("Gamma.txt"), QFile::Permissions(0x2222)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     GroupFiles group(m_folder->path());
                     group.add("Gamma", "A");
                     group.add("Sonic", "DT");
                     const bool isNothingWritten = !group.write();
                     group.add("Sp", "SP");
                     return isNothingWritten && group.write() ? 0 : 1;
                 }),
                 0);
        QVERIFY(QFile::setPermissions(path("Gamma.txt"), QFile::Permissions(0x6666)));
        QCOMPARE(files::read(path("Gamma.txt")), QByteArray("GR"));
        QCOMPARE(QFileInfo(path("Sonic.txt")).symLinkTarget(), QString("/no such file"));
        QCOMPARE(files::read(path("Sp.txt")), QByteArray("SP\n"));
    }

    void allLineEndsAndEncodingsAreRead()
    {
        const QStringList expected{"LLD", "LLS"};
        QCOMPARE(parseGroupFile("LLD\r\nLLS\r\n"), expected);
        QCOMPARE(parseGroupFile("LLD\rLLS\r"), expected);
        QCOMPARE(parseGroupFile("LLD\nLLS"), expected);
        QCOMPARE(parseGroupFile("\xEF\xBB\xBFLLD\nLLS"), expected);
        QCOMPARE(parseGroupFile("LLD\n\xEF\xBB\xBFLLS"), expected);
        QCOMPARE(parseGroupFile(QByteArray("\xFF\xFEL\0L\0D\0\n\0L\0L\0S\0", 16)), expected);
        QCOMPARE(parseGroupFile("Gr\xF6\xDF"
                                "e"),
                 QStringList(QString("Größe")));
        QCOMPARE(parseGroupFile("Gr\xC3\xB6\xC3\x9F"
                                "e"),
                 QStringList(QString("Größe")));
    }

    void everyPrefixIsRead()
    {
        const QByteArray whole = QString("LLD\r\n\nGröße\n  LLS\nMSFL").toUtf8();
        for (int size = 0; size <= whole.size(); ++size)
            for (const QString &name : parseGroupFile(whole.left(size)))
                QCOMPARE(name, name.trimmed());
        QCOMPARE(parseGroupFile(whole.left(9)), QStringList({"LLD", "", "Gr\u00C3"})); // half a character: not UTF-8
    }

    void binaryBytesAreRead()
    {
        const QByteArray bytes = badbytes::binary(1 << 20);
        const QStringList names = parseGroupFile(bytes);
        QVERIFY(names.size() > 4000);
        for (const QString &name : names)
            QVERIFY(!name.contains('\n') && !name.contains('\r'));
    }

    void aLineOfTenThousandFieldsIsOneName()
    {
        const QByteArray line = badbytes::manyFields("field");
        QCOMPARE(parseGroupFile(line), QStringList(QString::fromLatin1(line)));
    }

    void aHugeFileIsRead()
    {
        const QStringList names = parseGroupFile(badbytes::huge("LLD\nLLS\n"));
        QCOMPARE(names.size(), 6);
        QCOMPARE(names.mid(0, 2), QStringList({"LLD", "LLS"}));
    }

    void hundredThousandNamesAreAdded()
    {
        GroupFiles group(m_folder->path());
        QByteArray expected;
        for (int i = 0; i < 100000; ++i) {
            group.add("Gamma", QString::number(i));
            expected += QByteArray::number(i) + '\n';
        }
        group.write();
        QCOMPARE(files::read(path("Gamma.txt")), expected);
        QCOMPARE(readGroupFile(m_folder->path(), "Gamma").size(), 100000);
    }

private:
    QString path(const QString &file) const { return m_folder->filePath("CurveGroups/" + file); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_groupfiles)
#include "tst_groupfiles.moc"
