#include "tellur/modification/CPointPass.h"

#include "tellur/modification/CHeightTiles.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

#include <algorithm>
#include <bit>

namespace
{

constexpr int SIDE = SHeightTile::SIDE;

// Columns of a group begin at multiples of its size.
int AlignDown(int iColumn)
{
    return iColumn / PASS_LANES * PASS_LANES;
}

void FindNearPixels(SColumnGroup& group)
{
    int iLeast = group.aFirst[0];
    int iMost = group.aFirst[0];
    for (int i = 0; i < PASS_LANES; ++i)
    {
        iLeast = std::min({iLeast, group.aFirst[i], group.aSecond[i]});
        iMost = std::max({iMost, group.aFirst[i], group.aSecond[i]});
    }
    // Columns side by side mostly find their pixels close together. Where all of them lie within
    // eight, one load and a permutation in registers do instead of a gather.
    group.iNear = iMost - iLeast < PASS_LANES ? 1 : 0;
    group.iBase = group.iNear != 0 ? iLeast : 0;
    for (int i = 0; i < PASS_LANES; ++i)
    {
        group.aFirst[i] -= group.iBase;
        group.aSecond[i] -= group.iBase;
    }
}

} // namespace

// What stays the same for all tiles of a point.
struct CPointPass::SWork
{
    const SPointInNumbers& point;
    const SGridBox& box;
    const SGround& ground;
    FnTilePass runTile;
    SPassResult& result;
};

void SPointChange::Add(int iFirstX, int iLastX, int iZ)
{
    if (box.IsEmpty())
    {
        box = {iFirstX, iZ, iLastX, iZ};
        return;
    }
    box = {std::min(box.iMinX, iFirstX),
           std::min(box.iMinZ, iZ),
           std::max(box.iMaxX, iLastX),
           std::max(box.iMaxZ, iZ)};
}

void CPointPass::SPairs::Find(const SPixelLine& line, int iSize, size_t nCount)
{
    first.resize(nCount);
    second.resize(nCount);
    firstWeights.resize(nCount);
    GetPixelPairs(line, iSize, {first.data(), second.data(), firstWeights.data()}, nCount);
}

// The columns of the box, filled up to whole groups.
void CPointPass::MakeGroups(const SPointInNumbers& point, const SGridBox& box, float fStepX)
{
    const int iFirst = AlignDown(box.iMinX);
    m_Groups.resize(static_cast<size_t>(box.iMaxX - iFirst) / PASS_LANES + 1);
    const SBrushShape& shape = point.shape;
    // Columns outside the box only fill up the first and the last group; nothing is written there.
    m_Columns.Find({iFirst, fStepX, point.center.x, shape.fExtent},
                   shape.iWidth,
                   m_Groups.size() * PASS_LANES);
    size_t nColumn = 0;
    for (SColumnGroup& group : m_Groups)
    {
        std::copy_n(m_Columns.first.data() + nColumn, PASS_LANES, group.aFirst);
        std::copy_n(m_Columns.second.data() + nColumn, PASS_LANES, group.aSecond);
        std::copy_n(m_Columns.firstWeights.data() + nColumn, PASS_LANES, group.aWeight);
        FindNearPixels(group);
        nColumn += PASS_LANES;
    }
}

// nRow: of the box.
void CPointPass::BlendRow(const SBrushShape& shape, size_t nRow, float* pRow) const
{
    const auto nWidth = static_cast<size_t>(shape.iWidth);
    BlendPixelRows(shape.pPixels + static_cast<size_t>(m_Rows.first[nRow]) * nWidth,
                   shape.pPixels + static_cast<size_t>(m_Rows.second[nRow]) * nWidth,
                   m_Rows.firstWeights[nRow],
                   pRow,
                   nWidth);
}

// The rows of one row of tiles.
bool CPointPass::RunBand(const SWork& work, int iFirstZ, int iLastZ, SPointChange& change)
{
    const SGridBox& box = work.box;
    CHeightTiles& tiles = work.ground.tiles;
    SPassTile part;
    part.iRows = iLastZ - iFirstZ + 1;
    part.pShape = m_Shape.data();
    part.nShapePitch = m_ShapePitch;
    part.nShownPitch = static_cast<size_t>(tiles.GetSizeX());
    part.fPower = work.point.shape.fPower;
    part.fHardness = work.point.shape.fHardness;
    part.fMaxHeight = work.ground.fMaxHeight;
    for (int iTileX = box.iMinX / SIDE; iTileX <= box.iMaxX / SIDE; ++iTileX)
    {
        SHeightTile* pTile = tiles.TakeOne(iTileX, iFirstZ / SIDE);
        if (pTile == nullptr)
        {
            return false;
        }
        const int iLeft = iTileX * SIDE;
        const size_t nFirstRow = SHeightTile::GetPlace(0, iFirstZ);
        part.pSource = pTile->aSource.data() + nFirstRow;
        part.pDest = pTile->aDest.data() + nFirstRow;
        part.pShown =
            work.ground.pShown != nullptr
                ? work.ground.pShown + static_cast<size_t>(iFirstZ) * part.nShownPitch + iLeft
                : nullptr;
        const uint64_t* pProtected = tiles.GetProtectedRows(iTileX, iFirstZ / SIDE);
        part.pProtected = pProtected != nullptr ? pProtected + iFirstZ % SIDE : nullptr;
        part.iFirst = std::max(box.iMinX - iLeft, 0);
        part.iEnd = std::min(box.iMaxX + 1 - iLeft, SIDE);
        part.iThere = std::min(tiles.GetSizeX() - iLeft, SIDE);
        const auto nColumn =
            static_cast<size_t>(AlignDown(iLeft + part.iFirst) - AlignDown(box.iMinX));
        part.pGroups = m_Groups.data() + nColumn / PASS_LANES;
        if (IVertexTargets* pTargets = work.point.pTargets)
        {
            const float* pHeights = work.point.rule.bFromDest ? part.pDest : part.pSource;
            const STargetRows rows = pTargets->GetTargets({iLeft + part.iFirst,
                                                           iFirstZ,
                                                           part.iEnd - part.iFirst,
                                                           part.iRows,
                                                           pHeights + part.iFirst},
                                                          m_Targets.data() + PASS_LANES);
            // The pass reads from the group's first column on, which may lie before the part.
            part.pTargets = rows.pFirst - part.iFirst % PASS_LANES;
            part.nTargetPitch = rows.nPitch;
        }
        work.runTile(work.point.rule, part, work.result);
        if (const uint64_t uColumns = work.result.uColumns; uColumns != 0)
        {
            const int iFirstX = iLeft + std::countr_zero(uColumns);
            const int iLastX = iLeft + SIDE - 1 - std::countl_zero(uColumns);
            change.Add(iFirstX, iLastX, iFirstZ + work.result.iFirstRow);
            change.Add(iFirstX, iLastX, iFirstZ + work.result.iLastRow);
            pTile->bWritten = true;
        }
    }
    return true;
}

bool CPointPass::Run(const SPointInNumbers& point,
                     const SGridBox& box,
                     const SGround& ground,
                     SPointChange& change)
{
    MakeGroups(point, box, ground.fStepX);
    m_Rows.Find({box.iMinZ, ground.fStepZ, point.center.z, point.shape.fExtent},
                point.shape.iHeight,
                static_cast<size_t>(box.iMaxZ - box.iMinZ) + 1);
    // A near group loads eight pixels wherever it begins, so each row has a group's width behind
    // it.
    m_ShapePitch = static_cast<size_t>(point.shape.iWidth) + PASS_LANES;
    m_Shape.resize(m_ShapePitch * SIDE);
    if (point.pTargets != nullptr)
    {
        m_Targets.resize(SHeightTile::COUNT + size_t{2} * PASS_LANES);
    }
    SPassResult result;
    const SWork work = {point, box, ground, GetTilePass(), result};
    bool bMemory = true;
    // One row of tiles after the other: its image rows are blended once and serve all its tiles.
    for (int iFirstZ = box.iMinZ; iFirstZ <= box.iMaxZ && bMemory;)
    {
        const int iLastZ = std::min(iFirstZ / SIDE * SIDE + SIDE - 1, box.iMaxZ);
        for (int iZ = iFirstZ; iZ <= iLastZ; ++iZ)
        {
            const auto nRow = static_cast<size_t>(iZ - iFirstZ);
            BlendRow(point.shape,
                     static_cast<size_t>(iZ - box.iMinZ),
                     m_Shape.data() + nRow * m_ShapePitch);
        }
        bMemory = RunBand(work, iFirstZ, iLastZ, change);
        iFirstZ = iLastZ + 1;
    }
    change.nVisited = result.nVisited;
    change.nChanged = result.nWritten;
    change.fMin = result.fMin;
    change.fMax = result.fMax;
    change.bDiffers = result.bDiffers;
    return bMemory;
}
