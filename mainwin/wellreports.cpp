#include "mainwin/wellreports.h"

#include "base/numbers.h"

#include <QStringList>

namespace wellreports {

namespace {

QByteArray line(const QStringList &fields, const QVector<int> &widths)
{
    QStringList padded;
    for (int i = 0; i < fields.size(); ++i)
        padded.append(fields.at(i).leftJustified(widths.at(i)));
    return padded.join(QLatin1Char(' ')).toUtf8() + '\n';
}

QString fixed(double value, int decimals)
{
    return QString::fromLatin1(base::formatFixed(value, decimals));
}

QVector<int> markerWidths()
{
    return {15, 10, 10, 10, 10, 15};
}

} // namespace

double breakZoneDepth(const QVector<double> &depths, const QVector<double> &values, double nullValue)
{
    const int count = qMin(depths.size(), values.size());
    int i = 0;
    while (i < count && values.at(i) == nullValue)
        ++i;
    while (i < count && values.at(i) != nullValue)
        ++i;
    return i < count ? depths.at(i) : 0.0;
}

QByteArray logsHeaderLine()
{
    return line({QStringLiteral("Curve Name"), QStringLiteral("Start Depth"), QStringLiteral("End Depth"),
                 QStringLiteral("Break Zone Depth")},
                {15, 10, 10, 10});
}

QByteArray logLine(const LogCurveData &curve)
{
    const bool isEmpty = curve.depths.isEmpty();
    return line({curve.logName, fixed(isEmpty ? 0 : curve.depths.first(), 4),
                 fixed(isEmpty ? 0 : curve.depths.last(), 4),
                 fixed(breakZoneDepth(curve.depths, curve.values, curve.nullValue), 4)},
                {15, 12, 12, 12});
}

QByteArray markersHeaderLine()
{
    return line({QStringLiteral("Well Name"), QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("MD"),
                 QStringLiteral("TVDSS"), QStringLiteral("Marker Name")},
                markerWidths());
}

QByteArray markerLine(const WellRecord &well, const WellMarker &marker)
{
    // Marker depths are single precision.
    const auto subsea = static_cast<double>(static_cast<float>(marker.subseaDepth));
    return line({well.wellName, fixed(well.x, 2), fixed(well.y, 2),
                 fixed(static_cast<double>(marker.measuredDepth), 2), fixed(subsea, 2), marker.name},
                markerWidths());
}

} // namespace wellreports
