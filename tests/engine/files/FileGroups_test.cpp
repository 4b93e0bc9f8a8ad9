// Files that take their places together, on a disk that fails and in a process that ends.

#include "host/FileSystem.h"
#include "host/Program.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CTempFolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace
{

// Larger than the buffer of a file.
const std::string& GetNew()
{
    static const std::string s_New(100000, 'n');
    return s_New;
}

bool CloseWith(const std::string& strPath, const std::string& strText)
{
    std::optional<fs::file> made;
    try
    {
        made.emplace();
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    fs::file& file = *made;
    return file.open(strPath.c_str(), fs::mode_write) &&
           file.write(strText.data(), strText.size()) == strText.size() && file.close();
}

// Empty for a file that is not there.
std::string ReadIfThere(const std::string& strPath)
{
    return std::filesystem::exists(strPath) ? ReadBytes(strPath) : "";
}

size_t CountEntries(const CTempFolder& folder)
{
    const std::filesystem::directory_iterator entries(folder.GetFolder());
    return static_cast<size_t>(std::distance(begin(entries), end(entries)));
}

enum EChildEnd
{
    child_done = 0,
    child_failed = 1, // and everything is as it was
    child_mixed = 2,
};

EChildEnd Replace(const std::string& strFirst, const std::string& strSecond)
{
    fs::commit_group group;
    if (CloseWith(strFirst, GetNew()) && CloseWith(strSecond, GetNew()) && group.commit())
    {
        return child_done;
    }
    const std::string strMixed = " (new: " + strFirst + "; as before: " + strSecond + ")";
    const std::string strText = group.last_error().get_error_text();
    return group.is_mixed() && strText.ends_with(strMixed) ? child_mixed : child_failed;
}

// Replaces both files as one, in a child process on whose disk that fault is. Its exit code, or
// minus the signal that ended it.
int ReplaceInChild(const std::string& strFirst,
                   const std::string& strSecond,
                   const std::string& strFault)
{
    const pid_t child = fork();
    if (child == 0)
    {
        DropWritesOnSignals();
        setenv("TELLUR_FAULT", strFault.c_str(), 1);
        _exit(Replace(strFirst, strSecond));
    }
    int iStatus = -1;
    EXPECT_EQ(waitpid(child, &iStatus, 0), child);
    return WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -WTERMSIG(iStatus);
}

} // namespace

TEST(FileGroups, WaitForTheOutermostCommit)
{
    const CTempFolder folder;
    const std::string strFirst = folder.Path("a.height");
    const std::string strSecond = folder.Path("b.level");
    const std::string strThird = folder.Path("c.level");
    WriteBytes(strFirst, "old");
    WriteBytes(strSecond, "old");
    {
        const fs::commit_group abandoned;
        EXPECT_TRUE(CloseWith(strFirst, "lost"));
    }
    fs::commit_group group;
    EXPECT_TRUE(CloseWith(strFirst, "new"));
    {
        const fs::commit_group inner;
        EXPECT_TRUE(CloseWith(strSecond, "lost"));
    }
    {
        fs::commit_group inner;
        EXPECT_TRUE(CloseWith(strThird, "new"));
        EXPECT_TRUE(inner.commit());
    }
    EXPECT_EQ(ReadBytes(strFirst), "old");
    EXPECT_EQ(ReadIfThere(strThird), "");
    EXPECT_EQ(CountEntries(folder), 2U);
    EXPECT_TRUE(group.commit()) << group.last_error().get_error_text();
    EXPECT_EQ(ReadBytes(strFirst), "new");
    EXPECT_EQ(ReadBytes(strSecond), "old");
    EXPECT_EQ(ReadBytes(strThird), "new");
    EXPECT_EQ(CountEntries(folder), 3U);
    EXPECT_FALSE(group.commit());
    EXPECT_TRUE(CloseWith(strSecond, "alone"));
    EXPECT_EQ(ReadBytes(strSecond), "alone");
}

TEST(FileGroups, WhicheverCallFailsAllFilesAreOldOrAllAreNew)
{
    for (const std::string strKind : {"full", "readonly", "term", "kill"})
    {
        for (const auto& [bPlain, bFirstThere] :
             {std::pair(false, true), {true, false}, {true, true}})
        {
            const CTempFolder folder;
            const std::string strFirst = folder.Path("a.height");
            const std::string strSecond = folder.Path("b.level");
            const std::string strOld = bFirstThere ? "old" : "";
            int iEnd = -1;
            int iFault = 0;
            bool bMixed = false;
            while (iEnd != child_done && iFault < 60)
            {
                ++iFault;
                const std::string strFault =
                    strKind + " " + std::to_string(iFault) + (bPlain ? " plain" : "");
                SCOPED_TRACE(strFault + (bFirstThere ? ", replaced" : ", made"));
                std::filesystem::remove(strFirst);
                if (bFirstThere)
                {
                    WriteBytes(strFirst, strOld);
                }
                WriteBytes(strSecond, "old");
                iEnd = ReplaceInChild(strFirst, strSecond, strFault);
                const std::string strNow = ReadIfThere(strFirst);
                const std::string strLast = ReadBytes(strSecond);
                const bool bNew = strNow == GetNew() && strLast == GetNew();
                const bool bOld = strNow == strOld && strLast == "old";
                const bool bHalf = strNow == GetNew() && strLast == "old";
                EXPECT_TRUE(iEnd >= 0 || iEnd == (strKind == "kill" ? -SIGKILL : -SIGTERM));
                EXPECT_TRUE(bNew || bOld || (bHalf && (iEnd == child_mixed || iEnd == -SIGKILL)));
                EXPECT_TRUE(iEnd < 0 || bNew == (iEnd == child_done));
                EXPECT_TRUE(iEnd < 0 || bOld == (iEnd == child_failed));
                bMixed = bMixed || bHalf;
                const bool bLeavesNothing = strKind == "full" || strKind == "term";
                const size_t nFiles = strNow.empty() ? 1 : 2;
                EXPECT_TRUE(!bLeavesNothing || CountEntries(folder) == nFiles);
                EXPECT_TRUE(CloseWith(folder.Path("next"), "x"));
                EXPECT_EQ(CountEntries(folder), nFiles + 1) << "a stray file after the next write";
                std::filesystem::remove(folder.Path("next"));
            }
            EXPECT_EQ(iEnd, child_done) << strKind;
            EXPECT_GT(iFault, 6) << "the faults came at many places";
            EXPECT_EQ(bMixed, strKind == "kill" || strKind == "readonly") << strKind;
        }
    }
}

TEST(FileGroups, WhereNoMemoryIsFoundAllFilesAreOldOrAllAreNew)
{
    ASSERT_FALSE(GetNew().empty()); // made before memory runs out
    for (const char* pszKind : {"none", "none plain"})
    {
        setenv("TELLUR_FAULT", pszKind, 1);
        const CTempFolder folder;
        const std::string strFirst = folder.Path("a.height");
        const std::string strSecond = folder.Path("b.level");
        size_t nFailed = 0;
        bool bFailed = true;
        while (bFailed && nFailed < 500)
        {
            SCOPED_TRACE(testing::Message() << pszKind << " " << nFailed);
            WriteBytes(strFirst, "old");
            WriteBytes(strSecond, "old");
            FailAllocation(nFailed + 1);
            const EChildEnd eEnd = Replace(strFirst, strSecond);
            bFailed = HasAllocationFailed();
            FailAllocation(0);
            const std::string strNow = eEnd == child_done ? GetNew() : "old";
            EXPECT_NE(eEnd, child_mixed);
            EXPECT_TRUE(ReadBytes(strFirst) == strNow && ReadBytes(strSecond) == strNow);
            EXPECT_EQ(CountEntries(folder), 2U);
            nFailed += bFailed ? 1 : 0;
        }
        EXPECT_GT(nFailed, 20U);
        unsetenv("TELLUR_FAULT");
    }
}
