#pragma once

#include "host/Export.h"

#include <cstdint>

// The one log of a process, shared by host and plug-in. Texts are printf-style and end in their own
// line feed; a message names its class and method in square brackets first. Implemented by the
// engine library. UI thread only, any order: until a program has set a sink, stderr is it. A sink
// must not log.

// Failures of any kind. Texts of all three are borrowed for the call.
TELLUR_API void CrashLog(const char* pszFormat, ...) TELLUR_PRINTF(1, 2);

// How many pieces came through CrashLog since the process began. Whoever takes it before and after
// an operation knows whether that has reported a fault.
TELLUR_API uint64_t GetCrashLogCount();

// As CrashLog, for refusals that are no failure, such as a mode that may not be left now.
TELLUR_API void LogR(const char* pszFormat, ...) TELLUR_PRINTF(1, 2);

// As CrashLog, for what was mended or left out so that the work went on: whoever reads it may want
// to look at it, but nothing has failed.
TELLUR_API void WarnLog(const char* pszFormat, ...) TELLUR_PRINTF(1, 2);

// What a line of the log is: which of the functions it came through.
enum class ELogKind
{
    Fault,
    Warning,
    Refusal,
};

// Of the piece that the sink is being handed; of the last one otherwise.
TELLUR_API ELogKind GetLogKind();

// Logs the text, borrowed, and ends the process with exit code 3. Only for faults of the build
// itself.
[[noreturn]] TELLUR_API void CrashExit(const char* pszFormat, ...) TELLUR_PRINTF(1, 2);

// Where the log goes. The default sink writes to stderr.
class ILogSink
{
public:
    virtual ~ILogSink() = default;

    // pszText: one formatted piece, NUL-terminated, borrowed for the call. A line may arrive in
    // several pieces.
    virtual void Write(const char* pszText) = 0;
};

// pSink: borrowed until the next call; null goes back to stderr. Returns the sink before.
TELLUR_API ILogSink* SetLogSink(ILogSink* pSink);
