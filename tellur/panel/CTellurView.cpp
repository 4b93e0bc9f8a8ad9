// The panel's life: its controls, and how it shows what the brush and the plug-in hold.

#include "tellur/panel/CTellurView.h"

#include "framework/core/CRuntimeClass.h"
#include "host/EditorHost.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/panel/PanelFunctions.h"
#include "tellur/panel/PanelScale.h"

#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>

namespace
{

constexpr uint32_t DIALOG_ID = 2101;
constexpr float NEVER_SET = 0.001F;
constexpr float LEAST_IN_CELLS = 0.5F; // the extent's limits before somebody sets them
constexpr float MOST_OF_TERRAIN = 0.1F;
constexpr int SPIN_MOST = 100;
constexpr const char* COLUMNS_KEY = "\\Montar\\Settings\\Tellur prop control columns info";

// What a brush is needed for.
constexpr uint32_t BRUSH_CONTROLS[] = {
    PANEL_SHAPE,           PANEL_POWER_EDIT,    PANEL_POWER_SPIN,
    PANEL_POWER_SLIDER,    PANEL_FADE_EDIT,     PANEL_FADE_SPIN,
    PANEL_FADE_SLIDER,     PANEL_ADD_BRUSH,     PANEL_EXTENT_SLIDER,
    PANEL_EXTENT_EDIT,     PANEL_HARDNESS_EDIT, PANEL_HARDNESS_SPIN,
    PANEL_HARDNESS_SLIDER, PANEL_MASK_BROWSE,   PANEL_MASK_ENABLED,
    PANEL_DISTANCE_EDIT,   PANEL_DISTANCE_SPIN, PANEL_DISTANCE_SLIDER,
    PANEL_MIN_EXTENT,      PANEL_MAX_EXTENT,    PANEL_GRID};

CFormView* CreateTellurView()
{
    return new CTellurView; // the host's
}

} // namespace

CTellurView::CTellurView()
    : CFormView(DIALOG_ID)
{
    BindControls();
    Listen();
    EnableToolTips(true);
    GetPluginPart<IPanelPlugin>()->SetPanel(this);
}

CTellurView::~CTellurView()
{
    m_Grid.SaveToRegistry();
    GetPluginPart<IPanelPlugin>()->SetPanel(nullptr);
}

const CRuntimeClass& CTellurView::GetRuntimeClass()
{
    static const CRuntimeClass s_Class("CTellurView", &CreateTellurView);
    return s_Class;
}

void CTellurView::BindControls()
{
    BindValue(PANEL_POWER_EDIT, m_Power);
    BindValue(PANEL_FADE_EDIT, m_Fade);
    BindValue(PANEL_EXTENT_EDIT, m_Extent);
    BindValue(PANEL_HARDNESS_EDIT, m_Hardness);
    BindValue(PANEL_DISTANCE_EDIT, m_VerticalDistance);
    BindCheck(PANEL_AUTO_NORMALS, m_AutoNormals);
    BindCheck(PANEL_MASK_ENABLED, m_MaskEnabled);
    BindText(PANEL_MATERIAL, m_Material);
    BindText(PANEL_MASK_PATH, m_MaskPath);
    BindValue(PANEL_MIN_EXTENT, m_MinExtent);
    BindValue(PANEL_MAX_EXTENT, m_MaxExtent);
    Bind(PANEL_SHAPE, m_Shape);
    Bind(PANEL_EXTENT_SLIDER, m_ExtentSlider);
    Bind(PANEL_POWER_SLIDER, m_PowerSlider);
    Bind(PANEL_FADE_SLIDER, m_FadeSlider);
    Bind(PANEL_HARDNESS_SLIDER, m_HardnessSlider);
    Bind(PANEL_DISTANCE_SLIDER, m_DistanceSlider);
    Bind(PANEL_POWER_SPIN, m_PowerSpin);
    Bind(PANEL_FADE_SPIN, m_FadeSpin);
    Bind(PANEL_DISTANCE_SPIN, m_DistanceSpin);
    for (size_t i = 0; i < FUNCTION_COUNT; ++i)
    {
        Bind(PANEL_FUNCTIONS[i].uButton, m_Functions[i]);
    }
    Bind(PANEL_GRID, m_Grid);
    Bind(PANEL_BRUSH_LIST, m_BrushList);
    Bind(PANEL_RESOLUTION, m_Resolutions);
}

void CTellurView::Listen()
{
    ListenToBrush();
    ListenToLevel();
}

void CTellurView::StoreExtentLimits()
{
    ReadControls();
    GetPluginPart<IPanelPlugin>()->SetExtentLimits({m_MinExtent, m_MaxExtent});
}

void CTellurView::TakeExtentLimits()
{
    const SExtentLimits limits = GetPluginPart<IPanelPlugin>()->GetExtentLimits();
    m_MinExtent = limits.fMin;
    m_MaxExtent = limits.fMax;
    const Terrain* pTerrain = GetCurrentTerrain();
    if (std::fabs(m_MaxExtent) < NEVER_SET && pTerrain != nullptr)
    {
        const float fWidth = pTerrain->GetSize().x;
        m_MinExtent = fWidth / static_cast<float>(pTerrain->GetCellsPerSide()) * LEAST_IN_CELLS;
        m_MaxExtent = fWidth * MOST_OF_TERRAIN;
    }
}

void CTellurView::DressFunctionButtons()
{
    for (size_t i = 0; i < FUNCTION_COUNT; ++i)
    {
        m_Functions[i].SetImages(GetPluginPart<IPanelPlugin>()->GetResourceModule(),
                                 PANEL_FUNCTIONS[i].uImage);
        m_Functions[i].SetToggle(true);
        m_Functions[i].SetOwnerDraw();
    }
}

void CTellurView::OnUpdate()
{
    if (m_FirstUpdate)
    {
        TakeExtentLimits();
        DressFunctionButtons();
    }
    SetupGrid();
    SetupSpins();
    FillResolutionList();
    FillBrushList();
    RefreshBrushControls();
    EnableBrushControls();
    m_AutoNormals = GetPluginContext()->IsAutoUpdateNormals() ? CHECK_ON : CHECK_OFF;
    m_Material = GetTerraformingState().GetEditMaterial();
    WriteFields();
}

void CTellurView::SetupGrid()
{
    m_Grid.SetUser(this);
    EditorHost* pHost = GetEditorHost();
    if (pHost != nullptr)
    {
        m_Grid.SetRegistryKeyPath((std::string(pHost->GetRegistryRoot()) + COLUMNS_KEY).c_str());
    }
    m_Grid.SetObjects({});
}

void CTellurView::SetupSpins()
{
    m_PowerSpin.SetRange(0, SPIN_MOST);
    m_FadeSpin.SetRange(0, SPIN_MOST);
    m_PowerSpin.SetBuddy(PANEL_NO_POWER_EDIT);
    m_FadeSpin.SetBuddy(PANEL_FADE_EDIT);
    m_DistanceSpin.SetBuddy(PANEL_DISTANCE_EDIT);
}

void CTellurView::WriteFields()
{
    const bool bBefore = std::exchange(m_bWriting, true);
    WriteControls();
    m_bWriting = bBefore;
}

void CTellurView::RefreshBrushControls()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    const bool bBrush = pBrush != nullptr;
    m_Power = bBrush ? pBrush->GetPowerModifier() : 0.0F;
    m_Fade = bBrush ? pBrush->GetFadeFactor() : 0.0F;
    m_Extent = bBrush ? pBrush->GetExtent() : 0.0F;
    m_Hardness = bBrush ? pBrush->GetHardness() : 0.0F;
    m_VerticalDistance = bBrush ? pBrush->GetVerticalDistance() : 0.0F;
    m_MaskPath = bBrush ? pBrush->GetMaskPath() : "";
    m_MaskEnabled = bBrush && pBrush->IsMaskEnabled() ? CHECK_ON : CHECK_OFF;
    m_Shape.SetBrush(pBrush);
    m_Shape.Invalidate();
    RefreshSliders();
    RefreshToolProperties();
    RefreshFunctionButtons();
    WriteFields();
}

void CTellurView::ShowPosition(CSliderCtrl& slider, int iMost, int iPos)
{
    slider.SetRedraw(false);
    slider.SetRange(0, iMost);
    slider.SetPos(iPos);
    slider.SetRedraw(true);
}

void CTellurView::RefreshSliders()
{
    m_KeptExtent.reset();
    ShowPosition(m_ExtentSlider, EXTENT_POSITIONS, PositionOf(m_Extent));
    ShowPosition(m_PowerSlider, SHARE_POSITIONS, GetSharePosition(m_Power));
    ShowPosition(m_FadeSlider, EXTENT_POSITIONS, PositionOf(m_Fade));
    ShowPosition(m_HardnessSlider, SHARE_POSITIONS, GetSharePosition(m_Hardness));
    ShowPosition(m_DistanceSlider, DISTANCE_POSITIONS, DistancePosition(m_VerticalDistance));
}

void CTellurView::RefreshExtent()
{
    const CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    m_Extent = pBrush != nullptr ? pBrush->GetExtent() : 0.0F;
    m_KeptExtent.reset();
    ShowPosition(m_ExtentSlider, EXTENT_POSITIONS, PositionOf(m_Extent));
    WriteFields();
}

void CTellurView::RefreshFunctionButtons()
{
    const CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    const char* pszName = pBrush != nullptr ? pBrush->GetFunctionName() : nullptr;
    for (size_t i = 0; i < FUNCTION_COUNT; ++i)
    {
        const bool bChecked =
            pszName != nullptr && std::strcmp(pszName, PANEL_FUNCTIONS[i].pszName) == 0;
        m_Functions[i].SetChecked(bChecked);
    }
}

void CTellurView::EnableBrushControls()
{
    const bool bBrush = GetPluginContext()->GetCurrentBrush() != nullptr;
    for (const uint32_t uId : BRUSH_CONTROLS)
    {
        EnableItem(uId, bBrush);
    }
}

bool CTellurView::OnToolTipText(SToolTipText& tip)
{
    return GetPluginContext()->GetToolTipText(tip);
}
