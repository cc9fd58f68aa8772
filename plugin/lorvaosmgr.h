#pragma once

#include "base/messageboxasker.h"
#include "datastore/projectdata.h"
#include "host/host.h"
#include "mainwin/mainwindow.h"
#include "plugin/launcher.h"
#include "plugin/launchguard.h"

#include <QMetaObject>
#include <QPointer>

#include <memory>

/// The plug-in manager: owns the menu action and the windows, and runs the launch at each click. One exists per
/// process, made when the host initialises the plug-in and deleted when it unloads the library.
///
/// Windows go when the survey changes, the host closes or a new launch begins, but never under the feet of code that
/// still works with them (a box that stands, an operation that handles events): then they go when it has returned.
class lorvaosMgr : public host::Listener
{
public:
    /// Appends the action "&LORVA OS 0.0" to the host's menu. \a host must outlive the manager.
    explicit lorvaosMgr(host::Host &host);
    ~lorvaosMgr() override;
    lorvaosMgr(const lorvaosMgr &) = delete;
    lorvaosMgr &operator=(const lorvaosMgr &) = delete;

    /// Shows the launcher, prepares everything and ends in the main window. A call while a launch runs does nothing;
    /// one while something else of the plug-in is still to return waits for that.
    void launch();

    Launcher *launcher() const { return m_launcher; }
    MainWindow *mainWindow() const { return m_mainWindow; }

    void markersChanged(const QString &wellKey) override;
    void surveyChanged() override;
    void hostClosing() override;

private:
    /// What one launch works on.
    struct Launch
    {
        Launch(host::Host &realHost, base::Asker &realAsker)
            : host(realHost)
            , asker(realAsker, host)
            , data(host, asker)
        {
        }
        GuardedHost host;
        GuardedAsker asker;
        ProjectData data;
    };

    void runLaunch();
    void saveAtTrueScale();
    void makeLauncher(ProjectData &launchData);
    bool isRunning() const { return m_launch && !m_launch->host.hasEnded(); }
    void endLaunch();
    void hostWindowGoes();
    void deleteWindows();
    void deleteEndedLaunch();

    host::Host &m_host;
    int m_actionId = 0;
    int m_paperActionId = 0; ///< in the host's menu of wells, where it has one
    base::MessageBoxAsker m_asker;
    std::unique_ptr<Launch> m_launch;
    // The host's window is their parent and may delete them before the manager goes.
    QPointer<Launcher> m_launcher;
    QPointer<MainWindow> m_mainWindow;
    bool m_isLaunching = false;
    bool m_isLaunchDue = false;
    QMetaObject::Connection m_hostWindowWatch;
    QObject m_context; ///< of what waits; its end is its end
};
