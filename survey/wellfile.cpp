#include "survey/wellfile.h"

#include "base/numbers.h"
#include "base/textbytes.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace survey {

namespace {

constexpr char wellType[] = "Well";
constexpr char coordinateKey[] = "Surface coordinate";
constexpr char groundKey[] = "Ground Level elevation [GL]";
constexpr char oldGroundKey[] = "Ground Level elevation";
constexpr double largestNumber = 1e15;
constexpr char typeKey[] = "Well type"; // the workbench's own; the host ignores it

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == ',';
}

// Reads four numbers; false for any other line.
bool parseTrackRow(const char *begin, const char *end, TrackPoint *point)
{
    double numbers[4];
    for (double &number : numbers) {
        while (begin < end && isBlank(*begin))
            ++begin;
        const char *stop = begin;
        while (stop < end && !isBlank(*stop))
            ++stop;
        const std::optional<double> value = base::parseNumber(begin, stop);
        if (!value)
            return false;
        number = *value;
        begin = stop;
    }
    *point = {numbers[0], numbers[1], numbers[2], numbers[3]};
    return true;
}

// The host stops at the first row it cannot read; so do we.
QVector<TrackPoint> parseTrackRows(const QByteArray &bytes, int offset, bool *isCut)
{
    QVector<TrackPoint> track;
    *isCut = false;
    base::forEachLine(bytes.constData() + offset, bytes.constData() + bytes.size(),
                      [&track, isCut](const char *begin, const char *end) {
                          TrackPoint point;
                          if (parseTrackRow(begin, end, &point))
                              track.append(point);
                          else
                              *isCut = !std::all_of(begin, end, isBlank);
                          return !*isCut;
                      });
    return track;
}

// "(x,y)"; false where it is something else or lies at the origin, which means "none".
bool parseCoordinate(const QByteArray &text, double *x, double *y)
{
    const int comma = text.indexOf(',');
    if (!text.startsWith('(') || !text.endsWith(')') || comma < 0)
        return false;
    const std::optional<double> first = base::parseNumber(text.mid(1, comma - 1));
    const std::optional<double> second = base::parseNumber(text.mid(comma + 1, text.size() - comma - 2));
    if (!first || !second || (*first == 0 && *second == 0))
        return false;
    *x = *first;
    *y = *second;
    return true;
}

float elevation(const KeyValues &keys)
{
    const QByteArray text = keys.contains(groundKey) ? keys.value(groundKey) : keys.value(oldGroundKey);
    return static_cast<float>(base::parseNumber(text).value_or(host::undefinedValue));
}

int typeCode(const QByteArray &text)
{
    const int known = wellTypeNames().indexOf(QString::fromUtf8(text));
    return known >= 0 ? known : base::parseInteger(text).value_or(host::NoWellType);
}

QByteArray typeText(int code)
{
    const QStringList names = wellTypeNames();
    return code >= 0 && code < names.size() ? names.at(code).toUtf8() : QByteArray::number(code);
}

// The host writes none at the origin.
void setCoordinate(KeyValues *keys, double x, double y)
{
    if (x == 0 && y == 0)
        keys->remove(coordinateKey);
    else
        keys->set(coordinateKey, '(' + base::formatPlain(x) + ',' + base::formatPlain(y) + ')');
}

void setElevation(KeyValues *keys, double value)
{
    keys->remove(oldGroundKey);
    if (host::isUndefined(static_cast<float>(value)))
        keys->remove(groundKey);
    else
        keys->set(groundKey, base::formatPlain(value));
}

TrackPoint interpolated(const TrackPoint &a, const TrackPoint &b, double md)
{
    const double fraction = (md - a.md) / (b.md - a.md);
    return {a.x + fraction * (b.x - a.x), a.y + fraction * (b.y - a.y), a.z + fraction * (b.z - a.z), md};
}

// A surveyed point stays: a longer track gets one more.
void extendTrack(QVector<TrackPoint> *track, double totalDepth)
{
    const TrackPoint last = track->last();
    const TrackPoint before = track->at(qMax(0, track->size() - 2));
    if (last.md > before.md)
        track->append(interpolated(before, last, totalDepth));
    else
        track->append({last.x, last.y, last.z + totalDepth - last.md, totalDepth});
}

void cutTrack(QVector<TrackPoint> *track, double totalDepth)
{
    while (track->size() > 1 && track->at(track->size() - 2).md >= totalDepth)
        track->removeLast();
    if (track->size() > 1 && track->last().md > totalDepth)
        track->last() = interpolated(track->at(track->size() - 2), track->last(), totalDepth);
}

void setTotalDepth(QVector<TrackPoint> *track, double totalDepth)
{
    if (totalDepth > track->last().md)
        extendTrack(track, totalDepth);
    else if (totalDepth < track->last().md)
        cutTrack(track, totalDepth);
}

} // namespace

QStringList wellTypeNames()
{
    return {QStringLiteral("None"), QStringLiteral("Oil"), QStringLiteral("Gas"), QStringLiteral("OilGas"),
            QStringLiteral("Dry")};
}

host::WellHeader WellFile::header(const QString &name) const
{
    host::WellHeader header;
    header.name = name;
    if (!parseCoordinate(keys.value(coordinateKey), &header.x, &header.y)) {
        header.x = track.first().x;
        header.y = track.first().y;
    }
    header.kbElevation = static_cast<float>(track.first().md) - static_cast<float>(track.first().z);
    header.groundElevation = elevation(keys);
    header.totalDepth = track.last().md;
    header.typeCode = typeCode(keys.value(typeKey));
    return header;
}

WellProperties WellFile::properties(const QString &name) const
{
    const host::WellHeader values = header(name);
    return {name,
            values.x,
            values.y,
            static_cast<double>(values.kbElevation),
            static_cast<double>(values.groundElevation),
            values.totalDepth,
            values.typeCode};
}

host::Outcome<WellFile> parseWellFile(const QByteArray &bytes)
{
    const host::Outcome<OdFile> parsed = parseOdFile(bytes, wellType);
    if (!parsed.ok())
        return {{}, parsed.error};
    WellFile file;
    file.keys = parsed.value.keys;
    file.track = parseTrackRows(bytes, parsed.value.bodyOffset, &file.isTrackCut);
    if (file.track.isEmpty())
        return {file, QStringLiteral("it holds no valid well track")};
    return {file, {}};
}

QVector<TrackPoint> parseTrackFile(const QByteArray &bytes, bool *isCut)
{
    bool ignored = false;
    int offset = 0;
    if (bytes.startsWith("dTect V")) {
        const int mark = bytes.indexOf("\n!");
        offset = mark < 0 ? bytes.size() : mark + 2;
        const int lineEnd = bytes.indexOf('\n', offset);
        offset = lineEnd < 0 ? bytes.size() : lineEnd + 1;
    }
    return parseTrackRows(bytes, offset, isCut ? isCut : &ignored);
}

int pointsBelow(const WellFile &file, double depth)
{
    return static_cast<int>(std::count_if(file.track.begin(), file.track.end(),
                                          [depth](const TrackPoint &point) { return point.md > depth; }));
}

QByteArray wellFileBytes(const WellFile &file)
{
    QByteArray bytes = odFileHeader(wellType) + file.keys.toBytes() + "!\n";
    for (const TrackPoint &point : file.track) {
        bytes += base::formatPlain(point.x) + '\t' + base::formatPlain(point.y) + '\t' + base::formatPlain(point.z)
            + '\t' + base::formatPlain(point.md) + '\n';
    }
    return bytes;
}

QString wellPropertiesProblem(const WellProperties &properties)
{
    const bool hasGround = !host::isUndefined(static_cast<float>(properties.groundElevation));
    const struct
    {
        const char *what;
        double value;
    } numbers[] = {{"X coordinate", properties.x},
                   {"Y coordinate", properties.y},
                   {"kelly bushing elevation", properties.kbElevation},
                   {"ground elevation", hasGround ? properties.groundElevation : 0},
                   {"total depth", properties.totalDepth}};
    for (const auto &number : numbers)
        if (!(std::fabs(number.value) <= largestNumber)) // written so that NaN fails too
            return QStringLiteral("The %1 of the well \"%2\" is no usable number.")
                .arg(QLatin1String(number.what), properties.name);
    return {};
}

WellFile makeWellFile(const WellProperties &properties, DepthUnit unit)
{
    WellFile file;
    file.keys.set("Depth-Unit", storedName(unit));
    file.keys.set("Unique Well ID", properties.name.toUtf8());
    setCoordinate(&file.keys, properties.x, properties.y);
    file.track.append({properties.x, properties.y, 0 - properties.kbElevation, 0});
    applyProperties(&file, properties);
    return file;
}

void applyProperties(WellFile *file, const WellProperties &properties)
{
    const host::WellHeader old = file->header(properties.name);
    const double dx = properties.x - old.x;
    const double dy = properties.y - old.y;
    // An elevation crosses the interface as a float: what did not change there must not move the track.
    const bool isLifted = static_cast<float>(properties.kbElevation) != old.kbElevation;
    const double dz = isLifted ? file->track.first().md - file->track.first().z - properties.kbElevation : 0;
    for (TrackPoint &point : file->track) {
        point.x += dx;
        point.y += dy;
        point.z += dz;
    }
    if (dx != 0 || dy != 0)
        setCoordinate(&file->keys, properties.x, properties.y);
    if (elevation(file->keys) != static_cast<float>(properties.groundElevation))
        setElevation(&file->keys, properties.groundElevation);
    setTotalDepth(&file->track, properties.totalDepth);
    if (properties.typeCode == old.typeCode)
        return;
    if (properties.typeCode == host::NoWellType)
        file->keys.remove(typeKey);
    else
        file->keys.set(typeKey, typeText(properties.typeCode));
}

} // namespace survey
