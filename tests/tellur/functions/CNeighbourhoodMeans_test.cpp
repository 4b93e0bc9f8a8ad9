#include "tellur/functions/CNeighbourhoodMeans.h"
#include "tellur/modification/CVertList.h"
#include "tellur/stroke/IHeightRows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace
{

constexpr int SIZE_X = 61;
constexpr int SIZE_Z = 47;

// A row-major buffer; every second row comes by way of the scratch memory.
class CTestRows : public IHeightRows
{
public:
    explicit CTestRows(const std::vector<float>& heights)
        : m_Heights(heights)
    {
    }

    const float* GetRow(int iX, int iZ, int iCount, float* pScratch) const override
    {
        const float* pRow = m_Heights.data() + iZ * SIZE_X + iX;
        return iZ % 2 == 0 ? pRow : std::copy_n(pRow, iCount, pScratch) - iCount;
    }

private:
    const std::vector<float>& m_Heights;
};

// The mean as it is defined: every position of the square that lies inside the buffer.
double GetPlainMean(const std::vector<float>& heights, int iX, int iZ, int iHalfWidth)
{
    double fSum = 0.0;
    int iCount = 0;
    for (int z = std::max(iZ - iHalfWidth, 0); z <= std::min(iZ + iHalfWidth, SIZE_Z - 1); ++z)
    {
        for (int x = std::max(iX - iHalfWidth, 0); x <= std::min(iX + iHalfWidth, SIZE_X - 1); ++x)
        {
            fSum += static_cast<double>(heights[static_cast<size_t>(z * SIZE_X + x)]);
            ++iCount;
        }
    }
    return fSum / iCount;
}

// Rows with gaps, rows left out and a second pass over earlier rows, as working sets may have them.
CVertList MakeVerts(std::mt19937& random)
{
    CVertList verts;
    for (int iPass = 0; iPass < 2; ++iPass)
    {
        for (int iZ = 0; iZ < SIZE_Z; iZ += 1 + static_cast<int>(random() % 3))
        {
            for (int iX = static_cast<int>(random() % 5); iX < SIZE_X;)
            {
                const int iCount = std::min(1 + static_cast<int>(random() % 20), SIZE_X - iX);
                verts.AppendRun(iX, iZ, nullptr, static_cast<size_t>(iCount));
                iX += iCount + 1 + static_cast<int>(random() % 4);
            }
        }
    }
    return verts;
}

TEST(CNeighbourhoodMeans, EqualThePlainSumAtAnySizeAndNeverLeaveItsRange)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> range(-500.0F, 100000.0F);
    std::vector<float> heights(static_cast<size_t>(SIZE_X) * SIZE_Z);
    std::generate(heights.begin(), heights.end(), [&] { return range(random); });
    const auto [lowest, highest] = std::minmax_element(heights.begin(), heights.end());
    for (const int iHalfWidth : {0, 1, 2, 7, 30, 46, 47, 60, 61, 2000000000})
    {
        SCOPED_TRACE(iHalfWidth);
        const CVertList verts = MakeVerts(random);
        std::vector<float> means(verts.GetCount());
        CNeighbourhoodMeans(CTestRows(heights), SIZE_X, SIZE_Z, iHalfWidth)
            .GetMeans(verts, means.data());
        for (size_t i = 0; i < means.size(); ++i)
        {
            const SVert vert = verts.GetVert(i);
            const int iReach = std::min(iHalfWidth, 100);
            ASSERT_NEAR(means[i], GetPlainMean(heights, vert.ix, vert.iz, iReach), 0.01)
                << vert.ix << ", " << vert.iz; // a float at 100,000 steps by 0.008
            ASSERT_GE(means[i], *lowest);
            ASSERT_LE(means[i], *highest);
        }
    }
}

} // namespace
