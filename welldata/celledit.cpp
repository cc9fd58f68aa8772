#include "welldata/celledit.h"

#include "base/cellproperties.h"

#include <QFocusEvent>
#include <QSignalBlocker>
#include <QVariant>

CellEdit::CellEdit(const QValidator *validator, int row, int column)
{
    setFrame(false);
    setFocusPolicy(Qt::ClickFocus); // Tab walks as the table says
    setValidator(validator);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setProperty(base::rowProperty, row);
    setProperty(base::columnProperty, column);
    connect(this, &QLineEdit::editingFinished, this, &CellEdit::finish);
}

int CellEdit::row() const
{
    return property(base::rowProperty).toInt();
}

int CellEdit::column() const
{
    return property(base::columnProperty).toInt();
}

void CellEdit::showText(const QString &text)
{
    const QSignalBlocker blocker(this);
    if (text != this->text())
        setText(text);
    setCursorPosition(0);
    m_known = this->text();
}

void CellEdit::finish()
{
    if (text() == m_known)
        return;
    m_known = text();
    emit edited();
}

// Qt's editingFinished() does not come for a text that is no number yet.
void CellEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        finish();
}
