#include "tellur/functions/CNeighbourhoodMeans.h"

#include "tellur/modification/CVertList.h"
#include "tellur/stroke/IHeightRows.h"

#include <algorithm>

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

void CNeighbourhoodMeans::AddRow(int iZ, double fSign)
{
    const float* pRow = m_Heights.GetRow(m_FirstColumn, iZ, m_ColumnCount, m_Row.data());
    for (int i = 0; i < m_ColumnCount; ++i)
    {
        m_ColumnSums[static_cast<size_t>(i)] += fSign * static_cast<double>(pRow[i]);
    }
}

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
    if (iZ != m_PrefixRow)
    {
        MoveToRow(iZ);
        m_PrefixRow = iZ;
    }
    const int iRows = m_LastRow - m_FirstRow + 1;
    for (int i = 0; i < iCount; ++i)
    {
        const int iFirst = std::max(iX + i - m_HalfWidth, 0) - m_FirstColumn;
        const int iEnd = std::min(iX + i + m_HalfWidth, m_SizeX - 1) - m_FirstColumn + 1;
        const double fSum =
            m_Prefix[static_cast<size_t>(iEnd)] - m_Prefix[static_cast<size_t>(iFirst)];
        pMeans[i] = static_cast<float>(
            fSum / (static_cast<double>(iEnd - iFirst) * static_cast<double>(iRows)));
    }
}
