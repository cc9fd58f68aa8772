#pragma once

#include <csignal>

namespace batch {

/// Keeps the signals that end a program (SIGINT, SIGTERM, SIGHUP) waiting for as long as it lives, so that what is being
/// written ends as it should. Those that came meanwhile do then what they always do.
class HeldSignals
{
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals &) = delete;
    HeldSignals &operator=(const HeldSignals &) = delete;

    /// Whether one waits: long work may end early, without a trace.
    static bool isOneWaiting();

private:
    sigset_t m_before;
};

} // namespace batch
