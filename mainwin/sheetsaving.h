#pragma once

#include "logview/paper/sheet.h"

#include <functional>

QT_BEGIN_NAMESPACE
class QGraphicsScene;
class QWidget;
QT_END_NAMESPACE

struct ProjectData;

namespace sheetsaving {

/// Asks the user for the file; an empty text means none. What is there may be replaced.
using PathChooser = std::function<QString(QWidget *window, const QString &title, const QString &proposed)>;
PathChooser fileDialog();

extern const char title[]; ///< of all its boxes

/// A display that can be saved.
struct Display
{
    QGraphicsScene *headerScene = nullptr; ///< null where there is none
    QGraphicsScene *logScene = nullptr;
    logview::SheetContents contents;
};

/// Asks for paper and file, and saves the display there as PDF at its true scale. A box shows how far that is when it takes
/// a while; cancelled or failed, it leaves the file as it was. Gives a sentence for the status line, empty when the user
/// gave up. Events are handled meanwhile.
QString saveSheet(ProjectData &data, const Display &display, QWidget *window, const PathChooser &choosePath);

} // namespace sheetsaving
