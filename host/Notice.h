#pragma once

#include "host/Export.h"

#include <chrono>

// One short line for the person about what was done and would otherwise be silent. Failures are no
// business of it, they are logged. Implemented by the engine library. UI thread only.
// The program sets its sink once; whoever has done something calls Notice when it is done, outside
// of drags. The sink must not call the level.
class INoticeSink
{
public:
    virtual ~INoticeSink() = default;

    // pszText: without a line feed, borrowed for the call.
    virtual void OnNotice(const char* pszText) = 0;

    // As StandingNotice.
    virtual void OnStandingNotice(const char* /*pszTopic*/, const char* /*pszText*/) {}
};

// pSink: borrowed until the next call; null: nobody reads. Returns the sink before.
TELLUR_API INoticeSink* SetNoticeSink(INoticeSink* pSink);

TELLUR_API void Notice(const char* pszText); // as in OnNotice, borrowed; nothing without a sink

// Says what is so until it is taken back, at any time. pszTopic: what it is about, a text of one's
// own, static; a later line of a topic takes the place of the one before. pszText: as above; null
// or empty: there is nothing to say any longer.
TELLUR_API void StandingNotice(const char* pszTopic, const char* pszText);

// Takes the time of a save from its own start.
class TELLUR_API CSaveNotice
{
public:
    // "NAME saved: 4.2 MB in 0.31 s". pszOther: a second file whose size counts in; or null.
    void Say(const char* pszPath, const char* pszOther = nullptr) const;

private:
    std::chrono::steady_clock::time_point m_Start = std::chrono::steady_clock::now();
};
