#include "host/opendtect/wellsreading.h"

#include "host/feet.h"
#include "host/opendtect/logloading.h"
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

host::WellHeader headerOf(const QString &name, const Well::Data &well)
{
    const Well::Info &info = well.info();
    const Well::Track &track = well.track();
    host::WellHeader header;
    header.name = name;
    header.x = info.surfacecoord.x;
    header.y = info.surfacecoord.y;
    header.kbElevation = track.getKbElev();
    header.groundElevation = info.groundelev;
    header.totalDepth = static_cast<double>(track.td());
    header.typeCode = info.welltype_;
    return isSurveyInFeet() ? host::feetToMetres(header) : header;
}

QVector<host::LogInfo> infosOf(const Well::LogSet &logs)
{
    QVector<host::LogInfo> infos;
    for (int i = 0; i < logs.size(); ++i) {
        const Well::Log &log = logs.getLog(i);
        infos.append({toQString(log.name().buf()), toQString(log.unitMeasLabel())});
    }
    return infos;
}

host::LogData dataOf(const Well::Log &log)
{
    host::LogData data{toQString(log.name().buf()), toQString(log.unitMeasLabel()), {}, {}};
    data.depths.reserve(log.size());
    data.values.reserve(log.size());
    for (int i = 0; i < log.size(); ++i) {
        data.depths.append(log.dah(i));
        data.values.append(log.value(i));
    }
    return data;
}

QString entryName(const IOObj &entry)
{
    return toQString(entry.name().buf());
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
    const auto entry = store.find(key);
    if (!entry.ok())
        return {{}, entry.error};
    const auto loaded = WellStore::loaded(*entry.value, Well::LoadReqs(Well::Inf, Well::Trck));
    if (!loaded.ok())
        return {{}, loaded.error};
    // What the host has in memory without markers may have some on disk; the manager would not tell a file that it
    // cannot read from one that is not there.
    if (loaded.value && loaded.value->haveMarkers())
        return {markersOf(loaded.value->markers()), {}};
    const auto stored = store.stored(key);
    if (!stored.ok())
        return {{}, stored.error};
    const host::Status status = stored.value->readMarkers();
    if (!status.ok())
        return {{}, status.error};
    return {markersOf(stored.value->data().markers()), {}};
}

host::Outcome<host::LogData> inMetres(const host::Outcome<host::LogData> &log)
{
    return log.ok() && isSurveyInFeet() ? host::Outcome<host::LogData>{host::feetToMetres(log.value), {}} : log;
}

} // namespace

bool isSurveyInFeet()
{
    return SI().depthsInFeet();
}

QVector<host::Marker> markersOf(const Well::MarkerSet &markers)
{
    QVector<host::Marker> read;
    for (int i = 0; i < markers.size(); ++i) {
        const Well::Marker &marker = *markers[i];
        const Color color = marker.color();
        read.append({toQString(marker.name().buf()), marker.dah(), QColor(color.r(), color.g(), color.b())});
    }
    return isSurveyInFeet() ? host::feetToMetres(read) : read;
}

host::Outcome<host::WellHeader> readHeader(WellStore &store, const QString &key)
{
    const auto entry = store.find(key);
    if (!entry.ok())
        return {{}, entry.error};
    const auto loaded = WellStore::loaded(*entry.value, Well::LoadReqs(Well::Inf, Well::Trck));
    if (!loaded.ok())
        return {{}, loaded.error};
    if (loaded.value)
        return {headerOf(entryName(*entry.value), *loaded.value), {}};
    const auto stored = store.stored(key);
    if (!stored.ok())
        return {{}, stored.error};
    return {headerOf(stored.value->name(), stored.value->data()), {}};
}

host::Outcome<QVector<host::LogInfo>> readLogInfos(WellStore &store, const QString &key)
{
    const auto entry = store.find(key);
    if (!entry.ok())
        return {{}, entry.error};
    const auto loaded = WellStore::loaded(*entry.value, Well::LoadReqs(Well::Inf, Well::LogInfos));
    if (!loaded.ok())
        return {{}, loaded.error};
    if (loaded.value)
        return {infosOf(loaded.value->logs()), {}};
    const auto stored = store.stored(key);
    if (!stored.ok())
        return {{}, stored.error};
    return {stored.value->logs(), {}};
}

host::Outcome<host::LogData> readLog(WellStore &store, const QString &key, int index)
{
    const auto entry = store.find(key);
    if (!entry.ok())
        return {{}, entry.error};
    const auto loaded = WellStore::loaded(*entry.value, Well::LoadReqs(Well::Inf, Well::LogInfos));
    if (!loaded.ok())
        return {{}, loaded.error};
    if (RefMan<Well::Data> well = loaded.value)
        return inMetres(logInMemory(*well, entryName(*entry.value), index));
    const auto stored = store.stored(key);
    if (!stored.ok())
        return {{}, stored.error};
    return inMetres(stored.value->log(index));
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
