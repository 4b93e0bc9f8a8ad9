// The one persistent setting, and the warning about a read-only height map.

#include "tests/tellur/plugin/PluginFixture.h"

#include <sys/stat.h>

namespace
{

class CPluginSettings : public CPluginFixture
{
protected:
    std::string Save()
    {
        return Write([this](fs::ifile& file) { m_Plugin->SaveSettings(file); });
    }

    void Load(const std::string& strText) { m_Plugin->LoadSettings(Parse(strText).get()); }
};

using CHeightMapWarning = CPluginFixture;

} // namespace

TEST_F(CPluginSettings, IsWrittenWithItsDeclaration)
{
    EXPECT_EQ(Save(),
              "\n!Tellur2DDrawUndoMgrStackSize( i )\n\nTellur2DDrawUndoMgrStackSize( 10 )\n");
    Load("!tellur2DDrawUndoMgrStackSize( i )\ntellur2ddrawundomgrstacksize( -3 )");
    const std::string strSaved = Save();
    EXPECT_EQ(strSaved,
              "\n!Tellur2DDrawUndoMgrStackSize( i )\n\nTellur2DDrawUndoMgrStackSize( -3 )\n");
    m_Plugin->ResetSettings();
    EXPECT_EQ(m_Plugin->Get2DDrawUndoDepth(), 10);
    Load(strSaved);
    EXPECT_EQ(m_Plugin->Get2DDrawUndoDepth(), -3) << "its own text reads back";
}

TEST_F(CPluginSettings, LoadingTakesTheLastKeywordOfTheName)
{
    Load("!Tellur2DDrawUndoMgrStackSize( i )\nTellur2DDrawUndoMgrStackSize( 3 )\nmode( \"x\" )\n"
         "TELLUR2DDRAWUNDOMGRSTACKSIZE( 4 )");
    EXPECT_EQ(m_Plugin->Get2DDrawUndoDepth(), 4);
    Load("mode( \"x\" )"); // not mentioned: as it was
    m_Plugin->LoadSettings(nullptr);
    EXPECT_EQ(m_Plugin->Get2DDrawUndoDepth(), 4);
    Load("!Tellur2DDrawUndoMgrStackSize( f )\nTellur2DDrawUndoMgrStackSize( 2.5 )");
    EXPECT_EQ(m_Plugin->Get2DDrawUndoDepth(), 0);
}

TEST_F(CHeightMapWarning, NamesTheFileThatIsReadOnlyWhenTerraformingBegins)
{
    const auto enter = [this]
    {
        UseToolBrush("BlurFunction");
        m_Plugin->EnableTerraforming(true);
        m_Plugin->EnableTerraforming(false);
        return std::exchange(m_FrontEnd.calls, {});
    };
    Initialize();
    EXPECT_EQ(enter(), Calls{}) << "the level has no file";
    const std::string strPath = m_Folder.Path("level.height");
    ASSERT_TRUE(m_Host.GetTerrain().SaveHeightMap(strPath.c_str(), nullptr, 0, 0));
    ASSERT_TRUE(m_Host.OpenLevel(strPath.c_str()));
    EXPECT_EQ(enter(), Calls{}) << "it can be written";
    ASSERT_EQ(::chmod(strPath.c_str(), S_IRUSR | S_IRGRP), 0);
    EXPECT_EQ(enter(),
              Calls{"FrontEnd.MessageBox(Height map file " + strPath +
                    " is read-only.\nChanges won't be saved., 0x30)"});
    m_Host.GetWorld().CloseTerrain();
    EXPECT_EQ(enter(), Calls{});
    EXPECT_EQ(m_Log.GetText(), "");
}
