#include "host/Progress.h"

#include <utility>

namespace
{

IProgressSink* g_Sink = nullptr;

} // namespace

IProgressSink* SetProgressSink(IProgressSink* pSink)
{
    return std::exchange(g_Sink, pSink);
}

bool ReportProgress(const char* pszWhat, float fDone)
{
    return g_Sink == nullptr || g_Sink->OnProgress(pszWhat, fDone);
}
