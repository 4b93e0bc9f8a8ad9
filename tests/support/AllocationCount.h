#pragma once

#include <cstddef>

// Calls of operator new since the program began. A test program that uses this gets its own
// operator new that counts.
size_t GetAllocationCount();
size_t GetAllocatedBytes(); // asked for in these calls, given back or not

size_t GetHeldBytes(); // asked for and not given back

// The nNext-th call from here on finds no memory, those after it do; 0 takes that back.
void FailAllocation(size_t nNext);
// Whether the call that FailAllocation was told of has come.
bool HasAllocationFailed();
