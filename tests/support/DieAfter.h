#pragma once

#include <sys/time.h>

// To be called in a child process, which then dies wherever it is after that time (microseconds,
// above 0 and below a second).
inline void DieAfter(long nMicroseconds)
{
    const itimerval timer = {{}, {0, nMicroseconds}};
    ::setitimer(ITIMER_REAL, &timer, nullptr); // its signal ends a process that does not heed it
}
