#pragma once

#include "logview/displaypicture.h"
#include "logview/picturepage.h"

#include <optional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

struct Project;

namespace logview {

/// What came of saving the picture of a display.
struct SavedPicture
{
    QString status; ///< where it lies, or what failed: a sentence for the status line
    /// What a printed page shows of it, also where the file failed; nothing when the user cancelled.
    std::optional<PicturePage> page;
};

/// Renders a display once: into the file \a title and the ending of \a format in the project folder, and for a page. A
/// box over \a window shows how far that is when it takes a while; cancelled, it leaves the file as it was. Events are
/// handled meanwhile.
SavedPicture saveDisplayPicture(QGraphicsScene &headerScene, QGraphicsScene &logScene, const Project &project,
                                const QString &title, PictureFormat format, QWidget *window);

} // namespace logview
