#pragma once

#include <QImage>

#include <functional>

QT_BEGIN_NAMESPACE
class QPainter;
class QPrinter;
QT_END_NAMESPACE

/// The page of one print of a work area's current display. A preview asks for it again and again: the display's picture file
/// is written at the first time only, and the page is drawn anew only when its size changes.
class PrintedPage
{
public:
    /// \a view has saveCurrentPicture() and renderCurrent(), and must outlive the page.
    template<class View>
    explicit PrintedPage(View &view)
        : m_savePicture([&view] { view.saveCurrentPicture(); })
        , m_render([&view](QPainter &painter) { view.renderCurrent(painter); })
    {
    }

    /// False when the printer does not start: then nothing was drawn or written.
    bool paint(QPrinter &printer);

private:
    std::function<void()> m_savePicture;
    std::function<void(QPainter &)> m_render;
    bool m_isPictureSaved = false;
    QImage m_page;
};
