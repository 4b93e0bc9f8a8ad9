#include "tellur/modification/CTellurUndo.h"
#include "tests/tellur/modification/DragParts.h"

namespace
{

// "(block x,block z)" and "local x,local z" of each record in it, in order.
std::string GetLayout(const CTellurUndo& undo)
{
    std::string strLayout;
    for (const CTellurUndo::CBlockInfo& block : undo.GetBlocks())
    {
        strLayout +=
            "(" + std::to_string(block.GetBlockX()) + "," + std::to_string(block.GetBlockZ()) + ")";
        for (const CTellurUndo::CBlockInfo::SVertRecord& vert : block.GetVerts())
        {
            strLayout +=
                " " + std::to_string(vert.iLocalX) + "," + std::to_string(vert.iLocalZ) + ";";
        }
    }
    return strLayout;
}

using CTellurUndoTest = CDragTest;

} // namespace

TEST(CTellurUndo, KeepsABorderVertexInEveryBlockThatSharesIt)
{
    struct SCase
    {
        const char* pszName;
        std::vector<SChangedVert> verts;
        const char* pszLayout;
    };

    // clang-format off
    const SCase cases[] = {
        {"corner of the terrain", {{0, 0, 1, 2}}, "(0,0) 0,0;"},
        {"inside", {{31, 1, 1, 2}}, "(0,0) 31,1;"},
        {"column border", {{64, 5, 1, 2}}, "(2,0) 0,5;(1,0) 32,5;"},
        {"row border", {{5, 64, 1, 2}}, "(0,2) 5,0;(0,1) 5,32;"},
        {"border at column 0", {{0, 32, 1, 2}}, "(0,1) 0,0;(0,0) 0,32;"},
        {"border at row 0", {{32, 0, 1, 2}}, "(1,0) 0,0;(0,0) 32,0;"},
        {"four blocks", {{32, 64, 1, 2}},
         "(1,2) 0,0;(0,2) 32,0;(1,1) 0,32;(0,1) 32,32;"},
        {"blocks in order of first use", {{33, 0, 1, 2}, {1, 1, 1, 2}, {32, 1, 1, 2}},
         "(1,0) 1,0; 0,1;(0,0) 1,1; 32,1;"},
    };
    // clang-format on
    static_assert(sizeof(CTellurUndo::CBlockInfo::SVertRecord) == 16);
    CTerrain terrain = MakeTerrain(128, 128, {128, 100, 128});
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        CTellurUndo undo;
        undo.SetTerrain(&terrain);
        undo.Fill(test.verts);
        EXPECT_EQ(GetLayout(undo), test.pszLayout);
    }
}

TEST(CTellurUndo, HoldsSixteenBytesAVertexAndLittleBeside)
{
    CTerrain terrain = MakeTerrain(96, 64, {96, 100, 64});
    std::vector<SChangedVert> verts;
    for (int i = 0; i < 97 * 65; ++i)
    {
        verts.push_back({i % 97, i / 97, 1, 2});
    }
    CTellurUndo undo;
    undo.SetTerrain(&terrain);
    undo.Fill(verts);
    size_t nRecords = 0;
    for (const CTellurUndo::CBlockInfo& block : undo.GetBlocks())
    {
        nRecords += block.GetVerts().size();
    }
    EXPECT_EQ(undo.GetBlocks().size(), 12U); // 3 x 2, and those that begin at the far borders
    EXPECT_GT(nRecords, verts.size());
    EXPECT_LT(undo.GetByteCount(), 16 * nRecords + 12 * 64 + 128);
}

TEST_F(CTellurUndoTest, BringsNormalsUpToDateOnlyWhenThePluginDoes)
{
    Replace(64, 64);
    CTerrain& terrain = m_Host.GetTerrain();
    CTellurUndo undo;
    undo.SetTerrain(&terrain);
    undo.Fill(std::vector<SChangedVert>{{32, 3, 1, 2}});
    terrain.UpdateNormals();
    undo.Undo();
    EXPECT_EQ(m_Host.At(32, 3), 1.0F);
    EXPECT_TRUE(terrain.UpdateNormals()) << "they were not";
    m_Plugin->SetAutoUpdateNormals(true);
    undo.Redo();
    EXPECT_EQ(m_Host.At(32, 3), 2.0F);
    EXPECT_FALSE(terrain.UpdateNormals()) << "they were";
}

TEST_F(CTellurUndoTest, IsDeadWithoutItsTerrainOrAfterAChangeOfResolution)
{
    Replace(64, 64);
    CTellurUndo orphan;
    orphan.Fill(std::vector<SChangedVert>{{3, 3, 1, 2}});
    orphan.Undo();

    CTellurUndo undo;
    undo.SetTerrain(&m_Host.GetTerrain());
    undo.Fill(std::vector<SChangedVert>{{3, 3, 1, 2}});
    Replace(32, 64);
    undo.Undo();
    undo.Redo();
    EXPECT_EQ(m_Host.At(3, 3), 0.0F);
    EXPECT_FALSE(undo.IsTransient());
    undo.OnNotify(1);

    // Alive again with the old row width, whatever the other side is.
    Replace(64, 32);
    undo.Redo();
    EXPECT_EQ(m_Host.At(3, 3), 2.0F);
    EXPECT_EQ(m_Log.GetText(), "");
}
