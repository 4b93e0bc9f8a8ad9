#include "tellur/modification/CVertDataSet.h"

#include "host/Log.h"
#include "host/Terrain.h"
#include "host/VectorLoop.h"
#include "tellur/modification/GridRange.h"
#include "tellur/stroke/IHeightRows.h"

#include <algorithm>
#include <cmath>

namespace
{

// A buffer of all heights.
class CBufferRows : public IHeightRows
{
public:
    CBufferRows(const float* pBuffer, int iSizeX)
        : m_Buffer(pBuffer)
        , m_SizeX(iSizeX)
    {
    }

    const float* GetRow(int iX, int iZ, int /*iCount*/, float* /*pScratch*/) const override
    {
        return m_Buffer + static_cast<ptrdiff_t>(iZ) * m_SizeX + iX;
    }

private:
    const float* m_Buffer;
    int m_SizeX;
};

TELLUR_LOOP_BODY bool FindNegative(const float* pHeights, size_t nCount)
{
    int32_t iAny = 0;
    for (size_t i = 0; i < nCount; ++i)
    {
        iAny |= static_cast<int32_t>(pHeights[i] < 0.0F);
    }
    return iAny != 0;
}

} // namespace

bool HasNegative(const float* pHeights, size_t nCount)
{
    return CVectorLoop<FindNegative>::Run(pHeights, nCount);
}

void CVertDataSet::Reset()
{
    m_Terrain = nullptr;
    m_Initialized = false;
    m_Candidates.clear();
    m_Verts.Clear();
}

bool CVertDataSet::Initialize(Terrain* pTerrain, const SExtents& box)
{
    Reset();
    m_Terrain = pTerrain;
    if (m_Terrain == nullptr)
    {
        CrashLog("[CVertDataSet::Initialize] no terrain\n");
        return false;
    }
    FillVertsList(box);
    m_Initialized = true;
    return true;
}

void CVertDataSet::FillVertsList(const SExtents& box)
{
    const SVec3 size = m_Terrain->GetSize();
    const float fStepX = size.x / static_cast<float>(m_Terrain->GetCellsPerSide());
    const float fStepZ = size.z / static_cast<float>(m_Terrain->GetCellsPerSideZ());
    m_Verts.SetSteps(fStepX, fStepZ);

    int ixFirst = 0;
    int ixLast = 0;
    int izFirst = 0;
    int izLast = 0;
    if (!GetGridRange(box.min.x, box.max.x, fStepX, ixFirst, ixLast) ||
        !GetGridRange(box.min.z, box.max.z, fStepZ, izFirst, izLast))
    {
        return;
    }
    for (int iz = izFirst; iz <= izLast; ++iz)
    {
        m_Candidates.push_back({ixFirst, iz, ixLast - ixFirst + 1});
    }
}

size_t CVertDataSet::GetCandidateCount() const
{
    size_t nCount = 0;
    for (const SCandidates& row : m_Candidates)
    {
        nCount += static_cast<size_t>(row.nCount);
    }
    return nCount;
}

void CVertDataSet::MoveEditable(const SCandidates& row, const float* pHeights)
{
    const auto nCount = static_cast<size_t>(row.nCount);
    if (!HasNegative(pHeights, nCount)) // nearly every row
    {
        m_Verts.AppendRun(row.ixFirst, row.iz, pHeights, nCount);
        return;
    }
    int i = 0;
    while (i < row.nCount)
    {
        const int iStart = i;
        // A row with holes comes apart: what may be edited becomes runs, the rest stays candidates.
        const bool bEditable = !(pHeights[i] < 0.0F);
        while (i < row.nCount && !(pHeights[i] < 0.0F) == bEditable)
        {
            ++i;
        }
        if (bEditable)
        {
            m_Verts.AppendRun(
                row.ixFirst + iStart, row.iz, pHeights + iStart, static_cast<size_t>(i - iStart));
        }
        else
        {
            m_Left.push_back({row.ixFirst + iStart, row.iz, i - iStart});
        }
    }
}

bool CVertDataSet::SetData(const float* pBuffer, int iBufferSizeX, int iBufferSizeZ)
{
    const CBufferRows rows(pBuffer, iBufferSizeX);
    return SetRows(pBuffer != nullptr ? &rows : nullptr, iBufferSizeX, iBufferSizeZ);
}

bool CVertDataSet::SetRows(const IHeightRows* pRows, int iBufferSizeX, int iBufferSizeZ)
{
    if (pRows == nullptr)
    {
        CrashLog("[CVertDataSet::SetData] no buffer\n");
        return true;
    }
    // Room for all of them first, so that no row in the middle can find none.
    if (!m_Verts.Reserve(m_Verts.GetCount() + GetCandidateCount()))
    {
        return false;
    }
    m_Left.clear();
    for (SCandidates row : m_Candidates)
    {
        // Vertices beyond the buffer are reported and stay candidates.
        const int nInside =
            row.iz < iBufferSizeZ ? std::clamp(iBufferSizeX - row.ixFirst, 0, row.nCount) : 0;
        for (int i = nInside; i < row.nCount; ++i)
        {
            CrashLog(row.ixFirst + i >= iBufferSizeX
                         ? "[CVertDataSet::SetData] v.x >= iBufferSizeX\n"
                         : "[CVertDataSet::SetData] v.y >= iBufferSizeZ\n");
        }
        const int nOutside = row.nCount - nInside;
        row.nCount = nInside;
        m_Row.resize(std::max(m_Row.size(), static_cast<size_t>(nInside)));
        if (nInside > 0)
        {
            MoveEditable(row, pRows->GetRow(row.ixFirst, row.iz, nInside, m_Row.data()));
        }
        if (nOutside > 0)
        {
            m_Left.push_back({row.ixFirst + nInside, row.iz, nOutside});
        }
    }
    m_Candidates.assign(m_Left.begin(), m_Left.end()); // both keep their memory
    return true;
}

SExtents CVertDataSet::GetStartExtents()
{
    constexpr float FAR = 1000000.0F;
    return {{FAR, FAR, FAR}, {0.0F, 0.0F, 0.0F}};
}

void CVertDataSet::Widen(SExtents& extents, const SVec3& point)
{
    extents.min.x = std::min(extents.min.x, point.x);
    extents.min.y = std::min(extents.min.y, point.y);
    extents.min.z = std::min(extents.min.z, point.z);
    extents.max.x = std::max(extents.max.x, point.x);
    extents.max.y = std::max(extents.max.y, point.y);
    extents.max.z = std::max(extents.max.z, point.z);
}

SExtents& CVertDataSet::GetExtentsFromVerts(SExtents& extents, const CVertList* pVerts)
{
    if (pVerts == nullptr)
    {
        CrashLog("[CVertDataSet::GetExtentsFromVerts] no verts list\n");
    }
    if (pVerts == nullptr || pVerts->IsEmpty())
    {
        extents = {{-1.0F, -1.0F, -1.0F}, {-1.0F, -1.0F, -1.0F}};
        return extents;
    }
    extents = GetStartExtents();
    for (const SVertRun& run : pVerts->GetRuns())
    {
        const float fZ = static_cast<float>(run.iz) * pVerts->GetStepZ();
        for (size_t i = 0; i < run.nCount; ++i)
        {
            const int ix = run.ixFirst + static_cast<int>(i);
            Widen(extents,
                  {static_cast<float>(ix) * pVerts->GetStepX(),
                   pVerts->GetHeights()[run.nFirst + i],
                   fZ});
        }
    }
    return extents;
}
