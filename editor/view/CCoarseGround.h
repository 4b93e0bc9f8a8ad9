#pragma once

#include "editor/view/CPatchTree.h"
#include "editor/view/CTerrainTiles.h"
#include "engine/terrain/SVertexRect.h"

#include <cstdint>
#include <vector>

struct SHeightView;

// A coarse copy of a large terrain's whole ground, for what is not there in full yet: every 2^n-th
// vertex and the last ones, with textures and a quadtree of its own. Made in a frame's time however
// large the terrain is. Owned by the copies of the terrain.
class CCoarseGround
{
public:
    static constexpr uint32_t MOST_CELLS = 512; // a side: some milliseconds of reading

    // False when the terrain needs none, or the card has no room for it. uTileCells: of the tiles
    // in whose place it is drawn. uMostCells: a side.
    bool Make(OpenGl& gl, const SHeightView& ground, uint32_t uTileCells, uint32_t uMostCells);
    void Release(OpenGl& gl);

    bool IsMade() const { return m_Shift != 0; }

    // Takes over the heights in changed, which are others now. Returns the bytes that were sent.
    uint64_t Follow(OpenGl& gl, const SHeightView& ground, const std::vector<SVertexRect>& changed);

    uint32_t GetShift() const { return m_Shift; } // n; 0: it is not made

    const CPatchTree& GetTree() const { return m_Tree; }

    const CTerrainTiles& GetTiles() const { return m_Tiles; } // one tile

private:
    SHeightView GetView(const SHeightView& ground) const;

    CPatchTree m_Tree;
    CTerrainTiles m_Tiles;
    std::vector<float> m_Heights; // row-major
    std::vector<SVertexRect> m_Changed;
    uint32_t m_VerticesX = 0;
    uint32_t m_VerticesZ = 0;
    uint32_t m_Shift = 0;
};
