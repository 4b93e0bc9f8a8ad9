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

// Several frames of a large brush; the rest of what goes through is a terrain that comes in.
constexpr size_t STAGING_BYTES = size_t{8} << 20;

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
    m_StagingUsed = STAGING_BYTES; // it has no memory yet
}

bool CTerrainTiles::MakeTile(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ)
{
    // Faults of before would be taken for a lack of room.
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
    // Whether the card can draw normals shows only with a texture that it has made.
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
        // A normal is made from the vertices on either side, so those beside a changed height
        // change too.
        for (SVertexRect& part : m_Parts)
        {
            part = part.Grown(1, m_VerticesX, m_VerticesZ).Intersection(tile.vertices);
        }
        std::erase_if(m_Parts, [](const SVertexRect& part) { return part.IsEmpty(); });
        uBytes += MakeNormals(gl, ground, tile);
    }
    return uBytes;
}

void CTerrainTiles::SendHeights(OpenGl& gl, const SHeightView& ground, const SNormalTile& tile)
{
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uHeights);
    for (const SVertexRect& part : m_Parts)
    {
        // In bands of rows, since a whole tile is larger than the buffer.
        const size_t nRowBytes = size_t{part.uEndX - part.uMinX} * sizeof(float);
        const auto uRows = static_cast<uint32_t>(STAGING_BYTES / nRowBytes);
        for (SVertexRect band = part; band.uMinZ < part.uEndZ; band.uMinZ = band.uEndZ)
        {
            band.uEndZ = std::min(band.uMinZ + uRows, part.uEndZ);
            gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, m_Staging);
            const void* pPlace = Stage(gl, ground, band);
            // The texture begins one vertex before the tile.
            gl.glTexSubImage2D(GL_TEXTURE_2D,
                               0,
                               static_cast<GLint>(band.uMinX + 1 - tile.vertices.uMinX),
                               static_cast<GLint>(band.uMinZ + 1 - tile.vertices.uMinZ),
                               static_cast<GLsizei>(band.uEndX - band.uMinX),
                               static_cast<GLsizei>(band.uEndZ - band.uMinZ),
                               GL_RED,
                               GL_FLOAT,
                               pPlace);
        }
    }
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
}

// Copies heights to where the card reads nothing: behind what was sent before, or into new memory
// that the driver gives for the buffer while the card still reads the old one. Returns their place
// in the buffer; without memory the heights themselves, with no buffer bound.
const void* CTerrainTiles::Stage(OpenGl& gl, const SHeightView& ground, const SVertexRect& band)
{
    const size_t nWidth = band.uEndX - band.uMinX;
    const size_t nBytes = CountVertices(band) * sizeof(float);
    if (m_StagingUsed + nBytes > STAGING_BYTES)
    {
        gl.glBufferData(GL_PIXEL_UNPACK_BUFFER, STAGING_BYTES, nullptr, GL_STREAM_DRAW);
        m_StagingUsed = 0;
    }
    const float* pFirst = ground.pHeights + size_t{band.uMinZ} * m_VerticesX + band.uMinX;
    auto* pTo = static_cast<float*>(gl.glMapBufferRange(
        GL_PIXEL_UNPACK_BUFFER,
        static_cast<GLintptr>(m_StagingUsed),
        static_cast<GLsizeiptr>(nBytes),
        GL_MAP_WRITE_BIT | GL_MAP_INVALIDATE_RANGE_BIT | GL_MAP_UNSYNCHRONIZED_BIT));
    for (uint32_t z = band.uMinZ; pTo != nullptr && z < band.uEndZ; ++z)
    {
        const size_t nRow = size_t{z - band.uMinZ} * m_VerticesX;
        std::copy_n(pFirst + nRow, nWidth, pTo + (z - band.uMinZ) * nWidth);
    }
    if (pTo == nullptr || gl.glUnmapBuffer(GL_PIXEL_UNPACK_BUFFER) != GL_TRUE)
    {
        gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, static_cast<GLint>(m_VerticesX));
        return pFirst;
    }
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    const void* pPlace = GetBufferOffset(m_StagingUsed);
    m_StagingUsed += nBytes;
    return pPlace;
}

// Those of all parts. Returns the bytes that were sent.
uint64_t CTerrainTiles::MakeNormals(OpenGl& gl, const SHeightView& ground, const SNormalTile& tile)
{
    // The card makes them from the heights that it has by now, and nothing more is sent.
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
