#include "twowriters.h"

#include "batchtool.h"
#include "killedprogram.h"
#include "operations.h"
#include "support/files.h"
#include "tests/survey/surveyfixture.h"

#include <QDir>
#include <QFile>

namespace campaign {

namespace {

constexpr int triesAtMost = 1000;

// What a save makes follows from its number: a log, a marker or a well.
constexpr const char *kinds[] = {"log", "marker", "well"};

QString saveOne(survey::SurveyStore *store, const QString &name, int number)
{
    switch (number % 3) {
    case 0: {
        host::LogData log = logOfState("", number);
        log.name = name;
        return store->writeLog(Place::firstWell, log).error;
    }
    case 1: {
        QVector<host::Marker> markers = store->markers(Place::firstWell).value;
        markers.append({name, static_cast<float>(number), Qt::red});
        return store->writeMarkers(Place::firstWell, markers).error;
    }
    default:
        return store->addWell(survey_fixture::properties(qPrintable(name))).error;
    }
}

} // namespace

TwoWriters::TwoWriters(Second second, std::mt19937 *random, Findings *findings)
    : m_second(second)
    , m_random(random)
    , m_findings(findings)
{
}

QString TwoWriters::nameOf(int program, int save) const
{
    if (isBatchTool(program))
        return QStringLiteral("B%1_%2").arg(program).arg(save);
    return QStringLiteral("%1 %2 %3").arg(QString::fromLatin1(kinds[save % 3])).arg(program).arg(save);
}

void TwoWriters::run(int rounds)
{
    const unsigned longestUs = m_second == Second::BatchTool ? 1500000 : 20000;
    for (int round = 0; round < rounds; ++round) {
        QDir(work()).removeRecursively(); // few objects, so that all rounds cost the same
        Place::make(work());
        {
            Program first([&](const SharedDiary &diary) { write(2 * round, diary); });
            Program second([&](const SharedDiary &diary) { write(2 * round + 1, diary); });
            first.waitUntilReady();
            second.waitUntilReady();
            ::usleep(static_cast<useconds_t>((*m_random)() % longestUs));
            (round % 3 == 0 ? first : second).kill();
            if (round % 3 == 2)
                ::usleep(static_cast<useconds_t>((*m_random)() % longestUs));
            first.kill();
            second.kill();
            for (const Program *program : {&first, &second}) {
                if (program->diary->failed != 0)
                    find(QString::fromUtf8(program->diary->error));
                const int number = program == &second ? 1 : 0;
                m_done[2 * round + number] = program->diary->done;
                m_total[number] += program->diary->done;
            }
        }
        check(round);
    }
    std::printf("two writers, the second %s: killed %d times, %d and %d saves were told as done\n",
                m_second == Second::BatchTool ? "the batch tool" : "like the first", rounds, m_total[0], m_total[1]);
    std::fflush(stdout);
}

void TwoWriters::write(int program, const SharedDiary &diary) const
{
    survey::SurveyStore store(survey());
    (void)store.logs(Place::firstWell);
    (void)store.markers(Place::firstWell);
    diary->isReady = 1;
    for (int i = 0;; ++i) {
        ++diary->begun;
        QString error;
        // What is refused because of the other one is tried again, as a user would.
        for (int tries = 0; tries == 0 || (tries < triesAtMost && !error.isEmpty()); ++tries)
            error = isBatchTool(program) ? import(program, i) : saveOne(&store, nameOf(program, i), i);
        if (!error.isEmpty()) {
            qstrncpy(diary->error, qUtf8Printable(error), sizeof diary->error);
            diary->failed = 1;
            return;
        }
        ++diary->done;
    }
}

// Why the batch tool did not bring a file's curve into the well.
QString TwoWriters::import(int program, int save) const
{
    const QByteArray name = nameOf(program, save).toUtf8();
    const QString path = work() + QStringLiteral("/out/%1.las").arg(QString::fromUtf8(name));
    files::write(path,
                 "~V\nVERS. 2.0:\nWRAP. NO:\n~W\nNULL. -999.25:\n~C\nDEPT.M :\n" + name
                     + ".GAPI :\n~A\n100 1\n101 2\n102 3\n");
    const auto failure = batchToolFailure(
        {"import", QFile::encodeName(path), "--well", "A", "--jobs", "1", "--survey", QFile::encodeName(survey())});
    return QString::fromUtf8(failure.value_or(QByteArray()));
}

void TwoWriters::check(int round)
{
    const Place next(work());
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
    for (const int program : {2 * round, 2 * round + 1})
        for (int i = 0; i < m_done.value(program); ++i)
            if (!names.contains(nameOf(program, i)))
                find(QStringLiteral("missing: %1").arg(nameOf(program, i)));
    const QStringList problems = store.problems();
    if (!problems.isEmpty())
        find(problems.join(QLatin1Char('\n')));
    const QStringList left = Place::leftovers(survey());
    if (!left.isEmpty())
        find(QStringLiteral("left behind: %1").arg(left.join(QStringLiteral(", "))));
}

} // namespace campaign
