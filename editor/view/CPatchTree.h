#pragma once

#include "engine/terrain/SVertexRect.h"

#include <cstdint>
#include <vector>

// What is known of one patch of the terrain.
struct SPatchBounds
{
    float fMin = 0.0F; // of its heights, terrain units
    float fMax = 0.0F;
    // How far, at most, the patch drawn at its own level lies from the terrain, terrain units.
    float fError = 0.0F;
};

// Where a patch lies: its level and its place in the grid of that level. A patch of level n has
// PATCH_CELLS squares a side, each 2^n cells wide.
struct SPatchPlace
{
    uint32_t uLevel = 0;
    uint32_t uX = 0;
    uint32_t uZ = 0;
};

// The quadtree over a terrain: height range and error of every patch of every level, kept up to
// date under the rectangles that change. Squares that reach over the terrain's end stop there.
// Owned by the renderer; knows nothing of OpenGL.
class CPatchTree
{
public:
    static constexpr uint32_t PATCH_SHIFT = 4;
    static constexpr uint32_t PATCH_CELLS = 1U << PATCH_SHIFT;

    // Another terrain. uTopCells: cells a side of a patch of the top level, a power of two, at
    // least PATCH_CELLS. Everything is to be updated then.
    void Reset(uint32_t uVerticesX, uint32_t uVerticesZ, uint32_t uTopCells);

    // Measures again what lies under changed. pHeights: all heights, row-major, borrowed.
    void Update(const float* pHeights, const SVertexRect& changed);

    uint32_t GetTopLevel() const { return static_cast<uint32_t>(m_Levels.size()) - 1; }

    uint32_t GetCellsX() const { return m_CellsX; }

    uint32_t GetCellsZ() const { return m_CellsZ; }

    uint32_t GetCountX(uint32_t uLevel) const { return m_Levels[uLevel].uCountX; }

    uint32_t GetCountZ(uint32_t uLevel) const { return m_Levels[uLevel].uCountZ; }

    size_t GetIndex(const SPatchPlace& place) const
    {
        return static_cast<size_t>(place.uZ) * m_Levels[place.uLevel].uCountX + place.uX;
    }

    const SPatchBounds& GetBounds(const SPatchPlace& place) const
    {
        return m_Levels[place.uLevel].bounds[GetIndex(place)];
    }

private:
    struct SLevel
    {
        uint32_t uCountX = 0;
        uint32_t uCountZ = 0;
        std::vector<SPatchBounds> bounds;
    };

    SPatchBounds MeasureSmallest(const float* pHeights, uint32_t uX, uint32_t uZ) const;
    SPatchBounds MeasureParent(const float* pHeights, const SPatchPlace& place) const;
    float MeasureStep(const float* pHeights, const SPatchPlace& place) const;
    float GetHeight(const float* pHeights, uint32_t uX, uint32_t uZ) const;
    float GetOffSurface(const float* pHeights, uint32_t uX, uint32_t uZ, uint32_t uStride) const;

    std::vector<SLevel> m_Levels; // finest first
    uint32_t m_CellsX = 0;
    uint32_t m_CellsZ = 0;
};
