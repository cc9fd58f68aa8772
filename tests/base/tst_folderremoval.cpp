#include "base/folderremoval.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/testmain.h"
#include "support/unprivileged.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>

namespace {

/// Looks at the disk at the moment of the move.
class WatchedMove : public base::FileSystemCalls
{
public:
    int rename(const char *from, const char *to) override
    {
        ++moves;
        contentAtMove = files::snapshot(QFile::decodeName(from));
        target = QFile::decodeName(to);
        return FileSystemCalls::rename(from, to);
    }
    QMap<QString, QByteArray> contentAtMove;
    QString target;
    int moves = 0;
};

/// The process ends right after the move.
class CrashAfterMove : public base::FileSystemCalls
{
public:
    int rename(const char *from, const char *to) override
    {
        FileSystemCalls::rename(from, to);
        ::_exit(7);
    }
};

/// Somebody else makes the first numbered folder just before this process does.
class OtherProcess : public base::FileSystemCalls
{
public:
    int mkdir(const char *path) override
    {
        if (QByteArray(path).endsWith("/000001"))
            FileSystemCalls::mkdir(path);
        return FileSystemCalls::mkdir(path);
    }
};

/// Only so many folders can be made.
class FewInodes : public base::FileSystemCalls
{
public:
    explicit FewInodes(int free)
        : m_free(free)
    {
    }
    int mkdir(const char *path) override
    {
        if (m_free-- > 0)
            return FileSystemCalls::mkdir(path);
        errno = ENOSPC;
        return -1;
    }

private:
    int m_free;
};

} // namespace

class tst_folderremoval : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        files::write(path("Templates/A/Own/Track_1.txt"), "Linear\n");
        files::write(path("Templates/A/Own/.hidden"), "h");
        files::write(path("Templates/A/Own/deep/er/file"), "f");
        files::write(path("Templates/A/Other/Track_1.txt"), "Linear\n");
        files::write(path("Templates/A/file"), "a file");
        files::write(path("outside/precious.txt"), "precious");
        QVERIFY(QFile::link(path("outside"), path("Templates/A/Own/link")));
        QVERIFY(QFile::link(path("outside"), path("Templates/A/Linked")));
        QVERIFY(QFile::link(path("nowhere"), path("Templates/A/Dangling")));
    }

    void itIsKeptWithAllItsContentUnderItsPlace()
    {
        auto expected = files::snapshot(m_folder->path());
        const QString own = QStringLiteral("Templates/A/Own");
        for (const QString &name : expected.keys())
            if (name.startsWith(own))
                expected.insert(QStringLiteral(".lorva-deleted/000001/") + name, expected.take(name));
        for (const char *folder : {"", "000001/", "000001/Templates/", "000001/Templates/A/"})
            expected.insert(QStringLiteral(".lorva-deleted/") + QLatin1String(folder), QByteArray());
        QVERIFY(base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()));
        QVERIFY(files::snapshot(m_folder->path()) == expected); // links in it are not followed
    }

    void itGoesInOneStep()
    {
        const auto whole = files::snapshot(path("Templates/A/Own"));
        WatchedMove calls;
        const base::ScopedFileSystemCalls inForce(calls);
        QVERIFY(base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()));
        QVERIFY(calls.contentAtMove == whole);
        QCOMPARE(calls.target, path(".lorva-deleted/000001/Templates/A/Own"));
        QCOMPARE(calls.moves, 1);
    }

    void aCrashAfterTheMoveLosesNothing()
    {
        const auto whole = files::snapshot(path("Templates/A/Own"));
        CrashAfterMove calls;
        const base::ScopedFileSystemCalls inForce(calls);
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        for (const char *folder : {"Templates/A", "Templates/A/Own"})
            QVERIFY(QFile::setPermissions(path(folder), QFile::Permissions(0x7777)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     return base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()) ? 1 : 0;
                 }),
                 7);
        QVERIFY(!QFileInfo::exists(path("Templates/A/Own")));
        QVERIFY(files::snapshot(path(".lorva-deleted/000001/Templates/A/Own")) == whole);
    }

    void theLastFiftyAreKept()
    {
        const auto entry = [](int number) { return QString::number(number).rightJustified(6, QLatin1Char('0')); };
        QStringList expected;
        for (int i = 1; i <= 53; ++i) {
            files::write(path("Correlations/East/properties.txt"), QByteArray::number(i));
            QVERIFY(base::removeFolder(path("Correlations"), QStringLiteral("East"), m_folder->path()));
            if (i > 3)
                expected.append(entry(i));
        }
        QCOMPARE(QDir(path(".lorva-deleted")).entryList(QDir::Dirs | QDir::NoDotAndDotDot), expected);
        QCOMPARE(files::read(path(".lorva-deleted/000004/Correlations/East/properties.txt")), QByteArray("4"));
        QCOMPARE(files::read(path(".lorva-deleted/000053/Correlations/East/properties.txt")), QByteArray("53"));
    }

    void whatAUserPutsThereIsNotCountedAndStays()
    {
        for (const char *name : {".lorva-deleted/mine/x", ".lorva-deleted/7/x", ".lorva-deleted/-00001/x",
                                 ".lorva-deleted/0000001/x", ".lorva-deleted/note.txt"})
            files::write(path(name), "mine");
        files::write(path(".lorva-deleted/2147483647/x"), "mine"); // no number can follow
        for (int i = 0; i < 51; ++i) {
            QVERIFY(QDir().mkpath(path("Correlations/East")));
            QVERIFY(base::removeFolder(path("Correlations"), QStringLiteral("East"), m_folder->path()));
        }
        for (const char *name : {"mine/x", "7/x", "-00001/x", "0000001/x", "note.txt", "2147483647/x"})
            QCOMPARE(files::read(path(".lorva-deleted/") + QLatin1String(name)), QByteArray("mine"));
        QVERIFY(!QFileInfo::exists(path(".lorva-deleted/000001")));
        QVERIFY(QFileInfo::exists(path(".lorva-deleted/000051/Correlations/East")));
    }

    void aNumberThatAnotherProcessTakesMeanwhileIsPassedOver()
    {
        OtherProcess calls;
        const base::ScopedFileSystemCalls inForce(calls);
        QVERIFY(base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()));
        QVERIFY(QFileInfo::exists(path(".lorva-deleted/000002/Templates/A/Own/Track_1.txt")));
        QVERIFY(QDir(path(".lorva-deleted/000001")).isEmpty());
    }

    void aLinkOrFileInPlaceOfTheKeepIsRefused()
    {
        QVERIFY(QFile::link(path("outside"), path(".lorva-deleted")));
        const auto before = files::snapshot(m_folder->path());
        QVERIFY(!base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()));
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void aDiskWithoutInodesLeavesEverythingAsItWas_data()
    {
        QTest::addColumn<int>("made");
        for (int made = 0; made < 4; ++made)
            QTest::addRow("after %d folders", made) << made;
    }

    void aDiskWithoutInodesLeavesEverythingAsItWas()
    {
        QFETCH(int, made);
        const auto before = files::snapshot(m_folder->path());
        FewInodes calls(made);
        const base::ScopedFileSystemCalls inForce(calls);
        QVERIFY(!base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()));
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void refused_data()
    {
        QTest::addColumn<QString>("parent");
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << "Templates/A"
                               << "";
        QTest::newRow("the parent itself") << "Templates/A"
                                           << ".";
        QTest::newRow("above the parent") << "Templates/A"
                                          << "..";
        QTest::newRow("not directly inside") << "Templates"
                                             << "A/Own";
        QTest::newRow("elsewhere") << "Templates/A"
                                   << "../../outside";
        QTest::newRow("with a separator at the end") << "Templates/A"
                                                     << "Own/";
        QTest::newRow("a separator") << "Templates/A"
                                     << "/";
        QTest::newRow("cut short by a null")
            << "Templates/A" << QString(QStringLiteral("Own") + QChar(0) + QStringLiteral("x"));
        QTest::newRow("missing") << "Templates/A"
                                 << "Gone";
        QTest::newRow("missing parent") << "Templates/Gone"
                                        << "Own";
        QTest::newRow("a file") << "Templates/A"
                                << "file";
        QTest::newRow("a link to a folder") << "Templates/A"
                                            << "Linked";
        QTest::newRow("a link to nothing") << "Templates/A"
                                           << "Dangling";
    }

    void refused()
    {
        QFETCH(QString, parent);
        QFETCH(QString, name);
        const auto before = files::snapshot(m_folder->path());
        QVERIFY(!base::removeFolder(m_folder->filePath(parent), name, m_folder->path()));
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void aParentThatALinkOutOfTheSurveyLeadsToIsRefused_data()
    {
        QTest::addColumn<QString>("link");
        QTest::newRow("the parent") << "survey/WLC/Templates/A";
        QTest::newRow("a folder above it") << "survey/WLC/Templates";
        QTest::newRow("the project folder") << "survey/WLC";
    }

    void aParentThatALinkOutOfTheSurveyLeadsToIsRefused()
    {
        QFETCH(QString, link);
        files::write(path("survey/WLC/Templates/A/Own/Track_1.txt"), "Linear\n");
        QVERIFY(QDir().rename(m_folder->filePath(link), path("moved")));
        QVERIFY(QFile::link(path("moved"), m_folder->filePath(link)));
        const auto before = files::snapshot(m_folder->path());
        const QString project = path("survey/WLC");
        QVERIFY(!base::removeFolder(project + "/Templates/A", QStringLiteral("Own"), project));
        QVERIFY(files::snapshot(m_folder->path()) == before);
        // One that stays in the survey is followed.
        QVERIFY(QFile::remove(m_folder->filePath(link)));
        QVERIFY(QDir().rename(path("moved"), path("survey/moved")));
        QVERIFY(QFile::link(path("survey/moved"), m_folder->filePath(link)));
        QVERIFY(base::removeFolder(project + "/Templates/A", QStringLiteral("Own"), project));
    }

    void aFailedMoveLeavesEverythingAsItWas()
    {
        const auto before = files::snapshot(m_folder->path());
        FailingDisk disk(FailingDisk::Rename);
        const base::ScopedFileSystemCalls inForce(disk);
        QVERIFY(!base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()));
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void aProtectedParentLeavesEverythingAsItWas()
    {
        const auto before = files::snapshot(m_folder->path());
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(path("Templates/A/Own"), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(path("Templates/A"), QFile::Permissions(0x5555)));
        const int result = testing_support::runUnprivileged([this] {
            return base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()) ? 1 : 0;
        });
        QVERIFY(QFile::setPermissions(path("Templates/A"), QFile::Permissions(0x7777)));
        QCOMPARE(result, 0);
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void aProtectedProjectFolderLeavesEverythingAsItWas()
    {
        const auto before = files::snapshot(m_folder->path());
        for (const char *folder : {"Templates/A", "Templates/A/Own"})
            QVERIFY(QFile::setPermissions(path(folder), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555)));
        const int result = testing_support::runUnprivileged([this] {
            return base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()) ? 1 : 0;
        });
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QCOMPARE(result, 0);
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

private:
    QString path(const char *relative) const { return m_folder->filePath(QString::fromLatin1(relative)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_folderremoval)
#include "tst_folderremoval.moc"
