#include "tellur/resources/FunctionFaces.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <cstring>
#include <memory>
#include <tuple>

namespace
{

using CPluginInitialize = CPluginFixture;

// The functions that brushes can be made of, in the order of their containers: six that files and
// habits depend on come first.
Lines GetFunctions()
{
    Lines functions = {"PointHeightFunction",
                       "RelativeHeightFunction",
                       "BlurFunction",
                       "SetHeightFunction",
                       "RampFunction",
                       "PosterizeFunction"};
    for (const SFunctionFace& face : GetFunctionFaces().subspan(functions.size()))
    {
        functions.emplace_back(face.pszFunction);
    }
    return functions;
}

} // namespace

TEST_F(CPluginInitialize, CallsTheHostInItsFixedOrder)
{
    WriteGrey("mask.png", 1, 1, {255});
    m_Host.GetTerrain().SetEditOverlay(5);
    m_Host.GetTerrain().SetEditMaterial("before");
    WriteBytes(m_Folder.Path("PredefinedBrushes.ini"),
               "!brush()\n!mask( s )\n!brush_name( s )\n"
               "brush()\n{\n brush_name( \"First\" )\n mask( \"mask.png\" )\n}\n"
               "brush()\n{\n brush_name( \"Second\" )\n}\n");
    OpenPanel();
    m_Plugin->Initialize();
    EXPECT_EQ(TakeCalls(),
              (Lines{"Host.CreatePluginToolBar(2100)",
                     "Host.InsertPluginMenu(0, Terrain, Tools)",
                     "Host.RegisterPluginA()",
                     "Host.RegisterPluginB()",
                     "Panel.RefreshBrushControls()",
                     "Panel.EnableBrushControls()",
                     "Host.RegisterSetting(2D draw undo manager stack size, 5, "
                     "f:EDIT;e:EDIT;c:Tellur;d:2D draw undo manager stack size;)",
                     "Host.RegisterProcess(Export terrain to STL format)"}));
    EXPECT_EQ(m_Log.GetText(), "");
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), nullptr);

    EXPECT_EQ(m_Plugin->GetBrushContainer()->GetPredefined().size(), 2U);
    EXPECT_EQ(m_Host.GetWorld().GetRegistrationCount(), 1U) << "the mask's";
    EXPECT_EQ(m_Host.GetTerrain().GetEditOverlay(), 0U);
    EXPECT_EQ(m_Host.GetTerrain().GetEditMaterial(), "");
    EXPECT_EQ(m_Plugin->GetTerraformingModeId(), 0);
    EXPECT_EQ(m_Plugin->GetEditTerrainTypeModeId(), 1);
    ASSERT_TRUE(m_Host.GetModes().ActivateMode(2, 0));
    EXPECT_EQ(m_Host.GetModes().GetCurrentModeGroup(), 7);
    EXPECT_EQ(m_Host.GetCaption(), "Export terrain extent");

    // The registered setting is the plug-in's own number.
    *static_cast<int32_t*>(m_Host.GetSettings().GetRegistered().at(0).pValue) = 33;
    EXPECT_EQ(m_Plugin->Get2DDrawUndoDepth(), 33);
}

TEST_F(CPluginInitialize, AHostWithoutTerrainOrBrushFileIsNoObstacle)
{
    m_Host.GetWorld().CloseTerrain();
    m_Plugin->Initialize();
    EXPECT_EQ(m_Log.GetText(), "");
    EXPECT_TRUE(m_Plugin->GetBrushContainer()->GetPredefined().empty());
    EXPECT_EQ(m_Host.GetRegistry().GetProcessCount(), 1U);
}

TEST_F(CPluginInitialize, MakesOneToolBrushPerFunction)
{
    Initialize();
    Lines brushes;
    for (const auto& pBrush : m_Plugin->GetBrushContainer()->GetTools())
    {
        SCOPED_TRACE(pBrush->GetName());
        brushes.emplace_back(pBrush->GetName());
        EXPECT_STREQ(pBrush->GetBitmapPath(), ".\\data\\brushes\\round.png");
        EXPECT_NE(pBrush->GetBitmapImage(), nullptr);
        EXPECT_EQ(pBrush->GetExtent(), 3200.0F);
        EXPECT_TRUE(pBrush->SetCursor()) << "the function's cursor is the plug-in's";
    }
    EXPECT_EQ(brushes, GetFunctions());
}

TEST_F(CPluginInitialize, DoingItTwiceReportsEveryFunctionAndKeepsTheBrushes)
{
    m_Plugin->Initialize();
    const CTellurBrush* pFirst = m_Plugin->GetBrushContainer()->FindBrush("SetHeightFunction");
    m_Log.Clear();
    m_Plugin->Initialize();
    Lines expected;
    for (const std::string& strClass : GetFunctions())
    {
        const std::string strName = strClass.substr(0, strClass.size() - std::strlen("Function"));
        expected.push_back("[CFunctionContainer::AddFunction] function of name " + strClass +
                           " already exists");
        expected.push_back("[IPluginImpl::InitializeFunctionsAndBrushes] cannot add " + strName +
                           " function");
    }
    EXPECT_EQ(m_Log.TakeLines(), expected);
    EXPECT_EQ(m_Plugin->GetBrushContainer()->FindBrush("SetHeightFunction"), pFirst);
}

TEST_F(CPluginInitialize, CommandTextsComeFromTheStringTable)
{
    // Command 5 exports, its text is another's on purpose. Only plug-in 1 is asked.
    const std::tuple<int32_t, int32_t, const char*> cases[] = {{1, 1, "Terrain"},
                                                               {1, 2, "Save height map"},
                                                               {1, 3, ""},
                                                               {1, 4, "Edit bitmap on terrain"},
                                                               {1, 5, "Brush fade distance"},
                                                               {1, 0, ""},
                                                               {1, 6, ""},
                                                               {1, -1, ""},
                                                               {65, 1, "untouched"},
                                                               {0, 1, "untouched"}};

    for (const auto& [iPlugin, iCommand, pszText] : cases)
    {
        SCOPED_TRACE(testing::Message() << iPlugin << " " << iCommand);
        char szText[64] = "untouched";
        m_Plugin->GetCommandText(iPlugin, iCommand, szText);
        EXPECT_STREQ(szText, pszText);
    }
    m_Plugin->GetCommandText(1, 1, nullptr);
}

TEST_F(CPluginInitialize, DescribesItsKeyboardActions)
{
    m_Plugin->RegisterActions();
    std::string strActions;
    for (const SActionDescriptor& action : m_Host.GetRegistry().GetActions())
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

TEST_F(CPluginInitialize, ShutdownUnregistersBothAndDestroyObjectDeletes)
{
    Initialize();
    m_Plugin->Shutdown();
    EXPECT_TRUE(m_Host.GetRegistry().GetInput().empty());
    EXPECT_TRUE(m_Host.GetRegistry().GetSettings().empty());

    struct SObject : IPluginObject
    {
        std::shared_ptr<int> pToken = std::make_shared<int>();
    };

    auto* pObject = new SObject;
    const std::weak_ptr<int> token = pObject->pToken;
    m_Plugin->DestroyObject(1, pObject);
    EXPECT_TRUE(token.expired());
    m_Plugin->DestroyObject(1, nullptr);
}
