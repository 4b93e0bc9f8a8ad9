#pragma once

#include "host/Log.h"

#include <cstdio>
#include <string>

// Collects the log in a file until destruction, or leaves it on stderr. A line is in the file as
// soon as it is complete, so that a crash loses none.
class CReplayLog : public ILogSink
{
public:
    CReplayLog() = default;
    ~CReplayLog() override; // gives the log back to the sink before
    CReplayLog(const CReplayLog&) = delete;
    CReplayLog& operator=(const CReplayLog&) = delete;

    // Takes the log from now on and keeps it until Open, since the file is opened only once nothing
    // speaks against that.
    void Collect();

    // Opens the file and writes what was kept. pszPath: absolute. A plain file that is there loses
    // what it holds, anything else is written through. Answers false when it cannot be opened.
    bool Open(const char* pszPath);
    // Writes what was kept to stderr, where no file is going to have it.
    void ShowCollected() const;
    void Write(const char* pszText) override;
    // Answers false when any of the log could not be written so far; true without a file.
    bool Flush();

private:
    FILE* m_File = nullptr;
    bool m_bCollects = false;
    std::string m_Collected;
    ILogSink* m_SinkBefore = nullptr;
};
