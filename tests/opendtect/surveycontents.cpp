#include "surveycontents.h"

#include <algorithm>
#include <cstring>

namespace surveycontents {

namespace {

constexpr float undefined = host::undefinedValue;

survey::TrackPoint point(double x, double y, double z, double md)
{
    return {x, y, z, md};
}

host::LogData longLog()
{
    host::LogData log{QStringLiteral("GR"), QStringLiteral("gAPI"), {}, {}};
    for (int i = 0; i < 20000; ++i) {
        log.depths.append(100.0f + 0.1524f * static_cast<float>(i));
        log.values.append(i % 97 == 5 ? undefined : 50.0f + static_cast<float>(i % 1013) / 7.0f);
    }
    return log;
}

odsurvey::Well vertical()
{
    odsurvey::Well well;
    well.header.name = QStringLiteral("15/9-F 1");
    well.header.x = 502500.25;
    well.header.y = 6003000.75;
    well.header.kbElevation = 25.5f;
    well.header.groundElevation = -81.25f;
    well.header.totalDepth = 3400;
    well.track = {point(well.header.x, well.header.y, -25.5, 0), point(well.header.x, well.header.y, 3374.5, 3400)};
    well.logs = {longLog(),
                 {QStringLiteral("RHOB"), QStringLiteral("g/cc"), {1, 2, 3, 4}, {2.65f, undefined, undefined, 2.1f}},
                 {QStringLiteral("one sample"), QString(), {1234.5f}, {-999.25f}},
                 {QString::fromUtf8("πορώδες"), QString::fromUtf8("Ω·m"), {10, 20}, {1e-30f, 3.4e38f}}};
    well.markers = {{QStringLiteral("Top A"), 0.1f, QColor(255, 0, 0)},
                    {QString::fromUtf8("Nordsjø / Øvre"), 1234.567f, QColor(1, 2, 3)},
                    {QStringLiteral("Base"), 3400, QColor(0, 0, 0)}};
    return well;
}

odsurvey::Well deviated()
{
    odsurvey::Well well;
    well.header.name = QStringLiteral("Deviated");
    well.header.x = 505000;
    well.header.y = 6001000;
    well.header.kbElevation = 30;
    well.header.totalDepth = 2500;
    well.track = {point(505000, 6001000, -30, 0), point(505000, 6001000, 970, 1000),
                  point(505250.5, 6001100.25, 1400, 1500), point(506000, 6001500, 1900, 2500)};
    well.logs = {{QStringLiteral("DT"), QStringLiteral("us/ft"), {1500, 1500.5f, 1501}, {90, undefined, 91.25f}}};
    return well;
}

odsurvey::Well bare()
{
    odsurvey::Well well;
    well.header.name = QStringLiteral("nothing in it");
    well.header.x = 500001;
    well.header.y = 6000001;
    well.header.kbElevation = 0;
    well.header.totalDepth = 100;
    well.track = {point(500001, 6000001, 0, 0), point(500001, 6000001, 100, 100)};
    return well;
}

bool areSame(const QVector<float> &left, const QVector<float> &right)
{
    return left.size() == right.size()
        && std::memcmp(left.constData(), right.constData(), sizeof(float) * static_cast<std::size_t>(left.size()))
        == 0;
}

QString difference(const host::WellHeader &left, const host::WellHeader &right)
{
    if (left.name != right.name)
        return QStringLiteral("name %1 | %2").arg(left.name, right.name);
    if (left.x != right.x || left.y != right.y)
        return QStringLiteral("position of %1").arg(left.name);
    if (left.kbElevation != right.kbElevation || left.groundElevation != right.groundElevation)
        return QStringLiteral("elevations of %1").arg(left.name);
    if (left.totalDepth != right.totalDepth)
        return QStringLiteral("total depth of %1").arg(left.name);
    return {};
}

bool areSame(const QVector<survey::TrackPoint> &left, const QVector<survey::TrackPoint> &right)
{
    const auto isSame = [](const survey::TrackPoint &a, const survey::TrackPoint &b) {
        return a.x == b.x && a.y == b.y && a.z == b.z && a.md == b.md;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSame);
}

QString difference(const host::LogData &left, const host::LogData &right)
{
    if (left.name != right.name || left.unit != right.unit)
        return QStringLiteral("log %1 [%2] | %3 [%4]").arg(left.name, left.unit, right.name, right.unit);
    if (!areSame(left.depths, right.depths))
        return QStringLiteral("depths of the log %1").arg(left.name);
    return areSame(left.values, right.values) ? QString() : QStringLiteral("values of the log %1").arg(left.name);
}

bool areSame(const host::Marker &left, const host::Marker &right)
{
    return left.name == right.name && left.depth == right.depth && left.color == right.color;
}

QString difference(const odsurvey::Well &left, const odsurvey::Well &right)
{
    const QString headers = difference(left.header, right.header);
    if (!headers.isEmpty())
        return headers;
    if (!areSame(left.track, right.track))
        return QStringLiteral("track of %1").arg(left.header.name);
    if (left.logs.size() != right.logs.size())
        return QStringLiteral("number of logs of %1: %2 | %3")
            .arg(left.header.name)
            .arg(left.logs.size())
            .arg(right.logs.size());
    for (int i = 0; i < left.logs.size(); ++i) {
        const QString log = difference(left.logs.at(i), right.logs.at(i));
        if (!log.isEmpty())
            return left.header.name + QStringLiteral(": ") + log;
    }
    if (left.markers.size() != right.markers.size())
        return QStringLiteral("number of markers of %1").arg(left.header.name);
    for (int i = 0; i < left.markers.size(); ++i)
        if (!areSame(left.markers.at(i), right.markers.at(i)))
            return QStringLiteral("marker %1 of %2").arg(left.markers.at(i).name, left.header.name);
    return {};
}

} // namespace

QVector<odsurvey::Well> wells()
{
    return {vertical(), deviated(), bare()};
}

QString difference(const QVector<odsurvey::Well> &left, const QVector<odsurvey::Well> &right)
{
    if (left.size() != right.size())
        return QStringLiteral("number of wells: %1 | %2").arg(left.size()).arg(right.size());
    for (int i = 0; i < left.size(); ++i) {
        const QString well = difference(left.at(i), right.at(i));
        if (!well.isEmpty())
            return well;
    }
    return {};
}

} // namespace surveycontents
