#pragma once

#include "host/Export.h"

#include <algorithm>
#include <cstdint>

// Progress of long work, and its end before time. The program sets its sink once. Whoever works
// makes a CProgressSteps for a loop, or calls ReportProgress about a hundred times, and stops where
// it gives false: it undoes what it began and fails, without a logged line. A sink is called inside
// the work.

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

// Tells the sink how far the work has come. pszWhat, fDone: as in OnProgress. True when the work is
// to go on, always so without a sink; at false the caller undoes what was begun and fails. Cheap
// enough for a hundred calls a job, not for one a vertex.
TELLUR_API bool ReportProgress(const char* pszWhat, float fDone);

// While an object of this class lives, all work goes on to its end whatever a sink answers: half of
// it would be worse than none.
class TELLUR_API CUncancellable
{
public:
    CUncancellable();
    ~CUncancellable();
    CUncancellable(const CUncancellable&) = delete;
    CUncancellable& operator=(const CUncancellable&) = delete;
};

// False while a CUncancellable lives: a sink should offer no way to stop the work then.
TELLUR_API bool IsProgressCancellable();

// The progress of one loop, reported about a hundred times in all and once more when it ends,
// however it ends.
class CProgressSteps
{
public:
    // pszWhat: as in OnProgress, borrowed for the object's life. uSteps: of the whole loop.
    CProgressSteps(const char* pszWhat, uint64_t uSteps)
        : m_What(pszWhat)
        , m_Steps(std::max(uSteps, uint64_t{1}))
    {
    }

    ~CProgressSteps()
    {
        if (!m_bEnded)
        {
            Finish(); // a fault ends it too
        }
    }

    CProgressSteps(const CProgressSteps&) = delete;
    CProgressSteps& operator=(const CProgressSteps&) = delete;

    // uDone: steps that are done, never fewer than before. False: the work is cancelled.
    bool Reach(uint64_t uDone)
    {
        constexpr uint64_t REPORTS = 100;
        if (uDone < m_Next)
        {
            return true;
        }
        m_Next = uDone + std::max(m_Steps / REPORTS, uint64_t{1});
        m_bEnded = !ReportProgress(m_What, static_cast<float>(uDone) / static_cast<float>(m_Steps));
        return !m_bEnded;
    }

    // All is done. False: cancelled at the last moment.
    bool Finish()
    {
        m_bEnded = true;
        return ReportProgress(m_What, 1.0F);
    }

private:
    const char* m_What;
    uint64_t m_Steps;
    uint64_t m_Next = 0; // no report before
    bool m_bEnded = false;
};
