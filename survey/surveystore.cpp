#include "survey/surveystore.h"

#include "base/atomicfile.h"
#include "base/folderlinks.h"
#include "base/numbers.h"
#include "base/threewaymerge.h"
#include "host/feet.h"
#include "survey/markerfile.h"
#include "survey/surveywrite.h"
#include "survey/wellnames.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cerrno>

namespace survey {

namespace {

constexpr const char *wellFileEndings[] = {".well", ".track", ".wlm", ".wlt", ".csmdl", ".disp"};

QByteArray unitOf(const WellFile &file, DepthUnit surveyUnit)
{
    const QByteArray unit = file.keys.value("Depth-Unit");
    return unit.isEmpty() ? storedName(surveyUnit) : unit;
}

DepthRange depthsOf(const WellFile &well)
{
    return {static_cast<float>(well.track.first().md), static_cast<float>(well.track.last().md)};
}

} // namespace

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
    m_givenMarkers.clear();
    m_givenWells.clear();
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

host::Outcome<WellFile> SurveyStore::readWell(const QString &stem, bool *hasTrackFile)
{
    const QString path = stem + QStringLiteral(".well");
    const host::Outcome<QByteArray> bytes = readFileBytes(path);
    if (!bytes.ok())
        return {{}, bytes.error};
    host::Outcome<WellFile> file = parseWellFile(bytes.value);
    QString cutPath = file.value.isTrackCut ? path : QString();
    const QString trackPath = stem + QStringLiteral(".track");
    const FileRead trackFile = readFile(trackPath);
    bool isCut = false;
    const QVector<TrackPoint> track = parseTrackFile(trackFile.bytes, &isCut);
    const bool isWellFile = file.ok() || file.value.keys.size() > 0;
    if (trackFile.errorCode != 0 && trackFile.errorCode != ENOENT) {
        report(trackPath, unreadableText(trackFile.errorCode));
    } else if (trackFile.errorCode == 0 && track.isEmpty()) {
        report(trackPath, QStringLiteral("it holds no valid well track"));
    } else if (!track.isEmpty() && isWellFile) {
        file.value.track = track;
        file.value.isTrackCut = isCut;
        file.error.clear();
        cutPath = isCut ? trackPath : QString();
        if (hasTrackFile)
            *hasTrackFile = true;
    }
    if (!file.ok())
        return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, file.error)};
    if (!cutPath.isEmpty())
        report(cutPath,
               QStringLiteral("its track ends after %1 points in a line that is none").arg(file.value.track.size()));
    return file;
}

host::Outcome<host::WellHeader> SurveyStore::header(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const host::Outcome<WellFile> file = readWell(wellStem.value);
    if (!file.ok())
        return {{}, file.error};
    const host::WellHeader header = file.value.header(m_list.well(key)->name);
    return {isInFeet() ? host::feetToMetres(header) : header, {}};
}

host::Outcome<WellProperties> SurveyStore::properties(const QString &key)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {{}, wellStem.error};
    const FileState state = fileState(wellStem.value + QStringLiteral(".well"));
    const host::Outcome<WellFile> file = readWell(wellStem.value);
    if (!file.ok())
        return {{}, file.error};
    m_givenWells.insert(key, state);
    return {file.value.properties(m_list.well(key)->name), {}};
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
        const host::Outcome<WellFile> well = readWell(wellStem);
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
    const QString path = wellStem.value + QStringLiteral(".wlm");
    const FileRead read = readFile(path);
    if (read.errorCode != 0) {
        if (read.errorCode == ENOENT) {
            m_givenMarkers.insert(key, {});
            return {};
        }
        const QString error = readErrorText(path, read.errorCode);
        report(path, unreadableText(read.errorCode));
        return {{}, error};
    }
    const host::Outcome<WellFile> well = readWell(wellStem.value);
    if (!well.ok())
        return {{}, well.error};
    QStringList problems;
    host::Outcome<QVector<host::Marker>> markers = parseMarkerFile(read.bytes, depthsOf(well.value), &problems);
    for (const QString &problem : problems)
        report(path, problem);
    if (!markers.ok()) {
        report(path, markers.error);
        markers.error = QStringLiteral("Cannot read the file %1: %2.").arg(path, markers.error);
    }
    if (isInFeet())
        markers.value = host::feetToMetres(markers.value);
    if (markers.ok())
        m_givenMarkers.insert(key, markers.value);
    return markers;
}

// The markers to write: those given, with what another program did to the set since it was read here.
host::Outcome<QVector<host::Marker>> SurveyStore::mergedMarkers(const QString &key,
                                                                const QVector<host::Marker> &given)
{
    const auto known = m_givenMarkers.constFind(key);
    if (known == m_givenMarkers.constEnd())
        return {given, {}};
    const QVector<host::Marker> before = *known;
    const host::Outcome<QVector<host::Marker>> now = markers(key);
    const auto isSame = [](const host::Marker &a, const host::Marker &b) {
        return a.name == b.name && a.depth == b.depth && a.color.rgb() == b.color.rgb();
    };
    if (!now.ok() || std::equal(before.begin(), before.end(), now.value.begin(), now.value.end(), isSame))
        return {given, {}};
    const auto merged = base::threeWayMerge(before, now.value, given, isSame);
    if (merged.conflicts.isEmpty())
        return {merged.records, {}};
    return {{},
            QStringLiteral("Another program changed the marker \"%1\" meanwhile. Nothing was written.")
                .arg(merged.conflicts.first())};
}

host::Status SurveyStore::writeMarkers(const QString &key, const QVector<host::Marker> &given)
{
    const SurveyWrite write(m_surveyDirectory);
    if (!write.ok())
        return {write.problem()};
    const host::Outcome<QVector<host::Marker>> toWrite = mergedMarkers(key, given);
    if (!toWrite.ok())
        return {toWrite.error};
    const QVector<host::Marker> &markers = toWrite.value;
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {wellStem.error};
    const host::Outcome<WellFile> well = readWell(wellStem.value);
    if (!well.ok())
        return {well.error};
    const QString path = wellStem.value + QStringLiteral(".wlm");
    const FileRead old = readFile(path);
    if (old.errorCode != 0 && old.errorCode != ENOENT)
        return {readErrorText(path, old.errorCode)};
    const DepthRange track = depthsOf(well.value);
    host::Outcome<QVector<host::Marker>> stored;
    if (old.errorCode == 0)
        stored = parseMarkerFile(old.bytes, track);
    if (!stored.ok())
        return {QStringLiteral("The file %1 is no list of markers: %2. It was not written over.")
                    .arg(path, stored.error)};
    const base::WriteResult result =
        base::writeFileAtomically(path,
                                  markerFileBytes(isInFeet() ? host::metresToFeet(markers, stored.value) : markers,
                                                  unitOf(well.value, depthUnit()), old.bytes, track));
    if (!result.ok())
        return {writeErrorText(path, result.error)};
    if (m_givenMarkers.contains(key))
        (void)this->markers(key); // this is what a further change begins with
    if (m_markersChanged)
        m_markersChanged(key);
    return {};
}

host::Outcome<QStringList> SurveyStore::markersLostByWriting(const QString &key, const QVector<host::Marker> &)
{
    return {{}, stem(key).error};
}

void SurveyStore::reload(const QString &)
{
    m_logs.forget();
}

// A stem that no well of the list and no file in the folder has: files that were left behind must not become those
// of a new well.
QString SurveyStore::newStem(const QString &name, const ObjectList &list) const
{
    QSet<QString> taken;
    for (const ObjectEntry &entry : list.entries())
        taken.insert(stemOf(entry.fileName()).toLower());
    const auto hasFiles = [this](const QString &stem) {
        const QString path = wellFolder() + QLatin1Char('/') + stem;
        const auto exists = [&path](const char *ending) { return base::isThere(path + QLatin1String(ending)); };
        return std::any_of(std::begin(wellFileEndings), std::end(wellFileEndings), exists)
            || base::isThere(LogFiles::path(path, 1));
    };
    const QString cleaned = cleanedStem(name);
    QString stem = cleaned;
    for (int n = 2; taken.contains(stem.toLower()) || hasFiles(stem); ++n)
        stem = cleaned + QLatin1Char('_') + QString::number(n);
    return stem;
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
    const QString fileStem = newStem(properties.name, list);
    const int number = list.append(properties.name, wellGroup, fileStem + QStringLiteral(".well"));
    if (number == 0)
        return {{}, QStringLiteral("The list of wells %1 has no number left for a new well.").arg(m_list.path())};
    const QString wellStem = wellFolder() + QLatin1Char('/') + fileStem;
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
        const host::Status written = writeWell(stem, file);
        return written.ok() ? m_list.write(list) : written;
    }
    host::Status status = writeWell(stem, file, base::Flush::Later);
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

host::Status SurveyStore::writeWell(const QString &stem, const WellFile &file, base::Flush flush)
{
    const QString path = stem + QStringLiteral(".well");
    const base::WriteResult result = base::writeFileAtomically(path, wellFileBytes(file), flush);
    return {result.ok() ? QString() : writeErrorText(path, result.error)};
}

host::Status SurveyStore::changeWell(const QString &key, const WellProperties &properties)
{
    const QString problem = wellPropertiesProblem(properties);
    if (!problem.isEmpty())
        return {problem};
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {wellStem.error};
    const SurveyWrite write(m_surveyDirectory);
    if (!write.ok())
        return {write.problem()};
    const QString wellPath = wellStem.value + QStringLiteral(".well");
    const auto given = m_givenWells.constFind(key);
    if (given != m_givenWells.constEnd() && !given->hasSameStamp(fileState(wellPath))) {
        m_givenWells.erase(given);
        return {
            QStringLiteral("Another program changed the file %1 meanwhile. It was not written over.").arg(wellPath)};
    }
    m_givenWells.remove(key); // it is about to change
    bool hasTrackFile = false;
    host::Outcome<WellFile> file = readWell(wellStem.value, &hasTrackFile);
    if (!file.ok())
        return {file.error};
    if (file.value.isTrackCut)
        return {QStringLiteral("The track of the well %1 is damaged: changing the well would lose what follows the "
                               "damaged line. Nothing was changed.")
                    .arg(wellStem.value)};
    if (hasTrackFile) {
        // A separate track file hides the track in the main file. First both get the same track, then one goes: at
        // every moment the well is what it was.
        const host::Status status = writeWell(wellStem.value, file.value);
        if (!status.ok())
            return status;
        const QString trackPath = wellStem.value + QStringLiteral(".track");
        if (!removeFile(trackPath))
            return {QStringLiteral("Cannot replace the file %1. The well is unchanged.").arg(trackPath)};
    }
    applyProperties(&file.value, properties);
    return writeWell(wellStem.value, file.value);
}

host::Outcome<int> SurveyStore::trackPointsBelow(const QString &key, double depth)
{
    const host::Outcome<QString> wellStem = stem(key);
    if (!wellStem.ok())
        return {0, wellStem.error};
    const host::Outcome<WellFile> file = readWell(wellStem.value);
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
    list.value.rename(wellNumber(key), name.trimmed());
    return m_list.write(list.value);
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
    // Exactly this stem: "Probe_2" does not take the files of "Probe_2_A" along.
    const QString prefix = stemOf(fileName);
    const QRegularExpression ownFile(QLatin1Char('^') + QRegularExpression::escape(prefix)
                                     + QStringLiteral("(\\.(well|track|wlm|wlt|csmdl|disp)|\\^[0-9]+\\.wll)$"));
    QStringList kept;
    for (const QString &file : QDir(wellFolder()).entryList(QDir::Files | QDir::Hidden))
        if (ownFile.match(file).hasMatch() && !removeFile(wellFolder() + QLatin1Char('/') + file))
            kept.append(file);
    if (!kept.isEmpty())
        return {
            QStringLiteral("The well is no longer in the list, but these files of it could not be deleted in %1: %2.")
                .arg(wellFolder(), kept.join(QStringLiteral(", ")))};
    return {};
}

} // namespace survey
