#include "tellur/modes/CModeTerraforming.h"

#include "framework/core/Capture.h"
#include "host/ActionIds.h"
#include "host/EditorHost.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/CommandIds.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/TerraformingState.h"
#include "tellur/modification/CTerrainModification.h"

namespace
{

constexpr uint32_t STANDARD_ARROW = 32512; // no cursor of the plug-in: the handle stays empty
constexpr float EXTENT_STEP = 0.00078125F; // 1/1280 of the terrain's width
constexpr const char* CAPTION = "Terraforming";
constexpr const char* PREVIEW_NAME = "TellurBlobTexture";

bool IsDragging()
{
    const STerraformingState& state = GetTerraformingState();
    return state.pSession != nullptr && state.pSession->IsInProgress();
}

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
    GetPluginContext()->CheckHeightMapWritable();
    TakeInput(CAPTION);
    ApplyEditOverlay(EEditOverlay::On);
}

void CModeTerraforming::Deactivate()
{
    if (Terrain* pTerrain = GetCurrentTerrain())
    {
        pTerrain->SetEditMaterial(nullptr);
        pTerrain->SetEditOverlay(0);
    }
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

    // A drag that was not released is dropped: its heights stay, it leaves no undo record.
    std::unique_ptr<CTerrainModification>& pSession = GetTerraformingState().pSession;
    pSession.reset();
    pSession = std::make_unique<CTerrainModification>();
    pSession->Start(view, uFlags, point, GetCurrentTerrain(), pContext->GetCurrentBrush());
}

void CModeTerraforming::OnMouseMove(
    ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t uExtra1, uintptr_t uExtra2)
{
    if (!IsDragging())
    {
        Hover(view, point);
        return;
    }
    GetTerraformingState().pSession->OnMouseMove(view, uFlags, point, uExtra1, uExtra2);
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
    SVec3& picked = GetTerraformingState().picked;
    SVec3 hit;
    if (pHost != nullptr && pBrush != nullptr && pTerrain != nullptr &&
        pHost->PickTerrain(view, point, hit, 0) == PICK_HIT)
    {
        picked = hit;
        const SVec3 size = pTerrain->GetSize();
        SExtents clipped; // the preview shows the whole footprint
        pBrush->GetExtents(clipped, hit.x, hit.z, m_Footprint, size.x, size.z);
        return;
    }
    m_Footprint = {};
    picked = {-1.0F, -1.0F, -1.0F};
}

void CModeTerraforming::OnLButtonUp(ViewId view, ViewPoint point, uint32_t uFlags)
{
    if (!IsDragging())
    {
        return;
    }
    STerraformingState& state = GetTerraformingState();
    PluginContext* pContext = GetPluginContext();
    state.pSession->End(view, uFlags, point);
    if (pContext->IsAutoUpdateNormals())
    {
        pContext->UpdateTerrainNormals();
    }
    ReleaseCapture();
    state.pSession.reset();
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
    PluginContext* pContext = GetPluginContext();
    CTellurBrush* pBrush = pContext->GetCurrentBrush();
    const Terrain* pTerrain = GetCurrentTerrain();
    if (pBrush == nullptr || pTerrain == nullptr)
    {
        return;
    }
    const float fStep = pTerrain->GetSize().x * EXTENT_STEP;
    pBrush->SetExtent(pBrush->GetExtent() + (iAction == ACTION_BRUSH_SMALLER ? -fStep : fStep));
    pContext->RefreshPanelExtent();
}

void CModeTerraforming::UpdatePreview()
{
    STerraformingState& state = GetTerraformingState();
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr || (!pBrush->IsBitmapChanged() && state.pPreview != nullptr))
    {
        return;
    }
    ReleaseBrushPreview();
    World* pWorld = GetPluginContext()->GetWorld();
    const IImage* pImage = pBrush->GetBitmapImage();
    if (pImage != nullptr && pWorld != nullptr)
    {
        state.pPreview = pWorld->CreateTextureFromImage(pImage, PREVIEW_NAME);
    }
    pBrush->SetBitmapChanged(false);
}

void CModeTerraforming::Render()
{
    Terrain* pTerrain = GetCurrentTerrain();
    if (pTerrain == nullptr)
    {
        return;
    }
    STerraformingState& state = GetTerraformingState();
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    const bool bPicked = !(state.picked.x < 0.0F);
    if (IsDragging() && bPicked && state.pSession->Render(&state.picked))
    {
        return;
    }
    if (pBrush != nullptr && bPicked && pBrush->Render(state.pSession.get(), &state.picked))
    {
        return;
    }
    UpdatePreview();
    if (state.pPreview == nullptr)
    {
        return;
    }
    if (IsDragging())
    {
        state.pSession->GetExtents(m_Footprint);
    }
    pTerrain->DrawProjectedTexture(m_Footprint, state.pPreview);
}
