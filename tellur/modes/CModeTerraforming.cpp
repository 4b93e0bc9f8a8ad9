#include "tellur/modes/CModeTerraforming.h"

#include "framework/core/Capture.h"
#include "host/ActionIds.h"
#include "host/EditorHost.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/CommandIds.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/modes/IModesPlugin.h"
#include "tellur/modification/CTerrainModification.h"

namespace
{

constexpr uint32_t STANDARD_ARROW = 32512; // no cursor of the plug-in: the handle stays empty
constexpr float EXTENT_STEP = 0.00078125F; // 1/1280 of the terrain's width
constexpr const char* CAPTION = "Terraforming";

} // namespace

CModeTerraforming::CModeTerraforming()
    : m_Arrow(LoadCursorResource(STANDARD_ARROW))
{
}

bool CModeTerraforming::IsAvailable()
{
    return GetPluginContext()->GetCurrentBrush() != nullptr;
}

bool CModeTerraforming::SetCursor()
{
    if (CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush())
    {
        return pBrush->SetCursor();
    }
    // Kept as it always was: the system's arrow is looked for in the plug-in's resources, where it
    // never is, so without a brush there is one line in the log instead.
    if (m_Arrow != nullptr)
    {
        ::SetCursor(m_Arrow);
        return true;
    }
    CrashLog("[CModeTerraforming::SetCursor] no handle to arrow cursor available\n");
    return false;
}

void CModeTerraforming::Activate()
{
    GetPluginPart<IModesPlugin>()->CheckHeightMapWritable();
    TakeInput(CAPTION);
    GetTerraformingState().ApplyOverlay(EEditOverlay::On);
}

void CModeTerraforming::Deactivate()
{
    CTerraformingState::TakeOverlayAway();
    GetPluginContext()->SetCurrentBrush(nullptr);
}

void CModeTerraforming::Suspend(bool bSuspended)
{
    if (!bSuspended)
    {
        TakeInput(CAPTION);
    }
}

void CModeTerraforming::OnLButtonDown(ViewId view, ViewPoint point, uint32_t uFlags)
{
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext->GetEditorHost();
    const IViewWindow* pWindow = pHost != nullptr ? pHost->GetViewWindow(view) : nullptr;
    SetCapture(pWindow != nullptr ? pWindow->GetWindowHandle() : 0);

    GetTerraformingState().MakeSession().Start(
        view, uFlags, point, GetCurrentTerrain(), pContext->GetCurrentBrush());
}

void CModeTerraforming::OnMouseMove(
    ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t uExtra1, uintptr_t uExtra2)
{
    const CTerraformingState& state = GetTerraformingState();
    if (!state.IsDragging())
    {
        Hover(view, point);
        return;
    }
    state.GetSession()->OnMouseMove(view, uFlags, point, uExtra1, uExtra2);
    PluginContext* pContext = GetPluginContext();
    if (pContext->IsAutoUpdateNormals())
    {
        pContext->UpdateTerrainNormals();
    }
}

void CModeTerraforming::Hover(ViewId view, ViewPoint point)
{
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext->GetEditorHost();
    const CTellurBrush* pBrush = pContext->GetCurrentBrush();
    const Terrain* pTerrain = GetCurrentTerrain();
    CTerraformingState& state = GetTerraformingState();
    SVec3 hit;
    if (pHost != nullptr && pBrush != nullptr && pTerrain != nullptr &&
        pHost->PickTerrain(view, point, hit, 0) == PICK_HIT)
    {
        state.SetPicked(hit);
        const SVec3 size = pTerrain->GetSize();
        SExtents clipped; // the preview shows the whole footprint
        pBrush->GetExtents(clipped, hit.x, hit.z, m_Footprint, size.x, size.z);
        return;
    }
    m_Footprint = {};
    state.ForgetPicked();
}

void CModeTerraforming::OnLButtonUp(ViewId view, ViewPoint point, uint32_t uFlags)
{
    CTerraformingState& state = GetTerraformingState();
    // A release that follows a drag which was dropped means nothing.
    if (!state.IsDragging())
    {
        return;
    }
    PluginContext* pContext = GetPluginContext();
    state.GetSession()->End(view, uFlags, point);
    if (pContext->IsAutoUpdateNormals())
    {
        pContext->UpdateTerrainNormals();
    }
    ReleaseCapture();
    state.DropSession();
    if (EditorHost* pHost = pContext->GetEditorHost())
    {
        pHost->OnTerrainChanged();
    }
}

void CModeTerraforming::OnAction(ViewId view, int iAction, uint32_t uCount)
{
    if (iAction != ACTION_BRUSH_LARGER && iAction != ACTION_BRUSH_SMALLER)
    {
        CModeBase::OnAction(view, iAction, uCount);
        return;
    }
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    const Terrain* pTerrain = GetCurrentTerrain();
    if (pBrush == nullptr || pTerrain == nullptr)
    {
        return;
    }
    const float fStep = pTerrain->GetSize().x * EXTENT_STEP;
    pBrush->SetExtent(pBrush->GetExtent() + (iAction == ACTION_BRUSH_SMALLER ? -fStep : fStep));
    GetPluginPart<IModesPlugin>()->RefreshPanelExtent();
}

void CModeTerraforming::Render()
{
    Terrain* pTerrain = GetCurrentTerrain();
    if (pTerrain == nullptr)
    {
        return;
    }
    CTerraformingState& state = GetTerraformingState();
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    CTerrainModification* pSession = state.GetSession();
    const SVec3& picked = state.GetPicked();
    // A function with a preview of its own draws it, in a drag and while hovering. For the others
    // the brush's picture lies on the ground.
    if (state.IsDragging() && state.HasPicked() && pSession->Render(&picked))
    {
        return;
    }
    if (pBrush != nullptr && state.HasPicked() && pBrush->Render(pSession, &picked))
    {
        return;
    }
    ITexture* pPreview = state.UpdatePreview();
    if (pPreview == nullptr)
    {
        return;
    }
    if (state.IsDragging())
    {
        pSession->GetExtents(m_Footprint);
    }
    pTerrain->DrawProjectedTexture(m_Footprint, pPreview);
}
