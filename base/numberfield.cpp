#include "base/numberfield.h"

#include "base/numbervalidator.h"

#include <QFocusEvent>
#include <QSignalBlocker>

namespace base {

NumberField::NumberField(QWidget *parent)
    : QLineEdit(parent)
{
    setValidator(new NumberValidator(this));
    connect(this, &QLineEdit::editingFinished, this, &NumberField::finish);
}

void NumberField::showText(const QString &text)
{
    const QSignalBlocker blocker(this);
    setText(text);
    m_known = text;
}

void NumberField::enterText(const QString &text)
{
    setText(text);
    finish();
}

void NumberField::finish()
{
    if (text() == m_known)
        return;
    m_known = text();
    emit edited();
}

void NumberField::focusOutEvent(QFocusEvent *event)
{
    const bool isLeft = event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason;
    if (isLeft && !hasAcceptableInput())
        showText(m_known);
    QLineEdit::focusOutEvent(event);
}

} // namespace base
