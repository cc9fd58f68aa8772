#pragma once

#include <QImage>

QT_BEGIN_NAMESPACE
class QPrinter;
QT_END_NAMESPACE

class WellLogsViewWidget;

/// The page of one print of the current log display. A preview asks for it again and again: the display's picture file
/// is written at the first time only, and the page is drawn anew only when its size changes.
class PrintedPage
{
public:
    /// \a view must outlive it.
    explicit PrintedPage(WellLogsViewWidget &view)
        : m_view(view)
    {
    }

    /// False when the printer does not start: then nothing was drawn or written.
    bool paint(QPrinter &printer);

private:
    WellLogsViewWidget &m_view;
    bool m_isPictureSaved = false;
    QImage m_page;
};
