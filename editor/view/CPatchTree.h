#pragma once

#include "engine/terrain/SVertexRect.h"

#include <cstddef>
#include <cstdint>
#include <utility>
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

    // Begins anew with a terrain of that size, of which nothing is measured yet: everything is to
    // be updated. uTopCells: cells a side of a patch of the top level, a power of two, at least
    // PATCH_CELLS.
    void Reset(uint32_t uVerticesX, uint32_t uVerticesZ, uint32_t uTopCells);

    // Measures again what lies under changed, each patch once; not where the floor is above level
    // 0. pHeights: all heights, row-major, borrowed.
    void Update(const float* pHeights, const std::vector<SVertexRect>& changed);

    // Takes what a tree over every 2^uShift-th vertex of the terrain knows of a patch of the top
    // level and of those below it, down to level uShift. Its top patches lie as the ones here.
    void TakeCoarse(const CPatchTree& coarse, uint32_t uShift, uint32_t uTopX, uint32_t uTopZ);

    // Sets the finest level that is known under a patch of the top level.
    void SetFloor(uint32_t uTopX, uint32_t uTopZ, uint32_t uLevel)
    {
        m_Floors[size_t{uTopZ} * m_Levels.back().uCountX + uTopX] = static_cast<uint8_t>(uLevel);
    }

    uint32_t GetFloor(const SPatchPlace& place) const
    {
        const uint32_t uShift = GetTopLevel() - place.uLevel;
        const size_t nRow = size_t{place.uZ >> uShift} * m_Levels.back().uCountX;
        return m_Floors[nRow + (place.uX >> uShift)];
    }

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

    // Lowest and highest of all heights.
    std::pair<float, float> GetHeightRange() const;

private:
    struct SLevel
    {
        uint32_t uCountX = 0;
        uint32_t uCountZ = 0;
        std::vector<SPatchBounds> bounds;
        std::vector<uint8_t> waits;  // 1: is in the list
        std::vector<uint32_t> stale; // to be measured again; kept for its memory

        void Wait(uint32_t uIndex); // in the list, once
    };

    void MarkStale(const SVertexRect& changed);
    static uint32_t CountSideBySide(const SLevel& level, size_t nFrom);
    void Measure(const float* pHeights, const SPatchPlace& first, uint32_t uPatches);
    SPatchBounds JoinChildren(const SPatchPlace& place) const;
    SPatchBounds MeasureCut(const float* pHeights, const SPatchPlace& place) const;
    float MeasureCutStep(const float* pHeights, const SPatchPlace& place) const;
    float GetHeight(const float* pHeights, uint32_t uX, uint32_t uZ) const;
    float GetOffSurface(const float* pHeights, uint32_t uX, uint32_t uZ, uint32_t uStride) const;

    std::vector<SLevel> m_Levels;  // finest first
    std::vector<uint8_t> m_Floors; // of the top level
    uint32_t m_CellsX = 0;
    uint32_t m_CellsZ = 0;
};
