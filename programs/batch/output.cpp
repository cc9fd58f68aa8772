#include "programs/batch/output.h"

#include "programs/batch/printer.h"
#include "programs/batch/wholebytes.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace batch {

bool printOutput(const QByteArray &bytes)
{
    const int error = writeWhole(STDOUT_FILENO, bytes.constData(), static_cast<size_t>(bytes.size()));
    if (error != 0 && error != EPIPE)
        printMessage(
            QStringLiteral("Cannot write the output: %1.").arg(QString::fromLocal8Bit(std::strerror(error))));
    return error == 0;
}

void printError(const QByteArray &bytes)
{
    writeWhole(STDERR_FILENO, bytes.constData(),
               static_cast<size_t>(bytes.size())); // nobody is left who could be told
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
