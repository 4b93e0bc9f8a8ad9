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

    // Keeps what is logged until the file is open: it is opened once nothing speaks against that.
    void Collect();

    // pszPath: absolute. False when it cannot be written. A plain file that is there loses what it
    // holds, anything else is written through.
    bool Open(const char* pszPath);
    void Write(const char* pszText) override;
    // False when anything could not be written; true without a file.
    bool Flush();

private:
    FILE* m_File = nullptr;
    bool m_bCollects = false;
    std::string m_Collected;
    ILogSink* m_SinkBefore = nullptr;
};
