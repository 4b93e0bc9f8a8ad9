#pragma once

#include "host/Export.h"

// What every program does about the streams that it was started with and the signals that end it.
// Implemented by the engine library. Called by main, in the order in which they stand here, the
// second one at its end.

// First of all in main: no file that is opened later takes the place of a standard stream that was
// closed, and writing into a pipe that nobody reads, or more than this user may, is a failure
// instead of the end.
TELLUR_API void GuardStandardStreams();

// Whether everything that was printed has arrived. False with one line on stderr that begins with
// the program's name, which is borrowed.
TELLUR_API bool FlushStandardOutput(const char* pszProgram);

// From here on SIGINT, SIGTERM and SIGHUP drop the files that are being written and end the process
// with the code of the signal; the targets stay as they were. Called by programs without a loop of
// events.
TELLUR_API void DropWritesOnSignals();
