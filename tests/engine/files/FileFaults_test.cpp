#include "host/FileSystem.h"
#include "tests/support/CTempFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

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

    const CTempFolder folder;
    const std::string strPipe = folder.Path("pipe");
    ASSERT_EQ(mkfifo(strPipe.c_str(), 0600), 0);
    EXPECT_FALSE(file.open(strPipe.c_str(), fs::mode_write));
    EXPECT_EQ(file.last_error().get_error_text(), strPipe + ": is a pipe that nobody reads");
    const int iReader = open(strPipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_TRUE(file.open(strPipe.c_str(), fs::mode_write));
    EXPECT_EQ(file.write("abc", 3), 3U);
    EXPECT_TRUE(file.seek(3));
    ASSERT_TRUE(file.close());
    char szRead[8] = "";
    EXPECT_EQ(read(iReader, szRead, sizeof(szRead)), 3);
    ASSERT_TRUE(file.open(strPipe.c_str(), fs::mode_write));
    EXPECT_FALSE(file.seek(3)) << "there is no way back to a place in a pipe";
    EXPECT_FALSE(file.close());
    close(iReader);
    EXPECT_TRUE(std::filesystem::is_fifo(strPipe));

    // A plain file behind a descriptor is gone on with where it is.
    const std::string strPlain = folder.Path("plain");
    const int iPlain = open(strPlain.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(write(iPlain, "first ", 6), 6);
    const std::string strOpen = "/dev/fd/" + std::to_string(iPlain);
    ASSERT_TRUE(file.open(strOpen.c_str(), fs::mode_write));
    EXPECT_EQ(file.write("second", 6), 6U);
    ASSERT_TRUE(file.close());
    ASSERT_EQ(write(iPlain, " third", 6), 6);
    close(iPlain);
    EXPECT_EQ(ReadBytes(strPlain), "first second third");
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
    EXPECT_EQ(CountEntries(folder.GetFolder()), 1U);
}

TEST(FileFaults, OnlyWhatTheDeadLeftIsRemoved)
{
    const pid_t dead = fork();
    if (dead == 0)
    {
        _exit(0);
    }
    ASSERT_EQ(waitpid(dead, nullptr, 0), dead);
    const std::string strDead = std::to_string(dead);
    const std::string strLiving = std::to_string(getpid());
    const std::pair<std::string, bool> cases[] = {
        {".x.height.tmp-" + strDead + "-1", true}, // an earlier version's
        {".x.height.tmp-" + strDead + "-77-1", true},
        {".x.tmp-1.tmp-" + strDead + "-77-4294967295", true},
        {".x.height.tmp-" + strLiving + "-77-1", true}, // its number was used again
        {".x.height.tmp-" + strLiving + "-1", false},
        {".x.height.tmp-1-1", false},
        {"x.height.tmp-" + strDead + "-1", false},
        {".tmp-" + strDead + "-1", false},
        {".x.height.tmp-" + strDead, false},
        {".x.height.tmp-" + strDead + "-", false},
        {".x.height.tmp--" + strDead + "-1", false},
        {".x.height.tmp-" + strDead + "-1.bak", false},
        {".x.height.tmp-" + strDead + "-1-2-3", false},
        {".x.height.tmp-99999999999-1", false},
        {".x.height.tmp-" + strDead + "-99999999999999999999-1", false},
        {".x.height-" + strDead + "-1", false},
    };
    const CTempFolder folder;
    for (const auto& [strName, bGoes] : cases)
    {
        WriteBytes(folder.Path(strName.c_str()), "left");
    }
    const std::string strFolder = folder.Path((".f.tmp-" + strDead + "-1").c_str());
    const std::string strLink = folder.Path((".l.tmp-" + strDead + "-1").c_str());
    const std::string strLocked = folder.Path((".o.tmp-" + strDead + "-1").c_str());
    const std::string strForeign = folder.Path((".u.tmp-" + strDead + "-1").c_str());
    std::filesystem::create_directory(strFolder);
    std::filesystem::create_symlink("x", strLink);
    WriteBytes(strLocked, "of a process in another container");
    WriteBytes(strForeign, "of another user");
    const int iLocked = open(strLocked.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(iLocked, LOCK_EX), 0);
    const bool bForeign = chown(strForeign.c_str(), 1, 1) == 0; // for the super-user alone
    fs::file file;
    ASSERT_TRUE(file.open(folder.Path("y.height").c_str(), fs::mode_write));
    for (const auto& [strName, bGoes] : cases)
    {
        EXPECT_EQ(std::filesystem::exists(folder.Path(strName.c_str())), !bGoes) << strName;
    }
    EXPECT_TRUE(std::filesystem::is_directory(strFolder));
    EXPECT_TRUE(std::filesystem::is_symlink(strLink));
    EXPECT_TRUE(std::filesystem::exists(strLocked));
    EXPECT_EQ(std::filesystem::exists(strForeign), bForeign);
    close(iLocked);
}

TEST(FileFaults, ANewFileIsNeverOpenToMoreThanTheOldOne)
{
    const CTempFolder folder;
    const std::string strTarget = folder.Path("x.bin");
    WriteBytes(strTarget, "old");
    ASSERT_EQ(chmod(strTarget.c_str(), 0640), 0);
    constexpr uid_t SOMEBODY = 12345;
    const bool bSuper = chown(strTarget.c_str(), SOMEBODY, SOMEBODY) == 0;
    const bool bNotes = setxattr(strTarget.c_str(), "user.note", "mine", 4, 0) == 0;
    for (const char* pszFault : {"none", "none plain"})
    {
        SCOPED_TRACE(pszFault);
        setenv("TELLUR_FAULT", pszFault, 1);
        const mode_t before = umask(0);
        fs::file file;
        ASSERT_TRUE(file.open(strTarget.c_str(), fs::mode_write));
        umask(before);
        size_t nFound = 0;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        {
            std::error_code fault;
            const std::string strOpen = std::filesystem::read_symlink(entry, fault).string();
            struct stat info = {};
            if (strOpen.starts_with(folder.GetFolder() + "/") &&
                stat(entry.path().c_str(), &info) == 0)
            {
                ++nFound;
                EXPECT_EQ(info.st_mode & 0777U, 0640U);
                EXPECT_EQ(info.st_gid, bSuper ? SOMEBODY : getgid());
            }
        }
        EXPECT_EQ(nFound, 1U);
        EXPECT_EQ(file.write("new", 3), 3U);
        ASSERT_TRUE(file.close());
        struct stat info = {};
        ASSERT_EQ(stat(strTarget.c_str(), &info), 0);
        EXPECT_EQ(info.st_uid, bSuper ? SOMEBODY : getuid());
        EXPECT_EQ(info.st_mode & 0777U, 0640U);
        char szNote[8] = "";
        EXPECT_TRUE(!bNotes ||
                    getxattr(strTarget.c_str(), "user.note", szNote, sizeof(szNote)) == 4);
        unsetenv("TELLUR_FAULT");
    }
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
