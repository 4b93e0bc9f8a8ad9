#include "tests/support/AllocationCount.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

std::atomic<size_t> g_nAllocations = 0;
std::atomic<size_t> g_nBytes = 0;
std::atomic<size_t> g_nHeld = 0;
std::atomic<size_t> g_nUntilFailure = 0;
std::atomic<bool> g_bFailed = false;

void* AllocateOrNull(size_t nBytes)
{
    if (g_nUntilFailure > 0 && --g_nUntilFailure == 0)
    {
        g_bFailed = true;
        return nullptr;
    }
    ++g_nAllocations;
    g_nBytes += nBytes;
    void* pMemory = std::malloc(nBytes > 0 ? nBytes : 1);
    // Memory is really short, which no test has asked for.
    if (pMemory == nullptr)
    {
        std::abort();
    }
    g_nHeld += malloc_usable_size(pMemory);
    return pMemory;
}

void Free(void* pMemory)
{
    g_nHeld -= malloc_usable_size(pMemory);
    std::free(pMemory);
}

void* Allocate(size_t nBytes)
{
    void* pMemory = AllocateOrNull(nBytes);
    if (pMemory == nullptr)
    {
        throw std::bad_alloc();
    }
    return pMemory;
}

} // namespace

void FailAllocation(size_t nNext)
{
    g_bFailed = false;
    g_nUntilFailure = nNext;
}

bool HasAllocationFailed()
{
    return g_bFailed;
}

size_t GetAllocationCount()
{
    return g_nAllocations;
}

size_t GetAllocatedBytes()
{
    return g_nBytes;
}

size_t GetHeldBytes()
{
    return g_nHeld;
}

void* operator new(size_t nBytes)
{
    return Allocate(nBytes);
}

void* operator new[](size_t nBytes)
{
    return Allocate(nBytes);
}

void operator delete(void* pMemory) noexcept
{
    Free(pMemory);
}

void operator delete[](void* pMemory) noexcept
{
    Free(pMemory);
}

void operator delete(void* pMemory, size_t /*nBytes*/) noexcept
{
    Free(pMemory);
}

void operator delete[](void* pMemory, size_t /*nBytes*/) noexcept
{
    Free(pMemory);
}

void* operator new(size_t nBytes, const std::nothrow_t& /*tag*/) noexcept
{
    return AllocateOrNull(nBytes);
}

void* operator new[](size_t nBytes, const std::nothrow_t& /*tag*/) noexcept
{
    return AllocateOrNull(nBytes);
}
