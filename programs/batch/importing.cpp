#include "programs/batch/importing.h"

#include "base/numbers.h"
#include "datastore/curvegroupassignment.h"
#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/groupfiles.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"
#include "datastore/unitclassification.h"
#include "las/feet.h"
#include "las/importnotices.h"
#include "las/importrun.h"
#include "las/lasheader.h"
#include "las/resampling.h"
#include "las/showntext.h"
#include "programs/batch/arguments.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "programs/batch/tables.h"
#include "survey/wellmaker.h"

#include <QFileInfo>
#include <QMap>
#include <QSet>

#include <limits>

namespace batch {

namespace {

QHash<QString, QString> pairs(const Arguments &arguments, const char *option)
{
    QHash<QString, QString> result;
    for (const QString &pair : arguments.values(QString::fromLatin1(option)))
        result.insert(pair.section(QLatin1Char('='), 0, 0), pair.section(QLatin1Char('='), 1));
    return result;
}

QJsonObject logRecord(const QString &name, const QString &curve, const QString &group)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("curve"), curve}, {QStringLiteral("group"), group}};
}

/// The group that the log of a curve has in the end: that of the options, else that of its name. What has none there, or is one
/// of Others, goes into that of its unit at every launch.
QString groupOf(const QString &mnemonic, QString unit, const CurveChoice &choice, CurveGroupFinder *known)
{
    const QString given = choice.groups.value(mnemonic);
    const QString group = given.isEmpty() ? known->group(mnemonic)
        : given == QLatin1String("None")  ? known->group(choice.nameOf(mnemonic))
                                          : given;
    return group == QLatin1String("Others") ? curveGroupOfUnit(unit) : group;
}

/// What to tell of a group that was asked for and is not kept; empty when it is.
QString groupNotice(const QString &curve, const QString &group, const CurveChoice &choice)
{
    return !choice.groups.contains(curve) || choice.groups.value(curve) == group
        ? QString()
        : QStringLiteral(
              "%1 goes into the group %2, not into %3: what has no group or is one of Others is grouped by name "
              "and unit.")
              .arg(las::shortened(curve), group, choice.groups.value(curve));
}

QString clash(const QString &first, const QString &second, const QString &name)
{
    return QStringLiteral(
               "the curves %1 and %2 would both become the log \"%3\"; --rename gives other names, --curves "
               "leaves one out.")
        .arg(las::shortened(first), las::shortened(second), las::shortened(name));
}

/// Imports files into one well, one after the other.
class WellImport
{
public:
    WellImport(Session &session, const host::WellEntry &well, const CurveChoice &choice)
        : m_session(session)
        , m_data(session.project())
        , m_well(well)
        , m_choice(choice)
        , m_run(m_data)
        , m_groups(m_data.project.projectFolder)
    {
    }

    Result run(const QStringList &files);

private:
    void fail(const QString &path, const QString &reason)
    {
        m_result.failures.append(path + QStringLiteral(": ") + reason);
    }
    void note(const QString &path, const QString &sentence)
    {
        m_notices.append(QFileInfo(path).fileName() + QStringLiteral(": ") + sentence);
    }
    void importFile(const QString &path, double wellMaximumDepth);
    void chooseRows(const QString &path, las::ImportTab *tab);
    QString takenNames(const las::ImportTab &tab) const;
    QString nameClash(const las::ImportTab &tab) const;
    QString unwantedProblem(const WellInfo &file) const;
    QString depthProblem(const las::ImportTab &tab) const;
    bool write(const QString &path, const las::ImportTab &tab);

    Session &m_session;
    ProjectData &m_data;
    host::WellEntry m_well;
    const CurveChoice &m_choice;
    las::ImportRun m_run;
    CurveGroupFinder m_groups;
    QSet<QString> m_logNames; ///< those that the well has
    QStringList m_files;
    QStringList m_notices;
    QJsonArray m_logs;
    Result m_result;
};

// The first curve of a data section holds the depths: it becomes a log only where it is asked for.
void WellImport::chooseRows(const QString &path, las::ImportTab *tab)
{
    const WellInfo &file = *tab->file;
    QSet<int> depthCurves;
    for (const LasDataSection &section : file.dataSections)
        depthCurves.insert(section.firstCurve);
    QSet<QString> seen;
    for (int i = 0; i < file.curves.size(); ++i) {
        const QString mnemonic = file.curves.at(i).logName;
        const bool isWanted = m_choice.isWanted(mnemonic) && !file.curves.at(i).values.isEmpty()
            && (!m_choice.curves.isEmpty() || !depthCurves.contains(i));
        if (!isWanted)
            continue;
        if (seen.contains(mnemonic))
            continue; // the file's notices tell it
        if (m_choice.nameOf(mnemonic).trimmed().isEmpty()) {
            note(path, QStringLiteral("the curve %1 has no name and is left out.").arg(i + 1));
            continue;
        }
        seen.insert(mnemonic);
        const QString group = groupOf(mnemonic, file.curves.at(i).unit, m_choice, &m_groups);
        if (const QString notice = groupNotice(mnemonic, group, m_choice); !notice.isEmpty())
            note(path, notice);
        tab->rows.append({i, true, m_choice.nameOf(mnemonic).trimmed(), group});
    }
    for (const QString &mnemonic : m_choice.curves)
        if (!seen.contains(mnemonic))
            note(path, QStringLiteral("it has no curve \"%1\" with samples.").arg(mnemonic));
}

/// Why none of the curves is wanted.
QString WellImport::unwantedProblem(const WellInfo &file) const
{
    QStringList curves;
    for (const LogCurveData &curve : file.curves)
        if (!curve.values.isEmpty())
            curves.append(las::shortened(curve.logName));
    return QStringLiteral("it has no curve \"%1\" with samples%2.")
        .arg(m_choice.curves.join(QStringLiteral("\", \"")), insteadOf(m_choice.curves.value(0), curves));
}

/// Why the well is not deep enough; empty when it is.
QString WellImport::depthProblem(const las::ImportTab &tab) const
{
    const QString problem = las::stopReason(tab, 1);
    return problem.isEmpty() || m_choice.convertsFeet || !las::metresPerFeetUnit(tab.file->depthUnit)
        ? problem
        : problem + QStringLiteral("\nThe depths of the file are in feet: with --convert-feet they become metres.");
}

/// The names that would replace a log of the well; empty when there are none.
QString WellImport::takenNames(const las::ImportTab &tab) const
{
    QStringList taken;
    for (const las::ImportRow &row : tab.rows)
        if (m_logNames.contains(row.logName))
            taken.append(las::shortened(row.logName));
    return taken.join(QStringLiteral(", "));
}

/// Two curves of the file that would become one log; empty when there are none.
QString WellImport::nameClash(const las::ImportTab &tab) const
{
    QHash<QString, QString> curves; // by the names of their logs
    for (const las::ImportRow &row : tab.rows) {
        const QString curve = tab.file->curves.at(row.curve).logName;
        if (curves.contains(row.logName))
            return clash(curves.value(row.logName), curve, row.logName);
        curves.insert(row.logName, curve);
    }
    return {};
}

/// True when a log of the file was written.
bool WellImport::write(const QString &path, const las::ImportTab &tab)
{
    const int before = m_logs.size();
    for (const las::ImportRow &row : tab.rows) {
        LogOutcome outcome = LogOutcome::Written;
        if (!m_session.isDryRun()) {
            const HeldSignals held;
            outcome = m_run.write(tab, row, m_choice.options);
        }
        if (outcome != LogOutcome::Written) {
            const QString why = m_run.error().isEmpty() ? QStringLiteral("the well cannot be read.") : m_run.error();
            fail(path,
                 QStringLiteral("the log \"%1\" was not written into the well \"%2\": %3")
                     .arg(las::shortened(row.logName), m_well.name, why));
            continue;
        }
        m_logNames.insert(row.logName);
        m_logs.append(logRecord(row.logName, tab.file->curves.at(row.curve).logName, row.group));
    }
    return m_logs.size() > before;
}

void WellImport::importFile(const QString &path, double wellMaximumDepth)
{
    WellInfo file;
    if (file.load(path) != 0) {
        fail(path,
             QFileInfo::exists(path) ? QStringLiteral("it cannot be read.")
                                     : QStringLiteral("there is no such file."));
        return;
    }
    if (file.curves.isEmpty()) {
        const QString notLas = las::readHeader(path).error;
        if (!notLas.isEmpty()) {
            m_result.failures.append(notLas);
            return;
        }
    }
    QString problem = importProblem(file);
    las::ImportTab tab = las::importTab(file, path, m_choice.convertsFeet);
    tab.wellName = m_well.name;
    tab.wellKey = m_well.key;
    tab.wellMaximumDepth = wellMaximumDepth;
    if (problem.isEmpty()) {
        chooseRows(path, &tab);
        if (tab.rows.isEmpty())
            problem = unwantedProblem(file);
    }
    if (problem.isEmpty())
        problem = depthProblem(tab);
    if (problem.isEmpty())
        problem = las::refusal({tab}, m_choice.options);
    if (problem.isEmpty())
        problem = nameClash(tab);
    const QString taken = takenNames(tab);
    if (problem.isEmpty() && !taken.isEmpty() && !m_session.isForced())
        problem = QStringLiteral("the well \"%1\" has logs of these names: %2. --force replaces them, --rename gives "
                                 "others, --curves leaves them out.")
                      .arg(m_well.name, taken);
    if (!problem.isEmpty()) {
        fail(path, problem);
        return;
    }
    for (const QString &notice : fileNotices(file, m_choice.convertsFeet))
        note(path, notice);
    if (write(path, tab))
        m_files.append(path);
}

Result WellImport::run(const QStringList &files)
{
    const int index = m_data.catalogue.indexOfKey(m_well.key);
    const auto record = m_data.catalogue.readWellRecord(index, WellsCatalogue::OnFailure::BeSilent);
    if (!record)
        return Result::failed(m_well.name + QStringLiteral(": ") + m_session.store().header(m_well.key).error);
    const QStringList names = m_data.catalogue.logNames(index);
    m_logNames = QSet<QString>(names.begin(), names.end());
    for (const QString &path : files)
        importFile(path, record->totalDepth);
    if (!m_run.unsuitedCurves().isEmpty())
        m_notices.append(las::unsuitedWarning(m_run.unsuitedCurves()));
    if (m_files.isEmpty())
        return m_result;
    Record imported;
    imported[QLatin1String("well")] = m_well.name;
    imported[QLatin1String("isNew")] = false;
    imported[QLatin1String("files")] = QJsonArray::fromStringList(m_files);
    imported[QLatin1String("logs")] = m_logs;
    imported[QLatin1String("notices")] = QJsonArray::fromStringList(m_notices);
    m_result.records.append(imported);
    return m_result;
}

QVector<double> withGaps(const QVector<float> &values)
{
    QVector<double> result;
    result.reserve(values.size());
    for (const float value : values)
        result.append(host::isUndefined(value) ? std::numeric_limits<double>::quiet_NaN()
                                               : static_cast<double>(value));
    return result;
}

/// Puts the log on an even grid; false where its depths or the interval do not allow it.
bool resampleLog(host::LogData *log, double interval)
{
    const QVector<double> depths(log->depths.begin(), log->depths.end());
    if (!las::differsFromStep(depths, interval))
        return true;
    if (!las::isStrictlyIncreasing(depths)
        || !las::gridProblem(depths.first(), depths.last(), interval, log->name).isEmpty())
        return false;
    const las::Samples samples = las::resampleRuns(depths, withGaps(log->values), interval);
    log->depths.clear();
    log->values.clear();
    for (int i = 0; i < samples.depths.size(); ++i) {
        const double value = samples.values.at(i);
        log->depths.append(static_cast<float>(samples.depths.at(i)));
        log->values.append(std::isnan(value) ? host::undefinedValue : static_cast<float>(value));
    }
    return true;
}

bool hasSample(const host::LogData &log)
{
    return std::any_of(log.values.begin(), log.values.end(), [](float value) { return !host::isUndefined(value); });
}

/// What the options make of the logs of a new well; gives why it cannot be made of them. \a interval is in the survey's
/// depth unit, 0 for none.
QString changeLogs(const CurveChoice &choice, double interval, QVector<host::LogData> *logs, QStringList *notices,
                   QJsonArray *records, CurveGroupFinder *groups)
{
    QVector<host::LogData> kept;
    QHash<QString, QString> curves; // by the names of their logs
    for (host::LogData &log : *logs) {
        const QString curve = log.name;
        if (!choice.isWanted(curve))
            continue;
        if (interval > 0 && !resampleLog(&log, interval))
            notices->append(QStringLiteral("%1 keeps its samples: the interval cannot be applied to its depths.")
                                .arg(las::shortened(curve)));
        log.name = choice.nameOf(curve);
        if (!hasSample(log)) {
            notices->append(QStringLiteral("%1 is left out: it has no sample on the interval's depths.")
                                .arg(las::shortened(curve)));
            continue;
        }
        if (curves.contains(log.name))
            return clash(curves.value(log.name), curve, log.name);
        curves.insert(log.name, curve);
        const QString group = groupOf(curve, log.unit, choice, groups);
        if (const QString notice = groupNotice(curve, group, choice); !notice.isEmpty())
            notices->append(notice);
        records->append(logRecord(log.name, curve, group));
        kept.append(log);
    }
    *logs = kept;
    if (kept.isEmpty())
        notices->append(QStringLiteral("The well gets no logs."));
    return {};
}

bool isAtOneDepth(const LogCurveData &curve)
{
    return curve.depths.size() > 1 && std::all_of(curve.depths.begin(), curve.depths.end(), [&curve](double depth) {
               return depth == curve.depths.first();
           });
}

} // namespace

CurveChoice::CurveChoice(const Arguments &arguments)
    : curves(arguments.values(QStringLiteral("--curves")))
    , groups(pairs(arguments, "--map"))
    , names(pairs(arguments, "--rename"))
    , convertsFeet(arguments.has(QStringLiteral("--convert-feet")))
{
    for (QString &group : groups)
        group = asListed(curveGroupNames(), group);
    options.isResampling = arguments.has(QStringLiteral("--interval"));
    options.interval = las::floatIntervalFromText(arguments.value(QStringLiteral("--interval")));
}

QStringList fileNotices(const WellInfo &file, bool convertsFeet)
{
    las::NoticeTexts texts;
    texts.feet = convertsFeet ? QStringLiteral("They are converted to metres.")
                              : QStringLiteral("They are taken as metres unless --convert-feet is given.");
    texts.repeatedNames = QStringLiteral("The first of each counts.");
    return las::importNotices(file, std::numeric_limits<int>::max(), texts);
}

QString importProblem(const WellInfo &file)
{
    if (file.wrapped)
        return QStringLiteral(
            "it is wrapped, so the import would read wrong values; \"lorva-batch las-unwrap\" makes a "
            "file of it that can be imported.");
    QSet<int> depthCurves;
    for (const LasDataSection &section : file.dataSections)
        depthCurves.insert(section.firstCurve);
    const LogCurveData *sampled = nullptr;
    bool hasLog = false;
    for (int i = 0; i < file.curves.size(); ++i) {
        const LogCurveData &curve = file.curves.at(i);
        if (curve.values.isEmpty())
            continue;
        sampled = &curve;
        if (depthCurves.contains(i))
            continue;
        if (!isAtOneDepth(curve))
            return {};
        hasLog = true;
    }
    if (!sampled)
        return QStringLiteral("it has no curve with samples.");
    return hasLog ? QStringLiteral("all its depths are %1: no sample has a place.")
                        .arg(QString::fromLatin1(base::formatGeneral(sampled->depths.first())))
                  : QStringLiteral("it has no curve but its depths.");
}

Result importIntoWell(Session &session, const host::WellEntry &well, const QStringList &files,
                      const CurveChoice &choice)
{
    return WellImport(session, well, choice).run(files);
}

Result importAsNewWell(Session &session, const survey::NewWell &well, const CurveChoice &choice)
{
    CurveGroupFinder groups(session.projectFolder());
    QJsonArray logs;
    survey::WellOrder order;
    order.properties = survey::wellProperties(well.texts);
    order.files = well.files;
    const double interval = choice.options.isResampling
        ? survey::fromMetres(static_cast<double>(choice.options.interval), session.store().depthUnit())
        : 0;
    order.changeLogs = [&](QVector<host::LogData> *given, QStringList *notices) {
        return changeLogs(choice, interval, given, notices, &logs, &groups);
    };
    order.isTrial = session.isDryRun();
    survey::MadeWell made;
    {
        const HeldSignals held;
        made = survey::makeWell(session.store(), order);
    }
    if (!made.error.isEmpty())
        return Result::failed(made.name + QStringLiteral(": ") + made.error);
    Record record;
    record[QLatin1String("well")] = made.name;
    record[QLatin1String("isNew")] = true;
    record[QLatin1String("files")] = QJsonArray::fromStringList(well.files);
    record[QLatin1String("logs")] = logs;
    record[QLatin1String("notices")] = QJsonArray::fromStringList(well.allNotes() + made.notices);
    return {{record}, {}, {}, {}};
}

namespace {

/// What of the groups is not in the project's files, as sentences that name them: the window's parts pass over what they
/// cannot write. \a groups by the names of logs.
QStringList unkeptGroups(const QString &project, const QMap<QString, QString> &groups)
{
    CurveGroupTable stored;
    stored.read(project);
    QStringList names;
    QSet<QString> unlisted;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        const QString field = textfields::fieldName(group.key());
        if (stored.group(group.key()) != group.value())
            names.append(las::shortened(group.key()));
        QStringList listed = readGroupFile(project, group.value());
        for (QString &name : listed)
            name = textfields::fieldName(name);
        if (!listed.contains(field))
            unlisted.insert(group.value());
    }
    QStringList problems;
    if (!names.isEmpty())
        problems.append(
            QStringLiteral("The curve groups of these logs were not kept: %1; the file %2 cannot be written.")
                .arg(names.join(QStringLiteral(", ")), CurveGroupTable::path(project)));
    QStringList files;
    for (const QString &group : qAsConst(unlisted))
        files.append(groupFilePath(project, group));
    files.sort();
    for (const QString &file : qAsConst(files))
        problems.append(
            QStringLiteral("Logs were not added to their curve group: the file %1 cannot be written.").arg(file));
    return problems;
}

/// The same for the default logs of new wells.
QStringList unkeptDefaults(const QString &project, const Result &imported)
{
    QStringList problems;
    for (const Record &record : imported.records) {
        const QString path = defaultLogsPath(project, record.value(QLatin1String("well")).toString());
        if (record.value(QLatin1String("isNew")).toBool()
            && readProjectFile(project, path).state != ProjectFile::State::Read)
            problems.append(QStringLiteral("The well \"%1\" has no default logs: the file %2 cannot be written.")
                                .arg(record.value(QLatin1String("well")).toString(), path));
    }
    return problems;
}

} // namespace

QStringList assignGroups(Session &session, const Result &imported)
{
    ProjectData &data = session.projectToWrite();
    CurveGroupAssignments groups(data.project.projectFolder);
    QMap<QString, QString> wanted;
    for (const Record &record : imported.records) {
        for (const QJsonValue &log : record.value(QLatin1String("logs")).toArray()) {
            const QJsonObject object = log.toObject();
            const QString name = object.value(QLatin1String("name")).toString();
            const QString group = object.value(QLatin1String("group")).toString();
            groups.add(name, group);
            wanted.insert(name, group);
        }
    }
    const HeldSignals held;
    groups.write();
    session.readWells();
    runDefaultLogsPass(data, [] { return !HeldSignals::isOneWaiting(); });
    return unkeptGroups(data.project.projectFolder, wanted) + unkeptDefaults(data.project.projectFolder, imported);
}

QVector<Field> importFields()
{
    return {
        textField("well", "Well", "name of the well"),
        flagField("isNew", "New", "whether the well was made"),
        isWrittenField(),
        textsField("files", "Files", "paths of the files that went into it"),
        recordsField("logs", "Logs", "the logs that it got",
                     {textField("name", "Log", "name of the log"),
                      textField("curve", "Curve", "mnemonic in the file"),
                      textField("group", "Group", "curve group")}),
        textsField("notices", "Notices", "what was left out or changed, and what is unusual about the files"),
    };
}

} // namespace batch
