// The brush: what fields, spins and function buttons do to it.

#include "host/EditorHost.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/panel/BrushMask.h"
#include "tellur/panel/CTellurView.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/panel/PanelFunctions.h"
#include "tellur/panel/PanelScale.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr float MOST_FADE = 1000000.0F;
constexpr float DISTANCE_STEP = 10.0F;

constexpr const char* NO_BRUSH = "[CTellurView::OnChangeEditPower] no current brush\n";

} // namespace

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

bool CTellurView::ApplyEdit(const char* pszNoBrush,
                            float& fValue,
                            float fMost,
                            void (CTellurBrush::*pSet)(float))
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr)
    {
        CrashLog("%s", pszNoBrush);
        return false;
    }
    ReadControls();
    fValue = std::clamp(fValue, 0.0F, fMost);
    WriteFields();
    (pBrush->*pSet)(fValue);
    return true;
}

void CTellurView::OnChangeEditPower()
{
    if (ApplyEdit(NO_BRUSH, m_Power, 1.0F, &CTellurBrush::SetPowerModifier))
    {
        m_PowerSlider.SetPos(GetSharePosition(m_Power));
    }
}

// Without a brush it reports under the power's name, as it always did.
void CTellurView::OnChangeEditFade()
{
    if (ApplyEdit(NO_BRUSH, m_Fade, MOST_FADE, &CTellurBrush::SetFadeFactor))
    {
        m_FadeSlider.SetPos(PositionOf(m_Fade));
    }
}

void CTellurView::OnChangeEditHardness()
{
    if (ApplyEdit("[CTellurView::OnEnChangeEditHardness] no current brush\n",
                  m_Hardness,
                  MOST_HARDNESS,
                  &CTellurBrush::SetHardness))
    {
        m_HardnessSlider.SetPos(GetSharePosition(m_Hardness));
    }
}

void CTellurView::OnChangeEditDistance()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    const Terrain* pTerrain = GetCurrentTerrain();
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

void CTellurView::ShowBrush()
{
    if (EditorHost* pHost = GetEditorHost())
    {
        pHost->RedrawViews();
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
        GetPluginPart<IPanelPlugin>()->EnableTerraforming(false);
        pContext->SetCurrentBrush(nullptr);
        ShowBrush();
        return;
    }
    if (CTellurBrush* pTool =
            GetPluginPart<IPanelPlugin>()->GetBrushContainer()->FindBrush(pszName))
    {
        pContext->SetCurrentBrush(pTool);
        if (!IsTerraformingOn())
        {
            GetPluginPart<IPanelPlugin>()->EnableTerraforming(true);
        }
    }
    RefreshFunctionButtons(); // a click changes the button by itself
    ShowBrush();
}

void CTellurView::OnBrowseMask()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr)
    {
        return;
    }
    ReadControls();
    const std::string strPath = BrowseForMask(m_MaskPath);
    if (strPath.empty())
    {
        return;
    }
    m_MaskPath = strPath;
    SetBrushMask(*pBrush, strPath);
    m_MaskEnabled = CHECK_ON;
    WriteFields();
    ShowBrush();
}

void CTellurView::OnMaskEnabled()
{
    ReadControls();
    if (CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush())
    {
        pBrush->SetMaskEnabled(m_MaskEnabled == CHECK_ON);
        ShowBrush();
    }
}
