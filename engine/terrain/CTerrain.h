#pragma once

#include "engine/terrain/CDirtyRegions.h"
#include "engine/terrain/CHeightPyramid.h"
#include "engine/terrain/CNormalField.h"
#include "engine/terrain/CProtectedField.h"
#include "engine/terrain/ITerrainListener.h"
#include "host/Export.h"
#include "host/ITerrainAccess.h"
#include "host/Terrain.h"

#include <string>
#include <vector>

// A texture laid over a box of the terrain for one frame.
struct SProjectedTexture
{
    SExtents box;
    ITexture* pTexture = nullptr; // borrowed; null when nothing is projected
};

// The engine's terrain: heights in one contiguous array, normals that follow them, and the state
// that a renderer shows. Rectangular ones are allowed. Positions count from the corner of vertex
// (0, 0) and use the absolute value of the size vector. Owned by its world; UI thread.
class TELLUR_API CTerrain final : public Terrain, public ITerrainAccess, public CProtectedField
{
public:
    // Takes the heights over. The field must have valid sizes (IsTerrainSizeValid,
    // IsSizeVectorValid) and its array.
    explicit CTerrain(SHeightField&& field);
    ~CTerrain() override;
    CTerrain(const CTerrain&) = delete;
    CTerrain& operator=(const CTerrain&) = delete;

    void GetHeights(float* pDest, size_t nCount) const override;
    void SetHeights(const float* pSource, size_t nCount, const SExtents& box) override;
    void
    SetBlockHeights(int iBlockX, int iBlockZ, const SBlockEntry* pEntries, size_t nCount) override;
    bool SaveHeightMap(const char* pszPath,
                       const float* pHeights,
                       uint32_t uSizeX,
                       uint32_t uSizeZ) override;
    void GetHeightMap(float* pDest, uint32_t uVerticesPerSide) const override;
    void DrawProjectedTexture(const SExtents& box, ITexture* pTexture) override;
    bool UpdateNormals() override;
    void SetEditOverlay(uint32_t uHandle) override;
    void SetEditOverlayTransform(const SMatrix4& transform) override;
    void SetEditMaterial(const char* pszName) override;
    bool ExportToSTL(const char* pszPath, const SExtents* pBox) override;
    bool HasHeights(const float* pSource, size_t nCount, const SExtents& box) const override;
    SVec3 GetSize() const override;
    SVec3 GetSizeVector() const override;
    uint32_t GetCellsPerSide() const override;
    uint32_t GetCellsPerSideZ() const override;

    float* GetHeightRows() override { return m_Field.pHeights.get(); }

    void OnRowsWritten(const SGridBox& box) override;
    void AddWatcher(ITerrainWatcher* pWatcher) override;
    void RemoveWatcher(ITerrainWatcher* pWatcher) override;

    // A new frame starts: the projected texture is gone.
    void BeginFrame();

    // pTexture is about to be destroyed: the terrain no longer shows it.
    void ForgetTexture(const ITexture* pTexture);

    // Puts other heights, sizes or another size vector into the same terrain; the field is one as
    // for the constructor. What modes have set up, and pointers to the terrain that undo records
    // keep, stay good. Watchers are told that the heights go. Gives the heights of before.
    SHeightField ReplaceField(SHeightField&& field);

    // Whether these are the heights and sizes, bit for bit.
    bool IsSameField(const SHeightField& field) const;

    void SetListener(ITerrainListener* pListener) { m_Listener = pListener; } // borrowed; or null

    // Sets nCount heights beside one another in a row, from a column on, protected ones too. All
    // vertices are inside the terrain and all heights finite, which is not checked.
    void SetRowHeights(uint32_t uColumn, uint32_t uRow, const float* pHeights, uint32_t nCount);

    // All heights, row-major, valid until ReplaceField.
    const float* GetHeightData() const { return m_Field.pHeights.get(); }

    uint32_t GetVerticesX() const { return m_Field.uSizeX; }

    uint32_t GetVerticesZ() const { return m_Field.uSizeZ; }

    // The height at a position in terrain units, bilinear inside the cell. Positions outside, and
    // NaN, give the height at the border.
    float GetHeightAt(float fX, float fZ) const;

    // Where a half-line (terrain units, a direction of any length) first meets the ground, from
    // above or below. Ground are the two triangles of each cell, divided from its south-west corner
    // (0, 1) to its north-east corner (1, 0) as in the STL export; vertices below 0 are ground too.
    // False, and hit is left alone, for a miss, a direction of length 0 and what is no number.
    // Takes microseconds, and once after a change of heights what its vertices cost to look at.
    bool PickRay(const SVec3& origin, const SVec3& direction, SVec3& hit) const;

    // Sets y to that of the triangle under x and z. False, and point is left alone, off the
    // terrain.
    bool PickDown(SVec3& point) const;

    // Lowest and highest height of the vertices in rect, exact, mostly from whole blocks. False,
    // and nothing is written, when there is none.
    bool GetHeightRange(const SVertexRect& rect, float& fMin, float& fMax) const;

    // The unit normal of a vertex, y up; straight up outside the terrain and when there is no
    // memory. Normals are computed when they are first asked for and follow the heights at the cost
    // of what changed.
    SVec3 GetNormal(uint32_t uX, uint32_t uZ);

    // Row-major pairs (x, z) as CNormalField packs them, up to date, valid until the next call.
    // Null when there is no memory for them.
    const int16_t* GetNormals();
    // The same array, up to date for the vertices in rect only.
    const int16_t* GetNormals(const SVertexRect& rect);

    // Grows with every change of heights, unique in the process.
    uint64_t GetRevision() const { return m_Dirty.GetRevision(); }

    // The vertices whose heights changed since the reader's revision uSeen (0: it saw none), which
    // then becomes the current one, as rectangles that share no vertex, in place of what rects has.
    // False, and nothing is written, when nothing changed. Normals change one vertex further.
    bool TakeDirtyRects(uint64_t& uSeen, std::vector<SVertexRect>& rects) const;

    // The vertices from the last one at or below the box's lower corner to the first one at or
    // above its upper corner, clipped to the terrain. A NaN bound counts as the terrain's border.
    SVertexRect GetVertexRect(const SExtents& box) const;

    // What pickers work on: the heights, and their ranges as they are until the next change (null
    // when there is no memory for them).
    SHeightView GetView() const;

    const CHeightPyramid* GetPyramid() const { return FetchPyramid(); }

    const SProjectedTexture& GetProjectedTexture() const { return m_Projected; }

    uint32_t GetEditOverlay() const { return m_EditOverlay; }

    const SMatrix4& GetEditOverlayTransform() const { return m_OverlayTransform; }

    const std::string& GetEditMaterial() const { return m_EditMaterial; }

private:
    const CHeightPyramid* FetchPyramid() const;
    void OnHeightsChanged(const SVertexRect& rect);
    void TellBefore(const SVertexRect& rect); // those who keep in mind what heights were
    void TellGoing();
    SVertexRect GetBlockRect(int iBlockX, int iBlockZ) const; // its vertices on the terrain

    std::vector<ITerrainWatcher*> m_Watchers;
    ITerrainListener* m_Listener = nullptr;
    CNormalField m_Normals;
    CDirtyRegions m_Dirty;
    mutable CHeightPyramid m_Pyramid; // made when first asked for
    mutable uint64_t m_PyramidSeen = 0;
    mutable std::vector<SVertexRect> m_PyramidRects; // kept for its memory
    SProjectedTexture m_Projected;
    SMatrix4 m_OverlayTransform;
    std::string m_EditMaterial;
    uint32_t m_EditOverlay = 0;
};
