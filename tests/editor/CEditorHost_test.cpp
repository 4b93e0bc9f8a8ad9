#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "framework/core/CToolBar.h"
#include "host/FileSystem.h"
#include "host/Progress.h"
#include "host/Terrain.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/FakeFrontEnd.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <string>

namespace
{

// A process that counts how many of its kind live.
class CCountedProcess : public IEditorAction
{
public:
    explicit CCountedProcess(int& nAlive)
        : m_Alive(nAlive)
    {
        ++m_Alive;
    }

    ~CCountedProcess() override { --m_Alive; }

    IEditorAction* Clone() const override { return new CCountedProcess(m_Alive); }

    int32_t GetId() const override { return m_Id; }

    const char* GetName() const override { return "Counted"; }

    CRTTIObject* GetRTTIObject() override { return nullptr; }

    const CRTTIObject* GetRTTIObject() const override { return nullptr; }

    std::string GetNameString() const override { return GetName(); }

    bool CanExecute(uintptr_t, uintptr_t, uintptr_t) override { return true; }

    bool Execute() override { return true; }

    void SetFlag(uint32_t, bool) override {}

    uint32_t TestFlag(uint32_t) const override { return 0; }

    void SaveAttribs(fs::ifile&) override {}

    void LoadAttribs(const CTCPARSE_KEYWORD*) override {}

    void SetId(int32_t iId) override { m_Id = iId; }

private:
    int& m_Alive;
    int32_t m_Id = -1;
};

class CEditorHostTest : public testing::Test
{
protected:
    CHeadlessFace m_Face;
    CEditorHost m_Host{m_Face};
};

} // namespace

TEST_F(CEditorHostTest, KnowsTheEnvironmentOnlyWhileALevelHasOne)
{
    const CTempFolder folder;
    const std::string strName = folder.Path("level.height");
    std::string strPath = "untouched";
    EXPECT_FALSE(m_Host.QueryEntityClass("Environment"));
    m_Host.GetEnvironmentFile("Environment", 0x4000, 16, &strName, &strPath);
    EXPECT_EQ(strPath, "untouched");

    ASSERT_TRUE(m_Host.NewLevel(4, {40.0F, 50.0F, 40.0F}));
    EXPECT_TRUE(m_Host.QueryEntityClass("Environment"));
    EXPECT_FALSE(m_Host.QueryEntityClass("Light"));
    EXPECT_FALSE(m_Host.QueryEntityClass(nullptr));
    m_Host.GetEnvironmentFile("Environment", 0x4000, 16, &strName, &strPath);
    EXPECT_EQ(std::filesystem::path(strPath).lexically_normal(), strName);
    const std::string strEmpty;
    m_Host.GetEnvironmentFile("Environment", 0x4000, 16, &strEmpty, &strPath);
    EXPECT_EQ(strPath, "");
    m_Host.GetEnvironmentFile("Environment", 0x4000, 16, nullptr, nullptr);
    fs::set_user_root(folder.GetFolder().c_str());
    const std::string strRelative = "level.height";
    m_Host.GetEnvironmentFile("Environment", 0x4000, 16, &strRelative, &strPath);
    EXPECT_EQ(std::filesystem::path(strPath).lexically_normal(), strName);
    fs::set_user_root(nullptr);
}

TEST_F(CEditorHostTest, ReloadsTheEnvironmentFromItsFile)
{
    const CTempFolder folder;
    const std::string strPath = folder.Path("level.height");
    ASSERT_TRUE(m_Host.NewLevel(4, {40.0F, 50.0F, 40.0F}));
    const SBlockEntry entry = {2.0F, 33.0F, 2.0F};
    World& world = *m_Host.GetEngine().GetWorld();
    world.GetTerrain()->SetBlockHeights(0, 0, &entry, 1);
    ASSERT_TRUE(world.GetTerrain()->SaveHeightMap(strPath.c_str(), nullptr, 0, 0));
    ASSERT_TRUE(m_Host.OpenLevel(strPath.c_str()));
    const SBlockEntry flat = {2.0F, 1.0F, 2.0F};
    world.GetTerrain()->SetBlockHeights(0, 0, &flat, 1);
    EXPECT_EQ(world.GetTerrainHeight(20.0F, 20.0F), 1.0F);
    m_Host.GetEnvironmentFile("Light", 0x4000, 17, nullptr, nullptr);
    EXPECT_EQ(world.GetTerrainHeight(20.0F, 20.0F), 1.0F);
    m_Host.GetEnvironmentFile("Environment", 0x4000, 17, nullptr, nullptr);
    EXPECT_EQ(world.GetTerrainHeight(20.0F, 20.0F), 33.0F);
}

TEST_F(CEditorHostTest, RefusesLevelsThatCannotBe)
{
    const CLogCatcher log;
    ASSERT_TRUE(m_Host.NewLevel(4, {40.0F, 50.0F, 40.0F}));
    const float fNan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(m_Host.NewLevel(0, {40.0F, 50.0F, 40.0F}));
    EXPECT_FALSE(m_Host.NewLevel(16385, {40.0F, 50.0F, 40.0F}));
    EXPECT_FALSE(m_Host.NewLevel(8, {40.0F, 0.0F, 40.0F}));
    EXPECT_FALSE(m_Host.NewLevel(8, {fNan, 50.0F, 40.0F}));
    EXPECT_EQ(m_Host.GetEngine().GetWorld()->GetTerrain()->GetCellsPerSide(), 4U);
}

TEST_F(CEditorHostTest, ProcessesBelongToItUntilTheirPluginGoes)
{
    int nAlive = 0;
    m_Host.RegisterProcess(nullptr);
    m_Host.RegisterProcess(new CCountedProcess(nAlive));
    m_Host.RegisterProcess(new CCountedProcess(nAlive));
    ASSERT_EQ(m_Host.GetRegistry().GetProcessCount(), 2U);
    EXPECT_EQ(nAlive, 2);
    m_Host.DestroyPluginObjects();
    EXPECT_EQ(nAlive, 0);
    EXPECT_EQ(m_Host.GetRegistry().GetProcessCount(), 0U);
}

TEST_F(CEditorHostTest, IgnoresMenusSettingsAndToolBarsThatItCannotUse)
{
    const CLogCatcher log;
    CToolBar toolBar;
    EXPECT_FALSE(m_Host.CreatePluginToolBar(nullptr, 2100));
    EXPECT_FALSE(m_Host.CreatePluginToolBar(&toolBar, 2100)); // no resource module here
    EXPECT_TRUE(m_Host.GetRegistry().GetToolBars().empty());
    m_Host.InsertPluginMenu(0, nullptr, nullptr, "Terrain", "Tools");
    EXPECT_TRUE(m_Host.GetRegistry().GetMenus().empty());
    m_Host.RegisterSetting("Depth", 5, nullptr, "f:EDIT;");
    EXPECT_TRUE(m_Host.GetSettings().GetRegistered().empty());
}

TEST(CEditorHost, MakesItsFacesFrontEndAndProgressCurrentForItsLife)
{
    class CFace : public CHeadlessFace
    {
    public:
        IFrontEnd* GetFrontEnd() override { return &frontEnd; }

        bool OnProgress(const char*, float fDone) override { return fDone < 0.5F; }

        CFakeFrontEnd frontEnd;
    };

    CFace face;
    const CFakeFrontEnd before; // is current until the host comes
    {
        const CEditorHost host(face);
        EXPECT_EQ(&GetFrontEnd(), &face.frontEnd);
        EXPECT_TRUE(ReportProgress("Work", 0.25F));
        EXPECT_FALSE(ReportProgress("Work", 0.75F));
    }
    EXPECT_EQ(&GetFrontEnd(), &before);
    EXPECT_TRUE(ReportProgress("Work", 0.75F));
}
