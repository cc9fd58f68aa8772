#include "programs/batch/progress.h"

#include "programs/batch/output.h"

#include <unistd.h>

namespace batch {

namespace {

constexpr qint64 silentMs = 1000;
constexpr char clearLine[] = "\r\x1b[K";

} // namespace

Progress::Progress(const QString &what, int total)
    : m_what(what)
    , m_total(total)
    , m_isTerminal(::isatty(STDERR_FILENO) == 1)
{
    m_time.start();
}

Progress::~Progress()
{
    if (m_shown >= 0)
        printError(clearLine);
}

void Progress::setDone(int done)
{
    if (!m_isTerminal || done == m_shown || m_time.elapsed() < silentMs)
        return;
    m_shown = done;
    printError(clearLine + QStringLiteral("%1: %2 of %3").arg(m_what).arg(done).arg(m_total).toUtf8());
}

} // namespace batch
