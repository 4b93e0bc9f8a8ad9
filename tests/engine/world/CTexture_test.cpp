#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CTexture.h"
#include "engine/world/CTextureManager.h"
#include "engine/world/CWorld.h"
#include "host/FileSystem.h"
#include "tests/engine/imaging/ImageSamples.h"
#include "tests/support/CLogCatcher.h"

#include <gtest/gtest.h>

namespace
{

std::vector<int> LockAll(ITexture& texture)
{
    const uint8_t* pBytes = texture.LockBytes();
    std::vector<int> bytes(pBytes, pBytes + size_t{texture.GetWidth()} * texture.GetHeight());
    texture.Unlock();
    return bytes;
}

TEST(CTexture, LocksOneGreyByteATexelWhateverTheImageIs)
{
    // White weighs 255, black 0, grey itself; pure green lies between, nearer to white.
    const auto lock = [](uint32_t uWidth,
                         EImageFormat eFormat,
                         const std::vector<uint8_t>& bytes,
                         std::unique_ptr<IPalette> pPalette = nullptr)
    {
        CTexture texture("t", MakeImage(uWidth, 1, eFormat, bytes), std::move(pPalette));
        return LockAll(texture);
    };
    EXPECT_EQ(lock(3, EImageFormat::Indexed8, {0, 255, 7}), (std::vector<int>{0, 255, 7}));
    const Colors entries = {{0, 0, 0}, {255, 255, 255}, {0, 255, 0}, {90, 90, 90}};
    const std::vector<int> bytes =
        lock(5, EImageFormat::Indexed8, {3, 2, 1, 0, 200}, std::make_unique<CTestPalette>(entries));
    const int iGreen = bytes[1];
    EXPECT_TRUE(iGreen > 128 && iGreen < 255) << iGreen;
    EXPECT_EQ(bytes, (std::vector<int>{90, iGreen, 255, 0, 0})) << "200 is no entry: black";
    EXPECT_EQ(lock(3, EImageFormat::Rgb24, {255, 255, 255, 0, 255, 0, 90, 90, 90}),
              (std::vector<int>{255, iGreen, 90}));

    CTexture alpha(
        "a", MakeImage(2, 1, EImageFormat::Rgba32, {90, 90, 90, 0, 255, 255, 255, 9}), nullptr);
    EXPECT_EQ(LockAll(alpha), (std::vector<int>{90, 255}));
    const uint32_t uBefore = alpha.GetRevision();
    alpha.Replace(MakeImage(1, 1, EImageFormat::Rgb24, {255, 255, 255}), nullptr);
    EXPECT_EQ(LockAll(alpha), std::vector<int>{255});
    EXPECT_NE(alpha.GetRevision(), uBefore);
    EXPECT_EQ(alpha.GetXSize(1024.0F, 4), 256.0F);
    EXPECT_EQ(alpha.GetXSize(1024.0F, 0), 0.0F);
}

class CTextureManagerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::set_user_root(m_Folder.GetFolder().c_str());
        SaveGrey("Masks/Soft.png", 40);
    }

    void TearDown() override
    {
        EXPECT_EQ(CTexture::GetAliveCount(), m_Alive) << "textures leaked";
        fs::set_user_root(nullptr);
    }

    void SaveGrey(const char* pszName, uint8_t uGrey)
    {
        std::filesystem::create_directories(m_Folder.Path("Masks"));
        const auto pImage = MakeImage(2, 1, EImageFormat::Indexed8, {uGrey, 200});
        ASSERT_TRUE(IL_SaveImage(m_Folder.Path(pszName).c_str(), pImage.get(), nullptr));
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    uint32_t m_Alive = CTexture::GetAliveCount();
};

TEST_F(CTextureManagerTest, SharesOneTextureByNameUntilTheLastUserReturnsIt)
{
    CTextureManager manager(nullptr);
    ITexture* pFirst = manager.Load("Masks/Soft.png", 1);
    ASSERT_NE(pFirst, nullptr);
    EXPECT_STREQ(pFirst->GetName(), "Masks/Soft.png");
    EXPECT_EQ(manager.Load("masks\\SOFT.PNG", 2), pFirst);
    EXPECT_EQ(manager.Load("./Masks//soft.png", 0), pFirst) << "no users count as one";
    EXPECT_EQ(manager.GetCount(), 1U);
    for (int i = 0; i < 3; ++i)
    {
        manager.Release(pFirst);
    }
    EXPECT_EQ(LockAll(*pFirst), (std::vector<int>{40, 200}));
    EXPECT_EQ(CTexture::GetAliveCount(), m_Alive + 1);
    manager.Release(pFirst);
    EXPECT_EQ(CTexture::GetAliveCount(), m_Alive);
    manager.Release(nullptr);
    EXPECT_EQ(m_Log.GetText(), "");

    CTexture foreign("f", MakeImage(1, 1, EImageFormat::Indexed8, {1}), nullptr);
    manager.Release(&foreign);
    EXPECT_EQ(m_Log.TakeLines(),
              std::vector<std::string>{"[CTextureManager::Release] not a loaded texture"});
    manager.Load("Masks/Soft.png", 3); // still in use when the manager ends
}

TEST_F(CTextureManagerTest, ReloadKeepsThePointerAndAFaultKeepsThePicture)
{
    CTextureManager manager(nullptr);
    EXPECT_FALSE(manager.Reload("Masks/Soft.png")) << "not loaded yet";
    EXPECT_EQ(manager.Load("missing.png", 1), nullptr);
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    EXPECT_EQ(manager.Load(nullptr, 1), nullptr);
    EXPECT_EQ(m_Log.TakeLines(), std::vector<std::string>{"[CTextureManager::Load] no name"});
    EXPECT_EQ(manager.GetCount(), 0U);
    ITexture* pTexture = manager.Load("Masks/Soft.png", 1);
    ASSERT_NE(pTexture, nullptr);
    SaveGrey("Masks/Soft.png", 77);
    EXPECT_TRUE(manager.Reload("masks\\soft.PNG"));
    EXPECT_EQ(LockAll(*pTexture), (std::vector<int>{77, 200}));
    EXPECT_EQ(m_Log.GetText(), "");

    WriteBytes(m_Folder.Path("Masks/Soft.png"), "spoiled");
    EXPECT_FALSE(manager.Reload("Masks/Soft.png"));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    EXPECT_EQ(LockAll(*pTexture), (std::vector<int>{77, 200}));
}

TEST_F(CTextureManagerTest, TheEngineReloadsWhatTheWorldSaved)
{
    CEngineHost engine;
    ITexture* pTexture = engine.GetTextures().Load("Masks/Soft.png", 1);
    ASSERT_NE(pTexture, nullptr);
    const auto pImage = MakeImage(2, 1, EImageFormat::Indexed8, {9, 8});
    EXPECT_TRUE(engine.GetWorld()->SaveImage("Masks/Soft.png", pImage.get(), nullptr));
    EXPECT_EQ(engine.ReloadTexture("masks/soft.png"), 1);
    EXPECT_EQ(LockAll(*pTexture), (std::vector<int>{9, 8}));
    EXPECT_EQ(engine.ReloadTexture("masks/other.png"), 0);
    SaveGrey("Masks/Soft.png", 55); // named by its whole path now
    EXPECT_EQ(engine.ReloadTexture(m_Folder.Path("Masks/Soft.png").c_str()), 1);
    EXPECT_EQ(LockAll(*pTexture)[0], 55);
    EXPECT_EQ(engine.ReloadTexture("Soft.png"), 0) << "another file";
    EXPECT_FALSE(engine.GetWorld()->SaveImage("Masks/Soft.xyz", pImage.get(), nullptr));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    engine.GetTextures().Release(pTexture);
}

TEST_F(CTextureManagerTest, TheWorldNeverShowsATextureThatIsGone)
{
    CWorld world;
    ASSERT_TRUE(world.CreateTerrain(4, 4, {4, 4, 4}));
    CTextureManager manager(&world);
    ITexture* pMask = manager.Load("Masks/Soft.png", 1);
    const uint32_t uHandle = world.RegisterTerrainTexture(pMask, "tellur_edit_heightmap");
    const uint32_t uSecond = world.RegisterTerrainTexture(pMask, "tellur_edit_heightmap");
    EXPECT_NE(uHandle, 0U);
    EXPECT_NE(uHandle, uSecond);
    EXPECT_EQ(world.FindTerrainTexture(uHandle), pMask);
    world.GetTerrain()->DrawProjectedTexture({}, pMask);

    // A brush gives its mask back before it takes the overlay off.
    manager.Release(pMask);
    EXPECT_EQ(world.FindTerrainTexture(uHandle), nullptr);
    EXPECT_EQ(world.GetCTerrain()->GetProjectedTexture().pTexture, nullptr);
    world.ReleaseTexture(uHandle);
    world.ReleaseTexture(uSecond);
    EXPECT_EQ(world.GetRegistrationCount(), 0U);
    EXPECT_EQ(m_Log.GetText(), "");
}

} // namespace
