#include "host/Program.h"

#include "engine/files/Temporaries.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace
{

extern "C" void OnEndingSignal(int iSignal)
{
    fs::RemoveNotedTemporaries();
    // The action is the system's again by now; the signal comes once this has returned.
    ::raise(iSignal);
}

} // namespace

void GuardStandardStreams()
{
    for (const int iStream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    {
        if (::fcntl(iStream, F_GETFD) < 0)
        {
            // Opened the wrong way round, so that using it still fails. The lowest free number is
            // this one, as those below are taken.
            [[maybe_unused]] const int iPlaced =
                ::open("/dev/null", iStream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
    // Ignored, a write without a reader or beyond a limit of size fails instead of ending the
    // process.
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
}

bool FlushStandardOutput(const char* pszProgram)
{
    errno = 0;
    const bool bFlushed = std::fflush(stdout) == 0;
    const int iFault = errno;
    // An earlier write may have failed: the stream remembers that, but not the fault.
    if (bFlushed && std::ferror(stdout) == 0)
    {
        return true;
    }
    std::fprintf(stderr,
                 "%s: standard output cannot be written%s%s\n",
                 pszProgram,
                 iFault != 0 ? ": " : "",
                 iFault != 0 ? ::strerrordesc_np(iFault) : "");
    return false;
}

void DropWritesOnSignals()
{
    struct sigaction action = {};
    action.sa_handler = OnEndingSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP})
    {
        struct sigaction before = {};
        // Started with the signal ignored (nohup, in the background), it stays so.
        if (::sigaction(iSignal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
        {
            ::sigaction(iSignal, &action, nullptr);
        }
    }
}
