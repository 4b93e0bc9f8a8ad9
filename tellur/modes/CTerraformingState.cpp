#include "tellur/modes/CTerraformingState.h"

#include "host/EditorHost.h"
#include "host/ModeManager.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/IModesPlugin.h"
#include "tellur/modification/CTerrainModification.h"

#include <utility>

namespace
{

constexpr const char* PREVIEW_NAME = "TellurBlobTexture";

} // namespace

CTerraformingState::CTerraformingState() = default;
CTerraformingState::~CTerraformingState() = default;

CTerrainModification& CTerraformingState::MakeSession()
{
    m_pSession.reset(); // before the next one is made: the tiles that it leaves are used again
    m_pSession = std::make_unique<CTerrainModification>();
    return *m_pSession;
}

bool CTerraformingState::IsDragging() const
{
    return m_pSession != nullptr && m_pSession->IsInProgress();
}

void CTerraformingState::DropSession()
{
    m_pSession.reset();
}

ITexture* CTerraformingState::UpdatePreview()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr || (!pBrush->IsBitmapChanged() && m_pPreview != nullptr))
    {
        return m_pPreview;
    }
    ReleasePreview();
    World* pWorld = GetPluginContext()->GetWorld();
    const IImage* pImage = pBrush->GetBitmapImage();
    if (pImage != nullptr && pWorld != nullptr)
    {
        m_pPreview = pWorld->CreateTextureFromImage(pImage, PREVIEW_NAME);
    }
    pBrush->SetBitmapChanged(false);
    return m_pPreview;
}

void CTerraformingState::ReleasePreview()
{
    ITexture* pPreview = std::exchange(m_pPreview, nullptr);
    World* pWorld = GetPluginContext()->GetWorld();
    if (pPreview != nullptr && pWorld != nullptr)
    {
        pWorld->ReleaseTexture(pPreview);
    }
}

void CTerraformingState::TakeOverlayAway()
{
    if (Terrain* pTerrain = GetCurrentTerrain())
    {
        pTerrain->SetEditMaterial(nullptr);
        pTerrain->SetEditOverlay(0);
    }
}

void CTerraformingState::ApplyOverlay(EEditOverlay eOverlay) const
{
    Terrain* pTerrain = GetCurrentTerrain();
    const CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pTerrain == nullptr || eOverlay == EEditOverlay::Off || pBrush == nullptr)
    {
        TakeOverlayAway();
        return;
    }
    pTerrain->SetEditMaterial(m_EditMaterial.c_str());
    pTerrain->SetEditOverlay(pBrush->GetMaskHandle());
    if (pBrush->GetMaskHandle() != 0)
    {
        SMatrix4 transform;
        GetCurrentWorld()->MakeOverlayTransform(&transform.m[2],
                                                pBrush->GetMaskXSize(pTerrain->GetSize().x, 1));
        pTerrain->SetEditOverlayTransform(transform);
    }
}

void CTerraformingState::SetEditMaterial(const char* pszName)
{
    m_EditMaterial = pszName != nullptr ? pszName : "";
    Terrain* pTerrain = GetCurrentTerrain();
    if (pTerrain != nullptr && IsTerraformingOn())
    {
        pTerrain->SetEditMaterial(m_EditMaterial.c_str());
    }
}

void CTerraformingState::ForgetLevel()
{
    ReleasePreview();
    m_Picked = {};
    DropSession(); // a drag cannot go on over a terrain that is gone
}

CTerraformingState& GetTerraformingState()
{
    return GetPluginPart<IModesPlugin>()->GetTerraforming();
}

bool IsTerraformingOn()
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    const int32_t iMode = GetPluginPart<IModesPlugin>()->GetTerraformingModeId();
    return pHost != nullptr && iMode != NO_MODE &&
           pHost->GetModeManager()->GetCurrentModeId() == iMode;
}
