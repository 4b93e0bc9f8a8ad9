#include "engine/elevation/SOrientation.h"

#include <algorithm>
#include <utility>

namespace
{

// Where the samples of the terrain's rows lie in the file: the first one, and how far it is to the
// next one of a row and of a column.
struct SWalk
{
    ptrdiff_t nStart = 0;
    ptrdiff_t nX = 1;
    ptrdiff_t nZ = 1;
};

constexpr uint32_t BLOCK = 64; // of the terrain's samples a side: their rows stay in the cache

SWalk MakeWalk(const SOrientation& orientation, uint32_t uColumns, uint32_t uRows)
{
    const ptrdiff_t nColumns = uColumns;
    const ptrdiff_t nLastRow = nColumns * (ptrdiff_t{uRows} - 1);
    const ptrdiff_t nLast = nLastRow + nColumns - 1;
    const SWalk walks[] = {
        {0, 1, nColumns},
        {nLastRow, -nColumns, 1},
        {nLast, -1, -nColumns},
        {nColumns - 1, nColumns, -1},
    };
    SWalk walk = walks[static_cast<size_t>(orientation.eTurn)];
    const bool bSideways = orientation.IsSideways();
    if (orientation.IsFlipped(EFlip::X))
    {
        walk.nStart += walk.nX * ((bSideways ? ptrdiff_t{uRows} : nColumns) - 1);
        walk.nX = -walk.nX;
    }
    if (orientation.IsFlipped(EFlip::Z))
    {
        walk.nStart += walk.nZ * ((bSideways ? nColumns : ptrdiff_t{uRows}) - 1);
        walk.nZ = -walk.nZ;
    }
    return walk;
}

// The samples of a block from that column and row of the terrain on. grid: says the terrain's shape
// already, but lies as the file does.
void CopyBlock(const SWalk& walk,
               const SSampleGrid& grid,
               uint32_t uColumn,
               uint32_t uRow,
               std::vector<float>& turned)
{
    const uint32_t uEndX = std::min(uColumn + BLOCK, grid.uColumns);
    const uint32_t uEndZ = std::min(uRow + BLOCK, grid.uRows);
    for (uint32_t z = uRow; z < uEndZ; ++z)
    {
        const float* pSource = grid.samples.data() + walk.nStart + walk.nZ * z;
        float* pDest = turned.data() + size_t{z} * grid.uColumns;
        for (uint32_t x = uColumn; x < uEndX; ++x)
        {
            pDest[x] = pSource[walk.nX * x];
        }
    }
}

} // namespace

std::array<size_t, 4> SOrientation::GetCorners(uint32_t uColumns, uint32_t uRows) const
{
    const SWalk walk = MakeWalk(*this, uColumns, uRows);
    const ptrdiff_t nX = walk.nX * ((IsSideways() ? uRows : uColumns) - ptrdiff_t{1});
    const ptrdiff_t nZ = walk.nZ * ((IsSideways() ? uColumns : uRows) - ptrdiff_t{1});
    return {static_cast<size_t>(walk.nStart),
            static_cast<size_t>(walk.nStart + nX),
            static_cast<size_t>(walk.nStart + nZ),
            static_cast<size_t>(walk.nStart + nX + nZ)};
}

std::array<const char*, 4> SOrientation::GetCornerNames() const
{
    // The corners of a file of four samples are its samples.
    constexpr const char* NAMES[] = {"north-west", "north-east", "south-west", "south-east"};
    std::array<const char*, 4> names{};
    std::ranges::transform(
        GetCorners(2, 2), names.begin(), [&NAMES](size_t nSample) { return NAMES[nSample]; });
    return names;
}

void OrientInfo(const SOrientation& orientation, SSampleInfo& info)
{
    if (orientation.IsSideways())
    {
        std::swap(info.uColumns, info.uRows);
        std::swap(info.dSpacingX, info.dSpacingZ);
    }
    info.geo.Turn(static_cast<uint32_t>(orientation.eTurn),
                  orientation.IsFlipped(EFlip::X),
                  orientation.IsFlipped(EFlip::Z));
}

void OrientGrid(const SOrientation& orientation, SSampleGrid& grid)
{
    if (orientation.IsPlain())
    {
        return;
    }
    const SWalk walk = MakeWalk(orientation, grid.uColumns, grid.uRows);
    std::vector<float> turned(grid.samples.size());
    OrientInfo(orientation, grid);
    for (uint32_t z = 0; z < grid.uRows; z += BLOCK)
    {
        for (uint32_t x = 0; x < grid.uColumns; x += BLOCK)
        {
            CopyBlock(walk, grid, x, z, turned);
        }
    }
    grid.samples = std::move(turned);
}
