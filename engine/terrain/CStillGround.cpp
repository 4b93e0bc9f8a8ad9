#include "engine/terrain/CStillGround.h"

#include "engine/terrain/CRayPicker.h"
#include "engine/terrain/CTerrain.h"

#include <new>

bool CStillGround::Take(const CTerrain& terrain)
{
    m_bHeld = false;
    const CHeightPyramid* pPyramid = terrain.GetPyramid();
    if (pPyramid == nullptr)
    {
        return false;
    }
    try
    {
        m_Pyramid.CopyLevels(*pPyramid, CRayPicker::TILE_LEVEL);
        m_bHeld = true;
    }
    catch (const std::bad_alloc&)
    {
        m_Pyramid = {};
    }
    return m_bHeld;
}

bool CStillGround::PickRay(const CTerrain& terrain,
                           const FnTile& getTile,
                           const SVec3& origin,
                           const SVec3& direction,
                           SVec3& hit) const
{
    const SHeightView view = terrain.GetView();
    const CHeightPyramid* pNow = terrain.GetPyramid();
    // Ranges of tiles are those of then; within a tile that has not changed, those of now hold too.
    const CRayPicker::SStill still = {getTile, pNow};
    if (!m_Pyramid.IsFor(view))
    {
        return terrain.PickRay(origin, direction, hit); // of another size
    }
    if (pNow == nullptr ||
        !CRayPicker(view, m_Pyramid, terrain.GetSize(), &still).Pick(origin, direction, hit))
    {
        return false;
    }
    terrain.PickDown(hit);
    return true;
}
