#include "logview/depthcursor.h"

#include <QPainter>
#include <QWidget>

namespace {

constexpr QRgb lineColor = 0xff505050;

} // namespace

void DepthCursor::moveTo(int row)
{
    if (row == m_row)
        return;
    updateRow(m_row);
    m_row = row;
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
    m_viewport->update(0, row, m_viewport->width(), 1);
}

void DepthCursor::paint(const QRect &tracks) const
{
    const QRect line = QRect(tracks.left(), m_row, tracks.width(), 1) & tracks & m_viewport->rect();
    if (line.isEmpty())
        return;
    QPainter painter(m_viewport);
    painter.fillRect(line, QColor(lineColor));
}
