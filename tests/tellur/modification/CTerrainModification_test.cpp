#include "tests/tellur/modification/DragParts.h"

namespace
{

using CTerrainModificationTest = CDragTest;

// The buffer sizes are read through the virtual getters; this one claims to have some.
class CSizesOnly : public CTerrainModification
{
public:
    int GetBufferSizeX() const override { return 4; }

    int GetBufferSizeZ() const override { return 4; }
};

} // namespace

TEST_F(CTerrainModificationTest, RefusalsOutsideADragSayWhyInWholeLines)
{
    CVertDataSet set;
    CTerrainModification session;
    SExtents box;
    CSizesOnly sizesOnly;
    EXPECT_EQ(session.OnMouseMove(1, 2, 3, 4, 5), 0);
    session.End(1, 2, 3);
    EXPECT_EQ(session.GetXSize(), -1.0F);
    EXPECT_EQ(session.GetYSize(), -1.0F);
    EXPECT_EQ(session.GetZSize(), -1.0F);
    EXPECT_EQ(&session.GetTerrainExtents(box), &box);
    EXPECT_EQ(session.GetSrcHeight(0, 0), -1.0F);
    EXPECT_EQ(session.GetDstHeight(0, 0), -1.0F);
    session.SetDstHeight(0, 0, 1.0F);
    EXPECT_EQ(sizesOnly.GetSrcHeight(3, 3), -1.0F);
    EXPECT_EQ(sizesOnly.GetDstHeight(3, 3), -1.0F);
    sizesOnly.SetDstHeight(3, 3, 1.0F);
    session.GetVerts({}, set);
    session.GetDstVerts({}, set);
    session.SetVerts(set, AlwaysCandidate());
    EXPECT_FALSE(session.Start(1, 2, 3, &m_Host.GetTerrain(), nullptr));
    EXPECT_FALSE(session.Start(1, 2, 3, nullptr, nullptr));
    Lines expected = {"OnMouseMove] not in progress",
                      "End] modification not in progress",
                      "GetXSize] terrain set to NULL",
                      "GetYSize] terrain set to NULL",
                      "GetZSize] terrain set to NULL",
                      "GetTerrainExtents] terrain set to NULL",
                      "GetSrcHeight] invalid indices",
                      "GetDstHeight] invalid indices",
                      "SetDstHeight] invalid indices",
                      "GetSrcHeight] invalid source buffer ptr",
                      "GetDstHeight] invalid destination buffer ptr",
                      "SetDstHeight] invalid destination buffer ptr",
                      "GetVerts] no terrain interface",
                      "GetVerts] no terrain interface",
                      "SetVerts] no terrain interface",
                      "Start] brush set to NULL",
                      "Start] terrain set to NULL",
                      "Start] brush set to NULL"};
    for (std::string& strLine : expected)
    {
        strLine.insert(0, "[CTerrainModification::");
    }
    EXPECT_EQ(m_Log.TakeLines(), expected);
    EXPECT_FALSE(session.IsInProgress());
    EXPECT_EQ(session.GetBrush(), nullptr);
}

TEST_F(CTerrainModificationTest, RefusalsInADragSayWhyInWholeLines)
{
    CVertDataSet set;
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &m_Brush));
    session.SetVerts(set, nullptr);
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CTerrainModification::SetVerts] no function"});
    for (const int i : {-1, 9})
    {
        EXPECT_EQ(session.GetSrcHeight(i, 0), -1.0F);
        EXPECT_EQ(session.GetSrcHeight(0, i), -1.0F);
        EXPECT_EQ(session.GetDstHeight(i, 0), -1.0F);
        EXPECT_EQ(session.GetDstHeight(0, i), -1.0F);
        session.SetDstHeight(i, 0, 1.0F);
        session.SetDstHeight(0, i, 1.0F);
    }
    EXPECT_EQ(m_Log.TakeLines().size(), 12U);
    session.End(1, 2, 3);
    EXPECT_EQ(m_Log.GetText(), "");
    session.SetDstHeight(0, 0, 1.0F); // the buffers are still there
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CTerrainModification::SetDstHeight] invalid terrain ptr"});
}

TEST_F(CTerrainModificationTest, GoesOnWithoutATerrainAndReportsEachStep)
{
    CTerrainModification session;
    EXPECT_TRUE(session.Start(1, 2, 3, nullptr, &m_Brush));
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CTerrainModification::Start] terrain set to NULL",
                     "[CTerrainModification::InitializeBuffers] terrain set to NULL",
                     "[CTerrainModification::Start] failed to initialize buffers"}));
    EXPECT_TRUE(session.IsInProgress());
    EXPECT_EQ(session.GetBufferSizeX(), 0);
    EXPECT_EQ(session.OnMouseMove(4, 5, 6, 7, 8), 13);
    session.End(9, 10, 11);
    EXPECT_EQ(m_Log.TakeLines(),
              Lines{"[CTerrainModification::StoreUndoInformation] no src buffer"});
    EXPECT_EQ(m_Brush.calls, (Calls{"Start(1, 2, 3)", "Move(4, 5, 6, 7, 8)", "End(9, 10, 11)"}));
    EXPECT_FALSE(session.IsInProgress());
    EXPECT_EQ(TakeCalls(), Calls{});
}

TEST_F(CTerrainModificationTest, ASecondStartChangesNothingOfTheRunningDrag)
{
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &m_Brush));
    m_Host.SetHeight(2, 2, 77.0F);
    EXPECT_FALSE(session.Start(4, 5, 6, nullptr, &m_Brush));
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CTerrainModification::Start] terrain set to NULL",
                     "[CTerrainModification::Start] already in progress"}));
    EXPECT_EQ(session.GetSrcHeight(2, 2), 0.0F);
    EXPECT_EQ(m_Brush.calls, Calls{"Start(1, 2, 3)"});
}

TEST_F(CTerrainModificationTest, SizesAndBoxComeFromTheSignedSizeVector)
{
    m_Host.GetWorld().CreateTerrain(8, 4, {-80, 500, 40});
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &m_Brush));
    EXPECT_EQ(session.GetXSize(), 80.0F);
    EXPECT_EQ(session.GetYSize(), 500.0F);
    EXPECT_EQ(session.GetZSize(), 40.0F);
    SExtents box;
    EXPECT_EQ(ToText(session.GetTerrainExtents(box)), "[-80 0 0, 0 500 40]");
    session.SetExtents({{-1, 2, -3}, {4, 5, 6}});
    EXPECT_EQ(ToText(session.GetExtents(box)), "[-1 2 -3, 4 5 6]");
    EXPECT_EQ(session.GetBufferSizeX(), 9);
    EXPECT_EQ(session.GetBufferSizeZ(), 5);
}

TEST_F(CTerrainModificationTest, KeepsTheOddAddressingOfSetDstHeight)
{
    struct SCase
    {
        int iX;
        int iZ;
        float fHeight;
        int iWrittenX; // -1: nothing is written
        int iWrittenZ;
        float fWritten;
    };

    // 9 x 9 vertices: the element is 9 + x + z; no lower limit.
    const SCase cases[] = {{0, 0, 5, 0, 1, 5},
                           {3, 2, 999, 5, 1, 999},
                           {3, 2, 1000, 5, 1, 1000},
                           {3, 2, 1001, 5, 1, 1000},
                           {8, 8, 7, 7, 2, 7},
                           {1, 0, -7, 1, 1, -7}};
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(testing::Message() << test.iX << "," << test.iZ << " " << test.fHeight);
        m_Host.NewLevel(8, {80.0F, 1000.0F, 80.0F});
        const uint64_t uRevision = m_Host.GetTerrain().GetRevision();
        CTerrainModification session;
        ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &m_Brush));
        session.SetDstHeight(test.iX, test.iZ, test.fHeight);
        for (int z = 0; z < 9; ++z)
        {
            for (int x = 0; x < 9; ++x)
            {
                const bool bWritten = x == test.iWrittenX && z == test.iWrittenZ;
                EXPECT_EQ(session.GetDstHeight(x, z), bWritten ? test.fWritten : 0.0F);
            }
        }
        session.End(1, 2, 3);
        EXPECT_EQ(m_Host.GetTerrain().GetRevision(), uRevision);
        // A vertex below 0 is never recorded.
        EXPECT_EQ(CountUndos(), test.fWritten < 0.0F ? 0U : 1U);
    }
}
