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

class CHeightMapWarning : public CPluginFixture
{
protected:
    CHeightMapWarning()
    {
        m_Environment.strHeightMap = "level.height";
        m_Fake.world.pEnvironment = &m_Environment;
        m_Host.strEnvironmentFolder = m_Folder.GetFolder() + "/maps/";
    }

    // What is asked of the host, then what is shown.
    Lines Check()
    {
        m_Plugin->CheckHeightMapWritable();
        Lines calls = TakeCalls();
        calls.insert(calls.end(), m_FrontEnd.calls.begin(), m_FrontEnd.calls.end());
        m_FrontEnd.calls.clear();
        return calls;
    }

    CFakeEnvironment m_Environment;
};

const std::string QUERY = "Host.QueryEntityClass(Environment)";
const std::string ASK = "Host.GetEnvironmentFile(Environment, 0x4100, 16, level.height)";

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

TEST_F(CHeightMapWarning, NamesTheFileThatIsReadOnly)
{
    const std::string strPath = m_Folder.GetFolder() + "/maps/level.height";
    EXPECT_EQ(Check(), (Lines{QUERY, ASK})) << "no such file";
    WriteBytes(strPath, "heights");
    EXPECT_EQ(Check(), (Lines{QUERY, ASK})) << "it can be written";
    ASSERT_EQ(::chmod(strPath.c_str(), S_IRUSR | S_IRGRP), 0);
    EXPECT_EQ(Check(),
              (Lines{QUERY,
                     ASK,
                     "FrontEnd.MessageBox(Height map file " + strPath +
                         " is read-only.\nChanges won't be saved., 0x30)"}));
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CHeightMapWarning, IsSilentWithoutAnEnvironmentOrItsFile)
{
    m_Host.strEnvironmentFolder.clear();
    m_Environment.strHeightMap.clear();
    EXPECT_EQ(Check(), (Lines{QUERY, "Host.GetEnvironmentFile(Environment, 0x4100, 16, )"}));
    m_Fake.world.pEnvironment = nullptr;
    EXPECT_EQ(Check(), Lines{QUERY});
    m_Host.bKnowsEntityClass = false;
    m_Fake.world.pEnvironment = &m_Environment;
    EXPECT_EQ(Check(), Lines{QUERY});
}
