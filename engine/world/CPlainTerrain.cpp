#include "engine/world/CPlainTerrain.h"

#include "engine/terrain/CTerrain.h"

void CPlainTerrain::GetHeights(float* pDest, size_t nCount) const
{
    m_Terrain.GetHeights(pDest, nCount);
}

void CPlainTerrain::SetHeights(const float* pSource, size_t nCount, const SExtents& box)
{
    m_Terrain.SetHeights(pSource, nCount, box);
}

void CPlainTerrain::SetBlockHeights(int iBlockX,
                                    int iBlockZ,
                                    const SBlockEntry* pEntries,
                                    size_t nCount)
{
    m_Terrain.SetBlockHeights(iBlockX, iBlockZ, pEntries, nCount);
}

bool CPlainTerrain::SaveHeightMap(const char* pszPath,
                                  const float* pHeights,
                                  uint32_t uSizeX,
                                  uint32_t uSizeZ)
{
    return m_Terrain.SaveHeightMap(pszPath, pHeights, uSizeX, uSizeZ);
}

void CPlainTerrain::GetHeightMap(float* pDest, uint32_t uVerticesPerSide) const
{
    m_Terrain.GetHeightMap(pDest, uVerticesPerSide);
}

void CPlainTerrain::DrawProjectedTexture(const SExtents& box, ITexture* pTexture)
{
    m_Terrain.DrawProjectedTexture(box, pTexture);
}

bool CPlainTerrain::UpdateNormals()
{
    return m_Terrain.UpdateNormals();
}

void CPlainTerrain::SetEditOverlay(uint32_t uHandle)
{
    m_Terrain.SetEditOverlay(uHandle);
}

void CPlainTerrain::SetEditOverlayTransform(const SMatrix4& transform)
{
    m_Terrain.SetEditOverlayTransform(transform);
}

void CPlainTerrain::SetEditMaterial(const char* pszName)
{
    m_Terrain.SetEditMaterial(pszName);
}

bool CPlainTerrain::ExportToSTL(const char* pszPath, const SExtents* pBox)
{
    return m_Terrain.ExportToSTL(pszPath, pBox);
}

bool CPlainTerrain::HasHeights(const float* pSource, size_t nCount, const SExtents& box) const
{
    return m_Terrain.HasHeights(pSource, nCount, box);
}

SVec3 CPlainTerrain::GetSize() const
{
    return m_Terrain.GetSize();
}

SVec3 CPlainTerrain::GetSizeVector() const
{
    return m_Terrain.GetSizeVector();
}

uint32_t CPlainTerrain::GetCellsPerSide() const
{
    return m_Terrain.GetCellsPerSide();
}

uint32_t CPlainTerrain::GetCellsPerSideZ() const
{
    return m_Terrain.GetCellsPerSideZ();
}

const uint64_t* CPlainTerrain::GetProtectedRows(int32_t iSquareX, int32_t iSquareZ) const
{
    return m_Terrain.GetProtectedRows(iSquareX, iSquareZ);
}
