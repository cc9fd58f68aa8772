#pragma once

#include <QCursor>
#include <QPoint>

QT_BEGIN_NAMESPACE
class QAbstractScrollArea;
QT_END_NAMESPACE

/// Scrolling a view by dragging what it shows. The view hands the mouse on.
class ViewDrag
{
public:
    /// \a view must outlive the object.
    explicit ViewDrag(QAbstractScrollArea *view)
        : m_view(view)
    {
    }

    /// Positions are those of the viewport, whose cursor is a closed hand until the end.
    void begin(const QPoint &position);
    void moveTo(const QPoint &position);
    void end();
    bool isOn() const { return m_isOn; }

private:
    QAbstractScrollArea *m_view;
    QPoint m_last;
    QCursor m_cursor; ///< of before
    bool m_hadCursor = false;
    bool m_isOn = false;
};
