#pragma once

#include <cstddef>
#include <vector>

class CVertList;
class IHeightRows;

// Means of the squares around grid vertices, over heights that are given by rows. Positions outside
// them do not count, negative heights do. Sums run in double precision: within 1e-3 of a plain
// sum for heights up to 100,000.
class CNeighbourhoodMeans
{
public:
    // heights: borrowed, iSizeX x iSizeZ. iHalfWidth: 0 or more.
    CNeighbourhoodMeans(const IHeightRows& heights, int iSizeX, int iSizeZ, int iHalfWidth);

    // Sets the columns that the rows will lie in. To be called once, before the first row: rows
    // that are in the sums already are not forgotten.
    void Begin(int iFirstX, int iLastX);
    // Writes the means of iCount vertices of row iZ from column iX on. Cheapest for rows in
    // increasing order.
    void GetRowMeans(int iX, int iZ, int iCount, float* pMeans);
    // Calls Begin and writes one mean a vertex of the list, in its order. pMeans: room for all of
    // them.
    void GetMeans(const CVertList& verts, float* pMeans);

private:
    void MoveToRow(int iZ);
    void AddRow(int iZ, double dSign);

    const IHeightRows& m_Heights;
    int m_SizeX;
    int m_SizeZ;
    int m_HalfWidth;
    int m_FirstColumn = 0; // columns that the sums cover
    int m_ColumnCount = 0;
    int m_FirstRow = 0; // rows in the column sums: first to last, none when first is above last
    int m_LastRow = -1;
    int m_PrefixRow = -1;     // row that the prefix sums are of
    std::vector<float> m_Row; // scratch
    std::vector<double> m_ColumnSums;
    std::vector<double> m_Prefix; // of the column sums, one more than columns
};
