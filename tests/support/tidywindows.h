#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QHash>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QStringList>
#include <QStyle>
#include <QStyleOption>
#include <QTableView>

/// Whether a window is laid out as one expects: nothing lies on anything else, a label stands at the field that it names,
/// what is explained to the user begins as a sentence does, and Alt with a letter leads to one place.
namespace tidy {

inline QString nameOf(const QWidget *widget)
{
    const auto *label = qobject_cast<const QLabel *>(widget);
    return QStringLiteral("%1 %2 %3")
        .arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName(),
             label ? label->text() : QString());
}

inline QRect placeOf(const QWidget *widget)
{
    return QRect(widget->mapTo(widget->window(), QPoint(0, 0)), widget->size());
}

inline void findOverlaps(const QWidget *parent, QStringList *found)
{
    if (!parent->layout())
        return;
    QList<QWidget *> shown;
    for (QWidget *child : parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (child->isVisible() && !child->isWindow()
            && child->objectName() != QLatin1String("emptyHint")) // over empty tabs
            shown.append(child);
    for (int i = 0; i < shown.size(); ++i)
        for (int k = 0; k < i; ++k)
            if (shown.at(i)->geometry().intersects(shown.at(k)->geometry()))
                found->append(nameOf(shown.at(i)) + QStringLiteral(" lies on ") + nameOf(shown.at(k)));
}

// Before it in the same row, or above it.
inline bool standsAt(const QRect &label, const QRect &field)
{
    const bool isBefore =
        label.right() < field.left() && label.top() <= field.center().y() && label.bottom() >= field.center().y();
    const bool isAbove =
        label.bottom() < field.top() && label.left() <= field.right() && label.right() >= field.left();
    return isBefore || isAbove;
}

inline bool beginsAsASentence(QString text)
{
    text.remove(QLatin1Char('&'));
    return text.isEmpty() || !text.at(0).isLower();
}

// The Tab key reads a form as one reads it: down, or on to what stands further right.
inline void findUpwardTabs(const QWidget *window, QStringList *found)
{
    const QWidget *before = nullptr;
    for (const QWidget *now = window->nextInFocusChain(); now != window; now = now->nextInFocusChain()) {
        if (!now->isVisible() || now->window() != window || !(now->focusPolicy() & Qt::TabFocus) || now->focusProxy())
            continue;
        if (before && before->parentWidget() == now->parentWidget() && placeOf(now).bottom() < placeOf(before).top()
            && placeOf(now).left() <= placeOf(before).right())
            found->append(QStringLiteral("Tab goes up from %1 to %2").arg(nameOf(before), nameOf(now)));
        before = now;
    }
}

// Whether the text that stands in a widget finds no room there.
inline bool isCut(const QWidget *widget)
{
    if (const auto *button = qobject_cast<const QPushButton *>(widget))
        return button->width() < button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
    if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
        QStyleOptionComboBox option;
        option.initFrom(box);
        option.editable = box->isEditable();
        const QRect room =
            box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
        return room.width() < box->fontMetrics().horizontalAdvance(box->currentText());
    }
    const auto *label = qobject_cast<const QLabel *>(widget);
    return label && !label->wordWrap() && label->minimumWidth() == 0 && label->pixmap(Qt::ReturnByValue).isNull()
        && label->width() < label->minimumSizeHint().width();
}

// Titles of columns; those that may break into lines are left out.
inline void findCutTitles(const QTableView *table, QStringList *found)
{
    const QHeaderView *header = table->horizontalHeader();
    if (!header->isVisible() || header->defaultAlignment() & Qt::TextWordWrap || !table->model())
        return;
    for (int column = 0; column < table->model()->columnCount(); ++column) {
        const QString title = table->model()->headerData(column, Qt::Horizontal).toString();
        if (!header->isSectionHidden(column)
            && header->sectionSize(column) < header->fontMetrics().horizontalAdvance(title))
            found->append(nameOf(table) + QStringLiteral(" cuts the title ") + title);
    }
}

// Alt and a letter lead to one place.
inline void findSharedMnemonics(const QWidget *window, QStringList *found)
{
    QHash<QString, QString> textsByKey;
    const auto note = [&textsByKey, found](const QString &text) {
        const QString key = QKeySequence::mnemonic(text).toString();
        const QString other = key.isEmpty() ? QString() : textsByKey.value(key);
        if (!other.isEmpty())
            found->append(QStringLiteral("%1 is for \"%2\" and for \"%3\"").arg(key, other, text));
        textsByKey.insert(key, text);
    };
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->window() != window)
            continue;
        const auto *label = qobject_cast<const QLabel *>(widget);
        if (label && label->buddy())
            note(label->text());
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            note(button->text());
        if (const auto *menus = qobject_cast<const QMenuBar *>(widget))
            for (const QAction *menu : menus->actions())
                note(menu->text());
    }
}

/// What is not as one expects, each with its widget. \a count gets the number of widgets that were looked at.
inline QStringList faults(QWidget *window, int *count)
{
    QStringList found;
    const auto judge = [&found](const QWidget *widget, const QString &text) {
        if (!beginsAsASentence(text))
            found.append(nameOf(widget) + QStringLiteral(" says: ") + text);
    };
    findUpwardTabs(window, &found);
    findSharedMnemonics(window, &found);
    QList<QWidget *> widgets = window->findChildren<QWidget *>();
    widgets.append(window);
    for (const QWidget *widget : qAsConst(widgets)) {
        if (!widget->isVisible() || widget->window() != window)
            continue;
        ++*count;
        findOverlaps(widget, &found);
        if (isCut(widget))
            found.append(nameOf(widget) + QStringLiteral(" is cut"));
        judge(widget, widget->toolTip());
        for (const QAction *action : widget->actions())
            judge(widget, action->toolTip());
        if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            const QWidget *field = label->buddy();
            if (field)
                judge(widget, label->text());
            if (field && field->isVisible() && field->window() == window && !standsAt(placeOf(label), placeOf(field)))
                found.append(nameOf(label) + QStringLiteral(" does not stand at ") + nameOf(field));
        } else if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
            judge(widget, button->isCheckable() ? QString() : button->text()); // those may go on with a row's text
        } else if (const auto *line = qobject_cast<const QLineEdit *>(widget)) {
            judge(widget, line->placeholderText());
        } else if (const auto *table = qobject_cast<const QTableView *>(widget)) {
            findCutTitles(table, &found);
            for (int column = 0; table->model() && column < table->model()->columnCount(); ++column)
                judge(widget, table->model()->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString());
        }
    }
    return found;
}

} // namespace tidy
