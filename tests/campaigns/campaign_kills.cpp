// Programs are killed at random moments while they save one state over the other, again and again: at the next start
// the old or the new state is there, what was told as done is not lost, and nothing is left behind. And two programs
// that write the same survey, of which one or both are killed: no save that was told as done is missing.
//
//     build/release/tests/campaign_kills [--count KILLS_OF_EACH_KIND] [--seed NUMBER] [--only SAVE | --only two]

#include "base/filesystemcalls.h"
#include "operations.h"
#include "options.h"
#include "support/testmain.h"
#include "tests/survey/surveyfixture.h"

#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <functional>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace campaign;

namespace {

constexpr int killAfterAtMostUs = 6000;

/// Does not wait for the disk, and writes in small pieces, so that a kill can come between them.
class SmallSteps : public base::FileSystemCalls
{
public:
    ssize_t write(int file, const void *bytes, size_t size) override
    {
        return FileSystemCalls::write(file, bytes, qMin<size_t>(size, 500));
    }
    int fsync(int) override { return 0; }
    int syncfs(int) override { return 0; }
};

/// What a program says of itself; it outlives it.
struct Diary
{
    std::atomic<int> isReady;
    std::atomic<int> begun; ///< saves
    std::atomic<int> done; ///< that were told as done
    std::atomic<int> failed; ///< 1 when one was told as failed
    char error[500];
};

class SharedDiary
{
public:
    SharedDiary()
        : m_diary(static_cast<Diary *>(
            ::mmap(nullptr, sizeof(Diary), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
    {
    }
    ~SharedDiary() { ::munmap(m_diary, sizeof(Diary)); }
    SharedDiary(const SharedDiary &) = delete;
    SharedDiary &operator=(const SharedDiary &) = delete;
    Diary *operator->() const { return m_diary; }

private:
    Diary *m_diary;
};

/// A child that does its work until it is killed.
class Program
{
public:
    explicit Program(const std::function<void(const SharedDiary &)> &work)
        : m_pid(::fork())
    {
        if (m_pid != 0)
            return;
        SmallSteps calls;
        const base::ScopedFileSystemCalls scope(calls);
        work(diary);
        ::_exit(0);
    }
    ~Program() { kill(); }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    void waitUntilReady() const
    {
        while (diary->isReady == 0 && ::waitpid(m_pid, nullptr, WNOHANG) == 0)
            ::usleep(100);
    }
    /// False when it had ended by itself.
    bool kill()
    {
        if (m_pid <= 0)
            return true;
        ::kill(m_pid, SIGKILL);
        int status = 0;
        const bool isKilled =
            ::waitpid(m_pid, &status, 0) == m_pid && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        m_pid = -1;
        return isKilled;
    }

    SharedDiary diary;

private:
    pid_t m_pid;
};

// Saves one state over the other.
void saveInTurn(const Operation &operation, const QString &folder, int firstState, const SharedDiary &diary)
{
    Place place(folder);
    diary->isReady = 1;
    for (int i = 0;; ++i) {
        ++diary->begun;
        const Saved saved = save(operation, place, (firstState + i) % 2);
        if (!saved.isDone) {
            qstrncpy(diary->error, qUtf8Printable(saved.said.join(QLatin1Char('/'))), sizeof diary->error);
            diary->failed = 1;
            return;
        }
        ++diary->done;
    }
}

// A start of the programs, and what their user sees then. Files of a well that no list names are none of it.
Content seenAfterStart(const QString &folder)
{
    const Place next(folder);
    return Place::asSeen(folder);
}

class KillsOfOne
{
public:
    KillsOfOne(const Operation &operation, std::mt19937 *random, Findings *findings)
        : m_operation(operation)
        , m_random(random)
        , m_findings(findings)
    {
        const QString base = m_folder.filePath(QStringLiteral("state"));
        Place::make(base);
        {
            Place place(base);
            for (const int state : {0, 1, 0, 1})
                (void)save(operation, place, state);
        }
        for (const int state : {0, 1}) {
            Place::copy(base, work());
            Place place(work());
            (void)save(operation, place, state);
            m_seen[state] = seenAfterStart(work());
        }
    }

    void run(int count)
    {
        int state = 1; // the one that is there
        for (int i = 0; i < count; ++i) {
            const int next = 1 - state;
            Program program([&](const SharedDiary &diary) { saveInTurn(m_operation, work(), next, diary); });
            program.waitUntilReady();
            ::usleep(static_cast<useconds_t>((*m_random)() % killAfterAtMostUs));
            if (!program.kill())
                find(QStringLiteral("the program ended: %1").arg(QString::fromUtf8(program.diary->error)));
            const int begun = program.diary->begun;
            const int done = program.diary->done;
            // The last state that was told as done, and the one that was being written.
            const int doneState = done == 0 ? state : (next + done - 1) % 2;
            const int begunState = begun == 0 ? state : (next + begun - 1) % 2;
            state = check(doneState, begunState);
        }
    }

private:
    QString work() const { return m_folder.filePath(QStringLiteral("work")); }
    void find(const QString &what) { m_findings->add(QString::fromUtf8(m_operation.name), what); }

    int check(int doneState, int begunState)
    {
        const Content seen = seenAfterStart(work());
        const QStringList left = Place::leftovers(work() + QStringLiteral("/survey"));
        if (!left.isEmpty())
            find(QStringLiteral("left behind: %1").arg(left.join(QStringLiteral(", "))));
        const bool isLeftElsewhere = !Place::leftovers(work()).isEmpty();
        for (const int state : {begunState, doneState})
            if (seen == m_seen[state] && !isLeftElsewhere)
                return state;
        const bool isWhole = seen == m_seen[begunState] || seen == m_seen[doneState]
            || (m_operation.unit == Operation::Unit::File && isMixed(seen, m_seen[0], m_seen[1]));
        if (!isWhole)
            find(QStringLiteral("neither the state that was told as done nor the next: %1")
                     .arg(namesThatDiffer(seen, m_seen[doneState])));
        // From a whole state on. In folders that are not ours the next save takes away what is left.
        Place place(work());
        (void)save(m_operation, place, 0);
        (void)save(m_operation, place, 1);
        if (!Place::leftovers(work()).isEmpty())
            find(QStringLiteral("there after the next save: %1")
                     .arg(Place::leftovers(work()).join(QStringLiteral(", "))));
        return 1;
    }

    Operation m_operation;
    std::mt19937 *m_random;
    Findings *m_findings;
    QTemporaryDir m_folder;
    Content m_seen[2];
};

/// Two programs that write one survey, each with names of its own.
class TwoWriters
{
public:
    TwoWriters(std::mt19937 *random, Findings *findings)
        : m_random(random)
        , m_findings(findings)
    {
        Place::make(m_folder.filePath(QStringLiteral("work")));
    }

    void run(int rounds)
    {
        for (int round = 0; round < rounds; ++round) {
            {
                Program first([&](const SharedDiary &diary) { write(2 * round, diary); });
                Program second([&](const SharedDiary &diary) { write(2 * round + 1, diary); });
                first.waitUntilReady();
                second.waitUntilReady();
                ::usleep(static_cast<useconds_t>((*m_random)() % 20000));
                (round % 3 == 0 ? first : second).kill();
                if (round % 3 == 2)
                    ::usleep(static_cast<useconds_t>((*m_random)() % 20000));
                first.kill();
                second.kill();
                for (const Program *program : {&first, &second}) {
                    if (program->diary->failed != 0)
                        find(QString::fromUtf8(program->diary->error));
                    m_done[2 * round + (program == &second)] = program->diary->done;
                    m_total += program->diary->done;
                }
            }
            check(round);
            clear();
        }
        std::printf("%d saves of two writers were told as done\n", m_total);
    }

private:
    static QString name(const char *kind, int program, int number)
    {
        return QStringLiteral("%1 %2 %3").arg(QString::fromLatin1(kind)).arg(program).arg(number);
    }
    QString survey() const { return m_folder.filePath(QStringLiteral("work/survey")); }
    void find(const QString &what) { m_findings->add(QStringLiteral("two writers"), what); }

    // What each save makes follows from its number: a log, a marker, a well, an edit of the header in turn.
    void write(int program, const SharedDiary &diary) const
    {
        survey::SurveyStore store(survey());
        (void)store.logs(Place::firstWell);
        (void)store.markers(Place::firstWell);
        diary->isReady = 1;
        for (int i = 0;; ++i) {
            ++diary->begun;
            QString error;
            // What is refused because of the other one is tried again, as a user would.
            for (int tries = 0; tries < 1000; ++tries) {
                error = saveOne(&store, program, i);
                if (error.isEmpty())
                    break;
            }
            if (!error.isEmpty()) {
                qstrncpy(diary->error, qUtf8Printable(error), sizeof diary->error);
                diary->failed = 1;
                return;
            }
            ++diary->done;
        }
    }

    static QString saveOne(survey::SurveyStore *store, int program, int number)
    {
        switch (number % 3) {
        case 0: {
            host::LogData log = logOfState("", number);
            log.name = name("log", program, number);
            return store->writeLog(Place::firstWell, log).error;
        }
        case 1: {
            QVector<host::Marker> markers = store->markers(Place::firstWell).value;
            markers.append({name("marker", program, number), static_cast<float>(number), Qt::red});
            return store->writeMarkers(Place::firstWell, markers).error;
        }
        default:
            return store->addWell(survey_fixture::properties(qPrintable(name("well", program, number)))).error;
        }
    }

    void check(int round)
    {
        const Place next(m_folder.filePath(QStringLiteral("work")));
        survey::SurveyStore store(survey());
        QStringList names;
        for (const host::LogInfo &log : store.logs(Place::firstWell).value)
            names.append(log.name);
        for (const host::Marker &marker : store.markers(Place::firstWell).value)
            names.append(marker.name);
        for (const host::WellEntry &well : store.list().value) {
            names.append(well.name);
            if (!store.header(well.key).ok())
                find(store.header(well.key).error);
        }
        constexpr const char *kinds[] = {"log", "marker", "well"};
        for (const int program : {2 * round, 2 * round + 1})
            for (int i = 0; i < m_done.value(program); ++i)
                if (!names.contains(name(kinds[i % 3], program, i)))
                    find(QStringLiteral("missing: %1").arg(name(kinds[i % 3], program, i)));
        const QStringList problems = store.problems();
        if (!problems.isEmpty())
            find(problems.join(QLatin1Char('\n')));
        const QStringList left = Place::leftovers(survey());
        if (!left.isEmpty())
            find(QStringLiteral("left behind: %1").arg(left.join(QStringLiteral(", "))));
    }

    // Each round begins with few objects, so that all rounds cost the same.
    void clear() const
    {
        Place::copy(m_folder.filePath(QStringLiteral("fresh")), m_folder.filePath(QStringLiteral("work")));
        Place::make(m_folder.filePath(QStringLiteral("work")));
    }

    QTemporaryDir m_folder;
    std::mt19937 *m_random;
    Findings *m_findings;
    QHash<int, int> m_done;
    int m_total = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing_support::prepare();
    const QApplication application(argc, argv);
    const Options options("Programs killed while they save.", "Kills of each kind of save.", 10);
    std::mt19937 random(options.seed);
    Findings findings;
    int kinds = 0;
    for (const Operation &operation : operations(options.only)) {
        if (operation.isOneWay)
            continue;
        KillsOfOne(operation, &random, &findings).run(options.count);
        ++kinds;
        std::printf("%s: killed %d times\n", operation.name, options.count);
        std::fflush(stdout);
    }
    if (options.only.isEmpty() || options.only == "two")
        TwoWriters(&random, &findings).run(options.count);
    std::printf("%d kinds of saves, each killed %d times; %d findings\n", kinds, options.count, findings.count());
    return findings.count() == 0 ? 0 : 1;
}
