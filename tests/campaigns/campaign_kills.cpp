// Programs are killed at random moments while they save one state over the other, again and again: at the next start
// the old or the new state is there, what was told as done is not lost, and nothing is left behind. And two programs
// that write the same survey, of which one or both are killed: no save that was told as done is missing.
//
//     build/release/tests/campaign_kills [--count KILLS_OF_EACH_KIND] [--seed NUMBER] [--only SAVE | --only two | --only batch]

#include "killedprogram.h"
#include "operations.h"
#include "options.h"
#include "support/testmain.h"
#include "twowriters.h"

#include <QTemporaryDir>

#include <random>

using namespace campaign;

namespace {

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
            ::usleep(static_cast<useconds_t>((*m_random)() % m_operation.killWithinUs));
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
        TwoWriters(TwoWriters::Second::Workbench, &random, &findings).run(options.count);
    if (options.only.isEmpty() || options.only == "batch")
        TwoWriters(TwoWriters::Second::BatchTool, &random, &findings).run(qMax(1, options.count / 5));
    std::printf("%d kinds of saves, each killed %d times; %d findings\n", kinds, options.count, findings.count());
    return findings.count() == 0 ? 0 : 1;
}
