#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "editor/core/CPluginLoader.h"
#include "engine/world/CEngineHost.h"
#include "host/Terrain.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace
{

using Lines = std::vector<std::string>;

const std::string PLUGIN_PATH = std::string(TELLUR_BIN_DIR) + "/minimal_plugin.so";

// Everywhere under the cursor is the middle of the terrain.
class CMiddleFace : public CHeadlessFace
{
public:
    bool PickTerrain(ViewId, ViewPoint point, SVec3& hit) override
    {
        pointLast = point;
        hit = {80.0F, 0.0F, 80.0F};
        return true;
    }

    ViewPoint pointLast = 0;
};

bool IsMapped()
{
    return ReadBytes("/proc/self/maps").find("minimal_plugin.so") != std::string::npos;
}

class CPluginLoaderTest : public testing::Test
{
protected:
    // One stroke of the plug-in's mode at the middle of a level of 16 x 16 cells of 10 units.
    void RaiseTheMiddle()
    {
        ASSERT_TRUE(m_Host.NewLevel(16, {160.0F, 50.0F, 160.0F}));
        m_Host.GetInput().SendAction(1, 0, 1);
        m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {7, 9, 0, 0});
        m_Host.GetInput().SendButtonUp(1, 0, {7, 9, 0, 0});
    }

    float GetMiddle() { return m_Host.GetEngine().GetWorld()->GetTerrainHeight(80.0F, 80.0F); }

    CLogCatcher m_Log;
    CMiddleFace m_Face;
    CEditorHost m_Host{m_Face};
    CPluginLoader m_Loader{m_Host};
};

} // namespace

TEST_F(CPluginLoaderTest, StartsAndEndsInTheStatedOrderAndUnmapsTheLibraryEachTime)
{
    for (const char* pszRun : {"first", "second"})
    {
        SCOPED_TRACE(pszRun);
        EXPECT_FALSE(IsMapped());
        ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str())) << m_Log.GetText();
        EXPECT_TRUE(IsMapped());
        EXPECT_EQ(m_Log.TakeLines(),
                  (Lines{"RegisterActions", "Initialize", "LoadSettings, strength 1"}));
        EXPECT_EQ(m_Host.GetRegistry().GetActions().size(), 1U);
        EXPECT_EQ(m_Host.GetSettings().GetRegistered().size(), 1U);
        RaiseTheMiddle();
        EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 1U);
        EXPECT_EQ(m_Face.pointLast, 0x00090007U);
        EXPECT_EQ(m_Host.GetCaption(), "Raise");
        m_Log.Clear();

        m_Loader.Unload();
        EXPECT_EQ(m_Log.TakeLines(),
                  (Lines{"mode left",
                         "Shutdown",
                         "OnHostNotify 10",
                         "mode destroyed",
                         "undo record destroyed",
                         "library closed"}));
        EXPECT_FALSE(IsMapped());
        EXPECT_EQ(m_Loader.GetPlugin(), nullptr);
        EXPECT_EQ(m_Host.GetModes().GetCurrentModeId(), -1);
        EXPECT_TRUE(m_Host.GetRegistry().GetActions().empty());
        EXPECT_TRUE(m_Host.GetSettings().GetRegistered().empty());
        EXPECT_EQ(m_Host.GetCaption(), "");
        EXPECT_EQ(GetMiddle(), 10.0F); // the level stays
        m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
        m_Host.RenderFrame();
        EXPECT_FALSE(m_Host.Undo());
        m_Log.Clear();
    }
}

TEST_F(CPluginLoaderTest, RefusesWithOneLineWhatIsNoPlugin)
{
    const CTempFolder folder;
    WriteBytes(folder.Path("text.so"), "not a library");
    const std::string strNoEntry = std::string(TELLUR_BIN_DIR) + "/libtellur_engine.so";

    // strFault: how it starts
    const std::tuple<std::string, std::string> cases[] = {
        {"", "no library path"},
        {folder.Path("missing.so"), "cannot open plug-in " + folder.Path("missing.so")},
        {folder.Path("text.so"), "cannot open plug-in " + folder.Path("text.so")},
        {"libz.so.1", "cannot open plug-in libz.so.1"}, // not the system's
        {strNoEntry, strNoEntry + " is no plug-in: it exports no InitializeMe"},
    };

    for (const auto& [strPath, strFault] : cases)
    {
        SCOPED_TRACE(strPath);
        EXPECT_FALSE(m_Loader.Load(strPath.c_str()));
        const Lines lines = m_Log.TakeLines();
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(lines[0].find("[CPluginLoader::Load] " + strFault), 0U) << lines[0];
        EXPECT_EQ(m_Loader.GetPlugin(), nullptr);
    }
    ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
    m_Log.Clear();
    EXPECT_FALSE(m_Loader.Load(PLUGIN_PATH.c_str()));
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"[CPluginLoader::Load] a plug-in is loaded already"}));
    EXPECT_NE(m_Loader.GetPlugin(), nullptr);
}

TEST_F(CPluginLoaderTest, AnotherLevelEndsTheDragAndEmptiesTheUndoStack)
{
    ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
    RaiseTheMiddle();
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 2U);
    m_Log.Clear();
    // A level that cannot be had keeps the one before with its history.
    EXPECT_FALSE(m_Host.OpenLevel("no such file.height"));
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 2U);
    EXPECT_EQ(GetMiddle(), 20.0F);
    EXPECT_EQ(m_Host.GetCounters().nTerrainChanged, 2U);
    m_Log.Clear();
    ASSERT_TRUE(m_Host.NewLevel(4, {160.0F, 50.0F, 160.0F}));
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"ReleaseWorldResources",
                     "undo record destroyed",
                     "undo record destroyed",
                     "OnHostNotify 5"}));
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 0U);
    EXPECT_EQ(m_Host.GetCounters().nTerrainChanged, 2U);
    EXPECT_EQ(GetMiddle(), 0.0F);
}

TEST_F(CPluginLoaderTest, CommandsAreFoundByTheirGlobalNumber)
{
    ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
    m_Log.Clear();
    EXPECT_TRUE(m_Host.GetInput().SendCommand(0x4003));
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"OnCommand 3"}));
    for (const uint32_t uOther : {0U, 3U, 0x4000U, 0x3FFFU, 0x4100U, 0x4103U})
    {
        EXPECT_FALSE(m_Host.GetInput().SendCommand(uOther)) << uOther;
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPluginLoaderTest, SettingsSurviveFromOneRunToTheNext)
{
    const CTempFolder folder;
    const std::string strPath = folder.Path("settings.txt");
    m_Host.GetSettings().SetFile(strPath.c_str());
    WriteBytes(strPath,
               "!panel_open( i ) !minimal_strength( i )\npanel_open( 1 ) minimal_strength( 12 )\n");
    ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"RegisterActions", "Initialize", "LoadSettings, strength 12", "Activate 1"}));
    m_Loader.Unload();
    EXPECT_EQ(m_Log.TakeLines()[0], "SaveSettings");
    EXPECT_EQ(ReadBytes(strPath),
              "!panel_open( i )\n\npanel_open( 1 )\n"
              "!minimal_strength( i )\nminimal_strength( 12 )\n");

    ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
    EXPECT_FALSE(m_Host.SwitchPanel()) << "it has told of no command for its panel";
    m_Host.NotifyPanelClosed();
    EXPECT_EQ(m_Log.TakeLines().back(), "OnHostNotify 1");
    EXPECT_TRUE(m_Host.SwitchPanel());
    EXPECT_EQ(m_Log.TakeLines().back(), "Activate 1");
    m_Host.NotifyPanelClosed();
    m_Loader.Unload();
    m_Log.Clear();
    ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
    EXPECT_EQ(m_Log.TakeLines().back(), "LoadSettings, strength 12") << "and no panel";
}

TEST_F(CPluginLoaderTest, ASettingsFileWithAnErrorIsKeptBesideTheNewOne)
{
    const CTempFolder folder;
    const std::string strPath = folder.Path("settings.txt");
    const std::string strBroken = "!minimal_strength( i )\nminimal_strength( 3 ) oops\n";
    m_Host.GetSettings().SetFile(strPath.c_str());
    WriteBytes(strPath, strBroken);
    ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
    EXPECT_EQ(m_Log.TakeLines().back(), "LoadSettings, strength 1");
    m_Loader.Unload();
    EXPECT_EQ(ReadBytes(strPath + ".bak"), strBroken);
    EXPECT_EQ(m_Log.TakeLines()[0], "[KeepFile] " + strPath + " is kept as " + strPath + ".bak");
    EXPECT_NE(ReadBytes(strPath).find("minimal_strength( 1 )"), std::string::npos);

    // Neither another file with an error nor the same one again takes that copy's place.
    for (const std::string& strNext : {strBroken + "and", strBroken, strBroken + "or"})
    {
        WriteBytes(strPath, strNext);
        ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
        m_Loader.Unload();
        EXPECT_NE(ReadBytes(strPath), strNext);
    }
    EXPECT_EQ(ReadBytes(strPath + ".bak"), strBroken);
    EXPECT_EQ(ReadBytes(strPath + ".bak2"), strBroken + "and");
    EXPECT_EQ(ReadBytes(strPath + ".bak3"), strBroken + "or");
    EXPECT_FALSE(std::filesystem::exists(strPath + ".bak4"));

    // A folder that is not there: one line, nothing else.
    m_Host.GetSettings().SetFile((strPath + "/below/settings.txt").c_str());
    ASSERT_TRUE(m_Loader.Load(PLUGIN_PATH.c_str()));
    m_Log.Clear();
    EXPECT_FALSE(m_Host.SaveSettings());
    const Lines lines = m_Log.TakeLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back().find("[CSettings::Save] " + strPath + "/below/settings.txt"), 0U);
}
