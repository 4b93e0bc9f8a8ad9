#pragma once

// Two marks of the compiler for declarations; nothing here is called.

// Marks what a shared library of the project hands out; everything else stays hidden.
#define TELLUR_API __attribute__((visibility("default")))

// Lets the compiler compare a printf-style format with its arguments (1-based positions; a member
// function counts its object as 1).
#define TELLUR_PRINTF(iFormat, iFirst) __attribute__((format(printf, iFormat, iFirst)))
