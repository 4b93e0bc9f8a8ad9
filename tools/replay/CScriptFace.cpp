#include "tools/replay/CScriptFace.h"

#include "host/Log.h"
#include "host/Terrain.h"
#include "host/World.h"

void CScriptFace::PointAtPosition(float fX, float fZ)
{
    m_Target = ETarget::Position;
    m_Point = {fX, 0.0F, fZ};
}

void CScriptFace::PointAtHit(const SVec3& hit)
{
    m_Target = ETarget::Hit;
    m_Point = hit;
}

void CScriptFace::PointAtNothing()
{
    m_Target = ETarget::Nothing;
}

void CScriptFace::SetKeys(bool bControl, bool bAlt)
{
    m_bControl = bControl;
    m_bAlt = bAlt;
}

bool CScriptFace::PickTerrain(ViewId /*view*/, ViewPoint /*point*/, SVec3& hit)
{
    if (m_Target == ETarget::Hit)
    {
        hit = m_Point;
        return true;
    }
    // The world is asked for its terrain anew each time: the script may have opened another level.
    const Terrain* pTerrain = m_World != nullptr ? m_World->GetTerrain() : nullptr;
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
    hit = {m_Point.x, m_World->GetTerrainHeight(m_Point.x, m_Point.z), m_Point.z};
    return true;
}

bool CScriptFace::IsKeyDown(EKey eKey) const
{
    return (eKey == EKey::Control && m_bControl) || (eKey == EKey::Alt && m_bAlt);
}

EMessageBoxAnswer CScriptFace::MessageBox(const char* pszText, uint32_t /*uFlags*/)
{
    LogR("%s\n", pszText);
    return EMessageBoxAnswer::Ok;
}
