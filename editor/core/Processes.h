#pragma once

#include <string>

// When a process began, in the system's ticks; empty when there is none, and for one that has ended
// and waits for its parent. The number of a process is given again after its end, so the number
// alone says nothing.
std::string GetProcessStart(int iProcess);
