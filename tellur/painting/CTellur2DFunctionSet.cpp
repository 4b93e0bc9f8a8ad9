#include "tellur/painting/CTellur2DFunctionSet.h"

#include "tellur/painting/PaintRows.h"

namespace
{

constexpr float FULL = 255.0F;
constexpr float PALETTE_THRESHOLD = 0.5F;

// Towards zero and modulo 256, which is left to whoever takes the byte. Kept as it always was: a
// colour or a share far outside 0 to 1 overshoots and wraps. It is cut only where an integer could
// not hold it.
int32_t Wrap(int32_t iByte, float fStep)
{
    constexpr float LIMIT = 1.0e9F;
    const float fCut = fStep > LIMIT ? LIMIT : fStep >= -LIMIT ? fStep : -LIMIT;
    return iByte + static_cast<int32_t>(fCut);
}

struct SSetByte
{
    static int32_t Get(int32_t iByte, float fFullColor, float fShare)
    {
        return Wrap(iByte, (fFullColor - static_cast<float>(iByte)) * fShare);
    }
};

// For numbers that AreNumbersSmall lets through: no step leaves an integer, so nothing is cut.
struct SSetSmallByte
{
    static int32_t Get(int32_t iByte, float fFullColor, float fShare)
    {
        return iByte + static_cast<int32_t>((fFullColor - static_cast<float>(iByte)) * fShare);
    }
};

// The colour is written whole where the share is large enough.
TELLUR_LOOP_BODY bool SetWholeLoop(
    uint8_t* pTexels, const float* pWeights, size_t nCount, float fStrength, uint32_t uColor)
{
    uint32_t uAny = 0;
    for (size_t i = 0; i < nCount; ++i)
    {
        uint32_t uTexel = 0;
        std::memcpy(&uTexel, pTexels + i * PAINT_TEXEL_BYTES, PAINT_TEXEL_BYTES);
        uint32_t uTake = pWeights[i] > 0.0F ? UINT32_MAX : 0;
        uTake &= pWeights[i] * fStrength > PALETTE_THRESHOLD ? UINT32_MAX : 0;
        uTexel = (uColor & uTake) | (uTexel & ~uTake);
        std::memcpy(pTexels + i * PAINT_TEXEL_BYTES, &uTexel, PAINT_TEXEL_BYTES);
        uAny |= uTake;
    }
    return uAny != 0;
}

} // namespace

bool CTellur2DFunctionSet::Apply(uint8_t* pTexel,
                                 float fWeight,
                                 float fStrength,
                                 uint32_t /*uExtra*/)
{
    if (pTexel == nullptr)
    {
        return false;
    }
    const float fShare = fWeight * fStrength;
    if (!HasFreeColors())
    {
        if (!(fShare > PALETTE_THRESHOLD))
        {
            return false;
        }
        WriteWhole(pTexel);
        return true;
    }
    bool bAny = false;
    for (size_t k = 0; k < PAINT_TEXEL_BYTES; ++k)
    {
        if (IsEditable(k))
        {
            pTexel[k] =
                static_cast<uint8_t>(SSetByte::Get(pTexel[k], GetEffective(k) * FULL, fShare));
            bAny = true;
        }
    }
    return bAny;
}

bool CTellur2DFunctionSet::ApplyRow(uint8_t* pTexels,
                                    const float* pWeights,
                                    size_t nCount,
                                    float fStrength)
{
    if (!HasFreeColors())
    {
        uint8_t aColor[PAINT_TEXEL_BYTES] = {};
        WriteWhole(aColor);
        uint32_t uColor = 0;
        std::memcpy(&uColor, aColor, sizeof(uColor));
        return CVectorLoop<SetWholeLoop>::Run(pTexels, pWeights, nCount, fStrength, uColor);
    }
    SPaintRow row = {{}, GetEditableBits(), fStrength};
    for (size_t k = 0; k < PAINT_TEXEL_BYTES; ++k)
    {
        row.fColors[k] = GetEffective(k) * FULL;
    }
    return PaintRow<SSetByte, SSetSmallByte>(
        pTexels, pWeights, nCount, row, AreNumbersSmall(fStrength), IsEditable(3));
}

void CTellur2DFunctionSet::WriteWhole(uint8_t* pTexel) const
{
    for (size_t k = 0; k < 3; ++k)
    {
        pTexel[k] = static_cast<uint8_t>(Wrap(0, GetEffective(k) * FULL));
    }
    pTexel[3] = 255;
}
