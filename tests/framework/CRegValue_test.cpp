#include "framework/core/CRegValue.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <tuple>

namespace
{

constexpr char COLUMNS[] = "\\Software\\Tellur\\Montar\\Settings\\Tellur prop control columns info";
constexpr char KEY[] = "Software\\Tellur";

CRegValue Hold(const char* pszPath)
{
    CRegValue key;
    EXPECT_EQ(key.Open(ERegHive::CurrentUser, pszPath), 0) << pszPath;
    return key;
}

void Set(const char* pszPath, const std::string& strName, uint32_t uValue)
{
    CRegValue key;
    key.Create(ERegHive::CurrentUser, pszPath);
    EXPECT_EQ(key.SetDWord(strName.c_str(), uValue), 0);
}

// The number, or minus the code of the failure, which must leave the destination.
int64_t Get(const char* pszPath, const std::string& strName)
{
    CRegValue key;
    uint32_t uValue = 4711;
    key.Open(ERegHive::CurrentUser, pszPath);
    const ERegResult eResult = key.QueryDWord(strName.c_str(), uValue);
    EXPECT_TRUE(eResult == REG_RESULT_OK || uValue == 4711);
    return eResult == REG_RESULT_OK ? uValue : -static_cast<int64_t>(eResult);
}

void Expect(const char* pszPath, const std::string& strName, uint32_t uValue)
{
    EXPECT_EQ(Get(pszPath, strName), uValue) << pszPath << " " << strName;
}

pid_t Start(const std::function<void()>& action)
{
    const pid_t child = fork();
    if (child == 0)
    {
        action();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    return child;
}

void InChild(const std::function<void()>& action)
{
    int iStatus = -1;
    waitpid(Start(action), &iStatus, 0);
    EXPECT_EQ(iStatus, 0);
}

std::vector<std::string> Lines(const std::string& strText)
{
    std::vector<std::string> lines(1);
    for (const char c : strText)
    {
        c == '\n' ? lines.emplace_back() : lines.back() += c;
    }
    return lines;
}

class CRegValueTest : public testing::Test
{
protected:
    CRegValueTest() { setenv("XDG_CONFIG_HOME", m_Folder.GetFolder().c_str(), 1); }

    auto GetMode() const { return static_cast<int>(std::filesystem::status(m_File).permissions()); }

    const CTempFolder m_Folder;
    const std::string m_File = m_Folder.Path("tellur/registry.ini");
    CLogCatcher m_Log;
};

} // namespace

TEST_F(CRegValueTest, ValuesAreReadBackByAnotherProcessAndByACopy)
{
    CRegValue key;
    EXPECT_EQ(key.Open(ERegHive::CurrentUser, COLUMNS), -1);
    EXPECT_EQ(key.SetDWord("name", 5), 0) << "whatever happens";
    EXPECT_EQ(Get(COLUMNS, "name"), -REG_RESULT_NO_KEY);
    EXPECT_TRUE(std::filesystem::is_empty(m_Folder.GetFolder())) << "only a write makes the file";

    const mode_t uMask = umask(0);
    Set(COLUMNS, "name", 120);
    Set(COLUMNS, "value", 80);
    umask(uMask);
    EXPECT_EQ(GetMode(), 0600);
    const std::string strDocument = ReadBytes(TELLUR_SOURCE_DIR "/docs/file-formats.md");
    EXPECT_NE(strDocument.find("```\n" + ReadBytes(m_File) + "```\n"), std::string::npos);
    key = Hold("software\\\\TELLUR\\montar\\Settings\\tellur Prop Control Columns Info\\");
    const CRegValue copy = key;
    InChild([&] { EXPECT_EQ(key.SetDWord("NAME", 0xFFFFFFFF), 0); });
    EXPECT_EQ(key.Open(ERegHive::CurrentUser, "Software\\Tell"), -1);
    uint32_t uValue = 0;
    EXPECT_EQ(copy.QueryDWord("name", uValue), REG_RESULT_OK);
    EXPECT_EQ(uValue, 0xFFFFFFFFU);
    Expect(COLUMNS, "value", 80);
    EXPECT_EQ(Get(COLUMNS, "valu"), -REG_RESULT_NOT_FOUND);
    EXPECT_EQ(Get("Software", "name"), -REG_RESULT_NOT_FOUND) << "a key above is there, too";
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CRegValueTest, AnyNameIsKept)
{
    const std::string names[] = {
        "", "\"", "\\", "a\\\"b\\", "a=b", "[k]", "; c", " blank ", "two\r\nlines", "\xC3\xA4\x01"};
    const char* const keys[] = {"a]b", "[", "; c", "\"k\"=dword:00000001", " \xC3\xA4 ", "a]b\\c"};
    for (const bool bWrite : {true, false})
    {
        uint32_t uValue = 0;
        for (const char* pszKey : keys)
        {
            for (const std::string& strName : names)
            {
                ++uValue;
                bWrite ? Set(pszKey, strName, uValue) : Expect(pszKey, strName, uValue);
            }
        }
    }
    const std::string strBefore = ReadBytes(m_File);
    for (const char* pszNoKey : {"", "\\\\", "a\nb", static_cast<const char*>(nullptr)})
    {
        CRegValue key = Hold("a]b");
        key.Create(ERegHive::CurrentUser, pszNoKey);
        EXPECT_EQ(key.SetDWord("lost", 1), 0);
    }
    EXPECT_EQ(ReadBytes(m_File), strBefore) << "never written to the key before";
}

TEST_F(CRegValueTest, AWriteChangesNothingButItsValue)
{
    WriteBytes(m_Folder.Path("real/file"),
               "; mine\r\n[SOFTWARE\\tellur]\r\n \"A\" = DWORD:0000000a \r\n# note\n"
               "\"text\"=\"dword:00000001\"\n\"bytes\"=hex(7):41,00\n\"none\"=hex:\n"
               "[other]\n\"a\"=dword:00000003\n\n[\\Software\\\\Tellur]\n\"b\"=dword:00000004\n"
               "\"b\"=dword:00000005\n; tail\n\"x");
    std::filesystem::create_directory(m_Folder.Path("tellur"));
    std::filesystem::create_symlink("../real/file", m_File);
    ASSERT_EQ(chmod(m_File.c_str(), 0640), 0);
    EXPECT_EQ(Get(KEY, "a"), 10);
    EXPECT_EQ(Get(KEY, "B"), 5);
    for (const char* pszOther : {"text", "bytes", "none"})
    {
        EXPECT_EQ(Get(KEY, pszOther), -REG_RESULT_OTHER_TYPE);
    }
    Set(KEY, "a", 0xAB);
    Set(KEY, "b", 5);
    Set(KEY, "c", 6);
    Set(KEY, "TEXT", 7);
    EXPECT_EQ(ReadBytes(m_Folder.Path("real/file")),
              "; mine\r\n[SOFTWARE\\tellur]\r\n \"A\" = dword:000000ab \r\n# note\n"
              "\"text\"=dword:00000007\n\"bytes\"=hex(7):41,00\n\"none\"=hex:\n"
              "[other]\n\"a\"=dword:00000003\n\n[\\Software\\\\Tellur]\n\"b\"=dword:00000004\n"
              "\"b\"=dword:00000005\n\"c\"=dword:00000006\n; tail\n\"x");
    EXPECT_TRUE(std::filesystem::is_symlink(m_File));
    EXPECT_EQ(GetMode(), 0640);
    EXPECT_EQ(m_Log.TakeLines(),
              std::vector<std::string>{"[CRegFile::Read] '" + m_File +
                                       "': line 15 is unreadable and skipped"})
        << "once";
}

TEST_F(CRegValueTest, UnreadableLinesAreSkippedAndKept)
{
    // clang-format off
    const char* const lines[] = {
        "\"a\"=dword:0000001", "\"a\"=dword:000000001", "\"a\"=dword:-0000001", "\"a\"=dword:0000000g",
        "\"a\"=dword:00000001x", "\"a\" dword:00000001", "\"a=dword:00000001", "a=dword:00000001",
        "\"a\\", "\"a\"=", "\"a\"=\"open", "\"a\"=\"b\"c", "[Software\\Tellur", "[]", "[\\]", "[", "<<< mine"};
    // clang-format on
    for (const std::string strLine : lines)
    {
        SCOPED_TRACE(strLine);
        const std::string strHead = "[Software\\Tellur]\n\"b\"=dword:00000002\n";
        const std::string strTail = strLine + "\n[Other]\n\"a\"=dword:00000003\n";
        WriteBytes(m_File, strHead + strTail);
        EXPECT_EQ(Get(KEY, "a"), -REG_RESULT_NOT_FOUND);
        EXPECT_EQ(Get(KEY, "b") + Get("other", "a"), 5);
        Set(KEY, "a", 9);
        EXPECT_EQ(ReadBytes(m_File), strHead + "\"a\"=dword:00000009\n" + strTail);
        // Below a broken section line nothing belongs to the section before.
        WriteBytes(m_File, strHead + strLine + "\n\"c\"=dword:00000004\n");
        EXPECT_EQ(Get(KEY, "c"), strLine[0] == '[' ? -REG_RESULT_NOT_FOUND : 4);
    }
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);

    // Prefixes (one lacks the last byte alone) and spoilt bytes: a write adds and loses no line.
    Set("Software\\Second", "x\\\"", 77);
    const std::string strGood = ReadBytes(m_File);
    for (size_t i = (strGood.size() - 1) % 3; i < 2 * strGood.size(); i += 3)
    {
        std::string strBad = i < strGood.size() ? strGood.substr(0, i) : strGood;
        if (i >= strGood.size())
        {
            strBad[i - strGood.size()] ^= static_cast<char>(1U << (i % 8));
        }
        WriteBytes(m_File, strBad);
        Set("Software\\Second", "new", 5);
        Expect("Software\\Second", "new", 5);
        const std::vector<std::string> now = Lines(ReadBytes(m_File));
        auto next = now.begin();
        for (const std::string& strOld : Lines(strBad))
        {
            next = std::find(next, now.end(), strOld);
            ASSERT_NE(next++, now.end()) << i << ": " << strOld;
        }
    }
}

TEST_F(CRegValueTest, ConcurrentWritersLoseNothing)
{
    constexpr uint32_t PROCESSES = 4, VALUES = 20;
    const auto forEach = [](uint32_t iProcess, const auto& action)
    {
        const std::string strOwn = "Own\\" + std::to_string(iProcess);
        for (uint32_t i = 0; i < VALUES; ++i)
        {
            const std::string strName = std::to_string(iProcess) + "-" + std::to_string(i);
            action(strOwn.c_str(), strName, iProcess * VALUES + i);
            action("Shared", strName, iProcess * VALUES + i);
        }
    };
    for (uint32_t i = 0; i < PROCESSES; ++i)
    {
        Start([&] { forEach(i, Set); });
    }
    for (int iStatus = 0; wait(&iStatus) > 0;)
    {
        EXPECT_EQ(iStatus, 0);
    }
    for (uint32_t i = 0; i < PROCESSES; ++i)
    {
        forEach(i, Expect);
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CRegValueTest, AKilledWriterLeavesTheOldOrTheNewFile)
{
    Set(KEY, "kept", 42);
    Set(KEY, "count", 0);
    for (uint32_t uRound = 0; uRound < 30; ++uRound)
    {
        const int64_t nFirst = Get(KEY, "count");
        const pid_t child = Start(
            [nFirst]
            {
                for (uint32_t i = 0; i < 100000; ++i)
                {
                    Set(KEY, "count", static_cast<uint32_t>(nFirst) + i);
                }
            });
        // A reader beside the writer sees every file whole, and the numbers only grow.
        int64_t nSeen = nFirst;
        while (nSeen <= nFirst + uRound % 3 && waitpid(child, nullptr, WNOHANG) == 0)
        {
            const int64_t nNow = Get(KEY, "count");
            EXPECT_GE(nNow, nSeen);
            EXPECT_EQ(Get(KEY, "kept"), 42);
            nSeen = nNow;
        }
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        EXPECT_GT(nSeen, nFirst);
        EXPECT_EQ(Lines(ReadBytes(m_File)).size(), 6U);
    }
    Set(KEY, "after", 1);
    EXPECT_EQ(Get(KEY, "after"), 1) << "neither the dead one's lock nor its file is in the way";
}

TEST_F(CRegValueTest, AFailedWriteIsSilentAndLeavesTheOldFile)
{
    Set(KEY, "a", 1);
    for (const std::string strCase : {"full disk", "read-only folder", "read-only file", "large"})
    {
        SCOPED_TRACE(strCase);
        const bool bShut = strCase == "read-only folder";
        const std::string strOld =
            strCase == "large" ? std::string(5 << 20, ';') : ReadBytes(m_File);
        ASSERT_EQ(chmod(m_Folder.Path("tellur").c_str(), 0755), 0);
        std::filesystem::remove(m_File);
        WriteBytes(m_File, strOld);
        ASSERT_EQ(chmod(m_File.c_str(), strCase == "read-only file" ? 0444 : 0666), 0);
        ASSERT_EQ(chmod(m_Folder.GetFolder().c_str(), 0755), 0);
        ASSERT_EQ(chmod(m_Folder.Path("tellur").c_str(), bShut ? 0555 : 0755), 0);
        InChild(
            [&]
            {
                const rlimit limit = {10, 10};
                signal(SIGXFSZ, SIG_IGN);
                EXPECT_TRUE(strCase != "full disk" || setrlimit(RLIMIT_FSIZE, &limit) == 0);
                constexpr uid_t NOBODY = 65534; // no folder is shut for the super-user
                EXPECT_TRUE(!bShut || geteuid() != 0 || setresuid(NOBODY, NOBODY, NOBODY) == 0);
                CRegValue key;
                uint32_t uValue = 0;
                key.Create(ERegHive::CurrentUser, KEY);
                key.SetDWord("a", 2);
                key.QueryDWord("a", uValue);
                EXPECT_EQ(uValue, strCase == "large" ? 0U : 1U);
                Set("Other", "a", 2);
                EXPECT_EQ(Get("Other", "a"), -REG_RESULT_NO_KEY);
                EXPECT_EQ(m_Log.GetText(), "");
            });
        EXPECT_EQ(ReadBytes(m_File), strOld);
        EXPECT_FALSE(std::filesystem::exists(m_File + ".tmp"));
    }
    for (const auto eType : {std::filesystem::file_type::fifo, std::filesystem::file_type::symlink})
    {
        std::filesystem::remove(m_File);
        const bool bPipe = eType == std::filesystem::file_type::fifo;
        EXPECT_EQ(bPipe ? mkfifo(m_File.c_str(), 0600) : symlink("registry.ini", m_File.c_str()),
                  0);
        Set(KEY, "a", 2);
        EXPECT_EQ(std::filesystem::symlink_status(m_File).type(), eType) << "cannot be read";
    }
}

TEST_F(CRegValueTest, TheFileIsWhereTheEnvironmentPutsIt)
{
    const std::string strHome = m_Folder.Path("a/home");
    const std::string strConfig = m_Folder.Path("a/b");
    // the two variables, null: not set; the file
    const std::tuple<const char*, const char*, std::string> cases[] = {
        {strConfig.c_str(), strHome.c_str(), strConfig + "/tellur/registry.ini"},
        {nullptr, strHome.c_str(), strHome + "/.config/tellur/registry.ini"},
        {"relative", strHome.c_str(), strHome + "/.config/tellur/registry.ini"},
        {nullptr, nullptr, ""},
        {nullptr, "relative", ""}};
    for (const auto& [pszConfig, pszHome, strFile] : cases)
    {
        SCOPED_TRACE(testing::Message() << (pszConfig != nullptr ? pszConfig : "null"));
        Set("Held", "a", 2);
        const CRegValue key = Hold("Held"); // in the usual place
        InChild(
            [&]
            {
                pszConfig != nullptr ? setenv("XDG_CONFIG_HOME", pszConfig, 1)
                                     : unsetenv("XDG_CONFIG_HOME");
                pszHome != nullptr ? setenv("HOME", pszHome, 1) : unsetenv("HOME");
                EXPECT_EQ(chdir(m_Folder.GetFolder().c_str()), 0);
                uint32_t uValue = 3;
                EXPECT_EQ(key.QueryDWord("a", uValue), REG_RESULT_NOT_FOUND);
                Set(KEY, "a", 1);
                EXPECT_EQ(Get(KEY, "a"), strFile.empty() ? -REG_RESULT_NO_KEY : 1);
            });
        EXPECT_EQ(!strFile.empty(), std::filesystem::exists(strFile));
        EXPECT_FALSE(std::filesystem::exists(m_Folder.Path("relative")));
        std::filesystem::remove_all(m_Folder.Path("a"));
    }
}
