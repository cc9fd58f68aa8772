#include "host/opendtect/menuentry.h"

#include "host/opendtect/odtext.h"

#include <QMenu>

#include <uiaction.h>
#include <uimenu.h>
#include <uistring.h>

namespace opendtect {

MenuEntry::MenuEntry(uiMenu &menu, const QString &text, const QString &iconId, std::function<void()> triggered)
    : m_menu(menu)
    , m_triggered(std::move(triggered))
{
    const CallBack callback = mCB(this, MenuEntry, actionTriggered);
    m_action = iconId.isEmpty() ? new uiAction(toUiString(text), callback)
                                : new uiAction(toUiString(text), callback, iconId.toUtf8().constData());
    m_watched = m_action->qaction();
    m_menu.insertAction(m_action);
}

MenuEntry::~MenuEntry()
{
    if (m_watched)
        takeOut();
    detachAllNotifiers();
}

void MenuEntry::takeOut()
{
    m_action->triggered.remove(mCB(this, MenuEntry, actionTriggered));
    if (*m_runs == 0) {
        m_menu.removeAction(m_action);
        return;
    }
    // The host still works with the action when its callback returns: the user sees it no more, and it goes when
    // the host is back in its event loop.
    m_menu.getQMenu()->removeAction(m_watched);
    QMetaObject::invokeMethod(
        m_watched, [menu = &m_menu, action = m_action] { menu->removeAction(action); }, Qt::QueuedConnection);
}

void MenuEntry::actionTriggered(CallBacker *)
{
    // The call may delete this entry and, with it, the function that runs.
    const std::function<void()> triggered = m_triggered;
    const std::shared_ptr<int> runs = m_runs;
    ++*runs;
    triggered();
    --*runs;
}

} // namespace opendtect
