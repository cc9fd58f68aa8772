#include "logview/depthcursor.h"

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

namespace {

constexpr QRgb lineColor = 0xff505050;
constexpr int spareRows = 1; // on scaled screens a row need not begin at a pixel

bool isScaled(const QWidget &viewport)
{
    return viewport.devicePixelRatioF() != 1;
}

} // namespace

void DepthCursor::moveTo(int row)
{
    if (row == m_row)
        return;
    updateRow(m_row);
    m_row = row;
    if (isScaled(*m_viewport) && m_pixels.isEmpty())
        m_viewport->update();
    else
        updateRow(m_row);
}

void DepthCursor::hide()
{
    moveTo(noRow);
}

void DepthCursor::scrolled(int dy)
{
    if (m_row == noRow)
        return;
    updateRow(m_row + dy);
    updateRow(m_row);
}

void DepthCursor::updateRow(int row)
{
    if (row != noRow)
        m_viewport->update(0, row - spareRows, m_viewport->width(), 1 + 2 * spareRows);
}

// On scaled screens a part that is painted anew would not fit its neighbours; and there the view paints all of itself
// whenever its scene changed. So a part is wanted for the line only, and what it covers is still known.
void DepthCursor::paint(const QPaintEvent &event, const QRect &tracks, const std::function<void()> &paintView)
{
    const bool isWhole = QRegion(m_viewport->rect()).subtracted(event.region()).isEmpty();
    if (isWhole || !isScaled(*m_viewport) || !m_pixels.draw(*m_viewport)) {
        paintView();
        if (isWhole && isScaled(*m_viewport) && m_row != noRow)
            m_pixels.take(*m_viewport);
        else
            m_pixels.forget();
    }
    paintLine(tracks);
}

void DepthCursor::paintLine(const QRect &tracks)
{
    const QRect line = QRect(tracks.left(), m_row, tracks.width(), 1) & tracks & m_viewport->rect();
    if (m_row == noRow || line.isEmpty())
        return;
    QPainter painter(m_viewport);
    painter.fillRect(line, QColor(lineColor));
}
