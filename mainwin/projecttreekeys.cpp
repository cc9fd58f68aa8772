// How the keyboard works in the tree: typed names find wells, and keys act as clicks do.

#include "mainwin/projecttreewidget.h"

#include <QApplication>
#include <QKeyEvent>

bool ProjectTreeWidget::isSearching() const
{
    return m_sinceTyped.isValid() && m_sinceTyped.elapsed() <= QApplication::keyboardInputInterval();
}

// Blanks, "-", "+" and "*" are keys with a meaning of their own, but also characters of wells' names.
bool ProjectTreeWidget::continuesSearch(const QKeyEvent *event) const
{
    constexpr auto otherUse = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (!isSearching() || m_typed.isEmpty() || event->text().isEmpty() || event->modifiers() & otherUse)
        return false;
    const QString wanted = m_typed + event->text();
    for (int i = 0; i < m_wells->childCount(); ++i)
        if (m_wells->child(i)->text(0).startsWith(wanted, Qt::CaseInsensitive))
            return true;
    return false;
}

void ProjectTreeWidget::keyboardSearch(const QString &search)
{
    m_typed = isSearching() && !search.isEmpty() ? m_typed + search : search;
    m_sinceTyped.start();
    QTreeWidget::keyboardSearch(search);
    const auto isFound = [this](const QTreeWidgetItem *item) {
        return item && item->text(0).startsWith(m_typed, Qt::CaseInsensitive);
    };
    QTreeWidgetItem *well = nullptr;
    for (int i = 0; i < m_wells->childCount() && !m_typed.isEmpty(); ++i) {
        QTreeWidgetItem *candidate = m_wells->child(i);
        // A single letter pressed again goes through all that begin with it.
        const bool isWhole = m_typed.size() > 1 && isFound(candidate) && candidate->text(0).size() == m_typed.size();
        if (isWhole || (!well && !isFound(currentItem()) && isFound(candidate)))
            well = candidate;
        if (isWhole)
            break;
    }
    if (!well)
        return;
    setCurrentItem(well);
    scrollToItem(well);
}

// The tree toggles a check box on the space bar without a click: it has to act as a click does.
void ProjectTreeWidget::keyPressEvent(QKeyEvent *event)
{
    if (continuesSearch(event)) {
        keyboardSearch(event->text());
        return;
    }
    m_pressed = nullptr;
    QTreeWidgetItem *item = currentItem();
    if (item && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        itemDoubleClick(item, 0);
    const int before = item ? item->checkState(0) : -1;
    QTreeWidget::keyPressEvent(event);
    const bool isToggleKey = event->key() == Qt::Key_Space || event->key() == Qt::Key_Select;
    if (isToggleKey && item && item == currentItem() && item->checkState(0) != before)
        itemSelected(item, 0);
}
