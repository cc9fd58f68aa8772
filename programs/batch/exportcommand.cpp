#include "base/leftovers.h"
#include "base/madefolders.h"
#include "base/safename.h"
#include "las/curvetextwriter.h"
#include "las/laswriter.h"
#include "las/resampling.h"
#include "programs/batch/commands.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "programs/batch/tables.h"
#include "programs/batch/workers.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace batch {

namespace {

const char columnsFormat[] = "columns";
constexpr double usualInterval = 0.1524; // of the window too

struct Order
{
    host::WellEntry well;
    QString folder;
    QStringList wanted; ///< names of logs; empty for all
    double interval = usualInterval;
    bool isColumns = false;
    bool isForced = false;
    bool isDryRun = false;
};

QString columnsFolder(const Order &order)
{
    return order.folder + QLatin1Char('/') + base::fileNameFor(order.well.name);
}

QString pathOf(const Order &order, const QString &logName)
{
    const QString suffix = QStringLiteral(".txt");
    return order.isColumns
        ? columnsFolder(order) + QLatin1Char('/') + base::fileNameFor(logName, suffix.size()) + suffix
        : order.folder + QLatin1Char('/') + las::lasFileName(order.well.name);
}

Record recordOf(const Order &order, const QString &path, const QStringList &logs)
{
    Record record;
    record[QLatin1String("file")] = path;
    record[QLatin1String("well")] = order.well.name;
    record[QLatin1String("logs")] = QJsonArray::fromStringList(logs);
    return record;
}

/// Exports one well; its failures begin with the well's name.
class WellExport
{
public:
    WellExport(Session &session, const Order &order)
        : m_session(session)
        , m_data(session.project())
        , m_order(order)
        , m_well(m_data.catalogue.indexOfKey(order.well.key))
    {
    }

    Result run();

private:
    void fail(const QString &reason) { m_result.failures.append(m_order.well.name + QStringLiteral(": ") + reason); }
    bool chooseLogs();
    void tellDamaged();
    bool mayWrite(const QString &path);
    std::optional<LogCurveData> read(const las::ListedLog &log);
    void writeLasFile(const WellRecord &well);
    void writeColumns();
    void note(const QString &path, const base::WriteResult &written, const QStringList &logs);

    Session &m_session;
    ProjectData &m_data;
    Order m_order;
    int m_well;
    QVector<las::ListedLog> m_logs;
    Result m_result;
};

bool WellExport::chooseLogs()
{
    const QStringList names = m_well >= 0 ? m_data.catalogue.logNames(m_well) : QStringList();
    for (int row = 0; row < names.size(); ++row)
        if (m_order.wanted.isEmpty() || m_order.wanted.contains(names.at(row)))
            m_logs.append({names.at(row), row});
    for (const QString &name : qAsConst(m_order.wanted))
        if (!names.contains(name))
            fail(QStringLiteral("it has no log \"%1\"%2.").arg(name, insteadOf(name, names)));
    if (names.isEmpty())
        fail(QStringLiteral("it has no logs."));
    return !m_logs.isEmpty() && m_result.failures.isEmpty();
}

bool WellExport::mayWrite(const QString &path)
{
    if (m_order.isForced || !QFileInfo::exists(path))
        return true;
    fail(existsProblem(path));
    return false;
}

std::optional<LogCurveData> WellExport::read(const las::ListedLog &log)
{
    auto curve = las::readListedLog(m_data.catalogue, m_well, log, WellsCatalogue::OnFailure::BeSilent);
    if (!curve)
        fail(QStringLiteral("the log \"%1\" cannot be read.").arg(log.name));
    if (const QString problem = m_session.store().logProblem(m_order.well.key, log.row); !problem.isEmpty())
        fail(problem);
    return curve;
}

void WellExport::note(const QString &path, const base::WriteResult &written, const QStringList &logs)
{
    if (written.ok())
        m_result.records.append(recordOf(m_order, path, logs));
    else
        fail(QStringLiteral("cannot write the file %1: %2.").arg(path, written.error));
}

void WellExport::writeLasFile(const WellRecord &well)
{
    const QString path = pathOf(m_order, {});
    if (!mayWrite(path))
        return;
    las::ExportFile file = las::exportFile(well, m_order.well.name, m_order.interval);
    las::NameList unsuited;
    QStringList names;
    for (const las::ListedLog &log : qAsConst(m_logs)) {
        const std::optional<LogCurveData> curve = read(log);
        if (!curve)
            return;
        if (!las::addLog(&file, *curve, true))
            unsuited.add(m_order.well.name, log.name);
        names.append(log.name);
    }
    const QString problem = las::gridProblem(file.range.start, file.range.stop, m_order.interval, m_order.well.name);
    if (!problem.isEmpty()) {
        m_result.failures.append(problem);
        return;
    }
    if (!unsuited.isEmpty())
        m_result.notices.append(las::unsuitedExportWarning(unsuited));
    base::WriteResult written;
    if (!m_order.isDryRun) {
        const HeldSignals held;
        bool isCreated = false;
        written = las::writeLas(
            path, file, [] { return !HeldSignals::isOneWaiting(); }, &isCreated);
    }
    note(path, written, names);
}

void WellExport::writeColumns()
{
    if (!m_order.isDryRun)
        base::removeLeftovers(columnsFolder(m_order)); // of programs that died while they exported
    for (const las::ListedLog &log : qAsConst(m_logs)) {
        const QString path = pathOf(m_order, log.name);
        if (!mayWrite(path))
            continue;
        const std::optional<LogCurveData> curve = read(log);
        if (!curve)
            continue;
        base::WriteResult written;
        if (!m_order.isDryRun) {
            const HeldSignals held;
            base::MadeFolders made(columnsFolder(m_order));
            QDir().mkpath(columnsFolder(m_order)); // the write says what went wrong
            written = base::writeFileAtomically(path, las::curveText(m_order.well.name, *curve));
            if (written.ok())
                made.keep();
        }
        note(path, written, {log.name});
    }
}

/// Logs that are damaged are not among the well's: who wants all of them is told.
void WellExport::tellDamaged()
{
    survey::SurveyStore store(m_data.host.surveyDirectory()); // that of the session knows the damage of all wells
    if (const auto logs = store.logs(m_order.well.key); !logs.ok())
        fail(logs.error);
    for (const QString &problem : store.takeProblems())
        if (const QString failure = m_order.well.name + QStringLiteral(": ") + problem;
            !m_result.failures.contains(failure)) // a log that was read told it already
            m_result.failures.append(failure);
}

Result WellExport::run()
{
    const auto record = m_data.catalogue.readWellRecord(m_well, WellsCatalogue::OnFailure::BeSilent);
    if (!record) {
        fail(m_session.store().header(m_order.well.key).error);
        return m_result;
    }
    const bool areChosen = chooseLogs();
    if (areChosen && m_order.isColumns)
        writeColumns();
    else if (areChosen)
        writeLasFile(*record);
    if (!areChosen || m_order.wanted.isEmpty())
        tellDamaged();
    return m_result;
}

Result run(Session &session, const Arguments &arguments)
{
    Order order;
    order.folder = QDir::current().absoluteFilePath(arguments.value(QStringLiteral("--out")));
    order.wanted = arguments.values(QStringLiteral("--logs"));
    order.interval = arguments.number(QStringLiteral("--interval")).value_or(usualInterval);
    order.isColumns = arguments.value(QStringLiteral("--format")) == QLatin1String(columnsFormat);
    order.isForced = session.isForced();
    order.isDryRun = session.isDryRun();
    if (!QFileInfo(order.folder).isDir())
        return Result::failed(QStringLiteral("There is no folder %1.").arg(order.folder));
    Result result;
    QVector<Order> orders;
    QStringList names;
    QSet<QString> targets;
    QSet<QString> keys;
    for (const QString &name : arguments.operands()) {
        const host::Outcome<host::WellEntry> well = session.well(name);
        if (well.ok() && keys.contains(well.value.key))
            continue; // given by name and by key
        keys.insert(well.value.key);
        order.well = well.value;
        const QString target = order.isColumns ? columnsFolder(order) : pathOf(order, {});
        if (!well.ok())
            result.failures.append(well.error);
        else if (targets.contains(target))
            result.failures.append(QStringLiteral("%1: %2 is written for another well already.").arg(name, target));
        else {
            orders.append(order);
            names.append(order.well.name);
            targets.insert(target);
        }
    }
    session.project(); // read once, not by each child
    if (!session.isDryRun())
        base::removeLeftovers(order.folder); // of programs that died while they exported
    result.add(runPieces(QStringLiteral("Exporting"), names, session.jobs(),
                         [&](int number) { return WellExport(session, orders.at(number)).run(); }));
    return result;
}

QString problem(const Arguments &arguments)
{
    const bool isColumns = arguments.value(QStringLiteral("--format")) == QLatin1String(columnsFormat);
    return isColumns && arguments.has(QStringLiteral("--interval"))
        ? QStringLiteral("The option --interval belongs to --format las: columns keep the samples as they are.")
        : QString();
}

} // namespace

Command exportCommand()
{
    Command command =
        makeCommand("export", "Write logs of wells into files",
                    "Writes one LAS 2.0 file a well, WELL.las, with its logs on a common step; logs of another step "
                    "are resampled, as the export of the window does. With --format columns each log becomes a text "
                    "file of two columns, WELL/LOG.txt. The folder must exist.",
                    "export Aldra-1 Brisk-1 --out exported --logs GR,RHOB --survey Demo");
    command.operands = {repeatable(wellOperand())};
    command.options = {
        required(valueOption("--out", "DIR", "The folder for the files", {WordKind::Folder})),
        listOption("--logs", "A,B", "Only the logs of these names", {WordKind::Log}),
        valueOption("--interval", "M", "The step of a LAS file in metres; 0.1524 without it",
                    numberRule(las::smallestInterval, 1e6)),
        valueOption("--format", "FORMAT", "las (without the option) or columns",
                    choiceOf({QStringLiteral("las"), QString::fromLatin1(columnsFormat)})),
    };
    command.writes = true;
    command.replaces = true;
    command.usesCores = true;
    command.form.key = QStringLiteral("files");
    command.form.fields = {
        textField("file", "File", "path of the file"),
        textField("well", "Well", "name of the well"),
        textsField("logs", "Logs", "names of the logs in it"),
        isWrittenField(),
    };
    command.problem = problem;
    command.run = run;
    return command;
}

} // namespace batch
