#include "tellur/painting/CTellur2DFunction.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <iterator>

void CTellur2DFunction::SetColor(const float* pColor)
{
    std::copy_n(pColor, PAINT_TEXEL_BYTES, m_Color);
    UpdateEffective();
}

void CTellur2DFunction::SetChannelMask(uint32_t uChannels)
{
    m_Channels = uChannels;
    UpdateEffective();
}

void CTellur2DFunction::UpdateEffective()
{
    if (!HasFreeColors())
    {
        // Texels of a palette are entries: single channels of them cannot be painted.
        std::copy(std::begin(m_Color), std::end(m_Color), m_Effective);
        return;
    }
    const bool bAlpha = (m_Channels & PAINT_ALPHA_EDITABLE) != 0;
    for (size_t k = 0; k < 3; ++k)
    {
        m_Effective[k] = !bAlpha && IsEditable(k) ? m_Color[k] : 0.0F;
    }
    m_Effective[3] = bAlpha ? m_Color[0] : 0.0F;
}

uint32_t CTellur2DFunction::GetEditableBits() const
{
    std::array<uint8_t, PAINT_TEXEL_BYTES> bytes = {};
    for (size_t k = 0; k < PAINT_TEXEL_BYTES; ++k)
    {
        bytes[k] = IsEditable(k) ? 0xFF : 0;
    }
    return std::bit_cast<uint32_t>(bytes);
}

bool CTellur2DFunction::AreNumbersSmall(float fStrength) const
{
    constexpr float SMALL = 1000.0F; // what is no number is not
    return std::fabs(fStrength) <= SMALL &&
           std::all_of(std::begin(m_Effective),
                       std::end(m_Effective),
                       [](float fColor) { return std::fabs(fColor) <= SMALL; });
}
