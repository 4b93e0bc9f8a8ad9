#pragma once

#include "engine/terrain/SVertexRect.h"
#include "host/Export.h"
#include "host/HostTypes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Where the normals come from. Steps: terrain units between neighbouring vertices, above 0.
struct SHeightView
{
    const float* pHeights = nullptr; // row-major, borrowed
    uint32_t uSizeX = 0;
    uint32_t uSizeZ = 0;
    float fStepX = 1.0F;
    float fStepZ = 1.0F;
};

// The vertex normals of a terrain, four bytes each: the x and z components as 16-bit numbers, 32767
// is 1; y is what is missing to length 1, never below 0. Memory is taken and work is done only
// after a reader asked for the first time; from then on stale tiles are tracked and only those are
// computed again. Owned by its terrain.
class CNormalField
{
public:
    // Everything is stale from here; memory is given back.
    void Reset();

    // changed: vertices whose heights are new. Their neighbours' normals become stale with them.
    void MarkStale(const SVertexRect& changed, const SHeightView& view);

    // Brings what is stale up to date if a reader ever asked. True when anything was stale.
    bool Update(const SHeightView& view);

    // Up to date for every vertex, allocating on first use. Row-major pairs (x, z), valid until the
    // next Reset; null when there is no memory.
    const int16_t* Fetch(const SHeightView& view);

    bool IsAllocated() const { return !m_Normals.empty(); }

    // The unit normal of one pair.
    TELLUR_API static SVec3 Unpack(const int16_t* pPair);

private:
    // Vertices per side of a stale tile: small enough that one brush dab recomputes little more
    // than itself, large enough that the flags of the largest terrain stay in the cache.
    static constexpr uint32_t TILE = 64;

    void ComputeTile(const SHeightView& view, uint32_t uTileX, uint32_t uTileZ);
    void MarkTiles(const SVertexRect& rect);

    std::vector<int16_t> m_Normals;
    std::vector<uint8_t> m_StaleTiles;
    uint32_t m_TilesX = 0;
    uint32_t m_TilesZ = 0;
    SVertexRect m_Stale; // bounds of all stale normals
    bool m_HasStale = true;
};
