#pragma once

#include "host/host.h"
#include "host/opendtect/menuentry.h"

#include <QPointer>
#include <QWidget>

#include <map>
#include <memory>

class uiMainWin;

namespace opendtect {

/// The host's main window, the menu that takes our actions, its icons and its message boxes.
class Shell
{
public:
    /// Both may be null: a program without windows has neither.
    Shell(uiMainWin *window, uiMenu *menu);

    QIcon icon(const QString &fileName) const;
    void showError(const QString &text) const;
    QWidget *mainWidget() const { return m_widget; }
    int appendAction(const host::MenuAction &action);
    void removeAction(int id) { m_entries.erase(id); }

private:
    QPointer<QWidget> m_widget;
    uiMenu *m_menu; ///< valid as long as m_menuWidget is
    QPointer<QWidget> m_menuWidget;
    std::map<int, std::unique_ptr<MenuEntry>> m_entries;
    int m_lastActionId = 0;
};

} // namespace opendtect
