#include "host/opendtect/shell.h"

#include <QMenu>

#include <odiconfile.h>
#include <uiicon.h>
#include <uimainwin.h>
#include <uimenu.h>
#include <uimsg.h>
#include <uistring.h>

namespace opendtect {

namespace {

// The host shows a picture of its own, and complains, where there is no icon of a name.
bool hasIcon(const QString &fileName)
{
    return OD::IconFile::isPresent(fileName.toUtf8().constData());
}

} // namespace

Shell::Shell(uiMainWin *window, uiMenu *menu)
    : m_widget(window ? window->qWidget() : nullptr)
    , m_menu(menu)
    , m_menuWidget(menu ? menu->getQMenu() : nullptr)
{
}

QIcon Shell::icon(const QString &fileName) const
{
    if (!hasIcon(fileName))
        return {};
    return uiIcon(fileName.toUtf8().constData()).qicon();
}

void Shell::showError(const QString &text) const
{
    uiMSG().error(toUiString(text));
}

int Shell::appendAction(const host::MenuAction &action)
{
    if (!m_menuWidget)
        return 0;
    const QString iconId = hasIcon(action.iconName) ? action.iconName : QString();
    m_entries[++m_lastActionId] = std::make_unique<MenuEntry>(*m_menu, action.text, iconId, action.triggered);
    return m_lastActionId;
}

} // namespace opendtect
