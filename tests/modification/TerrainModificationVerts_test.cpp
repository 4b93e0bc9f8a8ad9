#include "tests/modification/DragParts.h"

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
