#pragma once

#include "host/ITerrainAccess.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CPointPass.h"
#include "tellur/stroke/IHeightRows.h"
#include "tellur/stroke/ITerrainModification.h"

#include <cstddef>
#include <memory>

class Terrain;

// The heights of one drag, source and destination, and the way between them and the terrain:
// heights come into tiles when the drag first touches them; until then both are what the terrain
// has. What is written shows on the ground at once: the terrain's own heights, or, of a terrain
// without ITerrainAccess, a copy of them that is read once and handed over with each change.
class CDragHeights
{
public:
    CDragHeights() = default;
    ~CDragHeights();
    CDragHeights(const CDragHeights&) = delete;
    CDragHeights& operator=(const CDragHeights&) = delete;

    // Begins a drag over a terrain and ends the one before. The terrain is borrowed until Leave,
    // the watcher until Close. False, and nothing is open, when there is no memory.
    bool Open(Terrain& terrain, ITerrainWatcher& watcher);
    void Close();

    // The terrain is not asked or told anything any more; what was taken stays readable.
    void Leave() { m_pTerrain = nullptr; }

    // For when other heights have come into the terrain: what they were cannot be put back or
    // recorded any more, and the drag has no ground from here on.
    void LoseGround();

    Terrain* GetTerrain() const { return m_pTerrain; } // null outside Open and Leave

    bool IsTerrainAsAtStart() const; // its size, where there is a terrain

    CHeightTiles& GetTiles() { return m_Tiles; }

    const CHeightTiles& GetTiles() const { return m_Tiles; }

    bool HasGround() const { return m_Tiles.HasGround(); }

    int GetSizeX() const { return m_Tiles.GetSizeX(); } // vertices

    int GetSizeZ() const { return m_Tiles.GetSizeZ(); }

    size_t GetVertexCount() const
    {
        return static_cast<size_t>(GetSizeX()) * static_cast<size_t>(GetSizeZ());
    }

    // Heights of the press and as edited so far, for loops over many vertices; null without ground.
    const IHeightRows* GetSourceRows() const { return HasGround() ? &m_SourceRows : nullptr; }

    const IHeightRows* GetDestRows() const { return HasGround() ? &m_DestRows : nullptr; }

    // The source heights of a tile that was taken, borrowed until the next call; null where the
    // terrain has them still.
    const float* GetPressTile(uint32_t uTileX, uint32_t uTileZ) const;

    // The heights that a pass over the tiles writes along with the destination. Null once the
    // ground may show something else than the destination; CatchUp brings it up to date then.
    float* GetShownGround() const { return m_bShared ? nullptr : GetGround(); }

    // Called when somebody else is about to change heights: from then on the ground may differ from
    // the destination.
    void SetShared() { m_bShared = true; }

    // After a pass wrote to the tiles: where the ground did not get it, too, it does so now.
    void CatchUp(SPointChange& changed);
    // To be called after a set was merged into the tiles: that writes the destination alone.
    void PutOnGround(SPointChange& changed);
    // Tells the terrain of a change that is on the ground already, and says what it came to.
    SMergeResult Announce(const SPointChange& changed);
    // Brings ground and terrain to the destination under a box.
    void ShowDest(const SGridBox& box);
    // Puts the source back into all tiles that were written, and shows it. Needs no memory.
    void Restore();

private:
    class CRows : public IHeightRows
    {
    public:
        CRows(const CDragHeights& heights, bool bDest)
            : m_Heights(heights)
            , m_bDest(bDest)
        {
        }

        const float* GetRow(int iX, int iZ, int iCount, float* pScratch) const override;

    private:
        const CDragHeights& m_Heights;
        bool m_bDest;
    };

    float* GetGround() const;
    void CopyDest(const SGridBox& box); // to the ground
    bool IsDestShown(const SGridBox& box) const;
    SExtents GetBox(const SGridBox& box) const; // terrain units

    Terrain* m_pTerrain = nullptr;
    ITerrainAccess* m_pAccess = nullptr; // the same terrain's, until it goes; null: it has none
    ITerrainWatcher* m_pWatcher = nullptr;
    // Others have changed heights during the drag. From then on the ground may show something else
    // than the destination, so what a point writes into the tiles is copied to it afterwards.
    bool m_bShared = false;
    CHeightTiles m_Tiles;
    std::unique_ptr<float[]> m_Whole; // the ground of a terrain without access, as it is shown
    CRows m_SourceRows{*this, false};
    CRows m_DestRows{*this, true};
};
