#include "logview/viewdrag.h"

#include <QAbstractScrollArea>
#include <QScrollBar>

void ViewDrag::begin(const QPoint &position)
{
    QWidget *viewport = m_view->viewport();
    if (!m_isOn) {
        m_hadCursor = viewport->testAttribute(Qt::WA_SetCursor);
        m_cursor = viewport->cursor();
    }
    m_isOn = true;
    m_last = position;
    viewport->setCursor(Qt::ClosedHandCursor);
}

void ViewDrag::moveTo(const QPoint &position)
{
    const QPoint moved = position - m_last;
    m_last = position;
    m_view->horizontalScrollBar()->setValue(m_view->horizontalScrollBar()->value() - moved.x());
    m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->value() - moved.y());
}

void ViewDrag::end()
{
    if (!m_isOn)
        return;
    m_isOn = false;
    if (m_hadCursor)
        m_view->viewport()->setCursor(m_cursor);
    else
        m_view->viewport()->unsetCursor();
}
