#include "tellur/painting/CTellur2DFunction.h"

#include <algorithm>
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
