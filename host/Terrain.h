#pragma once

#include "host/HostTypes.h"

#include <cstddef>

class ITexture;

// The level's height field. World::GetTerrain gives it; the plug-in asks at each use, because a
// level may come or go between two calls, and looks at the sizes each time. Called by the plug-in
// and by the host, on the UI thread; nothing here calls back but long writes, which report
// progress.
//
// Changing heights: GetHeights once at the start of a drag, SetHeights with the whole array after
// each point, the box saying what differs; undo writes single vertices with SetBlockHeights.
// UpdateNormals after them when light is to follow at once. Then EditorHost::OnTerrainChanged and
// RedrawViews.

// One vertex for Terrain::SetBlockHeights: three floats.
struct SBlockEntry
{
    float fLocalX = 0.0F; // 0 to 32, the vertex's column inside the block
    float fHeight = 0.0F;
    float fLocalZ = 0.0F; // 0 to 32, the row inside the block
};

// (cells x + 1) x (cells z + 1) heights, row-major, index z * (cells x + 1) + x, terrain units. A
// height below 0 marks a vertex that nobody edits. Owned by the World.
class Terrain
{
public:
    virtual ~Terrain() = default;

    // Copies the heights to pDest, null is ignored. nCount: floats there is room for; fewer than
    // the terrain has copies that many.
    virtual void GetHeights(float* pDest, size_t nCount) const = 0;

    // Replaces heights. pSource: the whole array, borrowed for the call; nCount must be the number
    // of vertices (another count, or null, is one logged line and changes nothing). box: the region
    // that differs from what the terrain has, terrain units; only the vertices under it are taken
    // and rebuilt (normals one vertex further).
    virtual void SetHeights(const float* pSource, size_t nCount, const SExtents& box) = 0;

    // Sets nCount single heights of the block of TERRAIN_BLOCK_CELLS squared cells at (iBlockX,
    // iBlockZ), unchecked: finite and within the limit is the caller's business. A vertex on a
    // border is the same in both blocks. Entries are borrowed for the call; null, and those outside
    // the block or the terrain, are skipped.
    virtual void
    SetBlockHeights(int iBlockX, int iBlockZ, const SBlockEntry* pEntries, size_t nCount) = 0;

    // Writes a ".height" file: the given heights (uSizeX * uSizeZ of them, borrowed) with this
    // terrain's size vector, or its own heights when pHeights is null and the sizes are 0. False
    // with one logged line, or when the host has cancelled it; the old file then stays.
    virtual bool
    SaveHeightMap(const char* pszPath, const float* pHeights, uint32_t uSizeX, uint32_t uSizeZ) = 0;

    // Copies all heights into a square array of uVerticesPerSide squared floats, row-major;
    // vertices the terrain lacks are 0. Null is ignored.
    virtual void GetHeightMap(float* pDest, uint32_t uVerticesPerSide) const = 0;

    // Shows the texture, borrowed until it is released, over the box until the next frame; null
    // shows none. The last call of a frame counts.
    virtual void DrawProjectedTexture(const SExtents& box, ITexture* pTexture) = 0;

    // Makes the normals of what has changed follow; a terrain may put the work off until somebody
    // reads them. True when heights have changed since the last call.
    virtual bool UpdateNormals() = 0;

    // What is laid over the ground while a tool needs it, each until it is set again: a texture of
    // World::RegisterTerrainTexture (0 for none), where it lies, a material (null or "" for none).
    virtual void SetEditOverlay(uint32_t uHandle) = 0;
    virtual void SetEditOverlayTransform(const SMatrix4& transform) = 0;
    virtual void SetEditMaterial(const char* pszName) = 0;

    // Writes an STL file: the cells wholly inside pBox, or all of them when it is null. False with
    // one logged line, and when it is cancelled; the old file then stays.
    virtual bool ExportToSTL(const char* pszPath, const SExtents* pBox) = 0;

    // Whether SetHeights with these, borrowed, would change no height. False where the terrain
    // cannot tell.
    virtual bool
    HasHeights(const float* /*pSource*/, size_t /*nCount*/, const SExtents& /*box*/) const
    {
        return false;
    }

    virtual SVec3 GetSize() const = 0;       // component-wise absolute value; y is the height limit
    virtual SVec3 GetSizeVector() const = 0; // as it was given, components may be negative
    virtual uint32_t GetCellsPerSide() const = 0;  // along x, 1 at least
    virtual uint32_t GetCellsPerSideZ() const = 0; // along z, 1 at least
};
