#include "logview/geometry/perforationgeometry.h"

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

struct ZoneType
{
    const char *name;
    QRgb left;
    QRgb right;
};

constexpr QRgb oil = qRgb(0, 100, 0);
constexpr QRgb gas = qRgb(255, 0, 0);
constexpr QRgb water = qRgb(64, 164, 223);

constexpr ZoneType zoneTypes[] = {
    {"Oil", oil, oil},
    {"Gas", gas, gas},
    {"Water", water, water},
    {"Dry", qRgb(128, 128, 128), qRgb(128, 128, 128)},
    {"Not Tested", qRgb(0, 0, 0), qRgb(0, 0, 0)},
    {"Oil-Gas", oil, gas},
    {"Oil-Water", oil, water},
    {"Gas-Water", gas, water},
};

} // namespace

ZoneColors zoneColors(const QString &zoneType)
{
    for (const ZoneType &type : zoneTypes)
        if (zoneType == QLatin1String(type.name))
            return {QColor(type.left), QColor(type.right)};
    return {};
}

QVector<ZoneGeometry> zoneGeometry(const PerforationRecord &record, const DepthAxis &axis,
                                   const DepthReference &reference, float trackWidth, double topY, double bottomY)
{
    QVector<ZoneGeometry> zones;
    if (!axis.isDrawable() || !(trackWidth > 0) || !std::isfinite(trackWidth))
        return zones;
    const int count = std::min({record.tops.size(), record.bottoms.size(), record.zoneTypes.size()});
    for (int i = 0; i < count; ++i) {
        float top = reference.toDisplay(static_cast<double>(record.tops.at(i)));
        float bottom = reference.toDisplay(static_cast<double>(record.bottoms.at(i)));
        if (bottom < top)
            std::swap(top, bottom);
        if (!(top <= axis.end) || !(bottom >= axis.start))
            continue;
        const double yTop = axis.toScenePixel(static_cast<double>(std::max(top, axis.start)));
        const double yBottom = axis.toScenePixel(static_cast<double>(std::min(bottom, axis.end)));
        if (yBottom < topY || yTop > bottomY)
            continue;
        const double half = static_cast<double>(trackWidth) / 2;
        ZoneGeometry zone;
        zone.left = QRectF(0, yTop, half, yBottom - yTop);
        zone.right = QRectF(half, yTop, half, yBottom - yTop);
        zone.label = record.zoneTypes.at(i);
        zone.colors = zoneColors(zone.label);
        zones.append(zone);
    }
    return zones;
}

QRectF labelRect(const ZoneGeometry &zone, const QSizeF &textSize)
{
    const QRectF outline = zone.outline();
    if (zone.label.isEmpty() || textSize.width() > outline.width() || textSize.height() > outline.height())
        return {};
    return QRectF(outline.center().x() - textSize.width() / 2, outline.center().y() - textSize.height() / 2,
                  textSize.width(), textSize.height());
}

} // namespace logview
