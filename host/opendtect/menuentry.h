#pragma once

#include <QAction>
#include <QPointer>

#include <functional>
#include <memory>

#include <callback.h>

class uiAction;
class uiMenu;

namespace opendtect {

/// One action of ours in a menu of the host, which owns it and may delete it at any time.
class MenuEntry : public CallBacker
{
public:
    /// Appends the action to the end of the menu. An empty \a iconId gives one without an icon.
    MenuEntry(uiMenu &menu, const QString &text, const QString &iconId, std::function<void()> triggered);
    /// Takes the action out of the menu.
    ~MenuEntry() override;
    MenuEntry(const MenuEntry &) = delete;
    MenuEntry &operator=(const MenuEntry &) = delete;

private:
    void actionTriggered(CallBacker *);
    void takeOut();

    uiMenu &m_menu;
    uiAction *m_action; ///< the host's; valid as long as m_watched is
    QPointer<QAction> m_watched;
    std::function<void()> m_triggered;
    std::shared_ptr<int> m_runs = std::make_shared<int>(0); ///< how many of its callbacks are on the stack
};

} // namespace opendtect
