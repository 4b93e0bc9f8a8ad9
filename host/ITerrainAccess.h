#pragma once

#include <cstdint>

// The heights of a terrain themselves, for a tool whose work is to cost what it touches: it reads
// and writes them where they lie instead of handing over copies of all. Looked for with
// dynamic_cast from the Terrain pointer; a tool uses Terrain::GetHeights and SetHeights where it is
// null. UI thread.
//
// Order of calls: AddWatcher before the first read; GetHeightRows for each use, since other heights
// may have come since the last one; OnRowsWritten after each write, before anything else is called;
// RemoveWatcher at the end. What ITerrainProtection protects is left alone by whoever writes.

// Vertices, both corners inclusive.
struct SGridBox
{
    int32_t iMinX = 0;
    int32_t iMinZ = 0;
    int32_t iMaxX = -1;
    int32_t iMaxZ = -1;

    bool IsEmpty() const { return iMinX > iMaxX || iMinZ > iMaxZ; }
};

// Whoever keeps in mind what heights were. Calls no operation that changes heights; one that has no
// memory for what they were may put its own writes back, with OnRowsWritten.
class ITerrainWatcher
{
public:
    virtual ~ITerrainWatcher() = default;

    // Heights in the box are about to change by something else than ITerrainAccess; they are still
    // what they were.
    virtual void OnBeforeHeightsChange(const SGridBox& box) = 0;
    // All heights go: others take their place, or the terrain is destroyed. The watcher is removed
    // already and must not use the terrain any more.
    virtual void OnHeightsGo() = 0;
};

// One tool at a time writes this way: watchers are not told of what it writes.
class ITerrainAccess
{
public:
    virtual ~ITerrainAccess() = default;

    // All heights, row-major as for Terrain::GetHeights, to read and to write. Whoever writes keeps
    // them finite and leaves those below 0 alone. Borrowed until OnHeightsGo.
    virtual float* GetHeightRows() = 0;
    // Heights in the box, which lies on the terrain, were written; an empty one is ignored.
    virtual void OnRowsWritten(const SGridBox& box) = 0;
    // pWatcher: borrowed until it is removed or told that the heights go. Adding one twice and
    // removing one that is not there do nothing.
    virtual void AddWatcher(ITerrainWatcher* pWatcher) = 0;
    virtual void RemoveWatcher(ITerrainWatcher* pWatcher) = 0;
};
