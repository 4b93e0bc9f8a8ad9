#include "panel/CTellurView.h"

#include "framework/core/CRuntimeClass.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "plugin/PluginContext.h"

#include <cmath>

namespace
{

constexpr uint32_t DIALOG_ID = 2101;
constexpr uint32_t EDIT_MIN_EXTENT = 2198;
constexpr uint32_t EDIT_MAX_EXTENT = 2199;
constexpr float NEVER_SET = 0.001F;

// What a brush is needed for.
constexpr uint32_t BRUSH_CONTROLS[] = {2106, 2201, 2109, 2200, 2121, 2122, 2136,
                                       2119, 2115, 2128, 2204, 2187, 2203, 2193,
                                       2194, 2196, 2197, 2195, 2198, 2199, 2123};

CFormView* CreateTellurView()
{
    return new CTellurView; // the host's
}

const Terrain* GetTerrain()
{
    World* pWorld = GetPluginContext()->GetWorld();
    return pWorld != nullptr ? pWorld->GetTerrain() : nullptr;
}

} // namespace

CTellurView::CTellurView()
    : CFormView(DIALOG_ID)
{
    BindValue(EDIT_MIN_EXTENT, m_MinExtent);
    BindValue(EDIT_MAX_EXTENT, m_MaxExtent);
    EnableToolTips(true);
    GetPluginContext()->SetPanel(this);
}

CTellurView::~CTellurView()
{
    GetPluginContext()->SetPanel(nullptr);
}

const CRuntimeClass& CTellurView::GetRuntimeClass()
{
    static const CRuntimeClass s_Class("CTellurView", &CreateTellurView);
    return s_Class;
}

void CTellurView::OnUpdate()
{
    const SExtentLimits limits = GetPluginContext()->GetExtentLimits();
    m_MinExtent = limits.fMin;
    m_MaxExtent = limits.fMax;
    const Terrain* pTerrain = GetTerrain();
    if (std::fabs(m_MaxExtent) < NEVER_SET && pTerrain != nullptr)
    {
        const float fWidth = pTerrain->GetSize().x;
        m_MinExtent = fWidth / static_cast<float>(pTerrain->GetCellsPerSide()) * 0.5F;
        m_MaxExtent = fWidth * 0.1F;
    }
    EnableBrushControls();
    WriteControls();
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
