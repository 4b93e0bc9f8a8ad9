#include "editor/view/CPatchTree.h"

#include <algorithm>
#include <cmath>

namespace
{

uint32_t CountPatches(uint32_t uCells, uint32_t uPatchCells)
{
    return (uCells + uPatchCells - 1) / uPatchCells;
}

void Widen(SPatchBounds& bounds, const SPatchBounds& other)
{
    bounds.fMin = std::min(bounds.fMin, other.fMin);
    bounds.fMax = std::max(bounds.fMax, other.fMax);
    bounds.fError = std::max(bounds.fError, other.fError);
}

} // namespace

void CPatchTree::Reset(uint32_t uVerticesX, uint32_t uVerticesZ, uint32_t uTopCells)
{
    m_CellsX = uVerticesX - 1;
    m_CellsZ = uVerticesZ - 1;
    m_Levels.clear();
    for (uint32_t uCells = PATCH_CELLS; uCells <= uTopCells; uCells *= 2)
    {
        SLevel level;
        level.uCountX = CountPatches(m_CellsX, uCells);
        level.uCountZ = CountPatches(m_CellsZ, uCells);
        level.bounds.resize(static_cast<size_t>(level.uCountX) * level.uCountZ);
        m_Levels.push_back(std::move(level));
    }
}

void CPatchTree::Update(const float* pHeights, const SVertexRect& changed)
{
    if (changed.IsEmpty())
    {
        return;
    }
    for (uint32_t uLevel = 0; uLevel < m_Levels.size(); ++uLevel)
    {
        SLevel& level = m_Levels[uLevel];
        const uint32_t uShift = PATCH_SHIFT + uLevel;
        // A vertex on the border of two patches belongs to both.
        const uint32_t uFirstX = (changed.uMinX > 0 ? changed.uMinX - 1 : 0) >> uShift;
        const uint32_t uFirstZ = (changed.uMinZ > 0 ? changed.uMinZ - 1 : 0) >> uShift;
        const uint32_t uLastX = std::min((changed.uEndX - 1) >> uShift, level.uCountX - 1);
        const uint32_t uLastZ = std::min((changed.uEndZ - 1) >> uShift, level.uCountZ - 1);
        for (uint32_t z = uFirstZ; z <= uLastZ; ++z)
        {
            for (uint32_t x = uFirstX; x <= uLastX; ++x)
            {
                const SPatchPlace place = {uLevel, x, z};
                level.bounds[GetIndex(place)] =
                    uLevel == 0 ? MeasureSmallest(pHeights, x, z) : MeasureParent(pHeights, place);
            }
        }
    }
}

SPatchBounds CPatchTree::MeasureSmallest(const float* pHeights, uint32_t uX, uint32_t uZ) const
{
    const uint32_t uFirstX = uX * PATCH_CELLS;
    const uint32_t uFirstZ = uZ * PATCH_CELLS;
    const uint32_t uLastX = std::min(uFirstX + PATCH_CELLS, m_CellsX);
    const uint32_t uLastZ = std::min(uFirstZ + PATCH_CELLS, m_CellsZ);
    SPatchBounds bounds;
    bounds.fMin = bounds.fMax = GetHeight(pHeights, uFirstX, uFirstZ);
    for (uint32_t z = uFirstZ; z <= uLastZ; ++z)
    {
        const float* pRow = pHeights + static_cast<size_t>(z) * (m_CellsX + 1);
        for (uint32_t x = uFirstX; x <= uLastX; ++x)
        {
            bounds.fMin = std::min(bounds.fMin, pRow[x]);
            bounds.fMax = std::max(bounds.fMax, pRow[x]);
        }
    }
    return bounds;
}

SPatchBounds CPatchTree::MeasureParent(const float* pHeights, const SPatchPlace& place) const
{
    const SLevel& below = m_Levels[place.uLevel - 1];
    SPatchPlace child = {place.uLevel - 1, place.uX * 2, place.uZ * 2};
    SPatchBounds bounds = GetBounds(child);
    const uint32_t uEndX = std::min(child.uX + 2, below.uCountX);
    const uint32_t uEndZ = std::min(child.uZ + 2, below.uCountZ);
    for (uint32_t z = place.uZ * 2; z < uEndZ; ++z)
    {
        for (uint32_t x = place.uX * 2; x < uEndX; ++x)
        {
            child.uX = x;
            child.uZ = z;
            Widen(bounds, GetBounds(child));
        }
    }
    // Errors of the levels below add up at most.
    bounds.fError += MeasureStep(pHeights, place);
    return bounds;
}

// How far the vertices that the level drops lie from the triangles it keeps.
float CPatchTree::MeasureStep(const float* pHeights, const SPatchPlace& place) const
{
    const uint32_t uHalf = 1U << (place.uLevel - 1);
    const uint32_t uPatch = PATCH_CELLS << place.uLevel;
    const uint32_t uFirstX = place.uX * uPatch;
    const uint32_t uFirstZ = place.uZ * uPatch;
    const uint32_t uLastX = std::min(uFirstX + uPatch, m_CellsX);
    const uint32_t uLastZ = std::min(uFirstZ + uPatch, m_CellsZ);
    float fError = 0.0F;
    bool bOddRow = false;
    for (uint32_t z = uFirstZ; z <= uLastZ; z += uHalf)
    {
        const uint32_t uStepX = bOddRow ? uHalf : 2 * uHalf;
        for (uint32_t x = bOddRow ? uFirstX : uFirstX + uHalf; x <= uLastX; x += uStepX)
        {
            fError = std::max(fError, GetOffSurface(pHeights, x, z, 2 * uHalf));
        }
        bOddRow = !bOddRow;
    }
    return fError;
}

float CPatchTree::GetHeight(const float* pHeights, uint32_t uX, uint32_t uZ) const
{
    return pHeights[static_cast<size_t>(uZ) * (m_CellsX + 1) + uX];
}

// The squares are cut from the corner of the next column to that of the next row, as CPatchMesh
// does.
float CPatchTree::GetOffSurface(const float* pHeights,
                                uint32_t uX,
                                uint32_t uZ,
                                uint32_t uStride) const
{
    const uint32_t uX0 = uX & ~(uStride - 1);
    const uint32_t uZ0 = uZ & ~(uStride - 1);
    const uint32_t uX1 = std::min(uX0 + uStride, m_CellsX);
    const uint32_t uZ1 = std::min(uZ0 + uStride, m_CellsZ);
    const float fX =
        uX1 > uX0 ? static_cast<float>(uX - uX0) / static_cast<float>(uX1 - uX0) : 0.0F;
    const float fZ =
        uZ1 > uZ0 ? static_cast<float>(uZ - uZ0) / static_cast<float>(uZ1 - uZ0) : 0.0F;
    const float f10 = GetHeight(pHeights, uX1, uZ0);
    const float f01 = GetHeight(pHeights, uX0, uZ1);
    const bool bFirst = fX + fZ <= 1.0F;
    const float fCorner = bFirst ? GetHeight(pHeights, uX0, uZ0) : GetHeight(pHeights, uX1, uZ1);
    const float fAlongX = bFirst ? fX : 1.0F - fZ; // share of the corner of the next column
    const float fAlongZ = bFirst ? fZ : 1.0F - fX;
    const float fSurface = fCorner + fAlongX * (f10 - fCorner) + fAlongZ * (f01 - fCorner);
    return std::fabs(GetHeight(pHeights, uX, uZ) - fSurface);
}
