#include "functions/ITellurFunction.h"
#include "modes/TerraformingState.h"
#include "tests/plugin/PluginFixture.h"

#include <cstring>

namespace
{

class CPluginInitialize : public CPluginFixture
{
};

// The functions that brushes can be made of, in the order of their containers.
const Lines FUNCTIONS = {"PointHeightFunction",
                         "RelativeHeightFunction",
                         "BlurFunction",
                         "SetHeightFunction",
                         "RampFunction",
                         "PosterizeFunction"};

} // namespace

TEST_F(CPluginInitialize, TheIndexModulo64GivesTheActionHandle)
{
    const struct
    {
        uint32_t uPlugin;
        uint32_t uHandle;
    } cases[] = {{0, 0x4000}, {5, 0x4500}, {63, 0x7F00}, {64, 0x4000}, {65, 0x4100}};

    for (const auto& testCase : cases)
    {
        SCOPED_TRACE(testCase.uPlugin);
        EXPECT_EQ(m_Plugin->Attach(&m_Host, testCase.uPlugin, &m_Fake.engine), m_Plugin.get());
        uint32_t uHandle = 1;
        EXPECT_EQ(m_Plugin->GetActionHandle(&uHandle), &uHandle);
        EXPECT_EQ(uHandle, testCase.uHandle);
    }
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(CPluginInitialize, CallsTheHostInItsFixedOrder)
{
    m_Fake.textures.Put("mask.png", 1, 1, {255});
    WriteBytes(m_Folder.Path("PredefinedBrushes.ini"),
               "!brush()\n!mask( s )\n!brush_name( s )\n"
               "brush()\n{\n brush_name( \"First\" )\n mask( \"mask.png\" )\n}\n"
               "brush()\n{\n brush_name( \"Second\" )\n}\n");
    OpenPanel();
    m_Plugin->Initialize();
    EXPECT_EQ(TakeCalls(),
              (Lines{"Host.CreatePluginToolBar(toolbar, 2100)",
                     "Host.InsertPluginMenu(0, menu, Terrain, Tools)",
                     "Host.RegisterPluginA()",
                     "Host.RegisterPluginB()",
                     "Modes.RegisterMode(ModeTerraforming, 7)",
                     "Modes.RegisterMode(ModeTerraforming, 7)",
                     "Modes.RegisterMode(ModeExportTerrainExtent, 7)",
                     "Textures.Load(mask.png, 1)", // the predefined brushes
                     "World.RegisterTerrainTexture(mask.png, tellur_edit_heightmap)",
                     "Terrain.SetEditMaterial(null)",
                     "Terrain.SetEditOverlay(0)",
                     "Panel.RefreshBrushControls()",
                     "Panel.EnableBrushControls()",
                     "Host.RegisterSetting(2D draw undo manager stack size, 5, "
                     "f:EDIT;e:EDIT;c:Tellur;d:2D draw undo manager stack size;)",
                     "Host.RegisterProcess(Export terrain to STL format)"}));
    EXPECT_EQ(m_Log.GetText(), "");
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), nullptr);

    const auto& predefined = m_Plugin->GetBrushContainer().GetPredefined();
    ASSERT_EQ(predefined.size(), 2U);
    EXPECT_STREQ(predefined[0]->GetName(), "First");
    EXPECT_STREQ(predefined[1]->GetName(), "Second");

    // The registered setting is the plug-in's own number.
    *static_cast<int32_t*>(m_Host.settings.at(0).pValue) = 33;
    EXPECT_EQ(m_Plugin->Get2DDrawUndoDepth(), 33);
}

TEST_F(CPluginInitialize, MenuAndToolBarCarryTheHostsNumbers)
{
    for (const uint32_t uPlugin : {0U, 5U, 65U})
    {
        SCOPED_TRACE(uPlugin);
        m_Fake.modes.modes.clear();
        IPluginImpl plugin;
        plugin.Attach(&m_Host, uPlugin, &m_Fake.engine);
        plugin.Initialize();
        const uint32_t uHandle = 0x4000 + 256 * (uPlugin % 64);

        uint32_t uId = 0;
        uint32_t uStyle = 0;
        int iImage = 0;
        ASSERT_EQ(m_Host.pPluginToolBar->GetButtonCount(), 1U);
        ASSERT_TRUE(m_Host.pPluginToolBar->GetButtonInfo(0, uId, uStyle, iImage));
        EXPECT_EQ(uId, uHandle + 1);
        EXPECT_EQ(m_Host.pPluginToolBar->GetWindowText(), "Terrain");

        std::string strMenu;
        for (size_t i = 0; i < m_Host.pMenu->GetItemCount(); ++i)
        {
            strMenu += std::to_string(m_Host.pMenu->GetItemId(i) - uHandle) + " " +
                       m_Host.pMenu->GetItemText(i) + "|";
        }
        EXPECT_EQ(strMenu,
                  "2 Save height map...|4 Edit bitmap on terrain|5 Export terrain extent to STL|");
        m_Fake.modes.modes.clear();
    }
}

TEST_F(CPluginInitialize, EveryResourceIdMapsToItsCommandAndUnknownOnesToTheHandle)
{
    static constexpr SToolBarButtonResource BUTTONS[] = {{0, 1, 9},
                                                         {2102, 2, 8},
                                                         {32796, 3, 7},
                                                         {32797, 4, 6},
                                                         {32800, 5, 5},
                                                         {32801, 6, 4},
                                                         {32799, 7, 3}};
    static constexpr SToolBarResource TOOLBARS[] = {{2100, 16, 15, 0, BUTTONS}};
    SResourceModule module;
    module.toolBars = TOOLBARS;
    m_Host.pToolBarModule = &module;
    m_Plugin->Initialize();
    std::string strButtons;
    for (size_t i = 0; i < m_Host.pPluginToolBar->GetButtonCount(); ++i)
    {
        uint32_t uId = 0;
        uint32_t uStyle = 0;
        int iImage = 0;
        m_Host.pPluginToolBar->GetButtonInfo(i, uId, uStyle, iImage);
        strButtons +=
            std::to_string(uId) + " " + std::to_string(uStyle) + " " + std::to_string(iImage) + "|";
    }
    EXPECT_EQ(strButtons, "0 1 9|16641 2 8|16642 3 7|16643 4 6|16644 5 5|16645 6 4|16640 7 3|");
}

TEST_F(CPluginInitialize, AHostWithoutToolBarTerrainOrBrushFileIsNoObstacle)
{
    m_Host.bToolBarWorks = false;
    m_Fake.world.pTerrain = nullptr;
    m_Plugin->Initialize();
    EXPECT_EQ(m_Host.pPluginToolBar->GetButtonCount(), 0U);
    EXPECT_EQ(TakeCalls().size(), 9U) << "no terrain to take the overlay from";
    EXPECT_EQ(m_Log.GetText(), "");
    EXPECT_TRUE(m_Plugin->GetBrushContainer().GetPredefined().empty());
}

TEST_F(CPluginInitialize, MakesOneToolBrushPerFunction)
{
    Initialize();
    Lines functions;
    for (const auto& pFunction : m_Plugin->GetFunctionContainer()->GetFunctions())
    {
        functions.emplace_back(pFunction->GetClassName());
    }
    EXPECT_EQ(functions, FUNCTIONS);

    Lines brushes;
    for (const auto& pBrush : m_Plugin->GetBrushContainer().GetTools())
    {
        SCOPED_TRACE(pBrush->GetName());
        brushes.emplace_back(pBrush->GetName());
        EXPECT_STREQ(pBrush->GetFunctionName(), pBrush->GetName());
        EXPECT_STREQ(pBrush->GetBitmapPath(), ".\\data\\brushes\\round.png");
        EXPECT_NE(pBrush->GetBitmapImage(), nullptr);
        EXPECT_EQ(pBrush->GetExtent(), 3200.0F);
        EXPECT_TRUE(pBrush->SetCursor()) << "the function's cursor is the plug-in's";
    }
    EXPECT_EQ(brushes, FUNCTIONS);
}

TEST_F(CPluginInitialize, DoingItTwiceReportsEveryFunctionAndKeepsTheBrushes)
{
    m_Plugin->Initialize();
    const CTellurBrush* pFirst = m_Plugin->GetBrushContainer().FindBrush("SetHeightFunction");
    m_Log.Clear();
    m_Plugin->Initialize();
    Lines expected;
    for (const std::string& strClass : FUNCTIONS)
    {
        const std::string strName = strClass.substr(0, strClass.size() - std::strlen("Function"));
        expected.push_back("[CFunctionContainer::AddFunction] function of name " + strClass +
                           " already exists");
        expected.push_back("[IPluginImpl::InitializeFunctionsAndBrushes] cannot add " + strName +
                           " function");
    }
    EXPECT_EQ(m_Log.TakeLines(), expected);
    EXPECT_EQ(m_Plugin->GetBrushContainer().GetTools().size(), FUNCTIONS.size());
    EXPECT_EQ(m_Plugin->GetBrushContainer().FindBrush("SetHeightFunction"), pFirst);
}

TEST_F(CPluginInitialize, CommandTextsComeFromTheStringTable)
{
    const struct
    {
        int32_t iPlugin;
        int32_t iCommand;
        const char* pszText;
    } cases[] = {
        {1, 1, "Terrain"},
        {1, 2, "Save height map"},
        {1, 3, ""},
        {1, 4, "Edit bitmap on terrain"},
        {1, 5, "Brush fade distance"}, // on purpose, though the command exports
        {1, 0, ""},
        {1, 6, ""},
        {1, -1, ""},
        {1, 2102, ""},
        {65, 1, "untouched"}, // the index as the host gave it is not the one in the handle
        {0, 1, "untouched"},
        {-1, 1, "untouched"},
    };

    for (const auto& testCase : cases)
    {
        SCOPED_TRACE(testing::Message() << testCase.iPlugin << " " << testCase.iCommand);
        char szText[64] = "untouched";
        m_Plugin->GetCommandText(testCase.iPlugin, testCase.iCommand, szText);
        EXPECT_STREQ(szText, testCase.pszText);
    }
    m_Plugin->GetCommandText(1, 1, nullptr);
}

TEST_F(CPluginInitialize, DescribesItsKeyboardActions)
{
    m_Plugin->RegisterActions();
    std::string strActions;
    for (const SActionDescriptor& action : m_Host.actions)
    {
        strActions += std::to_string(action.iGroup) + " " + std::to_string(action.iIndex) + " " +
                      action.strName + " " + std::to_string(action.uKey) + " " +
                      std::to_string(action.uModifiers) + "|";
    }
    EXPECT_EQ(strActions,
              "7 0 Toggle terrain modification mode 84 8|7 1 Increase Tellur brush size 0 0|"
              "7 2 Decrease Tellur brush size 0 0|");
    EXPECT_EQ(m_Plugin->GetModeGroup(), 7);
}

TEST_F(CPluginInitialize, ReservedOperationsAnswerWhatHostsExpect)
{
    IPlugin& plugin = *m_Plugin;
    EXPECT_TRUE(plugin.ReservedB(0, 0));
    EXPECT_FALSE(plugin.ReservedO(0));
    EXPECT_FALSE(plugin.ReservedQ(0, 0));
    EXPECT_FALSE(plugin.ReservedR(0, 0, 0, 0));
    EXPECT_FALSE(plugin.ReservedS(0, 0));
    EXPECT_FALSE(plugin.ReservedT(0));
    EXPECT_EQ(plugin.ReservedM(0, 0, 0, 0, 0, 0, 0), 0);
    EXPECT_EQ(plugin.ReservedV(0, 0, 0, 0), 0);
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(CPluginInitialize, ShutdownUnregistersBothAndDestroyObjectDeletes)
{
    Initialize();
    m_Plugin->Shutdown();
    EXPECT_EQ(TakeCalls(), (Lines{"Host.UnregisterPluginA()", "Host.UnregisterPluginB()"}));

    struct SObject : IPluginObject
    {
        explicit SObject(bool* pDeletedFlag)
            : pDeleted(pDeletedFlag)
        {
        }

        ~SObject() override { *pDeleted = true; }

        bool* pDeleted;
    };

    bool bDeleted = false;
    m_Plugin->DestroyObject(1, new SObject(&bDeleted));
    EXPECT_TRUE(bDeleted);
    m_Plugin->DestroyObject(1, nullptr);
}
