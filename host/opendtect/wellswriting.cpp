#include "host/opendtect/wellswriting.h"

#include "base/atomicfile.h"
#include "base/filelock.h"
#include "base/threewaymerge.h"
#include "host/feet.h"
#include "host/opendtect/markerwatch.h"
#include "host/opendtect/odrecords.h"
#include "host/opendtect/odtext.h"
#include "host/opendtect/wellsreading.h"
#include "host/opendtect/wellstore.h"

#include <QFileInfo>
#include <QSet>

#include <cmath>
#include <memory>
#include <sstream>
#include <vector>

#include <ioobj.h>
#include <od_ostream.h>
#include <transl.h>
#include <undefval.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellmarker.h>
#include <wellodwriter.h>
#include <wellreader.h>

namespace opendtect {

namespace {

// What is no number is undefined, as in every host.
bool isSample(float value)
{
    return std::isfinite(value) && !host::isUndefined(value);
}

// The host's own function for one log chooses the file by reading all of them, each time, and writes it in place.
class LogWriter : public Well::odWriter
{
public:
    using Well::odWriter::odWriter;
    bool write(std::ostream &bytes, const Well::Log &log) const
    {
        od_ostream stream(bytes);
        return writeLog(stream, log);
    }
};

QByteArray bytesOf(const std::ostringstream &stream)
{
    const std::string bytes = stream.str();
    return QByteArray(bytes.data(), static_cast<int>(bytes.size()));
}

// A link stays one, as when the host writes.
base::WriteResult writeFile(const QString &path, const QByteArray &bytes)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    return base::writeFileAtomically(target.isEmpty() ? path : target, bytes);
}

// What stands against writing to the well at all.
QString obstacleOf(const IOObj &entry, const base::FolderLock &lock)
{
    const PtrMan<Translator> translator = entry.createTranslator();
    if (translator && translator->implReadOnly(&entry))
        return QStringLiteral("the well is locked (read-only). Nothing was changed.");
    if (lock.isRefused())
        return QStringLiteral("another program has been writing there for too long. Nothing was changed.");
    return {};
}

// The folder in which the writers of all programs lock; the host itself does not.
QString wellFolder(const IOObj &entry)
{
    return QFileInfo(fileStem(entry)).path();
}

QString problemOf(const host::LogData &log)
{
    if (log.name.trimmed().isEmpty())
        return QStringLiteral("it has no name");
    if (log.depths.size() != log.values.size())
        return QStringLiteral("it has not as many depths as values");
    bool isDefined = false;
    for (int i = 0; i < log.depths.size(); ++i) {
        if (!std::isfinite(log.depths.at(i)) || host::isUndefined(log.depths.at(i)))
            return QStringLiteral("a depth is undefined");
        isDefined = isDefined || isSample(log.values.at(i));
    }
    return isDefined ? QString() : QStringLiteral("the log has no defined sample");
}

void fill(Well::Log &target, const host::LogData &given)
{
    // The host would only turn round a log that ends above its beginning.
    host::LogData log = isSurveyInFeet() ? host::metresToFeet(given) : given;
    host::sortByDepth(&log);
    target.setUnitMeasLabel(log.unit.toUtf8().constData());
    for (int i = 0; i < log.depths.size(); ++i) {
        const float value = log.values.at(i);
        target.addValue(log.depths.at(i), isSample(value) ? value : mUdf(float));
    }
    // Of this log alone: the set's own function would strip logs of which only the header is loaded.
    target.removeTopBottomUdfs();
    target.updateAfterValueChanges();
}

// Markers without a name or a depth cannot be stored: the host would not read what follows them. Of two with one name
// it keeps the first.
QVector<host::Marker> storable(const QVector<host::Marker> &markers)
{
    QVector<host::Marker> result;
    QSet<QString> names;
    for (host::Marker marker : markers) {
        marker.name = marker.name.trimmed();
        if (marker.name.isEmpty() || names.contains(marker.name) || !std::isfinite(marker.depth)
            || host::isUndefined(marker.depth))
            continue;
        names.insert(marker.name);
        result.append(marker);
    }
    return result;
}

using Markers = std::vector<std::unique_ptr<Well::Marker>>;

// The depths as the survey keeps them; a marker that did not move keeps its own to the last bit.
QVector<host::Marker> inSurveyUnit(QVector<host::Marker> markers, const Well::MarkerSet &before)
{
    if (!isSurveyInFeet())
        return markers;
    QVector<host::Marker> stored;
    for (int i = 0; i < before.size(); ++i)
        stored.append({toQString(before[i]->name().buf()), before[i]->dah(), {}});
    return host::metresToFeet(std::move(markers), stored);
}

Markers converted(const QVector<host::Marker> &markers, const Well::MarkerSet &before)
{
    Markers result;
    for (const host::Marker &marker : inSurveyUnit(markers, before)) {
        const QByteArray name = marker.name.toUtf8();
        const QColor wanted = marker.color;
        const Color color(static_cast<unsigned char>(wanted.red()), static_cast<unsigned char>(wanted.green()),
                          static_cast<unsigned char>(wanted.blue()));
        result.push_back(std::make_unique<Well::Marker>(name.constData(), marker.depth, color));
        // A marker keeps its stratigraphic level unless the level's colour would hide the one asked for.
        const Well::Marker *old = before.getByName(name.constData());
        if (old && old->color() == color)
            result.back()->setLevelID(old->levelID());
    }
    return result;
}

void replace(Well::MarkerSet &set, const Markers &markers)
{
    set.erase();
    for (const auto &marker : markers)
        set.insertNew(new Well::Marker(*marker)); // sorts; refuses, and deletes, a second one of a name
}

std::unique_ptr<Well::Log> made(const host::LogData &log, const Well::Log *before)
{
    auto result = std::make_unique<Well::Log>(log.name.trimmed().toUtf8().constData());
    fill(*result, log);
    if (before) {
        result->setMnemLabel(before->mnemLabel());
        result->pars() = before->pars();
    }
    return result;
}

// The host's memory follows the file.
void takeOver(Well::Data &loaded, std::unique_ptr<Well::Log> log)
{
    const BufferString name = log->name();
    Well::LogSet &logs = loaded.logs();
    const int place = logs.indexOf(name);
    const std::unique_ptr<Well::Log> before(place < 0 ? nullptr : logs.remove(place));
    logs.add(log.release());
    for (int i = logs.size() - 1; place >= 0 && i > place; --i)
        logs.swap(i, i - 1);
    loaded.logschanged.trigger(logs.indexOf(name));
}

bool areSame(const host::Marker &a, const host::Marker &b)
{
    return a.depth == b.depth && a.color.rgb() == b.color.rgb();
}

// What is to be written where another program changed the file since the markers were given out.
host::Outcome<QVector<host::Marker>> merged(const QString &wellName, const QVector<host::Marker> &given,
                                            const QVector<host::Marker> &now, const QVector<host::Marker> &wanted)
{
    const auto result = base::threeWayMerge(given, now, wanted, areSame);
    if (result.conflicts.isEmpty())
        return {result.records, {}};
    return {
        {},
        QStringLiteral("Another program has changed the marker \"%1\" of the well %2 as well. Nothing was changed.")
            .arg(result.conflicts.first(), wellName)};
}

} // namespace

host::Status writeLog(WellStore &store, const QString &key, const host::LogData &log)
{
    const auto found = store.find(key);
    if (!found.ok())
        return {found.error};
    const PtrMan<IOObj> entry = found.value->clone();
    const QString failure =
        QStringLiteral("Cannot write the log \"%1\" of the well %2").arg(log.name, toQString(entry->name().buf()));
    const QString problem = problemOf(log);
    if (!problem.isEmpty())
        return {withReason(failure, problem + QLatin1Char('.'))};
    const base::FolderLock lock(wellFolder(*entry));
    const QString obstacle = obstacleOf(*entry, lock);
    if (!obstacle.isEmpty())
        return {withReason(failure, obstacle)};
    const auto stored = store.stored(key);
    if (!stored.ok())
        return {stored.error};
    const auto place = stored.value->placeOfLog(log.name.trimmed());
    if (!place.ok())
        return {place.error};
    const bool isNew = !place.value.header;

    std::unique_ptr<Well::Log> toWrite = made(log, place.value.header.get());
    uiString reason;
    std::ostringstream bytes;
    const LogWriter writer(*entry, *stored.value->data(), reason);
    if (!writer.write(bytes, *toWrite))
        return {withReason(failure, toQString(reason))};
    const QString path = place.value.path;
    bool isTaken = false; // by the host, which knows no lock
    const base::WriteResult result =
        isNew ? base::writeNewFileAtomically(path, bytesOf(bytes), &isTaken) : writeFile(path, bytesOf(bytes));
    if (!result.ok())
        return {withReason(failure, result.error)};
    stored.value->logWritten(*toWrite, path);

    const auto loaded = WellStore::loaded(*entry, Well::LoadReqs(Well::Inf, Well::Trck, Well::LogInfos));
    if (RefMan<Well::Data> well = loaded.value)
        takeOver(*well, std::move(toWrite));
    return {};
}

host::Status writeMarkers(WellStore &store, const QString &key, const QVector<host::Marker> &markers,
                          MarkerWatch &watch)
{
    const auto found = store.find(key);
    if (!found.ok())
        return {found.error};
    const PtrMan<IOObj> entry = found.value->clone();
    const QString failure =
        QStringLiteral("Cannot write the markers of the well %1").arg(toQString(entry->name().buf()));
    const base::FolderLock lock(wellFolder(*entry));
    const QString obstacle = obstacleOf(*entry, lock);
    if (!obstacle.isEmpty())
        return {withReason(failure, obstacle)};
    const auto stored = store.stored(key);
    if (!stored.ok())
        return {stored.error};
    const auto loaded = WellStore::loaded(*entry, Well::LoadReqs(Well::Inf, Well::Trck, Well::Mrkrs));
    if (!loaded.ok())
        return {loaded.error};
    const auto readable = stored.value->markersToChange();
    if (!readable.ok())
        return {readable.error};

    RefMan<Well::Data> well = loaded.value;
    Well::MarkerSet &set = *readable.value;
    const Well::MarkerSet &before = well ? well->markers() : set;
    host::Outcome<QVector<host::Marker>> wanted{storable(markers), {}};
    const auto given = store.givenMarkers().constFind(key);
    // What the host has in memory is the well's state for all its windows.
    if (!well && given != store.givenMarkers().constEnd())
        wanted = merged(stored.value->name(), *given, inMetres(markersOf(before)), wanted.value);
    if (!wanted.ok())
        return {wanted.error};

    const Markers toWrite = converted(wanted.value, before);
    replace(set, toWrite);
    uiString reason;
    std::ostringstream bytes;
    const Well::odWriter writer(*entry, *stored.value->data(), reason);
    od_ostream stream(bytes);
    if (!writer.putMarkers(stream))
        return {withReason(failure, toQString(reason))};
    const base::WriteResult result = writeFile(stored.value->markerFile(), bytesOf(bytes));
    if (!result.ok())
        return {withReason(failure, result.error)};
    if (!well) {
        (void)readMarkers(store, key); // this is what a further change begins with
        watch.tell(key);
        return {};
    }
    replace(well->markers(), toWrite);
    const Well::Reader reader(*entry, *well);
    reader.getMarkers(); // it drops those that lie outside of the track
    watch.attach();
    well->markerschanged.trigger();
    return {};
}

} // namespace opendtect
