#include "tellur/modes/TerraformingState.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/modification/HeightBuffers.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <tuple>

namespace
{

const std::string BROWSE =
    "Host.BrowseForFile(0, height, null, data, Height map files (*.height)|*.height)";

class CPluginCommands : public CPluginFixture
{
protected:
    CPluginCommands()
    {
        Initialize();
        WatchToolBar();
    }

    Lines Command(int32_t iCommand)
    {
        m_Plugin->OnCommand(iCommand);
        return TakeCalls();
    }

    Lines Action(int32_t iAction)
    {
        m_Plugin->OnAction(6, iAction, 1);
        return TakeCalls();
    }
};

} // namespace

TEST_F(CPluginCommands, ThePanelCommandOpensAndCloses)
{
    const Lines open = {"ToolBar(1 0)", // pressed, then checked
                        "ToolBar(1 1)",
                        "Host.SetPluginViewState(1, 0x4100, 0)",
                        "Host.OpenPluginView(CTellurView)"};
    EXPECT_EQ(Command(1), open);
    OpenPanel();
    EXPECT_EQ(Command(1),
              (Lines{"Panel.StoreExtentLimits()",
                     "ToolBar(0 1)",
                     "ToolBar(0 0)",
                     "Host.ClosePluginView()"}));
    EXPECT_EQ(m_Plugin->GetExtentLimits().fMin, 12.5F);
    EXPECT_EQ(m_Plugin->GetExtentLimits().fMax, 8000.0F);
    m_Plugin->SetPanel(nullptr);

    m_Plugin->Activate(false);
    EXPECT_EQ(TakeCalls(), Lines{});
    m_Plugin->Activate(true);
    EXPECT_EQ(TakeCalls(), open);
}

TEST_F(CPluginCommands, SavingTheHeightMapAsksForAFileAndWritesTheTerrainsOwnHeights)
{
    EXPECT_EQ(Command(2), Lines{BROWSE}) << "cancelled";
    m_Host.strBrowseAnswer = "data/level.height";
    const std::string strSave = "Terrain.SaveHeightMap(data/level.height, null, 0, 0)";
    EXPECT_EQ(Command(2), (Lines{BROWSE, strSave}));

    EXPECT_TRUE(m_Plugin->SaveHeightMap(""));
    EXPECT_TRUE(m_Plugin->SaveHeightMap(nullptr));
    TakeCalls();
    EXPECT_TRUE(m_Plugin->SaveHeightMap("other.height"));
    EXPECT_EQ(TakeCalls(), (Lines{"Terrain.SaveHeightMap(other.height, null, 0, 0)"}));
    m_Fake.terrain.bFileResult = false;
    EXPECT_FALSE(m_Plugin->SaveHeightMap("other.height"));
    TakeCalls();
    m_Fake.world.pTerrain = nullptr;
    EXPECT_FALSE(m_Plugin->SaveHeightMap(nullptr));
    EXPECT_EQ(TakeCalls(), Lines{BROWSE}) << "no terrain: asked, nothing written";
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPluginCommands, ExportExtentSwitchesTheModeAndUnknownCommandsDoNothing)
{
    EXPECT_EQ(Command(5),
              (Lines{"Modes.ActivateMode(2, 0)",
                     "Host.SetModeCaption(Export terrain extent)",
                     "Host.RefreshView(1)"}));
    EXPECT_EQ(m_Fake.modes.iCurrent, 2);
    for (const int32_t iCommand : {0, 4, 6, -1, 32801, static_cast<int32_t>(HANDLE) + 1})
    {
        EXPECT_EQ(Command(iCommand), Lines{}) << iCommand;
    }
}

TEST_F(CPluginCommands, SetModeRefusesWithOneLineAndNeverLogsWhenLeaving)
{
    const std::string strBusy = "[IPluginImpl::SetMode] current mode cannot be deactivated";

    const std::tuple<int32_t, bool, bool, Lines> cases[] = {
        // mode, whether the current one may be left, result, log
        {2, true, true, {}},
        {2, false, false, {strBusy}},
        // Not available: whether the current mode may be left is not asked.
        {0, false, false, {"[IPluginImpl::SetMode] mode 0 not available"}},
        {-2, true, false, {"[IPluginImpl::SetMode] mode -2 not available"}},
        {-1, true, true, {}},
        {-1, false, false, {}},
    };

    for (const auto& [iMode, bMayLeave, bResult, log] : cases)
    {
        SCOPED_TRACE(testing::Message() << iMode << bMayLeave);
        m_Fake.modes.iCurrent = -1;
        m_Fake.modes.mayDeactivate = bMayLeave;
        EXPECT_EQ(m_Plugin->SetMode(iMode, 5), bResult);
        EXPECT_EQ(m_Log.TakeLines(), log);
    }
}

TEST_F(CPluginCommands, EnableTerraformingSwitchesOnlyWhenItChangesSomething)
{
    const Lines already = {"[IPluginImpl::EnableTerraforming] bAlreadyTerraforming == bEnable"};
    m_Plugin->EnableTerraforming(false);
    EXPECT_EQ(m_Log.TakeLines(), already);
    EXPECT_EQ(TakeCalls(), Lines{});

    m_Plugin->EnableTerraforming(true);
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"[IPluginImpl::SetMode] mode 0 not available"}))
        << "no brush yet";
    UseToolBrush("SetHeightFunction");
    m_Plugin->EnableTerraforming(true);
    EXPECT_EQ(TakeCalls().at(0), "Modes.ActivateMode(0, 0)");
    m_Plugin->EnableTerraforming(true);
    EXPECT_EQ(m_Log.TakeLines(), already);
    EXPECT_EQ(TakeCalls(), Lines{}) << "not entered again";

    m_Plugin->EnableTerraforming(false);
    EXPECT_EQ(TakeCalls().at(0), "Modes.DeactivateMode(0)");
    EXPECT_EQ(m_Fake.modes.iCurrent, -1);
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), nullptr) << "leaving drops the brush";
    EXPECT_EQ(m_Log.TakeLines(), Lines{});
}

TEST_F(CPluginCommands, ActionZeroTogglesAndRefreshesTheView)
{
    UseToolBrush("SetHeightFunction");
    Action(0);
    EXPECT_EQ(m_Fake.modes.iCurrent, 0);
    EXPECT_EQ(Action(0).back(), "Host.RefreshView(6)");
    EXPECT_EQ(m_Fake.modes.iCurrent, -1);
}

TEST_F(CPluginCommands, InputReachesAModeOfTheGroupAlone)
{
    const std::tuple<int, Lines> groups[] = {{7,
                                              {"Modes.OnLButtonDown(3, 1, 10 20 -5 6)",
                                               "Modes.OnMouseMove(3, 2, 11 21, 7 1, -8 9)",
                                               "Modes.OnLButtonUp(3, 4, 12 22 13 14)",
                                               "Modes.OnAction(6, 2, 4000000000)",
                                               "Modes.Notify(100, 200, 300)"}},
                                             {8, {}},
                                             {-1, {}}};

    for (const auto& [iGroup, expected] : groups)
    {
        SCOPED_TRACE(iGroup);
        m_Fake.modes.iCurrent = m_Fake.modes.RegisterMode(new CSilentMode, iGroup);
        TakeCalls();
        m_Plugin->OnLButtonDown(3, 1, 10, 20, -5, 6);
        m_Plugin->OnMouseMove(3, 2, 11, 21, 7, 1, -8, 9);
        m_Plugin->OnLButtonUp(3, 4, 12, 22, 13, 14);
        m_Plugin->OnAction(6, 2, 4000000000U);
        m_Plugin->Notify(100, 200, 300);
        EXPECT_EQ(TakeCalls(), expected);
    }
}

TEST_F(CPluginCommands, ANewBrushReplacesPreviewOverlayAndPanelState)
{
    OpenPanel();
    CTellurBrush* pBrush = UseToolBrush("SetHeightFunction");
    STerraformingState& state = GetTerraformingState();
    state.pPreview = m_Fake.world.CreateTextureFromImage(pBrush->GetBitmapImage(), "Blob");
    TakeCalls();
    m_Plugin->SetCurrentBrush(pBrush);
    EXPECT_EQ(TakeCalls(),
              (Lines{"World.ReleaseTexture(Blob)",
                     "Terrain.SetEditMaterial()",
                     "Terrain.SetEditOverlay(0)",
                     "Panel.RefreshBrushControls()",
                     "Panel.EnableBrushControls()"}));
}

TEST_F(CPluginCommands, AddingABrushAsksForItsName)
{
    const std::string strAsk = "Host.PromptText(Set brush name, Name :, )";
    const auto& predefined = m_Plugin->GetBrushContainer()->GetPredefined();
    EXPECT_FALSE(m_Plugin->AddBrushToPredefined(nullptr));
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"[IPluginImpl::AddBrushToPredefined] no brush"}));
    EXPECT_EQ(TakeCalls(), Lines{});

    CTellurBrush* pBrush = UseToolBrush("SetHeightFunction");
    EXPECT_FALSE(m_Plugin->AddBrushToPredefined(pBrush)) << "cancelled";
    EXPECT_EQ(TakeCalls(), Lines{strAsk});
    EXPECT_TRUE(predefined.empty());

    m_Host.promptAnswer = "Hill";
    EXPECT_TRUE(m_Plugin->AddBrushToPredefined(pBrush));
    EXPECT_STREQ(pBrush->GetName(), "Hill");
    m_Host.promptAnswer = "";
    EXPECT_TRUE(m_Plugin->AddBrushToPredefined(pBrush));
    EXPECT_STREQ(pBrush->GetName(), "Hill") << "only the copy is named afresh";
    ASSERT_EQ(predefined.size(), 2U);
    EXPECT_STREQ(predefined[1]->GetName(), "Hill000");
    EXPECT_NE(predefined[0].get(), pBrush);
}

TEST_F(CPluginCommands, NotificationsReleaseTheButtonRefillAndForgetTheHost)
{
    const auto notify = [this](int32_t iCode)
    {
        m_Plugin->OnHostNotify(iCode, 0);
        return TakeCalls();
    };
    Command(1);
    EXPECT_EQ(notify(5), Lines{}) << "no panel to refill";
    OpenPanel();
    EXPECT_EQ(notify(5), (Lines{"Panel.FillResolutionList()"}));
    for (const int32_t iCode : {0, 2, 3, 4, 6, 9, 11, -1})
    {
        EXPECT_EQ(notify(iCode), Lines{}) << iCode;
    }
    EXPECT_EQ(notify(1), (Lines{"ToolBar(0 1)", "ToolBar(0 0)"}));
    m_Plugin->SetPanel(nullptr);

    EXPECT_EQ(notify(10), Lines{});
    for (int32_t iCommand = 1; iCommand <= 5; ++iCommand)
    {
        EXPECT_EQ(Command(iCommand), Lines{}) << "nobody to ask: " << iCommand;
    }
    EXPECT_EQ(Action(0), Lines{});
    EXPECT_FALSE(m_Plugin->SetMode(2, 0));
    EXPECT_FALSE(m_Plugin->SaveHeightMap(nullptr));
    EXPECT_FALSE(m_Plugin->UpdateTerrainNormals());
    m_Plugin->CheckHeightMapWritable();
    m_Plugin->SetCurrentBrush(m_Plugin->GetBrushContainer()->FindBrush("SetHeightFunction"));
    m_Plugin->OnMouseMove(1, 0, 0, 0, 0, 0, 0, 0);
    EXPECT_EQ(TakeCalls(), Lines{});
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPluginCommands, ReleasingWorldResourcesLeavesNothingOfTheLevelBehind)
{
    CTellurBrush* pBrush = UseToolBrush("RelativeHeightFunction");
    m_Plugin->EnableTerraforming(true);
    m_Host.lastPick = {1, {40.0F, 0.0F, 40.0F}};
    m_Plugin->OnMouseMove(1, 0, 0, 0, 0, 0, 0, 0);
    m_Fake.modes.GetCurrent()->Render();
    m_Plugin->OnLButtonDown(1, 0, 0, 0, 0, 0);
    STerraformingState& state = GetTerraformingState();
    ASSERT_NE(state.pPreview, nullptr);
    ASSERT_EQ(state.picked.x, 40.0F);
    TakeCalls();

    m_Plugin->ReleaseWorldResources();
    EXPECT_EQ(TakeCalls(), (Lines{"World.ReleaseTexture(TellurBlobTexture)"}));
    EXPECT_TRUE(state.picked.x == 0.0F && state.picked.y == 0.0F && state.picked.z == 0.0F);
    EXPECT_EQ(state.pSession, nullptr) << "the drag's terrain goes";
    EXPECT_EQ(GetKeptHeightCount(), 0U);
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), pBrush);
    m_Fake.world.pTerrain = nullptr;
    m_Plugin->OnMouseMove(1, 0, 0, 0, 0, 0, 0, 0);
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    EXPECT_TRUE(m_Host.undos.empty());
}

TEST_F(CPluginCommands, TheResourceModuleIsCurrentDuringEachOperationAndRestoredAfter)
{
    static const SResourceModule s_Other;
    const CResourceScope other(&s_Other);
    IPluginImpl& plugin = *m_Plugin;
    UseToolBrush("SetHeightFunction");
    CMenu menu;
    char szText[64];

    // nNotes: calls of the host that show the module; 0 for early returns
    const std::tuple<const char*, std::function<void()>, size_t> cases[] = {
        {"toggle panel", [&] { plugin.OnCommand(1); }, 1},
        {"apply without a panel", [&] { plugin.OnCommand(3); }, 0},
        {"show", [&] { plugin.Activate(true); }, 1},
        {"action", [&] { plugin.OnAction(1, 0, 1); }, 2}, // the mode's refresh and its own
        {"no brush to add", [&] { plugin.AddBrushToPredefined(nullptr); }, 0},
        {"add brush", [&] { plugin.AddBrushToPredefined(plugin.GetCurrentBrush()); }, 1},
        {"menu without a panel", [&] { plugin.AddContextMenuItems(&menu, 1, 0, 0); }, 0},
        {"panel", [&] { plugin.SetPanel(&m_Panel); }, 0},
        {"menu", [&] { plugin.AddContextMenuItems(&menu, 1, 0, 0); }, 1},
        {"notification", [&] { plugin.OnHostNotify(5, 0); }, 0},
        {"text", [&] { plugin.GetCommandText(1, 1, szText); }, 0},
    };

    for (const auto& [pszName, run, nNotes] : cases)
    {
        SCOPED_TRACE(pszName);
        m_Host.modules.clear();
        run();
        EXPECT_EQ(m_Host.modules,
                  std::vector<const SResourceModule*>(nNotes, &GetPluginResources()));
        EXPECT_EQ(GetCurrentResourceModule(), &s_Other);
    }
    EXPECT_STREQ(szText, "Terrain");

    m_Fake.modes.modes.clear();
    IPluginImpl fresh;
    fresh.Attach(&m_Host, 0, &m_Fake.engine);
    m_Host.modules.clear();
    fresh.Initialize();
    EXPECT_EQ(m_Host.modules, std::vector<const SResourceModule*>(2, &GetPluginResources()));
    EXPECT_EQ(GetCurrentResourceModule(), &s_Other);
    m_Fake.modes.modes.clear();
}
