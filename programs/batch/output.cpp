#include "programs/batch/output.h"

#include "programs/batch/printer.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace batch {

namespace {

// 0, or the error number.
int writeAll(int file, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(file, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR)
            return errno;
        done += qMax<ssize_t>(count, 0);
    }
    return 0;
}

} // namespace

bool printOutput(const QByteArray &bytes)
{
    const int error = writeAll(STDOUT_FILENO, bytes);
    if (error != 0 && error != EPIPE)
        printMessage(
            QStringLiteral("Cannot write the output: %1.").arg(QString::fromLocal8Bit(std::strerror(error))));
    return error == 0;
}

void printError(const QByteArray &bytes)
{
    writeAll(STDERR_FILENO, bytes); // nobody is left who could be told
}

void printMessage(const QString &text)
{
    printError((QStringLiteral("lorva-batch: ") + harmless(text) + QLatin1Char('\n')).toUtf8());
}

void prepareStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", O_RDONLY)); // the lowest number that is free
}

} // namespace batch
