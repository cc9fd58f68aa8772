#include "host/opendtect/odrecords.h"

#include "host/opendtect/odtext.h"

#include <algorithm>

#include <welldata.h>
#include <welllog.h>
#include <wellmarker.h>
#include <welltrack.h>

namespace opendtect {

namespace {

QVector<float> samples(const float *first, int count)
{
    QVector<float> copy(count);
    std::copy_n(first, count, copy.begin());
    return copy;
}

} // namespace

host::WellHeader headerOf(const Well::Data &well)
{
    const Well::Info &info = well.info();
    const Well::Track &track = well.track();
    host::WellHeader header;
    header.x = info.surfacecoord.x;
    header.y = info.surfacecoord.y;
    header.kbElevation = track.getKbElev();
    header.groundElevation = info.groundelev;
    header.totalDepth = static_cast<double>(track.td());
    header.typeCode = info.welltype_;
    return header;
}

host::LogInfo infoOf(const Well::Log &log)
{
    return {toQString(log.name().buf()), toQString(log.unitMeasLabel())};
}

host::LogData dataOf(const Well::Log &log)
{
    const host::LogInfo info = infoOf(log);
    return {info.name, info.unit, samples(log.dahArr(), log.size()), samples(log.valArr(), log.size())};
}

QVector<host::Marker> markersOf(const Well::MarkerSet &markers)
{
    QVector<host::Marker> read;
    for (int i = 0; i < markers.size(); ++i) {
        const Well::Marker &marker = *markers[i];
        const Color color = marker.color();
        read.append({toQString(marker.name().buf()), marker.dah(), QColor(color.r(), color.g(), color.b())});
    }
    return read;
}

} // namespace opendtect
