#pragma once

#include <QAction>
#include <QKeySequence>
#include <QWidget>

namespace workbench {

/// An action of a widget without an entry in any menu: \a keys trigger it while the widget has the focus. The widget owns
/// it.
inline QAction *addWidgetKey(QWidget *widget, const QKeySequence &keys)
{
    auto *action = new QAction(widget);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    widget->addAction(action);
    return action;
}

} // namespace workbench
