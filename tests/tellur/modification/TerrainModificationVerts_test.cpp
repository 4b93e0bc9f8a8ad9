#include "tests/tellur/modification/DragParts.h"

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
        if (!test.writes.empty()) // the terrain is told of the one vertex
        {
            const SExtents& box = context.terrain.boxes.back();
            EXPECT_EQ(box.min.x, static_cast<float>(test.writes.back().iX) * 10.0F);
            EXPECT_EQ(box.max.x, box.min.x);
            EXPECT_EQ(box.max.z, box.min.z);
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
