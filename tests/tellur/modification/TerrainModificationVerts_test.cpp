#include "tests/tellur/modification/DragParts.h"

using CTerrainModificationVerts = CDragTest;

namespace
{

struct SWrite
{
    int iX;
    int iZ;
    float fHeight;
};

} // namespace

TEST_F(CTerrainModificationVerts, LeavesOneRecordOfWhatChangedInScanOrder)
{
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
        m_Host.NewLevel(8, {80.0F, 1000.0F, 80.0F});
        const std::vector<float> before = Heights();
        uint64_t uSeen = m_Host.GetTerrain().GetRevision();
        CTerrainModification session;
        ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &m_Brush));
        for (const SWrite& write : test.writes)
        {
            uSeen = m_Host.GetTerrain().GetRevision();
            SetOne(session, write.iX, write.iZ, write.fHeight);
        }
        std::vector<SVertexRect> rects;
        if (m_Host.GetTerrain().TakeDirtyRects(uSeen, rects)) // by the last one
        {
            const SVertexRect& changed = rects.front();
            EXPECT_EQ(static_cast<int>(changed.uMinX), test.writes.back().iX);
            EXPECT_EQ((changed.uEndX - changed.uMinX) * (changed.uEndZ - changed.uMinZ), 1U);
        }
        session.End(1, 2, 3);
        ASSERT_EQ(CountUndos(), test.pszVerts != nullptr ? 1U : 0U);
        if (CountUndos() == 0)
        {
            continue;
        }
        const auto& undo = dynamic_cast<const CTellurUndo&>(*m_Host.pLastUndo);
        std::string strVerts;
        std::vector<CTellurUndo::SVertRecord> verts(CTellurUndo::CBlockInfo::MOST_VERTS);
        verts.resize(undo.GetBlocks()[0].GetVerts(verts.data()));
        for (const CTellurUndo::SVertRecord& vert : verts)
        {
            strVerts += std::to_string(vert.iLocalX) + "," + std::to_string(vert.iLocalZ) + " ";
            EXPECT_EQ(vert.fOld, 0.0F);
            EXPECT_EQ(vert.fNew, session.GetDstHeight(vert.iLocalX, vert.iLocalZ));
        }
        EXPECT_EQ(strVerts, test.pszVerts);
        ExpectUndoRedo(before);
    }
}

TEST_F(CTerrainModificationVerts, RecordsOnlyWhereItReachesTheHost)
{
    {
        CTerrainModification dropped; // destroyed in mid-drag
        ASSERT_TRUE(dropped.Start(1, 2, 3, &m_Host.GetTerrain(), &m_Brush));
        SetOne(dropped, 1, 1, 9.0F);
    }
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &m_Brush));
    EXPECT_EQ(session.GetSrcHeight(1, 1), 9.0F);
    SetOne(session, 2, 1, 9.0F);
    m_Plugin->OnHostNotify(NOTIFY_HOST_GOES, 0); // the host has gone away
    session.End(1, 2, 3);
    EXPECT_EQ(CountUndos(), 0U);
    EXPECT_FALSE(session.IsInProgress());
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CTerrainModificationVerts, LeavesNoRecordOfATerrainThatChangedItsResolution)
{
    for (const bool bAlongX : {true, false})
    {
        Replace(8, 8);
        CTerrainModification session;
        ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &m_Brush));
        SetOne(session, 2, 1, 9.0F);
        Replace(bAlongX ? 16 : 8, bAlongX ? 8 : 16);
        session.End(1, 2, 3);
        EXPECT_EQ(CountUndos(), 0U);
        EXPECT_FALSE(session.IsInProgress());
    }
}

TEST_F(CTerrainModificationVerts, StepsOfADragAllocateNothing)
{
    CTerrain terrain = MakeTerrain(256, 256, {2560, 1000, 2560});
    CTerrainModification session;
    ASSERT_TRUE(session.Start(1, 2, 3, &terrain, &m_Brush));
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
    const size_t nBefore = GetAllocationCount();
    runStep(300.0F);
    runStep(330.0F);
    EXPECT_EQ(GetAllocationCount(), nBefore);
    EXPECT_EQ(terrain.GetHeightAt(350, 350), 3.0F);
}
