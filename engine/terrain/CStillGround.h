#pragma once

#include "engine/terrain/CHeightPyramid.h"
#include "host/Export.h"
#include "host/HostTypes.h"

#include <cstddef>

class CTerrain;

// The ground as it was at one moment, for aiming at while it changes. Holds the height ranges of
// that moment, a twentieth of the terrain's memory; the heights themselves stay with whoever has
// kept them. Owned by the one who aims. UI thread.
class TELLUR_API CStillGround
{
public:
    // False when there is no memory, and then it holds nothing.
    bool Take(const CTerrain& terrain);

    void Drop() { m_bHeld = false; } // the memory stays for the next time

    bool IsHeld() const { return m_bHeld; }

    // As CTerrain::PickRay on the ground of then; the height of the hit is that of the ground as it
    // is now. pHeights: of then, borrowed for the call, one for each vertex of the terrain, which
    // has not changed its size. Only while it is held.
    bool PickRay(const CTerrain& terrain,
                 const float* pHeights,
                 const SVec3& origin,
                 const SVec3& direction,
                 SVec3& hit) const;

private:
    CHeightPyramid m_Pyramid;
    bool m_bHeld = false;
};
