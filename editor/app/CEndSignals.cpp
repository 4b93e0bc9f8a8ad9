#include "editor/app/CEndSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace
{

constexpr int SIGNALS[] = {SIGTERM, SIGHUP, SIGINT};

volatile sig_atomic_t s_Pipe = -1;

void OnSignal(int iSignal)
{
    const int iError = errno;
    const auto uSignal = static_cast<unsigned char>(iSignal);
    // Nothing else is safe in a handler; a full pipe has a signal in it already.
    [[maybe_unused]] const ssize_t nWritten = ::write(s_Pipe, &uSignal, 1);
    errno = iError;
}

} // namespace

CEndSignals::CEndSignals(std::function<void()> onSignal)
    : m_OnSignal(std::move(onSignal))
{
    if (::pipe2(m_Pipe, O_CLOEXEC | O_NONBLOCK) != 0)
    {
        return;
    }
    s_Pipe = m_Pipe[1];
    m_pNotifier = new QSocketNotifier(m_Pipe[0], QSocketNotifier::Read);
    QObject::connect(m_pNotifier, &QSocketNotifier::activated, m_pNotifier, [this] { Take(); });
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int iSignal : SIGNALS)
    {
        ::sigaction(iSignal, &action, nullptr);
    }
}

CEndSignals::~CEndSignals()
{
    for (const int iSignal : SIGNALS)
    {
        ::signal(iSignal, SIG_DFL);
    }
    s_Pipe = -1;
    delete m_pNotifier;
    for (const int iEnd : m_Pipe)
    {
        if (iEnd >= 0)
        {
            ::close(iEnd);
        }
    }
}

void CEndSignals::Take()
{
    unsigned char uSignal = 0;
    if (::read(m_Pipe[0], &uSignal, 1) == 1 && m_Signal == 0)
    {
        m_Signal = uSignal;
        m_OnSignal();
    }
}

void EndBySignal(int iSignal)
{
    constexpr int SHELL_BASE = 128;
    ::signal(iSignal, SIG_DFL);
    ::raise(iSignal);
    // Reached where the signal is blocked.
    std::_Exit(SHELL_BASE + iSignal);
}
