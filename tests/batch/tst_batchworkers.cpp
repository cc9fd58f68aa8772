// Child processes, held signals and the line of progress, as functions.

#include "programs/batch/heldsignals.h"
#include "programs/batch/progress.h"
#include "programs/batch/workers.h"
#include "support/testmain.h"

#include <QElapsedTimer>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <sys/wait.h>
#include <unistd.h>

using namespace batch;

namespace {

QStringList names(int count)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list.append(QStringLiteral("piece %1").arg(i));
    return list;
}

Result recordOf(int number)
{
    Result result;
    result.records.append(Record{{QStringLiteral("number"), number}, {QStringLiteral("process"), ::getpid()}});
    result.notices.append(QString::number(number));
    return result;
}

/// The test library catches signals; the program does not.
void forgetHandlers()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        ::signal(signal, SIG_DFL);
}

/// What a terminal shows of some work.
QByteArray shownOnTerminal(const std::function<void()> &work)
{
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
    ::grantpt(master);
    ::unlockpt(master);
    const int slave = ::open(::ptsname(master), O_RDWR | O_NOCTTY);
    const int errors = ::dup(STDERR_FILENO);
    ::dup2(slave, STDERR_FILENO);
    work();
    ::dup2(errors, STDERR_FILENO);
    ::close(errors);
    ::close(slave);
    ::fcntl(master, F_SETFL, O_NONBLOCK);
    QByteArray bytes(4096, Qt::Uninitialized);
    bytes.truncate(static_cast<int>(qMax<ssize_t>(0, ::read(master, bytes.data(), 4096))));
    ::close(master);
    return bytes;
}

} // namespace

class TestBatchWorkers : public QObject
{
    Q_OBJECT

private slots:
    void resultsComeInOrder_data()
    {
        QTest::addColumn<int>("pieces");
        QTest::addColumn<int>("processes");
        QTest::newRow("none") << 0 << 4;
        QTest::newRow("one process") << 5 << 1;
        QTest::newRow("more processes than pieces") << 2 << 16;
        QTest::newRow("many pieces") << 200 << 3;
    }
    void resultsComeInOrder()
    {
        QFETCH(int, pieces);
        QFETCH(int, processes);
        const Result result = runPieces(QStringLiteral("Working"), names(pieces), processes, recordOf);
        QCOMPARE(result.records.size(), pieces);
        QSet<int> used;
        for (int i = 0; i < pieces; ++i) {
            QCOMPARE(result.records.at(i).value("number").toInt(), i);
            QCOMPARE(result.notices.at(i), QString::number(i));
            used.insert(result.records.at(i).value("process").toInt());
        }
        QVERIFY(used.size() <= processes);
        QCOMPARE(used.contains(::getpid()), processes == 1);
        QVERIFY(::waitpid(-1, nullptr, WNOHANG) == -1); // no child is left
    }

    void largeResultsComeWhole()
    {
        const Result result = runPieces(QStringLiteral("Working"), names(4), 2, [](int number) {
            return Result::failed(QString(3000000, QLatin1Char(static_cast<char>('a' + number))));
        });
        QCOMPARE(result.failures.size(), 4);
        QCOMPARE(result.failures.at(3), QString(3000000, QLatin1Char('d')));
    }

    void aChildThatDiesIsAFailure()
    {
        const Result result = runPieces(QStringLiteral("Working"), names(12), 3, [](int number) {
            if (number == 4)
                ::raise(SIGKILL);
            if (number == 7)
                throw std::bad_alloc();
            return recordOf(number);
        });
        QCOMPARE(result.records.size(), 10);
        QCOMPARE(
            result.failures,
            (QStringList{"piece 4: the process that worked on it died.", "piece 7: there is not enough memory."}));
    }

    void whenAllChildrenDieTheRestIsDoneHere()
    {
        const pid_t here = ::getpid();
        const Result result = runPieces(QStringLiteral("Working"), names(6), 2, [here](int number) {
            if (::getpid() != here)
                ::raise(SIGKILL);
            return recordOf(number);
        });
        QCOMPARE(result.failures.size(), 2);
        QCOMPARE(result.records.size(), 4);
    }

    // As SIGINT is in a script's background.
    void aSignalThatIsIgnoredIsNotWaitedFor()
    {
        ::signal(SIGINT, SIG_IGN);
        bool isWaiting = true;
        {
            const HeldSignals held;
            ::raise(SIGINT);
            isWaiting = HeldSignals::isOneWaiting();
        }
        ::signal(SIGINT, SIG_DFL);
        QVERIFY(!isWaiting);
    }

    void signalsWaitForTheEndOfAWrite()
    {
        const pid_t child = ::fork();
        if (child == 0) {
            forgetHandlers();
            {
                const HeldSignals held;
                if (HeldSignals::isOneWaiting())
                    ::_exit(3);
                ::raise(SIGTERM);
                if (!HeldSignals::isOneWaiting())
                    ::_exit(4);
                {
                    const HeldSignals again;
                }
                // Still here: the outer one holds it.
                if (::write(STDOUT_FILENO, "", 0) != 0)
                    ::_exit(5);
            }
            ::_exit(0);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(WTERMSIG(status), SIGTERM);
    }

    void aSignalEndsTheChildrenToo()
    {
        int ends[2];
        QCOMPARE(::pipe(ends), 0);
        const pid_t parent = ::fork();
        if (parent == 0) {
            forgetHandlers();
            ::close(ends[0]);
            runPieces(QStringLiteral("Working"), names(3), 3, [](int number) {
                ::sleep(60);
                return recordOf(number);
            });
            ::_exit(0);
        }
        ::close(ends[1]);
        QTest::qSleep(300);
        QElapsedTimer time;
        time.start();
        ::kill(parent, SIGINT);
        char byte;
        QCOMPARE(::read(ends[0], &byte, 1), static_cast<ssize_t>(0)); // all that held the other end are gone
        QVERIFY(time.elapsed() < 20000);
        int status = 0;
        ::waitpid(parent, &status, 0);
        QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT);
        ::close(ends[0]);
    }

    void progressIsShownFromTheSecondSecondOn()
    {
        const QByteArray shown = shownOnTerminal([] {
            Progress progress(QStringLiteral("Working"), 7);
            progress.setDone(1);
            QTest::qSleep(1100);
            progress.setDone(3);
            progress.setDone(3);
        });
        QCOMPARE(shown, QByteArray("\r\x1b[KWorking: 3 of 7\r\x1b[K"));
        QCOMPARE(shownOnTerminal([] { Progress(QStringLiteral("Working"), 7).setDone(1); }), QByteArray());
    }
};

LORVA_TEST_MAIN(TestBatchWorkers)
#include "tst_batchworkers.moc"
