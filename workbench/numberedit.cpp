#include "workbench/numberedit.h"

#include <QDoubleValidator>

namespace workbench {

NumberEdit::NumberEdit(QWidget *parent)
    : QLineEdit(parent)
{
    // A comma passes as a grouping sign and so stays visible; it is left to the form to say that it is wrong.
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    auto *validator = new QDoubleValidator(this);
    validator->setLocale(locale);
    validator->setNotation(QDoubleValidator::ScientificNotation);
    setValidator(validator);
}

QSize NumberEdit::sizeHint() const
{
    QSize size = QLineEdit::sizeHint();
    size.setWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000000.00000")));
    return size;
}

} // namespace workbench
