#include "workbench/numberedit.h"

#include "base/numbervalidator.h"

namespace workbench {

NumberEdit::NumberEdit(QWidget *parent)
    : QLineEdit(parent)
{
    setValidator(new base::NumberValidator(this));
}

QSize NumberEdit::sizeHint() const
{
    QSize size = QLineEdit::sizeHint();
    size.setWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000000.00000")));
    return size;
}

} // namespace workbench
