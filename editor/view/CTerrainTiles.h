#pragma once

#include "editor/view/CNormalPass.h"
#include "editor/view/CNormalTexels.h"
#include "editor/view/OpenGl.h"
#include "engine/terrain/SVertexRect.h"

#include <cstdint>
#include <vector>

struct SHeightView;

// Who makes the normals of a terrain's textures.
enum class ENormalMaker : uint8_t
{
    Best,      // the card, unless it is the processor, too, or cannot
    Card,      // if it can
    Processor, // and they are sent
};

// A terrain's heights as textures of the context, and its normals. A terrain may be larger than the
// largest texture, so it is cut into tiles of so many cells, which share their border vertices.
// Normals have smaller pictures of themselves for the distance. Owned by whoever draws the terrain.
class CTerrainTiles
{
public:
    // Begins anew with another terrain, whose tiles have no textures yet. ground: its sizes and
    // steps; its heights are not looked at. uTileCells: per side.
    void Reset(OpenGl& gl,
               const SHeightView& ground,
               uint32_t uTileCells,
               ENormalMaker eMaker = ENormalMaker::Best);
    void Release(OpenGl& gl);

    // Makes the textures of one tile, with nothing in them yet. False when the card has no room.
    bool MakeTile(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ);

    // Brings one tile up to date: the heights of the vertices in changed, which may lie one vertex
    // beside it, and normals one vertex further. ground: as for Reset. Returns the bytes that were
    // sent. The card may still be busy with the heights of the time before.
    uint64_t Upload(OpenGl& gl,
                    const SHeightView& ground,
                    uint32_t uTileX,
                    uint32_t uTileZ,
                    const std::vector<SVertexRect>& changed);

    // Binds the heights to texture unit 0 and the normals to 1. Texel (1, 1) of the heights is the
    // tile's first vertex.
    void Bind(OpenGl& gl, uint32_t uTileX, uint32_t uTileZ) const;

    // Vertices of the tile that starts there.
    uint32_t GetWidth(uint32_t uTileX) const;
    uint32_t GetDepth(uint32_t uTileZ) const;

    uint32_t GetTileCells() const { return m_TileCells; }

private:
    SVertexRect GetVertices(uint32_t uTileX, uint32_t uTileZ) const;
    void SendHeights(OpenGl& gl, const SHeightView& ground, const SNormalTile& tile);
    const void* Stage(OpenGl& gl, const SHeightView& ground, const SVertexRect& band);
    uint64_t MakeNormals(OpenGl& gl, const SHeightView& ground, const SNormalTile& tile);

    std::vector<SNormalTile> m_Tiles;
    std::vector<SVertexRect> m_Parts; // of the tile that is being brought up to date
    CNormalPass m_Pass;
    CNormalTexels m_Texels;
    GLuint m_Staging = 0;     // heights on their way
    size_t m_StagingUsed = 0; // bytes from its beginning on, which the card may still read
    uint32_t m_TileCells = 0;
    uint32_t m_VerticesX = 0;
    uint32_t m_VerticesZ = 0;
    uint32_t m_CountX = 0;
    bool m_bPass = false;   // it is made
    bool m_bOnCard = false; // it makes the normals
};
