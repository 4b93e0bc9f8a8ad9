#pragma once

#include "host/ITerrainAccess.h"
#include "tellur/modification/CDragHeights.h"
#include "tellur/modification/CPointPass.h"
#include "tellur/stroke/ITerrainModification.h"

#include <cstddef>

// The drag in progress. Made by the terraforming mode on the press, destroyed after the release;
// destroying it before End drops it without an undo record and leaves the heights as they are.
class CTerrainModification : public ITerrainModification, private ITerrainWatcher
{
public:
    CTerrainModification() = default;
    ~CTerrainModification() override = default;
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

    int GetBufferSizeX() const override { return m_Heights.GetSizeX(); }

    int GetBufferSizeZ() const override { return m_Heights.GetSizeZ(); }

    void GetVerts(const SExtents& box, CVertDataSet& set) override;
    void GetDstVerts(const SExtents& box, CVertDataSet& set) override;
    std::optional<SMergeResult> SetVerts(CVertDataSet& set, ITellurFunction* pFunction) override;
    std::optional<SMergeResult> RunPoint(const SPointInNumbers& point) override;

    const IHeightRows* GetSrcRows() const override { return m_Heights.GetSourceRows(); }

    const IHeightRows* GetDstRows() const override { return m_Heights.GetDestRows(); }

    void GiveUp() override;

    bool IsProtected(int iX, int iZ) const override
    {
        return m_Heights.GetTiles().IsProtected(iX, iZ);
    }

    // Puts the heights of Start back, in the terrain, too. Needs no memory.
    void RestoreHeights() { m_Heights.Restore(); }

    // The source heights of a tile that was taken, SHeightTile::SIDE floats a row, borrowed until
    // the next call; null where the terrain has them still.
    const float* GetPressTile(uint32_t uTileX, uint32_t uTileZ) const
    {
        return m_Heights.GetPressTile(uTileX, uTileZ);
    }

private:
    void OnBeforeHeightsChange(const SGridBox& box) override;
    void OnHeightsGo() override;

    bool InitializeBuffers(Terrain* pTerrain);
    static void NoteLost(); // in the counters of the drags
    void StoreUndoInformation();
    void FillSet(const SExtents& box, CVertDataSet& set, const IHeightRows* pRows);
    float GetSide(const char* pszOperation, float SVec3::*pSide) const;
    bool AreValid(int iX, int iZ) const;

    Terrain* GetTerrain() const { return m_Heights.GetTerrain(); } // null outside Start and End

    ITellurBrush* m_Brush = nullptr; // borrowed from Start to End
    bool m_InProgress = false;
    bool m_GivenUp = false; // until End nothing happens any more
    CDragHeights m_Heights;
    CPointPass m_Pass;
    SExtents m_Extents; // footprint of the latest operation point
};
