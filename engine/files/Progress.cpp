#include "host/Progress.h"

#include <utility>

namespace
{

IProgressSink* g_Sink = nullptr;
int g_Uncancellable = 0; // objects alive

} // namespace

IProgressSink* SetProgressSink(IProgressSink* pSink)
{
    return std::exchange(g_Sink, pSink);
}

bool ReportProgress(const char* pszWhat, float fDone)
{
    // The sink hears of work that cannot be cancelled too; only its answer counts for nothing.
    const bool bGoOn = g_Sink == nullptr || g_Sink->OnProgress(pszWhat, fDone);
    return bGoOn || !IsProgressCancellable();
}

CUncancellable::CUncancellable()
{
    ++g_Uncancellable;
}

CUncancellable::~CUncancellable()
{
    --g_Uncancellable;
}

bool IsProgressCancellable()
{
    return g_Uncancellable == 0;
}
