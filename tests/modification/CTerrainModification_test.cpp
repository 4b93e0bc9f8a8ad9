#include "brushes/CTellurBrush.h"
#include "modification/CTellurUndo.h"
#include "modification/CTerrainModification.h"
#include "modification/CVertDataSet.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CNumbers.h"
#include "tests/support/CRecordingFunction.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace
{

using Lines = std::vector<std::string>;

const CRecordingFunction g_Strongest(EMergeRule::Strongest);

// A function as SetVerts takes it.
CRecordingFunction* AlwaysCandidate()
{
    static CRecordingFunction s_Function(EMergeRule::Candidate);
    return &s_Function;
}

// A brush whose function does nothing but record the drag.
class CRecordingBrush : public CTellurBrush
{
public:
    CRecordingBrush() { SetFunction(new CRecordingFunction("A", &calls)); }

    ~CRecordingBrush() override { SetFunction(nullptr); } // while its list is there

    FakeCalls calls;
};

// Sets the one vertex (iX, iZ) of a terrain with cells of 10 units.
void SetOne(CTerrainModification& session, int iX, int iZ, float fHeight)
{
    const auto fX = static_cast<float>(iX) * 10.0F;
    const auto fZ = static_cast<float>(iZ) * 10.0F;
    CVertDataSet set;
    session.GetDstVerts({{fX, 0, fZ}, {fX, 0, fZ}}, set);
    ASSERT_EQ(set.GetVerts().GetCount(), 1U);
    set.GetVerts().GetHeights()[0] = fHeight;
    session.SetVerts(set, AlwaysCandidate());
}

// Compares bytes: -0 is not 0.
void ExpectSameBytes(const std::vector<float>& a, const std::vector<float>& b)
{
    ASSERT_EQ(a.size(), b.size());
    EXPECT_EQ(std::memcmp(a.data(), b.data(), a.size() * sizeof(float)), 0);
}

// Undo gives the bytes from before the drag, redo those after it.
void ExpectUndoRedo(CFakeContext& context, const std::vector<float>& before)
{
    const std::vector<float> after = context.terrain.heights;
    ASSERT_EQ(context.host.undos.size(), 1U);
    context.host.undos[0]->Undo();
    ExpectSameBytes(context.terrain.heights, before);
    context.host.undos[0]->Redo();
    ExpectSameBytes(context.terrain.heights, after);
}

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

TEST(CTerrainModification, ForwardsTheMouseToTheBrushOfTheDrag)
{
    CFakeContext context;
    CRecordingBrush brush;
    CRecordingBrush other;
    CLogCatcher log;
    CTerrainModification session;
    const SVec3 point = {6.5F, 0, 0};
    EXPECT_FALSE(session.Render(&point));
    ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
    EXPECT_EQ(session.GetBrush(), &brush);
    EXPECT_TRUE(session.Render(&point));

    // A second start changes nothing of the running drag.
    context.terrain.At(2, 2) = 77.0F;
    EXPECT_FALSE(session.Start(4, 5, 6, nullptr, &other));
    EXPECT_EQ(log.TakeLines(),
              (Lines{"[CTerrainModification::Start] terrain set to NULL",
                     "[CTerrainModification::Start] already in progress"}));
    EXPECT_EQ(session.GetSrcHeight(2, 2), 0.0F);
    EXPECT_EQ(session.OnMouseMove(0xFFFFFFFFU, 7, 8, 9, 10), 13);
    session.End(11, 12, 13);
    EXPECT_EQ(
        brush.calls,
        (FakeCalls{
            "Start(1, 2, 3)", "Render(6.5)", "Move(4294967295, 7, 8, 9, 10)", "End(11, 12, 13)"}));
    EXPECT_EQ(other.calls, FakeCalls{});
    EXPECT_EQ(session.GetBrush(), nullptr);
    EXPECT_EQ(log.GetText(), "");

    // The next drag takes the heights anew, also of a terrain of another size.
    CFakeTerrain small(2, 3, {20, 500, 30});
    small.At(2, 3) = 5.0F;
    ASSERT_TRUE(session.Start(1, 2, 3, &small, &brush));
    EXPECT_EQ(session.GetBufferSizeX(), 3);
    EXPECT_EQ(session.GetBufferSizeZ(), 4);
    EXPECT_EQ(session.GetSrcHeight(2, 3), 5.0F);
    EXPECT_EQ(session.GetDstHeight(2, 3), 5.0F);
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

TEST(CTerrainModification, HandsOutSourceOrDestinationHeights)
{
    CFakeContext context;
    context.terrain.At(3, 2) = 30.0F;
    context.terrain.At(4, 2) = -1.0F;
    CRecordingBrush brush;
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
    SetOne(session, 3, 2, 45.0F);
    EXPECT_EQ(session.GetSrcHeight(3, 2), 30.0F);
    EXPECT_EQ(session.GetDstHeight(3, 2), 45.0F);
    EXPECT_EQ(session.GetSrcBuffer()[2 * 9 + 3], 30.0F);
    EXPECT_EQ(session.GetDstBuffer()[2 * 9 + 3], 45.0F);

    const SExtents box = {{30, 0, 20}, {50, 0, 20}};
    CVertDataSet source;
    CVertDataSet dest;
    session.GetVerts(box, source);
    session.GetDstVerts(box, dest);
    ASSERT_EQ(source.GetVerts().GetCount(), 2U); // the vertex below 0 is not offered
    ASSERT_EQ(dest.GetVerts().GetCount(), 2U);
    EXPECT_EQ(source.GetVerts().GetVert(0).y, 30.0F);
    EXPECT_EQ(dest.GetVerts().GetVert(0).y, 45.0F);
    EXPECT_EQ(dest.GetVerts().GetVert(1).ix, 5);
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

TEST(CTerrainModification, ShowsExactlyWhatAStepChanged)
{
    CNumbers numbers(23);
    for (int iRound = 0; iRound < 60; ++iRound)
    {
        SCOPED_TRACE(iRound);
        CFakeContext context(20, 14, {200, 100, 140});
        for (float& fHeight : context.terrain.heights)
        {
            fHeight = numbers.Int(0, 7) == 0 ? -1.0F : static_cast<float>(numbers.Int(0, 10) * 10);
        }
        const std::vector<float> before = context.terrain.heights;
        CRecordingBrush brush;
        CTerrainModification session;
        ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
        std::vector<float> plain = before;
        for (int iStep = 0; iStep < 3; ++iStep)
        {
            const int iX = numbers.Int(0, 15);
            const int iZ = numbers.Int(0, 9);
            const SExtents box = {
                {static_cast<float>(iX) * 10.0F, 0, static_cast<float>(iZ) * 10.0F},
                {static_cast<float>(iX + numbers.Int(0, 5)) * 10.0F,
                 0,
                 static_cast<float>(iZ + numbers.Int(0, 5)) * 10.0F}};
            CVertDataSet set;
            session.GetVerts(box, set);
            SExtents expected = {{1000000, 1000000, 1000000}, {0, 0, 0}};
            size_t nChanged = 0;
            for (size_t i = 0; i < set.GetVerts().GetCount(); ++i)
            {
                float& fCandidate = set.GetVerts().GetHeights()[i];
                fCandidate += static_cast<float>(numbers.Int(-3, 3) * 20);
                const SVert vert = set.GetVerts().GetVert(i);
                const auto n = static_cast<size_t>(vert.iz * 21 + vert.ix);
                if (fCandidate == plain[n] ||
                    std::fabs(fCandidate - before[n]) < std::fabs(plain[n] - before[n]))
                {
                    continue;
                }
                plain[n] = std::min(std::max(fCandidate, 0.0F), 100.0F);
                CVertDataSet::Widen(expected, {vert.x, plain[n], vert.z});
                ++nChanged;
            }
            context.terrain.boxes.clear();
            const SDragStatistics statistics = context.statistics;
            session.SetVerts(set, const_cast<CRecordingFunction*>(&g_Strongest));
            ASSERT_EQ(context.terrain.boxes.size(), nChanged > 0 ? 1U : 0U);
            if (nChanged > 0)
            {
                EXPECT_EQ(ToText(context.terrain.boxes[0]), ToText(expected));
            }
            EXPECT_EQ(context.statistics.nPoints, statistics.nPoints + 1);
            EXPECT_EQ(context.statistics.nChanged, statistics.nChanged + nChanged);
            EXPECT_EQ(context.statistics.nVisited, statistics.nVisited + set.GetVerts().GetCount());
            ASSERT_EQ(context.terrain.heights, plain);
        }
        session.End(1, 2, 3);
        if (plain != before)
        {
            ExpectUndoRedo(context, before);
        }
        EXPECT_EQ(context.host.undos.empty(), plain == before);
    }
}

TEST(CTerrainModification, LeavesOneRecordOfWhatChangedInScanOrder)
{
    struct SWrite
    {
        int iX;
        int iZ;
        float fHeight;
    };

    struct SCase
    {
        const char* pszName;
        std::vector<SWrite> writes; // in this order, on a terrain of height 0
        const char* pszVerts;       // of the record's one block; null: no record
    };

    // clang-format off
    const SCase cases[] = {
        {"nothing", {}, nullptr},
        {"too little", {{1, 1, 1.0e-6F}}, nullptr},
        {"just enough", {{1, 1, 1.1e-6F}}, "1,1 "},
        {"there and back", {{1, 1, 50}, {1, 1, 0}}, nullptr},
        {"some of it back", {{1, 1, 50}, {5, 2, 7}, {1, 1, 0}}, "5,2 "},
        {"scan order", {{5, 7, 1}, {2, 7, 1}, {6, 3, 1}, {0, 0, 1}}, "0,0 6,3 2,7 5,7 "},
        {"limits", {{3, 3, 5000}, {4, 3, 20}, {4, 3, -20}}, "3,3 "},
    };
    // clang-format on
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        CFakeContext context;
        const std::vector<float> before = context.terrain.heights;
        CRecordingBrush brush;
        CTerrainModification session;
        ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
        for (const SWrite& write : test.writes)
        {
            SetOne(session, write.iX, write.iZ, write.fHeight);
        }
        session.End(1, 2, 3);
        ASSERT_EQ(context.host.undos.size(), test.pszVerts != nullptr ? 1U : 0U);
        if (test.pszVerts == nullptr)
        {
            continue;
        }
        const auto& undo = dynamic_cast<const CTellurUndo&>(*context.host.undos[0]);
        ASSERT_EQ(undo.GetBlocks().size(), 1U);
        std::string strVerts;
        for (const auto& vert : undo.GetBlocks()[0].GetVerts())
        {
            strVerts += std::to_string(vert.iLocalX) + "," + std::to_string(vert.iLocalZ) + " ";
            EXPECT_EQ(vert.fOld, 0.0F);
            EXPECT_EQ(vert.fNew, session.GetDstHeight(vert.iLocalX, vert.iLocalZ));
        }
        EXPECT_EQ(strVerts, test.pszVerts);
        ExpectUndoRedo(context, before);
    }
}

TEST(CTerrainModification, RecordsOnlyWhereItReachesTheHost)
{
    CFakeContext context;
    CRecordingBrush brush;
    CLogCatcher log;
    {
        CTerrainModification dropped; // destroyed in mid-drag
        ASSERT_TRUE(dropped.Start(1, 2, 3, &context.terrain, &brush));
        SetOne(dropped, 1, 1, 9.0F);
    }
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
    EXPECT_EQ(session.GetSrcHeight(1, 1), 9.0F);
    SetOne(session, 2, 1, 9.0F);
    context.pEditorHost = nullptr; // it has gone away
    session.End(1, 2, 3);
    EXPECT_TRUE(context.host.undos.empty());
    EXPECT_FALSE(session.IsInProgress());
    EXPECT_EQ(log.GetText(), "");
}

TEST(CTerrainModification, LeavesNoRecordOfATerrainThatChangedItsResolution)
{
    for (const bool bAlongX : {true, false})
    {
        CFakeContext context;
        CRecordingBrush brush;
        CTerrainModification session;
        ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
        SetOne(session, 2, 1, 9.0F);
        (bAlongX ? context.terrain.uCellsX : context.terrain.uCellsZ) = 16;
        session.End(1, 2, 3);
        EXPECT_TRUE(context.host.undos.empty());
        EXPECT_FALSE(session.IsInProgress());
    }
}

TEST(CTerrainModification, StepsOfADragAllocateNothing)
{
    CFakeTerrain terrain(256, 256, {2560, 1000, 2560});
    CRecordingBrush brush;
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &terrain, &brush));
    CVertDataSet set;
    const auto runStep = [&](float fX)
    {
        set.Reset();
        session.GetDstVerts({{fX, 0, fX}, {fX + 600, 0, fX + 600}}, set);
        for (size_t i = 0; i < set.GetVerts().GetCount(); ++i)
        {
            set.GetVerts().GetHeights()[i] += 1.0F;
        }
        session.SetVerts(set, AlwaysCandidate());
    };
    runStep(0.0F);
    terrain.boxes.reserve(10);
    const size_t nBefore = GetAllocationCount();
    runStep(300.0F);
    runStep(330.0F);
    EXPECT_EQ(GetAllocationCount(), nBefore);
    EXPECT_EQ(terrain.boxes.size(), 3U);
}
