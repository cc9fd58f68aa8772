#include "host/opendtect/wellsreading.h"

#include "host/feet.h"
#include "host/opendtect/loadedwell.h"
#include "host/opendtect/logloading.h"
#include "host/opendtect/odtext.h"

#include <QFileInfo>
#include <QMap>
#include <QSet>

#include <algorithm>

#include <ascstream.h>
#include <bufstringset.h>
#include <iodir.h>
#include <iodirentry.h>
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
#include <welltransl.h>

namespace opendtect {

namespace {

QVector<float> samples(const float *first, int count)
{
    QVector<float> copy(count);
    std::copy_n(first, count, copy.begin());
    return copy;
}

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

} // namespace

bool isSurveyInFeet()
{
    return SI().depthsInFeet();
}

host::Outcome<QVector<host::WellEntry>> readWellList()
{
    const IOObjContext context = WellTranslatorGroup::ioContext();
    const IODir folder(context.getSelKey());
    if (folder.isBad())
        return {{},
                QStringLiteral("Cannot read the list of wells of the survey in %1.").arg(toFolder(IOM().rootDir()))};
    IODirEntryList entries(folder, context);
    entries.sort();
    host::Outcome<QVector<host::WellEntry>> wells;
    for (int i = 0; i < entries.size(); ++i)
        if (const IOObj *stored = entries[i]->ioobj_)
            wells.value.append({toQString(stored->name().buf()), toQString(stored->key().buf())});
    return wells;
}

host::Outcome<host::WellHeader> readHeader(const QString &key)
{
    LoadedWell well(key, Well::LoadReqs(Well::Inf, Well::Trck));
    if (!well.error().isEmpty())
        return {{}, well.error()};
    const Well::Info &info = well.data().info();
    const Well::Track &track = well.data().track();
    host::WellHeader header;
    header.name = well.name();
    header.x = info.surfacecoord.x;
    header.y = info.surfacecoord.y;
    header.kbElevation = track.getKbElev();
    header.groundElevation = info.groundelev;
    header.totalDepth = static_cast<double>(track.td());
    header.typeCode = info.welltype_;
    return {isSurveyInFeet() ? host::feetToMetres(header) : header, {}};
}

host::Outcome<QVector<host::LogInfo>> readLogInfos(const QString &key)
{
    LoadedWell well(key, Well::LoadReqs(Well::Inf, Well::LogInfos));
    if (!well.error().isEmpty())
        return {{}, well.error()};
    const Well::LogSet &logs = well.data().logs();
    host::Outcome<QVector<host::LogInfo>> infos;
    for (int i = 0; i < logs.size(); ++i) {
        const Well::Log &log = logs.getLog(i);
        infos.value.append({toQString(log.name().buf()), toQString(log.unitMeasLabel())});
    }
    return infos;
}

host::Outcome<host::LogData> readLog(const QString &key, int index)
{
    LoadedWell well(key, Well::LoadReqs(Well::Inf, Well::LogInfos));
    if (!well.error().isEmpty())
        return {{}, well.error()};
    const Well::LogSet &logs = well.data().logs();
    if (!logs.validIdx(index))
        return {{}, QStringLiteral("The well %1 has no log with the index %2.").arg(well.name()).arg(index)};
    const BufferString name = logs.getLog(index).name();
    const LoadedLog loaded = loadLog(well.data(), name);
    if (!loaded.log)
        return {
            {},
            withReason(
                QStringLiteral("Cannot read the log \"%1\" of the well %2").arg(toQString(name.buf()), well.name()),
                loaded.error)};
    const Well::Log &log = *loaded.log;
    host::LogData read;
    read.name = toQString(name.buf());
    read.unit = toQString(log.unitMeasLabel());
    read.depths = samples(log.dahArr(), log.size());
    read.values = samples(log.valArr(), log.size());
    return {isSurveyInFeet() ? host::feetToMetres(read) : read, {}};
}

host::Outcome<QVector<host::Marker>> readMarkers(const QString &key)
{
    LoadedWell well(key, Well::LoadReqs(Well::Inf, Well::Trck));
    if (!well.error().isEmpty())
        return {{}, well.error()};
    // The manager would not tell a file that it cannot read from one that is not there.
    if (!well.data().haveMarkers()) {
        const Well::Reader reader(well.id(), well.data());
        if (!reader.getMarkers() && QFileInfo::exists(well.file(Well::odIO::sExtMarkers())))
            return {{},
                    withReason(QStringLiteral("Cannot read the markers of the well %1").arg(well.name()),
                               toQString(reader.errMsg()))};
    }
    const Well::MarkerSet &markers = well.data().markers();
    host::Outcome<QVector<host::Marker>> read;
    for (int i = 0; i < markers.size(); ++i) {
        const Well::Marker &marker = *markers[i];
        const Color color = marker.color();
        read.value.append({toQString(marker.name().buf()), marker.dah(), QColor(color.r(), color.g(), color.b())});
    }
    if (isSurveyInFeet())
        read.value = host::feetToMetres(read.value);
    return read;
}

host::Outcome<QStringList> readMarkersLostByWriting(const QString &key, const QVector<host::Marker> &markers)
{
    const host::Outcome<QVector<host::Marker>> given = readMarkers(key);
    if (!given.ok())
        return {{}, given.error};
    LoadedWell well(key, Well::LoadReqs(Well::Inf));
    if (!well.error().isEmpty())
        return {{}, well.error()};
    const QString path = well.file(Well::odIO::sExtMarkers());
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

void reloadWell(const QString &key)
{
    // A well that the host does not have in memory is read anew anyway.
    if (!Well::MGR().isLoaded(MultiID(key.toLatin1().constData())))
        return;
    LoadedWell well(key, Well::LoadReqs(false));
    if (!well.error().isEmpty())
        return;
    Well::LoadReqs others = well.data().loadState();
    others.remove(Well::Logs).remove(Well::LogInfos).remove(Well::Mrkrs);
    if (!others.isEmpty())
        Well::MGR().reload(well.id(), others);
    // The manager would keep the markers of a file that is gone or cannot be read any more.
    if (well.data().haveMarkers()) {
        well.data().markers().erase();
        const Well::Reader reader(well.id(), well.data());
        reader.getMarkers(); // what it cannot read, the next reading of the markers tells
    }
    well.data().reloadLogNames();
    Well::MGR().reloadLogs(well.id());
}

} // namespace opendtect
