#include "programs/batch/heldsignals.h"

namespace batch {

namespace {

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP};

} // namespace

HeldSignals::HeldSignals()
{
    sigset_t held;
    ::sigemptyset(&held);
    for (int signal : endingSignals)
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
        if (::sigismember(&waiting, signal) == 1)
            return true;
    return false;
}

} // namespace batch
