#pragma once

#include "host/ITerrainAccess.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CPointPass.h"
#include "tellur/stroke/IHeightRows.h"
#include "tellur/stroke/ITerrainModification.h"

#include <cstddef>
#include <memory>

// The drag in progress. Made by the terraforming mode on the press, destroyed after the release;
// destroying it before End drops it without an undo record and leaves the heights as they are.
//
// Heights come into the buffers tile by tile, when they are first written; until then source and
// destination are what the terrain has. A terrain without ITerrainAccess is read once, at the
// start.
class CTerrainModification : public ITerrainModification, private ITerrainWatcher
{
public:
    CTerrainModification() = default;
    ~CTerrainModification() override;
    CTerrainModification(const CTerrainModification&) = delete;
    CTerrainModification& operator=(const CTerrainModification&) = delete;

    bool Start(ViewId view,
               uint32_t uFlags,
               ViewPoint point,
               Terrain* pTerrain,
               ITellurBrush* pBrush) override;
    void End(ViewId view, uint32_t uFlags, ViewPoint point) override;

    bool IsInProgress() const override { return m_InProgress; }

    int OnMouseMove(ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override;
    bool Render(const SVec3* pPickedPoint) override;

    SExtents& GetExtents(SExtents& extents) const override;

    void SetExtents(const SExtents& extents) override { m_Extents = extents; }

    ITellurBrush* GetBrush() const override { return m_Brush; }

    SExtents& GetTerrainExtents(SExtents& extents) const override;
    float GetXSize() const override;
    float GetYSize() const override;
    float GetZSize() const override;

    float GetSrcHeight(int iX, int iZ) const override;
    void SetDstHeight(int iX, int iZ, float fHeight) override;
    float GetDstHeight(int iX, int iZ) const override;

    int GetBufferSizeX() const override { return m_Tiles.GetSizeX(); }

    int GetBufferSizeZ() const override { return m_Tiles.GetSizeZ(); }

    void GetVerts(const SExtents& box, CVertDataSet& set) override;
    void GetDstVerts(const SExtents& box, CVertDataSet& set) override;
    std::optional<SMergeResult> SetVerts(CVertDataSet& set, ITellurFunction* pFunction) override;
    std::optional<SMergeResult> RunPoint(const SPointInNumbers& point) override;

    const IHeightRows* GetSrcRows() const override { return GetRows(m_SourceRows); }

    const IHeightRows* GetDstRows() const override { return GetRows(m_DestRows); }

    void GiveUp() override;

    // Puts the heights of Start back, in the terrain, too. Needs no memory.
    void RestoreHeights();

    // The source heights of a tile that was taken, SHeightTile::SIDE floats a row, borrowed until
    // the next call; null where the terrain has them still.
    const float* GetPressTile(uint32_t uTileX, uint32_t uTileZ) const;

private:
    class CRows : public IHeightRows
    {
    public:
        CRows(const CTerrainModification& session, bool bDest)
            : m_Session(session)
            , m_bDest(bDest)
        {
        }

        const float* GetRow(int iX, int iZ, int iCount, float* pScratch) const override;

    private:
        const CTerrainModification& m_Session;
        bool m_bDest;
    };

    void OnBeforeHeightsChange(const SGridBox& box) override;
    void OnHeightsGo() override;

    bool InitializeBuffers();
    static void NoteLost(); // in the counters of the drags
    void FreeBuffers();
    void StoreUndoInformation();
    // changed: grows by what is written. The number of vertices written.
    size_t
    MergeSet(const CVertDataSet& set, const ITellurFunction& function, SPointChange& changed);
    SMergeResult ShowChange(const SPointChange& changed);
    void FillSet(const SExtents& box, CVertDataSet& set, const IHeightRows* pRows);
    void CopyDest(const SGridBox& box); // to the ground
    bool IsDestShown(const SGridBox& box) const;
    void ShowDest(const SGridBox& box);
    SExtents GetBox(const SGridBox& box) const; // terrain units
    float* GetGround() const;
    bool IsTerrainAsAtStart() const; // its size
    bool AreValid(int iX, int iZ) const;

    const IHeightRows* GetRows(const CRows& rows) const
    {
        return m_Tiles.HasGround() ? &rows : nullptr;
    }

    size_t GetVertexCount() const
    {
        return static_cast<size_t>(GetBufferSizeX()) * static_cast<size_t>(GetBufferSizeZ());
    }

    Terrain* m_Terrain = nullptr;       // borrowed from Start to End
    ITerrainAccess* m_Access = nullptr; // the same terrain's, until it goes; null: it has none
    ITellurBrush* m_Brush = nullptr;    // borrowed from Start to End
    bool m_InProgress = false;
    bool m_GivenUp = false; // until End nothing happens any more
    bool m_bShared = false; // others have changed heights during the drag
    CHeightTiles m_Tiles;
    std::unique_ptr<float[]> m_Whole; // the ground of a terrain without access, as it is shown
    CPointPass m_Pass;
    CRows m_SourceRows{*this, false};
    CRows m_DestRows{*this, true};
    SExtents m_Extents; // footprint of the latest operation point
};
