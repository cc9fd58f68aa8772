#include "datastore/curvegroupassignment.h"
#include "datastore/curvegroups.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"
#include "programs/batch/commands.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "programs/batch/tables.h"
#include "welldata/defaultdata.h"

#include <algorithm>
#include <utility>

namespace batch {

namespace {

/// The defaults that the well's file holds; an error where it cannot be read or is another well's.
host::Outcome<DefaultLogs> readDefaults(const QString &project, const QString &wellName)
{
    const QString path = defaultLogsPath(project, wellName);
    const ProjectFile file = readProjectFile(project, path);
    if (file.state == ProjectFile::State::Missing)
        return {};
    if (file.state == ProjectFile::State::Unreadable)
        return {{}, QStringLiteral("Cannot read the file %1.").arg(path)};
    const welldata::DefaultDataFile read = welldata::parseDefaultData(file.bytes);
    if (!welldata::isOfWell(read, wellName))
        return {{}, QStringLiteral("The file %1 is of another well, \"%2\".").arg(path, read.wellName)};
    return {read.logs, {}};
}

/// Sets the default of the group, or takes it away where \a log is empty; \a lost gets what was one and is no more.
void setDefault(DefaultLogs *defaults, const QString &group, const QString &log, QStringList *lost)
{
    const QString asRead = textfields::fieldName(log);
    for (int i = defaults->groups.size(); i-- > 0;) {
        // A log is the default of one group.
        if (defaults->groups.at(i) != group
            && (log.isEmpty() || textfields::fieldName(defaults->logs.at(i)) != asRead))
            continue;
        if (defaults->groups.at(i) != group || textfields::fieldName(defaults->logs.at(i)) != asRead)
            lost->append(defaults->groups.at(i) + QLatin1Char('=') + defaults->logs.at(i));
        defaults->groups.removeAt(i);
        defaults->logs.removeAt(i);
    }
    if (log.isEmpty())
        return;
    defaults->groups.append(group);
    defaults->logs.append(log);
}

/// Brings the defaults into the order of the well's logs, as the editor writes them; those of logs that are gone come last.
void sortByLogs(DefaultLogs *defaults, const QStringList &names)
{
    QVector<std::pair<int, int>> places;
    for (int i = 0; i < defaults->logs.size(); ++i) {
        const int place = names.indexOf(defaults->logs.at(i));
        places.append({place < 0 ? names.size() : place, i});
    }
    std::sort(places.begin(), places.end());
    DefaultLogs sorted;
    for (const auto &place : qAsConst(places)) {
        sorted.groups.append(defaults->groups.at(place.second));
        sorted.logs.append(defaults->logs.at(place.second));
    }
    *defaults = sorted;
}

/// Every log of the well with its group, those of the defaults with theirs.
DefaultLogs allLogs(const QString &project, const QStringList &names, const DefaultLogs &defaults)
{
    CurveGroupFinder groups(project);
    DefaultLogs all;
    for (const QString &name : names) {
        const int index = defaults.logs.indexOf(name);
        all.logs.append(name);
        all.groups.append(index < 0 ? groups.group(name) : defaults.groups.at(index));
    }
    return all;
}

QStringList groups()
{
    return welldata::groupsWithDefaults(curveGroupNames());
}

/// The group of "GROUP=LOG".
QString groupOf(const QString &pair)
{
    return asListed(groups(), pair.section(QLatin1Char('='), 0, 0));
}

Result store(Session &session, const host::WellEntry &well, const QStringList &pairs, DefaultLogs *defaults)
{
    const auto logs = session.store().logs(well.key);
    if (!logs.ok())
        return Result::failed(logs.error);
    QStringList names;
    for (const host::LogInfo &log : logs.value)
        names.append(log.name);
    Result result;
    QStringList lost;
    for (const QString &pair : pairs) {
        const QString log = pair.section(QLatin1Char('='), 1);
        if (!log.isEmpty() && !names.contains(log))
            result.failures.append(
                QStringLiteral("%1: it has no log \"%2\"%3.").arg(well.name, log, insteadOf(log, names)));
        setDefault(defaults, groupOf(pair), log, &lost);
    }
    if (result.failures.isEmpty() && !lost.isEmpty() && !session.isForced())
        result.failures.append(QStringLiteral("%1: these default logs would be no more: %2; --force replaces them.")
                                   .arg(well.name, lost.join(QStringLiteral(", "))));
    if (!result.failures.isEmpty())
        return result;
    sortByLogs(defaults, names);
    if (session.isDryRun()) {
        result.text = QStringLiteral("Nothing is written. The default logs of %1 would be:").arg(well.name);
        return result;
    }
    ProjectData &data = session.projectToWrite();
    const HeldSignals held;
    if (!welldata::storeDefaultData(data, well.name,
                                    {*defaults, allLogs(data.project.projectFolder, names, *defaults)}))
        result.failures.append(
            QStringLiteral("Cannot write the file %1.").arg(defaultLogsPath(data.project.projectFolder, well.name)));
    return result;
}

Result run(Session &session, const Arguments &arguments)
{
    const host::Outcome<host::WellEntry> well = session.well(arguments.operand(0));
    if (!well.ok())
        return Result::failed(well.error);
    host::Outcome<DefaultLogs> defaults = readDefaults(session.projectFolder(), well.value.name);
    const QStringList pairs = arguments.operands().mid(1);
    if (!defaults.ok() && !session.isForced())
        return Result::failed(pairs.isEmpty() ? defaults.error
                                              : defaults.error + QStringLiteral(" With --force it is replaced."));
    Result result;
    if (!pairs.isEmpty())
        result = store(session, well.value, pairs, &defaults.value);
    if (!defaults.ok())
        result.notices.append(defaults.error);
    for (int i = 0; i < defaults.value.logs.size() && result.failures.isEmpty(); ++i) {
        Record record;
        record[QLatin1String("group")] = defaults.value.groups.at(i);
        record[QLatin1String("log")] = defaults.value.logs.at(i);
        result.records.append(record);
    }
    return result;
}

QString problem(const Arguments &arguments)
{
    const QStringList pairs = arguments.operands().mid(1);
    for (const char *option : {"--dry-run", "--force"})
        if (pairs.isEmpty() && arguments.has(QLatin1String(option)))
            return QStringLiteral("The option %1 belongs to GROUP=LOG.").arg(QLatin1String(option));
    QStringList seen;
    for (const QString &pair : pairs) {
        const QString group = groupOf(pair);
        if (!pair.contains(QLatin1Char('=')) || !groups().contains(group))
            return QStringLiteral("A default log is given as GROUP=LOG with a curve group (%1), not as \"%2\".")
                .arg(groups().join(QStringLiteral(", ")), pair);
        if (seen.contains(group))
            return QStringLiteral("The group \"%1\" is given twice.").arg(group);
        seen.append(group);
    }
    return {};
}

} // namespace

Command defaultLogsCommand()
{
    Command command = makeCommand(
        "default-logs", "List or set the default log of each curve group of a well",
        "Lists the default logs that the project has for the well. With GROUP=LOG the log becomes the default of the "
        "group, and its own group is that one from now on, as in the default data editor; \"GROUP=\" takes the "
        "default away. The others stay. Where that ends another default, --force is needed.",
        "default-logs Aldra-1 Gamma=GR Resistivity=LLD --survey Demo");
    command.operands = {wellOperand(),
                        repeatable(optional(operand("GROUP=LOG", "a curve group and the log that stands for it",
                                                    {WordKind::DefaultLog})))};
    command.writes = true;
    command.replaces = true;
    command.form.key = QStringLiteral("defaultLogs");
    command.form.whenEmpty = QStringLiteral("The project has no default logs for the well.");
    command.form.fields = {textField("group", "Group", "curve group"), textField("log", "Log", "name of the log"),
                           isWrittenField("")};
    command.problem = problem;
    command.run = run;
    return command;
}

} // namespace batch
