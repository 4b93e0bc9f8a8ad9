#pragma once

#include "tellur/painting/CTellur2DFunction.h"

// Multiplies each editable channel by the colour, as far as weight times strength says. Not for
// palettes, whose texels are no amounts.
class CTellur2DFunctionMul final : public CTellur2DFunction
{
public:
    const char* GetName() const override { return "Mul"; }

    bool IsUsableFor(bool bPaletteImage) const override { return !bPaletteImage; }

    bool Apply(uint8_t* pTexel, float fWeight, float fStrength, uint32_t uExtra) override;
    bool ApplyRow(uint8_t* pTexels, const float* pWeights, size_t nCount, float fStrength) override;
};
