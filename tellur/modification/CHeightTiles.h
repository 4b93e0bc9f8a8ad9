#pragma once

#include "host/ITerrainAccess.h"
#include "host/ITerrainProtection.h"
#include "tellur/stroke/IHeightRows.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

// The square of a terrain that a drag takes into its buffers at once. Shared by the drag and by the
// undo records that took it over; the last one gives it back. Its arrays are filled by whoever
// makes it. NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
struct SHeightTile
{
    static constexpr int SIDE = 64; // vertices
    static constexpr size_t COUNT = size_t{SIDE} * SIDE;

    // Place of a vertex of the terrain in its tile.
    static size_t GetPlace(int iX, int iZ)
    {
        return static_cast<size_t>(iZ % SIDE) * SIDE + static_cast<size_t>(iX % SIDE);
    }

    uint32_t uUsers = 1;
    uint32_t uChanged = 0;               // vertices, after the drag
    SHeightTile* pNext = nullptr;        // while it is kept for the next drag
    bool bHoles = false;                 // some source heights are below 0
    bool bWritten = false;               // destination and source may differ
    std::array<uint64_t, SIDE> aChanged; // after the drag: a bit a vertex, by rows, lowest first
    // Row-major, SIDE floats a row; beyond the terrain both are 0.
    alignas(64) std::array<float, COUNT> aSource;
    // Not a multiple of a page behind the source: loads of one would wait for stores of the other.
    alignas(64) std::array<float, 48> aGap;
    alignas(64) std::array<float, COUNT> aDest;
};

// Gives up one use of a tile; null is ignored.
void ReleaseTile(SHeightTile* pTile);
// Tiles that nobody uses are kept for the next drag, up to a limit: fresh memory costs more than
// copying heights into it. This frees them, for when the level closes.
void FreeKeptTiles();
size_t GetKeptTileCount();

// Heights of a drag, taken tile by tile when they are first touched: the source as it was at the
// start, the destination as edited so far. Both are the ground's where no tile is. The ground is
// borrowed and may move; whoever owns it has the tiles taken before others change it.
class CHeightTiles
{
public:
    CHeightTiles() = default;
    ~CHeightTiles();
    CHeightTiles(const CHeightTiles&) = delete;
    CHeightTiles& operator=(const CHeightTiles&) = delete;

    // Begins anew, without a tile, over a ground of so many vertices. False, and there is no
    // ground, when there is no memory.
    bool Reset(int iSizeX, int iSizeZ);
    void Clear(); // no tiles and no ground

    // The heights to take tiles from, row-major, as many floats a row as the ground has vertices
    // along x; null: none. Borrowed until others are set or Clear.
    void SetGround(const float* pGround) { m_Ground = pGround; }

    const float* GetGround() const { return m_Ground; }

    // Who knows which vertices are protected; borrowed as the ground. Null: none of them is.
    void SetGuard(const ITerrainProtection* pGuard) { m_Guard = pGuard; }

    // As ITerrainProtection::GetProtectedRows, of a tile.
    const uint64_t* GetProtectedRows(int iTileX, int iTileZ) const
    {
        static_assert(SHeightTile::SIDE == ITerrainProtection::SIDE);
        return m_Guard != nullptr ? m_Guard->GetProtectedRows(iTileX, iTileZ) : nullptr;
    }

    bool IsProtected(int iX, int iZ) const
    {
        const uint64_t* pRows = GetProtectedRows(iX / SHeightTile::SIDE, iZ / SHeightTile::SIDE);
        return pRows != nullptr &&
               ((pRows[iZ % SHeightTile::SIDE] >> (iX % SHeightTile::SIDE)) & 1U) != 0;
    }

    bool HasGround() const { return m_Table != nullptr && m_Ground != nullptr; }

    int GetSizeX() const { return m_SizeX; }

    int GetSizeZ() const { return m_SizeZ; }

    int GetTilesX() const { return m_TilesX; }

    int GetTilesZ() const { return m_TilesZ; }

    // Takes the tiles under the box, which lies on the ground. False without memory; those that
    // were taken stay.
    bool Take(const SGridBox& box);

    // The tile there, taken now if it was not. Null without memory.
    SHeightTile* TakeOne(int iTileX, int iTileZ);

    // The tile there, or null when it was not taken. Both numbers lie inside the table.
    SHeightTile* Find(int iTileX, int iTileZ) const
    {
        return m_Table[static_cast<size_t>(iTileZ) * static_cast<size_t>(m_TilesX) +
                       static_cast<size_t>(iTileX)];
    }

    // Heights of one vertex, which lies on the ground.
    float GetSource(int iX, int iZ) const { return *Locate(iX, iZ, &SHeightTile::aSource); }

    float GetDest(int iX, int iZ) const { return *Locate(iX, iZ, &SHeightTile::aDest); }

    // Writes the destination of a vertex, whose tile has to be taken before.
    void SetDest(int iX, int iZ, float fHeight);

    // As IHeightRows::GetRow.
    const float* GetSourceRow(int iX, int iZ, int iCount, float* pScratch) const;
    const float* GetDestRow(int iX, int iZ, int iCount, float* pScratch) const;

    // The vertices of a tile that lie on the ground: tiles at its far edges reach beyond it.
    SGridBox GetTileBox(int iTileX, int iTileZ) const;

    // The tiles that were taken, by rows of tiles: fn(tile, tile x, tile z).
    template <class TFn> void ForEach(TFn fn) const
    {
        for (int iZ = 0; iZ < m_TilesZ; ++iZ)
        {
            for (int iX = m_FirstX[iZ]; iX <= m_LastX[iZ]; ++iX)
            {
                if (SHeightTile* pTile = Find(iX, iZ))
                {
                    fn(*pTile, iX, iZ);
                }
            }
        }
    }

    size_t GetCount() const { return m_Count; }

private:
    using Heights = std::array<float, SHeightTile::COUNT>;

    const float* Locate(int iX, int iZ, Heights SHeightTile::*pHeights) const;
    const float*
    GetRow(int iX, int iZ, int iCount, float* pScratch, Heights SHeightTile::*pHeights) const;

    const float* m_Ground = nullptr;
    const ITerrainProtection* m_Guard = nullptr;
    std::unique_ptr<SHeightTile*[]> m_Table; // by rows; null: not taken
    std::unique_ptr<int[]> m_FirstX;         // of each row, the tiles that were taken
    std::unique_ptr<int[]> m_LastX;
    size_t m_Count = 0;
    int m_SizeX = 0;
    int m_SizeZ = 0;
    int m_TilesX = 0;
    int m_TilesZ = 0;
};
