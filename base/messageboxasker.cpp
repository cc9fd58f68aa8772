#include "base/messageboxasker.h"

#include "base/nestedevents.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace base {

namespace {

QMessageBox::Icon iconOf(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Warning:
        return QMessageBox::Warning;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Information:
        break;
    }
    return QMessageBox::Information;
}

QMessageBox::StandardButton buttonOf(BoxButton button)
{
    switch (button) {
    case BoxButton::Yes:
        return QMessageBox::Yes;
    case BoxButton::No:
        return QMessageBox::No;
    case BoxButton::Cancel:
        return QMessageBox::Cancel;
    case BoxButton::Ok:
        break;
    }
    return QMessageBox::Ok;
}

// Questions name their answers, so these keep their texts whatever the host's language; of Ok it is the box's choice.
void setButtonText(QPushButton *button, BoxButton which, const Box &box)
{
    if (which == BoxButton::Yes)
        button->setText(QStringLiteral("&Yes"));
    else if (which == BoxButton::No)
        button->setText(QStringLiteral("&No"));
    else if (which == BoxButton::Cancel)
        button->setText(QStringLiteral("&Cancel"));
    else if (!box.okText.isEmpty())
        button->setText(box.okText);
}

// What closing the box without a button means.
BoxButton escapeButton(const Box &box)
{
    for (const BoxButton button : {BoxButton::Cancel, BoxButton::No})
        if (box.buttons.contains(button))
            return button;
    return BoxButton::Ok;
}

} // namespace

MessageBoxAsker::MessageBoxAsker(QWidget *parent)
    : m_parent(parent)
{
}

// The window the user works in: over another one, the box would bring that to the front. Right behind a box none is
// active, until the window system has given the focus back.
QWidget *MessageBoxAsker::windowBelow()
{
    QWidget *below = QApplication::activeModalWidget();
    if (!below)
        below = QApplication::activeWindow();
    if (!below && m_below && m_below->isVisible())
        below = m_below;
    if (!below)
        below = m_parent;
    m_below = below;
    return below;
}

BoxButton MessageBoxAsker::show(const Box &box)
{
    const NestedEvents events;
    // On the heap: the parent may go while the box is shown, and takes the box along.
    QPointer<QMessageBox> messageBox =
        new QMessageBox(iconOf(box.icon), box.title, box.text, QMessageBox::NoButton, windowBelow());
    // Names of wells and files come from data: a "<" in them is a character, not a tag.
    messageBox->setTextFormat(Qt::PlainText);
    for (BoxButton button : box.buttons)
        setButtonText(messageBox->addButton(buttonOf(button)), button, box);
    if (!box.buttons.isEmpty())
        messageBox->setDefaultButton(buttonOf(box.defaultButton.value_or(box.buttons.first())));
    messageBox->setEscapeButton(buttonOf(escapeButton(box)));
    // Work that waits for the answer does not make the user wait.
    const bool isWorking = QGuiApplication::overrideCursor();
    if (isWorking)
        QGuiApplication::setOverrideCursor(QCursor(Qt::ArrowCursor));
    const int clicked = messageBox->exec();
    if (isWorking)
        QGuiApplication::restoreOverrideCursor();
    delete messageBox;
    for (BoxButton button : box.buttons)
        if (clicked == buttonOf(button))
            return button;
    return escapeButton(box);
}

} // namespace base
