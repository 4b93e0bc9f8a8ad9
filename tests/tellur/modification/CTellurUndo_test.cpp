#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CTellurUndo.h"
#include "tellur/modification/HeightChanges.h"
#include "tests/tellur/modification/DragParts.h"

namespace
{

struct SChangedVert
{
    int iX;
    int iZ;
    float fOld;
    float fNew;
};

// The record of a drag over a terrain that changed these vertices.
bool FillRecord(CTellurUndo& undo, CTerrain& terrain, const std::vector<SChangedVert>& verts)
{
    CHeightTiles tiles;
    EXPECT_TRUE(tiles.Reset(static_cast<int>(terrain.GetVerticesX()),
                            static_cast<int>(terrain.GetVerticesZ())));
    tiles.SetGround(terrain.GetHeightData());
    for (const SChangedVert& vert : verts)
    {
        EXPECT_TRUE(tiles.Take({vert.iX, vert.iZ, vert.iX, vert.iZ}));
        SHeightTile& tile = *tiles.Find(vert.iX / SHeightTile::SIDE, vert.iZ / SHeightTile::SIDE);
        tile.aSource[vert.iZ % SHeightTile::SIDE * SHeightTile::SIDE +
                     vert.iX % SHeightTile::SIDE] = vert.fOld;
        tiles.SetDest(vert.iX, vert.iZ, vert.fNew);
    }
    EXPECT_EQ(FindChanges(tiles, [](int, int) {}), verts.size());
    return undo.Fill(tiles);
}

std::vector<CTellurUndo::SVertRecord> GetVerts(const CTellurUndo::CBlockInfo& block)
{
    std::vector<CTellurUndo::SVertRecord> verts(CTellurUndo::CBlockInfo::MOST_VERTS);
    verts.resize(block.GetVerts(verts.data()));
    return verts;
}

// "(block x,block z)" and "local x,local z" of each record in it, in order.
std::string GetLayout(const CTellurUndo& undo)
{
    std::string strLayout;
    for (const CTellurUndo::CBlockInfo& block : undo.GetBlocks())
    {
        strLayout +=
            "(" + std::to_string(block.GetBlockX()) + "," + std::to_string(block.GetBlockZ()) + ")";
        for (const CTellurUndo::SVertRecord& vert : GetVerts(block))
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
    CTerrain terrain = MakeTerrain(128, 128, {128, 100, 128});
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        CTellurUndo undo;
        undo.SetTerrain(&terrain);
        ASSERT_TRUE(FillRecord(undo, terrain, test.verts));
        EXPECT_EQ(GetLayout(undo), test.pszLayout);
    }
}

TEST(CTellurUndo, HoldsNineBytesAVertexOfAFullBrushAndFewMoreOfAThinLine)
{
    CTerrain terrain = MakeTerrain(512, 256, {512, 100, 256});
    for (const bool bThin : {false, true})
    {
        SCOPED_TRACE(bThin);
        std::vector<SChangedVert> verts;
        for (int i = 0; i < 512 * 256; ++i)
        {
            if (!bThin || i / 512 == 100)
            {
                verts.push_back({i % 512, i / 512, 1, 2});
            }
        }
        CTellurUndo undo;
        undo.SetTerrain(&terrain);
        ASSERT_TRUE(FillRecord(undo, terrain, verts));
        size_t nRecords = 0;
        for (const CTellurUndo::CBlockInfo& block : undo.GetBlocks())
        {
            nRecords += GetVerts(block).size();
        }
        EXPECT_GT(nRecords, verts.size()); // borders twice
        EXPECT_EQ(undo.GetBlocks().size(), bThin ? 16U : 16U * 8U);
        EXPECT_LT(undo.GetByteCount(), bThin ? 20 * verts.size() : 9 * verts.size());
    }
}

TEST_F(CTellurUndoTest, BringsNormalsUpToDateOnlyWhenThePluginDoes)
{
    Replace(64, 64);
    CTerrain& terrain = m_Host.GetTerrain();
    CTellurUndo undo;
    undo.SetTerrain(&terrain);
    ASSERT_TRUE(FillRecord(undo, terrain, {{32, 3, 1, 2}}));
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
    ASSERT_TRUE(FillRecord(orphan, m_Host.GetTerrain(), {{3, 3, 1, 2}}));
    orphan.Undo();

    CTellurUndo undo;
    undo.SetTerrain(&m_Host.GetTerrain());
    ASSERT_TRUE(FillRecord(undo, m_Host.GetTerrain(), {{3, 3, 1, 2}}));
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
