#pragma once

#include "engine/terrain/CHeightPyramid.h"
#include "host/Export.h"
#include "host/HostTypes.h"

#include <functional>

class CTerrain;

// The ground as it was at one moment, for aiming at while it changes. Holds the height ranges of
// that moment for squares of TILE cells; heights that have changed since are asked of whoever has
// kept them, tile by tile, and all others are the terrain's. Owned by the one who aims. UI thread.
class TELLUR_API CStillGround
{
public:
    static constexpr uint32_t TILE = 64; // vertices per side

    // The TILE x TILE heights of then of the tile at (tile x, tile z), row by row; null where the
    // terrain has not changed.
    using FnTile = std::function<const float*(uint32_t uTileX, uint32_t uTileZ)>;

    // False when there is no memory, and then it holds nothing. Costs a thousandth of what the
    // terrain's heights would.
    bool Take(const CTerrain& terrain);

    void Drop() { m_bHeld = false; } // the memory stays for the next time

    bool IsHeld() const { return m_bHeld; }

    // As CTerrain::PickRay on the ground of then; the height of the hit is that of the ground as it
    // is now. Only while it is held, on the terrain that it was taken of; one of another size is
    // picked as it is.
    bool PickRay(const CTerrain& terrain,
                 const FnTile& getTile,
                 const SVec3& origin,
                 const SVec3& direction,
                 SVec3& hit) const;

private:
    CHeightPyramid m_Pyramid; // levels of tiles and above
    bool m_bHeld = false;
};
