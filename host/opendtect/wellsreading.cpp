#include "host/opendtect/wellsreading.h"

#include "host/feet.h"
#include "host/opendtect/logloading.h"
#include "host/opendtect/odrecords.h"
#include "host/opendtect/odtext.h"
#include "host/opendtect/wellstore.h"

#include <QFileInfo>
#include <QMap>
#include <QSet>

#include <ascstream.h>
#include <ioman.h>
#include <ioobj.h>
#include <iopar.h>
#include <od_istream.h>
#include <survinfo.h>
#include <wellio.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellmarker.h>
#include <wellreader.h>
#include <welltrack.h>

namespace opendtect {

namespace {

// The names of all markers in a file by their numbers, also of those that the host passes over when it reads them.
QMap<int, QString> storedMarkerNames(const QString &path)
{
    od_istream file(path.toUtf8().constData());
    ascistream lines(file);
    const IOPar contents(lines);
    QMap<int, QString> names;
    for (int i = 0; i < contents.size(); ++i) {
        const QString key = toQString(contents.getKey(i).str());
        const int number = key.section(QLatin1Char('.'), 0, 0).toInt();
        if (number < 1)
            continue;
        QString &name = names[number];
        if (key.section(QLatin1Char('.'), 1) == QLatin1String("Name"))
            name = toQString(contents.getValue(i).str()).trimmed();
    }
    return names;
}

QVector<host::LogInfo> infosOf(const Well::LogSet &logs)
{
    QVector<host::LogInfo> infos;
    for (int i = 0; i < logs.size(); ++i)
        infos.append(infoOf(logs.getLog(i)));
    return infos;
}

/// Where a well is read from: the host's memory, or else its files.
struct WellSource
{
    QString error; ///< why it is in neither
    RefMan<Well::Data> loaded; ///< null when the host has not loaded it
    QString loadedName;
    StoredWell *stored = nullptr; ///< valid until the next look-up of a well
    bool ok() const { return error.isEmpty(); }
};

bool isComplete(const Well::Data &)
{
    return true;
}

// What the host has in memory without markers may have some on disk; the manager would not tell a file that it cannot
// read from one that is not there.
bool hasMarkers(const Well::Data &well)
{
    return well.haveMarkers();
}

// The host's memory with these parts where the well is there and usable.
WellSource sourceOf(WellStore &store, const QString &key, const Well::LoadReqs &parts,
                    bool (*isUsable)(const Well::Data &) = isComplete)
{
    const auto entry = store.find(key);
    if (!entry.ok())
        return {entry.error, {}, {}, nullptr};
    const auto loaded = WellStore::loaded(*entry.value, parts);
    if (!loaded.ok())
        return {loaded.error, {}, {}, nullptr};
    if (loaded.value && isUsable(*loaded.value))
        return {{}, loaded.value, toQString(entry.value->name().buf()), nullptr};
    const auto stored = store.stored(key);
    return {stored.error, {}, {}, stored.value};
}

template<class Value>
host::Outcome<Value> readInMetres(const host::Outcome<Value> &read)
{
    return read.ok() && isSurveyInFeet() ? host::Outcome<Value>{host::feetToMetres(read.value), {}} : read;
}

host::Outcome<host::LogData> logInMemory(Well::Data &well, const QString &wellName, int index)
{
    const Well::LogSet &logs = well.logs();
    if (!logs.validIdx(index))
        return {{},
                QStringLiteral("The well %1 has no log with the index %2.").arg(wellName, QString::number(index))};
    const BufferString name = logs.getLog(index).name();
    const LoadedLog loaded = loadLog(well, name);
    if (!loaded.log)
        return {{},
                withReason(
                    QStringLiteral("Cannot read the log \"%1\" of the well %2").arg(toQString(name.buf()), wellName),
                    loaded.error)};
    return {dataOf(*loaded.log), {}};
}

host::Outcome<QVector<host::Marker>> markersNow(WellStore &store, const QString &key)
{
    const WellSource well = sourceOf(store, key, Well::LoadReqs(Well::Inf, Well::Trck), hasMarkers);
    if (!well.ok())
        return {{}, well.error};
    if (well.loaded)
        return {inMetres(markersOf(well.loaded->markers())), {}};
    return readInMetres(well.stored->markers());
}

} // namespace

bool isSurveyInFeet()
{
    return SI().depthsInFeet();
}

QVector<host::Marker> inMetres(const QVector<host::Marker> &markers)
{
    return isSurveyInFeet() ? host::feetToMetres(markers) : markers;
}

host::Outcome<host::WellHeader> readHeader(WellStore &store, const QString &key)
{
    const WellSource well = sourceOf(store, key, Well::LoadReqs(Well::Inf, Well::Trck));
    if (!well.ok())
        return {{}, well.error};
    host::WellHeader header = well.loaded ? headerOf(*well.loaded) : well.stored->header();
    if (well.loaded)
        header.name = well.loadedName;
    return readInMetres(host::Outcome<host::WellHeader>{header, {}});
}

host::Outcome<QVector<host::LogInfo>> readLogInfos(WellStore &store, const QString &key)
{
    const WellSource well = sourceOf(store, key, Well::LoadReqs(Well::Inf, Well::LogInfos));
    if (!well.ok())
        return {{}, well.error};
    return {well.loaded ? infosOf(well.loaded->logs()) : well.stored->logs(), {}};
}

host::Outcome<host::LogData> readLog(WellStore &store, const QString &key, int index)
{
    WellSource well = sourceOf(store, key, Well::LoadReqs(Well::Inf, Well::LogInfos));
    if (!well.ok())
        return {{}, well.error};
    return readInMetres(well.loaded ? logInMemory(*well.loaded, well.loadedName, index) : well.stored->log(index));
}

host::Outcome<QVector<host::Marker>> readMarkers(WellStore &store, const QString &key)
{
    const host::Outcome<QVector<host::Marker>> markers = markersNow(store, key);
    if (markers.ok())
        store.setGivenMarkers(key, markers.value);
    return markers;
}

host::Outcome<QStringList> readMarkersLostByWriting(WellStore &store, const QString &key,
                                                    const QVector<host::Marker> &markers)
{
    const host::Outcome<QVector<host::Marker>> given = markersNow(store, key);
    if (!given.ok())
        return {{}, given.error};
    const auto entry = store.find(key);
    const QString path = fileStem(*entry.value) + QLatin1String(Well::odIO::sExtMarkers());
    if (!QFileInfo::exists(path))
        return {};
    QSet<QString> known;
    for (const host::Marker &marker : given.value)
        known.insert(marker.name);
    for (const host::Marker &marker : markers)
        known.insert(marker.name.trimmed());
    QStringList lost;
    const QMap<int, QString> stored = storedMarkerNames(path);
    for (auto marker = stored.begin(); marker != stored.end(); ++marker) {
        if (marker.value().isEmpty())
            lost.append(QStringLiteral("no. %1").arg(marker.key()));
        else if (!known.contains(marker.value()))
            lost.append(marker.value());
    }
    return {lost, {}};
}

void reloadWell(WellStore &store, const QString &key)
{
    // A well that the host does not have in memory is read anew when its files changed.
    store.forget();
    const auto entry = store.find(key);
    if (!entry.ok())
        return;
    const auto loaded = WellStore::loaded(*entry.value, Well::LoadReqs(false));
    RefMan<Well::Data> well = loaded.value;
    if (!well)
        return;
    enterWellFolder();
    const MultiID id = entry.value->key();
    Well::LoadReqs others = well->loadState();
    others.remove(Well::Logs).remove(Well::LogInfos).remove(Well::Mrkrs);
    if (!others.isEmpty())
        Well::MGR().reload(id, others);
    // The manager would keep the markers of a file that is gone or cannot be read any more.
    if (well->haveMarkers()) {
        well->markers().erase();
        const Well::Reader reader(*entry.value, *well);
        reader.getMarkers(); // what it cannot read, the next reading of the markers tells
    }
    well->reloadLogNames();
    Well::MGR().reloadLogs(id);
}

} // namespace opendtect
