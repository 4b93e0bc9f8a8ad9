#pragma once

#include "engine/terrain/CNormalField.h"
#include "engine/terrain/SVertexRect.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Lowest and highest height of something; empty while fMin is above fMax. Heights that are no
// numbers count for nothing.
struct SHeightRange
{
    float fMin = 3.4e38F;
    float fMax = -3.4e38F;

    bool IsEmpty() const { return fMin > fMax; }

    void Add(float fHeight)
    {
        fMin = fHeight < fMin ? fHeight : fMin;
        fMax = fHeight > fMax ? fHeight : fMax;
    }

    void Add(const SHeightRange& other)
    {
        fMin = other.fMin < fMin ? other.fMin : fMin;
        fMax = other.fMax > fMax ? other.fMax : fMax;
    }
};

// Height ranges of square blocks of cells in levels: a block of level 0 has BLOCK x BLOCK cells,
// one of each further level 2 x 2 blocks of the level before, the last level is one block. A
// block's range holds all corners of its cells, so neighbours share a row of vertices. Takes a
// twentieth of the heights' memory. Owned by its terrain, which says when heights change.
class CHeightPyramid
{
public:
    static constexpr uint32_t BLOCK = 8; // cells per side

    // Brings the blocks of the changed vertices up to date; all of them when the terrain's size is
    // another. False, and the pyramid is empty, when there is no memory.
    bool Update(const SHeightView& view, const std::vector<SVertexRect>& changed);

    // Takes over the levels from iFirstLevel on; those before must not be asked for. Throws
    // std::bad_alloc.
    void CopyLevels(const CHeightPyramid& other, int iFirstLevel);

    bool IsEmpty() const { return m_Levels.empty(); }

    // Whether it was made for so many vertices.
    bool IsFor(const SHeightView& view) const
    {
        return m_SizeX == view.uSizeX && m_SizeZ == view.uSizeZ;
    }

    int GetLevelCount() const { return static_cast<int>(m_Levels.size()); }

    // Blocks of level iLevel along x and z.
    uint32_t GetBlocksX(int iLevel) const { return m_Levels[iLevel].uBlocksX; }

    uint32_t GetBlocksZ(int iLevel) const { return m_Levels[iLevel].uBlocksZ; }

    const SHeightRange& GetBlock(int iLevel, uint32_t uX, uint32_t uZ) const
    {
        const SLevel& level = m_Levels[iLevel];
        return level.blocks[static_cast<size_t>(uZ) * level.uBlocksX + uX];
    }

    // The exact range of some vertices, from whole blocks as far as possible. view: the same
    // heights that the blocks were made of. Empty for an empty rectangle.
    SHeightRange GetRange(const SHeightView& view, const SVertexRect& rect) const;

private:
    struct SLevel
    {
        uint32_t uBlocksX = 0;
        uint32_t uBlocksZ = 0;
        std::vector<SHeightRange> blocks; // row by row
    };

    bool Allocate(uint32_t uCellsX, uint32_t uCellsZ);
    void UpdateBlocks(const SHeightView& view, const SVertexRect& changed);
    void UpdateFirstLevel(const SHeightView& view, const SVertexRect& blocks);
    void UpdateLevel(int iLevel, const SVertexRect& blocks);

    std::vector<SLevel> m_Levels;
    uint32_t m_SizeX = 0; // vertices that the levels were made for
    uint32_t m_SizeZ = 0;
};
