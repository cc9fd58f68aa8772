#include "logview/viewkeys.h"

#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <QScrollBar>

namespace logview {

bool scrollByKey(QAbstractScrollArea &view, const QKeyEvent &event)
{
    if (event.modifiers() & ~(Qt::ControlModifier | Qt::KeypadModifier))
        return false;
    if (event.key() == Qt::Key_Home)
        view.verticalScrollBar()->triggerAction(QScrollBar::SliderToMinimum);
    else if (event.key() == Qt::Key_End)
        view.verticalScrollBar()->triggerAction(QScrollBar::SliderToMaximum);
    else
        return false;
    return true;
}

} // namespace logview
