#include "logview/geometry/perforationgeometry.h"

#include <QFontMetricsF>

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

namespace {

constexpr int smallestLabelPoints = 5;

// In two lines, where there is a blank or a hyphen.
QString broken(QString label)
{
    const int blank = label.indexOf(QLatin1Char(' '));
    if (blank >= 0)
        return label.replace(blank, 1, QLatin1Char('\n'));
    const int hyphen = label.indexOf(QLatin1Char('-'));
    return hyphen >= 0 ? label.insert(hyphen + 1, QLatin1Char('\n')) : label;
}

// The place nearest to the middle; an empty rectangle when there is none.
QRectF freePlace(const QRectF &outline, const QSizeF &size, const QVector<QRectF> &taken)
{
    if (size.width() > outline.width() || size.height() > outline.height())
        return {};
    const double middle = outline.center().y() - size.height() / 2;
    QVector<double> tops{middle};
    for (const QRectF &box : taken)
        tops << box.bottom() << box.top() - size.height();
    std::sort(tops.begin(), tops.end(),
              [middle](double a, double b) { return std::abs(a - middle) < std::abs(b - middle); });
    for (const double top : qAsConst(tops)) {
        const QRectF place(QPointF(outline.center().x() - size.width() / 2, top), size);
        const bool isFree =
            std::none_of(taken.begin(), taken.end(), [&place](const QRectF &box) { return box.intersects(place); });
        if (isFree && place.top() >= outline.top() && place.bottom() <= outline.bottom())
            return place;
    }
    return {};
}

} // namespace

ZoneLabel zoneLabel(const ZoneGeometry &zone, QFont font, QPaintDevice *device, const QVector<QRectF> &taken)
{
    ZoneLabel label;
    const bool isBlack = zone.colors.left == QColor(Qt::black) && zone.colors.right == QColor(Qt::black);
    label.color = isBlack ? Qt::white : Qt::black;
    for (int points = font.pointSize(); points >= smallestLabelPoints && !zone.label.isEmpty(); --points) {
        font.setPointSize(points);
        const QFontMetricsF metrics(font, device);
        for (const QString &text : {zone.label, broken(zone.label)}) {
            QSizeF size(0, 0);
            for (const QString &line : text.split(QLatin1Char('\n')))
                size = QSizeF(std::max(size.width(), metrics.horizontalAdvance(line)),
                              size.height() + metrics.lineSpacing());
            const QRectF place = freePlace(zone.outline(), size, taken);
            if (place.isEmpty())
                continue;
            label.text = text;
            label.font = font;
            label.rect = place;
            return label;
        }
    }
    return label;
}

} // namespace logview
