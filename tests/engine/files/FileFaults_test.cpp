#include "host/FileSystem.h"
#include "tests/support/CTempFolder.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>

namespace
{

// Whether the action was true in a child process of its own; false when that was killed.
bool IsTrueInChild(const std::function<bool()>& action)
{
    const pid_t child = fork();
    if (child == 0)
    {
        _exit(action() ? 0 : 1);
    }
    int iStatus = -1;
    EXPECT_EQ(waitpid(child, &iStatus, 0), child);
    EXPECT_TRUE(WIFEXITED(iStatus) || WTERMSIG(iStatus) == SIGKILL);
    return WIFEXITED(iStatus) && WEXITSTATUS(iStatus) == 0;
}

size_t CountEntries(const std::string& strFolder)
{
    const std::filesystem::directory_iterator entries(strFolder);
    return static_cast<size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

TEST(FileFaults, AFullDiskSticksAndLeavesTheOldFile)
{
    const CTempFolder folder;
    const std::string strTarget = folder.Path("x.bin");
    WriteBytes(strTarget, "old");
    // The limit is met by a large write, by the flush of a seek, and only by close.
    for (const int iCase : {0, 1, 2})
    {
        SCOPED_TRACE(iCase);
        EXPECT_TRUE(IsTrueInChild(
            [&]
            {
                signal(SIGXFSZ, SIG_IGN);
                const rlimit limit = {1000, 1000};
                setrlimit(RLIMIT_FSIZE, &limit);
                const std::string strBytes(iCase == 0 ? 300000 : 5000, 'x');
                fs::file file;
                const bool bOpen = file.open(strTarget.c_str(), fs::mode_write);
                const size_t nWritten = file.write(strBytes.data(), strBytes.size());
                const bool bSought = iCase != 1 || !file.seek(0);
                const bool bStuck = iCase == 2 || file.write("y", 1) == 0;
                const bool bClosed = file.close();
                const bool bText =
                    file.last_error().get_error_text() == strTarget + ": File too large";
                return bOpen && (nWritten == 0) == (iCase == 0) && bSought && bStuck && !bClosed &&
                       bText && !file.close();
            }));
        EXPECT_EQ(ReadBytes(strTarget), "old");
        EXPECT_EQ(CountEntries(folder.GetFolder()), 1U);
    }
}

TEST(FileFaults, ADeviceIsWrittenInPlace)
{
    fs::file file;
    ASSERT_TRUE(file.open("/dev/full", fs::mode_write));
    EXPECT_EQ(file.write("abc", 3), 3U);
    EXPECT_FALSE(file.close());
    EXPECT_STREQ(file.last_error().get_error_text(), "/dev/full: No space left on device");
    ASSERT_TRUE(file.open("/dev/null", fs::mode_write));
    EXPECT_EQ(file.write("abc", 3), 3U);
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(FileFaults, AKilledProcessLeavesTheOldFileWhole)
{
    const CTempFolder folder;
    const std::string strTarget = folder.Path("x.bin");
    WriteBytes(strTarget, "old");
    for (const bool bKill : {false, true})
    {
        const bool bLeft = IsTrueInChild(
            [&]() -> bool
            {
                fs::file file;
                const std::string strBytes(300000, 'x');
                const bool bWritten = file.open(strTarget.c_str(), fs::mode_write) &&
                                      file.write(strBytes.data(), strBytes.size()) != 0;
                if (bKill)
                {
                    kill(getpid(), SIGKILL);
                }
                _exit(bWritten ? 0 : 1);
            });
        EXPECT_EQ(bLeft, !bKill);
        EXPECT_EQ(ReadBytes(strTarget), "old");
    }
    // What the dead left behind is in nobody's way.
    fs::file file;
    ASSERT_TRUE(file.open(strTarget.c_str(), fs::mode_write));
    ASSERT_EQ(file.write("new", 3), 3U);
    ASSERT_TRUE(file.close());
    EXPECT_EQ(ReadBytes(strTarget), "new");
}

TEST(FileFaults, ReadOnlyFilesAndFoldersAreRefused)
{
    const CTempFolder folder;
    const std::string strFile = folder.Path("open/x.txt");
    const std::string strShut = folder.Path("shut/x.txt");
    WriteBytes(strFile, "old");
    WriteBytes(strShut, "old");
    ASSERT_EQ(chmod(strFile.c_str(), 0444), 0);
    ASSERT_EQ(chmod(strShut.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.GetFolder().c_str(), 0755), 0);
    ASSERT_EQ(chmod(folder.Path("shut").c_str(), 0555), 0);
    fs::file file;
    EXPECT_TRUE(fs::read_only(strFile.c_str()));
    EXPECT_FALSE(file.open(strFile.c_str(), fs::mode_write));
    EXPECT_EQ(file.last_error().get_error_text(), strFile + ": is read-only");
    EXPECT_TRUE(IsTrueInChild(
        [&]
        {
            constexpr uid_t NOBODY = 65534; // no folder is shut for the super-user
            const bool bMortal = geteuid() != 0 || setresuid(NOBODY, NOBODY, NOBODY) == 0;
            fs::file shut;
            const bool bOpen = shut.open(strShut.c_str(), fs::mode_write);
            return bMortal && !bOpen &&
                   shut.last_error().get_error_text() == strShut + ": Permission denied";
        }));
    EXPECT_EQ(ReadBytes(strFile), "old");
    EXPECT_EQ(ReadBytes(strShut), "old");
    ASSERT_EQ(chmod(folder.Path("shut").c_str(), 0755), 0);
}
