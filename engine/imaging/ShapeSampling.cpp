#include "host/ShapeSampling.h"

#include "host/VectorLoop.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace
{

constexpr float PIXEL_SCALE = 0.003921569F; // 1 / 255
constexpr float MIN_SAMPLE = 0.0001F;       // below it the image counts as black

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
    // Far outside both pixels are the border's; keep the number within an int.
    const float fLimit = static_cast<float>(iSize + 2);
    fPixels = std::isnan(fPixels) ? 0.0F : std::clamp(fPixels, -fLimit, fLimit);
    const int iHalf = iSize / 2;
    SPixelPair pair;
    if (fOffset > 0.0F)
    {
        const int i = static_cast<int>(fPixels);
        pair.iFirst = iHalf + i;
        pair.iSecond = pair.iFirst + 1;
        pair.fFirstWeight = 1.0F - (fPixels - static_cast<float>(i));
    }
    else
    {
        const float fAbs = std::fabs(fPixels);
        const int n = static_cast<int>(fAbs);
        pair.iFirst = iHalf - n - 1;
        pair.iSecond = iHalf - n;
        pair.fFirstWeight = fAbs - static_cast<float>(n);
    }
    pair.iFirst = std::clamp(pair.iFirst, 0, iSize - 1);
    pair.iSecond = std::clamp(pair.iSecond, 0, iSize - 1);
    return pair;
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
