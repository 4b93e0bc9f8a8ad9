#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "framework/core/CMenu.h"
#include "framework/core/CToolBar.h"
#include "framework/core/IFrontEnd.h"
#include "host/FileSystem.h"
#include "host/Terrain.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <string>

namespace
{

// Answers everything it is asked, each time with something recognisable.
class CTalkingFace : public CHeadlessFace
{
public:
    bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) override
    {
        strAnswer = std::string(pszTitle) + "/" + pszLabel;
        return true;
    }

    std::string BrowseForFile(int iKind,
                              const char* pszExtension,
                              const char* pszName,
                              const char* pszFolder,
                              const char* pszFilter) override
    {
        return std::to_string(iKind) + (pszExtension != nullptr ? pszExtension : "-") +
               (pszName != nullptr ? pszName : "-") + pszFolder + pszFilter;
    }

    bool PickTerrain(ViewId view, ViewPoint point, SVec3& hit) override
    {
        if (view != 1)
        {
            return false;
        }
        hit = {static_cast<float>(point & 0xFFFFU), 2.0F, static_cast<float>(point >> 16U)};
        return true;
    }

    bool IsKeyboardNavigationOn() override { return true; }

    bool IsCameraKeyDown(ECameraKey eKey) override { return eKey == eKeyDown; }

    void OnCaptionChanged(const char* pszCaption) override { strCaption = pszCaption; }

    ECameraKey eKeyDown = ECameraKey::Back;
    std::string strCaption;
};

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
    CTalkingFace m_Face;
    CEditorHost m_Host{m_Face};
};

} // namespace

TEST_F(CEditorHostTest, AsksItsFaceForWhatNeedsAPerson)
{
    std::string strAnswer;
    EXPECT_TRUE(m_Host.PromptText("Set brush name", "Name :", strAnswer));
    EXPECT_EQ(strAnswer, "Set brush name/Name :");
    EXPECT_EQ(m_Host.BrowseForFile(0, "height", nullptr, "data", "Height|*.height"),
              "0height-dataHeight|*.height");
    SVec3 hit = {-7.0F, -8.0F, -9.0F};
    EXPECT_EQ(m_Host.PickTerrain(2, 0, hit, 0), 0);
    EXPECT_EQ(hit.y, -8.0F);
    EXPECT_EQ(m_Host.PickTerrain(1, CModeManager::PackPoint(3, 4), hit, 0), 1);
    EXPECT_EQ(hit.x, 3.0F);
    EXPECT_EQ(hit.z, 4.0F);
    EXPECT_EQ(m_Host.GetActiveView(), 1U);
    ASSERT_NE(m_Host.GetViewWindow(1), nullptr);
    EXPECT_NE(m_Host.GetViewWindow(1)->GetWindowHandle(), 0U);
    EXPECT_EQ(m_Host.GetViewWindow(NO_VIEW), nullptr);
    EXPECT_FALSE(m_Host.HandlesViewAction(1, 0x4000));
    m_Host.SetModeCaption("Terraforming");
    EXPECT_EQ(m_Face.strCaption, "Terraforming");
    m_Host.SetModeCaption(nullptr);
    EXPECT_EQ(m_Host.GetCaption(), "");
}

TEST_F(CEditorHostTest, EachCameraKeyIsAskedForByItself)
{
    for (const ECameraKey eKey :
         {ECameraKey::Back, ECameraKey::Right, ECameraKey::Forward, ECameraKey::Left})
    {
        m_Face.eKeyDown = eKey;
        EXPECT_EQ(m_Host.IsCameraBackKeyDown(), eKey == ECameraKey::Back);
        EXPECT_EQ(m_Host.IsCameraRightKeyDown(), eKey == ECameraKey::Right);
        EXPECT_EQ(m_Host.IsCameraForwardKeyDown(), eKey == ECameraKey::Forward);
        EXPECT_EQ(m_Host.IsCameraLeftKeyDown(), eKey == ECameraKey::Left);
    }
}

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
    m_Host.RefreshAfterReload();
    EXPECT_EQ(m_Host.GetCounters().nReloads, 1U);
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
    const IEditorAction* pFirst = m_Host.GetRegistry().FindProcess("Counted");
    ASSERT_NE(pFirst, nullptr);
    EXPECT_EQ(pFirst->GetId(), 0);
    EXPECT_EQ(m_Host.GetRegistry().FindProcess("counted"), nullptr);
    EXPECT_EQ(nAlive, 2);
    m_Host.DestroyPluginObjects();
    EXPECT_EQ(nAlive, 0);
    EXPECT_EQ(m_Host.GetRegistry().GetProcessCount(), 0U);
}

TEST_F(CEditorHostTest, KeepsMenusSettingsAndToolBarsThatItCanUse)
{
    const CLogCatcher log;
    CMenu popup;
    int32_t iValue = 3;
    CToolBar toolBar;
    EXPECT_FALSE(m_Host.CreatePluginToolBar(nullptr, 2100));
    EXPECT_FALSE(m_Host.CreatePluginToolBar(&toolBar, 2100)); // no resource module here
    EXPECT_TRUE(m_Host.GetRegistry().GetToolBars().empty());
    m_Host.InsertPluginMenu(0, nullptr, nullptr, "Terrain", "Tools");
    EXPECT_TRUE(m_Host.GetRegistry().GetMenus().empty());
    m_Host.InsertPluginMenu(0, nullptr, &popup, "Terrain", "Tools");
    ASSERT_EQ(m_Host.GetRegistry().GetMenus().size(), 1U);
    EXPECT_EQ(m_Host.GetRegistry().GetMenus()[0].pPopup, &popup);
    EXPECT_EQ(m_Host.GetRegistry().GetMenus()[0].strParent, "Tools");
    m_Host.RegisterSetting("Depth", 5, nullptr, "f:EDIT;");
    EXPECT_TRUE(m_Host.GetSettings().GetRegistered().empty());
    m_Host.RegisterSetting("Depth", 5, &iValue, "f:EDIT;");
    ASSERT_EQ(m_Host.GetSettings().GetRegistered().size(), 1U);
    EXPECT_EQ(m_Host.GetSettings().GetRegistered()[0].pValue, &iValue);
    EXPECT_EQ(m_Host.LookupText(12345, nullptr), nullptr);
}

TEST(CEditorHost, MakesItsFacesFrontEndCurrentForItsLife)
{
    // A front end is recognised by the cursor position it remembers.
    class CFrontEnd : public IFrontEnd
    {
    public:
        bool IsKeyDown(EKey) const override { return true; }

        SScreenPoint GetCursorPos() const override { return {41, 42}; }

        void SetCursorPos(SScreenPoint) override {}

        void SetCursor(const SCursorResource*) override {}

        void SetCapture(uintptr_t) override {}

        void ReleaseCapture() override {}

        EMessageBoxAnswer MessageBox(const char*, uint32_t) override
        {
            return EMessageBoxAnswer::Cancel;
        }
    };

    class CFace : public CHeadlessFace
    {
    public:
        IFrontEnd* GetFrontEnd() override { return &frontEnd; }

        CFrontEnd frontEnd;
    };

    EXPECT_FALSE(GetFrontEnd().IsKeyDown(EKey::Alt));
    {
        CFace face;
        const CEditorHost host(face);
        EXPECT_TRUE(GetFrontEnd().IsKeyDown(EKey::Alt));
        EXPECT_EQ(GetFrontEnd().GetCursorPos().y, 42);
    }
    EXPECT_FALSE(GetFrontEnd().IsKeyDown(EKey::Alt));
}
