#include "engine/terrain/CHeightPyramid.h"

#include "host/VectorLoop.h"

#include <algorithm>
#include <new>

namespace
{

uint32_t HalvedUp(uint32_t uCount)
{
    return (uCount + 1) / 2;
}

SHeightRange ScanVertices(const SHeightView& view, const SVertexRect& rect)
{
    SHeightRange range;
    for (uint32_t z = rect.uMinZ; z < rect.uEndZ; ++z)
    {
        const float* pRow = view.pHeights + static_cast<size_t>(z) * view.uSizeX;
        for (uint32_t x = rect.uMinX; x < rect.uEndX; ++x)
        {
            range.Add(pRow[x]);
        }
    }
    return range;
}

// The vertices of a block of uSide cells per side.
SVertexRect GetBlockVertices(const SHeightView& view, uint32_t uX, uint32_t uZ, uint32_t uSide)
{
    return {uX * uSide,
            uZ * uSide,
            std::min((uX + 1) * uSide + 1, view.uSizeX),
            std::min((uZ + 1) * uSide + 1, view.uSizeZ)};
}

constexpr uint32_t STRIP_BLOCKS = 64; // what a strip needs stays in the nearest cache

// The ranges of blocks that stand side by side, from the vertices of all: columns first, in loops
// that run along the rows, then the few that are left of each block.
TELLUR_LOOP_BODY void
MeasureStrip(const SHeightView& view, const SVertexRect& strip, SHeightRange* pRanges)
{
    // One more than the cells: the far corners of the last block.
    float aMin[STRIP_BLOCKS * CHeightPyramid::BLOCK + 1];
    float aMax[STRIP_BLOCKS * CHeightPyramid::BLOCK + 1];
    const uint32_t uWidth = strip.uEndX - strip.uMinX;
    const SHeightRange none;
    std::fill_n(aMin, uWidth, none.fMin);
    std::fill_n(aMax, uWidth, none.fMax);
    for (uint32_t z = strip.uMinZ; z < strip.uEndZ; ++z)
    {
        const float* pRow = view.pHeights + static_cast<size_t>(z) * view.uSizeX + strip.uMinX;
        for (uint32_t x = 0; x < uWidth; ++x)
        {
            // Every comparison with a NaN fails, so it becomes no bound.
            aMin[x] = pRow[x] < aMin[x] ? pRow[x] : aMin[x];
            aMax[x] = pRow[x] > aMax[x] ? pRow[x] : aMax[x];
        }
    }
    // The last column of a block is the first one of the next: both take it.
    for (uint32_t uFirst = 0; uFirst + 1 < uWidth; uFirst += CHeightPyramid::BLOCK)
    {
        SHeightRange range;
        const uint32_t uEnd = std::min(uFirst + CHeightPyramid::BLOCK + 1, uWidth);
        for (uint32_t x = uFirst; x < uEnd; ++x)
        {
            range.fMin = aMin[x] < range.fMin ? aMin[x] : range.fMin;
            range.fMax = aMax[x] > range.fMax ? aMax[x] : range.fMax;
        }
        *pRanges++ = range;
    }
}

SVertexRect Intersect(const SVertexRect& a, const SVertexRect& b)
{
    return {std::max(a.uMinX, b.uMinX),
            std::max(a.uMinZ, b.uMinZ),
            std::min(a.uEndX, b.uEndX),
            std::min(a.uEndZ, b.uEndZ)};
}

// Adds the part of one block that lies in rect, and goes down where it is not the whole block.
void AddBlock(const CHeightPyramid& pyramid,
              const SHeightView& view,
              const SVertexRect& rect,
              int iLevel,
              uint32_t uX,
              uint32_t uZ,
              SHeightRange& range)
{
    const SVertexRect whole = GetBlockVertices(view, uX, uZ, CHeightPyramid::BLOCK << iLevel);
    const SVertexRect part = Intersect(whole, rect);
    if (part.IsEmpty())
    {
        return;
    }
    if (part == whole)
    {
        range.Add(pyramid.GetBlock(iLevel, uX, uZ));
        return;
    }
    if (iLevel == 0)
    {
        range.Add(ScanVertices(view, part));
        return;
    }
    // The blocks below share border vertices, which may be looked at twice: a range does not mind.
    const uint32_t uEndX = std::min(2 * uX + 2, pyramid.GetBlocksX(iLevel - 1));
    const uint32_t uEndZ = std::min(2 * uZ + 2, pyramid.GetBlocksZ(iLevel - 1));
    for (uint32_t z = 2 * uZ; z < uEndZ; ++z)
    {
        for (uint32_t x = 2 * uX; x < uEndX; ++x)
        {
            AddBlock(pyramid, view, part, iLevel - 1, x, z, range);
        }
    }
}

} // namespace

bool CHeightPyramid::Update(const SHeightView& view, const std::vector<SVertexRect>& changed)
{
    const SVertexRect whole = {0, 0, view.uSizeX, view.uSizeZ};
    if (IsEmpty() || m_SizeX != view.uSizeX || m_SizeZ != view.uSizeZ)
    {
        if (!Allocate(view.uSizeX - 1, view.uSizeZ - 1))
        {
            return false;
        }
        m_SizeX = view.uSizeX;
        m_SizeZ = view.uSizeZ;
        UpdateBlocks(view, whole);
        return true;
    }
    for (const SVertexRect& rect : changed)
    {
        UpdateBlocks(view, rect.Intersection(whole));
    }
    return true;
}

void CHeightPyramid::UpdateBlocks(const SHeightView& view, const SVertexRect& changed)
{
    if (changed.IsEmpty())
    {
        return;
    }
    // A vertex on a border of blocks belongs to the blocks on both sides.
    SVertexRect blocks = {(std::max(changed.uMinX, 1U) - 1) / BLOCK,
                          (std::max(changed.uMinZ, 1U) - 1) / BLOCK,
                          std::min((changed.uEndX - 1) / BLOCK + 1, GetBlocksX(0)),
                          std::min((changed.uEndZ - 1) / BLOCK + 1, GetBlocksZ(0))};
    UpdateFirstLevel(view, blocks);
    for (int iLevel = 1; iLevel < GetLevelCount(); ++iLevel)
    {
        blocks = {
            blocks.uMinX / 2, blocks.uMinZ / 2, HalvedUp(blocks.uEndX), HalvedUp(blocks.uEndZ)};
        UpdateLevel(iLevel, blocks);
    }
}

void CHeightPyramid::CopyLevels(const CHeightPyramid& other, int iFirstLevel)
{
    m_Levels.resize(other.m_Levels.size());
    for (int iLevel = 0; iLevel < GetLevelCount(); ++iLevel)
    {
        m_Levels[iLevel].uBlocksX = other.m_Levels[iLevel].uBlocksX;
        m_Levels[iLevel].uBlocksZ = other.m_Levels[iLevel].uBlocksZ;
        if (iLevel >= iFirstLevel)
        {
            m_Levels[iLevel].blocks = other.m_Levels[iLevel].blocks;
        }
    }
    m_SizeX = other.m_SizeX;
    m_SizeZ = other.m_SizeZ;
}

SHeightRange CHeightPyramid::GetRange(const SHeightView& view, const SVertexRect& rect) const
{
    SHeightRange range;
    if (!IsEmpty())
    {
        AddBlock(*this, view, rect, GetLevelCount() - 1, 0, 0, range);
    }
    return range;
}

bool CHeightPyramid::Allocate(uint32_t uCellsX, uint32_t uCellsZ)
{
    // Gives the memory back first, so that old and new levels are never held together.
    std::vector<SLevel>().swap(m_Levels);
    uint32_t uBlocksX = (uCellsX + BLOCK - 1) / BLOCK;
    uint32_t uBlocksZ = (uCellsZ + BLOCK - 1) / BLOCK;
    try
    {
        for (;;)
        {
            SLevel& level = m_Levels.emplace_back();
            level.uBlocksX = uBlocksX;
            level.uBlocksZ = uBlocksZ;
            level.blocks.resize(static_cast<size_t>(uBlocksX) * uBlocksZ);
            if (uBlocksX == 1 && uBlocksZ == 1)
            {
                return true;
            }
            uBlocksX = HalvedUp(uBlocksX);
            uBlocksZ = HalvedUp(uBlocksZ);
        }
    }
    catch (const std::bad_alloc&)
    {
        m_Levels.clear();
        return false;
    }
}

// In strips of blocks that stand side by side.
void CHeightPyramid::UpdateFirstLevel(const SHeightView& view, const SVertexRect& blocks)
{
    SLevel& level = m_Levels.front();
    for (uint32_t z = blocks.uMinZ; z < blocks.uEndZ; ++z)
    {
        SHeightRange* pRow = level.blocks.data() + static_cast<size_t>(z) * level.uBlocksX;
        for (uint32_t x = blocks.uMinX; x < blocks.uEndX; x += STRIP_BLOCKS)
        {
            const uint32_t uEndX = std::min(x + STRIP_BLOCKS, blocks.uEndX);
            const SVertexRect strip = {x * BLOCK,
                                       z * BLOCK,
                                       std::min(uEndX * BLOCK + 1, view.uSizeX),
                                       std::min((z + 1) * BLOCK + 1, view.uSizeZ)};
            CVectorLoop<MeasureStrip>::Run(view, strip, pRow + x);
        }
    }
}

void CHeightPyramid::UpdateLevel(int iLevel, const SVertexRect& blocks)
{
    const SLevel& finer = m_Levels[iLevel - 1];
    SLevel& level = m_Levels[iLevel];
    for (uint32_t z = blocks.uMinZ; z < blocks.uEndZ; ++z)
    {
        const size_t nUpper = static_cast<size_t>(2 * z) * finer.uBlocksX;
        // Where the finer level ends with an odd block, that block stands in for its missing
        // neighbour.
        const size_t nLower = 2 * z + 1 < finer.uBlocksZ ? nUpper + finer.uBlocksX : nUpper;
        for (uint32_t x = blocks.uMinX; x < blocks.uEndX; ++x)
        {
            const uint32_t uLeft = 2 * x;
            const uint32_t uRight = std::min(uLeft + 1, finer.uBlocksX - 1);
            SHeightRange range = finer.blocks[nUpper + uLeft];
            range.Add(finer.blocks[nUpper + uRight]);
            range.Add(finer.blocks[nLower + uLeft]);
            range.Add(finer.blocks[nLower + uRight]);
            level.blocks[static_cast<size_t>(z) * level.uBlocksX + x] = range;
        }
    }
}
