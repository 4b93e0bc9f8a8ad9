#pragma once

#include "tellur/painting/CTellur2DFunction.h"

// Moves each editable channel towards the colour by weight times strength. Texels of a palette take
// the colour whole, above a half.
class CTellur2DFunctionSet final : public CTellur2DFunction
{
public:
    const char* GetName() const override { return "Set"; }

    bool IsUsableFor(bool /*bPaletteImage*/) const override { return true; }

    bool Apply(uint8_t* pTexel, float fWeight, float fStrength, uint32_t uExtra) override;
    bool ApplyRow(uint8_t* pTexels, const float* pWeights, size_t nCount, float fStrength) override;

private:
    void WriteWhole(uint8_t* pTexel) const;
};
