#include "programs/batch/heldsignals.h"

namespace batch {

namespace {

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP};

// One that is ignored, as SIGINT is in the background of a script, ends nothing: while it is held it would seem to wait.
bool isEnding(int signal)
{
    struct sigaction action = {};
    return ::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_IGN;
}

} // namespace

HeldSignals::HeldSignals()
{
    sigset_t held;
    ::sigemptyset(&held);
    for (int signal : endingSignals)
        if (isEnding(signal))
            ::sigaddset(&held, signal);
    ::pthread_sigmask(SIG_BLOCK, &held, &m_before);
}

HeldSignals::~HeldSignals()
{
    ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

bool HeldSignals::isOneWaiting()
{
    sigset_t waiting;
    ::sigemptyset(&waiting);
    ::sigpending(&waiting);
    for (int signal : endingSignals)
        if (::sigismember(&waiting, signal) == 1 && isEnding(signal))
            return true;
    return false;
}

} // namespace batch
