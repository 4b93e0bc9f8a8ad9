#include "host/Image.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <regex>
#include <sstream>

namespace
{

// The statistics on one line, with "T" for each time that is above 0.
std::string ReadStatistics(const CReplayRunner& runner)
{
    std::string strJson = ReadBytes(runner.Path("stats.json"));
    strJson.erase(std::remove(strJson.begin(), strJson.end(), '\n'), strJson.end());
    return std::regex_replace(strJson, std::regex("ms\": (?=[0-9.]*[1-9])[0-9.e-]+"), "ms\": T");
}

} // namespace

TEST(ReplayResults, DeclarationsNameEveryKeywordOnceAndParse)
{
    const CReplayRunner runner;
    const std::string strText = CReplayRunner::GetDeclarations();
    std::istringstream keywords(
        "level( i, v3 );open( s );brush();tool_brush();brush_file( s );use_brush( s "
        ");save_brushes( s "
        ");take_brush( i );"
        "rename_brush( i, s );duplicate_brush( i, s );remove_brush( i );move_brush( i, i );"
        "undo_brushes();redo_brushes();mode( s "
        ");keys( s );press( f, f );move( f, f, i );"
        "release( f, f );press_at( v3 );move_at( v3, i );release_at( v3 );press_miss();"
        "paint_bitmap( s );paint_function( s );paint_color( v4 );paint_mask( i );"
        "paint_brush( s, f );paint_power( f );paint_hardness( f );paint_texel_mapping( i );"
        "paint_undo();paint_redo();save_bitmap( s );"
        "move_miss( i );release_miss();action( i, i "
        ");begin_step();end_step();undo();redo();auto_normals( i );"
        "resolution( i );save( s );export_stl( s );picture( s );expect_height( i, i, f, f "
        ");expect_undo( i );brush_name( s );"
        "bitmap();path( s );function( s );power_modifier( f );usage_density( f );"
        "fade_factor( f );hardness( f );vertical_distance( f );extent( f );mask( s );"
        "mask_enabled( i );attrib( s, s );level_size( v3, i );level_extend( i, i, i, i, i );"
        "level_shift( i, i, i );level_turn( i );level_mirror( s );level_raise( f );");
    std::string strKeyword;
    while (std::getline(keywords, strKeyword, ';'))
    {
        const std::string strLine = "!" + strKeyword + "\n";
        const size_t iFound = strText.find(strLine);
        EXPECT_NE(iFound, std::string::npos) << strLine;
        EXPECT_EQ(strText.find(strLine, iFound + 1), std::string::npos) << strLine;
    }
    const SRunResult empty = runner.Play("");
    EXPECT_EQ(empty.iExitCode, 0) << empty.strErr;
}

TEST(ReplayResults, ABrushThatIsTakenBeforeThereIsOneSaysThatStrokesDoNothing)
{
    const CReplayRunner runner;
    const std::string strTaken = "level( 32, [ 320, 100, 320 ] )\n"
                                 "brush_file( \"data/brushes/ready.brushes\" )\n"
                                 "use_brush( \"Crater\" )\n";
    const auto getLog = [&](const std::string& strScript)
    {
        EXPECT_EQ(runner.Play(strScript, {"--root", TELLUR_SOURCE_DIR}).iExitCode, 0);
        return ReadBytes(runner.Path("log.txt"));
    };
    const std::string strLog = getLog(strTaken);
    EXPECT_EQ(strLog,
              "[CPluginScript::Play] use_brush: terraforming stays off, since there was no brush "
              "before; strokes need mode( \"terraforming\" ) first\n");
    EXPECT_EQ(getLog(strTaken + "use_brush( \"Crater\" )\n"), strLog) << "once";
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

    const std::string strTimes = "\"ms\": T, \"worst_ms\": T}";
    const std::string strPoint = "{\"function\": \"PointHeightFunction\", ";
    EXPECT_EQ(ReadStatistics(runner),
              "[{\"function\": \"RelativeHeightFunction\", \"points\": 2, \"visited\": 32, "
              "\"changed\": 20, " +
                  strTimes + "," + strPoint + "\"points\": 1, \"visited\": 16, \"changed\": 16, " +
                  strTimes + "," + strPoint + "\"points\": 0, \"visited\": 0, \"changed\": 0, " +
                  strTimes + "," + strPoint + "\"points\": 1, \"visited\": 16, \"changed\": 0, " +
                  strTimes + "]");
    ASSERT_EQ(runner.Play("", {"--stats", "stats.json"}).iExitCode, 0);
    EXPECT_EQ(ReadStatistics(runner), "[]");
}

TEST(ReplayResults, ABrushFileThatCannotBeSavedWholeStays)
{
    const CReplayRunner runner;
    WriteBytes(runner.Path("library.ini"),
               CReplayRunner::GetDeclarations() +
                   "brush() { function( \"SetHeightFunction\" )\n"
                   " bitmap() { path( \"white.png\" ) } }\n"
                   "brush() { brush_name( \"bare\" ) function( \"SetHeightFunction\" ) }\n");
    WriteBytes(runner.Path("old.ini"), "precious");
    const SRunResult result =
        runner.Play("brush_file( \"library.ini\" ) save_brushes( \"old.ini\" )\n");
    EXPECT_EQ(result.iExitCode, 1) << result.strErr;
    EXPECT_EQ(ReadBytes(runner.Path("old.ini")), "precious");
    EXPECT_NE(ReadBytes(runner.Path("log.txt")).find("failed to save brush bare"),
              std::string::npos);
}

TEST(ReplayResults, AFaultyBrushFileIsNamedInTheLogAndTheScriptGoesOn)
{
    const CReplayRunner runner;
    WriteBytes(runner.Path("broken.ini"), "!brush()\nbrush( {");
    for (const char* pszFile : {"missing.ini", "broken.ini"})
    {
        SCOPED_TRACE(pszFile);
        const SRunResult result = runner.Play("brush_file( \"" + std::string(pszFile) +
                                              "\" ) save_brushes( \"empty.ini\" )\n");
        EXPECT_EQ(result.iExitCode, 0) << result.strErr;
        EXPECT_NE(ReadBytes(runner.Path("log.txt")).find(pszFile), std::string::npos);
        EXPECT_EQ(ReadBytes(runner.Path("empty.ini")).find("brush()\n{"), std::string::npos);
    }
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

// Two strokes at 65 vertices, one at 33, one at 65 again: each state is saved on its way, and the
// history comes back to the very same file at every step, whether the level has one itself or not.
TEST(ReplayResults, AChangeOfResolutionIsAStepThatComesBackBitForBit)
{
    constexpr int STATES = 7;
    const std::string steps[] = {"press( 100, 100 ) move( 100, 100, 0 ) release( 120, 90 )\n",
                                 "press( 333, 555 ) move( 333, 555, 0 ) release( 300, 500 )\n",
                                 "resolution( 33 )\n",
                                 "press( 400, 90 ) move( 400, 90, 0 ) release( 400, 90 )\n",
                                 "resolution( 65 )\n",
                                 "press( 222, 222 ) move( 222, 222, 0 ) release( 222, 222 )\n"};
    for (const char* pszStart : {"", "save( \"level.height\" ) open( \"level.height\" )\n"})
    {
        SCOPED_TRACE(pszStart);
        const CReplayRunner runner;
        std::string strBody = "level( 64, [ 640, 100, 640 ] )\n" + std::string(pszStart) +
                              "brush() { bitmap() { path( \"white.png\" ) } extent( 77 )\n"
                              "  function( \"RelativeHeightFunction\" )\n"
                              "  { attrib( \"m_Height\", \"17.3\" ) } }\n"
                              "mode( \"terraforming\" )\nsave( \"0.height\" )\n";
        int iState = 0;
        for (const std::string& strStep : steps)
        {
            strBody += strStep + "save( \"" + std::to_string(++iState) + ".height\" )\n";
        }
        for (iState = STATES - 2; iState >= 0; --iState)
        {
            strBody += "undo() save( \"undo" + std::to_string(iState) + ".height\" )\n";
        }
        strBody += "expect_undo( 0 )\n";
        for (iState = 1; iState < STATES; ++iState)
        {
            strBody += "redo() save( \"redo" + std::to_string(iState) + ".height\" )\n";
        }
        const SRunResult result = runner.Play(strBody + "expect_undo( 6 )\n");
        ASSERT_EQ(result.iExitCode, 0) << result.strErr;
        const auto read = [&](const std::string& strName)
        {
            return ReadBytes(runner.Path((strName + ".height").c_str()));
        };
        for (iState = 0; iState < STATES; ++iState)
        {
            SCOPED_TRACE(iState);
            const std::string strState = std::to_string(iState);
            EXPECT_TRUE(iState == STATES - 1 || read("undo" + strState) == read(strState));
            EXPECT_TRUE(iState == 0 || read("redo" + strState) == read(strState));
            EXPECT_TRUE(iState == 0 || read(strState) != read(std::to_string(iState - 1)));
        }
    }
}
