#pragma once

#include "logview/picturepage.h"

#include <functional>
#include <optional>

QT_BEGIN_NAMESPACE
class QPrinter;
QT_END_NAMESPACE

/// The page of one print of a work area's current display. A preview asks for it again and again: the display is drawn
/// once, into its picture file and for the page.
class PrintedPage
{
public:
    enum class Outcome {
        Painted,
        NotStarted, ///< the printer does not start: nothing was drawn or written
        Cancelled ///< the user had enough of waiting: the page is empty and stays so
    };

    /// \a view has saveCurrentPicture(), and must outlive the page.
    template<class View>
    explicit PrintedPage(View &view)
        : m_savePicture([&view] { return view.saveCurrentPicture(); })
    {
    }

    Outcome paint(QPrinter &printer);

private:
    std::function<std::optional<PicturePage>()> m_savePicture;
    bool m_isPictureSaved = false;
    std::optional<PicturePage> m_picture;
    QImage m_page; ///< the picture at the size of the last page
};
