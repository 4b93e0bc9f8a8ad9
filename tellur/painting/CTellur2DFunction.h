#pragma once

#include "host/IPaintLayer.h"

// What the functions of a stroke share: the colour that was chosen and what the channel mask leaves
// of it. Owned by the painting mode.
class CTellur2DFunction : public ITerrain2DFunction
{
public:
    // Red, green, blue, alpha, 0 to 1.
    void SetColor(const float* pColor);
    void SetChannelMask(uint32_t uChannels); // EPaintChannel

protected:
    // Of byte k of a texel.
    bool IsEditable(int k) const { return (m_Channels & CHANNEL_OF_BYTE[k]) != 0; }

    bool HasFreeColors() const { return (m_Channels & PAINT_FREE_COLORS) != 0; }

    // What is painted, 0 to 1. Alpha alone takes its level from the chosen red, since that is the
    // only channel the colour buttons then show.
    float GetEffective(int k) const { return m_Effective[k]; }

    static constexpr int BYTES = 4; // of a texel

private:
    static constexpr uint32_t CHANNEL_OF_BYTE[BYTES] = {
        PAINT_RED_EDITABLE, PAINT_GREEN_EDITABLE, PAINT_BLUE_EDITABLE, PAINT_ALPHA_EDITABLE};

    void UpdateEffective();

    float m_Color[BYTES] = {0.0F, 0.0F, 0.0F, 1.0F};
    float m_Effective[BYTES] = {0.0F, 0.0F, 0.0F, 1.0F};
    uint32_t m_Channels = 0;
};
