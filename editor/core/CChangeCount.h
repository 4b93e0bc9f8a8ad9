#pragma once

#include "engine/terrain/SVertexRect.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class CWorld;

// Counts the vertices of the open terrain that changed since a moment, each once however often it
// changed: what an undo record of the change will hold. Counted in whole squares, so it is a little
// more. Takes a byte a square and keeps it; where there is no memory for that, the rectangle round
// all that changed counts. Owned by the host.
class CChangeCount
{
public:
    explicit CChangeCount(CWorld& world); // borrowed

    // Counts from here on, on the terrain that is open now.
    void Start();
    // Takes in what the terrain says has changed since the last call. Cheap when nothing did.
    void Follow();
    // Forgets what was counted: a record holds it, or its terrain is gone.
    void Clear();

    size_t GetCount() const { return m_Count; }

private:
    void Add(const SVertexRect& rect);

    CWorld& m_World;
    std::unique_ptr<uint8_t[]> m_Squares; // row by row, 1: changed; null without memory
    SVertexRect m_Changed;                // all of it lies inside
    uint32_t m_SizeX = 0;                 // vertices of the terrain
    uint32_t m_SizeZ = 0;
    uint64_t m_Seen = 0; // revision of the terrain
    size_t m_Count = 0;
    std::vector<SVertexRect> m_Rects; // kept for its memory
};
