// The batch tool, as its program is run: import of many LAS files, and the check of a large survey.

#include "benchsupport.h"

#include "datastore/project.h"
#include "datastore/projectdata.h"
#include "las/importplan.h"
#include "las/importrun.h"
#include "las/resampling.h"
#include "programs/batch/session.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <fcntl.h>
#include <random>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int fileCount = 100;
constexpr int fileSize = 5 * 1000 * 1000;
constexpr int curveCount = 20;
constexpr char interval[] = "0.1";

void runBatch(const QStringList &arguments)
{
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/lorva-batch");
    QProcess batch;
    batch.setStandardOutputFile(QProcess::nullDevice());
    batch.start(program, arguments);
    if (!batch.waitForFinished(-1) || batch.exitCode() != 0)
        qFatal("%s", batch.readAllStandardError().constData());
}

/// Seconds of processor time, of this process and of all that it waited for.
double processorSeconds()
{
    double seconds = 0;
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        ::getrusage(who, &usage);
        for (const timeval &time : {usage.ru_utime, usage.ru_stime})
            seconds += static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    }
    return seconds;
}

/// As bench::compare(), and the ratio of processor times, also divided by the cores that the subject used: on a machine that
/// others use as well that is what tells.
void compare(benchmark::State &state, const std::function<void()> &reference, const std::function<void()> &subject)
{
    double seconds[2] = {0, 0};
    const auto counted = [&seconds](int which, const std::function<void()> &work) {
        const double before = processorSeconds();
        work();
        seconds[which] += processorSeconds() - before;
    };
    bench::compare(
        state, [&] { counted(0, reference); }, [&] { counted(1, subject); });
    const int cores = QThread::idealThreadCount();
    state.counters["cpu_ratio_x_cores"] = seconds[1] / seconds[0];
    state.counters["cpu_ratio"] = seconds[1] / seconds[0] / cores;
}

/// The numbers are the same in all files; only the well differs.
QStringList lasFiles()
{
    static QTemporaryDir folder;
    static QStringList files;
    if (!files.isEmpty())
        return files;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> digits(1000000, 99999999);
    const int rows = fileSize / (curveCount * 10);
    QByteArray data = "~A\n";
    for (int row = 0; row < rows; ++row) {
        data += QByteArray::number(row * 0.1524, 'f', 4).rightJustified(9);
        for (int i = 1; i < curveCount; ++i)
            data += ' ' + QByteArray::number(digits(random) / 10000.0, 'f', 4).rightJustified(9);
        data += '\n';
    }
    for (int well = 0; well < fileCount; ++well) {
        QByteArray header = "~Version\nVERS. 2.0 :\nWRAP. NO :\n~Well\nSTRT.M 0 :\nSTOP.M 3800 :\nSTEP.M 0.1524 :\n"
                            "NULL. -999.25 :\nUWI. Well "
            + QByteArray::number(well) + " :\n~Curve\nDEPT.M :\n";
        for (int i = 1; i < curveCount; ++i)
            header += "LAS" + QByteArray::number(i) + ".x : a curve\n";
        files.append(folder.filePath(QStringLiteral("%1.las").arg(well)));
        bench::writePlain(files.last(), header + data);
    }
    return files;
}

QString surveyOfWells(int seed)
{
    bench::SurveySize size;
    size.wells = fileCount;
    size.logs = 0;
    size.samples = 5000;
    size.markers = seed; // two surveys that differ in nothing that counts
    return bench::generatedSurvey(size);
}

/// Reading, resampling and writing in this process, file by file: the parts of an import and nothing else.
class Parts
{
public:
    explicit Parts(const QString &survey)
        : m_host(survey)
        , m_data(m_host, m_asker)
    {
        m_data.catalogue.build();
        openProject(m_host, &m_data.project);
    }

    void work()
    {
        las::ImportOptions options{true, las::floatIntervalFromText(QString::fromLatin1(interval))};
        for (const QString &path : lasFiles()) {
            WellInfo file;
            if (file.load(path) != 0)
                qFatal("cannot load");
            const QString key = m_data.catalogue.wellKey(m_data.catalogue.indexOf(file.uwi));
            las::ImportTab tab = las::importTab(file, path, false);
            for (int i = 1; i < file.curves.size(); ++i) {
                const las::ImportRow row{i, true, file.curves.at(i).logName, QStringLiteral("None")};
                write(key, las::importedCurve(tab, row, options).record);
            }
        }
    }

private:
    void write(const QString &key, const LogCurveData &curve)
    {
        host::LogData log;
        log.name = curve.logName;
        log.unit = curve.unit;
        log.depths = QVector<float>(curve.depths.begin(), curve.depths.end());
        log.values = QVector<float>(curve.values.begin(), curve.values.end());
        if (!m_host.wells().writeLog(key, log).ok())
            qFatal("cannot write");
    }

    bench::SilentAsker m_asker;
    batch::SurveyHost m_host;
    ProjectData m_data;
};

void importManyFiles(benchmark::State &state)
{
    Parts parts(surveyOfWells(1));
    const QString survey = surveyOfWells(2);
    const QStringList words =
        QStringList{QStringLiteral("import"),     QStringLiteral("--survey"),    survey,
                    QStringLiteral("--interval"), QString::fromLatin1(interval), QStringLiteral("--force")}
        + lasFiles();
    compare(
        state, [&parts] { parts.work(); }, [&words] { runBatch(words); });
    state.SetLabel("reference: read, resample and write on one core; cpu_ratio_x_cores at most 1.3");
}
BENCHMARK(importManyFiles)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

qint64 readBytes(const QString &folder)
{
    static char buffer[1 << 16];
    qint64 sum = 0;
    QDirIterator entries(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const int file = ::open(QFile::encodeName(entries.next()).constData(), O_RDONLY | O_CLOEXEC);
        for (ssize_t got = 1; got > 0; sum += got)
            got = ::read(file, buffer, sizeof buffer);
        ::close(file);
    }
    return sum;
}

void checkLargeSurvey(benchmark::State &state)
{
    bench::SurveySize size;
    size.wells = 1000;
    const QString survey = bench::generatedSurvey(size);
    const QStringList words{QStringLiteral("check"), QStringLiteral("--survey"), survey};
    compare(
        state, [&survey] { benchmark::DoNotOptimize(readBytes(survey)); }, [&words] { runBatch(words); });
    state.SetLabel("reference: read the bytes of all files; cpu_ratio at most 2");
}
BENCHMARK(checkLargeSurvey)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QCoreApplication>(argc, argv);
}
