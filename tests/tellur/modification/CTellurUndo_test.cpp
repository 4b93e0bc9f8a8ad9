#include "tellur/modification/CTellurUndo.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

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
    CFakeTerrain terrain(128, 128, {128, 100, 128});
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
    CFakeTerrain terrain(96, 64, {96, 100, 64});
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

TEST(CTellurUndo, BringsNormalsUpToDateOnlyWhenThePluginDoes)
{
    CFakeContext context(64, 64, {64, 100, 64});
    CTellurUndo undo;
    undo.SetTerrain(&context.terrain);
    undo.Fill(std::vector<SChangedVert>{{32, 3, 1, 2}});
    undo.Undo();
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Terrain.SetBlockHeights(1, 0, 1)", "Terrain.SetBlockHeights(0, 0, 1)"}));
    ASSERT_EQ(context.terrain.blocks.size(), 2U);
    const SBlockEntry& entry = context.terrain.blocks[1].entries[0];
    EXPECT_EQ(entry.fLocalX, 32.0F);
    EXPECT_EQ(entry.fHeight, 1.0F);
    EXPECT_EQ(entry.fLocalZ, 3.0F);

    context.bAutoUpdateNormals = true;
    undo.Redo();
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Terrain.SetBlockHeights(1, 0, 1)",
                         "Terrain.SetBlockHeights(0, 0, 1)",
                         "Terrain.UpdateNormals()"}));
}

TEST(CTellurUndo, IsDeadWithoutItsTerrainOrAfterAChangeOfResolution)
{
    CLogCatcher log;
    CFakeContext context(64, 64, {64, 100, 64});
    context.bAutoUpdateNormals = true;
    CTellurUndo orphan;
    orphan.Fill(std::vector<SChangedVert>{{3, 3, 1, 2}});
    orphan.Undo();

    CTellurUndo undo;
    undo.SetTerrain(&context.terrain);
    undo.Fill(std::vector<SChangedVert>{{3, 3, 1, 2}});
    context.terrain.uCellsX = 32;
    undo.Undo();
    undo.Redo();
    EXPECT_EQ(context.TakeCalls(), FakeCalls{});
    EXPECT_EQ(log.GetText(), "");
    EXPECT_FALSE(undo.IsTransient());
    undo.OnNotify(1);

    // Alive again with the old row width, whatever the other side is.
    context.terrain.uCellsX = 64;
    context.terrain.uCellsZ = 32;
    undo.Redo();
    EXPECT_EQ(context.TakeCalls().size(), 2U);
}
