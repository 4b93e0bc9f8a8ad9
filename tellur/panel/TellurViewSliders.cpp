// The sliders: their scales and what they do to the brush.

#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/panel/CTellurView.h"
#include "tellur/panel/PanelScale.h"

#include <algorithm>

namespace
{

// As sliders count: towards zero, and never beyond what a number of positions can be.
int Truncate(float fPos)
{
    constexpr float LIMIT = 1.0e6F;
    return fPos >= -LIMIT && fPos <= LIMIT ? static_cast<int>(fPos)
                                           : (fPos > 0.0F ? static_cast<int>(LIMIT) : 0);
}

} // namespace

int GetSharePosition(float fShare)
{
    return Truncate(fShare * static_cast<float>(SHARE_POSITIONS));
}

float GetShareAt(int iPos)
{
    return iPos == 0 ? 0.0F : static_cast<float>(iPos) * SHARE_STEP;
}

float CTellurView::ExtentOf(int iPos) const
{
    if (GetCurrentTerrain() == nullptr)
    {
        return 0.0F;
    }
    const float fLow = std::max(m_MinExtent, 0.0F);
    const float fHigh = std::max(m_MaxExtent, 0.0F);
    return fLow + (fHigh - fLow) * static_cast<float>(iPos) / static_cast<float>(EXTENT_POSITIONS);
}

int CTellurView::PositionOf(float fExtent) const
{
    const float fLow = std::max(m_MinExtent, 0.0F);
    const float fHigh = std::max(m_MaxExtent, 0.0F);
    if (GetCurrentTerrain() == nullptr || fHigh - fLow == 0.0F)
    {
        return 0;
    }
    return Truncate((fExtent - fLow) / (fHigh - fLow) * static_cast<float>(EXTENT_POSITIONS));
}

float CTellurView::DistanceOf(int iPos) const
{
    const Terrain* pTerrain = GetCurrentTerrain();
    return pTerrain != nullptr && iPos != 0
               ? static_cast<float>(iPos) * pTerrain->GetSize().y * 0.001F
               : 0.0F;
}

int CTellurView::DistancePosition(float fDistance) const
{
    const Terrain* pTerrain = GetCurrentTerrain();
    return pTerrain != nullptr ? Truncate(fDistance / pTerrain->GetSize().y *
                                          static_cast<float>(DISTANCE_POSITIONS))
                               : 0;
}

void CTellurView::OnHScroll(const SNotification& notification)
{
    ReadControls();
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr)
    {
        CrashLog("[CTellurView::OnHScroll] no current brush\n");
        return;
    }
    for (CSliderCtrl* pSlider :
         {&m_ExtentSlider, &m_FadeSlider, &m_PowerSlider, &m_HardnessSlider, &m_DistanceSlider})
    {
        if (pSlider == notification.pFrom)
        {
            m_KeptExtent.reset();
            const int iPos = pSlider->GetScrolledPos(notification);
            pSlider->SetPos(iPos);
            ApplySlider(*pBrush, *pSlider, iPos);
        }
    }
    WriteFields();
    ShowBrush();
}

void CTellurView::ApplySlider(CTellurBrush& brush, const CSliderCtrl& slider, int iPos)
{
    if (&slider == &m_ExtentSlider)
    {
        m_Extent = ExtentOf(iPos);
        brush.SetExtent(m_Extent);
    }
    else if (&slider == &m_FadeSlider)
    {
        m_Fade = ExtentOf(iPos); // on the extent's scale, on purpose
        brush.SetFadeFactor(m_Fade);
    }
    else if (&slider == &m_PowerSlider)
    {
        m_Power = GetShareAt(iPos);
        brush.SetPowerModifier(m_Power);
    }
    else if (&slider == &m_HardnessSlider)
    {
        m_Hardness = GetShareAt(iPos);
        brush.SetHardness(m_Hardness);
    }
    else
    {
        m_VerticalDistance = DistanceOf(iPos);
        brush.SetVerticalDistance(m_VerticalDistance);
    }
}
