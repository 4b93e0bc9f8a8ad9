#include "tests/project/ProjectTree.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace
{

namespace files = std::filesystem;

// Scripts in a folder of their own, where programs only say how they were called.
class Scripts : public testing::Test
{
protected:
    void AddProgram(const char* pszName, const std::string& strText)
    {
        WriteBytes(m_Folder.Path(pszName), "#!/bin/sh\n" + strText + "\n");
        files::permissions(m_Folder.Path(pszName), files::perms::owner_all);
    }

    void AddScript(const char* pszName)
    {
        AddProgram(pszName, ""); // makes its folder
        files::copy_file(std::string(TELLUR_SOURCE_DIR "/") + pszName,
                         m_Folder.Path(pszName),
                         files::copy_options::overwrite_existing);
    }

    SRun Run(const std::string& strCommand)
    {
        return RunCommand("env -u DISPLAY -u WAYLAND_DISPLAY PATH=\"$PWD/path:$PATH\" " +
                              strCommand,
                          m_Folder.GetFolder());
    }

    CTempFolder m_Folder;
};

class RunScript : public Scripts
{
protected:
    RunScript()
    {
        AddScript("run");
        AddProgram("cmake/install-packages", "[ $1 = run ]");
        AddProgram("cmake/build", "[ $1 = release ]");
        AddProgram("cmake/fetch-sample", "echo grid >$1");
        AddProgram("build/release/bin/tellur-editor", "echo \"editor $*\"");
        AddProgram("build/release/bin/tellur-replay", "echo \"replay $*\"");
        AddProgram("build/release/bin/tellur-height", "echo \"height $*\"");
        files::create_directory(m_Folder.Path("out"));
    }

    SRun Run(const std::string& strEnvironment) { return Scripts::Run(strEnvironment + " ./run"); }
};

TEST_F(RunScript, OpensTheEditorWhereADisplayIsAndPlaysTheSampleElsewhere)
{
    const std::string strEditor = "editor out/jacksboro.height";
    const std::string strReplay = "replay data/samples/landscape.tellur";
    for (const char* pszDisplay : {"DISPLAY=:7", "WAYLAND_DISPLAY=wayland-0"})
    {
        const SRun run = Run(pszDisplay);
        EXPECT_EQ(run.nExitCode, 0) << run.strOutput;
        EXPECT_NE(run.strOutput.find(strEditor), std::string::npos) << run.strOutput;
        EXPECT_EQ(run.strOutput.find(strReplay), std::string::npos) << run.strOutput;
    }
    const SRun run = Run("");
    EXPECT_EQ(run.nExitCode, 0) << run.strOutput;
    EXPECT_EQ(run.strOutput.find(strEditor), std::string::npos) << run.strOutput;
    EXPECT_NE(run.strOutput.find(strReplay), std::string::npos) << run.strOutput;
    EXPECT_NE(run.strOutput.find("side by side: out/landscape.jpg"), std::string::npos);
}

TEST_F(RunScript, MakesTheLevelOnceAndStopsWhereAStepFails)
{
    const std::string strConvert = "height convert out/elevation.npy out/jacksboro.height";
    EXPECT_NE(Run("DISPLAY=:7").strOutput.find(strConvert), std::string::npos);
    WriteBytes(m_Folder.Path("out/jacksboro.height"), "a level");
    EXPECT_EQ(Run("DISPLAY=:7").strOutput.find(strConvert), std::string::npos);

    AddProgram("cmake/build", "echo broken; exit 3");
    const SRun run = Run("DISPLAY=:7");
    EXPECT_EQ(run.nExitCode, 3);
    EXPECT_EQ(run.strOutput.find("editor"), std::string::npos) << run.strOutput;
}

// Three moves of eight and the release, behind the level as it was.
TEST_F(Scripts, FilmTakesPicturesAlongEachDrag)
{
    AddScript("cmake/film");
    AddProgram("build/release/bin/tellur-replay",
               "cp $1 played; sed -n 's/^save( \"\\(.*\\)\" )/\\1/p' $1 | xargs touch");
    AddProgram("build/release/bin/tellur-height", "echo \"$*\" >>drawn; touch $3");
    AddProgram("path/convert", "for name; do :; done; echo film >$name");
    std::string strMoves;
    for (char c = '1'; c <= '8'; ++c)
    {
        strMoves += std::string("move( ") + c + ", 0, 0 )\n";
    }
    WriteBytes(m_Folder.Path("s/a.tellur"),
               "open( \"../out/a.height\" )\npress( 1, 0 )\n" + strMoves +
                   "release( 8, 0 )\npress( 1, 0 )\nmove( 1, 0, 0 )\nrelease( 1, 0 )\n");
    const SRun run = Run("cmake/film s/a.tellur out/a.gif --pixels 99");
    EXPECT_EQ(run.nExitCode, 0) << run.strOutput;
    EXPECT_EQ(ReadBytes(m_Folder.Path("out/a.gif")), "film\n");
    const std::string strDrawn = ReadBytes(m_Folder.Path("drawn"));
    EXPECT_EQ(std::count(strDrawn.begin(), strDrawn.end(), '\n'), 6) << strDrawn;
    EXPECT_NE(strDrawn.find(".png --pixels 99\n"), std::string::npos) << strDrawn;
    const std::string strPlayed = ReadBytes(m_Folder.Path("played"));
    EXPECT_NE(strPlayed.find("/s/../out/a.height\" )\nsave("), std::string::npos) << strPlayed;
    EXPECT_NE(strPlayed.find("move( 6, 0, 0 )\nsave("), std::string::npos) << strPlayed;
}

TEST_F(Scripts, BuildConfiguresWheneverTheFolderIsNotThePresets)
{
    AddScript("cmake/build");
    WriteBytes(m_Folder.Path("CMakePresets.json"), "{}");
    AddProgram("path/cmake",
               "[ $1 = --preset ] || exit 0\n"
               "folder=build/${2%bench}\n"
               "[ $2 = bench ] && folder=build/release\n"
               "mkdir -p $folder && echo $2 >$folder/preset.txt && echo $2 >>log");
    const SRun run = Run("sh -c 'for p in release bench bench release dev dev; do "
                         "cmake/build $p || exit; done; touch -d tomorrow CMakePresets.json; "
                         "cmake/build dev; cat log'");
    EXPECT_EQ(run.nExitCode, 0) << run.strOutput;
    EXPECT_EQ(run.strOutput, "release\nbench\nrelease\ndev\ndev\n");
}

TEST_F(Scripts, BenchTellsWhatEveryProgramMeasuredAndFailsWithTheFirstThatFails)
{
    AddScript("bench");
    AddScript("cmake/bench-report");
    AddProgram("cmake/install-packages", "[ $1 = bench ]");
    AddProgram("cmake/build", "[ $1 = bench ]");
    AddProgram("path/xvfb-run", "shift; DISPLAY=:1 \"$@\"");
    // Each measures two rows, which say how it was called.
    const std::string strMeasure =
        "exec >${1#--benchmark_out=}; shift 2; echo '{\"benchmarks\": ['; for n in 513 2048; do "
        "echo $comma '{\"name\": \"Press/terrain:'$n'/iterations:3/manual_time\", "
        "\"tool_ms\": 0.0312, \"yardstick_ms\": 12.5, \"ratio\": 0.0025, "
        "\"label\": \"'${TELLUR_BENCH_QUICK:-0} $DISPLAY$GALLIUM_NOOP $*'\"}'; comma=,; done; "
        "echo ']}'";
    AddProgram("build/release/bin/a_bench", strMeasure);
    AddProgram("build/release/bin/view_bench", strMeasure);
    AddProgram("build/release/bin/z_bench", "echo Failed to match any benchmarks");
    const SRun whole = Run("./bench --x=y");
    EXPECT_EQ(whole.nExitCode, 0);
    const std::string strEnd =
        "Press, terrain 2,048  31.2 µs    12.5 ms   0.00         0 --x=y\n\n"
        "view                     tool  yardstick  ratio  worst  more\n"
        "Press, terrain 513    31.2 µs    12.5 ms   0.00         0 :1 --x=y\n"
        "Press, terrain 2,048  31.2 µs    12.5 ms   0.00         0 :1 --x=y\n\n"
        "view-processor           tool  yardstick  ratio  worst  more\n"
        "Press, terrain 513    31.2 µs    12.5 ms   0.00         0 :11 --x=y\n"
        "Press, terrain 2,048  31.2 µs    12.5 ms   0.00         0 :11 --x=y\n\n";
    EXPECT_TRUE(whole.strOutput.ends_with(strEnd)) << whole.strOutput;

    WriteBytes(m_Folder.Path("docs/performance.md"),
               "<!-- figures: a -->\nold\n<!-- end -->\n<!-- figures: machine -->\n<!-- end -->\n"
               "<!-- figures: view -->\n<!-- end -->\n"
               "<!-- figures: view-processor -->\n<!-- end -->\n"
               "<!-- figures: view-card -->\nkept\n<!-- end -->\n");
    EXPECT_EQ(Run("cmake/bench-report --document").nExitCode, 0);
    AddProgram("build/release/bin/view_bench", "echo Failed to match any benchmarks");
    EXPECT_EQ(Run("./bench && ! cmake/bench-report --document").nExitCode, 0) << "a part";
    AddProgram("build/release/bin/view_bench", strMeasure);
    const std::string strPage = ReadBytes(m_Folder.Path("docs/performance.md"));
    const std::string strRow =
        "\n| Press, terrain 2,048 | 31.2 µs | 12.5 ms | 0.00 |  | 0 --x=y |\n<!-- end -->\n";
    EXPECT_NE(strPage.find(strRow), std::string::npos) << strPage;
    EXPECT_EQ(strPage.find("old"), std::string::npos);
    EXPECT_NE(strPage.find("kept"), std::string::npos) << "was measured on another machine";
    const std::string strPicture = "docs/pictures/performance-terrain.svg";
    EXPECT_NE(ReadBytes(m_Folder.Path(strPicture.c_str())).find(">2,048</text>"),
              std::string::npos);

    AddProgram("build/release/bin/b_bench", "echo broken; kill -SEGV $$");
    const SRun quick = Run("./bench --quick");
    EXPECT_NE(quick.nExitCode, 0);
    EXPECT_NE(quick.strOutput.find(" 1 --bench"), std::string::npos) << quick.strOutput;
    EXPECT_NE(quick.strOutput.find("broken"), std::string::npos) << quick.strOutput;
    EXPECT_EQ(quick.strOutput.find("view "), std::string::npos) << quick.strOutput;
}

TEST_F(Scripts, BenchReportPutsTheRowsOfACardIntoThePage)
{
    AddScript("cmake/bench-report");
    WriteBytes(m_Folder.Path("docs/performance.md"),
               "<!-- figures: view -->\nkept\n<!-- end -->\n"
               "<!-- figures: view-card -->\nold\n<!-- end -->\n");
    WriteBytes(m_Folder.Path("card.json"),
               R"({"context": {"num_cpus": 4, "mhz_per_cpu": 2100, "date": "2026-11-27T10"},)"
               R"("benchmarks": [{"name": "Frame/terrain:513", "real_time": 3, "time_unit": "ms",)"
               R"("tool_ms": 2.5}]})");
    EXPECT_EQ(Run("cmake/bench-report --card card.json").nExitCode, 0);
    const std::string strCard = ReadBytes(m_Folder.Path("docs/performance.md"));
    EXPECT_NE(strCard.find("4 processors of 2,100 MHz, 2026-11-27\n"), std::string::npos);
    EXPECT_NE(strCard.find("\n| Frame, terrain 513 | 2.50 ms |"), std::string::npos) << strCard;
    EXPECT_NE(strCard.find("kept"), std::string::npos);
    EXPECT_EQ(strCard.find("old"), std::string::npos);
}

} // namespace
