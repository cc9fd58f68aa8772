#include "las/shorttextdelegate.h"

#include "las/showntext.h"

QString ShortTextDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    return las::shortened(QStyledItemDelegate::displayText(value, locale));
}
