#pragma once

#include "host/IPluginMark.h"

class CBrushAtHand;
class CPainting;
class CPluginTools;
class CTellurBrush;
class CTerraformingState;

// Tells a host in numbers what the tool at hand does where, as its functions and brushes have it.
class CPluginMark : public IPluginMark
{
public:
    // All borrowed.
    CPluginMark(const CTerraformingState& terraforming,
                const CBrushAtHand& brush,
                const CPainting& painting,
                CPluginTools& tools);

    bool GetMark(bool bSmooth, SToolMark& mark) override;

private:
    void FillSign(const CTellurBrush& brush, SToolMark& mark) const;
    void FillRamp(const CTellurBrush& brush, SToolMark& mark) const;

    const CTerraformingState& m_Terraforming;
    const CBrushAtHand& m_Brush;
    const CPainting& m_Painting;
    CPluginTools& m_Tools;
};
