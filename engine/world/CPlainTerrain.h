#pragma once

#include "host/ITerrainProtection.h"
#include "host/Terrain.h"

class CTerrain;

// A terrain as a host of another make may show it: the same one, without direct access to its
// heights. Borrows it. UI thread.
class CPlainTerrain final : public Terrain, public ITerrainProtection
{
public:
    explicit CPlainTerrain(CTerrain& terrain)
        : m_Terrain(terrain)
    {
    }

    bool IsOf(const CTerrain* pTerrain) const { return &m_Terrain == pTerrain; }

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
    const uint64_t* GetProtectedRows(int32_t iSquareX, int32_t iSquareZ) const override;

private:
    CTerrain& m_Terrain;
};
