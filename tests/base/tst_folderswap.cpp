#include "base/folderswap.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Files = QMap<QString, QByteArray>;

QVector<base::FolderFile> newFiles()
{
    return {{QStringLiteral("Track_1.txt"), "new 1"}, {QStringLiteral("Track_2.txt"), "new 2"}};
}

Files newContent()
{
    return {{QStringLiteral("Track_1.txt"), "new 1"}, {QStringLiteral("Track_2.txt"), "new 2"}};
}

/// Calls the test back before each rename, and may let single ones fail.
class WatchedRenames : public base::FileSystemCalls
{
public:
    int rename(const char *from, const char *to) override
    {
        const int number = ++count;
        targets.append(QFile::decodeName(to));
        if (before)
            before(number);
        if (refused.contains(number)) {
            errno = EIO;
            return -1;
        }
        const int result = FileSystemCalls::rename(from, to);
        if (after)
            after(number);
        return result;
    }
    std::function<void(int number)> before;
    std::function<void(int number)> after;
    QVector<int> refused;
    QStringList targets;
    int count = 0;
};

/// Runs \a work in a child process and waits until it is gone.
int inChild(const std::function<int()> &work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Two files, the name of the place, then the old folder aside and the new one to its place.
constexpr int renamesOfASwap = 5;

} // namespace

class tst_folderswap : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir().mkpath(path("Templates/Global")));
        QVERIFY(QDir().mkpath(path("Correlations")));
    }

    void aMissingFolderIsMade()
    {
        QVERIFY(replace().ok());
        QVERIFY(content() == newContent());
        QCOMPARE(hidden(), QStringList());
    }

    void theFormerContentGoes()
    {
        makeOld();
        QVERIFY(replace().ok());
        QVERIFY(content() == newContent());
        QCOMPARE(hidden(), QStringList());
    }

    void noFilesMakeAnEmptyFolder()
    {
        makeOld();
        QVERIFY(base::replaceFolder(path("Templates/Global"), QStringLiteral("Mine"), {}, m_folder->path()).ok());
        QVERIFY(QFileInfo(path("Templates/Global/Mine")).isDir());
        QVERIFY(content().isEmpty());
    }

    void aMissingParentIsMadeButNotItsOwn()
    {
        QVERIFY(
            base::replaceFolder(path("Templates/Well 1"), QStringLiteral("T"), newFiles(), m_folder->path()).ok());
        QVERIFY(files::snapshot(path("Templates/Well 1/T")) == newContent());
        const auto before = files::snapshot(m_folder->path());
        QVERIFY(!base::replaceFolder(path("No/Well 1"), QStringLiteral("T"), newFiles(), m_folder->path()).ok());
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void permissionsStay()
    {
        QVERIFY(replace().ok());
        QCOMPARE(QFileInfo(path("Templates/Global/Mine")).permissions(),
                 QFileInfo(path("Templates/Global")).permissions()); // as open as any other
        QVERIFY(QFile::setPermissions(path("Templates/Global/Mine"), QFile::Permissions(0x7750)));
        QVERIFY(replace().ok());
        QCOMPARE(QFileInfo(path("Templates/Global/Mine")).permissions(), QFile::Permissions(0x7750));
    }

    void refused_data()
    {
        QTest::addColumn<QString>("parent");
        QTest::addColumn<QString>("name");
        for (const char *name :
             {"", ".", "..", "a/b", "../x", "Mine/", ".lorva-swap-abcdef", "file", "link", "dangling"})
            QTest::newRow(name) << QStringLiteral("Templates/Global") << QString::fromLatin1(name);
        QTest::newRow("null") << QStringLiteral("Templates/Global") << QString(QStringLiteral("a") + QChar(0));
        QTest::newRow("through a step up") << QStringLiteral("Templates/../../x") << QStringLiteral("Mine");
        QTest::newRow("through a link") << QStringLiteral("Templates/away") << QStringLiteral("Mine");
        QTest::newRow("outside") << QStringLiteral("../outside") << QStringLiteral("Mine");
    }

    void refused()
    {
        QFETCH(QString, parent);
        QFETCH(QString, name);
        makeOld();
        files::write(path("Templates/Global/file"), "a file");
        QVERIFY(QDir().mkpath(path("elsewhere")));
        QVERIFY(QFile::link(path("elsewhere"), path("Templates/Global/link")));
        QVERIFY(QFile::link(path("nowhere"), path("Templates/Global/dangling")));
        const QTemporaryDir away(QCoreApplication::applicationDirPath() + QStringLiteral("/away-XXXXXX"));
        QVERIFY(QFile::link(away.path(), path("Templates/away")));
        const auto before = files::snapshot(m_folder->path());
        QVERIFY(!base::replaceFolder(m_folder->filePath(parent), name, newFiles(), m_folder->path()).ok());
        QVERIFY(files::snapshot(m_folder->path()) == before);
        QVERIFY(QDir(away.path()).isEmpty());
    }

    void aFileNameIsNoPath()
    {
        makeOld();
        const auto before = files::snapshot(m_folder->path());
        for (const char *name : {"", "..", "../x", "a/b"})
            QVERIFY(!base::replaceFolder(path("Templates/Global"), QStringLiteral("Mine"),
                                         {{QString::fromLatin1(name), "x"}}, m_folder->path())
                         .ok());
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    // Every write, flush and rename that can fail.
    void aFailingDiskLeavesTheOldFolder_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &row : failingSteps)
            QTest::newRow(row.name) << int(row.step);
    }

    void aFailingDiskLeavesTheOldFolder()
    {
        QFETCH(int, step);
        makeOld();
        const auto before = files::snapshot(m_folder->path());
        FailingDisk disk(static_cast<FailingDisk::Step>(step));
        const base::ScopedFileSystemCalls inForce(disk);
        const base::WriteResult result = replace();
        QVERIFY(!result.error.isEmpty());
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void eachRenameThatFailsLeavesTheOldFolder()
    {
        for (const bool hasOld : {true, false}) {
            const int renames = hasOld ? renamesOfASwap : renamesOfASwap - 1;
            for (int refused = 1; refused <= renames; ++refused) {
                init();
                if (hasOld)
                    makeOld();
                const auto before = files::snapshot(m_folder->path());
                WatchedRenames disk;
                disk.refused = {refused};
                const base::ScopedFileSystemCalls inForce(disk);
                const base::ReplaceResult result = replace();
                QVERIFY(!result.ok());
                QCOMPARE(result.isOldStuck, hasOld && refused == renamesOfASwap - 1); // it is moved before the new one
                QVERIFY(files::snapshot(m_folder->path()) == before);
            }
        }
        WatchedRenames disk;
        const base::ScopedFileSystemCalls inForce(disk);
        makeOld();
        QVERIFY(replace().ok());
        QCOMPARE(disk.count, renamesOfASwap);
    }

    void aParentMadeForNothingGoes()
    {
        const auto before = files::snapshot(m_folder->path());
        WatchedRenames disk;
        disk.refused = {renamesOfASwap - 1};
        const base::ScopedFileSystemCalls inForce(disk);
        QVERIFY(
            !base::replaceFolder(path("Templates/Well 1"), QStringLiteral("T"), newFiles(), m_folder->path()).ok());
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void anOldFolderThatCannotBePutBackIsNotLost()
    {
        makeOld();
        {
            WatchedRenames disk;
            disk.refused = {renamesOfASwap, renamesOfASwap + 1};
            const base::ScopedFileSystemCalls inForce(disk);
            QVERIFY(!replace().ok());
        }
        QVERIFY(!QFileInfo::exists(path("Templates/Global/Mine")));
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(content() == newContent());
        QCOMPARE(hidden(), QStringList());
    }

    // ---- the four states in which a process may die

    void deadWhileTheNewOneIsBuilt()
    {
        makeOld();
        const auto old = content();
        dieBefore(2);
        QVERIFY(content() == old);
        QCOMPARE(hidden().size(), 1);
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(content() == old);
        QCOMPARE(hidden(), QStringList());
    }

    void deadWhenTheNewOneIsWholeAndTheOldOneInPlace()
    {
        makeOld();
        const auto old = content();
        dieBefore(renamesOfASwap - 1);
        QVERIFY(content() == old);
        QCOMPARE(hidden().size(), 1);
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(content() == old);
        QCOMPARE(hidden(), QStringList());
    }

    void deadWhenThePlaceIsEmpty()
    {
        makeOld();
        dieBefore(renamesOfASwap);
        QVERIFY(!QFileInfo::exists(path("Templates/Global/Mine")));
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(content() == newContent());
        QCOMPARE(hidden(), QStringList());
    }

    void deadWhenTheNewOneIsInPlaceAndTheOldOneAside()
    {
        makeOld();
        dieAfter(renamesOfASwap);
        QVERIFY(content() == newContent());
        QCOMPARE(hidden().size(), 1);
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(content() == newContent());
        QCOMPARE(hidden(), QStringList());
    }

    // ---- and what somebody may have done since

    void deadWhenThePlaceIsEmptyAndItsParentGone()
    {
        QVERIFY(QDir().mkpath(path("Templates/Well 1")));
        files::write(path("Templates/Well 1/T/Track_9.txt"), "old");
        QCOMPARE(inChild([this] {
                     WatchedRenames disk;
                     disk.before = [](int number) {
                         if (number == renamesOfASwap)
                             ::_exit(9);
                     };
                     const base::ScopedFileSystemCalls inForce(disk);
                     return base::replaceFolder(path("Templates/Well 1"), QStringLiteral("T"), newFiles(),
                                                m_folder->path())
                                .ok()
                         ? 0
                         : 1;
                 }),
                 9);
        QVERIFY(QDir().rmdir(path("Templates/Well 1")));
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(files::snapshot(path("Templates/Well 1/T")) == newContent());
        QCOMPARE(hidden(), QStringList());
    }

    void aFolderThatSomebodyMadeInTheEmptyPlaceStays()
    {
        makeOld();
        dieBefore(renamesOfASwap);
        files::write(path("Templates/Global/Mine/Track_1.txt"), "third");
        base::finishFolderSwaps(m_folder->path());
        QCOMPARE(files::read(path("Templates/Global/Mine/Track_1.txt")), QByteArray("third"));
        QCOMPARE(hidden(), QStringList(QStringLiteral(".lorva-deleted")));
        QCOMPARE(files::read(path(".lorva-deleted/000001/Templates/Global/Mine/Track_9.txt")), QByteArray("old"));
        QVERIFY(files::snapshot(path(".lorva-deleted/000002/Templates/Global/Mine")) == newContent());
    }

    void aFolderDeletedAfterTheSwapDoesNotComeBack()
    {
        makeOld();
        dieAfter(renamesOfASwap);
        QVERIFY(QDir(path("Templates/Global/Mine")).removeRecursively());
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(!QFileInfo::exists(path("Templates/Global/Mine")));
        QCOMPARE(files::read(path(".lorva-deleted/000001/Templates/Global/Mine/Track_9.txt")), QByteArray("old"));
    }

    void whatWasBeingClearedAwayIsClearedAway()
    {
        makeOld();
        dieAfter(renamesOfASwap);
        QVERIFY(QFile::remove(path(qPrintable(hidden().first() + QStringLiteral("/place")))));
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(content() == newContent());
        QCOMPARE(hidden(), QStringList());
    }

    void aPlaceOutsideTheProjectIsNotFollowed()
    {
        files::write(path(".lorva-swap-abcdef/new/x"), "new");
        files::write(path(".lorva-swap-abcdef/old/x"), "old");
        for (const char *place : {"../outside", "/tmp/x", "", "Templates/../../x", "Templates//x"}) {
            files::write(path(".lorva-swap-abcdef/place"), place);
            const auto inside = files::snapshot(m_folder->path());
            base::finishFolderSwaps(m_folder->path());
            QVERIFY(files::snapshot(m_folder->path()) == inside);
        }
    }

    void whatCannotBeFinishedNowIsFinishedNextTime()
    {
        makeOld();
        dieBefore(renamesOfASwap);
        {
            FailingDisk disk(FailingDisk::Rename);
            const base::ScopedFileSystemCalls inForce(disk);
            base::finishFolderSwaps(m_folder->path());
        }
        QCOMPARE(hidden().size(), 1);
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(content() == newContent());
        QCOMPARE(hidden(), QStringList());
    }

    void aSwapOfALivingProcessIsLeftAlone()
    {
        makeOld();
        int looked = 0;
        WatchedRenames disk;
        disk.before = [this, &looked](int) {
            const auto before = files::snapshot(m_folder->path());
            base::finishFolderSwaps(m_folder->path());
            looked += files::snapshot(m_folder->path()) == before ? 1 : 0;
        };
        const base::ScopedFileSystemCalls inForce(disk);
        QVERIFY(replace().ok());
        QCOMPARE(looked, renamesOfASwap);
        QVERIFY(content() == newContent());
    }

    void nothingElseIsTouched()
    {
        makeOld();
        files::write(path(".lorva-deleted/000001/x"), "x");
        files::write(path(".lorva-swap-file"), "a file");
        files::write(path(".hidden/new/x"), "x");
        files::write(path("elsewhere/new/x"), "x");
        QVERIFY(QFile::link(path("elsewhere"), path(".lorva-swap-link")));
        const auto before = files::snapshot(m_folder->path());
        base::finishFolderSwaps(m_folder->path());
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

private:
    QString path(const char *relative) const { return m_folder->filePath(QString::fromLatin1(relative)); }
    base::ReplaceResult replace() const
    {
        return base::replaceFolder(path("Templates/Global"), QStringLiteral("Mine"), newFiles(), m_folder->path());
    }
    void makeOld() const
    {
        files::write(path("Templates/Global/Mine/Track_1.txt"), "old 1");
        files::write(path("Templates/Global/Mine/Track_9.txt"), "old");
    }
    Files content() const { return files::snapshot(path("Templates/Global/Mine")); }
    QStringList hidden() const
    {
        return QDir(m_folder->path())
            .entryList({QStringLiteral(".lorva-*")}, QDir::AllEntries | QDir::Hidden | QDir::System);
    }
    void dieBefore(int number) const { die(number, &WatchedRenames::before); }
    void dieAfter(int number) const { die(number, &WatchedRenames::after); }
    void die(int when, std::function<void(int)> WatchedRenames::*moment) const
    {
        QCOMPARE(inChild([this, when, moment] {
                     WatchedRenames disk;
                     disk.*moment = [when](int number) {
                         if (number == when)
                             ::_exit(9);
                     };
                     const base::ScopedFileSystemCalls inForce(disk);
                     return replace().ok() ? 0 : 1;
                 }),
                 9);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_folderswap)
#include "tst_folderswap.moc"
