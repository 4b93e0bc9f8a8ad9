#include "tools/replay/CReplayLog.h"

#include "host/FileSystem.h"

CReplayLog::~CReplayLog()
{
    if (m_bCollects)
    {
        SetLogSink(m_SinkBefore);
    }
    if (m_File != nullptr)
    {
        std::fclose(m_File);
    }
}

void CReplayLog::Collect()
{
    m_SinkBefore = SetLogSink(this);
    m_bCollects = true;
}

bool CReplayLog::Open(const char* pszPath)
{
    // A device or a pipe is written through as it is; everything else is made or emptied.
    const int iStream = fs::open_stream(pszPath);
    m_File = iStream >= 0 ? ::fdopen(iStream, "wb") : std::fopen(pszPath, "wbe");
    if (m_File == nullptr)
    {
        return false;
    }
    std::setvbuf(m_File, nullptr, _IOLBF, BUFSIZ);
    std::fputs(m_Collected.c_str(), m_File);
    m_Collected.clear();
    return true;
}

void CReplayLog::ShowCollected() const
{
    std::fputs(m_Collected.c_str(), stderr);
}

void CReplayLog::Write(const char* pszText)
{
    if (m_File == nullptr)
    {
        m_Collected += pszText;
        return;
    }
    std::fputs(pszText, m_File);
}

bool CReplayLog::Flush()
{
    return m_File == nullptr || (std::fflush(m_File) == 0 && std::ferror(m_File) == 0);
}
