#include "host/Log.h"

#include "engine/files/FormatText.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{

constexpr int EXIT_FATAL = 3;

ILogSink* g_Sink = nullptr;

TELLUR_PRINTF(1, 0) void WriteToSink(const char* pszFormat, va_list arguments)
{
    std::string strText;
    if (pszFormat == nullptr || !FormatText(strText, pszFormat, arguments))
    {
        return;
    }
    if (g_Sink != nullptr)
    {
        g_Sink->Write(strText.c_str());
        return;
    }
    std::fputs(strText.c_str(), stderr);
}

} // namespace

void CrashLog(const char* pszFormat, ...)
{
    va_list arguments;
    va_start(arguments, pszFormat);
    WriteToSink(pszFormat, arguments);
    va_end(arguments);
}

void LogR(const char* pszFormat, ...)
{
    va_list arguments;
    va_start(arguments, pszFormat);
    WriteToSink(pszFormat, arguments);
    va_end(arguments);
}

void CrashExit(const char* pszFormat, ...)
{
    va_list arguments;
    va_start(arguments, pszFormat);
    WriteToSink(pszFormat, arguments);
    va_end(arguments);
    std::fflush(nullptr);
    // No destructors: the fault may sit in static data that is only half made.
    std::_Exit(EXIT_FATAL);
}

ILogSink* SetLogSink(ILogSink* pSink)
{
    ILogSink* pPrevious = g_Sink;
    g_Sink = pSink;
    return pPrevious;
}
