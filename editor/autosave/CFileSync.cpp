#include "editor/autosave/CFileSync.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace
{

struct SOrder
{
    int iFile = -1;
    bool bClose = false;
};

} // namespace

CFileSync::CFileSync()
{
    if (::pipe2(m_Pipe, O_CLOEXEC) != 0)
    {
        m_Pipe[0] = m_Pipe[1] = -1;
        return;
    }
    ::fcntl(m_Pipe[1], F_SETFL, O_NONBLOCK); // a full pipe is a disk that has enough to do
    m_Thread = std::thread([this] { Run(); });
}

CFileSync::~CFileSync()
{
    if (m_Thread.joinable())
    {
        // The thread sees the end of the pipe when nobody holds its writing end. A child of fork
        // has that end, too, so the autosave ends its copies before its journal goes.
        ::close(m_Pipe[1]);
        m_Thread.join();
        ::close(m_Pipe[0]);
    }
}

void CFileSync::Run()
{
    SOrder order;
    ssize_t nRead = 0;
    while ((nRead = ::read(m_Pipe[0], &order, sizeof(order))) != 0)
    {
        if (nRead < 0 && errno == EINTR)
        {
            continue;
        }
        if (nRead != static_cast<ssize_t>(sizeof(order)))
        {
            return; // orders are written whole
        }
        // A folder on some systems cannot be synced, which is no fault of its files.
        m_bFault = m_bFault || (::fdatasync(order.iFile) != 0 && errno != EINVAL);
        if (order.bClose)
        {
            ::close(order.iFile);
        }
    }
}

bool CFileSync::Send(int iFile, bool bClose)
{
    const SOrder order = {iFile, bClose};
    return m_Thread.joinable() &&
           ::write(m_Pipe[1], &order, sizeof(order)) == static_cast<ssize_t>(sizeof(order));
}

void CFileSync::Sync(int iFile)
{
    Send(iFile, false); // what is left out is done with the next one
}

void CFileSync::SyncAndClose(int iFile)
{
    if (!Send(iFile, true))
    {
        ::close(iFile);
    }
}
