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
        m_Pyramid = *pPyramid;
        m_bHeld = true;
    }
    catch (const std::bad_alloc&)
    {
        m_Pyramid = {};
    }
    return m_bHeld;
}

bool CStillGround::PickRay(const CTerrain& terrain,
                           const float* pHeights,
                           const SVec3& origin,
                           const SVec3& direction,
                           SVec3& hit) const
{
    SHeightView view = terrain.GetView();
    view.pHeights = pHeights;
    if (!CRayPicker(view, m_Pyramid, terrain.GetSize()).Pick(origin, direction, hit))
    {
        return false;
    }
    terrain.PickDown(hit);
    return true;
}
