#include "tellur/panel/CTellurView.h"

#include "framework/core/CRuntimeClass.h"
#include "tellur/context/PluginContext.h"
#include "tellur/panel/CurrentBrush.h"
#include "tellur/panel/IPanelPlugin.h"

namespace
{

constexpr uint32_t DIALOG_ID = 2101;

CFormView* CreateTellurView()
{
    return new CTellurView; // the host's
}

} // namespace

CTellurView::CTellurView()
    : CFormView(DIALOG_ID)
    , m_Numbers(*this)
    , m_ShapeAndMask(*this)
    , m_Functions(*this)
    , m_Properties(*this)
    , m_DefinedBrushes(*this)
    , m_HeightMap(*this)
    , m_TerrainLook(*this)
{
    EnableToolTips(true);
    GetPluginPart<IPanelPlugin>()->SetPanel(this);
}

CTellurView::~CTellurView()
{
    GetPluginPart<IPanelPlugin>()->SetPanel(nullptr);
}

const CRuntimeClass& CTellurView::GetRuntimeClass()
{
    static const CRuntimeClass s_Class("CTellurView", &CreateTellurView);
    return s_Class;
}

void CTellurView::StoreExtentLimits()
{
    ReadControls();
    GetPluginPart<IPanelPlugin>()->SetExtentLimits(m_Numbers.GetLimits());
}

void CTellurView::OnUpdate()
{
    // Kept as it always was: every update takes the stored limits again, so limits that were typed
    // go when another level opens.
    if (m_FirstUpdate)
    {
        m_Numbers.TakeLimits(GetPluginPart<IPanelPlugin>()->GetExtentLimits());
        m_Functions.Dress();
    }
    m_Properties.Setup();
    m_Numbers.SetupSpins();
    FillResolutionList();
    FillBrushList();
    RefreshBrushControls();
    EnableBrushControls();
    m_TerrainLook.Take();
    WriteControls();
}

void CTellurView::RefreshBrushControls()
{
    CTellurBrush* pBrush = GetCurrentBrush();
    m_ShapeAndMask.Show(pBrush);
    m_Numbers.Show(pBrush);
    m_Properties.Refresh();
    m_Functions.Show(pBrush);
    WriteControls();
}

void CTellurView::RefreshExtent()
{
    // Alone: the other fields may hold a number that is being typed.
    m_Numbers.ShowExtent(GetCurrentBrush());
}

void CTellurView::RefreshToolProperties()
{
    m_Properties.Refresh();
}

void CTellurView::EnableBrushControls()
{
    const bool bBrush = GetCurrentBrush() != nullptr;
    m_ShapeAndMask.Enable(bBrush);
    m_Numbers.Enable(bBrush);
    m_DefinedBrushes.EnableAdding(bBrush);
    m_Properties.Enable(bBrush);
}

void CTellurView::FillBrushList()
{
    m_DefinedBrushes.Fill();
}

void CTellurView::FillResolutionList()
{
    m_HeightMap.FillResolutions();
}

bool CTellurView::OnToolTipText(SToolTipText& tip)
{
    return GetPluginContext()->GetToolTipText(tip);
}
