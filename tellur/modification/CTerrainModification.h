#pragma once

#include "tellur/modification/CPlainArray.h"
#include "tellur/modification/HeightBuffers.h"
#include "tellur/stroke/ITerrainModification.h"

#include <cstddef>

struct SChangedVert;

// The drag in progress. Made by the terraforming mode on the press, destroyed after the release;
// destroying it before End drops it without an undo record and leaves the heights as they are.
class CTerrainModification : public ITerrainModification
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

    int GetBufferSizeX() const override { return m_SizeX; }

    int GetBufferSizeZ() const override { return m_SizeZ; }

    void GetVerts(const SExtents& box, CVertDataSet& set) override;
    void GetDstVerts(const SExtents& box, CVertDataSet& set) override;
    std::optional<SMergeResult> SetVerts(CVertDataSet& set, ITellurFunction* pFunction) override;

    const float* GetSrcBuffer() const override { return m_Source.pHeights.get(); }

    const float* GetDstBuffer() const override { return m_Dest.pHeights.get(); }

    void GiveUp() override;

    // Puts the heights of Start back, in the terrain, too. Needs no memory.
    void RestoreHeights();

private:
    bool InitializeBuffers();
    static void NoteLost(); // in the counters of the drags
    void FreeBuffers();
    void StoreUndoInformation();
    // changed: grows by what is written. The number of vertices written.
    size_t MergeSet(const CVertDataSet& set, const ITellurFunction& function, SExtents& changed);
    SMergeResult GetResult(const SExtents& changed, size_t nChanged) const;
    void FillSet(const SExtents& box, CVertDataSet& set, const float* pBuffer);
    template <typename TVisit> void VisitDifferences(int iZ, TVisit visit);
    bool CollectChanges(CPlainArray<SChangedVert>& verts); // false when there is no memory
    void ShowDest(const SExtents& verts);
    bool IsTerrainAsAtStart() const; // its size
    bool AreValid(int iX, int iZ) const;
    void Touch(int iX, int iZ);

    size_t GetVertexCount() const
    {
        return static_cast<size_t>(m_SizeX) * static_cast<size_t>(m_SizeZ);
    }

    Terrain* m_Terrain = nullptr;    // borrowed from Start to End
    ITellurBrush* m_Brush = nullptr; // borrowed from Start to End
    bool m_InProgress = false;
    bool m_GivenUp = false; // until End nothing happens any more
    SHeightBuffer m_Source; // heights at Start
    SHeightBuffer m_Dest;   // heights as edited so far
    int m_SizeX = 0;        // vertices of a row
    int m_SizeZ = 0;        // rows
    SExtents m_Extents;     // footprint of the latest operation point

    // Grid rectangle that SetVerts has written to; the search for changes stays inside it.
    int m_TouchedMinX = 0;
    int m_TouchedMinZ = 0;
    int m_TouchedMaxX = -1;
    int m_TouchedMaxZ = -1;
};
