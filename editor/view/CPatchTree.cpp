#include "editor/view/CPatchTree.h"

#include "editor/view/PatchMeasure.h"

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
        level.waits.resize(level.bounds.size());
        m_Levels.push_back(std::move(level));
    }
    m_Floors.assign(m_Levels.back().bounds.size(), 0);
}

void CPatchTree::Update(const float* pHeights, const std::vector<SVertexRect>& changed)
{
    for (const SVertexRect& rect : changed)
    {
        MarkStale(rect);
    }
    // Finest level first: a patch is measured from what the level below it knows.
    for (uint32_t uLevel = 0; uLevel < m_Levels.size(); ++uLevel)
    {
        SLevel& level = m_Levels[uLevel];
        for (size_t i = 0; i < level.stale.size();)
        {
            const SPatchPlace first = {
                uLevel, level.stale[i] % level.uCountX, level.stale[i] / level.uCountX};
            // Patches that stand side by side are measured in one pass over their rows.
            const uint32_t uPatches = CountSideBySide(level, i);
            Measure(pHeights, first, uPatches);
            i += uPatches;
        }
        for (const uint32_t uIndex : level.stale)
        {
            level.waits[uIndex] = 0;
            if (uLevel < GetTopLevel()) // what lies under a patch lies under one of its children
            {
                SLevel& above = m_Levels[uLevel + 1];
                const uint32_t uRow = uIndex / level.uCountX / 2;
                above.Wait(uRow * above.uCountX + uIndex % level.uCountX / 2);
            }
        }
        level.stale.clear();
    }
}

void CPatchTree::SLevel::Wait(uint32_t uIndex)
{
    if (waits[uIndex] == 0)
    {
        waits[uIndex] = 1;
        stale.push_back(uIndex);
    }
}

// Stale patches from place nFrom of the list on that stand in a row.
uint32_t CPatchTree::CountSideBySide(const SLevel& level, size_t nFrom)
{
    const uint32_t uFirst = level.stale[nFrom];
    // A strip ends with its row of patches.
    const uint32_t uMost = std::min(PATCH_STRIP, level.uCountX - uFirst % level.uCountX);
    uint32_t uCount = 1;
    while (uCount < uMost && nFrom + uCount < level.stale.size() &&
           level.stale[nFrom + uCount] == uFirst + uCount)
    {
        ++uCount;
    }
    return uCount;
}

// So many patches side by side.
void CPatchTree::Measure(const float* pHeights, const SPatchPlace& first, uint32_t uPatches)
{
    SPatchBounds* pBounds = m_Levels[first.uLevel].bounds.data() + GetIndex(first);
    const uint32_t uPatch = PATCH_CELLS << first.uLevel;
    const size_t nPitch = size_t{m_CellsX} + 1;
    const float* pCorner =
        pHeights + size_t{first.uZ} * uPatch * nPitch + size_t{first.uX} * uPatch;
    // Whole ones at once; those at the terrain's end may be cut.
    const uint32_t uLastX = m_CellsX / uPatch; // the first that is not whole
    const bool bDeep = (first.uZ + 1) * uPatch <= m_CellsZ;
    const uint32_t uWhole = std::min(uPatches, uLastX - std::min(first.uX, uLastX));
    if (first.uLevel == 0 && uWhole > 0)
    {
        const uint32_t uRows = std::min(uPatch, m_CellsZ - first.uZ * uPatch) + 1;
        MeasureRanges(pCorner, nPitch, uRows, uWhole, pBounds);
    }
    float aSteps[PATCH_STRIP];
    const uint32_t uSteps = bDeep ? uWhole : 0;
    if (first.uLevel > 0 && uSteps > 0)
    {
        MeasureSteps(pCorner, nPitch, uPatch / PATCH_CELLS / 2, uSteps, aSteps);
    }
    for (uint32_t i = 0; i < uPatches; ++i)
    {
        const SPatchPlace place = {first.uLevel, first.uX + i, first.uZ};
        if (first.uLevel > 0)
        {
            // Errors of the levels below add up at most.
            pBounds[i] = JoinChildren(place);
            pBounds[i].fError += i < uSteps ? aSteps[i] : MeasureCutStep(pHeights, place);
        }
        else if (i >= uWhole)
        {
            pBounds[i] = MeasureCut(pHeights, place);
        }
    }
}

// The smallest patches under changed, where they are known.
void CPatchTree::MarkStale(const SVertexRect& changed)
{
    if (changed.IsEmpty())
    {
        return;
    }
    SLevel& level = m_Levels.front();
    // A vertex on the border of two patches belongs to both.
    const uint32_t uFirstX = (changed.uMinX > 0 ? changed.uMinX - 1 : 0) >> PATCH_SHIFT;
    const uint32_t uFirstZ = (changed.uMinZ > 0 ? changed.uMinZ - 1 : 0) >> PATCH_SHIFT;
    const uint32_t uLastX = std::min((changed.uEndX - 1) >> PATCH_SHIFT, level.uCountX - 1);
    const uint32_t uLastZ = std::min((changed.uEndZ - 1) >> PATCH_SHIFT, level.uCountZ - 1);
    for (uint32_t z = uFirstZ; z <= uLastZ; ++z)
    {
        for (uint32_t x = uFirstX; x <= uLastX; ++x)
        {
            if (GetFloor({0, x, z}) == 0)
            {
                level.Wait(z * level.uCountX + x);
            }
        }
    }
}

void CPatchTree::TakeCoarse(const CPatchTree& coarse,
                            uint32_t uShift,
                            uint32_t uTopX,
                            uint32_t uTopZ)
{
    SetFloor(uTopX, uTopZ, uShift);
    for (uint32_t uLevel = uShift; uLevel <= GetTopLevel(); ++uLevel)
    {
        const uint32_t uBelow = GetTopLevel() - uLevel;
        const uint32_t uEndX = std::min((uTopX + 1) << uBelow, GetCountX(uLevel));
        const uint32_t uEndZ = std::min((uTopZ + 1) << uBelow, GetCountZ(uLevel));
        for (uint32_t z = uTopZ << uBelow; z < uEndZ; ++z)
        {
            for (uint32_t x = uTopX << uBelow; x < uEndX; ++x)
            {
                // A patch of the coarse tree is as wide as one that is uShift levels higher here.
                m_Levels[uLevel].bounds[GetIndex({uLevel, x, z})] =
                    coarse.GetBounds({uLevel - uShift, x, z});
            }
        }
    }
}

std::pair<float, float> CPatchTree::GetHeightRange() const
{
    SPatchBounds all = m_Levels.back().bounds.front();
    for (const SPatchBounds& bounds : m_Levels.back().bounds)
    {
        Widen(all, bounds);
    }
    return {all.fMin, all.fMax};
}

// The range of a patch of level 0.
SPatchBounds CPatchTree::MeasureCut(const float* pHeights, const SPatchPlace& place) const
{
    const uint32_t uFirstX = place.uX * PATCH_CELLS;
    const uint32_t uFirstZ = place.uZ * PATCH_CELLS;
    const uint32_t uLastX = std::min(uFirstX + PATCH_CELLS, m_CellsX);
    const uint32_t uLastZ = std::min(uFirstZ + PATCH_CELLS, m_CellsZ);
    SPatchBounds bounds;
    bounds.fMin = 3.4e38F; // what is no number counts for nothing
    bounds.fMax = -3.4e38F;
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

// What the patches below it know.
SPatchBounds CPatchTree::JoinChildren(const SPatchPlace& place) const
{
    const SLevel& below = m_Levels[place.uLevel - 1];
    const uint32_t uEndX = std::min(place.uX * 2 + 2, below.uCountX);
    const uint32_t uEndZ = std::min(place.uZ * 2 + 2, below.uCountZ);
    SPatchBounds bounds = GetBounds({place.uLevel - 1, place.uX * 2, place.uZ * 2});
    for (uint32_t z = place.uZ * 2; z < uEndZ; ++z)
    {
        for (uint32_t x = place.uX * 2; x < uEndX; ++x)
        {
            Widen(bounds, GetBounds({place.uLevel - 1, x, z}));
        }
    }
    return bounds;
}

// How far the vertices that the level drops lie from the triangles it keeps.
float CPatchTree::MeasureCutStep(const float* pHeights, const SPatchPlace& place) const
{
    const uint32_t uHalf = 1U << (place.uLevel - 1);
    const uint32_t uPatch = PATCH_CELLS << place.uLevel;
    const uint32_t uFirstX = place.uX * uPatch;
    const uint32_t uFirstZ = place.uZ * uPatch;
    const uint32_t uLastX = std::min(uFirstX + uPatch, m_CellsX);
    const uint32_t uLastZ = std::min(uFirstZ + uPatch, m_CellsZ);
    float fError = 0.0F;
    // In the rows that the level keeps every second vertex is dropped, in the rows between all of
    // them.
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
    // At the terrain's end a square may be narrower than the stride.
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
