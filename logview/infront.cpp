#include "logview/infront.h"

#include <QWidget>

// Tabs hide the pages behind.
bool logview::isInFront(const QWidget &display)
{
    for (const QWidget *widget = &display; widget && !widget->isWindow(); widget = widget->parentWidget())
        if (widget->isHidden())
            return false;
    return true;
}
