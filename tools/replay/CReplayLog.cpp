#include "tools/replay/CReplayLog.h"

#include "host/FileSystem.h"

CReplayLog::~CReplayLog()
{
    if (m_File != nullptr)
    {
        SetLogSink(m_SinkBefore);
        std::fclose(m_File);
    }
}

bool CReplayLog::Open(const char* pszPath)
{
    const int iStream = fs::open_stream(pszPath);
    m_File = iStream >= 0 ? ::fdopen(iStream, "wb") : std::fopen(pszPath, "wbe");
    if (m_File == nullptr)
    {
        return false;
    }
    std::setvbuf(m_File, nullptr, _IOLBF, BUFSIZ);
    m_SinkBefore = SetLogSink(this);
    return true;
}

void CReplayLog::Write(const char* pszText)
{
    std::fputs(pszText, m_File);
}

bool CReplayLog::Flush()
{
    return m_File == nullptr || (std::fflush(m_File) == 0 && std::ferror(m_File) == 0);
}
