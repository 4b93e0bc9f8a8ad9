#pragma once

#include "editor/view/CCoarseGround.h"
#include "editor/view/CPatchTree.h"
#include "editor/view/CTerrainTiles.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <vector>

class CTerrain;

// What all views of a terrain draw from: its heights and normals on the graphics card and the
// quadtree over it. One for all renderers whose contexts share their objects; the first one that
// draws after a change brings it up to date for the others. A large terrain comes in tile by tile,
// so that no frame waits for all of it, and has a coarse copy of its whole ground until then.
class CTerrainCopies
{
public:
    static constexpr uint32_t TILE_CELLS = 2048;
    static constexpr uint64_t ALL_BYTES = UINT64_MAX;

    // uTileCells: cells per side of one tile, a power of two from 64 on. uCoarseCells: of the
    // coarse copy, at most, as far as tiles allow.
    explicit CTerrainCopies(uint32_t uTileCells = TILE_CELLS,
                            uint32_t uCoarseCells = CCoarseGround::MOST_CELLS);

    // One renderer more, and one less; with the last one the textures go back to the context,
    // which is current.
    void Join() { ++m_Users; }

    void Leave(OpenGl& gl);

    // Brings changes up to date until uMostBytes were sent, or a little more: first those of the
    // tiles that are there, all of them at once unless they are several times as much, then the
    // other tiles, nearest to the eye first; until its turn has come the coarse ground stands for a
    // tile. Where there is none tiles show what they have.
    // uSent: grows by the bytes. False, with one logged line per terrain, when the card has no room
    // for it. Draws where it needs to: viewport, program, arrays and texture units are others
    // afterwards, the frame that is drawn into is the same.
    bool
    Follow(OpenGl& gl, CTerrain& terrain, const SVec3& eye, uint64_t uMostBytes, uint64_t& uSent);

    bool IsComplete() const { return m_Missing == 0 && !m_bPending; } // nothing is left to send

    bool HasTile(uint32_t uTileX, uint32_t uTileZ) const
    {
        return m_States[size_t{uTileZ} * m_CountX + uTileX].bThere;
    }

    const CPatchTree& GetTree() const { return m_Tree; }

    const CTerrainTiles& GetTiles() const { return m_Tiles; }

    const CCoarseGround& GetCoarse() const { return m_Coarse; } // in place of missing tiles

private:
    struct STileState
    {
        SVertexRect whole;                // its vertices
        std::vector<SVertexRect> pending; // of them and of those beside it
        bool bBegun = false;              // it has textures
        bool bThere = false;              // and all that was once pending is in them
    };

    void Reset(OpenGl& gl, const CTerrain& terrain);
    static uint64_t CountPending(const STileState& tile);
    uint64_t CountPending() const; // of all
    void AddPending();
    void Begin(OpenGl& gl, STileState& tile);
    uint64_t BringIn(OpenGl& gl, const CTerrain& terrain, STileState& tile, uint64_t uMostBytes);
    void TakePending(STileState& tile, uint64_t uMostBytes);
    void Complete(const CTerrain& terrain, STileState& tile);
    bool BringInCoarse(OpenGl& gl, const CTerrain& terrain, uint64_t uMostBytes, uint64_t& uSent);
    bool PutAside(OpenGl& gl, const CTerrain& terrain, uint64_t uRest);
    uint64_t FollowCoarse(OpenGl& gl, const CTerrain& terrain);
    STileState* FindNearestMissing(const CTerrain& terrain, const SVec3& eye);
    void LetOthersSee(OpenGl& gl);

    CTerrainTiles m_Tiles;
    CCoarseGround m_Coarse;
    CPatchTree m_Tree;
    std::vector<STileState> m_States;
    std::vector<SVertexRect> m_Changed;   // since the last frame; kept for its memory
    std::vector<SVertexRect> m_Parts;     // of a tile, on their way
    const CTerrain* m_pTerrain = nullptr; // for comparing only
    GLsync m_Fence = nullptr;             // behind the last change of a texture
    uint64_t m_Seen = 0;                  // revision of its heights
    uint32_t m_TileCells;
    uint32_t m_CoarseCells;
    uint32_t m_VerticesX = 0;
    uint32_t m_VerticesZ = 0;
    uint32_t m_CountX = 0; // tiles in a row
    uint32_t m_Missing = 0;
    uint32_t m_Users = 0;
    bool m_bPending = false; // tiles that are there wait for their turn
    bool m_bNoRoom = false;
};
