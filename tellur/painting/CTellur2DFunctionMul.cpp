#include "tellur/painting/CTellur2DFunctionMul.h"

#include "tellur/painting/PaintRows.h"

#include <algorithm>

namespace
{

struct SMulByte
{
    static int32_t Get(int32_t iByte, float fColor, float fShare)
    {
        const float fValue = ((fColor - 1.0F) * fShare + 1.0F) * static_cast<float>(iByte);
        // Not clamped by std::clamp, so that what is no number becomes 0.
        const float fCut = fValue > 255.0F ? 255.0F : fValue;
        return static_cast<int32_t>(fCut >= 0.0F ? fCut : 0.0F);
    }
};

// For numbers that AreNumbersSmall lets through: every value fits an integer before it is cut.
struct SMulSmallByte
{
    static int32_t Get(int32_t iByte, float fColor, float fShare)
    {
        const float fValue = ((fColor - 1.0F) * fShare + 1.0F) * static_cast<float>(iByte);
        return std::clamp(static_cast<int32_t>(fValue), 0, 255);
    }
};

} // namespace

bool CTellur2DFunctionMul::Apply(uint8_t* pTexel,
                                 float fWeight,
                                 float fStrength,
                                 uint32_t /*uExtra*/)
{
    if (pTexel == nullptr || !HasFreeColors())
    {
        return false;
    }
    const float fShare = fWeight * fStrength;
    bool bAny = false;
    for (size_t k = 0; k < PAINT_TEXEL_BYTES; ++k)
    {
        if (IsEditable(k))
        {
            pTexel[k] = static_cast<uint8_t>(SMulByte::Get(pTexel[k], GetEffective(k), fShare));
            bAny = true;
        }
    }
    return bAny;
}

bool CTellur2DFunctionMul::ApplyRow(uint8_t* pTexels,
                                    const float* pWeights,
                                    size_t nCount,
                                    float fStrength)
{
    if (!HasFreeColors())
    {
        return false;
    }
    SPaintRow row = {{}, GetEditableBits(), fStrength};
    for (size_t k = 0; k < PAINT_TEXEL_BYTES; ++k)
    {
        row.fColors[k] = GetEffective(k);
    }
    return PaintRow<SMulByte, SMulSmallByte>(
        pTexels, pWeights, nCount, row, AreNumbersSmall(fStrength), IsEditable(3));
}
