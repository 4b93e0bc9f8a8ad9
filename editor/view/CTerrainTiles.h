#pragma once

#include "editor/view/OpenGl.h"
#include "engine/terrain/SVertexRect.h"

#include <cstdint>
#include <vector>

class CTerrain;

// The terrain's heights and normals as textures of the context. A terrain may be larger than the
// largest texture, so it is cut into tiles of so many cells, which share their border vertices.
// Normals have smaller pictures of themselves for the distance. Owned by the renderer.
class CTerrainTiles
{
public:
    // Another terrain, without textures so far. uTileCells: per side.
    void Reset(OpenGl& gl, const CTerrain& terrain, uint32_t uTileCells);
    void Release(OpenGl& gl);

    // The textures of one tile; nothing is in them yet. False when the card has no room.
    bool MakeTile(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ);

    // Brings one tile up to date, tile are its vertices: the heights in changed, and normals one
    // vertex further. Returns the bytes that were sent.
    uint64_t
    Upload(OpenGl& gl, CTerrain& terrain, const SVertexRect& tile, const SVertexRect& changed);

    // Binds the heights to texture unit 0 and the normals to 1.
    void Bind(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ) const;

    // Vertices of the tile that starts there.
    uint32_t GetWidth(uint32_t uTileX) const;
    uint32_t GetDepth(uint32_t uTileZ) const;

    bool HasNormals() const { return m_bNormals; } // else there is no memory for them

private:
    struct STile
    {
        GLuint uHeights = 0;
        GLuint uNormals = 0;
    };

    const STile& GetTile(uint32_t uTileX, uint32_t uTileZ) const
    {
        return m_Tiles[size_t{uTileZ} * m_CountX + uTileX];
    }

    int16_t* TakeMeans(const int16_t* pNormals,
                       const SVertexRect& tile,
                       uint32_t uRow,
                       uint32_t uMinX,
                       uint32_t uEndX,
                       uint32_t uLevel,
                       int16_t* pTexel) const;
    uint64_t UploadLevel(OpenGl& gl,
                         const int16_t* pNormals,
                         const SVertexRect& tile,
                         const SVertexRect& changed,
                         uint32_t uLevel);

    std::vector<STile> m_Tiles;
    std::vector<int16_t> m_Scratch;
    uint32_t m_TileCells = 0;
    uint32_t m_VerticesX = 0;
    uint32_t m_VerticesZ = 0;
    uint32_t m_CountX = 0;
    bool m_bNormals = false;
};
