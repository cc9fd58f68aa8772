#pragma once

#include "host/host.h"
#include "survey/surveystore.h"

#include <QHash>
#include <QIcon>
#include <QMenu>
#include <QPointer>
#include <QWidget>

namespace workbench {

/// The workbench as plug-ins see it: its survey, its resources, and its menu "Utilities".
class WorkbenchHost : public host::Host
{
public:
    /// \a dataFolder holds "icons.Default", "ColorBars" and "doc".
    explicit WorkbenchHost(const QString &dataFolder);
    ~WorkbenchHost() override;

    /// The folder of icons, colour bars and documentation beside the running program.
    static QString installedDataFolder();

    /// The window that plug-ins get as parent and the menus that receive their actions; none is owned. Without a menu of
    /// wells there are no actions for it.
    void setWindow(QWidget *window, QMenu *menu, QMenu *wellsMenu = nullptr);
    /// Makes another survey current and tells the listeners.
    void setSurvey(const QString &directory);
    /// Tells the listeners that the program ends.
    void announceClosing();
    survey::SurveyStore &store() { return m_store; }

    QString surveyDirectory() const override;
    QString surveyName() const override;
    QString setupDataFolder() const override { return m_dataFolder; }
    QString documentationFolder() const override;
    QIcon icon(const QString &fileName) const override;
    void showError(const QString &text) override;
    QWidget *mainWidget() const override { return m_window; }
    int appendAction(const host::MenuAction &action) override;
    int appendWellsAction(const host::MenuAction &action) override;
    void removeAction(int id) override;
    host::Wells &wells() override { return m_store; }
    void addListener(host::Listener *listener) override;
    void removeListener(host::Listener *listener) override;

private:
    void followWindows();
    QWidget *windowInUse() const;
    int append(QMenu *menu, const host::MenuAction &action);
    template<class Call>
    void tell(const Call &call) const;

    QString m_dataFolder;
    mutable QHash<QString, QIcon> m_icons; ///< by their files' names without the ending
    survey::SurveyStore m_store;
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_lastWindow; ///< of the windows of workbench and plug-ins the one that had the focus last
    QObject m_whileAlive; ///< ends the connections with the host, which is no QObject
    QPointer<QMenu> m_menu;
    QPointer<QMenu> m_wellsMenu;
    QHash<int, QPointer<QAction>> m_actions;
    int m_lastActionId = 0;
    QVector<host::Listener *> m_listeners;
};

} // namespace workbench
