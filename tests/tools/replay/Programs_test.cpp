// What holds for all programs: they write over nothing that they read, and notice when what they
// print does not arrive.

#include "tests/support/TestPaths.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <sys/wait.h>

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

constexpr const char* LEVEL = "level( 32, [ 320, 50, 320 ] )\nsave( \"a.height\" )\n";

class CPrograms : public testing::Test
{
protected:
    void SetUp() override
    {
        WriteBytes(m_Runner.Path("opens.tellur"),
                   CReplayRunner::GetDeclarations() +
                       "open( \"a.height\" )\n"
                       "brush() { bitmap() { path( \"white.png\" ) } }\n");
        WriteBytes(m_Runner.Path("script.tellur"), CReplayRunner::GetDeclarations() + LEVEL);
        ASSERT_EQ(m_Runner.Run({"script.tellur"}).iExitCode, 0);
    }

    // Of the shell, in the folder, with the programs in its path; standard error goes to "err".
    int RunShell(const std::string& strCommand) const
    {
        const std::string strLine = "cd '" + m_Runner.GetFolder() +
                                    "' && PATH=\"" TELLUR_BIN_DIR ":$PATH\" && exec 2>err; " +
                                    strCommand;
        const int nStatus = system(strLine.c_str()); // NOLINT(cert-env33-c): the test's own text
        return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
    }

    std::string Read(const char* pszName) const { return ReadBytes(m_Runner.Path(pszName)); }

    CReplayRunner m_Runner;
};

} // namespace

TEST_F(CPrograms, WriteOverNothingThatTheyRead)
{
    ASSERT_EQ(RunShell("ln script.tellur hard; ln -s script.tellur soft; mkdir sub;"
                       "ln a.height b.npy; ln -s . here; cp a.height plugin.so;"
                       "touch PredefinedBrushes.ini; echo 'oh(' >bad"),
              0);
    const std::vector<std::string> before = m_Runner.GetNames();
    const std::string strScript = Read("script.tellur");
    const std::string strHeights = Read("a.height");
    const std::string strPicture = Read("white.png");
    const char* const lines[] = {
        "tellur-replay script.tellur --log script.tellur",
        "tellur-replay script.tellur --out sub/.././script.tellur",
        "tellur-replay script.tellur --stats \"$PWD\"/SCRIPT.tellur",
        "tellur-replay script.tellur --log hard",
        "tellur-replay script.tellur --stats soft",
        "tellur-replay soft --out hard",
        "tellur-replay script.tellur --stats /dev/stdout >>script.tellur",
        "tellur-replay script.tellur --plugin plugin.so --log here/plugin.so",
        "tellur-replay script.tellur --log new --stats ./new",
        "tellur-replay script.tellur --out new.height --stats here/NEW.height",
        "tellur-replay script.tellur --stats ./a.height",
        "tellur-replay opens.tellur --log b.npy",
        "tellur-replay opens.tellur --log here/white.png",
        "cd sub && tellur-replay ../opens.tellur --root .. --log ../PredefinedBrushes.ini",
        "tellur-height convert a.height sub/../a.height --size 65",
        "tellur-height convert a.height b.npy",
        "tellur-height picture a.height here/a.height",
    };
    for (const char* pszLine : lines)
    {
        SCOPED_TRACE(pszLine);
        EXPECT_EQ(RunShell(pszLine), 2);
        EXPECT_NE(Read("err").find("the same file"), std::string::npos) << Read("err");
        EXPECT_EQ(Read("script.tellur"), strScript);
        EXPECT_EQ(Read("a.height"), strHeights);
        EXPECT_EQ(Read("white.png"), strPicture);
        EXPECT_EQ(m_Runner.GetNames(), before);
    }
    EXPECT_EQ(RunShell("tellur-replay bad --log a.height"), 2);
    EXPECT_EQ(Read("a.height"), strHeights) << "nobody knows what such a script names";
    EXPECT_NE(Read("err").find("a.height stays as it is"), std::string::npos) << Read("err");
}

TEST_F(CPrograms, NoticeThatNothingTakesWhatTheyPrint)
{
    const char* const lines[] = {
        "tellur-replay --help",
        "tellur-replay --declarations",
        "tellur-replay script.tellur --log log --stats /dev/stdout", // the log is no standard
                                                                     // output
        "tellur-replay script.tellur --out /dev/fd/1",
        "tellur-height --help",
        "tellur-height info a.height",
        "tellur-height convert a.height b.npy",
        "tellur-parse --help",
        "tellur-parse script.tellur",
    };
    for (const std::string strLine : lines)
    {
        const std::string commands[] = {
            strLine + " >/dev/full",
            strLine + " >&-",
            // The reader is gone before the program starts.
            "mkfifo p; exec 3<>p 4>p 3<&-; rm p; " + strLine + " >&4",
        };
        for (const std::string& strCommand : commands)
        {
            SCOPED_TRACE(strCommand);
            EXPECT_EQ(RunShell(strCommand), 1);
            EXPECT_NE(Read("err").find("cannot be written"), std::string::npos) << Read("err");
            EXPECT_FALSE(std::filesystem::exists(m_Runner.Path("b.npy")));
        }
    }
}

TEST_F(CPrograms, TakeALimitOfTheirFilesForAFullDisk)
{
    const std::string strHeights = Read("a.height");
    EXPECT_EQ(RunShell("ulimit -f 1; tellur-replay script.tellur --log /dev/null"), 1);
    EXPECT_NE(Read("err").find("cannot be written"), std::string::npos) << Read("err");
    EXPECT_EQ(Read("a.height"), strHeights);
}

TEST_F(CPrograms, GoOnWithAStreamWhereItIs)
{
    WriteBytes(m_Runner.Path("noisy.tellur"),
               CReplayRunner::GetDeclarations() + LEVEL + "resolution( 33 )\n");
    EXPECT_EQ(RunShell("{ echo first; tellur-replay noisy.tellur --log /dev/stdout"
                       " --stats /dev/stdout; echo last; } >all"),
              0);
    EXPECT_TRUE(Read("all").starts_with("first\n")) << Read("all");
    EXPECT_TRUE(Read("all").ends_with("[\n]\nlast\n")) << Read("all");
    EXPECT_EQ(RunShell("tellur-replay script.tellur --out /dev/stdout | cmp - a.height"), 0);
    EXPECT_EQ(RunShell("mkfifo p; cmp p a.height & tellur-replay script.tellur --log l 3<>p "
                       "--out p && wait $!"),
              0);
}
