#include "host/opendtect/wellsreading.h"

#include "host/opendtect/loadedwell.h"
#include "host/opendtect/logloading.h"
#include "host/opendtect/odtext.h"

#include <QFileInfo>

#include <algorithm>

#include <bufstringset.h>
#include <iodir.h>
#include <iodirentry.h>
#include <ioman.h>
#include <ioobj.h>
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

} // namespace

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
    return {header, {}};
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
    return {read, {}};
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
    return read;
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
