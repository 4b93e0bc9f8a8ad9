// The disk fails, or the process dies, in the middle of a save: which level opens afterwards.

#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "tests/editor/CLevelDocumentTest.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/TestPaths.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace
{

// The disk fails, or the process dies, at each call in turn that changes a file. Runs in a program
// of its own, which has the failing disk before it.
class CSaveFaults : public CLevelDocumentTest
{
protected:
    static constexpr float OLD = 1.0F;
    static constexpr float NEW = 2.0F;

    bool IsPrepared() const
    {
        const char* pszPreload = std::getenv("LD_PRELOAD");
        return pszPreload != nullptr &&
               std::string(pszPreload).find("disk_faults") != std::string::npos;
    }

    void RunPrepared(const char* pszFilter)
    {
        const pid_t child = ::fork();
        if (child == 0)
        {
            ::setenv("LD_PRELOAD", TELLUR_BIN_DIR "/libdisk_faults.so", 1);
            ::setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
            ::execl("/proc/self/exe", "editor_test", "--gtest_brief=1", pszFilter, nullptr);
            ::_exit(98);
        }
        int iStatus = 0;
        ASSERT_EQ(::waitpid(child, &iStatus, 0), child);
        EXPECT_EQ(iStatus, 0) << "see above";
    }

    // Saves to strName in a process with that fault. 0; 1 when it says that nothing was written, 2
    // when it says that a part was; -9 when it died.
    int SaveWithFault(const std::string& strName, const std::string& strFault)
    {
        const pid_t child = ::fork();
        if (child == 0)
        {
            const CLogCatcher log;
            ::setenv("TELLUR_FAULT", strFault.c_str(), 1);
            const bool bDone = m_Document.SaveAs(m_Folder.Path(strName.c_str()).c_str());
            const bool bNothing = m_Document.GetSaveOutcome() == "Nothing was written.";
            ::_exit(bDone ? 0 : bNothing ? 1 : 2);
        }
        int iStatus = 0;
        EXPECT_EQ(::waitpid(child, &iStatus, 0), child);
        return WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -WTERMSIG(iStatus);
    }

    // Of the level that is on the disk; 0 when it does not open.
    float ReadHeight(const std::string& strName)
    {
        const CLogCatcher log;
        CEditorHost host(m_Face);
        CLevelDocument level(host);
        return level.Open(m_Folder.Path(strName.c_str()).c_str())
                   ? host.GetEngine().GetCWorld().GetCTerrain()->GetHeightAt(80.0F, 80.0F)
                   : 0.0F;
    }

    // Files as they are before each save: "l" and "over" are old levels, "new" is not there.
    void PrepareFiles()
    {
        WriteBytes(m_Folder.Path("l.height"), m_OldHeights);
        WriteBytes(m_Folder.Path("over.height"), m_OldHeights);
        WriteBytes(m_Folder.Path("over.level"), m_OldText);
        std::filesystem::remove(m_Folder.Path("new.level"));
        std::filesystem::remove(m_Folder.Path("new.height"));
    }

    // Saves with that fault, looks at what is there, and saves again without one. The result of the
    // first save.
    int TryFault(const std::string& strName, const std::string& strFault)
    {
        const bool bOld = strName != "new";
        const std::string strFile = strName + ".level";
        PrepareFiles();
        const int iResult = SaveWithFault(strFile, strFault);
        const float fHeight = ReadHeight(strFile);
        const bool bThere = std::filesystem::exists(m_Folder.Path("new.level"));
        EXPECT_TRUE(fHeight == NEW || (fHeight == OLD && bOld) || !(bOld || bThere)) << fHeight;
        EXPECT_TRUE(iResult != 0 || fHeight == NEW);
        EXPECT_TRUE(iResult != 1 || fHeight == (bOld ? OLD : 0.0F)) << "it said so";
        EXPECT_TRUE(strName == "l" || ReadHeight("l.level") == OLD);
        // The next save takes away what that one has left.
        EXPECT_EQ(SaveWithFault(strFile, ""), 0);
        const std::vector<std::string> names = GetNames();
        EXPECT_EQ(names.size(), bOld ? 4U : 6U) << testing::PrintToString(names);
        return iResult;
    }

    std::string m_OldText; // of "over"
    std::string m_OldHeights;
};

} // namespace

TEST_F(CSaveFaults, LeaveTheOldLevelOrTheNewOneAndNothingElse)
{
    if (!IsPrepared())
    {
        RunPrepared("--gtest_filter=CSaveFaults.*");
        return;
    }
    MakeLevel("over.level", OLD);
    MakeLevel("l.level", OLD);
    Change(NEW);
    m_OldText = ReadBytes(m_Folder.Path("over.level"));
    m_OldHeights = ReadBytes(m_Folder.Path("over.height"));
    int nMixed = 0;
    for (const char* pszKind : {"kill ", "full ", "readonly "})
    {
        for (const char* pszName : {"l", "over", "new"})
        {
            int iResult = -1;
            int iFault = 0;
            while (iResult != 0 && iFault < 60)
            {
                std::string strFault = pszKind;
                strFault += std::to_string(++iFault);
                SCOPED_TRACE(pszName);
                SCOPED_TRACE(strFault);
                iResult = TryFault(pszName, strFault);
                nMixed += iResult == 2 ? 1 : 0;
            }
            EXPECT_GT(iFault, 6) << "the faults came at many places";
            EXPECT_EQ(iResult, 0);
        }
    }
    EXPECT_GT(nMixed, 0) << "a disk that lets nothing be put back";
}
