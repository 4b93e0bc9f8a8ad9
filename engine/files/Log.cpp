#include "host/Log.h"

#include "engine/files/FormatText.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace
{

constexpr int EXIT_FATAL = 3;
constexpr size_t SHORT_LINE = 1024;

ILogSink* g_Sink = nullptr;
uint64_t g_CrashLogs = 0;
ELogKind g_Kind = ELogKind::Fault;

// Where memory has run out, which is when a line matters most, it may be cut or go to stderr only.
TELLUR_PRINTF(1, 0) void WriteToSink(const char* pszFormat, va_list arguments)
{
    if (pszFormat == nullptr)
    {
        return;
    }
    // For a second try, which needs no memory.
    va_list again;
    va_copy(again, arguments);
    std::string strText;
    char szShort[SHORT_LINE];
    const char* pszText = nullptr;
    try
    {
        pszText = FormatText(strText, pszFormat, arguments) ? strText.c_str() : nullptr;
    }
    catch (const std::bad_alloc&)
    {
        pszText = nullptr;
    }
    if (pszText == nullptr && std::vsnprintf(szShort, sizeof(szShort), pszFormat, again) >= 0)
    {
        pszText = szShort;
    }
    va_end(again);
    try
    {
        if (g_Sink != nullptr && pszText != nullptr)
        {
            g_Sink->Write(pszText);
            return;
        }
    }
    catch (const std::bad_alloc&)
    {
        std::fputs("a line of the log was lost for want of memory: ", stderr);
    }
    std::fputs(pszText != nullptr ? pszText : "", stderr);
}

} // namespace

void CrashLog(const char* pszFormat, ...)
{
    ++g_CrashLogs;
    g_Kind = ELogKind::Fault;
    va_list arguments;
    va_start(arguments, pszFormat);
    WriteToSink(pszFormat, arguments);
    va_end(arguments);
}

uint64_t GetCrashLogCount()
{
    return g_CrashLogs;
}

void WarnLog(const char* pszFormat, ...)
{
    g_Kind = ELogKind::Warning;
    va_list arguments;
    va_start(arguments, pszFormat);
    WriteToSink(pszFormat, arguments);
    va_end(arguments);
}

ELogKind GetLogKind()
{
    return g_Kind;
}

void LogR(const char* pszFormat, ...)
{
    g_Kind = ELogKind::Refusal;
    va_list arguments;
    va_start(arguments, pszFormat);
    WriteToSink(pszFormat, arguments);
    va_end(arguments);
}

void CrashExit(const char* pszFormat, ...)
{
    g_Kind = ELogKind::Fault;
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
