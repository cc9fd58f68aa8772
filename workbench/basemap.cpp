#include "workbench/basemap.h"

#include "workbench/mapsymbols.h"
#include "workbench/statecolors.h"
#include "workbench/tooltiptext.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <limits>

namespace workbench {

namespace {

constexpr double symbolRadiusPx = 4.5;
constexpr double clickRadiusPx = 12;
constexpr double wellMarginPx = 36; // between the outermost wells and the frame
constexpr double tickPx = 4;
constexpr double tickSpacingPx = 90;
constexpr double longestScaleBarPx = 110;
constexpr double widestLabelPx = 130;
constexpr double outerMarginPx = 8;

} // namespace

BaseMap::BaseMap(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("baseMap"));
    setAccessibleName(QStringLiteral("Base map of the wells"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void BaseMap::setWells(const QVector<MapWell> &wells)
{
    m_wells = wells;
    m_selected = -1;
    m_placedCount = 0;
    m_symbols.clear();
    for (const MapWell &well : wells) {
        if (!hasPosition(well))
            continue;
        ++m_placedCount;
        if (!m_symbols.contains(mapSymbolOf(well.typeCode)))
            m_symbols.append(mapSymbolOf(well.typeCode));
    }
    std::sort(m_symbols.begin(), m_symbols.end());
    invalidate();
}

void BaseMap::setSelectedWell(int well)
{
    const int wanted = well >= 0 && well < m_wells.size() ? well : -1;
    if (wanted == m_selected)
        return;
    m_selected = wanted;
    invalidate(); // the selected well's label comes first
}

void BaseMap::invalidate()
{
    m_isLaidOut = false;
    update();
}

QVector<QPointF> BaseMap::wellPixels()
{
    layOut();
    return m_pixels;
}

QVector<MapLabel> BaseMap::labels()
{
    layOut();
    return m_labels;
}

QFont BaseMap::smallFont() const
{
    QFont small = font();
    if (small.pointSizeF() > 0)
        small.setPointSizeF(small.pointSizeF() * 0.85);
    return small;
}

void BaseMap::layOut()
{
    if (m_isLaidOut)
        return;
    m_isLaidOut = true;
    ++m_layoutCount;
    const QFontMetricsF small(smallFont());
    const double left = outerMarginPx + small.height() + tickPx + 2;
    const double below = 2 * small.height() + tickPx + outerMarginPx + 10;
    const QRectF area(left, outerMarginPx, std::max(1.0, width() - left - outerMarginPx),
                      std::max(1.0, height() - outerMarginPx - below));
    m_frame = MapFrame(m_wells, area, std::min(wellMarginPx, std::min(area.width(), area.height()) / 4));
    m_eastings = eastingTicks(m_frame, tickSpacingPx);
    m_northings = northingTicks(m_frame, tickSpacingPx);

    m_pixels.clear();
    m_pixels.reserve(m_wells.size());
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    for (const MapWell &well : m_wells)
        m_pixels.append(hasPosition(well) ? m_frame.toPixel(well.x, well.y) : QPointF(nowhere, nowhere));

    m_northArrow = QRectF(area.right() - 24, area.top() + 6, 18, 20 + small.height());
    LabelSpace space{area.adjusted(2, 2, -2, -2), {m_northArrow}, 1.3 * symbolRadiusPx};
    if (!notice().isEmpty())
        space.reserved.append(
            QRectF(area.left(), area.top(), small.horizontalAdvance(notice()) + 12, small.height() + 6));
    const QFontMetricsF metrics(font());
    m_labels = placeLabels(
        m_pixels,
        [this, &metrics](int well) {
            const double width = metrics.horizontalAdvance(m_wells.at(well).name) + 4;
            return QSizeF(std::min(width, widestLabelPx), metrics.height());
        },
        space, m_selected);
}

// What the map does not show.
QString BaseMap::notice() const
{
    const int missing = m_wells.size() - m_placedCount;
    if (missing == 0 || m_placedCount == 0)
        return {};
    return missing == 1 ? QStringLiteral("1 well has no position")
                        : QStringLiteral("%1 wells have no position").arg(missing);
}

void BaseMap::paintEvent(QPaintEvent *)
{
    layOut();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    if (m_placedCount == 0) {
        painter.setPen(quietText(palette()));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         m_wells.isEmpty() ? QStringLiteral("No wells")
                                           : QStringLiteral("No well has a position yet."));
        return;
    }
    drawAxes(painter);
    painter.save();
    painter.setClipRect(m_frame.area());
    drawWells(painter);
    drawLabels(painter);
    drawNorthArrow(painter);
    painter.restore();
    drawFooter(painter);
}

void BaseMap::drawAxes(QPainter &painter)
{
    const QRectF area = m_frame.area();
    const QColor ink = quietText(palette());
    const QColor grid = mixed(palette().color(QPalette::Text), palette().color(QPalette::Base), 0.1);
    painter.setFont(smallFont());
    const QFontMetricsF metrics(smallFont());
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const MapTick &tick : m_eastings) {
        painter.setPen(grid);
        painter.drawLine(QPointF(tick.pixel, area.top()), QPointF(tick.pixel, area.bottom()));
        painter.setPen(ink);
        painter.drawLine(QPointF(tick.pixel, area.bottom()), QPointF(tick.pixel, area.bottom() + tickPx));
        const double half = metrics.horizontalAdvance(tick.text) / 2 + 1;
        if (tick.pixel - half >= 0 && tick.pixel + half <= width())
            painter.drawText(QRectF(tick.pixel - half, area.bottom() + tickPx, 2 * half, metrics.height()),
                             Qt::AlignCenter, tick.text);
    }
    for (const MapTick &tick : m_northings) {
        painter.setPen(grid);
        painter.drawLine(QPointF(area.left(), tick.pixel), QPointF(area.right(), tick.pixel));
        painter.setPen(ink);
        painter.drawLine(QPointF(area.left() - tickPx, tick.pixel), QPointF(area.left(), tick.pixel));
        const double half = metrics.horizontalAdvance(tick.text) / 2 + 1;
        if (tick.pixel - half < 0 || tick.pixel + half > area.bottom() + tickPx)
            continue;
        painter.save();
        painter.translate(area.left() - tickPx - 2 - metrics.height(), tick.pixel + half);
        painter.rotate(-90);
        painter.drawText(QRectF(0, 0, 2 * half, metrics.height()), Qt::AlignCenter, tick.text);
        painter.restore();
    }
    painter.setPen(ink);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area);
    if (!notice().isEmpty())
        painter.drawText(area.adjusted(6, 3, 0, 0), Qt::AlignLeft | Qt::AlignTop, notice());
    painter.setRenderHint(QPainter::Antialiasing);
}

void BaseMap::drawWells(QPainter &painter)
{
    for (int i = 0; i < m_pixels.size(); ++i)
        if (isFinite(m_pixels.at(i)))
            drawMapSymbol(painter, m_pixels.at(i), mapSymbolOf(m_wells.at(i).typeCode), symbolRadiusPx, palette());
    if (m_selected < 0 || !isFinite(m_pixels.at(m_selected)))
        return;
    const QColor highlight = palette().color(QPalette::Highlight);
    QColor halo = highlight;
    halo.setAlphaF(0.35);
    painter.setPen(QPen(highlight, 2));
    painter.setBrush(halo);
    painter.drawEllipse(m_pixels.at(m_selected), 2.2 * symbolRadiusPx, 2.2 * symbolRadiusPx);
    drawMapSymbol(painter, m_pixels.at(m_selected), mapSymbolOf(m_wells.at(m_selected).typeCode), symbolRadiusPx,
                  palette());
}

void BaseMap::drawLabels(QPainter &painter)
{
    painter.setFont(font());
    const QFontMetricsF metrics(font());
    for (const MapLabel &label : m_labels) {
        const bool isSelected = label.well == m_selected;
        QRectF rect = label.rect;
        if (isSelected) {
            // Moved off the ring around the symbol, and on a ground of its own: it may lie over other wells.
            const QPointF away = rect.center() - m_pixels.at(label.well);
            const double step = 1.1 * symbolRadiusPx;
            if (std::fabs(away.x()) > rect.width() / 2)
                rect.translate(std::copysign(step, away.x()), 0);
            else
                rect.translate(0, std::copysign(step, away.y()));
            painter.setPen(Qt::NoPen);
            painter.setBrush(palette().color(QPalette::Highlight));
            painter.drawRoundedRect(rect.adjusted(-1, 0, 1, 0), 3, 3);
        }
        painter.setPen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        painter.drawText(rect, Qt::AlignCenter,
                         metrics.elidedText(m_wells.at(label.well).name, Qt::ElideRight, rect.width()));
    }
}

void BaseMap::drawNorthArrow(QPainter &painter)
{
    const QColor ink = quietText(palette());
    const QRectF box = m_northArrow;
    const double middle = box.center().x();
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(QVector<QPointF>{QPointF(middle, box.top()), QPointF(middle + 6, box.top() + 18),
                                         QPointF(middle, box.top() + 14), QPointF(middle - 6, box.top() + 18)});
    painter.setPen(ink);
    painter.setFont(smallFont());
    painter.drawText(box, Qt::AlignHCenter | Qt::AlignBottom, QStringLiteral("N"));
}

// In the letters of the axes.
void BaseMap::drawFooter(QPainter &painter)
{
    const QRectF area = m_frame.area();
    const QFontMetricsF metrics(smallFont());
    const double middle = height() - outerMarginPx - metrics.height() / 2 + 2;
    const QColor ink = palette().color(QPalette::Text);

    const ScaleBar bar = scaleBar(m_frame, longestScaleBarPx);
    painter.setPen(QPen(ink, 1));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(QRectF(area.left(), middle - 2.5, bar.lengthPx, 5));
    painter.fillRect(QRectF(area.left(), middle - 2.5, bar.lengthPx / 2, 5), ink);
    painter.drawText(QPointF(area.left() + bar.lengthPx + 6, middle + metrics.ascent() / 2 - 1), bar.text);

    // The legend ends at the right edge; what finds no room beside the scale bar is left out.
    const double limit = area.left() + bar.lengthPx + metrics.horizontalAdvance(bar.text) + 18;
    double right = area.right();
    for (int i = m_symbols.size() - 1; i >= 0; --i) {
        const QString name = mapSymbolName(m_symbols.at(i));
        const double textLeft = right - metrics.horizontalAdvance(name);
        const double symbolCentre = textLeft - 3 - 1.6 * symbolRadiusPx;
        if (symbolCentre - 1.6 * symbolRadiusPx < limit)
            return;
        painter.setPen(ink);
        painter.drawText(QPointF(textLeft, middle + metrics.ascent() / 2 - 1), name);
        drawMapSymbol(painter, {symbolCentre, middle}, m_symbols.at(i), symbolRadiusPx * 0.9, palette());
        right = symbolCentre - 1.6 * symbolRadiusPx - 10;
    }
}

void BaseMap::mousePressEvent(QMouseEvent *event)
{
    layOut();
    const int well =
        event->button() == Qt::LeftButton ? wellAt(m_pixels, event->localPos(), clickRadiusPx, m_selected) : -1;
    if (well >= 0)
        emit wellClicked(well);
}

void BaseMap::resizeEvent(QResizeEvent *)
{
    invalidate();
}

void BaseMap::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        invalidate();
    QWidget::changeEvent(event);
}

bool BaseMap::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    layOut();
    const auto *help = static_cast<QHelpEvent *>(event);
    const int well = wellAt(m_pixels, help->pos(), clickRadiusPx);
    // Names come from data: a "<" in them is a character, not a tag.
    if (well >= 0)
        QToolTip::showText(help->globalPos(), toolTipText(m_wells.at(well).name), this);
    else
        QToolTip::hideText();
    return true;
}

} // namespace workbench
