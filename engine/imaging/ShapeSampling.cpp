#include "host/ShapeSampling.h"

#include "host/VectorLoop.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace
{

constexpr float PIXEL_SCALE = 0.003921569F; // 1 / 255
constexpr float MIN_SAMPLE = 0.0001F;       // below it the image counts as black

// Without branches, for loops of vectors.
TELLUR_LOOP_BODY SPixelPair FindPair(float fOffset, float fPixels, int iSize)
{
    // Far outside both pixels are the border's; keep the number within an int.
    const float fLimit = static_cast<float>(iSize + 2);
    // A NaN is taken for 0.
    fPixels = fPixels == fPixels ? fPixels : 0.0F;
    fPixels = fPixels < -fLimit ? -fLimit : fPixels;
    fPixels = fPixels > fLimit ? fLimit : fPixels;
    // Both sides count pixels from the middle outwards, because a cast cuts towards 0 on either.
    const int iHalf = iSize / 2;
    const int iAhead = static_cast<int>(fPixels);
    const float fAbs = std::fabs(fPixels);
    const int iBack = static_cast<int>(fAbs);
    const bool bRight = fOffset > 0.0F;
    SPixelPair pair;
    pair.iFirst = bRight ? iHalf + iAhead : iHalf - iBack - 1;
    pair.iSecond = pair.iFirst + 1;
    pair.fFirstWeight =
        bRight ? 1.0F - (fPixels - static_cast<float>(iAhead)) : fAbs - static_cast<float>(iBack);
    pair.iFirst = std::min(std::max(pair.iFirst, 0), iSize - 1);
    pair.iSecond = std::min(std::max(pair.iSecond, 0), iSize - 1);
    return pair;
}

TELLUR_LOOP_BODY void
PairLoop(const SPixelLine& line, int iSize, const SPixelPairs& pairs, size_t nCount)
{
    const SPixelLine own = line; // no write through a pointer can change them
    const SPixelPairs to = pairs;
    const float fSize = static_cast<float>(iSize);
    const float fShare = 1.0F / own.fExtent;
    for (size_t i = 0; i < nCount; ++i)
    {
        const float fOffset =
            static_cast<float>(own.iFirst + static_cast<int>(i)) * own.fStep - own.fCenter;
        const SPixelPair pair = FindPair(fOffset, fSize * fOffset * fShare, iSize);
        to.pFirst[i] = pair.iFirst;
        to.pSecond[i] = pair.iSecond;
        to.pFirstWeights[i] = pair.fFirstWeight;
    }
}

TELLUR_LOOP_BODY void BlendLoop(
    const uint8_t* pFirst, const uint8_t* pSecond, float fFirstWeight, float* pDest, size_t nCount)
{
    const float fSecondWeight = 1.0F - fFirstWeight;
    for (size_t i = 0; i < nCount; ++i)
    {
        pDest[i] = static_cast<float>(pFirst[i]) * PIXEL_SCALE * fFirstWeight +
                   static_cast<float>(pSecond[i]) * PIXEL_SCALE * fSecondWeight;
    }
}

TELLUR_LOOP_BODY void SampleLoop(const float* pRow,
                                 const int* pColumns,
                                 const float* pColumnWeights,
                                 SShapeStrength strength,
                                 float* pWeights,
                                 size_t nCount)
{
    // Apart, because looking pixels up is not what vectors are quick at.
    for (size_t i = 0; i < nCount; ++i)
    {
        const float fLeft = pColumnWeights[i];
        pWeights[i] = pRow[pColumns[2 * i]] * fLeft + pRow[pColumns[2 * i + 1]] * (1.0F - fLeft);
    }
    const SShapeStrength s = strength;
    for (size_t i = 0; i < nCount; ++i)
    {
        const float b = pWeights[i];
        float fHard = b + s.fHardness;
        fHard = fHard < 0.0F ? 0.0F : fHard;
        fHard = fHard > 1.0F ? 1.0F : fHard;
        // A mask of all ones or none, which is the form that compilers turn into vectors.
        const int32_t iBlack = std::fabs(b) >= MIN_SAMPLE ? 0 : -1;
        pWeights[i] = s.fPower * std::bit_cast<float>((std::bit_cast<int32_t>(b) & iBlack) |
                                                      (std::bit_cast<int32_t>(fHard) & ~iBlack));
    }
}

} // namespace

SPixelPair GetPixelPair(float fOffset, float fPixels, int iSize)
{
    return FindPair(fOffset, fPixels, iSize);
}

void GetPixelPairs(const SPixelLine& line, int iSize, const SPixelPairs& pairs, size_t nCount)
{
    CVectorLoop<PairLoop>::Run(line, iSize, pairs, nCount);
}

void BlendPixelRows(
    const uint8_t* pFirst, const uint8_t* pSecond, float fFirstWeight, float* pDest, size_t nCount)
{
    CVectorLoop<BlendLoop>::Run(pFirst, pSecond, fFirstWeight, pDest, nCount);
}

void SampleShapeRow(const float* pRow,
                    const int* pColumns,
                    const float* pColumnWeights,
                    SShapeStrength strength,
                    float* pWeights,
                    size_t nCount)
{
    CVectorLoop<SampleLoop>::Run(pRow, pColumns, pColumnWeights, strength, pWeights, nCount);
}
