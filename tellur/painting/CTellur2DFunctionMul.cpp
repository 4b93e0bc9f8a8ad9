#include "tellur/painting/CTellur2DFunctionMul.h"

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
            const float fValue =
                ((GetEffective(k) - 1.0F) * fShare + 1.0F) * static_cast<float>(pTexel[k]);
            // Not clamped by std::clamp, so that what is no number becomes 0.
            const float fKept = fValue > 255.0F ? 255.0F : fValue >= 0.0F ? fValue : 0.0F;
            pTexel[k] = static_cast<uint8_t>(fKept);
            bAny = true;
        }
    }
    return bAny;
}
