#include "tellur/modes/TerraformingState.h"

#include "host/EditorHost.h"
#include "host/ModeManager.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modification/CTerrainModification.h"

#include <utility>

STerraformingState::STerraformingState() = default;
STerraformingState::~STerraformingState() = default;

STerraformingState& GetTerraformingState()
{
    static STerraformingState s_State;
    return s_State;
}

void ReleaseBrushPreview()
{
    ITexture* pPreview = std::exchange(GetTerraformingState().pPreview, nullptr);
    World* pWorld = GetPluginContext()->GetWorld();
    if (pPreview != nullptr && pWorld != nullptr)
    {
        pWorld->ReleaseTexture(pPreview);
    }
}

void ApplyEditOverlay(EEditOverlay eOverlay)
{
    Terrain* pTerrain = GetCurrentTerrain();
    const CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pTerrain == nullptr)
    {
        return;
    }
    if (eOverlay == EEditOverlay::Off || pBrush == nullptr)
    {
        pTerrain->SetEditMaterial(nullptr);
        pTerrain->SetEditOverlay(0);
        return;
    }
    pTerrain->SetEditMaterial(GetTerraformingState().strEditMaterial.c_str());
    pTerrain->SetEditOverlay(pBrush->GetMaskHandle());
    if (pBrush->GetMaskHandle() != 0)
    {
        SMatrix4 transform;
        GetCurrentWorld()->MakeOverlayTransform(&transform.m[2],
                                                pBrush->GetMaskXSize(pTerrain->GetSize().x, 1));
        pTerrain->SetEditOverlayTransform(transform);
    }
}

bool IsTerraformingOn()
{
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext->GetEditorHost();
    return pHost != nullptr &&
           pHost->GetModeManager()->GetCurrentModeId() == pContext->GetTerraformingModeId();
}

void SetEditMaterialName(const char* pszName)
{
    std::string& strMaterial = GetTerraformingState().strEditMaterial;
    strMaterial = pszName != nullptr ? pszName : "";
    Terrain* pTerrain = GetCurrentTerrain();
    if (pTerrain != nullptr && IsTerraformingOn())
    {
        pTerrain->SetEditMaterial(strMaterial.c_str());
    }
}
