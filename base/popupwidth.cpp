#include "base/popupwidth.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QScreen>
#include <QStyle>

namespace base {

void fitPopup(QComboBox &chooser)
{
    QAbstractItemView *list = chooser.view();
    const int bar = chooser.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list);
    const int wanted = list->sizeHintForColumn(chooser.modelColumn()) + bar + 2 * list->frameWidth();
    const QScreen *screen = chooser.screen();
    list->setMinimumWidth(screen ? qMin(wanted, screen->availableSize().width()) : wanted);
}

} // namespace base
