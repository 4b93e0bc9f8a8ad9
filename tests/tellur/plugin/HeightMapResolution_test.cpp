// What a change of resolution refuses, and the backup that it keeps. Heights are proved by scripts.

#include "tests/tellur/plugin/PluginFixture.h"

using CHeightMapResolution = CPluginFixture;

TEST_F(CHeightMapResolution, TheOldestFileIsTheBackupAndWhatIsOutOfReachIsSaid)
{
    const std::string strFile = m_Folder.Path("level.height");
    m_Host.SetHeight(1, 1, 7.0F);
    ASSERT_TRUE(m_Host.GetTerrain().SaveHeightMap(strFile.c_str(), nullptr, 0, 0));
    ASSERT_TRUE(m_Host.OpenLevel(strFile.c_str()));
    const std::string strFirst = ReadBytes(strFile);
    for (const uint32_t uVertices : {9U, 33U, 65U}) // the first one is as it is
    {
        m_Plugin->ChangeHeightMapResolution(static_cast<int32_t>(uVertices));
        EXPECT_EQ(m_Host.GetTerrain().GetVerticesX(), uVertices);
        EXPECT_EQ(fs::exists((strFile + ".bak").c_str()), uVertices > 9);
    }
    EXPECT_EQ(ReadBytes(strFile + ".bak"), strFirst);
    EXPECT_EQ(m_Log.GetText(), "");

    for (const int32_t iVertices : {-33, 0, 1, 5, 16, 64, 32769})
    {
        m_Plugin->ChangeHeightMapResolution(iVertices);
        EXPECT_EQ(m_Log.TakeLines(),
                  Lines{"[IPluginImpl::ChangeHeightMapResolution] no steps lead from 65 to " +
                        std::to_string(iVertices) + " vertices"});
    }
    m_Host.GetWorld().CloseTerrain();
    m_Plugin->ChangeHeightMapResolution(33);
    EXPECT_EQ(m_Log.GetText(), "");
}
