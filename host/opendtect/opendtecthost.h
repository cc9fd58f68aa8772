#pragma once

#include "host/opendtect/listenerlist.h"
#include "host/opendtect/odwells.h"
#include "host/opendtect/shell.h"
#include "host/opendtect/survey.h"

#include <QObject>

namespace opendtect {

/// OpendTect as the plug-in sees it.
class OpendTectHost : public host::Host
{
public:
    /// The host's main window and the menu for the plug-in's action; null in a program without windows.
    OpendTectHost(uiMainWin *window, uiMenu *menu);

    QString surveyDirectory() const override { return m_survey.directory(); }
    QString surveyName() const override { return m_survey.name(); }
    QString setupDataFolder() const override { return m_survey.setupDataFolder(); }
    QString documentationFolder() const override { return m_survey.documentationFolder(); }
    QIcon icon(const QString &fileName) const override { return m_shell.icon(fileName); }
    void showError(const QString &text) override { m_shell.showError(text); }
    QWidget *mainWidget() const override { return m_shell.mainWidget(); }
    int appendAction(const host::MenuAction &action) override { return m_shell.appendAction(action); }
    void removeAction(int id) override { m_shell.removeAction(id); }
    host::Wells &wells() override { return m_wells; }
    void addListener(host::Listener *listener) override { m_listeners.add(listener); }
    void removeListener(host::Listener *listener) override { m_listeners.remove(listener); }

private:
    ListenerList m_listeners;
    Survey m_survey;
    Shell m_shell;
    OdWells m_wells;
    QObject m_connections; ///< their end is its end
};

} // namespace opendtect
