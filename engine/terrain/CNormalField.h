#pragma once

#include "engine/terrain/SVertexRect.h"
#include "host/Export.h"
#include "host/HostTypes.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
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
// is 1; y is what is missing to length 1, never below 0. Memory is taken when a reader asks for the
// first time; from then on stale tiles are tracked, and those that a reader asks for are computed.
// Owned by its terrain.
class CNormalField
{
public:
    // Makes everything stale and gives the memory back.
    void Reset();

    // changed: vertices whose heights are new. Their neighbours' normals become stale with them.
    void MarkStale(const SVertexRect& changed, const SHeightView& view);

    // Whether anything became stale since the last call, or since a reader fetched everything.
    bool TakeStale();

    // Brings the normals of the vertices in rect up to date, and takes the memory on first use.
    // Gives the row-major pairs (x, z) of all vertices, valid until the next Reset; null when there
    // is no memory.
    const int16_t* Fetch(const SHeightView& view, const SVertexRect& rect);

    bool IsAllocated() const { return m_Normals != nullptr; }

    // The unit normal of one pair.
    TELLUR_API static SVec3 Unpack(const int16_t* pPair);

private:
    // Vertices per side of a stale tile: small enough that one brush dab recomputes little more
    // than itself, large enough that the flags of the largest terrain stay in the cache.
    static constexpr uint32_t TILE = 64;

    struct SFree
    {
        void operator()(int16_t* pMemory) const { std::free(pMemory); }
    };

    void ComputeStale(const SHeightView& view, const SVertexRect& rect);
    bool Allocate(const SHeightView& view);
    void ComputeTile(const SHeightView& view, uint32_t uTileX, uint32_t uTileZ);
    void MarkTiles(const SVertexRect& rect);

    std::unique_ptr<int16_t[], SFree> m_Normals; // zero pages cost nothing until they are written
    std::vector<uint8_t> m_StaleTiles;
    uint32_t m_TilesX = 0;
    uint32_t m_TilesZ = 0;
    bool m_HasStale = true;
};
