#include "engine/terrain/CTerrain.h"
#include "engine/terrain/HeightFile.h"
#include "engine/world/CTexture.h"
#include "engine/world/CWorld.h"
#include "host/Image.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

namespace
{

class CWorldTest : public testing::Test
{
protected:
    std::string SaveMap(const char* pszName, uint32_t uSizeX, uint32_t uSizeZ, float fHeight)
    {
        const std::vector<float> heights(size_t{uSizeX} * uSizeZ, fHeight);
        const std::string strPath = m_Folder.Path(pszName);
        EXPECT_TRUE(
            WriteHeightFile(strPath.c_str(), heights.data(), uSizeX, uSizeZ, {100, 50, -200}));
        return strPath;
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    CWorld m_World;
};

TEST_F(CWorldTest, ANewLevelIsFlatAndNamesNoHeightMap)
{
    EXPECT_EQ(m_World.GetTerrain(), nullptr);
    EXPECT_EQ(m_World.GetTerrainHeight(1.0F, 2.0F), 0.0F);
    m_World.ReloadTerrain();
    EXPECT_EQ(m_Log.GetText(), "[CWorld::ReloadTerrain] the level names no height map\n");
    ASSERT_TRUE(m_World.CreateTerrain(64, 32, {-640, 100, 320}));
    EXPECT_EQ(m_World.GetTerrain()->GetCellsPerSide(), 64U);
    EXPECT_EQ(m_World.GetTerrain()->GetCellsPerSideZ(), 32U);
    EXPECT_STREQ(m_World.GetEnvironment()->GetHeightMapName(), "");
    EXPECT_EQ(m_World.GetEnvironment()->GetTerrain(), m_World.GetTerrain());
    const SBlockEntry peak{1, 80, 1};
    m_World.GetTerrain()->SetBlockHeights(0, 0, &peak, 1);
    EXPECT_EQ(m_World.GetTerrainHeight(10, 10), 80.0F);
    EXPECT_EQ(m_World.GetTerrainHeight(15, 10), 40.0F);
    EXPECT_EQ(m_World.GetTerrainHeight(500, 300), 0.0F);
    m_World.CloseTerrain();
    EXPECT_EQ(m_World.GetTerrain(), nullptr);
    EXPECT_EQ(m_World.GetEnvironment(), nullptr);
}

TEST_F(CWorldTest, AnImpossibleLevelIsOneLineAndKeepsTheOneBefore)
{
    ASSERT_TRUE(m_World.CreateTerrain(1, 16384, {1, 1, 1}));
    Terrain* pBefore = m_World.GetTerrain();

    const std::tuple<uint32_t, uint32_t, SVec3, std::string> aCases[] = {
        {0, 4, {1, 1, 1}, "0 x 4 cells and size 1, 1, 1"},
        {4, 16385, {1, 1, 1}, "4 x 16385 cells and size 1, 1, 1"},
        {0xFFFFFFFFU, 4, {1, 1, 1}, "4294967295 x 4 cells and size 1, 1, 1"},
        {4, 4, {1, 0, 1.5F}, "4 x 4 cells and size 1, 0, 1.5"},
    };
    for (const auto& [uCellsX, uCellsZ, size, strFault] : aCases)
    {
        EXPECT_FALSE(m_World.CreateTerrain(uCellsX, uCellsZ, size));
        EXPECT_EQ(m_Log.GetText(), "[CWorld::CreateTerrain] no terrain of " + strFault + "\n");
        EXPECT_EQ(m_World.GetTerrain(), pBefore);
        m_Log.Clear();
    }
}

TEST_F(CWorldTest, OpensALevelOnlyWhenItsFileIsWhole)
{
    const std::string strPath = SaveMap("a.height", 3, 5, 7.0F);
    ASSERT_TRUE(m_World.OpenTerrain(strPath.c_str()));
    EXPECT_EQ(m_World.GetEnvironment()->GetHeightMapName(), strPath);
    EXPECT_EQ(m_World.GetTerrain()->GetSizeVector().z, -200.0F);
    EXPECT_EQ(m_World.GetTerrainHeight(3, 3), 7.0F);
    Terrain* pBefore = m_World.GetTerrain();

    WriteBytes(m_Folder.Path("b.height"), ReadBytes(strPath).substr(0, 50));
    EXPECT_FALSE(m_World.OpenTerrain(m_Folder.Path("b.height").c_str()));
    EXPECT_FALSE(m_World.OpenTerrain(m_Folder.Path("missing").c_str()));
    EXPECT_EQ(m_Log.TakeLines().size(), 2U);
    EXPECT_EQ(m_World.GetTerrain(), pBefore);
    EXPECT_EQ(m_World.GetEnvironment()->GetHeightMapName(), strPath);

    // A new level under the same roof: the name goes, also when it is passed in itself.
    ASSERT_TRUE(m_World.OpenTerrain(m_World.GetEnvironment()->GetHeightMapName()));
    EXPECT_EQ(m_World.GetEnvironment()->GetHeightMapName(), strPath);
    ASSERT_TRUE(m_World.CreateTerrain(2, 2, {1, 1, 1}));
    EXPECT_STREQ(m_World.GetEnvironment()->GetHeightMapName(), "");
}

TEST_F(CWorldTest, ReloadTakesTheFileAgainAndReplacesTheTerrainForOtherSizes)
{
    const std::string strPath = SaveMap("a.height", 5, 5, 7.0F);
    ASSERT_TRUE(m_World.OpenTerrain(strPath.c_str()));
    Terrain* pSame = m_World.GetTerrain();
    pSame->SetEditMaterial("grid");
    pSame->SetEditOverlay(3);
    uint64_t uSeen = m_World.GetCTerrain()->GetRevision();
    std::vector<SVertexRect> rects;

    SaveMap("a.height", 5, 5, 9.0F);
    m_World.ReloadTerrain();
    EXPECT_EQ(m_World.GetTerrain(), pSame);
    EXPECT_EQ(m_World.GetTerrainHeight(100, 200), 9.0F);
    ASSERT_TRUE(m_World.GetCTerrain()->TakeDirtyRects(uSeen, rects));
    EXPECT_EQ(rects, (std::vector<SVertexRect>{{0, 0, 5, 5}}));

    SaveMap("a.height", 9, 9, 11.0F);
    m_World.ReloadTerrain();
    EXPECT_EQ(m_World.GetTerrain()->GetCellsPerSide(), 8U);
    EXPECT_EQ(m_World.GetTerrainHeight(0, 0), 11.0F);
    EXPECT_EQ(m_World.GetCTerrain()->GetEditMaterial(), "grid") << "the mode is still on";
    EXPECT_EQ(m_World.GetCTerrain()->GetEditOverlay(), 3U);
    EXPECT_EQ(m_World.GetEnvironment()->GetTerrain(), m_World.GetTerrain());
    EXPECT_TRUE(m_World.GetCTerrain()->TakeDirtyRects(uSeen, rects)) << "the new one is all new";

    WriteBytes(strPath, "spoiled");
    EXPECT_EQ(m_Log.GetText(), "");
    m_World.ReloadTerrain();
    std::filesystem::remove(strPath);
    m_World.ReloadTerrain();
    EXPECT_EQ(m_Log.TakeLines().size(), 2U);
    EXPECT_EQ(m_World.GetTerrain(), pSame) << "it stays where the file is damaged or missing";
    EXPECT_EQ(m_World.GetEnvironment()->GetTerrain(), pSame);
    EXPECT_EQ(m_World.GetTerrainHeight(0, 0), 11.0F);
}

TEST_F(CWorldTest, ReleasesWhatItMadeAndNothingElse)
{
    const uint32_t uAlive = CTexture::GetAliveCount();
    const uint8_t aGrey[] = {1, 2, 3, 4};
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(4, 1, EImageFormat::Indexed8, aGrey));
    {
        CWorld world;
        ITexture* pBlob = world.CreateTextureFromImage(pImage.get(), "TellurBlobTexture");
        ASSERT_NE(pBlob, nullptr);
        pImage->GetRawData()[0] = 99; // the texture has its own copy
        EXPECT_EQ(pBlob->LockBytes()[0], 1);
        pBlob->Unlock();
        EXPECT_STREQ(pBlob->GetName(), "TellurBlobTexture");
        const uint32_t uHandle = world.RegisterTerrainTexture(pBlob, "shown");
        world.ReleaseTexture(pBlob);
        EXPECT_EQ(CTexture::GetAliveCount(), uAlive);
        EXPECT_EQ(world.FindTerrainTexture(uHandle), nullptr);
        world.ReleaseTexture(uHandle);
        world.ReleaseTexture(static_cast<ITexture*>(nullptr));
        world.ReleaseTexture(uint32_t{0});
        EXPECT_EQ(world.RegisterTerrainTexture(nullptr, "none"), 0U);
        EXPECT_EQ(m_Log.GetText(), "");

        world.ReleaseTexture(uHandle);
        world.ReleaseTexture(pBlob); // compared, not read
        EXPECT_EQ(world.CreateTextureFromImage(nullptr, "x"), nullptr);
        EXPECT_EQ(m_Log.TakeLines(),
                  (std::vector<std::string>{"[CWorld::ReleaseTexture] unknown handle 1",
                                            "[CWorld::ReleaseTexture] not a texture of the world",
                                            "[CWorld::CreateTextureFromImage] no image for x"}));
        world.CreateTextureFromImage(pImage.get(), nullptr);
        EXPECT_EQ(CTexture::GetAliveCount(), uAlive + 1);
    }
    EXPECT_EQ(CTexture::GetAliveCount(), uAlive) << "the world takes its textures along";
}

} // namespace
