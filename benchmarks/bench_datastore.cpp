// The default-logs pass over a large survey, and listing and loading many display templates.

#include "benchsupport.h"

#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/projectdata.h"
#include "datastore/projectseeds.h"
#include "survey/surveystore.h"
#include "templates/templatestore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QTemporaryDir>

#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {

// A host without an interface, on a survey folder.
class BareHost : public host::Host
{
public:
    explicit BareHost(const QString &survey)
        : m_survey(survey)
        , m_store(survey)
    {
    }
    QString surveyDirectory() const override { return m_survey; }
    QString surveyName() const override { return QStringLiteral("survey"); }
    QString setupDataFolder() const override { return {}; }
    QString documentationFolder() const override { return {}; }
    QIcon icon(const QString &) const override { return {}; }
    void showError(const QString &text) override { qFatal("%s", qUtf8Printable(text)); }
    QWidget *mainWidget() const override { return nullptr; }
    int appendAction(const host::MenuAction &) override { return 0; }
    void removeAction(int) override { }
    host::Wells &wells() override { return m_store; }
    void addListener(host::Listener *) override { }
    void removeListener(host::Listener *) override { }

private:
    QString m_survey;
    survey::SurveyStore m_store;
};

qint64 readBytes(const QVector<QByteArray> &paths)
{
    char buffer[4096];
    qint64 sum = 0;
    for (const QByteArray &path : paths) {
        const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        const ssize_t got = ::read(file, buffer, sizeof buffer);
        if (got < 0)
            qFatal("Cannot read %s", path.constData());
        sum += got;
        ::close(file);
    }
    return sum;
}

// The header of every log and every well: what it takes to know their names and units.
QVector<QByteArray> headerFiles(const QString &survey, const bench::SurveySize &size)
{
    QVector<QByteArray> paths;
    for (int well = 0; well < size.wells; ++well) {
        const QByteArray stem = QFile::encodeName(survey) + "/WellInfo/Well_" + QByteArray::number(well);
        paths.append(stem + ".well");
        for (int log = 1; log <= size.logs; ++log)
            paths.append(stem + '^' + QByteArray::number(log) + ".wll");
    }
    return paths;
}

struct Launch
{
    explicit Launch(const bench::SurveySize &size)
        : survey(bench::generatedSurvey(size))
        , host(survey)
        , data(host, asker)
    {
        data.project.groupNames = curveGroupNames();
        data.catalogue.build();
        if (data.catalogue.wellCount() != size.wells)
            qFatal("The catalogue is not complete");
    }

    // As a new process would do it, in a project folder of its own.
    void run(const QString &projectFolder)
    {
        CurveGroupTable::instance().clear();
        data.project.projectFolder = projectFolder;
        runDefaultLogsPass(data);
    }

    QString survey;
    BareHost host;
    bench::YesAsker asker;
    ProjectData data;
};

void makeProject(const QString &folder)
{
    if (!QDir().mkpath(folder + QStringLiteral("/CurveGroups"))
        || !QDir().mkpath(folder + QStringLiteral("/DefaultLogs")))
        qFatal("Cannot make %s", qUtf8Printable(folder));
}

void checkPass(const QString &folder, const bench::SurveySize &size)
{
    if (QDir(folder + QStringLiteral("/DefaultLogs")).entryList(QDir::Files).size() != size.wells
        || CurveGroupTable::instance().size() != size.logs)
        qFatal("The pass is not complete");
}

const bench::SurveySize passSize{1000, 20, 10, 0};

void defaultLogsFirstPass(benchmark::State &state)
{
    Launch launch(passSize);
    const QVector<QByteArray> headers = headerFiles(launch.survey, passSize);
    const QTemporaryDir projects;
    int used = 0;
    const int runs = static_cast<int>(state.max_iterations) + 1;
    for (int i = 1; i <= runs; ++i)
        makeProject(projects.filePath(QString::number(i)));
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(readBytes(headers)); },
        [&] { launch.run(projects.filePath(QString::number(++used))); });
    checkPass(launch.data.project.projectFolder, passSize);
}
BENCHMARK(defaultLogsFirstPass)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

void defaultLogsSecondPass(benchmark::State &state)
{
    Launch launch(passSize);
    const QVector<QByteArray> headers = headerFiles(launch.survey, passSize);
    const QTemporaryDir project;
    makeProject(project.path());
    launch.run(project.path());
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(readBytes(headers)); }, [&] { launch.run(project.path()); });
    checkPass(project.path(), passSize);
}
BENCHMARK(defaultLogsSecondPass)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(30);

// All that a launch on a survey without a project folder does before its window is made.
void launchFirst(const QString &survey, const QString &place, int wells)
{
    CurveGroupTable::instance().clear();
    BareHost host(survey);
    bench::YesAsker asker;
    ProjectData data(host, asker);
    data.project.groupNames = curveGroupNames();
    data.catalogue.build();
    openProjectFolder(place, &data.project);
    seedProject(data.project.projectFolder);
    runDefaultLogsPass(data);
    if (QDir(data.project.projectFolder + QStringLiteral("/DefaultLogs")).entryList(QDir::Files).size() != wells)
        qFatal("The launch is not complete");
}

void firstLaunch(benchmark::State &state)
{
    const bench::SurveySize few{1000, 20, 10, 0};
    const bench::SurveySize many{2000, 20, 10, 0};
    const bool isAgainstFewer = state.range(0) != 0;
    const QString fewWells = bench::generatedSurvey(few);
    const QString manyWells = bench::generatedSurvey(many);
    const QVector<QByteArray> headers = headerFiles(manyWells, many);
    const QTemporaryDir projects;
    int used = 0;
    const auto launchIn = [&](const QString &survey, const bench::SurveySize &size) {
        const QString place = projects.filePath(QString::number(++used));
        QDir().mkdir(place);
        launchFirst(survey, place, size.wells);
    };
    const auto launchMany = [&] { launchIn(manyWells, many); };
    if (isAgainstFewer)
        bench::compareWork(
            state, [&] { launchIn(fewWells, few); }, launchMany);
    else
        bench::compare(
            state, [&] { benchmark::DoNotOptimize(readBytes(headers)); }, launchMany);
    state.SetLabel(isAgainstFewer ? "reference: 1,000 wells, subject: 2,000; linear is 2"
                                  : "reference: the header files of 2,000 wells read, subject: the launch");
}
BENCHMARK(firstLaunch)->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

constexpr int templateCount = 1000;
constexpr int trackCount = 8;
constexpr int curveCount = 6;

QVector<QByteArray> makeTemplates(const Project &project)
{
    QVector<TemplateCurveRow> rows;
    for (int curve = 0; curve < curveCount; ++curve) {
        TemplateCurveRow row;
        row.group = curveGroupNames().at(1 + curve);
        row.curve = QStringLiteral("Default");
        row.minimum = QStringLiteral("0.00");
        row.maximum = QStringLiteral("200.00");
        row.color = QColor(0x0e, 0x6f, 0x21);
        row.leftFillIndex = curve;
        rows.append(row);
    }
    const QByteArray bytes = trackBytes(QStringLiteral("Linear"), rows);
    QVector<QByteArray> paths;
    for (int i = 0; i < templateCount; ++i) {
        const QString folder = templateFolder(project, QStringLiteral("Template %1").arg(i), QStringLiteral("W"));
        QDir().mkpath(folder);
        for (int track = 1; track <= trackCount; ++track) {
            const QString path = folder + QStringLiteral("/Track_%1.txt").arg(track);
            bench::writePlain(path, bytes);
            paths.append(QFile::encodeName(path));
        }
    }
    return paths;
}

void templateLoading(benchmark::State &state)
{
    const QTemporaryDir folder;
    Project project;
    project.projectFolder = folder.path();
    const QString well = QStringLiteral("W");
    const QVector<QByteArray> paths = makeTemplates(project);
    bench::compare(
        state, [&] { benchmark::DoNotOptimize(readBytes(paths)); },
        [&] {
            int curves = 0;
            for (const QString &name : wellTemplateNames(project, well))
                for (const TrackInfo &track : loadTemplate(project, name, well))
                    curves += track.curves.size();
            if (curves != templateCount * trackCount * curveCount)
                qFatal("Templates are missing");
        });
}
BENCHMARK(templateLoading)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace

int main(int argc, char **argv)
{
    return bench::run<QCoreApplication>(argc, argv);
}
