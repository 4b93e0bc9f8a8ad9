#pragma once

#include "host/IPaintLayer.h"
#include "host/ITerrain2DRowFunction.h"

// What the functions of a stroke share: the colour that was chosen and what the channel mask leaves
// of it. Owned by the painting mode.
class CTellur2DFunction : public ITerrain2DFunction, public ITerrain2DRowFunction
{
public:
    // Red, green, blue, alpha, 0 to 1.
    void SetColor(const float* pColor);
    void SetChannelMask(uint32_t uChannels); // EPaintChannel

protected:
    // Of byte k of a texel.
    bool IsEditable(size_t k) const { return (m_Channels & CHANNEL_OF_BYTE[k]) != 0; }

    bool HasFreeColors() const { return (m_Channels & PAINT_FREE_COLORS) != 0; }

    // What is painted, 0 to 1. Alpha alone takes its level from the chosen red, since that is the
    // only channel the colour buttons then show.
    float GetEffective(size_t k) const { return m_Effective[k]; }

    // The bytes of a texel in memory that are editable, as a mask.
    uint32_t GetEditableBits() const;

    // Whether weights of at most 1 lead to no step that an integer could not hold.
    bool AreNumbersSmall(float fStrength) const;

private:
    static constexpr uint32_t CHANNEL_OF_BYTE[PAINT_TEXEL_BYTES] = {
        PAINT_RED_EDITABLE, PAINT_GREEN_EDITABLE, PAINT_BLUE_EDITABLE, PAINT_ALPHA_EDITABLE};

    void UpdateEffective();

    float m_Color[PAINT_TEXEL_BYTES] = {0.0F, 0.0F, 0.0F, 1.0F};
    float m_Effective[PAINT_TEXEL_BYTES] = {0.0F, 0.0F, 0.0F, 1.0F};
    uint32_t m_Channels = 0;
};
