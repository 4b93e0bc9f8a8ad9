#include "editor/script/CDragRecorder.h"

#include "host/FileSystem.h"
#include "host/Log.h"

#include <algorithm>
#include <cinttypes>

namespace
{

// Text between the quotes of a JSON string.
std::string GetJsonText(const std::string& strText)
{
    constexpr char HEX[] = "0123456789abcdef";
    std::string strJson;
    for (const char character : strText)
    {
        const auto uByte = static_cast<unsigned char>(character);
        if (uByte >= 0x20 && uByte < 0x7F && character != '"' && character != '\\')
        {
            strJson += character;
            continue;
        }
        strJson += "\\u00";
        strJson += HEX[uByte / 16];
        strJson += HEX[uByte % 16];
    }
    return strJson;
}

} // namespace

void CDragRecorder::Begin(const std::string& strFunction)
{
    SDrag drag;
    drag.strFunction = strFunction;
    m_Drags.push_back(drag);
    m_bRunning = true;
}

void CDragRecorder::AddEvent(double fMilliseconds)
{
    if (m_bRunning)
    {
        SDrag& drag = m_Drags.back();
        drag.fMilliseconds += fMilliseconds;
        drag.fWorstMilliseconds = std::max(drag.fWorstMilliseconds, fMilliseconds);
    }
}

void CDragRecorder::End(const SDragStatistics& statistics)
{
    if (m_bRunning)
    {
        m_Drags.back().statistics = statistics;
        m_bRunning = false;
    }
}

bool CDragRecorder::HasLost() const
{
    return std::any_of(
        m_Drags.begin(), m_Drags.end(), [](const SDrag& drag) { return drag.statistics.bLost; });
}

bool CDragRecorder::Write(const char* pszPath) const
{
    fs::ifile file;
    if (file.open(pszPath, fs::mode_write))
    {
        file << "[";
        const char* pszBetween = "\n";
        for (const SDrag& drag : m_Drags)
        {
            file.printf("%s{\"function\": \"%s\", \"points\": %" PRIu64 ", \"visited\": %" PRIu64
                        ", \"changed\": %" PRIu64 ", \"ms\": %.6f, \"worst_ms\": %.6f}",
                        pszBetween,
                        GetJsonText(drag.strFunction).c_str(),
                        drag.statistics.nPoints,
                        drag.statistics.nVisited,
                        drag.statistics.nChanged,
                        drag.fMilliseconds,
                        drag.fWorstMilliseconds);
            pszBetween = ",\n";
        }
        file << "\n]\n";
        if (file.close())
        {
            return true;
        }
    }
    CrashLog("[CDragRecorder::Write] %s\n", file.last_error().get_error_text());
    return false;
}
