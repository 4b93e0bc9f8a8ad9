// The steps of a change of resolution, as the host sees them. Heights and files are proved by
// scripts.

#include "tests/tellur/plugin/PluginFixture.h"

namespace
{

class CHeightMapResolution : public CPluginFixture
{
protected:
    CHeightMapResolution()
    {
        m_Environment.strHeightMap = "level.height";
        m_Environment.pTerrain = &m_Fake.terrain;
        m_Fake.world.pEnvironment = &m_Environment;
        m_Host.strEnvironmentFolder = m_Folder.GetFolder() + "/";
    }

    Lines Change(int32_t iVertices)
    {
        m_Plugin->ChangeHeightMapResolution(iVertices);
        return TakeCalls();
    }

    CFakeEnvironment m_Environment;
};

} // namespace

TEST_F(CHeightMapResolution, KeepsABackupWritesAndHasTheLevelReloaded)
{
    const std::string strFile = m_Folder.Path("level.height");
    const Lines start = {"Host.QueryEntityClass(Environment)"};
    const Lines ask = {start[0], "Host.GetEnvironmentFile(Environment, 0x4100, 16, level.height)"};
    Lines whole = ask;
    whole.push_back("Terrain.SaveHeightMap(" + strFile + ", heights, 33, 33)");
    Lines reload = whole;
    reload.insert(reload.end(),
                  {"Host.GetEnvironmentFile(Environment, 0x4100, 17, null)",
                   "Host.RefreshAfterReload()",
                   "World.ReloadTerrain()"});

    EXPECT_EQ(Change(9), start) << "as it is";
    EXPECT_EQ(Change(33), reload);
    EXPECT_FALSE(fs::exists((strFile + ".bak").c_str())) << "there was nothing to keep";
    WriteBytes(strFile, "first");
    EXPECT_EQ(Change(33), reload);
    EXPECT_EQ(ReadBytes(strFile + ".bak"), "first");
    EXPECT_FALSE(fs::exists(strFile.c_str()));
    WriteBytes(strFile, "second");
    EXPECT_EQ(Change(33), reload);
    EXPECT_EQ(ReadBytes(strFile + ".bak"), "first") << "the older one is the one to keep";
    EXPECT_EQ(m_Log.GetText(), "");

    m_Fake.terrain.bFileResult = false;
    EXPECT_EQ(Change(33), whole);
    EXPECT_EQ(m_Log.TakeLines(),
              Lines{"[IPluginImpl::ChangeHeightMapResolution] failed to save file " + strFile});
    m_Host.strEnvironmentFolder = "";
    m_Environment.strHeightMap = "";
    EXPECT_EQ(Change(33).size(), 2U) << "no file name";
    for (const int32_t iVertices : {-33, 0, 1, 5, 16, 64, 32769})
    {
        EXPECT_EQ(Change(iVertices), start);
        EXPECT_EQ(m_Log.TakeLines(),
                  Lines{"[IPluginImpl::ChangeHeightMapResolution] no steps lead from 9 to " +
                        std::to_string(iVertices) + " vertices"});
    }
    m_Environment.pTerrain = nullptr;
    EXPECT_EQ(Change(33), Lines{});
    m_Fake.world.pEnvironment = nullptr;
    EXPECT_EQ(Change(33), Lines{});
    EXPECT_EQ(m_Log.GetText(), "");
}
