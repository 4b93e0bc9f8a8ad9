#include "editor/autosave/CJournal.h"

#include "editor/autosave/JournalText.h"
#include "editor/core/FileNames.h"
#include "host/Log.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

CJournal::~CJournal()
{
    Close();
}

void CJournal::Begin(const std::string& strFile, const std::string& strHead)
{
    Close();
    m_Path = strFile;
    // The head goes into the file together with the first step, in one write.
    m_Waiting = strHead;
    m_Steps = 0;
}

void CJournal::Close()
{
    if (m_File >= 0)
    {
        m_Sync.SyncAndClose(std::exchange(m_File, -1));
    }
    m_Path.clear();
    m_Waiting.clear();
}

void CJournal::Finish()
{
    if (m_File >= 0)
    {
        // The thread may not come to it any more when the process ends.
        ::fdatasync(m_File);
    }
    Close();
}

bool CJournal::Append(const std::string& strText)
{
    if (m_Path.empty())
    {
        return false;
    }
    m_Waiting += MakeJournalPart(strText, ++m_Steps);
    const bool bWritten = Write();
    if (!bWritten && !m_bFault)
    {
        CrashLog("[CJournal::Append] %s: %s; the last steps would be lost in a crash\n",
                 m_Path.c_str(),
                 std::strerror(errno));
    }
    m_bFault = !bWritten;
    return bWritten;
}

bool CJournal::Write()
{
    if (m_File < 0)
    {
        m_File = MakeNewFile(m_Path.c_str());
        SyncFolder(std::filesystem::path(m_Path).parent_path().string());
    }
    if (m_File < 0)
    {
        return false;
    }
    const off_t nBefore = ::lseek(m_File, 0, SEEK_END);
    ssize_t nWritten = 0;
    do
    {
        nWritten = ::write(m_File, m_Waiting.data(), m_Waiting.size());
    } while (nWritten < 0 && errno == EINTR);
    // Half of a step is cut off again, so that the next try writes all of it.
    if (nWritten != static_cast<ssize_t>(m_Waiting.size()))
    {
        const int iFault = nWritten < 0 ? errno : ENOSPC;
        if (nWritten > 0 && ::ftruncate(m_File, nBefore) != 0)
        {
            m_Waiting.erase(0, static_cast<size_t>(nWritten)); // goes on where it stopped
        }
        errno = iFault;
        return false;
    }
    m_Waiting.clear();
    m_Sync.Sync(m_File);
    return true;
}

void CJournal::SyncFolder(const std::string& strFolder)
{
    const int iFolder = ::open(strFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (iFolder >= 0)
    {
        m_Sync.SyncAndClose(iFolder);
    }
}
