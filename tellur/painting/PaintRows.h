#pragma once

#include "host/IPaintLayer.h"
#include "host/VectorLoop.h"

#include <bit>
#include <cstdint>
#include <cstring>

// The loop over a row of texels that both functions of a stroke run, in the form that compilers
// turn into vectors: a texel is one number, and what must stay of it is masked.

// What a row has in common.
struct SPaintRow
{
    float fColors[PAINT_TEXEL_BYTES] = {}; // as the function wants them
    uint32_t uEditable = 0;                // bits of a texel that may change
    float fStrength = 0.0F;
};

// Where byte k of a texel stands in its number.
constexpr int GetByteShift(size_t k)
{
    return static_cast<int>(8 * (std::endian::native == std::endian::little ? k : 3 - k));
}

// TByte has a static Get: (byte, colour, weight times strength) to byte, of which the lowest 8 bits
// count. TBytes: how many of a texel's bytes may be editable. True when something is, and a weight
// is above 0.
template <typename TByte, size_t TBytes>
TELLUR_LOOP_BODY bool
PaintRowLoop(uint8_t* pTexels, const float* pWeights, size_t nCount, const SPaintRow& row)
{
    const SPaintRow r = row;
    uint32_t uAny = 0;
    for (size_t i = 0; i < nCount; ++i)
    {
        uint32_t uOld = 0;
        std::memcpy(&uOld, pTexels + i * PAINT_TEXEL_BYTES, PAINT_TEXEL_BYTES);
        // A weight that does not count leads to no step, whatever it is.
        const int32_t iCounts = pWeights[i] > 0.0F ? -1 : 0;
        const float fShare =
            std::bit_cast<float>(std::bit_cast<int32_t>(pWeights[i] * r.fStrength) & iCounts);
        const uint32_t uTake = r.uEditable & static_cast<uint32_t>(iCounts);
        uint32_t uNew = 0;
        for (size_t k = 0; k < TBytes; ++k)
        {
            const auto iByte = static_cast<int32_t>((uOld >> GetByteShift(k)) & 0xFF);
            uNew |= (static_cast<uint32_t>(TByte::Get(iByte, r.fColors[k], fShare)) & 0xFF)
                    << GetByteShift(k);
        }
        uNew = (uNew & uTake) | (uOld & ~uTake);
        std::memcpy(pTexels + i * PAINT_TEXEL_BYTES, &uNew, PAINT_TEXEL_BYTES);
        uAny |= uTake;
    }
    return uAny != 0;
}

// TSmall: does the same as TByte in fewer steps while numbers are small, which bSmall says
// (CTellur2DFunction::AreNumbersSmall). bAlpha: the last byte is editable, too.
template <typename TByte, typename TSmall>
bool PaintRow(uint8_t* pTexels,
              const float* pWeights,
              size_t nCount,
              const SPaintRow& row,
              bool bSmall,
              bool bAlpha)
{
    if (!bSmall)
    {
        return CVectorLoop<PaintRowLoop<TByte, 4>>::Run(pTexels, pWeights, nCount, row);
    }
    return bAlpha ? CVectorLoop<PaintRowLoop<TSmall, 4>>::Run(pTexels, pWeights, nCount, row)
                  : CVectorLoop<PaintRowLoop<TSmall, 3>>::Run(pTexels, pWeights, nCount, row);
}
