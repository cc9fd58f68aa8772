#include "fuzz/fuzzcheck.h"
#include "survey/wellfile.h"

#include <cmath>

using namespace survey;

namespace {

void checkTrack(const QVector<TrackPoint> &track)
{
    for (const TrackPoint &point : track)
        check(std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z) && std::isfinite(point.md),
              "a point of the track is finite");
}

// The part without the date.
QByteArray body(const WellFile &file)
{
    const QByteArray bytes = wellFileBytes(file);
    return bytes.mid(bytes.indexOf("!\n"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = bytesOf(data, size);
    bool isCut = false;
    checkTrack(parseTrackFile(bytes, &isCut));
    host::Outcome<WellFile> read = parseWellFile(bytes);
    if (!read.ok())
        return 0;
    check(!read.value.track.isEmpty(), "a well has a track");
    checkTrack(read.value.track);
    const QString name = QStringLiteral("W");
    const WellProperties properties = read.value.properties(name);
    const host::Outcome<WellFile> again = parseWellFile(wellFileBytes(read.value));
    // Of several carriage returns at the end of a line each writing takes one.
    check(again.ok() && (bytes.contains('\r') || body(again.value) == body(read.value)),
          "a written well stays the same");
    if (!wellPropertiesProblem(properties).isEmpty())
        return 0;
    WellFile changed = read.value;
    applyProperties(&changed, properties);
    for (TrackPoint &point : read.value.track) // a zero below zero becomes one above
        point = {point.x + 0, point.y + 0, point.z + 0, point.md};
    check(body(changed) == body(read.value), "what did not change is not changed");
    WellProperties other = properties;
    other.groundElevation = 12.5;
    other.typeCode = host::GasWell;
    applyProperties(&changed, other);
    const host::Outcome<WellFile> edited = parseWellFile(wellFileBytes(changed));
    check(edited.ok() && edited.value.header(name).groundElevation == 12.5f
              && edited.value.header(name).typeCode == host::GasWell,
          "an edit reads back");
    check(edited.value.track.size() == read.value.track.size(), "an edit of the header leaves the track");
    static_cast<void>(pointsBelow(read.value, 100));
    return 0;
}
