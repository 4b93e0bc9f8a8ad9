#pragma once

#include "host/HostTypes.h"

#include <cstddef>

class ITexture;

// One vertex for Terrain::SetBlockHeights: three floats.
struct SBlockEntry
{
    float fLocalX = 0.0F; // 0 to 32, the vertex's column inside the block
    float fHeight = 0.0F;
    float fLocalZ = 0.0F; // 0 to 32, the row inside the block
};

// The level's height field: (cells x + 1) x (cells z + 1) heights, row-major, index
// z * (cells x + 1) + x, terrain units. Owned by the World; asked for anew at each use. UI thread.
class Terrain
{
public:
    virtual ~Terrain() = default;

    // Copies the heights to pDest. nCount: floats there is room for; fewer than the terrain has
    // copies that many.
    virtual void GetHeights(float* pDest, size_t nCount) const = 0;

    // Replaces all heights. pSource: the whole array, borrowed for the call; nCount must be the
    // number of vertices (another count changes nothing). box: the region that differs from what
    // the terrain has; only the vertices under it are taken and rebuilt (normals one vertex
    // further).
    virtual void SetHeights(const float* pSource, size_t nCount, const SExtents& box) = 0;

    // Sets single heights of the block of 32 x 32 cells at (iBlockX, iBlockZ). Entries outside the
    // block or the terrain are skipped.
    virtual void
    SetBlockHeights(int iBlockX, int iBlockZ, const SBlockEntry* pEntries, size_t nCount) = 0;

    // Writes a ".height" file: the given heights (uSizeX x uSizeZ vertices) with this terrain's
    // size vector, or its own heights when pHeights is null and the sizes are 0. False with one
    // logged line; the old file then stays.
    virtual bool
    SaveHeightMap(const char* pszPath, const float* pHeights, uint32_t uSizeX, uint32_t uSizeZ) = 0;

    // Copies all heights into a square array of uVerticesPerSide squared floats, row-major;
    // vertices the terrain lacks are 0.
    virtual void GetHeightMap(float* pDest, uint32_t uVerticesPerSide) const = 0;

    // Shows the texture over the box until the next frame (brush preview). pTexture: borrowed.
    virtual void DrawProjectedTexture(const SExtents& box, ITexture* pTexture) = 0;

    // Brings every stale normal up to date; true when there was something to do.
    virtual bool UpdateNormals() = 0;

    virtual void SetEditOverlay(uint32_t uHandle) = 0; // World::RegisterTerrainTexture; 0 for none
    virtual void SetEditOverlayTransform(const SMatrix4& transform) = 0;
    virtual void SetEditMaterial(const char* pszName) = 0; // null or "" for none

    // Writes an STL file: the cells wholly inside pBox, or all of them when it is null. False with
    // one logged line.
    virtual bool ExportToSTL(const char* pszPath, const SExtents* pBox) = 0;

    // Whether SetHeights with these would change no height. False where the terrain cannot tell.
    virtual bool
    HasHeights(const float* /*pSource*/, size_t /*nCount*/, const SExtents& /*box*/) const
    {
        return false;
    }

    virtual SVec3 GetSize() const = 0;       // component-wise absolute value; y is the height limit
    virtual SVec3 GetSizeVector() const = 0; // as it was given, components may be negative
    virtual uint32_t GetCellsPerSide() const = 0;  // along x
    virtual uint32_t GetCellsPerSideZ() const = 0; // along z
};
