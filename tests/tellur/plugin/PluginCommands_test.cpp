#include "tellur/modes/CTerraformingState.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CTerrainModification.h"
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

    int GetMode() { return m_Host.GetModes().GetCurrentModeId(); }

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
    m_Host.SetHeight(3, 4, 77.0F);
    m_Face.strBrowseAnswer = "data/level.height";
    EXPECT_EQ(Command(2), Lines{BROWSE});
    EXPECT_TRUE(m_Plugin->SaveHeightMap(nullptr));
    EXPECT_TRUE(m_Plugin->SaveHeightMap(""));
    TakeCalls();
    EXPECT_TRUE(m_Plugin->SaveHeightMap("other.height"));
    EXPECT_EQ(TakeCalls(), Lines{}) << "it is named";
    EXPECT_EQ(m_Log.GetText(), "");
    for (const char* pszFile : {"data/level.height", "other.height"})
    {
        ASSERT_TRUE(m_Host.OpenLevel(pszFile));
        EXPECT_EQ(m_Host.At(3, 4), 77.0F);
    }
    EXPECT_FALSE(m_Plugin->SaveHeightMap(m_Folder.GetFolder().c_str()));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U) << "the engine's own";
    m_Host.GetWorld().CloseTerrain();
    EXPECT_FALSE(m_Plugin->SaveHeightMap(nullptr));
    EXPECT_EQ(TakeCalls(), Lines{BROWSE}) << "no terrain: asked, nothing written";
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPluginCommands, ExportExtentSwitchesTheModeAndUnknownCommandsDoNothing)
{
    EXPECT_EQ(Command(5),
              (Lines{"Host.SetModeCaption(Export terrain extent)", "Host.RefreshView(1)"}));
    EXPECT_EQ(GetMode(), 2);
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

    CSilentMode* pSilent = EnterSilentMode(7);
    for (const auto& [iMode, bMayLeave, bResult, log] : cases)
    {
        SCOPED_TRACE(testing::Message() << iMode << bMayLeave);
        pSilent->bMayLeave = true;
        m_Host.GetModes().ActivateMode(static_cast<int>(pSilent->GetId()), 0);
        pSilent->bMayLeave = bMayLeave;
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
    EXPECT_EQ(GetMode(), 0);
    TakeCalls();
    m_Plugin->EnableTerraforming(true);
    EXPECT_EQ(m_Log.TakeLines(), already);
    EXPECT_EQ(TakeCalls(), Lines{}) << "not entered again";

    m_Plugin->EnableTerraforming(false);
    EXPECT_EQ(GetMode(), -1);
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), nullptr) << "leaving drops the brush";
    EXPECT_EQ(m_Log.TakeLines(), Lines{});
}

TEST_F(CPluginCommands, ActionZeroTogglesAndRefreshesTheView)
{
    UseToolBrush("SetHeightFunction");
    Action(0);
    EXPECT_EQ(GetMode(), 0);
    EXPECT_EQ(Action(0).back(), "Host.RefreshView(6)");
    EXPECT_EQ(GetMode(), -1);
}

TEST_F(CPluginCommands, InputReachesAModeOfTheGroupAlone)
{
    for (const int iGroup : {7, 8}) // what reaches it, scripts prove
    {
        const CSilentMode& mode = *EnterSilentMode(iGroup);
        m_Plugin->OnLButtonDown(3, 1, 10, 20, -5, 6);
        m_Plugin->OnMouseMove(3, 2, 11, 21, 7, 1, -8, 9);
        m_Plugin->OnLButtonUp(3, 4, 12, 22, 13, 14);
        m_Plugin->OnAction(6, 2, 4000000000U);
        m_Plugin->Notify(100, 200, 300);
        EXPECT_EQ(mode.nInput, iGroup == 7 ? 5 : 0);
    }
}

TEST_F(CPluginCommands, ANewBrushReplacesPreviewOverlayAndPanelState)
{
    OpenPanel();
    CTellurBrush* pBrush = UseToolBrush("SetHeightFunction");
    CTerraformingState& state = GetTerraformingState();
    ASSERT_NE(state.UpdatePreview(), nullptr);
    m_Host.GetTerrain().SetEditOverlay(5);
    m_Host.GetTerrain().SetEditMaterial("before");
    m_Plugin->SetCurrentBrush(pBrush);
    EXPECT_EQ(TakeCalls(), (Lines{"Panel.RefreshBrushControls()", "Panel.EnableBrushControls()"}));
    EXPECT_EQ(state.GetPreview(), nullptr);
    EXPECT_EQ(CTexture::GetAliveCount(), 0U);
    EXPECT_EQ(m_Host.GetTerrain().GetEditOverlay(), 0U);
    EXPECT_EQ(m_Host.GetTerrain().GetEditMaterial(), "");
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
    m_Face.lastPick = {40.0F, 0.0F, 40.0F};
    m_Plugin->OnMouseMove(1, 0, 0, 0, 0, 0, 0, 0);
    m_Host.RenderFrame();
    m_Plugin->OnLButtonDown(1, 0, 0, 0, 0, 0);
    CTerraformingState& state = GetTerraformingState();
    ASSERT_NE(state.GetPreview(), nullptr);
    ASSERT_EQ(state.GetPicked().x, 40.0F);

    m_Plugin->ReleaseWorldResources();
    EXPECT_EQ(CTexture::GetAliveCount(), 0U);
    const SVec3& picked = state.GetPicked();
    EXPECT_TRUE(picked.x == 0.0F && picked.y == 0.0F && picked.z == 0.0F);
    EXPECT_EQ(state.GetSession(), nullptr) << "the drag's terrain goes";
    EXPECT_EQ(GetKeptTileCount(), 0U);
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), pBrush);
    m_Host.GetWorld().CloseTerrain();
    m_Plugin->OnMouseMove(1, 0, 0, 0, 0, 0, 0, 0);
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 0U);
}

TEST_F(CPluginCommands, TheResourceModuleIsCurrentDuringEachOperationAndRestoredAfter)
{
    static const SResourceModule s_Other;
    const CResourceScope other(&s_Other);
    const SResourceModule* pSeen = nullptr;
    m_Face.onOpenView = [&](const CRuntimeClass*)
    {
        pSeen = GetCurrentResourceModule();
    };
    UseToolBrush("SetHeightFunction");
    CMenu menu;
    char szText[64] = "";
    m_Plugin->OnCommand(1);
    EXPECT_EQ(pSeen, &GetPluginResources());
    m_Plugin->OnCommand(3);
    m_Plugin->OnAction(1, 0, 1);
    EXPECT_FALSE(m_Plugin->AddBrushToPredefined(nullptr));
    EXPECT_EQ(m_Log.TakeLines().back(), "[IPluginImpl::AddBrushToPredefined] no brush");
    m_Plugin->AddContextMenuItems(&menu, 1, 0, 0); // returns early
    OpenPanel();
    m_Plugin->AddContextMenuItems(&menu, 1, 0, 0);
    m_Plugin->OnHostNotify(5, 0);
    m_Plugin->GetCommandText(1, 1, szText);
    EXPECT_STREQ(szText, "Terrain") << "a text of the plug-in's own";
    EXPECT_EQ(GetCurrentResourceModule(), &s_Other);
}
