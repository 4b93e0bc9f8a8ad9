#pragma once

#include "host/Export.h"

// How far a long piece of work has come, and the wish to stop it. Whoever works calls
// ReportProgress now and then; whoever has a window shows it. Implemented by the engine library. UI
// thread only.
class IProgressSink
{
public:
    virtual ~IProgressSink() = default;

    // pszWhat: what is being done, as a user would say it, borrowed for the call. fDone: 0 to 1,
    // grows while one piece of work runs. False asks for its end. Called in the middle of the work:
    // it may draw and look whether a key is down, but must neither change the level nor begin
    // another long piece of work.
    virtual bool OnProgress(const char* pszWhat, float fDone) = 0;
};

// pSink: borrowed until the next call; null: nobody looks. Returns the sink before.
TELLUR_API IProgressSink* SetProgressSink(IProgressSink* pSink);

// True to go on, always so without a sink. False: undo what was begun and fail. Cheap enough for a
// hundred calls a job, not for one a vertex.
TELLUR_API bool ReportProgress(const char* pszWhat, float fDone);
