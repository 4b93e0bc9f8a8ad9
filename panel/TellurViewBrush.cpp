// The brush: what fields, sliders, spins and function buttons do to it.

#include "brushes/CBrushContainer.h"
#include "brushes/CTellurBrush.h"
#include "host/EditorHost.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "modes/TerraformingState.h"
#include "panel/CTellurView.h"
#include "panel/PanelFunctions.h"
#include "panel/PanelScale.h"
#include "plugin/PluginContext.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{

constexpr float MOST_FADE = 1000000.0F;
constexpr float MOST_HARDNESS = 100.0F; // more than the slider reaches, which stays at its end then
constexpr float SHARE_STEP = 0.01F;
constexpr float DISTANCE_STEP = 10.0F;

constexpr const char* NO_BRUSH = "[CTellurView::OnChangeEditPower] no current brush\n";

// As sliders count: towards zero, and never beyond what a number of positions can be.
int Truncate(float fPos)
{
    constexpr float LIMIT = 1.0e6F;
    return fPos >= -LIMIT && fPos <= LIMIT ? static_cast<int>(fPos)
                                           : (fPos > 0.0F ? static_cast<int>(LIMIT) : 0);
}

} // namespace

Terrain* GetPanelTerrain()
{
    World* pWorld = GetPluginContext()->GetWorld();
    return pWorld != nullptr ? pWorld->GetTerrain() : nullptr;
}

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
    if (GetPanelTerrain() == nullptr)
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
    if (GetPanelTerrain() == nullptr || fHigh - fLow == 0.0F)
    {
        return 0;
    }
    return Truncate((fExtent - fLow) / (fHigh - fLow) * static_cast<float>(EXTENT_POSITIONS));
}

float CTellurView::DistanceOf(int iPos) const
{
    const Terrain* pTerrain = GetPanelTerrain();
    return pTerrain != nullptr && iPos != 0
               ? static_cast<float>(iPos) * pTerrain->GetSize().y * 0.001F
               : 0.0F;
}

int CTellurView::DistancePosition(float fDistance) const
{
    const Terrain* pTerrain = GetPanelTerrain();
    return pTerrain != nullptr ? Truncate(fDistance / pTerrain->GetSize().y *
                                          static_cast<float>(DISTANCE_POSITIONS))
                               : 0;
}

void CTellurView::ListenToBrush()
{
    const auto onEdit = [this](uint32_t uId, void (CTellurView::*pHandler)())
    {
        OnTextChange(uId,
                     [this, pHandler]
                     {
                         if (!m_bWriting)
                         {
                             (this->*pHandler)();
                         }
                     });
    };
    onEdit(PANEL_NO_POWER_EDIT, &CTellurView::OnChangeEditPower);
    onEdit(PANEL_FADE_EDIT, &CTellurView::OnChangeEditFade);
    onEdit(PANEL_NO_HARDNESS_EDIT, &CTellurView::OnChangeEditHardness);
    onEdit(PANEL_DISTANCE_EDIT, &CTellurView::OnChangeEditDistance);
    onEdit(PANEL_EXTENT_EDIT, &CTellurView::OnChangeEditExtent);
    onEdit(PANEL_MIN_EXTENT, &CTellurView::OnChangeLimits);
    onEdit(PANEL_MAX_EXTENT, &CTellurView::OnChangeLimits);

    const auto onSpin = [this](uint32_t uId, void (CTellurView::*pHandler)(int))
    {
        On(ENotify::SpinDelta,
           uId,
           [this, pHandler](SNotification& notification)
           { (this->*pHandler)(notification.iValue); });
    };
    onSpin(PANEL_POWER_SPIN, &CTellurView::OnDeltaPower);
    onSpin(PANEL_FADE_SPIN, &CTellurView::OnDeltaFade);
    onSpin(PANEL_HARDNESS_SPIN, &CTellurView::OnDeltaHardness);
    onSpin(PANEL_DISTANCE_SPIN, &CTellurView::OnDeltaDistance);

    OnScroll([this](SNotification& notification) { OnHScroll(notification); });
    for (size_t i = 0; i < FUNCTION_COUNT; ++i)
    {
        OnClick(PANEL_FUNCTIONS[i].uButton, [this, i] { OnFunctionButton(i); });
    }
    OnClick(PANEL_MASK_BROWSE, [this] { OnBrowseMask(); });
    OnClick(PANEL_MASK_ENABLED, [this] { OnMaskEnabled(); });
}

void CTellurView::OnChangeEditPower()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr)
    {
        CrashLog("%s", NO_BRUSH);
        return;
    }
    ReadControls();
    m_Power = std::clamp(m_Power, 0.0F, 1.0F);
    WriteFields();
    pBrush->SetPowerModifier(m_Power);
    m_PowerSlider.SetPos(GetSharePosition(m_Power));
}

void CTellurView::OnChangeEditFade()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr)
    {
        CrashLog("%s", NO_BRUSH); // under the power's name, as it always was
        return;
    }
    ReadControls();
    m_Fade = std::clamp(m_Fade, 0.0F, MOST_FADE);
    WriteFields();
    pBrush->SetFadeFactor(m_Fade);
    m_FadeSlider.SetPos(PositionOf(m_Fade));
}

void CTellurView::OnChangeEditHardness()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr)
    {
        CrashLog("[CTellurView::OnEnChangeEditHardness] no current brush\n");
        return;
    }
    ReadControls();
    m_Hardness = std::clamp(m_Hardness, 0.0F, MOST_HARDNESS);
    WriteFields();
    pBrush->SetHardness(m_Hardness);
    m_HardnessSlider.SetPos(GetSharePosition(m_Hardness));
}

void CTellurView::OnChangeEditDistance()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    const Terrain* pTerrain = GetPanelTerrain();
    if (pBrush == nullptr || pTerrain == nullptr)
    {
        return;
    }
    ReadControls();
    m_VerticalDistance = std::clamp(m_VerticalDistance, 0.0F, pTerrain->GetSize().y);
    WriteFields();
    pBrush->SetVerticalDistance(m_VerticalDistance);
    m_DistanceSlider.SetPos(DistancePosition(m_VerticalDistance));
}

void CTellurView::OnChangeEditExtent()
{
    ReadControls();
    m_KeptExtent.reset();
    m_ExtentSlider.SetPos(PositionOf(m_Extent));
    if (CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush())
    {
        pBrush->SetExtent(m_Extent);
        ShowBrush();
    }
}

// The slider goes on showing the same extent between other ends.
void CTellurView::OnChangeLimits()
{
    // Half a number typed may leave no room for the extent, which comes back with the rest of it.
    const float fShown = m_KeptExtent.value_or(ExtentOf(m_ExtentSlider.GetPos()));
    ReadControls();
    m_ExtentSlider.SetPos(PositionOf(fShown));
    m_KeptExtent = fShown;
}

void CTellurView::OnDeltaPower(int iDelta)
{
    ReadControls();
    m_Power += static_cast<float>(iDelta) * SHARE_STEP;
    WriteFields();
    OnChangeEditPower();
}

void CTellurView::OnDeltaFade(int iDelta)
{
    ReadControls();
    m_Fade += static_cast<float>(iDelta);
    WriteFields();
    OnChangeEditFade();
}

// The arrows of these two count downwards, since nobody gives them a range, and so do the signs.
void CTellurView::OnDeltaHardness(int iDelta)
{
    ReadControls();
    m_Hardness -= static_cast<float>(iDelta) * SHARE_STEP;
    WriteFields();
    OnChangeEditHardness();
}

void CTellurView::OnDeltaDistance(int iDelta)
{
    ReadControls();
    m_VerticalDistance -= static_cast<float>(iDelta) * DISTANCE_STEP;
    WriteFields();
    OnChangeEditDistance();
}

int CTellurView::GetScrolledPosition(const CSliderCtrl& slider,
                                     const SNotification& notification) const
{
    const int iPos = slider.GetPos();
    const int iLow = slider.GetRangeMin();
    const int iHigh = slider.GetRangeMax();
    switch (notification.eScroll)
    {
    case EScrollCode::LineLeft:
        return std::max(iPos - 1, iLow);
    case EScrollCode::LineRight:
        return std::min(iPos + 1, iHigh);
    case EScrollCode::PageLeft:
        return std::max(iPos - slider.GetPageSize(), iLow);
    case EScrollCode::PageRight:
        return std::min(iPos + slider.GetPageSize(), iHigh);
    case EScrollCode::ThumbPosition:
    case EScrollCode::ThumbTrack:
        return notification.iValue;
    case EScrollCode::Left:
        return iLow;
    case EScrollCode::Right:
        return iHigh;
    }
    return iPos;
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
            const int iPos = GetScrolledPosition(*pSlider, notification);
            pSlider->SetPos(iPos);
            ApplySlider(*pBrush, *pSlider, iPos);
        }
    }
    WriteFields();
    ShowBrush();
}

void CTellurView::ShowBrush()
{
    if (EditorHost* pHost = GetEditorHost())
    {
        pHost->RedrawViews();
    }
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

void CTellurView::OnFunctionButton(size_t iFunction)
{
    const char* pszName = PANEL_FUNCTIONS[iFunction].pszName;
    PluginContext* pContext = GetPluginContext();
    const CTellurBrush* pBrush = pContext->GetCurrentBrush();
    const char* pszCurrent = pBrush != nullptr ? pBrush->GetFunctionName() : nullptr;
    if (pszCurrent != nullptr && std::strcmp(pszCurrent, pszName) == 0 && IsTerraformingOn())
    {
        pContext->EnableTerraforming(false);
        pContext->SetCurrentBrush(nullptr);
        ShowBrush();
        return;
    }
    CBrushContainer* pBrushes = pContext->GetBrushContainer();
    CTellurBrush* pTool = pBrushes != nullptr ? pBrushes->FindBrush(pszName) : nullptr;
    if (pTool != nullptr)
    {
        pContext->SetCurrentBrush(pTool);
        if (!IsTerraformingOn())
        {
            pContext->EnableTerraforming(true);
        }
    }
    RefreshFunctionButtons(); // a click changes the button by itself
    ShowBrush();
}

void CTellurView::OnBrowseMask()
{
    constexpr int KIND_OPEN = 1;
    EditorHost* pHost = GetEditorHost();
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr || pHost == nullptr)
    {
        return;
    }
    ReadControls();
    const std::string strPath =
        pHost->BrowseForFile(KIND_OPEN,
                             nullptr,
                             m_MaskPath.c_str(),
                             "data",
                             "Bitmap files (*.dds; *.png; *.jpg; *.tga)|*.dds|*.png|*.jpg|*.tga");
    if (strPath.empty() || pBrush != GetPluginContext()->GetCurrentBrush())
    {
        return;
    }
    m_MaskPath = strPath;
    pBrush->SetMask(strPath.c_str());
    ReleaseBrushPreview();
    ApplyEditOverlay(EEditOverlay::On);
    if (m_MaskEnabled == CHECK_OFF)
    {
        pBrush->SetMaskEnabled(true);
        m_MaskEnabled = CHECK_ON;
    }
    WriteFields();
    ShowBrush();
}

void CTellurView::OnMaskEnabled()
{
    ReadControls();
    if (CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush())
    {
        pBrush->SetMaskEnabled(m_MaskEnabled == CHECK_ON);
    }
}
