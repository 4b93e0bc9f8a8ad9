#include "editor/app/CStrokeAim.h"

#include "editor/core/CEditorHost.h"
#include "editor/view/CViewNavigator.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginStrokes.h"

CStrokeAim::CStrokeAim(CEditorHost& host, const CViewNavigator& navigator, IPluginStrokes* pStrokes)
    : m_Host(host)
    , m_Navigator(navigator)
    , m_Strokes(pStrokes)
{
}

const CTerrain* CStrokeAim::GetTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}

void CStrokeAim::Hold()
{
    if (GetTerrain() != nullptr)
    {
        m_Still.Take(*GetTerrain());
    }
}

bool CStrokeAim::Find(float fX, float fY, SVec3& hit) const
{
    const CTerrain* pTerrain = GetTerrain();
    if (pTerrain == nullptr || !m_Still.IsHeld() || m_Strokes == nullptr ||
        !m_Host.GetInput().IsDragging())
    {
        return m_Navigator.Pick(pTerrain, fX, fY, hit);
    }
    static_assert(CStillGround::TILE == IPluginStrokes::PRESS_TILE);
    const SRay ray = m_Navigator.GetRay(pTerrain, fX, fY);
    return m_Still.PickRay(
        *pTerrain,
        [this](uint32_t uTileX, uint32_t uTileZ)
        { return m_Strokes->GetPressTile(uTileX, uTileZ); },
        ray.origin,
        ray.direction,
        hit);
}
