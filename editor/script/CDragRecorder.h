#pragma once

#include "host/IPluginStrokes.h"

#include <string>
#include <vector>

// Keeps what each drag of a script did and how long its events took. A drag goes from a press to
// its release, or to what ends it otherwise: the next press, another level, the end of the script.
class CDragRecorder
{
public:
    // strFunction: class name of the function that the brush has.
    void Begin(const std::string& strFunction);
    // Milliseconds that the plug-in took for one event; nothing outside a drag.
    void AddEvent(double fMilliseconds);
    void End(const SDragStatistics& statistics);

    bool IsRunning() const { return m_bRunning; }

    bool HasLost() const; // a drag that found no memory

    // Writes all drags as a JSON array, whole or not at all. False with one logged line.
    bool Write(const char* pszPath) const;

private:
    struct SDrag
    {
        std::string strFunction;
        SDragStatistics statistics;
        double fMilliseconds = 0.0;
        double fWorstMilliseconds = 0.0;
    };

    std::vector<SDrag> m_Drags;
    bool m_bRunning = false; // the last one has not ended
};
