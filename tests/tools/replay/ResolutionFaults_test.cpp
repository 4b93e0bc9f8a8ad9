// A change of resolution on a disk that fails, and in a process that dies.

#include "host/FileSystem.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <utility>

namespace
{

constexpr char SCRIPT[] = "open( \"level.height\" ) resolution( 513 )\n";

std::string ReadOrEmpty(const std::string& strPath)
{
    return std::filesystem::exists(strPath) ? ReadBytes(strPath) : std::string();
}

// A level of 257 vertices a side with a hill on it, in "old.height", and the result of a change to
// 513 in "new.height"; "script.tellur" makes that change to "level.height".
// Kind of the fault, and what is behind it.
class CResolutionFaults : public testing::TestWithParam<std::pair<const char*, const char*>>
{
protected:
    void SetUp() override
    {
        std::filesystem::create_directories(m_Scratch);
        ::setenv("TMPDIR", m_Scratch.c_str(), 1);
        const SRunResult made = m_Runner.Play(
            "level( 256, [ 2560, 500, 2560 ] )\n"
            "brush() { bitmap() { path( \"white.png\" ) } extent( 900 )\n"
            "  function( \"RelativeHeightFunction\" ) { attrib( \"m_Height\", \"300\" ) } }\n"
            "mode( \"terraforming\" )\npress( 800, 1500 ) move( 800, 1500, 0 ) release_miss()\n"
            "save( \"old.height\" ) save( \"new.height\" )\n"
            "open( \"new.height\" ) resolution( 513 )\n");
        ASSERT_EQ(made.iExitCode, 0) << made.strErr;
        m_Old = ReadBytes(m_Runner.Path("old.height"));
        m_New = ReadBytes(m_Runner.Path("new.height"));
        ASSERT_EQ(m_Old.size(), 36U + 4 * 257 * 257);
        ASSERT_EQ(m_New.size(), 36U + 4 * 513 * 513);
        WriteScript(SCRIPT);
    }

    void TearDown() override { ::unsetenv("TMPDIR"); }

    // A level whose heights are missing names the backup that has them.
    void ExpectOffered()
    {
        EXPECT_EQ(ReadOrEmpty(m_Runner.Path("level.height.bak")), m_Old);
        EXPECT_EQ(m_Runner.Play("open( \"level.height\" )\n").iExitCode, 1);
        const std::string strLog = ReadBytes(m_Runner.Path("log.txt"));
        EXPECT_TRUE(strLog.ends_with("[ReadHeightFile] " + m_Runner.Path("level.height") +
                                     ": No such file or directory; " +
                                     m_Runner.Path("level.height.bak") +
                                     " holds the heights from before a change of resolution\n"))
            << strLog;
        WriteScript(SCRIPT);
    }

    // The next program that needs a folder takes those of dead ones away, and its own at its end.
    void ExpectNothingLeft()
    {
        EXPECT_EQ(m_Runner.Play("level( 32, [ 9, 9, 9 ] ) resolution( 65 )\n").iExitCode, 0);
        EXPECT_TRUE(std::filesystem::is_empty(m_Scratch));
    }

    void WriteScript(const char* pszBody)
    {
        WriteBytes(m_Runner.Path("script.tellur"), CReplayRunner::GetDeclarations() + pszBody);
    }

    // The file of this name is a whole one or is not there.
    void ExpectWhole(const char* pszName)
    {
        const std::string strBytes = ReadOrEmpty(m_Runner.Path(pszName));
        EXPECT_TRUE(strBytes.empty() || strBytes == m_Old || strBytes == m_New) << pszName;
    }

    bool HasTemporary() const
    {
        const std::vector<std::string> names = m_Runner.GetNames();
        return std::any_of(names.begin(),
                           names.end(),
                           [](const std::string& strName)
                           { return strName.find(".tmp-") != std::string::npos; });
    }

    CReplayRunner m_Runner;
    const std::string m_Scratch = m_Runner.Path("tmp");
    std::string m_Old;
    std::string m_New;
};

} // namespace

TEST_P(CResolutionFaults, LeaveTheOldHeightsOrTheNewOnes)
{
    const std::string strKind = GetParam().first;
    const std::string strLevel = m_Runner.Path("level.height");
    const std::string strBackup = m_Runner.Path("level.height.bak");
    for (const bool bHasBackup : {false, true})
    {
        int iFaults = 0;
        int nMissing = 0;
        SRunResult result;
        do
        {
            ++iFaults;
            const std::string strFault =
                strKind + " " + std::to_string(iFaults) + GetParam().second;
            SCOPED_TRACE(strFault);
            WriteBytes(strLevel, m_Old);
            std::filesystem::remove(strBackup);
            if (bHasBackup)
            {
                WriteBytes(strBackup, m_Old);
            }
            result = m_Runner.RunWithFault(strFault);
            const std::string strNow = ReadOrEmpty(strLevel);
            ExpectWhole("level.height");
            if (strNow.empty())
            {
                ++nMissing;
                ExpectOffered();
            }
            ExpectWhole("level.height.bak");
            if (strKind == "kill" || strKind == "term")
            {
                EXPECT_TRUE(result.iExitCode == (strKind == "kill" ? -SIGKILL : -SIGTERM) ||
                            strNow == m_New);
            }
            else
            {
                EXPECT_EQ(result.iExitCode, strNow == m_New ? 0 : 1) << result.strErr;
                const bool bLogged = result.strErr.find("failed to save file " + strLevel + "\n") !=
                                     std::string::npos;
                EXPECT_EQ(bLogged, strNow != m_New) << result.strErr;
            }
            EXPECT_TRUE(strKind == "kill" || strKind == "readonly" || !HasTemporary());
            fs::file next;
            EXPECT_TRUE(next.open(m_Runner.Path("next").c_str(), fs::mode_write) && next.close());
            EXPECT_FALSE(HasTemporary()) << "a stray file after the next write";
        } while (result.iExitCode != 0 && iFaults < 50);
        EXPECT_EQ(ReadOrEmpty(strLevel), m_New) << "the last run met no fault in its way";
        EXPECT_GT(iFaults, 4) << "the faults came at many places";
        // Between two calls, and only where they are the last ones that go through.
        EXPECT_EQ(nMissing, strKind != "full" && !bHasBackup ? 1 : 0);
        ExpectNothingLeft();
        WriteScript(SCRIPT);
    }
}

// A level that was never saved has its heights in a file of the program's own meanwhile.
TEST_P(CResolutionFaults, ALevelWithoutAFileChangesOrStaysAsItIs)
{
    WriteScript(
        "level( 32, [ 320, 50, 320 ] ) resolution( 65 ) undo() expect_height( 32, 32, 0, 0 )\n"
        "redo() expect_height( 64, 64, 0, 0 ) resolution( 33 ) save( \"made.height\" )\n");
    SRunResult result;
    int iFaults = 0;
    do
    {
        const std::string strPlace = " " + std::to_string(++iFaults);
        result = m_Runner.RunWithFault(GetParam().first + strPlace + GetParam().second);
        const bool bKept =
            result.strErr.find("did not change, the log says why") != std::string::npos;
        EXPECT_TRUE(result.iExitCode <= 0 /* ended by a signal, or played */ || bKept ||
                    result.strErr.find("made.height") != std::string::npos)
            << result.strErr;
    } while (result.iExitCode != 0 && iFaults < 100);
    EXPECT_EQ(result.iExitCode, 0) << result.strErr;
    EXPECT_GT(iFaults, 4);
    EXPECT_EQ(std::filesystem::file_size(m_Runner.Path("made.height")), 36U + 4 * 33 * 33);
    ExpectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(Kinds,
                         CResolutionFaults,
                         testing::Values(std::pair("kill", ""),
                                         std::pair("full", ""),
                                         std::pair("readonly", ""),
                                         std::pair("kill", " plain"),
                                         std::pair("term", " plain")),
                         [](const auto& test) {
                             return test.param.first +
                                    std::string(*test.param.second != 0 ? "Plain" : "");
                         });
