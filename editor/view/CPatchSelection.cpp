#include "editor/view/CPatchSelection.h"

#include "editor/view/SFrustum.h"
#include "editor/view/SViewProjection.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

struct CPatchSelection::SScene
{
    const CPatchTree& tree;
    const SViewProjection& view;
    const SDetail& detail;
    const SFrustum& frustum;
};

namespace
{

SExtents GetBox(const CPatchTree& tree, const SPatchPlace& place, const SVec3& cell)
{
    const uint32_t uCells = CPatchTree::PATCH_CELLS << place.uLevel;
    const SPatchBounds& bounds = tree.GetBounds(place);
    const uint32_t uEndX = std::min((place.uX + 1) * uCells, tree.GetCellsX());
    const uint32_t uEndZ = std::min((place.uZ + 1) * uCells, tree.GetCellsZ());
    return {{static_cast<float>(place.uX * uCells) * cell.x,
             bounds.fMin,
             static_cast<float>(place.uZ * uCells) * cell.z},
            {static_cast<float>(uEndX) * cell.x, bounds.fMax, static_cast<float>(uEndZ) * cell.z}};
}

float GetDistance(const SExtents& box, const SVec3& point)
{
    const float fX = std::max({box.min.x - point.x, 0.0F, point.x - box.max.x});
    const float fY = std::max({box.min.y - point.y, 0.0F, point.y - box.max.y});
    const float fZ = std::max({box.min.z - point.z, 0.0F, point.z - box.max.z});
    return std::sqrt(fX * fX + fY * fY + fZ * fZ);
}

} // namespace

void CPatchSelection::Select(const CPatchTree& tree,
                             const SViewProjection& view,
                             const SDetail& detail)
{
    float matrix[16];
    view.GetMatrix(matrix);
    const SFrustum frustum(matrix);
    const SScene scene = {tree, view, detail, frustum};
    Begin(tree);
    Refine(scene);
    Balance(scene);
    Emit(scene);
}

void CPatchSelection::Begin(const CPatchTree& tree)
{
    ++m_Frame;
    m_Heap.clear();
    m_Leaves.clear();
    m_Instances.clear();
    m_Ranges.clear();
    // Marks hold the number of their frame, so those of frames before need not be wiped out.
    m_Marks.resize(tree.GetTopLevel() + 1);
    for (uint32_t uLevel = 0; uLevel < m_Marks.size(); ++uLevel)
    {
        const size_t nCount = static_cast<size_t>(tree.GetCountX(uLevel)) * tree.GetCountZ(uLevel);
        if (m_Marks[uLevel].size() != nCount)
        {
            m_Marks[uLevel].assign(nCount, 0);
        }
    }
}

void CPatchSelection::Refine(const SScene& scene)
{
    const auto less = [](const SCandidate& a, const SCandidate& b)
    {
        return a.fPixels < b.fPixels;
    };
    const uint32_t uTop = scene.tree.GetTopLevel();
    for (uint32_t z = 0; z < scene.tree.GetCountZ(uTop); ++z)
    {
        for (uint32_t x = 0; x < scene.tree.GetCountX(uTop); ++x)
        {
            SCandidate candidate;
            if (Look(scene, {uTop, x, z}, candidate))
            {
                m_Heap.push_back(candidate);
            }
        }
    }
    // On top of the heap is always the patch with the worst error on the screen.
    std::make_heap(m_Heap.begin(), m_Heap.end(), less);
    while (!m_Heap.empty())
    {
        std::pop_heap(m_Heap.begin(), m_Heap.end(), less);
        const SCandidate worst = m_Heap.back();
        m_Heap.pop_back();
        // A split puts up to four patches in the place of one.
        const bool bFull = m_Heap.size() + m_Leaves.size() + 4 > scene.detail.uMaxPatches;
        const bool bFinest = worst.place.uLevel == scene.tree.GetFloor(worst.place);
        if (bFinest || worst.fPixels <= scene.detail.fPixels || bFull)
        {
            m_Leaves.push_back(worst);
            continue;
        }
        const size_t nBefore = m_Heap.size();
        AddChildren(scene, worst.place, m_Heap);
        for (size_t n = nBefore + 1; n <= m_Heap.size(); ++n)
        {
            std::push_heap(m_Heap.begin(), m_Heap.begin() + static_cast<std::ptrdiff_t>(n), less);
        }
    }
}

// Splits what is too coarse for its neighbour. The list grows while it is walked; patches that are
// split stay in it and are skipped.
void CPatchSelection::Balance(const SScene& scene)
{
    for (size_t i = 0; i < m_Leaves.size(); ++i)
    {
        const SPatchPlace place = m_Leaves[i].place;
        for (uint32_t uSide = 0; uSide < 4 && !IsSplit(scene.tree, place); ++uSide)
        {
            SPatchPlace other;
            while (FindNeighbour(scene, place, uSide, other) &&
                   other.uLevel > std::max(place.uLevel + MAX_STEP, scene.tree.GetFloor(other)))
            {
                AddChildren(scene, other, m_Leaves);
            }
        }
    }
}

void CPatchSelection::Emit(const SScene& scene)
{
    const uint32_t uTop = scene.tree.GetTopLevel();
    std::erase_if(m_Leaves,
                  [&](const SCandidate& leaf) { return IsSplit(scene.tree, leaf.place); });
    // Near ones first, so that the hidden is not shaded; then by tile in the order of their
    // nearest.
    std::sort(m_Leaves.begin(),
              m_Leaves.end(),
              [](const SCandidate& a, const SCandidate& b) { return a.fDistance < b.fDistance; });
    const auto getRange = [&](const SPatchPlace& place) -> SPatchRange&
    {
        const uint32_t uShift = uTop - place.uLevel;
        const uint32_t uTileX = place.uX >> uShift;
        const uint32_t uTileZ = place.uZ >> uShift;
        const auto found = std::find_if(m_Ranges.begin(),
                                        m_Ranges.end(),
                                        [&](const SPatchRange& range) {
                                            return range.uTileX == uTileX && range.uTileZ == uTileZ;
                                        });
        return found != m_Ranges.end() ? *found
                                       : m_Ranges.emplace_back(SPatchRange{uTileX, uTileZ, 0, 0});
    };
    // Patches of one tile must stand side by side in the list, since a tile is drawn with its own
    // textures: the ranges are counted, given their places and then filled.
    for (const SCandidate& leaf : m_Leaves)
    {
        ++getRange(leaf.place).uCount;
    }
    uint32_t uFirst = 0;
    for (SPatchRange& range : m_Ranges)
    {
        range.uFirst = uFirst;
        uFirst += range.uCount;
        range.uCount = 0;
    }
    m_Instances.resize(m_Leaves.size());
    for (const SCandidate& leaf : m_Leaves)
    {
        const uint32_t uShift = CPatchTree::PATCH_SHIFT + leaf.place.uLevel;
        SPatchInstance instance = {static_cast<int32_t>(leaf.place.uX << uShift),
                                   static_cast<int32_t>(leaf.place.uZ << uShift),
                                   1 << leaf.place.uLevel,
                                   0};
        for (uint32_t uSide = 0; uSide < 4; ++uSide)
        {
            SPatchPlace other;
            if (FindNeighbour(scene, leaf.place, uSide, other))
            {
                instance.iCoarser |=
                    static_cast<int32_t>((other.uLevel - leaf.place.uLevel) << (4 * uSide));
            }
        }
        SPatchRange& range = getRange(leaf.place);
        m_Instances[range.uFirst + range.uCount++] = instance;
    }
}

// Marks the patch as split and adds its children that are in sight.
void CPatchSelection::AddChildren(const SScene& scene,
                                  const SPatchPlace& place,
                                  std::vector<SCandidate>& to)
{
    m_Marks[place.uLevel][scene.tree.GetIndex(place)] = m_Frame;
    const uint32_t uLevel = place.uLevel - 1;
    for (uint32_t i = 0; i < 4; ++i)
    {
        const SPatchPlace child = {uLevel, place.uX * 2 + i % 2, place.uZ * 2 + i / 2};
        SCandidate candidate;
        if (child.uX < scene.tree.GetCountX(uLevel) && child.uZ < scene.tree.GetCountZ(uLevel) &&
            Look(scene, child, candidate))
        {
            to.push_back(candidate);
        }
    }
}

// False, and the patch is marked, when it is out of sight.
bool CPatchSelection::Look(const SScene& scene, const SPatchPlace& place, SCandidate& candidate)
{
    const SExtents box = GetBox(scene.tree, place, scene.detail.cell);
    if (!scene.frustum.MaySee(box))
    {
        m_Marks[place.uLevel][scene.tree.GetIndex(place)] = -m_Frame;
        return false;
    }
    const float fDistance = GetDistance(box, scene.view.position);
    // Inside the box the distance is 0, and the error would be without limit.
    const float fPixel = scene.view.GetPixelSize(std::max(fDistance, scene.view.fNear));
    candidate = {scene.tree.GetBounds(place).fError / fPixel, fDistance, place};
    return true;
}

// The patch at the other side of a border when it is drawn and not finer than place.
bool CPatchSelection::FindNeighbour(const SScene& scene,
                                    const SPatchPlace& place,
                                    uint32_t uSide,
                                    SPatchPlace& found) const
{
    const int64_t iX = static_cast<int64_t>(place.uX) + (uSide == 0 ? -1 : uSide == 1 ? 1 : 0);
    const int64_t iZ = static_cast<int64_t>(place.uZ) + (uSide == 2 ? -1 : uSide == 3 ? 1 : 0);
    if (iX < 0 || iZ < 0 || iX >= scene.tree.GetCountX(place.uLevel) ||
        iZ >= scene.tree.GetCountZ(place.uLevel))
    {
        return false;
    }
    // Of the patches that cover the place, from the largest one down, the first that was not split
    // is the one that is drawn, unless it is out of sight.
    for (uint32_t uLevel = scene.tree.GetTopLevel();; --uLevel)
    {
        const uint32_t uShift = uLevel - place.uLevel;
        found = {uLevel, static_cast<uint32_t>(iX) >> uShift, static_cast<uint32_t>(iZ) >> uShift};
        const int64_t iMark = m_Marks[uLevel][scene.tree.GetIndex(found)];
        if (iMark != m_Frame || uLevel == place.uLevel)
        {
            return iMark != m_Frame && iMark != -m_Frame;
        }
    }
}

bool CPatchSelection::IsSplit(const CPatchTree& tree, const SPatchPlace& place) const
{
    return m_Marks[place.uLevel][tree.GetIndex(place)] == m_Frame;
}
