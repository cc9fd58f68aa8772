#pragma once

#include <QStringList>
#include <QtNetwork/QLocalServer>

#include <functional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

/// A double click on a LAS file starts the workbench. Where one runs already, of this user on this display, that one gets the
/// file: nobody wants a second workbench on the survey in front of them. They find each other by a socket in the user's runtime
/// folder; without such a folder (XDG_RUNTIME_DIR) each start is one of its own.
namespace programs {

/// Gives LAS files to the workbench that was started last. False when none runs or none answers.
bool handOverLasFiles(const QStringList &paths);

/// Takes the files that later starts hand over.
class LasReceiver : public QObject
{
    Q_OBJECT

public:
    using Open = std::function<void(const QStringList &paths)>;

    /// \a window comes to the front when files arrive; \a open gets them once no dialog and no menu is up.
    LasReceiver(QWidget &window, const Open &open);

    bool isListening() const { return m_server.isListening(); }

private:
    void takeConnections();
    void take(const QStringList &paths);
    void openWhenFree();

    QWidget &m_window;
    Open m_open;
    QLocalServer m_server;
    QStringList m_waiting;
    bool m_isDue = false;
};

} // namespace programs
