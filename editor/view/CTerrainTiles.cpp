#include "editor/view/CTerrainTiles.h"

#include "engine/terrain/CTerrain.h"

#include <algorithm>
#include <bit>

namespace
{

uint32_t CountTiles(uint32_t uVertices, uint32_t uTileCells)
{
    return std::max(1U, (uVertices - 1 + uTileCells - 1) / uTileCells);
}

uint32_t CountLevels(uint32_t uSize)
{
    return static_cast<uint32_t>(std::bit_width(uSize));
}

void SetFilter(OpenGl& gl, GLint iSmaller, GLint iLarger)
{
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, iSmaller);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, iLarger);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

} // namespace

void CTerrainTiles::Reset(OpenGl& gl, const CTerrain& terrain, uint32_t uTileCells)
{
    Release(gl);
    m_TileCells = uTileCells;
    m_VerticesX = terrain.GetVerticesX();
    m_VerticesZ = terrain.GetVerticesZ();
    m_CountX = CountTiles(m_VerticesX, uTileCells);
    m_Tiles.resize(size_t{m_CountX} * CountTiles(m_VerticesZ, uTileCells));
}

bool CTerrainTiles::MakeTile(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ)
{
    while (gl.glGetError() != GL_NO_ERROR)
    {
    }
    STile& tile = m_Tiles[size_t{uTileZ} * m_CountX + uTileX];
    const auto iWidth = static_cast<GLsizei>(GetWidth(uTileX));
    const auto iDepth = static_cast<GLsizei>(GetDepth(uTileZ));
    gl.glGenTextures(1, &tile.uHeights);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uHeights);
    // Filters first: a driver that expects smaller pictures takes memory for them.
    SetFilter(gl, GL_NEAREST, GL_NEAREST);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    gl.glTexImage2D(GL_TEXTURE_2D, 0, GL_R32F, iWidth, iDepth, 0, GL_RED, GL_FLOAT, nullptr);
    gl.glGenTextures(1, &tile.uNormals);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uNormals);
    const uint32_t uLevels = CountLevels(std::max(GetWidth(uTileX), GetDepth(uTileZ)));
    SetFilter(gl, GL_LINEAR_MIPMAP_LINEAR, GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, static_cast<GLint>(uLevels) - 1);
    for (uint32_t uLevel = 0; uLevel < uLevels; ++uLevel)
    {
        gl.glTexImage2D(GL_TEXTURE_2D,
                        static_cast<GLint>(uLevel),
                        GL_RG16_SNORM,
                        std::max(1, iWidth >> uLevel),
                        std::max(1, iDepth >> uLevel),
                        0,
                        GL_RG,
                        GL_SHORT,
                        nullptr);
    }
    return gl.glGetError() == GL_NO_ERROR;
}

void CTerrainTiles::Release(OpenGl& gl)
{
    for (const STile& tile : m_Tiles)
    {
        gl.glDeleteTextures(1, &tile.uHeights);
        gl.glDeleteTextures(1, &tile.uNormals);
    }
    m_Tiles.clear();
}

uint32_t CTerrainTiles::GetWidth(uint32_t uTileX) const
{
    return std::min(m_TileCells + 1, m_VerticesX - uTileX * m_TileCells);
}

uint32_t CTerrainTiles::GetDepth(uint32_t uTileZ) const
{
    return std::min(m_TileCells + 1, m_VerticesZ - uTileZ * m_TileCells);
}

uint64_t CTerrainTiles::Upload(OpenGl& gl,
                               CTerrain& terrain,
                               const SVertexRect& tile,
                               const SVertexRect& changed)
{
    const STile& copies = GetTile(tile.uMinX / m_TileCells, tile.uMinZ / m_TileCells);
    uint64_t uBytes = 0;
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    const SVertexRect part = tile.Intersection(changed);
    if (!part.IsEmpty())
    {
        gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, static_cast<GLint>(m_VerticesX));
        gl.glBindTexture(GL_TEXTURE_2D, copies.uHeights);
        gl.glTexSubImage2D(GL_TEXTURE_2D,
                           0,
                           static_cast<GLint>(part.uMinX - tile.uMinX),
                           static_cast<GLint>(part.uMinZ - tile.uMinZ),
                           static_cast<GLsizei>(part.uEndX - part.uMinX),
                           static_cast<GLsizei>(part.uEndZ - part.uMinZ),
                           GL_RED,
                           GL_FLOAT,
                           terrain.GetHeightData() + size_t{part.uMinZ} * m_VerticesX + part.uMinX);
        uBytes += uint64_t{part.uEndX - part.uMinX} * (part.uEndZ - part.uMinZ) * sizeof(float);
    }
    const SVertexRect normals = tile.Intersection(changed.Grown(1, m_VerticesX, m_VerticesZ));
    // The smaller pictures look at normals of the whole tile.
    const int16_t* pNormals = terrain.GetNormals(tile);
    m_bNormals = pNormals != nullptr;
    if (m_bNormals && !normals.IsEmpty())
    {
        const uint32_t uSide = std::max(tile.uEndX - tile.uMinX, tile.uEndZ - tile.uMinZ);
        gl.glBindTexture(GL_TEXTURE_2D, copies.uNormals);
        for (uint32_t uLevel = 0; uLevel < CountLevels(uSide); ++uLevel)
        {
            uBytes += UploadLevel(gl, pNormals, tile, normals, uLevel);
        }
    }
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    return uBytes;
}

// A texel of a smaller picture is the mean of four normals inside its block. They are taken from
// the terrain itself, so that nothing has to be kept between uploads. One row; returns its end.
int16_t* CTerrainTiles::TakeMeans(const int16_t* pNormals,
                                  const SVertexRect& tile,
                                  uint32_t uRow,
                                  uint32_t uMinX,
                                  uint32_t uEndX,
                                  uint32_t uLevel,
                                  int16_t* pTexel) const
{
    const uint32_t uNear = (1U << uLevel) / 4;
    const uint32_t uFar = (1U << uLevel) * 3 / 4;
    const uint32_t uTop = tile.uMinZ + (uRow << uLevel);
    const int16_t* pNear =
        pNormals + size_t{std::min(uTop + uNear, m_VerticesZ - 1)} * m_VerticesX * 2;
    const int16_t* pFar =
        pNormals + size_t{std::min(uTop + uFar, m_VerticesZ - 1)} * m_VerticesX * 2;
    for (uint32_t x = uMinX; x < uEndX; ++x)
    {
        const uint32_t uLeft = tile.uMinX + (x << uLevel);
        const size_t nNear = size_t{std::min(uLeft + uNear, m_VerticesX - 1)} * 2;
        const size_t nFar = size_t{std::min(uLeft + uFar, m_VerticesX - 1)} * 2;
        for (size_t i = 0; i < 2; ++i)
        {
            const int iSum = pNear[nNear + i] + pNear[nFar + i] + pFar[nNear + i] + pFar[nFar + i];
            *pTexel++ = static_cast<int16_t>(iSum / 4);
        }
    }
    return pTexel;
}

uint64_t CTerrainTiles::UploadLevel(OpenGl& gl,
                                    const int16_t* pNormals,
                                    const SVertexRect& tile,
                                    const SVertexRect& changed,
                                    uint32_t uLevel)
{
    const uint32_t uWidth = std::max(1U, (tile.uEndX - tile.uMinX) >> uLevel);
    const uint32_t uDepth = std::max(1U, (tile.uEndZ - tile.uMinZ) >> uLevel);
    const uint32_t uMinX = std::min((changed.uMinX - tile.uMinX) >> uLevel, uWidth - 1);
    const uint32_t uMinZ = std::min((changed.uMinZ - tile.uMinZ) >> uLevel, uDepth - 1);
    const uint32_t uEndX = std::min(((changed.uEndX - 1 - tile.uMinX) >> uLevel) + 1, uWidth);
    const uint32_t uEndZ = std::min(((changed.uEndZ - 1 - tile.uMinZ) >> uLevel) + 1, uDepth);
    const int16_t* pSource =
        pNormals + (size_t{tile.uMinZ + uMinZ} * m_VerticesX + tile.uMinX + uMinX) * 2;
    const size_t nTexels = size_t{uEndX - uMinX} * (uEndZ - uMinZ);
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, uLevel == 0 ? static_cast<GLint>(m_VerticesX) : 0);
    if (uLevel > 0)
    {
        m_Scratch.resize(nTexels * 2);
        int16_t* pTexel = m_Scratch.data();
        for (uint32_t z = uMinZ; z < uEndZ; ++z)
        {
            pTexel = TakeMeans(pNormals, tile, z, uMinX, uEndX, uLevel, pTexel);
        }
        pSource = m_Scratch.data();
    }
    gl.glTexSubImage2D(GL_TEXTURE_2D,
                       static_cast<GLint>(uLevel),
                       static_cast<GLint>(uMinX),
                       static_cast<GLint>(uMinZ),
                       static_cast<GLsizei>(uEndX - uMinX),
                       static_cast<GLsizei>(uEndZ - uMinZ),
                       GL_RG,
                       GL_SHORT,
                       pSource);
    return nTexels * 2 * sizeof(int16_t);
}

void CTerrainTiles::Bind(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ) const
{
    const STile& tile = GetTile(uTileX, uTileZ);
    gl.glActiveTexture(GL_TEXTURE1);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uNormals);
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uHeights);
}
