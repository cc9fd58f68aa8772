#include "fuzz/fuzzcheck.h"
#include "survey/markerfile.h"

#include <QSet>

using namespace survey;

namespace {

constexpr DepthRange track{0, 1000};

void checkMarkers(const QVector<host::Marker> &markers)
{
    QSet<QString> names;
    for (int i = 0; i < markers.size(); ++i) {
        check(track.contains(markers.at(i).depth), "a marker lies in the track");
        check(i == 0 || markers.at(i - 1).depth <= markers.at(i).depth, "markers are sorted");
        check(!names.contains(markers.at(i).name), "a name stands once");
        names.insert(markers.at(i).name);
    }
}

void checkSame(const QVector<host::Marker> &a, const QVector<host::Marker> &b)
{
    check(a.size() == b.size(), "as many markers read back");
    for (int i = 0; i < a.size(); ++i)
        check(a.at(i).name == b.at(i).name && a.at(i).depth == b.at(i).depth
                  && a.at(i).color.rgb() == b.at(i).color.rgb(),
              "a marker reads back the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = bytesOf(data, size);
    QStringList problems;
    const auto read = parseMarkerFile(bytes, track, &problems);
    if (!read.ok())
        return 0;
    checkMarkers(read.value);
    const QByteArray written = markerFileBytes(read.value, "Meter", bytes, track);
    const auto again = parseMarkerFile(written, track);
    check(again.ok(), "written markers can be read");
    checkSame(again.value, read.value);
    // What the file hides stays hidden, so a second writing changes nothing but the date.
    const QByteArray settled = markerFileBytes(again.value, "Meter", written, track);
    // Of several carriage returns at the end of a line each writing takes one.
    check(bytes.contains('\r') || settled.mid(settled.indexOf("!\n")) == written.mid(written.indexOf("!\n")),
          "written markers stay the same");
    // Hidden markers come back with a longer track.
    const DepthRange longer{-1e30f, 1e30f};
    QVector<host::Marker> fewer = read.value.mid(0, read.value.size() / 2);
    checkSame(parseMarkerFile(markerFileBytes(fewer, "Meter", bytes, track), track).value, fewer);
    static_cast<void>(parseMarkerFile(written, longer));
    return 0;
}
