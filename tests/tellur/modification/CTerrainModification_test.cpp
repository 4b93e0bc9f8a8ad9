#include "tests/tellur/modification/DragParts.h"

namespace
{

// The buffer sizes are read through the virtual getters; this one claims to have some.
class CSizesOnly : public CTerrainModification
{
public:
    int GetBufferSizeX() const override { return 4; }

    int GetBufferSizeZ() const override { return 4; }
};

} // namespace

TEST(CTerrainModification, RefusalsSayWhyInWholeLines)
{
    CFakeContext context;
    CRecordingBrush brush;
    CVertDataSet set;
    CLogCatcher log;
    CTerrainModification session;
    const auto line = [](const char* pszText)
    {
        return std::string("[CTerrainModification::") + pszText;
    };

    EXPECT_EQ(session.OnMouseMove(1, 2, 3, 4, 5), 0);
    EXPECT_EQ(log.TakeLines(), Lines{line("OnMouseMove] not in progress")});
    session.End(1, 2, 3);
    EXPECT_EQ(log.TakeLines(), Lines{line("End] modification not in progress")});
    EXPECT_EQ(session.GetXSize(), -1.0F);
    EXPECT_EQ(session.GetYSize(), -1.0F);
    EXPECT_EQ(session.GetZSize(), -1.0F);
    EXPECT_EQ(log.TakeLines(),
              (Lines{line("GetXSize] terrain set to NULL"),
                     line("GetYSize] terrain set to NULL"),
                     line("GetZSize] terrain set to NULL")}));
    SExtents box;
    EXPECT_EQ(&session.GetTerrainExtents(box), &box);
    EXPECT_EQ(log.TakeLines(), Lines{line("GetTerrainExtents] terrain set to NULL")});
    EXPECT_EQ(session.GetSrcHeight(0, 0), -1.0F);
    EXPECT_EQ(session.GetDstHeight(0, 0), -1.0F);
    session.SetDstHeight(0, 0, 1.0F);
    EXPECT_EQ(log.TakeLines(),
              (Lines{line("GetSrcHeight] invalid indices"),
                     line("GetDstHeight] invalid indices"),
                     line("SetDstHeight] invalid indices")}));
    CSizesOnly sizesOnly;
    EXPECT_EQ(sizesOnly.GetSrcHeight(3, 3), -1.0F);
    EXPECT_EQ(sizesOnly.GetDstHeight(3, 3), -1.0F);
    sizesOnly.SetDstHeight(3, 3, 1.0F);
    EXPECT_EQ(log.TakeLines(),
              (Lines{line("GetSrcHeight] invalid source buffer ptr"),
                     line("GetDstHeight] invalid destination buffer ptr"),
                     line("SetDstHeight] invalid destination buffer ptr")}));
    session.GetVerts({}, set);
    session.GetDstVerts({}, set);
    session.SetVerts(set, AlwaysCandidate());
    EXPECT_EQ(log.TakeLines(),
              (Lines{line("GetVerts] no terrain interface"),
                     line("GetVerts] no terrain interface"),
                     line("SetVerts] no terrain interface")}));
    EXPECT_FALSE(session.Start(1, 2, 3, &context.terrain, nullptr));
    EXPECT_EQ(log.TakeLines(), Lines{line("Start] brush set to NULL")});
    EXPECT_FALSE(session.Start(1, 2, 3, nullptr, nullptr));
    EXPECT_EQ(log.TakeLines(),
              (Lines{line("Start] terrain set to NULL"), line("Start] brush set to NULL")}));
    EXPECT_FALSE(session.IsInProgress());
    EXPECT_EQ(session.GetBrush(), nullptr);

    ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
    session.SetVerts(set, nullptr);
    EXPECT_EQ(log.TakeLines(), Lines{line("SetVerts] no function")});
    for (const int i : {-1, 9})
    {
        EXPECT_EQ(session.GetSrcHeight(i, 0), -1.0F);
        EXPECT_EQ(session.GetSrcHeight(0, i), -1.0F);
        EXPECT_EQ(session.GetDstHeight(i, 0), -1.0F);
        EXPECT_EQ(session.GetDstHeight(0, i), -1.0F);
        session.SetDstHeight(i, 0, 1.0F);
        session.SetDstHeight(0, i, 1.0F);
    }
    EXPECT_EQ(log.TakeLines().size(), 12U);
    session.End(1, 2, 3);
    EXPECT_EQ(log.GetText(), "");
    session.SetDstHeight(0, 0, 1.0F); // the buffers are still there
    EXPECT_EQ(log.TakeLines(), Lines{line("SetDstHeight] invalid terrain ptr")});
}

TEST(CTerrainModification, GoesOnWithoutATerrainAndReportsEachStep)
{
    CFakeContext context;
    CRecordingBrush brush;
    CLogCatcher log;
    CTerrainModification session;
    EXPECT_TRUE(session.Start(1, 2, 3, nullptr, &brush));
    EXPECT_EQ(log.TakeLines(),
              (Lines{"[CTerrainModification::Start] terrain set to NULL",
                     "[CTerrainModification::InitializeBuffers] terrain set to NULL",
                     "[CTerrainModification::Start] failed to initialize buffers"}));
    EXPECT_TRUE(session.IsInProgress());
    EXPECT_EQ(session.GetBufferSizeX(), 0);
    EXPECT_EQ(session.OnMouseMove(4, 5, 6, 7, 8), 13);
    session.End(9, 10, 11);
    EXPECT_EQ(log.TakeLines(), Lines{"[CTerrainModification::StoreUndoInformation] no src buffer"});
    EXPECT_EQ(brush.calls, (FakeCalls{"Start(1, 2, 3)", "Move(4, 5, 6, 7, 8)", "End(9, 10, 11)"}));
    EXPECT_FALSE(session.IsInProgress());
    EXPECT_EQ(context.TakeCalls(), FakeCalls{});
}

TEST(CTerrainModification, ASecondStartChangesNothingOfTheRunningDrag)
{
    CFakeContext context;
    CRecordingBrush brush;
    CLogCatcher log;
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
    context.terrain.At(2, 2) = 77.0F;
    EXPECT_FALSE(session.Start(4, 5, 6, nullptr, &brush));
    EXPECT_EQ(log.TakeLines(),
              (Lines{"[CTerrainModification::Start] terrain set to NULL",
                     "[CTerrainModification::Start] already in progress"}));
    EXPECT_EQ(session.GetSrcHeight(2, 2), 0.0F);
    EXPECT_EQ(brush.calls, FakeCalls{"Start(1, 2, 3)"});
}

TEST(CTerrainModification, SizesAndBoxComeFromTheSignedSizeVector)
{
    CFakeContext context(8, 4, {-80, 500, 40});
    CRecordingBrush brush;
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
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

TEST(CTerrainModification, KeepsTheOddAddressingOfSetDstHeight)
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
        CFakeContext context;
        CRecordingBrush brush;
        CTerrainModification session;
        ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
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
        EXPECT_TRUE(context.terrain.boxes.empty());
        // A vertex below 0 is never recorded.
        EXPECT_EQ(context.host.undos.size(), test.fWritten < 0.0F ? 0U : 1U);
    }
    // One row of vertices: the element would lie behind the buffer.
    CFakeContext context(8, 0, {80, 1000, 0});
    CRecordingBrush brush;
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
    session.SetDstHeight(3, 0, 5.0F);
    EXPECT_EQ(session.GetDstHeight(3, 0), 0.0F);
}
