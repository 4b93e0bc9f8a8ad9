#include "tellur/functions/CNeighbourhoodMeans.h"

#include "host/VectorLoop.h"
#include "tellur/modification/CVertList.h"
#include "tellur/stroke/IHeightRows.h"

#include <algorithm>

namespace
{

TELLUR_LOOP_BODY void
AddToSums(double* __restrict pSums, const float* __restrict pRow, size_t nCount, double dSign)
{
    for (size_t i = 0; i < nCount; ++i)
    {
        pSums[i] += dSign * static_cast<double>(pRow[i]);
    }
}

TELLUR_LOOP_BODY void TakeMeans(const double* pFirst,
                                const double* pEnd,
                                double dVertices,
                                float* __restrict pMeans,
                                size_t nCount)
{
    for (size_t i = 0; i < nCount; ++i)
    {
        pMeans[i] = static_cast<float>((pEnd[i] - pFirst[i]) / dVertices);
    }
}

} // namespace

CNeighbourhoodMeans::CNeighbourhoodMeans(const IHeightRows& heights,
                                         int iSizeX,
                                         int iSizeZ,
                                         int iHalfWidth)
    : m_Heights(heights)
    , m_SizeX(iSizeX)
    , m_SizeZ(iSizeZ)
    , m_HalfWidth(std::min(iHalfWidth, std::max(iSizeX, iSizeZ))) // more reaches nothing more
{
}

// dSign: 1 adds the row, -1 takes it away.
void CNeighbourhoodMeans::AddRow(int iZ, double dSign)
{
    const float* pRow = m_Heights.GetRow(m_FirstColumn, iZ, m_ColumnCount, m_Row.data());
    CVectorLoop<AddToSums>::Run(
        m_ColumnSums.data(), pRow, static_cast<size_t>(m_ColumnCount), dSign);
}

// The sum of a square is the difference of two prefix sums over column sums. The column sums follow
// the row: one row of heights comes in and one goes out. Only a step back, or one beyond all their
// rows, adds them up anew.
void CNeighbourhoodMeans::MoveToRow(int iZ)
{
    const int iFirst = std::max(iZ - m_HalfWidth, 0);
    const int iLast = std::min(iZ + m_HalfWidth, m_SizeZ - 1);
    if (iFirst > m_LastRow || iFirst < m_FirstRow || iLast < m_LastRow)
    {
        std::fill(m_ColumnSums.begin(), m_ColumnSums.end(), 0.0);
        m_FirstRow = iFirst;
        m_LastRow = iFirst - 1;
    }
    for (; m_LastRow < iLast; ++m_LastRow)
    {
        AddRow(m_LastRow + 1, 1.0);
    }
    for (; m_FirstRow < iFirst; ++m_FirstRow)
    {
        AddRow(m_FirstRow, -1.0);
    }
    m_Prefix[0] = 0.0;
    for (int i = 0; i < m_ColumnCount; ++i)
    {
        const auto n = static_cast<size_t>(i);
        m_Prefix[n + 1] = m_Prefix[n] + m_ColumnSums[n];
    }
}

void CNeighbourhoodMeans::Begin(int iFirstX, int iLastX)
{
    m_FirstColumn = std::max(iFirstX - m_HalfWidth, 0);
    m_ColumnCount = std::max(std::min(iLastX + m_HalfWidth, m_SizeX - 1) - m_FirstColumn + 1, 0);
    m_Row.resize(static_cast<size_t>(m_ColumnCount));
    m_ColumnSums.assign(static_cast<size_t>(m_ColumnCount), 0.0);
    m_Prefix.resize(static_cast<size_t>(m_ColumnCount) + 1);
    m_PrefixRow = -1;
}

void CNeighbourhoodMeans::GetMeans(const CVertList& verts, float* pMeans)
{
    int iFirstX = m_SizeX;
    int iLastX = -1;
    for (const SVertRun& run : verts.GetRuns())
    {
        iFirstX = std::min(iFirstX, run.ixFirst);
        iLastX = std::max(iLastX, run.ixFirst + static_cast<int>(run.nCount) - 1);
    }
    Begin(iFirstX, iLastX);
    for (const SVertRun& run : verts.GetRuns())
    {
        GetRowMeans(run.ixFirst, run.iz, static_cast<int>(run.nCount), pMeans + run.nFirst);
    }
}

void CNeighbourhoodMeans::GetRowMeans(int iX, int iZ, int iCount, float* pMeans)
{
    // Several runs of a row share its sums.
    if (iZ != m_PrefixRow)
    {
        MoveToRow(iZ);
        m_PrefixRow = iZ;
    }
    const double dRows = m_LastRow - m_FirstRow + 1;
    const auto getMean = [&](int iAt)
    {
        const int iFirst = std::max(iAt - m_HalfWidth, 0) - m_FirstColumn;
        const int iEnd = std::min(iAt + m_HalfWidth, m_SizeX - 1) - m_FirstColumn + 1;
        const double dSum =
            m_Prefix[static_cast<size_t>(iEnd)] - m_Prefix[static_cast<size_t>(iFirst)];
        return static_cast<float>(dSum / (static_cast<double>(iEnd - iFirst) * dRows));
    };
    // In the middle all squares are equally wide, so one loop takes their means without looking for
    // borders.
    const int iInner = std::clamp(m_HalfWidth - iX, 0, iCount);
    const int iInnerEnd = std::clamp(m_SizeX - m_HalfWidth - iX, iInner, iCount);
    for (int i = 0; i < iInner; ++i)
    {
        pMeans[i] = getMean(iX + i);
    }
    if (iInnerEnd > iInner)
    {
        const double* pFirst = m_Prefix.data() + (iX + iInner - m_HalfWidth - m_FirstColumn);
        const int iWidth = 2 * m_HalfWidth + 1;
        CVectorLoop<TakeMeans>::Run(pFirst,
                                    pFirst + iWidth,
                                    static_cast<double>(iWidth) * dRows,
                                    pMeans + iInner,
                                    static_cast<size_t>(iInnerEnd - iInner));
    }
    for (int i = iInnerEnd; i < iCount; ++i)
    {
        pMeans[i] = getMean(iX + i);
    }
}
