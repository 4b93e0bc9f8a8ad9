#include "engine/terrain/CNormalField.h"

#include "host/LargeMemory.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr float NORMAL_SCALE = 32767.0F;

int16_t Pack(float fComponent)
{
    // This order of arguments turns NaN, which a height may be, into a number.
    const float fScaled = std::min(1.0F, std::max(-1.0F, fComponent)) * NORMAL_SCALE;
    return static_cast<int16_t>(static_cast<int32_t>(fScaled + std::copysign(0.5F, fScaled)));
}

void StoreNormal(float fSlopeX, float fSlopeZ, int16_t* pPair)
{
    const float fScale = 1.0F / std::sqrt(1.0F + fSlopeX * fSlopeX + fSlopeZ * fSlopeZ);
    pPair[0] = Pack(-fSlopeX * fScale);
    pPair[1] = Pack(-fSlopeZ * fScale);
}

// One row of normals, columns [uMinX, uEndX): central differences, one-sided at the border.
void ComputeRow(const SHeightView& view, uint32_t uZ, uint32_t uMinX, uint32_t uEndX, int16_t* pRow)
{
    const uint32_t uLastX = view.uSizeX - 1;
    const uint32_t uAbove = uZ > 0 ? uZ - 1 : 0;
    const uint32_t uBelow = std::min(uZ + 1, view.uSizeZ - 1);
    const size_t nPitch = view.uSizeX;
    const float* pHere = view.pHeights + uZ * nPitch;
    const float* pAbove = view.pHeights + uAbove * nPitch;
    const float* pBelow = view.pHeights + uBelow * nPitch;
    const float fScaleX = 0.5F / view.fStepX;
    const float fScaleZ = 1.0F / (static_cast<float>(uBelow - uAbove) * view.fStepZ);

    // The first and the last column stand apart, so that the long loop has no conditions.
    for (uint32_t x = std::max(uMinX, 1U); x < std::min(uEndX, uLastX); ++x)
    {
        StoreNormal((pHere[x + 1] - pHere[x - 1]) * fScaleX,
                    (pBelow[x] - pAbove[x]) * fScaleZ,
                    pRow + 2 * static_cast<size_t>(x));
    }
    if (uMinX == 0)
    {
        StoreNormal((pHere[1] - pHere[0]) / view.fStepX, (pBelow[0] - pAbove[0]) * fScaleZ, pRow);
    }
    if (uEndX == view.uSizeX)
    {
        StoreNormal((pHere[uLastX] - pHere[uLastX - 1]) / view.fStepX,
                    (pBelow[uLastX] - pAbove[uLastX]) * fScaleZ,
                    pRow + 2 * static_cast<size_t>(uLastX));
    }
}

} // namespace

void CNormalField::Reset()
{
    // Assigning {} would keep the memory.
    m_Normals.reset();
    std::vector<uint8_t>().swap(m_StaleTiles);
    m_HasStale = true;
}

void CNormalField::MarkStale(const SVertexRect& changed, const SHeightView& view)
{
    if (changed.IsEmpty())
    {
        return;
    }
    m_HasStale = true;
    // Before the first reader there is nothing to mark: Allocate starts with all tiles stale.
    if (IsAllocated())
    {
        MarkTiles(changed.Grown(1, view.uSizeX, view.uSizeZ));
    }
}

bool CNormalField::TakeStale()
{
    return std::exchange(m_HasStale, false);
}

const int16_t* CNormalField::Fetch(const SHeightView& view, const SVertexRect& rect)
{
    if (!IsAllocated() && !Allocate(view))
    {
        return nullptr;
    }
    ComputeStale(view, rect);
    const bool bAll = rect == SVertexRect{0, 0, view.uSizeX, view.uSizeZ};
    // A reader of a part leaves the rest to be taken.
    m_HasStale = m_HasStale && !bAll;
    return m_Normals.get();
}

void CNormalField::ComputeStale(const SHeightView& view, const SVertexRect& rect)
{
    if (rect.IsEmpty())
    {
        return;
    }
    for (uint32_t z = rect.uMinZ / TILE; z <= (rect.uEndZ - 1) / TILE; ++z)
    {
        for (uint32_t x = rect.uMinX / TILE; x <= (rect.uEndX - 1) / TILE; ++x)
        {
            if (m_StaleTiles[static_cast<size_t>(z) * m_TilesX + x] != 0)
            {
                ComputeTile(view, x, z);
            }
        }
    }
}

bool CNormalField::Allocate(const SHeightView& view)
{
    const size_t nVertices = static_cast<size_t>(view.uSizeX) * view.uSizeZ;
    m_Normals.reset(static_cast<int16_t*>(std::calloc(nVertices, 2 * sizeof(int16_t))));
    // A copy of the process that saves heights has no use for normals.
    KeepFromChildren(m_Normals.get(), nVertices * 2 * sizeof(int16_t));
    m_TilesX = (view.uSizeX + TILE - 1) / TILE;
    m_TilesZ = (view.uSizeZ + TILE - 1) / TILE;
    m_StaleTiles.assign(static_cast<size_t>(m_TilesX) * m_TilesZ, 1);
    return IsAllocated();
}

SVec3 CNormalField::Unpack(const int16_t* pPair)
{
    const float fX = static_cast<float>(pPair[0]) / NORMAL_SCALE;
    const float fZ = static_cast<float>(pPair[1]) / NORMAL_SCALE;
    return {fX, std::sqrt(std::max(0.0F, 1.0F - fX * fX - fZ * fZ)), fZ};
}

void CNormalField::MarkTiles(const SVertexRect& rect)
{
    for (uint32_t z = rect.uMinZ / TILE; z <= (rect.uEndZ - 1) / TILE; ++z)
    {
        uint8_t* pRow = m_StaleTiles.data() + static_cast<size_t>(z) * m_TilesX;
        std::fill(pRow + rect.uMinX / TILE, pRow + (rect.uEndX - 1) / TILE + 1, uint8_t{1});
    }
}

void CNormalField::ComputeTile(const SHeightView& view, uint32_t uTileX, uint32_t uTileZ)
{
    m_StaleTiles[static_cast<size_t>(uTileZ) * m_TilesX + uTileX] = 0;
    const uint32_t uMinX = uTileX * TILE;
    const uint32_t uEndX = std::min(uMinX + TILE, view.uSizeX);
    const uint32_t uEndZ = std::min((uTileZ + 1) * TILE, view.uSizeZ);
    for (uint32_t z = uTileZ * TILE; z < uEndZ; ++z)
    {
        int16_t* pRow = m_Normals.get() + static_cast<size_t>(z) * view.uSizeX * 2;
        ComputeRow(view, z, uMinX, uEndX, pRow);
    }
}
