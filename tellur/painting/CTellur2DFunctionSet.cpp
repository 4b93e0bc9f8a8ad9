#include "tellur/painting/CTellur2DFunctionSet.h"

namespace
{

constexpr float FULL = 255.0F;
constexpr float PALETTE_THRESHOLD = 0.5F;

// Towards zero and modulo 256. A colour or a share far outside 0 to 1 overshoots and wraps; it is
// cut only where an integer could not hold it.
uint8_t Wrap(int iByte, float fStep)
{
    constexpr float LIMIT = 1.0e9F;
    const float fCut = fStep > LIMIT ? LIMIT : fStep >= -LIMIT ? fStep : -LIMIT;
    return static_cast<uint8_t>(iByte + static_cast<int>(fCut));
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
        return SetWhole(pTexel, fShare);
    }
    bool bAny = false;
    for (size_t k = 0; k < PAINT_TEXEL_BYTES; ++k)
    {
        if (IsEditable(k))
        {
            const float fLeft = GetEffective(k) * FULL - static_cast<float>(pTexel[k]);
            pTexel[k] = Wrap(pTexel[k], fLeft * fShare);
            bAny = true;
        }
    }
    return bAny;
}

bool CTellur2DFunctionSet::SetWhole(uint8_t* pTexel, float fShare) const
{
    if (!(fShare > PALETTE_THRESHOLD))
    {
        return false;
    }
    for (size_t k = 0; k < 3; ++k)
    {
        pTexel[k] = Wrap(0, GetEffective(k) * FULL);
    }
    pTexel[3] = 255;
    return true;
}
