#include "host/LargeMemory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace
{

// From this size on the C library gives each array a mapping of its own, whatever was freed before.
constexpr size_t LEAST_BYTES = size_t{64} << 20U;

void Advise(void* pMemory, size_t nBytes, int iAdvice)
{
    if (pMemory == nullptr || nBytes < LEAST_BYTES)
    {
        return;
    }
    const auto uPage = static_cast<uintptr_t>(::sysconf(_SC_PAGESIZE));
    const uintptr_t uBegin = (reinterpret_cast<uintptr_t>(pMemory) + uPage - 1) / uPage * uPage;
    const uintptr_t uEnd = (reinterpret_cast<uintptr_t>(pMemory) + nBytes) / uPage * uPage;
    ::madvise(reinterpret_cast<void*>(uBegin), uEnd - uBegin, iAdvice); // only advice
}

} // namespace

void UseHugePages(void* pMemory, size_t nBytes)
{
    Advise(pMemory, nBytes, MADV_HUGEPAGE);
}

void KeepFromChildren(void* pMemory, size_t nBytes)
{
    Advise(pMemory, nBytes, MADV_DONTFORK);
}
