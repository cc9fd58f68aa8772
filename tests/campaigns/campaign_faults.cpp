// Every kind of save with each of its calls of the system failing in turn: afterwards old or new content is there whole,
// nothing strays, what failed is told, and the next save works.
//
//     build/release/tests/campaign_faults [--count CASES] [--seed NUMBER] [--only SAVE]

#include "diskfaults.h"
#include "operations.h"
#include "options.h"
#include "support/testmain.h"

#include <QTemporaryDir>
#include <QThreadPool>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace campaign;

namespace {

struct NamedFault
{
    Fault fault;
    const char *name;
    bool isOfWrites;
};
constexpr NamedFault faults[] = {
    {Fault::NoSpace, "no space", false},       {Fault::NoAccess, "no access", false},
    {Fault::BrokenDisk, "broken disk", false}, {Fault::ReadOnlyDisk, "read-only disk", false},
    {Fault::ShortWrite, "short write", true},  {Fault::ShortThenFull, "short write, then no space", true},
};

constexpr rlim_t fileSizes[] = {0, 1, 100, 1000, 5000};

/// One way of a save: from one of its two states to the other.
struct Way
{
    Operation operation;
    int to = 1;
    QString from; ///< a folder that holds the state before
    Content before;
    Content after;
    Content seenBefore;
    Content seenAfter;
    std::vector<const char *> calls;
};

struct Case
{
    const Way *way;
    int call; ///< the one that fails; -1 for a limit of file sizes
    int kind; ///< of the faults, or the limit
    bool stays;
};

bool isRemoval(const char *call)
{
    return std::strcmp(call, "unlink") == 0 || std::strcmp(call, "rmdir") == 0 || std::strcmp(call, "unlinkat") == 0;
}

class Campaign
{
public:
    explicit Campaign(const Options &options)
    {
        const QString base = m_folder.filePath(QStringLiteral("base"));
        Place::make(base);
        for (const Operation &operation : operations(options.only)) {
            const QString first = base + QString::number(m_ways.size());
            Place::copy(base, first);
            {
                Place place(first);
                for (const int state : {1, 0, 1, 0})
                    (void)save(operation, place, state);
            }
            addWay(operation, first, 1);
            if (operation.isOneWay)
                continue;
            const QString second = first + QStringLiteral("b");
            Place::copy(first, second);
            {
                Place place(second);
                (void)save(operation, place, 1);
            }
            addWay(operation, second, 0);
        }
    }

    std::vector<Case> cases() const
    {
        std::vector<Case> all;
        for (const auto &way : m_ways) {
            for (size_t call = 0; call < way->calls.size(); ++call)
                for (size_t kind = 0; kind < std::size(faults); ++kind) {
                    const bool isWrite = std::strcmp(way->calls.at(call), "write") == 0;
                    if (faults[kind].isOfWrites && !isWrite)
                        continue;
                    all.push_back({way.get(), static_cast<int>(call), static_cast<int>(kind), false});
                    if (!faults[kind].isOfWrites)
                        all.push_back({way.get(), static_cast<int>(call), static_cast<int>(kind), true});
                }
            for (size_t size = 0; size < std::size(fileSizes); ++size)
                all.push_back({way.get(), -1, static_cast<int>(size), true});
        }
        return all;
    }

    void run(const Case &one)
    {
        m_case = one;
        Place::copy(one.way->from, work());
        if (one.call < 0)
            runWithLimit(one);
        else
            runWithFault(one);
    }

    int findings() const { return m_findings.count(); }

private:
    QString work() const { return m_folder.filePath(QStringLiteral("work")); }

    void addWay(const Operation &operation, const QString &from, int to)
    {
        auto way = std::make_unique<Way>();
        way->operation = operation;
        way->to = to;
        way->from = from;
        Place::copy(from, work());
        way->before = Place::content(work());
        way->seenBefore = Place::asSeen(work());
        Place place(work());
        {
            DiskFaults counted;
            const Saved saved = save(operation, place, to);
            if (!saved.isDone)
                qFatal("\"%s\" fails on a disk without faults: %s", operation.name,
                       qUtf8Printable(saved.said.join(QStringLiteral(" / "))));
            way->calls = counted.calls();
        }
        way->after = Place::content(work());
        way->seenAfter = Place::asSeen(work());
        m_ways.push_back(std::move(way));
    }

    QString caseName() const
    {
        const Way &way = *m_case.way;
        const QString name =
            QStringLiteral("%1 (to state %2), ").arg(QString::fromUtf8(way.operation.name)).arg(way.to);
        if (m_case.call < 0)
            return name + QStringLiteral("files of at most %1 bytes").arg(fileSizes[m_case.kind]);
        return name
            + QStringLiteral("call %1 (%2): %3%4")
                  .arg(m_case.call)
                  .arg(QString::fromLatin1(way.calls.at(static_cast<size_t>(m_case.call))),
                       QString::fromLatin1(faults[m_case.kind].name),
                       m_case.stays ? QStringLiteral(", and it stays") : QString());
    }

    void find(const QString &what) { m_findings.add(caseName(), what); }

    void runWithFault(const Case &one)
    {
        const Way &way = *one.way;
        Place place(work());
        Saved saved;
        {
            const DiskFaults disk(one.call, faults[one.kind].fault, one.stays);
            saved = save(way.operation, place, way.to);
        }
        // What cannot be deleted stays, but is out of sight, and goes at the next start.
        const bool cannotClean = one.stays || isRemoval(way.calls.at(static_cast<size_t>(one.call)));
        if (!cannotClean && !Place::leftovers(work()).isEmpty())
            find(QStringLiteral("left behind: %1").arg(Place::leftovers(work()).join(QStringLiteral(", "))));
        if (one.stays)
            checkAsSeen();
        else
            check(saved, cannotClean);
        if (!saved.isDone || !way.operation.failureText)
            saveAgain(&place, cannotClean);
        checkNextStart();
    }

    void saveAgain(Place *place, bool cannotClean)
    {
        const Way &way = *m_case.way;
        const Saved again = save(way.operation, *place, way.to);
        if (!again.isDone)
            find(QStringLiteral("the next save fails: %1").arg(again.said.join(QStringLiteral(" / "))));
        else if (!cannotClean && Place::content(work()) != way.after)
            find(QStringLiteral("after the next save these differ: %1")
                     .arg(namesThatDiffer(Place::content(work()), way.after)));
    }

    // Files of the process, and of every library in it, cannot become larger.
    void runWithLimit(const Case &one)
    {
        const Way &way = *one.way;
        int ends[2];
        if (::pipe(ends) != 0)
            qFatal("no pipe");
        QThreadPool::globalInstance()->waitForDone(); // a child would wait for threads that it does not have
        const pid_t child = ::fork();
        if (child == 0) {
            Place place(work());
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{fileSizes[one.kind], fileSizes[one.kind]};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            const Saved saved = save(way.operation, place, way.to);
            const QByteArray said = saved.said.join(QLatin1Char('\n')).toUtf8();
            (void)!::write(ends[1], said.constData(), static_cast<size_t>(said.size()));
            ::_exit(saved.isDone ? 0 : 1);
        }
        ::close(ends[1]);
        QByteArray said(4096, '\0');
        const ssize_t got = ::read(ends[0], said.data(), static_cast<size_t>(said.size()));
        said.truncate(static_cast<int>(qMax<ssize_t>(got, 0)));
        ::close(ends[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        if (!WIFEXITED(status)) {
            find(QStringLiteral("the program died"));
            return;
        }
        check({WEXITSTATUS(status) == 0, {QString::fromUtf8(said)}}, false);
        checkNextStart();
    }

    void check(const Saved &saved, bool cannotClean)
    {
        const Way &way = *m_case.way;
        const Content now = Place::content(work());
        const bool isOld = now == way.before;
        const bool isNew = now == way.after;
        const QString said = saved.said.join(QStringLiteral(" / "));
        const bool isPartly = said.contains(QLatin1String("could not be deleted"));
        if (way.operation.unit == Operation::Unit::File) {
            if (!isMixed(now, way.before, way.after))
                find(QStringLiteral("neither old nor new: %1").arg(namesThatDiffer(now, way.before)));
        } else if (isPartly) {
            if (Place::asSeen(work()) != way.seenAfter)
                find(QStringLiteral("the well is still seen"));
        } else if (way.operation.unit == Operation::Unit::Seen) {
            checkAsSeen();
        } else if (!isOld && !isNew && !cannotClean) {
            find(QStringLiteral("neither old nor new: %1").arg(namesThatDiffer(now, way.before)));
        }
        if (!way.operation.failureText)
            return;
        if (saved.isDone && !isNew && !cannotClean)
            find(QStringLiteral("told as done, and it is not"));
        // What is in place may yet be lost where the disk could not be flushed.
        const bool isUnsure =
            m_case.call >= 0 && std::strcmp(way.calls.at(static_cast<size_t>(m_case.call)), "syncfs") == 0;
        if (!saved.isDone && isNew && !isOld && !cannotClean && !isUnsure)
            find(QStringLiteral("told as failed, and it is done: %1").arg(said));
        if (!saved.isDone && !isPartly && !said.contains(QString::fromUtf8(way.operation.failureText)))
            find(QStringLiteral("says \"%1\"").arg(said));
    }

    // On a disk on which nothing can be deleted or put back any more, files stay that nothing names, and a swap of folders
    // that was begun is ended by the next start.
    void checkAsSeen()
    {
        const Way &way = *m_case.way;
        if (way.operation.unit == Operation::Unit::File)
            return;
        const QString lies = m_folder.filePath(QStringLiteral("lies"));
        Place::copy(work(), lies);
        Content seen = seenIn(lies);
        if (seen == way.seenAfter)
            return;
        const QString root = QStringLiteral("out/surveys/");
        if (!seen.contains(root + QStringLiteral("New/"))) { // without a survey the mark of a data root means nothing
            seen.remove(root);
            seen.remove(root + QStringLiteral(".omf"));
        }
        QStringList names = seen.keys();
        std::reverse(names.begin(), names.end()); // what is in a folder comes before it
        for (const QString &name : names) // nor does an empty folder
            if (name.endsWith(QLatin1Char('/')) && !way.before.contains(name) && isEmptyIn(seen, name))
                seen.remove(name);
        if (seen != way.seenBefore)
            find(QStringLiteral("neither old nor new: %1").arg(namesThatDiffer(seen, way.seenBefore)));
    }

    static bool isEmptyIn(const Content &content, const QString &folder)
    {
        const auto next = content.upperBound(folder);
        return next == content.end() || !next.key().startsWith(folder);
    }

    static Content seenIn(const QString &folder)
    {
        const Place next(folder);
        return Place::asSeen(folder);
    }

    void checkNextStart()
    {
        const Place next(work());
        const QStringList left = Place::leftovers(next.survey());
        if (!left.isEmpty())
            find(QStringLiteral("there after the next start: %1").arg(left.join(QStringLiteral(", "))));
    }

    QTemporaryDir m_folder;
    std::vector<std::unique_ptr<Way>> m_ways;
    Case m_case{nullptr, 0, 0, false};
    Findings m_findings;
};

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing_support::prepare();
    const QApplication application(argc, argv);
    const Options options("Every kind of save on disks with faults.", "How many cases, drawn by chance; 0 for all.",
                          300);
    Campaign campaign(options);
    std::vector<Case> cases = campaign.cases();
    std::printf("%d cases in all\n", static_cast<int>(cases.size()));
    if (options.count > 0) {
        std::shuffle(cases.begin(), cases.end(), std::mt19937(options.seed));
        cases.resize(qMin(cases.size(), static_cast<size_t>(options.count)));
    }
    for (const Case &one : cases)
        campaign.run(one);
    std::printf("%d cases, %d findings\n", static_cast<int>(cases.size()), campaign.findings());
    return campaign.findings() == 0 ? 0 : 1;
}
