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
    // Whole pages.
    const auto nPage = static_cast<size_t>(::sysconf(_SC_PAGESIZE));
    const size_t nSkip = (nPage - reinterpret_cast<uintptr_t>(pMemory) % nPage) % nPage;
    ::madvise(static_cast<unsigned char*>(pMemory) + nSkip,
              (nBytes - nSkip) / nPage * nPage,
              iAdvice); // only advice
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
