#include "host/Image.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>

namespace
{

// One object of the statistics file.
struct SDragLine
{
    std::string strFunction;
    int nPoints = 0;
    int nVisited = 0;
    int nChanged = 0;
    double fMilliseconds = 0.0;
    double fWorst = 0.0;
};

// The file is an array with one object a line.
std::vector<SDragLine> ReadStatistics(const std::string& strJson)
{
    std::vector<SDragLine> drags;
    std::istringstream lines(strJson);
    std::string strLine;
    std::string strFrame; // what is left without the objects
    while (std::getline(lines, strLine))
    {
        SDragLine drag;
        char szFunction[64] = {};
        int nUsed = 0;
        const int nRead = std::sscanf(strLine.c_str(),
                                      "{\"function\": \"%63[^\"]\", \"points\": %d, "
                                      "\"visited\": %d, \"changed\": %d, \"ms\": %lf, "
                                      "\"worst_ms\": %lf}%n",
                                      szFunction,
                                      &drag.nPoints,
                                      &drag.nVisited,
                                      &drag.nChanged,
                                      &drag.fMilliseconds,
                                      &drag.fWorst,
                                      &nUsed);
        if (nRead == 6 && nUsed > 0)
        {
            drag.strFunction = szFunction;
            drags.push_back(drag);
            strLine = "o" + strLine.substr(static_cast<size_t>(nUsed));
        }
        strFrame += strLine;
    }
    std::string strExpected = "[";
    for (size_t i = 0; i < drags.size(); ++i)
    {
        strExpected += i == 0 ? "o" : ",o";
    }
    EXPECT_EQ(strFrame, strExpected + "]") << strJson;
    return drags;
}

float ReadHeight(const std::string& strBytes, size_t iVertex)
{
    float fHeight = 0.0F;
    std::memcpy(&fHeight, strBytes.data() + 32 + iVertex * 4, 4);
    return fHeight;
}

} // namespace

TEST(ReplayResults, DeclarationsNameEveryKeywordOnceAndParse)
{
    const CReplayRunner runner;
    const std::string strText = CReplayRunner::GetDeclarations();
    const char* const lines[] = {
        "!level( i, v3 )",
        "!open( s )",
        "!brush()",
        "!mode( s )",
        "!keys( s )",
        "!press( f, f )",
        "!move( f, f, i )",
        "!release( f, f )",
        "!press_at( v3 )",
        "!move_at( v3, i )",
        "!release_at( v3 )",
        "!press_miss()",
        "!move_miss( i )",
        "!release_miss()",
        "!action( i, i )",
        "!undo()",
        "!redo()",
        "!auto_normals( i )",
        "!save( s )",
        "!picture( s )",
        "!expect_height( i, i, f, f )",
        "!expect_undo( i )",
        "!brush_name( s )",
        "!bitmap()",
        "!path( s )",
        "!function( s )",
        "!power_modifier( f )",
        "!usage_density( f )",
        "!fade_factor( f )",
        "!hardness( f )",
        "!vertical_distance( f )",
        "!extent( f )",
        "!mask( s )",
        "!mask_enabled( i )",
        "!attrib( s, s )",
    };
    for (const char* pszLine : lines)
    {
        const size_t iFound = strText.find(std::string(pszLine) + "\n");
        EXPECT_NE(iFound, std::string::npos) << pszLine;
        EXPECT_EQ(strText.find(std::string(pszLine) + "\n", iFound + 1), std::string::npos);
    }
    const SRunResult empty = runner.Play("");
    EXPECT_EQ(empty.iExitCode, 0) << empty.strErr;
    const SRunResult help = runner.Run({"--help"});
    EXPECT_EQ(help.iExitCode, 0);
    for (const char* pszOption : {"--out", "--log", "--stats", "--root", "--plugin"})
    {
        EXPECT_NE(help.strOut.find(pszOption), std::string::npos) << pszOption;
    }
    EXPECT_EQ(help.strErr, "");
}

TEST(ReplayResults, StatisticsCountEachDragByItself)
{
    const CReplayRunner runner;
    // Vertices every 10 units; a footprint of 40 units round (41, 41) holds 4 x 4 of them. Ten
    // units further 4 x 4 again, of which one column is new.
    const std::string strBody = CReplayRunner::GetStrokeStart("RelativeHeightFunction") +
                                "press( 41, 41 ) move( 41, 41, 0 ) move( 51, 41, 0 ) "
                                "move_miss( 1 ) release( 51, 41 ) move( 11, 11, 0 )\n"
                                "brush() { bitmap() { path( \"white.png\" ) } extent( 40 ) "
                                "function( \"PointHeightFunction\" ) }\n"
                                "press( 41, 41 ) move_miss( -5 ) release_miss()\n"
                                "press_miss() release_miss()\n"
                                "press( 41, 41 ) move_miss( 0 )\n";
    const SRunResult result = runner.Play(strBody, {"--stats", "stats.json"});
    ASSERT_EQ(result.iExitCode, 0) << result.strErr;
    const std::vector<SDragLine> drags = ReadStatistics(ReadBytes(runner.Path("stats.json")));

    struct SExpected
    {
        const char* pszFunction;
        int nPoints;
        int nVisited;
        int nChanged;
    };

    const SExpected expected[] = {
        {"RelativeHeightFunction", 2, 32, 20},
        {"PointHeightFunction", 1, 16, 16},
        {"PointHeightFunction", 0, 0, 0},
        {"PointHeightFunction", 1, 16, 0},
    };
    ASSERT_EQ(drags.size(), std::size(expected));
    for (size_t i = 0; i < drags.size(); ++i)
    {
        SCOPED_TRACE(i);
        EXPECT_EQ(drags[i].strFunction, expected[i].pszFunction);
        EXPECT_EQ(drags[i].nPoints, expected[i].nPoints);
        EXPECT_EQ(drags[i].nVisited, expected[i].nVisited);
        EXPECT_EQ(drags[i].nChanged, expected[i].nChanged);
        EXPECT_GT(drags[i].fWorst, 0.0);
        EXPECT_GE(drags[i].fMilliseconds, drags[i].fWorst);
    }
    ASSERT_EQ(runner.Play("", {"--stats", "stats.json"}).iExitCode, 0);
    EXPECT_TRUE(ReadStatistics(ReadBytes(runner.Path("stats.json"))).empty());
}

TEST(ReplayResults, UndoAndRedoRestoreTheBytes)
{
    const CReplayRunner runner;
    const std::string strBody = CReplayRunner::GetStrokeStart("RelativeHeightFunction") +
                                "save( \"0.height\" ) press( 41, 41 ) move( 41, 41, 0 ) "
                                "release( 41, 41 ) save( \"1.height\" )\n"
                                "press( 21, 61 ) move( 21, 61, 0 ) release( 21, 61 ) "
                                "save( \"2.height\" ) undo() save( \"1u.height\" ) undo() undo() "
                                "save( \"0u.height\" ) expect_undo( 0 ) redo() "
                                "save( \"1r.height\" ) redo() redo() save( \"2r.height\" ) "
                                "expect_undo( 2 )\n";
    const SRunResult result = runner.Play(strBody, {"--out", "out.height"});
    ASSERT_EQ(result.iExitCode, 0) << result.strErr;
    const auto read = [&](const char* pszName)
    {
        return ReadBytes(runner.Path(pszName));
    };
    EXPECT_EQ(read("0u.height"), read("0.height"));
    EXPECT_EQ(read("1u.height"), read("1.height"));
    EXPECT_EQ(read("1r.height"), read("1.height"));
    EXPECT_EQ(read("2r.height"), read("2.height"));
    EXPECT_EQ(read("out.height"), read("2.height"));
    EXPECT_NEAR(ReadHeight(read("1.height"), 3 * 9 + 3), 20.0F, 1e-3F);
    EXPECT_EQ(ReadHeight(read("1.height"), 6 * 9 + 2), 0.0F);
    EXPECT_NEAR(ReadHeight(read("2.height"), 6 * 9 + 2), 20.0F, 1e-3F);
}

TEST(ReplayResults, PathsCountFromTheScriptAndThenFromTheRoot)
{
    const CReplayRunner runner;
    const std::string strStroke = CReplayRunner::GetStrokeStart("RelativeHeightFunction") +
                                  "press( 41, 41 ) move( 41, 41, 0 ) release( 41, 41 )\n"
                                  "expect_height( 3, 3, 20, 0.001 ) save( \"saved.height\" )\n"
                                  "open( \"saved.height\" ) picture( \"..\\\\picture.png\" )\n";
    const std::string strScript = CReplayRunner::GetDeclarations() + strStroke;
    WriteBytes(runner.Path("deep/er/script.tellur"), strScript);
    // The image is not beside the script: the root has it, or nobody.
    SRunResult result =
        runner.Run({"deep/er/script.tellur", "--log", "log.txt", "--out", "o.height"});
    EXPECT_EQ(result.iExitCode, 0) << result.strErr;
    result = runner.Run({"deep/er/script.tellur", "--log", "log.txt", "--root", "deep"});
    EXPECT_EQ(result.iExitCode, 1) << result.strErr;
    std::filesystem::rename(runner.Path("white.png"), runner.Path("deep/er/white.png"));
    result = runner.Run({"deep/er/script.tellur", "--log", "log.txt", "--root", "deep"});
    EXPECT_EQ(result.iExitCode, 0) << result.strErr;
    EXPECT_TRUE(std::filesystem::exists(runner.Path("deep/er/saved.height")));
    EXPECT_TRUE(std::filesystem::exists(runner.Path("o.height")));
    const std::unique_ptr<IImage> pPicture(IL_LoadImage(runner.Path("deep/picture.png").c_str()));
    ASSERT_NE(pPicture, nullptr);
    EXPECT_EQ(pPicture->GetWidth(), 9U);
    EXPECT_EQ(pPicture->GetHeight(), 9U);
    EXPECT_FALSE(std::filesystem::exists(runner.Path("deep/log.txt")));
}
