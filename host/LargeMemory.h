#pragma once

#include "host/Export.h"

#include <cstddef>

// What the system should know of large arrays: an autosave is a copy of the process (fork), and the
// editor waits while the system notes down page for page what the copy shares. Arrays of less than
// 64 MB are left alone, and so are systems that refuse. pMemory: what malloc, calloc or new has
// given for nBytes; the advice ends when it is freed.
// Called right after the array was made, from any thread, null and 0 allowed; nothing can fail.
// Implemented by the engine library.

// Asks for the caller's memory to lie in few large pages instead of many small ones.
TELLUR_API void UseHugePages(void* pMemory, size_t nBytes);

// Leaves the array out of copies of the process, none of which reads it.
TELLUR_API void KeepFromChildren(void* pMemory, size_t nBytes);
