#include "editor/script/CScriptCursor.h"

#include "host/Terrain.h"
#include "host/World.h"

void CScriptCursor::PointAtPosition(float fX, float fZ)
{
    m_Target = ETarget::Position;
    m_Point = {fX, 0.0F, fZ};
}

void CScriptCursor::PointAtHit(const SVec3& hit)
{
    m_Target = ETarget::Hit;
    m_Point = hit;
}

void CScriptCursor::PointAtNothing()
{
    m_Target = ETarget::Nothing;
}

void CScriptCursor::SetKeys(bool bControl, bool bAlt)
{
    m_bControl = bControl;
    m_bAlt = bAlt;
}

bool CScriptCursor::Pick(World* pWorld, SVec3& hit) const
{
    if (m_Target == ETarget::Hit)
    {
        hit = m_Point;
        return true;
    }
    // The world is asked for its terrain anew each time: the script may have opened another level.
    const Terrain* pTerrain = pWorld != nullptr ? pWorld->GetTerrain() : nullptr;
    if (m_Target == ETarget::Nothing || pTerrain == nullptr)
    {
        return false;
    }
    const SVec3 size = pTerrain->GetSize();
    const bool bInside =
        m_Point.x >= 0.0F && m_Point.x <= size.x && m_Point.z >= 0.0F && m_Point.z <= size.z;
    if (!bInside)
    {
        return false;
    }
    hit = {m_Point.x, pWorld->GetTerrainHeight(m_Point.x, m_Point.z), m_Point.z};
    return true;
}

bool CScriptCursor::IsKeyDown(EKey eKey) const
{
    return (eKey == EKey::Control && m_bControl) || (eKey == EKey::Alt && m_bAlt);
}
