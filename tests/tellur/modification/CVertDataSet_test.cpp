#include "tests/tellur/modification/DragParts.h"

namespace
{

using CVertDataSetTest = CDragTest;

// "column,row" of every vertex in list order.
std::string GetGrid(const CVertList& verts)
{
    std::string strGrid;
    for (size_t i = 0; i < verts.GetCount(); ++i)
    {
        const SVert vert = verts.GetVert(i);
        strGrid += std::to_string(vert.ix) + "," + std::to_string(vert.iz) + " ";
    }
    return strGrid;
}

} // namespace

TEST_F(CVertDataSetTest, TakesTheGridLinesInsideTheBox)
{
    struct SCase
    {
        const char* pszName;
        SExtents box;
        const char* pszGrid;
    };

    // A terrain of 4 x 2 cells, 10 units along x and 20 along z.
    // clang-format off
    const SCase cases[] = {
        {"whole terrain", {{0, 0, 0}, {40, 0, 40}},
         "0,0 1,0 2,0 3,0 4,0 0,1 1,1 2,1 3,1 4,1 0,2 1,2 2,2 3,2 4,2 "},
        {"borders on lines", {{10, 0, 20}, {30, 0, 20}}, "1,1 2,1 3,1 "},
        {"borders beside lines", {{10.5F, 0, 19.5F}, {29.5F, 0, 20.5F}}, "2,1 "},
        {"between two columns", {{11, 0, 0}, {19, 0, 40}}, ""},
        {"between two rows", {{0, 0, 21}, {40, 0, 39}}, ""},
        {"minimum beyond maximum", {{30, 0, 0}, {10, 0, 40}}, ""},
        {"cut toward zero", {{0, 0, 0}, {-1, 0, -1}}, "0,0 "},
        {"a step below zero", {{0, 0, 0}, {-10, 0, -20}}, ""},
    };
    // clang-format on
    for (const SVec3& size : {SVec3{40, 500, 40}, SVec3{-40, 500, -40}})
    {
        CTerrain terrain = MakeTerrain(4, 2, size);
        CVertDataSet set;
        for (const SCase& test : cases)
        {
            SCOPED_TRACE(test.pszName);
            ASSERT_TRUE(set.Initialize(&terrain, test.box));
            EXPECT_TRUE(set.IsInitialized());
            const size_t nCandidates = set.GetCandidateCount();
            set.SetData(terrain.GetHeightData(), 5, 3);
            EXPECT_EQ(GetGrid(set.GetVerts()), test.pszGrid);
            EXPECT_EQ(set.GetVerts().GetCount(), nCandidates);
            EXPECT_EQ(set.GetCandidateCount(), 0U);
        }
    }
}

TEST_F(CVertDataSetTest, LeavesVerticesOfNegativeHeightAndAsksThemAgain)
{
    CTerrain terrain = MakeTerrain(3, 1, {30, 500, 10});
    const float first[] = {5, -1, -2, 7, -3, 0, -0.0F, -4};
    CVertDataSet set;
    ASSERT_TRUE(set.Initialize(&terrain, {{0, 0, 0}, {30, 0, 10}}));
    set.SetData(first, 4, 2);
    EXPECT_EQ(GetGrid(set.GetVerts()), "0,0 3,0 1,1 2,1 ");
    EXPECT_EQ(set.GetCandidateCount(), 4U);

    // Only those left over are looked at again; they come behind the others.
    const float heights[] = {50, 51, -2, 57, 53, 50, 50, -4};
    set.SetData(heights, 4, 2);
    EXPECT_EQ(GetGrid(set.GetVerts()), "0,0 3,0 1,1 2,1 1,0 0,1 ");
    EXPECT_EQ(set.GetVerts().GetVert(0).y, 5.0F);
    EXPECT_EQ(set.GetVerts().GetVert(4).y, 51.0F);
    EXPECT_EQ(set.GetCandidateCount(), 2U);
}

TEST_F(CVertDataSetTest, SaysWhatIsMissingInWholeLines)
{
    CTerrain terrain = MakeTerrain(2, 2, {20, 500, 20});
    CVertDataSet set;
    EXPECT_FALSE(set.Initialize(nullptr, {{0, 0, 0}, {20, 0, 20}}));
    EXPECT_FALSE(set.IsInitialized());
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CVertDataSet::Initialize] no terrain"});

    ASSERT_TRUE(set.Initialize(&terrain, {{0, 0, 0}, {20, 0, 20}}));
    set.SetData(nullptr, 3, 3);
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CVertDataSet::SetData] no buffer"});
    EXPECT_EQ(set.GetCandidateCount(), 9U);

    // A buffer of 2 x 2 under a set of 3 x 3: columns beyond it are named first.
    const float heights[] = {1, 2, 3, 4};
    set.SetData(heights, 2, 2);
    const std::string strX = "[CVertDataSet::SetData] v.x >= iBufferSizeX";
    const std::string strZ = "[CVertDataSet::SetData] v.y >= iBufferSizeZ";
    EXPECT_EQ(m_Log.TakeLines(), (Lines{strX, strX, strZ, strZ, strX}));
    EXPECT_EQ(GetGrid(set.GetVerts()), "0,0 1,0 0,1 1,1 ");
    EXPECT_EQ(set.GetCandidateCount(), 5U);

    SExtents extents;
    CVertDataSet::GetExtentsFromVerts(extents, nullptr);
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CVertDataSet::GetExtentsFromVerts] no verts list"});
    EXPECT_EQ(ToText(extents), "[-1 -1 -1, -1 -1 -1]");

    set.GetVerts().GetWeights()[0] = 7.0F;
    set.GetDataFromBitmap({}, 10.0F, nullptr, 1.0F, 0.0F);
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CVertDataSet::GetDataFromBitmap] no bitmap"});
    EXPECT_EQ(set.GetVerts().GetVert(0).weight, 0.0F);

    const auto pWhite = MakeShape(1, {255});
    for (const float fExtent : {0.0F, 9.0e-7F, -9.0e-7F})
    {
        set.GetVerts().GetWeights()[3] = 7.0F;
        set.GetDataFromBitmap({}, fExtent, pWhite.get(), 1.0F, 1.0F);
        EXPECT_EQ(m_Log.TakeLines(), Lines{"[CVertDataSet::GetDataFromBitmap] extent is 0"});
        EXPECT_EQ(set.GetVerts().GetVert(3).weight, 0.0F);
    }
    set.GetDataFromBitmap({}, 2.0e-6F, pWhite.get(), 1.0F, 1.0F);
    EXPECT_EQ(m_Log.GetText(), "");
    EXPECT_EQ(set.GetVerts().GetVert(3).weight, 1.0F);

    // A bitmap that has lost its image says so itself, once.
    CTellurBitmap empty;
    set.GetDataFromBitmap({}, 10.0F, &empty, 1.0F, 1.0F);
    EXPECT_EQ(m_Log.TakeLines().back(), "[CTellurBitmap::GetPoint] no current image");
    EXPECT_EQ(set.GetVerts().GetVert(3).weight, 0.0F);
}

TEST_F(CVertDataSetTest, BoundingBoxStartsFromAMillionAndZero)
{
    struct SCase
    {
        const char* pszName;
        SVec3 size; // of 2 x 2 cells
        std::vector<float> heights;
        SExtents box;
        const char* pszExtents;
    };

    // clang-format off
    const SCase cases[] = {
        {"empty", {20, 500, 20}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {{1, 0, 1}, {9, 0, 9}},
         "[-1 -1 -1, -1 -1 -1]"},
        {"all", {20, 500, 40}, {5, 2, 3, 4, 50, 6, 7, 8, 9}, {{0, 0, 0}, {20, 0, 40}},
         "[0 2 0, 20 50 40]"},
        {"beyond a million", {6000000, 500, 20}, {1, 1, 1, 1, 1, 1, 1, 1, 2000001},
         {{6000000, 0, 20}, {6000000, 0, 20}}, "[1e+06 1e+06 20, 6e+06 2e+06 20]"},
    };
    // clang-format on
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        CTerrain terrain = MakeTerrain(2, 2, test.size);
        CVertDataSet set;
        ASSERT_TRUE(set.Initialize(&terrain, test.box));
        set.SetData(test.heights.data(), 3, 3);
        SExtents extents;
        EXPECT_EQ(&CVertDataSet::GetExtentsFromVerts(extents, &set.GetVerts()), &extents);
        EXPECT_EQ(ToText(extents), test.pszExtents);
    }
    // A height below 0 pulls the minimum, never the maximum.
    CVertList below;
    below.SetSteps(1.0F, 1.0F);
    const float fHeight = -5.0F;
    below.AppendRun(3, 4, &fHeight, 1);
    SExtents extents;
    EXPECT_EQ(ToText(CVertDataSet::GetExtentsFromVerts(extents, &below)), "[3 -5 4, 3 0 4]");
}

TEST_F(CVertDataSetTest, SecondPointOfTheSameSizeAllocatesNothing)
{
    CTerrain terrain = MakeTerrain(64, 64, {640, 500, 640});
    std::vector<float> heights(65 * 65, 0.0F);
    for (size_t i = 0; i < heights.size(); i += 7)
    {
        heights[i] = -1.0F;
    }
    const auto pBitmap = MakeShape(16, std::vector<uint8_t>(256, 200));
    CVertDataSet set;
    const auto runPoint = [&](float fX)
    {
        set.Initialize(&terrain, {{fX, 0, fX}, {fX + 300, 0, fX + 300}});
        set.SetData(heights.data(), 65, 65);
        set.GetDataFromBitmap({fX + 150, 0, fX + 150}, 300.0F, pBitmap.get(), 1.0F, 0.0F);
    };
    runPoint(0.0F);
    const size_t nBefore = GetAllocationCount();
    runPoint(70.0F); // the same pattern of left-out vertices again
    runPoint(140.0F);
    EXPECT_EQ(GetAllocationCount(), nBefore);
    EXPECT_GT(set.GetVerts().GetCount(), 700U);
}
