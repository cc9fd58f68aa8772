#include "base/folderremoval.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/testmain.h"
#include "support/unprivileged.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

/// Looks at the disk at the moment of the move.
class WatchedMove : public base::FileSystemCalls
{
public:
    int rename(const char *from, const char *to) override
    {
        contentAtMove = files::snapshot(QFile::decodeName(from));
        target = QFile::decodeName(to);
        return FileSystemCalls::rename(from, to);
    }
    QMap<QString, QByteArray> contentAtMove;
    QString target;
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

    void itGoesWithAllItsContentAndNothingElse()
    {
        QMap<QString, QByteArray> expected = files::snapshot(m_folder->path());
        for (const QString &name : expected.keys())
            if (name.startsWith(QLatin1String("Templates/A/Own")))
                expected.remove(name);
        QVERIFY(base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()));
        QVERIFY(files::snapshot(m_folder->path()) == expected); // links in it are not followed
    }

    void itIsMovedAsideWholeBeforeAnythingIsDeleted()
    {
        const auto whole = files::snapshot(path("Templates/A/Own"));
        WatchedMove calls;
        const base::ScopedFileSystemCalls inForce(calls);
        QVERIFY(base::removeFolder(path("Templates/A"), QStringLiteral("Own"), m_folder->path()));
        QVERIFY(calls.contentAtMove == whole);
        QVERIFY2(calls.target.startsWith(path(".lorva-")), qPrintable(calls.target)); // hidden from every listing
    }

    void aCrashAfterTheMoveLeavesItWholeAndOutOfSight()
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
        const QStringList hidden =
            QDir(m_folder->path()).entryList({QStringLiteral(".lorva-*")}, QDir::Dirs | QDir::Hidden);
        QCOMPARE(hidden.size(), 1);
        // Only the superuser sees into a folder of the other process.
        if (::geteuid() == 0)
            QVERIFY(files::snapshot(m_folder->filePath(hidden.first() + QStringLiteral("/removed"))) == whole);
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
