#include "editor/script/CDragRecorder.h"

#include "engine/files/CJsonWriter.h"
#include "host/FileSystem.h"
#include "host/Log.h"

#include <algorithm>

static constexpr int MILLISECOND_DECIMALS = 6; // nanoseconds

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
    CJsonWriter json;
    json.BeginLines(0);
    for (const SDrag& drag : m_Drags)
    {
        json.BeginObject();
        json.WriteKey("function");
        json.WriteText(drag.strFunction.c_str());
        json.WriteKey("points");
        json.WriteNumber(drag.statistics.nPoints);
        json.WriteKey("visited");
        json.WriteNumber(drag.statistics.nVisited);
        json.WriteKey("changed");
        json.WriteNumber(drag.statistics.nChanged);
        json.WriteKey("ms");
        json.WriteFixed(drag.fMilliseconds, MILLISECOND_DECIMALS);
        json.WriteKey("worst_ms");
        json.WriteFixed(drag.fWorstMilliseconds, MILLISECOND_DECIMALS);
        json.End();
    }
    json.End();
    fs::ifile file;
    if (file.open(pszPath, fs::mode_write))
    {
        file << json.GetText().c_str();
        if (file.close())
        {
            return true;
        }
    }
    CrashLog("[CDragRecorder::Write] %s\n", file.last_error().get_error_text());
    return false;
}
