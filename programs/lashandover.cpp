#include "programs/lashandover.h"

#include "base/nestedevents.h"

#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>
#include <QWidget>
#include <QtNetwork/QLocalSocket>

#include <algorithm>

namespace programs {

namespace {

constexpr int patienceMs = 3000;
constexpr int retryMs = 200;
constexpr int longestMessage = 1 << 20;
constexpr char taken[] = "taken\n";

// Sockets of the workbenches on this display begin so; empty where there is no place for them.
QString socketStem()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (folder.isEmpty() || !QDir(folder).exists())
        return {};
    QString display = qEnvironmentVariable("WAYLAND_DISPLAY", qEnvironmentVariable("DISPLAY"));
    for (QChar &character : display)
        if (!character.isLetterOrNumber())
            character = QLatin1Char('_');
    return folder + QStringLiteral("/lorva-workbench-") + display + QLatin1Char('-');
}

bool isTaken(const QString &socketPath, const QByteArray &message)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(patienceMs)) {
        if (socket.error() == QLocalSocket::ConnectionRefusedError)
            QLocalServer::removeServer(socketPath); // its workbench died
        return false;
    }
    socket.write(message);
    while (socket.bytesAvailable() < static_cast<int>(sizeof taken) - 1)
        if (!socket.waitForReadyRead(patienceMs))
            return false;
    return socket.readAll() == taken;
}

QStringList pathsIn(const QByteArray &message)
{
    QStringList paths;
    for (const QJsonValue &path : QJsonDocument::fromJson(message).array())
        if (QDir::isAbsolutePath(path.toString()))
            paths.append(path.toString());
    return paths;
}

} // namespace

bool handOverLasFiles(const QStringList &paths)
{
    const QString stem = socketStem();
    if (stem.isEmpty() || paths.isEmpty())
        return false;
    QJsonArray absolute;
    for (const QString &path : paths)
        absolute.append(QDir::current().absoluteFilePath(path));
    const QByteArray message = QJsonDocument(absolute).toJson(QJsonDocument::Compact) + '\n';
    const QFileInfo place(stem);
    const QFileInfoList sockets =
        place.dir().entryInfoList({place.fileName() + QLatin1Char('*')}, QDir::System, QDir::Time);
    return std::any_of(sockets.begin(), sockets.end(),
                       [&message](const QFileInfo &socket) { return isTaken(socket.filePath(), message); });
}

LasReceiver::LasReceiver(QWidget &window, const Open &open)
    : m_window(window)
    , m_open(open)
{
    const QString stem = socketStem();
    connect(&m_server, &QLocalServer::newConnection, this, &LasReceiver::takeConnections);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!stem.isEmpty())
        m_server.listen(stem + QString::number(QCoreApplication::applicationPid())); // else it is not found
}

void LasReceiver::takeConnections()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto read = [this, socket] {
            if (socket->canReadLine()) {
                const QStringList paths = pathsIn(socket->readLine());
                socket->write(taken);
                socket->flush();
                socket->disconnectFromServer();
                take(paths);
            } else if (socket->bytesAvailable() > longestMessage) {
                socket->abort();
            }
        };
        connect(socket, &QLocalSocket::readyRead, this, read);
        read();
    }
}

void LasReceiver::take(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    m_waiting += paths;
    m_waiting.removeDuplicates();
    m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
    m_window.show();
    m_window.raise();
    m_window.activateWindow();
    QApplication::alert(&m_window); // where the desktop lets no window come forward by itself
    if (!m_isDue)
        QTimer::singleShot(0, this,
                           &LasReceiver::openWhenFree); // not within the socket's signal: it waits for the user
    m_isDue = true;
}

void LasReceiver::openWhenFree()
{
    m_isDue =
        QApplication::activeModalWidget() || QApplication::activePopupWidget() || base::NestedEvents::areHandled();
    if (m_isDue) {
        QTimer::singleShot(retryMs, this, &LasReceiver::openWhenFree);
        return;
    }
    const QStringList paths = m_waiting;
    m_waiting.clear();
    m_open(paths);
}

} // namespace programs
