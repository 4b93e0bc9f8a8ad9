#include "tellur/modification/HeightBuffers.h"

#include "host/LargeMemory.h"

#include <new>
#include <utility>

namespace
{

constexpr size_t KEPT_BUFFERS = 2;

SHeightBuffer* GetKept()
{
    static SHeightBuffer s_Kept[KEPT_BUFFERS];
    return s_Kept;
}

} // namespace

SHeightBuffer TakeHeightBuffer(size_t nCount)
{
    SHeightBuffer* pKept = GetKept();
    for (size_t i = 0; i < KEPT_BUFFERS; ++i)
    {
        // One that is far too large belongs to a terrain that is gone.
        if (pKept[i].nCapacity >= nCount && pKept[i].nCapacity / 2 <= nCount)
        {
            return std::exchange(pKept[i], {});
        }
    }
    std::unique_ptr<float[]> pHeights(new (std::nothrow) float[nCount]);
    const size_t nCapacity = pHeights != nullptr ? nCount : 0;
    KeepFromChildren(pHeights.get(), nCapacity * sizeof(float)); // an autosave reads the terrain
    return {std::move(pHeights), nCapacity};
}

void GiveHeightBufferBack(SHeightBuffer buffer)
{
    SHeightBuffer* pKept = GetKept();
    SHeightBuffer* pSmallest = pKept;
    for (size_t i = 1; i < KEPT_BUFFERS; ++i)
    {
        pSmallest = pKept[i].nCapacity < pSmallest->nCapacity ? &pKept[i] : pSmallest;
    }
    if (buffer.nCapacity > pSmallest->nCapacity)
    {
        *pSmallest = std::move(buffer);
    }
}

void FreeHeightBuffers()
{
    for (size_t i = 0; i < KEPT_BUFFERS; ++i)
    {
        GetKept()[i] = {};
    }
}

size_t GetKeptHeightCount()
{
    size_t nCount = 0;
    for (size_t i = 0; i < KEPT_BUFFERS; ++i)
    {
        nCount += GetKept()[i].nCapacity;
    }
    return nCount;
}
