#include "host/feet.h"

#include <QHash>

#include <charconv>
#include <limits>

namespace host {

namespace {

constexpr float longestLength = 1e25f;

bool isLength(float number)
{
    return std::fabs(number) < longestLength; // not true for NaN
}

qptrdiff digits(float number)
{
    char text[64];
    return std::to_chars(std::begin(text), std::end(text), number).ptr - text;
}

template<class Convert>
void convertDepths(QVector<float> *depths, const Convert &convert)
{
    for (float &depth : *depths)
        depth = convert(depth);
}

} // namespace

float feetToMetres(float feet)
{
    return isLength(feet) ? static_cast<float>(static_cast<double>(feet) * metresPerFoot) : feet;
}

float metresToFeet(float metres)
{
    if (!isLength(metres))
        return metres;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const auto nearest = static_cast<float>(static_cast<double>(metres) / metresPerFoot);
    float feet = nearest;
    // A float of metres is up to 1.64 floats of feet wide: the neighbours are all that can stand for the same metres.
    for (const float neighbour : {std::nextafter(nearest, -infinity), std::nextafter(nearest, infinity)}) {
        if (feetToMetres(neighbour) == metres && digits(neighbour) < digits(feet))
            feet = neighbour;
    }
    return feet;
}

WellHeader feetToMetres(WellHeader header)
{
    header.kbElevation = feetToMetres(header.kbElevation);
    header.groundElevation = feetToMetres(header.groundElevation);
    header.totalDepth *= metresPerFoot;
    return header;
}

LogData feetToMetres(LogData log)
{
    convertDepths(&log.depths, [](float depth) { return feetToMetres(depth); });
    return log;
}

LogData metresToFeet(LogData log)
{
    convertDepths(&log.depths, [](float depth) { return metresToFeet(depth); });
    return log;
}

QVector<Marker> feetToMetres(QVector<Marker> markers)
{
    for (Marker &marker : markers)
        marker.depth = feetToMetres(marker.depth);
    return markers;
}

QVector<Marker> metresToFeet(QVector<Marker> markers, const QVector<Marker> &storedInFeet)
{
    QHash<QString, float> stored;
    for (const Marker &marker : storedInFeet)
        if (!stored.contains(marker.name))
            stored.insert(marker.name, marker.depth);
    for (Marker &marker : markers) {
        const auto old = stored.constFind(marker.name);
        const bool isUnmoved = old != stored.constEnd() && feetToMetres(*old) == marker.depth;
        marker.depth = isUnmoved ? *old : metresToFeet(marker.depth);
    }
    return markers;
}

} // namespace host
