#include "editor/view/CTerrainTiles.h"

#include "engine/terrain/CNormalField.h"

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

size_t CountVertices(const SVertexRect& rect)
{
    return size_t{rect.uEndX - rect.uMinX} * (rect.uEndZ - rect.uMinZ);
}

void SetFilter(OpenGl& gl, GLint iSmaller, GLint iLarger)
{
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, iSmaller);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, iLarger);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

} // namespace

void CTerrainTiles::Reset(OpenGl& gl,
                          const SHeightView& ground,
                          uint32_t uTileCells,
                          ENormalMaker eMaker)
{
    Release(gl);
    m_TileCells = uTileCells;
    m_VerticesX = ground.uSizeX;
    m_VerticesZ = ground.uSizeZ;
    m_CountX = CountTiles(m_VerticesX, uTileCells);
    m_Tiles.resize(size_t{m_CountX} * CountTiles(m_VerticesZ, uTileCells));
    const bool bWanted =
        eMaker == ENormalMaker::Card || (eMaker == ENormalMaker::Best && !IsSoftwareRenderer(gl));
    std::string strFault; // the processor can do it
    m_bPass = bWanted && m_Pass.Make(gl, strFault);
    m_bOnCard = m_bPass;
    gl.glGenBuffers(1, &m_Staging);
}

bool CTerrainTiles::MakeTile(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ)
{
    while (gl.glGetError() != GL_NO_ERROR)
    {
    }
    SNormalTile& tile = m_Tiles[size_t{uTileZ} * m_CountX + uTileX];
    tile.vertices = GetVertices(uTileX, uTileZ);
    const auto iWidth = static_cast<GLsizei>(GetWidth(uTileX));
    const auto iDepth = static_cast<GLsizei>(GetDepth(uTileZ));
    gl.glGenTextures(1, &tile.uHeights);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uHeights);
    // Filters first: a driver that expects smaller pictures takes memory for them.
    SetFilter(gl, GL_NEAREST, GL_NEAREST);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    gl.glTexImage2D(
        GL_TEXTURE_2D, 0, GL_R32F, iWidth + 2, iDepth + 2, 0, GL_RED, GL_FLOAT, nullptr);
    gl.glGenTextures(1, &tile.uNormals);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uNormals);
    tile.uLevels = CountLevels(std::max(GetWidth(uTileX), GetDepth(uTileZ)));
    SetFilter(gl, GL_LINEAR_MIPMAP_LINEAR, GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, static_cast<GLint>(tile.uLevels) - 1);
    for (uint32_t uLevel = 0; uLevel < tile.uLevels; ++uLevel)
    {
        gl.glTexImage2D(GL_TEXTURE_2D,
                        static_cast<GLint>(uLevel),
                        SNormalTile::FORMAT,
                        std::max(1, iWidth >> uLevel),
                        std::max(1, iDepth >> uLevel),
                        0,
                        GL_RG,
                        GL_UNSIGNED_SHORT,
                        nullptr);
    }
    const bool bRoom = gl.glGetError() == GL_NO_ERROR;
    m_bOnCard = m_bOnCard && (!bRoom || m_Pass.CanDraw(gl, tile.uNormals));
    return bRoom;
}

void CTerrainTiles::Release(OpenGl& gl)
{
    for (const SNormalTile& tile : m_Tiles)
    {
        gl.glDeleteTextures(1, &tile.uHeights);
        gl.glDeleteTextures(1, &tile.uNormals);
    }
    m_Tiles.clear();
    gl.glDeleteBuffers(1, &m_Staging);
    m_Staging = 0;
    if (m_bPass)
    {
        m_Pass.Release(gl);
        m_bPass = false;
    }
}

uint32_t CTerrainTiles::GetWidth(uint32_t uTileX) const
{
    return std::min(m_TileCells + 1, m_VerticesX - uTileX * m_TileCells);
}

uint32_t CTerrainTiles::GetDepth(uint32_t uTileZ) const
{
    return std::min(m_TileCells + 1, m_VerticesZ - uTileZ * m_TileCells);
}

SVertexRect CTerrainTiles::GetVertices(uint32_t uTileX, uint32_t uTileZ) const
{
    const uint32_t uLeft = uTileX * m_TileCells;
    const uint32_t uTop = uTileZ * m_TileCells;
    return {uLeft, uTop, uLeft + GetWidth(uTileX), uTop + GetDepth(uTileZ)};
}

uint64_t CTerrainTiles::Upload(OpenGl& gl,
                               const SHeightView& ground,
                               uint32_t uTileX,
                               uint32_t uTileZ,
                               const std::vector<SVertexRect>& changed)
{
    const SNormalTile& tile = m_Tiles[size_t{uTileZ} * m_CountX + uTileX];
    const SVertexRect reach = tile.vertices.Grown(1, m_VerticesX, m_VerticesZ);
    uint64_t uBytes = 0;
    m_Parts.clear();
    for (const SVertexRect& rect : changed)
    {
        const SVertexRect part = reach.Intersection(rect);
        if (!part.IsEmpty())
        {
            m_Parts.push_back(part);
            uBytes += CountVertices(part) * sizeof(float);
        }
    }
    if (!m_Parts.empty())
    {
        SendHeights(gl, ground, tile);
        for (SVertexRect& part : m_Parts)
        {
            part = part.Grown(1, m_VerticesX, m_VerticesZ).Intersection(tile.vertices);
        }
        std::erase_if(m_Parts, [](const SVertexRect& part) { return part.IsEmpty(); });
        uBytes += MakeNormals(gl, ground, tile);
    }
    return uBytes;
}

// From a buffer whose old content the card may still read: the driver gives new memory for it.
void CTerrainTiles::SendHeights(OpenGl& gl, const SHeightView& ground, const SNormalTile& tile)
{
    gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, m_Staging);
    const bool bStaged = Stage(gl, ground);
    if (!bStaged)
    {
        gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    }
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, bStaged ? 0 : static_cast<GLint>(m_VerticesX));
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uHeights);
    size_t nOffset = 0;
    for (const SVertexRect& part : m_Parts)
    {
        const float* pDirect = ground.pHeights + size_t{part.uMinZ} * m_VerticesX + part.uMinX;
        gl.glTexSubImage2D(GL_TEXTURE_2D,
                           0,
                           static_cast<GLint>(part.uMinX + 1 - tile.vertices.uMinX),
                           static_cast<GLint>(part.uMinZ + 1 - tile.vertices.uMinZ),
                           static_cast<GLsizei>(part.uEndX - part.uMinX),
                           static_cast<GLsizei>(part.uEndZ - part.uMinZ),
                           GL_RED,
                           GL_FLOAT,
                           bStaged ? GetBufferOffset(nOffset) : pDirect);
        nOffset += CountVertices(part) * sizeof(float);
    }
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
}

// The heights of all parts, one after another. False when the card has no memory for them.
bool CTerrainTiles::Stage(OpenGl& gl, const SHeightView& ground)
{
    size_t nBytes = 0;
    for (const SVertexRect& part : m_Parts)
    {
        nBytes += CountVertices(part) * sizeof(float);
    }
    const auto iBytes = static_cast<GLsizeiptr>(nBytes);
    gl.glBufferData(GL_PIXEL_UNPACK_BUFFER, iBytes, nullptr, GL_STREAM_DRAW);
    auto* pTo = static_cast<float*>(gl.glMapBufferRange(
        GL_PIXEL_UNPACK_BUFFER, 0, iBytes, GL_MAP_WRITE_BIT | GL_MAP_INVALIDATE_BUFFER_BIT));
    if (pTo == nullptr)
    {
        return false;
    }
    for (const SVertexRect& part : m_Parts)
    {
        const size_t nWidth = part.uEndX - part.uMinX;
        for (uint32_t z = part.uMinZ; z < part.uEndZ; ++z)
        {
            const float* pRow = ground.pHeights + size_t{z} * m_VerticesX + part.uMinX;
            pTo = std::copy_n(pRow, nWidth, pTo);
        }
    }
    return gl.glUnmapBuffer(GL_PIXEL_UNPACK_BUFFER) == GL_TRUE;
}

// Those of all parts. Returns the bytes that were sent.
uint64_t CTerrainTiles::MakeNormals(OpenGl& gl, const SHeightView& ground, const SNormalTile& tile)
{
    if (m_bOnCard)
    {
        m_Pass.Draw(
            gl, tile, {m_VerticesX - 1, m_VerticesZ - 1, ground.fStepX, ground.fStepZ}, m_Parts);
        return 0;
    }
    uint64_t uBytes = 0;
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uNormals);
    for (const SVertexRect& part : m_Parts)
    {
        m_Texels.Make(ground, tile, part);
        for (uint32_t uLevel = 0; uLevel < tile.uLevels; ++uLevel)
        {
            const SVertexRect texels = tile.GetTexels(part, uLevel);
            gl.glTexSubImage2D(GL_TEXTURE_2D,
                               static_cast<GLint>(uLevel),
                               static_cast<GLint>(texels.uMinX),
                               static_cast<GLint>(texels.uMinZ),
                               static_cast<GLsizei>(texels.uEndX - texels.uMinX),
                               static_cast<GLsizei>(texels.uEndZ - texels.uMinZ),
                               GL_RG,
                               GL_UNSIGNED_SHORT,
                               m_Texels.Take(uLevel));
            uBytes += CountVertices(texels) * sizeof(uint32_t);
        }
    }
    return uBytes;
}

void CTerrainTiles::Bind(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ) const
{
    const SNormalTile& tile = m_Tiles[size_t{uTileZ} * m_CountX + uTileX];
    gl.glActiveTexture(GL_TEXTURE1);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uNormals);
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uHeights);
}
