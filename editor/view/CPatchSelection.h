#pragma once

#include "editor/view/CPatchTree.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <vector>

struct SFrustum;
struct SViewProjection;

// One patch as the vertex shader takes it.
struct SPatchInstance
{
    int32_t iX = 0; // first vertex
    int32_t iZ = 0;
    int32_t iStride = 1; // cells a square is wide
    // For each border (low x, high x, low z, high z; 4 bits each, lowest first): how many levels
    // coarser the neighbour is. The border's vertices fall on the neighbour's then.
    int32_t iCoarser = 0;
};

// The patches of one top-level patch, a range of the instances.
struct SPatchRange
{
    uint32_t uTileX = 0;
    uint32_t uTileZ = 0;
    uint32_t uFirst = 0;
    uint32_t uCount = 0;
};

// What a picture asks of the levels of detail.
struct SDetail
{
    float fPixels = 1.5F; // errors above this are worth a split
    uint32_t uMaxPatches = 400;
    SVec3 cell; // terrain units of a cell, x and z
};

// Chooses the patches of one frame: the worst error on the screen is split first, until all errors
// are small enough or the patches are used up. Neighbours meet vertex on vertex, so there are no
// cracks. Owned by the renderer; its memory is reused from frame to frame.
class CPatchSelection
{
public:
    void Select(const CPatchTree& tree, const SViewProjection& view, const SDetail& detail);

    // Grouped by range, near ones first in each.
    const std::vector<SPatchInstance>& GetInstances() const { return m_Instances; }

    const std::vector<SPatchRange>& GetRanges() const { return m_Ranges; } // near ones first

private:
    // A patch border drops this many levels of vertices and stays inside the patch; the rest is
    // split, unless the tree knows of nothing finer.
    static constexpr uint32_t MAX_STEP = CPatchTree::PATCH_SHIFT;

    struct SCandidate
    {
        float fPixels = 0.0F; // error on the screen
        float fDistance = 0.0F;
        SPatchPlace place;
    };

    struct SScene;

    void Begin(const CPatchTree& tree);
    void Refine(const SScene& scene);
    void Balance(const SScene& scene);
    void Emit(const SScene& scene);
    void AddChildren(const SScene& scene, const SPatchPlace& place, std::vector<SCandidate>& to);
    bool Look(const SScene& scene, const SPatchPlace& place, SCandidate& candidate);
    bool FindNeighbour(const SScene& scene,
                       const SPatchPlace& place,
                       uint32_t uSide,
                       SPatchPlace& found) const;
    bool IsSplit(const CPatchTree& tree, const SPatchPlace& place) const;

    std::vector<SPatchInstance> m_Instances;
    std::vector<SPatchRange> m_Ranges;
    std::vector<SCandidate> m_Heap;
    std::vector<SCandidate> m_Leaves;
    // Of each patch of each level: the frame in which it was split, or its negative for the frame
    // in which it was out of sight.
    std::vector<std::vector<int64_t>> m_Marks;
    int64_t m_Frame = 0;
};
