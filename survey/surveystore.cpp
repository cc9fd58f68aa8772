#include "survey/surveystore.h"

#include "base/atomicfile.h"
#include "host/feet.h"
#include "survey/surveywrite.h"
#include "survey/wellnames.h"

#include <algorithm>

namespace survey {

SurveyStore::SurveyStore(const QString &surveyDirectory)
    : m_surveyDirectory(surveyDirectory)
    , m_list(surveyDirectory)
{
}

void SurveyStore::setSurveyDirectory(const QString &path)
{
    m_surveyDirectory = path;
    m_list.setSurveyDirectory(path);
    m_logs.forget();
    m_markers.forget();
    m_wells.forget();
    m_problems.clear();
}

QString SurveyStore::wellFolder() const
{
    return m_surveyDirectory + QStringLiteral("/WellInfo");
}

void SurveyStore::report(const QString &path, const QString &problem)
{
    if (m_problems.add(path, problem) && m_problemFound)
        m_problemFound();
}

QStringList SurveyStore::takeProblems()
{
    const QStringList problems = m_problems.sentences();
    m_problems.clear();
    return problems;
}

QString SurveyStore::logProblem(const QString &key, int index)
{
    const host::Outcome<QString> wellStem = stem(key);
    const QString file = m_logs.file(wellStem.value, index);
    return file.isEmpty() ? QString() : m_problems.sentencesOf(file).join(QLatin1Char('\n'));
}

host::Outcome<QVector<host::WellEntry>> SurveyStore::list()
{
    const host::Outcome<ObjectList> list = m_list.read(reporter());
    if (!list.ok())
        return {{}, list.error};
    struct Sortable
    {
        QByteArray key;
        host::WellEntry entry;
    };
    std::vector<Sortable> wells;
    for (const ObjectEntry &entry : list.value.entries())
        if (isWell(entry))
            wells.push_back({hostSortKey(entry.name), {entry.name, wellKey(entry.number)}});
    std::stable_sort(wells.begin(), wells.end(), [](const Sortable &a, const Sortable &b) { return a.key < b.key; });
    QVector<host::WellEntry> result;
    result.reserve(static_cast<int>(wells.size()));
    for (const Sortable &well : wells)
        result.append(well.entry);
    return {result, {}};
}

// The path of the well's files without their endings.
host::Outcome<QString> SurveyStore::stem(const QString &key)
{
    const host::Outcome<ObjectList> list = m_list.read(reporter());
    if (!list.ok())
        return {{}, list.error};
    const ObjectEntry *entry = m_list.well(key);
    if (!entry)
        return {{}, QStringLiteral("The well with the key %1 is not in the list %2.").arg(key, m_list.path())};
    const QString fileName = entry->fileName();
    if (!isPlainFileName(fileName))
        return {{},
                QStringLiteral("The list %1 gives the well \"%2\" no file of its folder (\"%3\").")
                    .arg(m_list.path(), entry->name, fileName)};
    return {wellFolder() + QLatin1Char('/') + stemOf(fileName), {}};
}

host::Outcome<host::WellHeader> SurveyStore::header(const QString &key)
{
    const host::Outcome<WellHead> known = head(key);
    return {known.value.header, known.error};
}

host::Outcome<WellHead> SurveyStore::head(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const host::Outcome<WellFile> file = m_wells.read(wellStem.value, reporter());
    if (!file.ok())
        return {{}, file.error};
    const host::WellHeader header = file.value.header(m_list.well(key)->name);
    return {{isInFeet() ? host::feetToMetres(header) : header, file.value.keys.text("Unique Well ID"),
             trackDepths(file.value)},
            {}};
}

host::Outcome<WellProperties> SurveyStore::properties(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const host::Outcome<WellFile> file = m_wells.readToChange(wellStem.value, reporter());
    if (!file.ok())
        return {{}, file.error};
    return {file.value.properties(m_list.well(key)->name), {}};
}

void SurveyStore::forgetGiven(const QString &stem)
{
    m_wells.forget(stem);
    m_markers.forget(stem);
}

LogFiles::Report SurveyStore::reporter()
{
    return [this](const QString &path, const QString &problem) { report(path, problem); };
}

host::Outcome<QVector<host::LogInfo>> SurveyStore::logs(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    return {m_logs.infos(wellStem.value, reporter()), {}};
}

host::Outcome<host::LogData> SurveyStore::log(const QString &key, int index)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    host::Outcome<host::LogData> log = m_logs.read(wellStem.value, index, reporter());
    if (isInFeet())
        log.value = host::feetToMetres(log.value);
    return log;
}

// Changes files of a well under the survey's lock.
host::Status SurveyStore::changeFiles(const QString &key,
                                      const std::function<host::Status(const QString &wellStem)> &change)
{
    const SurveyWrite write(m_surveyDirectory);
    if (!write.ok())
        return {write.problem()};
    const host::Outcome<QString> wellStem = stem(key);
    return wellStem.ok() ? change(wellStem.value) : host::Status{wellStem.error};
}

host::Status SurveyStore::writeLog(const QString &key, const host::LogData &log)
{
    return changeFiles(key, [&](const QString &wellStem) -> host::Status {
        const host::Outcome<WellFile> well = m_wells.read(wellStem, reporter());
        if (!well.ok())
            return {well.error};
        return m_logs.write(wellStem, isInFeet() ? host::metresToFeet(log) : log, unitOf(well.value, depthUnit()),
                            reporter());
    });
}

host::Status SurveyStore::removeLog(const QString &key, int index)
{
    return changeFiles(key, [&](const QString &wellStem) { return m_logs.remove(wellStem, index, reporter()); });
}

host::Status SurveyStore::renameLog(const QString &key, const QString &oldName, const QString &newName)
{
    return changeFiles(
        key, [&](const QString &wellStem) { return m_logs.rename(wellStem, oldName, newName, reporter()); });
}

host::Outcome<QVector<host::Marker>> SurveyStore::markers(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    return m_markers.read(wellStem.value, depthUnit(), reporter());
}

host::Outcome<QVector<host::Marker>> SurveyStore::markers(const QString &key, const WellHead &wellHead)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    return m_markers.read(wellStem.value, depthUnit(), reporter(), wellHead.track);
}

host::Status SurveyStore::writeMarkers(const QString &key, const QVector<host::Marker> &markers)
{
    const host::Status status = changeFiles(
        key, [&](const QString &wellStem) { return m_markers.write(wellStem, markers, depthUnit(), reporter()); });
    if (status.ok() && m_markersChanged)
        m_markersChanged(key);
    return status;
}

host::Outcome<QStringList> SurveyStore::markersLostByWriting(const QString &key, const QVector<host::Marker> &)
{
    return {{}, stem(key).error};
}

void SurveyStore::reload(const QString &)
{
    m_logs.forget();
}

host::Outcome<QString> SurveyStore::addWell(const WellProperties &given, const QVector<host::LogData> &logs)
{
    WellProperties properties = given;
    properties.name = given.name.trimmed();
    for (const QString &problem : {storedNameProblem(properties.name), wellPropertiesProblem(properties)})
        if (!problem.isEmpty())
            return {{}, problem};
    const SurveyWrite write(m_surveyDirectory);
    if (!write.ok())
        return {{}, write.problem()};
    const host::Outcome<ObjectList> read = m_list.readToChange(reporter());
    if (!read.ok())
        return {{}, read.error};
    ObjectList list = read.value;
    const QString fileStem = newStem(wellFolder(), properties.name, list);
    const int number = list.append(properties.name, wellGroup, fileStem + QStringLiteral(".well"));
    if (number == 0)
        return {{}, QStringLiteral("The list of wells %1 has no number left for a new well.").arg(m_list.path())};
    const QString wellStem = wellFolder() + QLatin1Char('/') + fileStem;
    forgetGiven(wellStem); // of a well that had these files before
    const host::Status status = writeNewWell(wellStem, makeWellFile(properties, depthUnit()), logs, list);
    if (!status.ok()) {
        for (int log = logs.size(); log > 0; --log)
            removeFile(LogFiles::path(wellStem, log));
        removeFile(wellStem + QStringLiteral(".well"));
        return {{}, status.error};
    }
    return {wellKey(number), {}};
}

// The list takes its place last: a crash before it leaves files that nothing names, never an entry without its files.
// With many files one flush is quicker than one a file: the list's new content is flushed with them.
host::Status SurveyStore::writeNewWell(const QString &stem, const WellFile &file, const QVector<host::LogData> &logs,
                                       const ObjectList &list)
{
    if (logs.isEmpty()) {
        const host::Status written = m_wells.write(stem, file);
        return written.ok() ? m_list.write(list) : written;
    }
    host::Status status = m_wells.write(stem, file, base::Flush::Later);
    for (int i = 0; status.ok() && i < logs.size(); ++i)
        status = writeNewLog(stem, i + 1, logs.at(i));
    base::AtomicFileWriter listWriter;
    if (status.ok())
        status = m_list.prepare(list, &listWriter);
    if (status.ok())
        status = flush();
    return status.ok() ? m_list.putInPlace(&listWriter) : status;
}

host::Status SurveyStore::writeNewLog(const QString &stem, int number, const host::LogData &log)
{
    const host::Outcome<QByteArray> bytes = logFileBytes(log, storedName(depthUnit()), nullptr);
    if (!bytes.ok())
        return {QStringLiteral("Cannot write the log \"%1\" of %2: %3.").arg(log.name, stem, bytes.error)};
    const QString path = LogFiles::path(stem, number);
    const base::WriteResult result = base::writeFileAtomically(path, bytes.value, base::Flush::Later);
    return {result.ok() ? QString() : writeErrorText(path, result.error)};
}

host::Status SurveyStore::flush()
{
    const base::WriteResult flushed = base::flushFileSystem(wellFolder());
    return {flushed.ok() ? QString() : writeErrorText(wellFolder(), flushed.error)};
}

host::Status SurveyStore::changeWell(const QString &key, const WellProperties &properties)
{
    const QString problem = wellPropertiesProblem(properties);
    if (!problem.isEmpty())
        return {problem};
    return changeFiles(key,
                       [&](const QString &wellStem) { return m_wells.change(wellStem, properties, reporter()); });
}

host::Outcome<int> SurveyStore::trackPointsBelow(const QString &key, double depth)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {0, wellStem.error};
    const host::Outcome<WellFile> file = m_wells.read(wellStem.value, reporter());
    return {file.ok() ? pointsBelow(file.value, depth) : 0, file.error};
}

// The survey's list, in which the well is.
host::Outcome<ObjectList> SurveyStore::listToChange(const QString &key)
{
    host::Outcome<ObjectList> list = m_list.readToChange(reporter());
    if (!list.ok())
        return list;
    const ObjectEntry *entry = list.value.entry(wellNumber(key));
    if (!entry || !isWell(*entry))
        return {{}, QStringLiteral("The well with the key %1 is not in the list %2.").arg(key, m_list.path())};
    return list;
}

host::Status SurveyStore::renameWell(const QString &key, const QString &name)
{
    const QString problem = storedNameProblem(name.trimmed());
    if (!problem.isEmpty())
        return {problem};
    const SurveyWrite write(m_surveyDirectory);
    if (!write.ok())
        return {write.problem()};
    host::Outcome<ObjectList> list = listToChange(key);
    if (!list.ok())
        return {list.error};
    const QString oldName = list.value.entry(wellNumber(key))->name;
    QStringList otherWells;
    for (const ObjectEntry &entry : list.value.entries())
        if (isWell(entry) && entry.number != wellNumber(key))
            otherWells.append(entry.name);
    list.value.rename(wellNumber(key), name.trimmed());
    const host::Status status = m_list.write(list.value);
    if (status.ok() && m_wellRenamed && oldName != name.trimmed())
        m_wellRenamed(oldName, name.trimmed(), otherWells);
    return status;
}

host::Status SurveyStore::removeWell(const QString &key)
{
    const SurveyWrite write(m_surveyDirectory);
    if (!write.ok())
        return {write.problem()};
    const host::Outcome<QString> wellStem = stem(key);
    host::Outcome<ObjectList> list = listToChange(key);
    if (!list.ok())
        return {list.error};
    const QString fileName = list.value.entry(wellNumber(key))->fileName();
    list.value.remove(wellNumber(key));
    // The list goes first: a crash after it leaves files that nothing names.
    const host::Status status = m_list.write(list.value);
    if (!status.ok() || !wellStem.ok())
        return status;
    for (const ObjectEntry &other : list.value.entries())
        if (stemOf(other.fileName()) == stemOf(fileName))
            return {}; // a damaged list: another well still uses the files
    forgetGiven(wellStem.value);
    const QStringList kept = removeWellFiles(wellFolder(), stemOf(fileName));
    if (!kept.isEmpty())
        return {
            QStringLiteral("The well is no longer in the list, but these files of it could not be deleted in %1: %2.")
                .arg(wellFolder(), kept.join(QStringLiteral(", ")))};
    return {};
}

} // namespace survey
