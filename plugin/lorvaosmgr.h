#pragma once

#include "base/messageboxasker.h"
#include "datastore/projectdata.h"
#include "host/host.h"
#include "mainwin/mainwindow.h"
#include "plugin/launcher.h"

#include <QPointer>

#include <memory>

/// The plug-in manager: owns the menu action and the windows, and runs the launch at each click. One exists per
/// process, made when the host initialises the plug-in and deleted when it unloads the library.
class lorvaosMgr : public host::Listener
{
public:
    /// Appends the action "&LORVA OS 0.0" to the host's menu. \a host must outlive the manager.
    explicit lorvaosMgr(host::Host &host);
    ~lorvaosMgr() override;
    lorvaosMgr(const lorvaosMgr &) = delete;
    lorvaosMgr &operator=(const lorvaosMgr &) = delete;

    /// Shows the launcher, prepares everything and ends in the main window. A call while a launch runs does nothing.
    void launch();

    Launcher *launcher() const { return m_launcher; }
    MainWindow *mainWindow() const { return m_mainWindow; }

    void markersChanged(const QString &wellKey) override;
    void surveyChanged() override;

private:
    void runLaunch();
    void deleteWindows();

    host::Host &m_host;
    int m_actionId = 0;
    base::MessageBoxAsker m_asker;
    std::unique_ptr<ProjectData> m_data;
    // The host's window is their parent and may delete them before the manager goes.
    QPointer<Launcher> m_launcher;
    QPointer<MainWindow> m_mainWindow;
    bool m_isLaunching = false;
    bool m_isAbandoned = false; ///< the survey changed while a launch ran
};
