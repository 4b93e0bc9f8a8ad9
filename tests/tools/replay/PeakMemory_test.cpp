// What a designer's machine must hold while the large things are done.

#include "tests/tools/replay/CReplayRunner.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace
{

constexpr long SLACK = 4096; // kilobytes

class CPeakMemory : public testing::Test
{
protected:
    // Kilobytes of heights.
    static constexpr long GetGrid(long iVertices) { return 4 * iVertices * iVertices / 1024; }

    // The most that the player of this script held, in kilobytes.
    long Measure(const std::string& strBody) const
    {
        WriteBytes(m_Runner.Path("script.tellur"), CReplayRunner::GetDeclarations() + strBody);
        const pid_t iChild = ::fork();
        if (iChild == 0)
        {
            ::_exit(m_Runner.Run({"script.tellur"}).iExitCode);
        }
        int iStatus = -1;
        rusage usage = {};
        EXPECT_EQ(::wait4(iChild, &iStatus, 0, &usage), iChild);
        EXPECT_EQ(iStatus, 0);
        return usage.ru_maxrss; // of the largest among the child and the player
    }

    CReplayRunner m_Runner;
};

} // namespace

TEST_F(CPeakMemory, AChangeOfResolutionHoldsTwoGridsBesideTheTerrain)
{
    constexpr long LARGE = GetGrid(2049);
    constexpr long SMALL = GetGrid(1025);
    Measure("level( 2048, [ 20480, 500, 20480 ] ) save( \"a.height\" )");
    const long iOpen = Measure("open( \"a.height\" )");
    EXPECT_GT(iOpen, LARGE);
    const long iDown = Measure("open( \"a.height\" ) resolution( 1025 )");
    EXPECT_LT(iDown, iOpen + LARGE + SMALL + SLACK);
    EXPECT_GT(iDown, iOpen + LARGE) << "the measure sees the grids";
    const long iUp = Measure("open( \"a.height\" ) resolution( 2049 )");
    EXPECT_LT(iUp, iOpen + LARGE + SLACK) << "the terrain is the small one";
    // What drags keep for the next one is given up first.
    const std::string strDrag =
        "open( \"a.height\" )\nbrush() { bitmap() { path( \"white.png\" ) } extent( 50000 )\n"
        " function( \"SetHeightFunction\" ) { attrib( \"m_Height\", \"0\" ) } }\nmode( "
        "\"terraforming\" )\n"
        "press( 500, 500 ) move( 500, 500, 0 ) release( 500, 500 )\n";
    const long iDrag = Measure(strDrag);
    EXPECT_LT(Measure(strDrag + "resolution( 1025 )"), iDrag + SLACK);
}

// Address space for none, some or all of what a stroke over the whole terrain takes.
TEST_F(CPeakMemory, AStrokeWithoutMemoryLeavesTheHeightsAndTheLevelIsSaved)
{
    constexpr rlim_t MEGABYTE = 1 << 20;
    const std::string strLevel = "level( 2048, [ 20480, 500, 20480 ] )\n";
    const std::string strStroke =
        "brush() { bitmap() { path( \"white.png\" ) } extent( 60000 )\n"
        " function( \"RelativeHeightFunction\" ) { attrib( \"m_Height\", \"50\" ) } }\n"
        "mode( \"terraforming\" )\n"
        "press( 500, 500 ) move( 500, 500, 0 ) release( 500, 500 )\n";
    Measure(strLevel + "save( \"before.height\" )\n");
    Measure(strLevel + strStroke + "save( \"after.height\" )\n");
    const std::string strBefore = ReadBytes(m_Runner.Path("before.height"));
    const std::string strAfter = ReadBytes(m_Runner.Path("after.height"));
    ASSERT_NE(strBefore, strAfter);
    WriteBytes(m_Runner.Path("script.tellur"),
               CReplayRunner::GetDeclarations() + strLevel + strStroke +
                   "save( \"now.height\" )\n");
    int nLost = 0;
    int nWhole = 0;
    for (rlim_t uLimit = 36 * MEGABYTE; uLimit <= 100 * MEGABYTE; uLimit += 8 * MEGABYTE)
    {
        SCOPED_TRACE(testing::Message() << uLimit / MEGABYTE << " MB");
        std::filesystem::remove(m_Runner.Path("now.height"));
        const pid_t iChild = ::fork();
        if (iChild == 0)
        {
            const rlimit limit = {uLimit, uLimit};
            ::setrlimit(RLIMIT_AS, &limit);
            const int iExitCode = m_Runner.Run({"script.tellur", "--log", "log.txt"}).iExitCode;
            ::_exit(iExitCode < 0 ? 99 : iExitCode);
        }
        int iStatus = -1;
        ASSERT_EQ(::waitpid(iChild, &iStatus, 0), iChild);
        ASSERT_TRUE(WIFEXITED(iStatus) && WEXITSTATUS(iStatus) != 99) << "a signal";
        if (std::filesystem::exists(m_Runner.Path("now.height")))
        {
            const std::string strNow = ReadBytes(m_Runner.Path("now.height"));
            ASSERT_TRUE(strNow == strBefore || strNow == strAfter);
            ASSERT_TRUE(strNow == strAfter || !ReadBytes(m_Runner.Path("log.txt")).empty());
            ASSERT_EQ(WEXITSTATUS(iStatus), strNow == strAfter ? 0 : 1);
            nLost += strNow == strBefore ? 1 : 0;
            nWhole += strNow == strAfter ? 1 : 0;
        }
    }
    EXPECT_GT(nLost, 1);
    EXPECT_GT(nWhole, 1);
}

TEST_F(CPeakMemory, AnStlFileIsNeverInMemory)
{
    const std::string strLevel = "level( 512, [ 5120, 500, 5120 ] )\n";
    const long iLevel = Measure(strLevel);
    EXPECT_LT(Measure(strLevel + "export_stl( \"a.stl\" )\n"), iLevel + SLACK);
    EXPECT_EQ(std::filesystem::file_size(m_Runner.Path("a.stl")), 84U + 100U * 512 * 512);
}
