#include "engine/paint/TexelRange.h"

float GetTexelPosition(uint32_t uTexel, uint32_t nTexels, float fSide, ETexelMapping eMapping)
{
    if (eMapping == ETexelMapping::Centers)
    {
        return (static_cast<float>(uTexel) + 0.5F) / static_cast<float>(nTexels) * fSide;
    }
    return nTexels > 1 ? static_cast<float>(uTexel) / static_cast<float>(nTexels - 1) * fSide
                       : 0.0F;
}

STexelRange
FindTexels(float fMin, float fMax, uint32_t nTexels, float fSide, ETexelMapping eMapping)
{
    // Positions never fall from one texel to the next, so both ends are found by halving; a formula
    // turned round would be off by one where a position is rounded.
    const auto findFirst = [&](auto isBeyond)
    {
        uint32_t uLow = 0;
        uint32_t uHigh = nTexels;
        while (uLow < uHigh)
        {
            const uint32_t uMiddle = uLow + (uHigh - uLow) / 2;
            if (isBeyond(GetTexelPosition(uMiddle, nTexels, fSide, eMapping)))
            {
                uHigh = uMiddle;
            }
            else
            {
                uLow = uMiddle + 1;
            }
        }
        return uLow;
    };
    return {findFirst([fMin](float fAt) { return fAt >= fMin; }),
            findFirst([fMax](float fAt) { return fAt > fMax; })};
}
