#include "tests/support/TestPaths.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <tuple>

namespace
{

// Whatever the input: an exit code of its own, a word or two on stderr, nothing left behind.
void ExpectCivilEnd(const SRunResult& result)
{
    EXPECT_TRUE(result.iExitCode >= 0 && result.iExitCode <= 2)
        << result.iExitCode << " " << result.strErr;
    EXPECT_EQ(result.CountErrorLines(), result.iExitCode == 0 ? 0U : 1U) << result.strErr;
}

} // namespace

TEST(ReplayFailures, AKeywordThatFailsEndsTheRunWithOneLineAndCodeOne)
{
    // clang-format off
    // pszLine: behind "script.tellur: "
    const std::tuple<const char*, const char*> cases[] = {
        {"level( 0, [ 1, 1, 1 ] )", "level( 0, [ 1, 1, 1 ] ): a level has 1 to 16384 cells per side (keyword 1)"},
        {"level( 16385, [ 1, 1, 1 ] )", "level( 16385, [ 1, 1, 1 ] ): a level has 1 to 16384 cells per side (keyword 1)"},
        {"level( 8, [ 80, 0, 80 ] )", "level( 8, [ 80, 0, 80 ] ): a component of the size is 0 or not finite (keyword 1)"},
        {"level( 8, [ 80, 1, 9999999999999999999999999999999999999999 ] )", "level( 8, [ 80, 1, inf ] ): a component of the size is 0 or not finite (keyword 1)"},
        {"level( 8, nothing )", "level( 8 ): wrong arguments (keyword 1)"},
        {"!level( s ) level( \"8\" )", "level( \"8\" ): wrong arguments (keyword 1)"},
        {"!undo( i ) undo( 1 )", "undo( 1 ): wrong arguments (keyword 1)"},
        {"!dance() dance()", "dance(): not a keyword of scripts (keyword 1)"},
        {"hardness( 1 )", "hardness( 1 ): not a keyword of scripts (keyword 1)"},
        {"undo() { redo() }", "undo(): takes no block (keyword 1)"},
        {"open( \"missing.height\" )", "open( \"missing.height\" ): there is no such file; names count from the folder of the script (keyword 1)"},
        {"open( \"a.level\" )", "open( \"a.level\" ): a script opens the \".height\" file that a level names (keyword 1)"},
        {"open( \"white.png\" )", "open( \"white.png\" ): cannot be opened, see the log (keyword 1)"},
        {"keys( \"alt+ctrl\" )", "keys( \"alt+ctrl\" ): must be \"\", \"ctrl\", \"alt\" or \"ctrl+alt\" (keyword 1)"},
        {"save( \"x.height\" )", "save( \"x.height\" ): there is no terrain (keyword 1)"},
        {"picture( \"x.png\" )", "picture( \"x.png\" ): there is no terrain (keyword 1)"},
        {"expect_height( 0, 0, 0, 1 )", "expect_height( 0, 0, 0, 1 ): there is no terrain (keyword 1)"},
        {"level( 8, [ 80, 9, 80 ] ) save( \"none/x.height\" )", "save( \"none/x.height\" ): cannot be written, see the log (keyword 2)"},
        {"level( 8, [ 80, 9, 80 ] ) picture( \"none/x.png\" )", "picture( \"none/x.png\" ): cannot be written, see the log (keyword 2)"},
        {"level( 8, [ 80, 9, 80 ] ) expect_height( 9, 0, 0, 1 )", "expect_height( 9, 0, 0, 1 ): the terrain has 9 x 9 vertices (keyword 2)"},
        {"level( 8, [ 80, 9, 80 ] ) expect_height( 0, -1, 0, 1 )", "expect_height( 0, -1, 0, 1 ): the terrain has 9 x 9 vertices (keyword 2)"},
        {"level( 8, [ 80, 9, 80 ] ) expect_height( 8, 8, 0.7, 0.25 )", "expect_height( 8, 8, 0.7, 0.25 ): the height is 0 (keyword 2)"},
        {"level( 8, [ 80, 9, 80 ] ) expect_height( 8, 8, 0, -1 )", "expect_height( 8, 8, 0, -1 ): the height is 0 (keyword 2)"},
        {"expect_undo( 0 ) expect_undo( 1 )", "expect_undo( 1 ): the undo stack has 0 records (keyword 2)"},
        {"expect_undo( -1 )", "expect_undo( -1 ): the undo stack has 0 records (keyword 1)"},
        {"press_at( [ 1, 9999999999999999999999999999999999999999, 1 ] )", "press_at( [ 1, inf, 1 ] ): the hit point is not finite (keyword 1)"},
        {"undo() mode( \"terraforming\" )", "mode( \"terraforming\" ): the mode \"terraforming\" was refused (keyword 2)"},
        {"undo() brush()", "brush(): the brush block cannot be used, the log says why (keyword 2)"},
        {"tool_brush()", "tool_brush(): the brush block cannot be used, the log says why (keyword 1)"},
        {"tool_brush() { function( \"BlurFunction\" ) bitmap() { path( \"gone.png\" ) } }", "tool_brush(): the brush of a tool needs an image and a function (keyword 1)"},
        {"export_stl( \"x.stl\" )", "export_stl( \"x.stl\" ): there is no terrain (keyword 1)"},
        {"level( 8, [ 80, 9, 80 ] ) export_stl( \"none/x.stl\" )", "export_stl( \"none/x.stl\" ): cannot be written, see the log (keyword 2)"},
        {"use_brush( \"Dune\" )", "use_brush( \"Dune\" ): there is no predefined brush \"Dune\" (keyword 1)"},
        {"save_brushes( \"none/b.ini\" )", "save_brushes( \"none/b.ini\" ): the brushes cannot be saved, the log says why (keyword 1)"},
        {"level( 8, [ 80, 9, 80 ] ) save( \"./script.tellur\" )", "save( \"./script.tellur\" ): would replace the script itself (keyword 2)"},
        {"save_brushes( \"SCRIPT.TELLUR\" )", "save_brushes( \"SCRIPT.TELLUR\" ): would replace the script itself (keyword 1)"},
        {"resolution( 65 )", "resolution( 65 ): there is no terrain (keyword 1)"},
        {"resolution( 64 )", "resolution( 64 ): must be one of 33, 65, 129, 257, 513, 1025, 2049, 4097, 8193, 16385 (keyword 1)"},
        {"resolution( 17 )", "resolution( 17 ): must be one of 33, 65, 129, 257, 513, 1025, 2049, 4097, 8193, 16385 (keyword 1)"},
        {"resolution( 32769 )", "resolution( 32769 ): must be one of 33, 65, 129, 257, 513, 1025, 2049, 4097, 8193, 16385 (keyword 1)"},
        {"level( 50, [ 80, 9, 80 ] ) save( \"a.height\" ) open( \"a.height\" ) resolution( 65 )", "resolution( 65 ): the resolution did not change, the log says why (keyword 4)"},
        {"save( \"two\nlines\" )", "save( \"two?lines\" ): there is no terrain (keyword 1)"},
    };
    // clang-format on
    const CReplayRunner runner;
    for (const auto& [pszBody, pszLine] : cases)
    {
        SCOPED_TRACE(pszBody);
        const SRunResult result = runner.Play(pszBody);
        EXPECT_EQ(result.iExitCode, 1);
        EXPECT_EQ(result.strErr, std::string("script.tellur: ") + pszLine + "\n");
        EXPECT_EQ(result.strOut, "");
    }
}

TEST(ReplayFailures, AFailedRunLeavesEveryFileAsItWas)
{
    const CReplayRunner runner;
    WriteBytes(runner.Path("old.height"), "precious");
    WriteBytes(runner.Path("old.json"), "precious too");
    WriteBytes(runner.Path("log.txt"), "");
    WriteBytes(runner.Path("script.tellur"), "");
    const std::vector<std::string> before = runner.GetNames();
    const std::string strStroke = CReplayRunner::GetStrokeStart("RelativeHeightFunction") +
                                  "press( 41, 41 )\nmove( 41, 41, 0 )\n";
    for (const char* pszEnd : {"expect_undo( 7 )", "open( \"white.png\" )", "oops", "}"})
    {
        SCOPED_TRACE(pszEnd);
        const SRunResult result =
            runner.Play(strStroke + pszEnd, {"--out", "old.height", "--stats", "old.json"});
        EXPECT_TRUE(result.iExitCode == 1 || result.iExitCode == 2);
        EXPECT_EQ(result.CountErrorLines(), 1U) << result.strErr;
        EXPECT_EQ(ReadBytes(runner.Path("old.height")), "precious");
        EXPECT_EQ(ReadBytes(runner.Path("old.json")), "precious too");
        EXPECT_EQ(runner.GetNames(), before);
    }
    // A result that cannot be written fails the run, and the terrain is written last.
    const std::string strLevel = "level( 8, [ 80, 9, 80 ] )";
    SRunResult result = runner.Play(strLevel, {"--out", "old.height", "--stats", "none/s.json"});
    EXPECT_EQ(result.iExitCode, 1);
    EXPECT_EQ(result.strErr, "none/s.json: --stats cannot be written, see the log\n");
    EXPECT_EQ(ReadBytes(runner.Path("old.height")), "precious");
    result = runner.Play(strLevel, {"--out", "none/o.height"});
    EXPECT_EQ(result.iExitCode, 1);
    EXPECT_EQ(result.strErr, "none/o.height: --out cannot be written, see the log\n");
    result = runner.Play("undo()", {"--out", "old.height"});
    EXPECT_EQ(result.iExitCode, 1);
    EXPECT_EQ(result.strErr, "script.tellur: --out: there is no terrain\n");
    result = runner.Run({"script.tellur", "--log", "/dev/full", "--out", "old.height"});
    EXPECT_EQ(result.iExitCode, 1);
    EXPECT_EQ(ReadBytes(runner.Path("old.height")), "precious");
    EXPECT_EQ(runner.GetNames(), before);
}

TEST(ReplayFailures, WhatIsRefusedOrOnlyAskedStartsNoPlugin)
{
    const CReplayRunner runner;
    WriteBytes(runner.Path("PredefinedBrushes__Copy.ini"), "!brush()\n"); // a start takes it back
    WriteBytes(runner.Path("s.tellur"), runner.Run({"--declarations"}).strOut + "save( \"a\" )");
    const std::vector<std::string> before = runner.GetNames();
    EXPECT_EQ(runner.Run({"s.tellur", "--log", "a"}).iExitCode, 2);
    EXPECT_EQ(runner.Run({"--declarations", "--plugin", "none.so"}).iExitCode, 2);
    EXPECT_EQ(runner.GetNames(), before);
}

TEST(ReplayFailures, UsageAndUnusableScriptsAreCodeTwo)
{
    const CReplayRunner runner;
    WriteBytes(runner.Path("good.tellur"), CReplayRunner::GetDeclarations());
    WriteBytes(runner.Path("bad.tellur"), CReplayRunner::GetDeclarations() + "undo(");
    WriteBytes(runner.Path("undeclared.tellur"), "undo()");
    const std::vector<std::string> cases[] = {
        {},
        {""},
        {"good.tellur", "good.tellur"},
        {"good.tellur", "--stats="},
        {"missing.tellur", "--log", "log.txt"},
        {".", "--log", "log.txt"},
        {"bad.tellur", "--log", "log.txt"},
        {"undeclared.tellur", "--log", "log.txt"},
        {"good.tellur", "--plugin", "white.png", "--log", "log.txt"},
        {"good.tellur", "--plugin", "missing.so", "--log", "log.txt"},
        {"good.tellur", "--log", "none/log.txt"},
    };
    for (const std::vector<std::string>& arguments : cases)
    {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const SRunResult result = runner.Run(arguments);
        EXPECT_EQ(result.iExitCode, 2);
        EXPECT_EQ(result.CountErrorLines(), 1U) << result.strErr;
        EXPECT_EQ(result.strOut, "");
    }
    const SRunResult bare = runner.Run({"undeclared.tellur"});
    EXPECT_EQ(bare.iExitCode, 2);
    EXPECT_NE(bare.strErr.find("unknown keyword undo"), std::string::npos) << bare.strErr;
    EXPECT_EQ(runner.Run({"good.tellur"}).iExitCode, 0);
}

TEST(ReplayFailures, AnotherPluginTakesMouseEventsAndItsOwnKeywordsAlone)
{
    const CReplayRunner runner;
    const std::string strPlugin = std::string(TELLUR_BIN_DIR) + "/minimal_plugin.so";
    // Its action 0 makes its mode current, which raises the vertex under the press by 10.
    const std::string strStroke =
        "level( 8, [ 80, 100, 80 ] ) action( 0, 1 )\n"
        "press( 41, 39 ) release( 41, 39 )\n"
        "expect_height( 4, 4, 10, 0 ) expect_undo( 1 )\n"
        "press_at( [ 20, 0, 70 ] ) release_at( [ 20, 0, 70 ] )\n"
        "expect_height( 2, 7, 10, 0 )\n"
        "press( 80.5, 1 ) release( 80.5, 1 ) press_miss() release_miss()\n"
        "move( 50, 10, 0 ) press( 60, 10 ) move( 70, 10, 0 ) release( 70, 10 ) move( 50, 10, 0 )\n"
        "expect_height( 6, 1, 10, 0 ) expect_height( 7, 1, 10, 0 ) expect_height( 5, 1, 0, 0 )\n"
        "expect_undo( 4 ) undo() undo() undo() undo() expect_height( 4, 4, 0, 0 )\n";
    const SRunResult stroke = runner.Play(strStroke, {"--plugin", strPlugin});
    EXPECT_EQ(stroke.iExitCode, 0) << stroke.strErr;

    // Files lie beside the script wherever the program runs.
    std::filesystem::create_directory(runner.Path("sub"));
    WriteBytes(runner.Path("sub/source.txt"), "");
    const auto play = [&](const std::string& strBody)
    {
        WriteBytes(runner.Path("sub/s.tellur"),
                   runner.Run({"--declarations", "--plugin", strPlugin}).strOut + "!mode( s )\n" +
                       strBody);
        return runner.Run({"sub/s.tellur", "--log", "log.txt", "--plugin", strPlugin}).strErr;
    };
    const std::string strBlock = "{ minimal_source( \"source.txt\" ) }\nundo()";
    EXPECT_EQ(play("minimal_note( \"note.txt\", 7 ) " + strBlock), "");
    EXPECT_EQ(ReadBytes(runner.Path("sub/note.txt")), "7 of " + runner.Path("sub/source.txt\n"));
    const std::pair<const char*, const char*> refused[] = {
        {"minimal_note( \"note.txt\", -1 )", "less than nothing"},
        {"minimal_note( \"s.tellur\", 1 )", "would replace the script itself"},
        {"mode( \"none\" )", "not a keyword of scripts"},
    };
    for (const auto& [pszCall, pszWhy] : refused)
    {
        EXPECT_EQ(play(std::string(pszCall) + strBlock),
                  std::string("sub/s.tellur: ") + pszCall + ": " + pszWhy + " (keyword 1)\n");
    }
}

TEST(ReplayFailures, BrokenScriptsEndInOneLine)
{
    const CReplayRunner runner;
    const std::string strWhole = CReplayRunner::GetDeclarations() +
                                 CReplayRunner::GetStrokeStart("SetHeightFunction") +
                                 "press( 41, 41 ) move( 41, 41, 0 ) undo() release( 41, 41 )\n";
    std::minstd_rand random(7);
    for (int iRound = 0; iRound < 60; ++iRound)
    {
        SCOPED_TRACE(iRound);
        std::string strScript = strWhole;
        if (iRound % 2 == 0)
        {
            strScript.resize(random() % strScript.size());
        }
        else
        {
            for (int i = 0; i < 3; ++i)
            {
                strScript[random() % strScript.size()] = static_cast<char>(random());
            }
        }
        WriteBytes(runner.Path("broken.tellur"), strScript);
        ExpectCivilEnd(runner.Run({"broken.tellur", "--log", "log.txt"}));
    }
    std::string strNoise(4096, '\0');
    std::generate(strNoise.begin(), strNoise.end(), [&] { return static_cast<char>(random()); });
    std::string strDeep = CReplayRunner::GetDeclarations();
    for (int i = 0; i < 100'000; ++i)
    {
        strDeep += "brush() {";
    }
    for (const std::string& strScript : {strNoise, std::string(100'000, '{'), strDeep})
    {
        WriteBytes(runner.Path("broken.tellur"), strScript);
        ExpectCivilEnd(runner.Run({"broken.tellur", "--log", "log.txt"}));
    }
}

TEST(ReplayFailures, HostileEventsChangeNothingButTheTerrain)
{
    const char* const bodies[] = {
        "press( 41, 41 ) level( 4, [ 8, 9, 8 ] ) move( 1, 1, 1 ) release( 1, 1 ) expect_undo( 0 )",
        "press( 41, 41 ) move( 41, 41, 0 ) level( 2, [ 8, 9, 8 ] ) undo()",
        "press( 41, 41 ) press( 21, 21 ) move( 21, 21, -3 ) release( 21, 21 ) expect_undo( 1 )",
        "press( 41, 41 ) mode( \"none\" ) move( 41, 41, 0 ) release( 41, 41 ) mode( \"none\" )",
        "press( 41, 41 ) brush() { extent( 9 ) function( \"SetHeightFunction\" ) } undo()",
        "release( 41, 41 ) move( 41, 41, 0 ) redo() undo() expect_undo( 0 )",
        "press( 41, 41 ) action( 0, 1 ) move( 41, 41, 0 ) action( -7, -1 ) release( 41, 41 )",
        "press( 41, 41 ) move( 41, 41, 2147483647 ) move( 41, 41, -2147483647 ) release( 41, 41 )",
        "press_at( [ -99999999999999999999, 5, 99999999999999999999 ] ) move( 41, 41, 0 )",
        "press_at( [ 99999999999999999999, 0, 41 ] ) move_at( [ 99999999999999999999, 0, 41 ], 1 )",
        "press( 99999999999999999999999999999999999999999, 1 ) release_miss() expect_undo( 0 )",
    };
    const CReplayRunner runner;
    for (const char* pszFunction : {"RelativeHeightFunction", "PointHeightFunction"})
    {
        for (const char* pszBody : bodies)
        {
            SCOPED_TRACE(std::string(pszFunction) + ": " + pszBody);
            const SRunResult result =
                runner.Play(CReplayRunner::GetStrokeStart(pszFunction) + pszBody);
            EXPECT_EQ(result.iExitCode, 0) << result.strErr;
        }
    }
}

TEST(ReplayFailures, BrokenHeightFilesFailTheScript)
{
    const CReplayRunner runner;
    ASSERT_EQ(runner.Play("level( 2, [ 8, 9, 8 ] ) save( \"good.height\" )").iExitCode, 0);
    const std::string strGood = ReadBytes(runner.Path("good.height"));
    ASSERT_EQ(strGood.size(), 32U + 9U * 4U + 4U);
    for (size_t i = 0; i < strGood.size(); i += 5)
    {
        SCOPED_TRACE(i);
        std::string strFlipped = strGood;
        strFlipped[i] = static_cast<char>(strFlipped[i] ^ 0x10);
        WriteBytes(runner.Path("flipped.height"), strFlipped);
        WriteBytes(runner.Path("short.height"), strGood.substr(0, i));
        for (const char* pszName : {"flipped", "short"})
        {
            const SRunResult result =
                runner.Play(std::string("open( \"") + pszName + ".height\" )");
            EXPECT_EQ(result.iExitCode, 1) << pszName;
            EXPECT_EQ(result.CountErrorLines(), 1U) << result.strErr;
            EXPECT_NE(ReadBytes(runner.Path("log.txt")).find(pszName), std::string::npos);
        }
    }
}
