#pragma once

#include <csignal>

namespace fs
{

// While it lives, signals that end the process wait: renames that belong together are not torn
// apart by one. SIGKILL waits for nobody.
class CSignalsHeld
{
public:
    CSignalsHeld()
    {
        sigset_t held;
        sigemptyset(&held);
        for (const int iSignal : {SIGINT, SIGTERM, SIGHUP})
        {
            sigaddset(&held, iSignal);
        }
        ::pthread_sigmask(SIG_BLOCK, &held, &m_Before);
    }

    ~CSignalsHeld() { ::pthread_sigmask(SIG_SETMASK, &m_Before, nullptr); }

    CSignalsHeld(const CSignalsHeld&) = delete;
    CSignalsHeld& operator=(const CSignalsHeld&) = delete;

private:
    sigset_t m_Before = {};
};

} // namespace fs
