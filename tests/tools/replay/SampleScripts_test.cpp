#include "engine/terrain/HeightFile.h"
#include "tests/support/TestPaths.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <set>

namespace
{

namespace files = std::filesystem;

// Hills and valleys where ./run puts the sample level, of its size and range of heights.
void WriteLevel(const std::string& strPath)
{
    constexpr uint32_t VERTICES = 513;
    std::vector<float> heights;
    for (uint32_t i = 0; i < VERTICES * VERTICES; ++i)
    {
        const auto fX = static_cast<float>(i % VERTICES);
        const auto fZ = static_cast<float>(i / VERTICES);
        heights.push_back(620.0F + 230.0F * std::sin(0.071F * fX + 1.9F * std::sin(0.013F * fZ)) +
                          140.0F * std::cos(0.113F * fZ - 0.04F * fX));
    }
    ASSERT_TRUE(WriteHeightFile(
        strPath.c_str(), heights.data(), VERTICES, VERTICES, {29748.0F, 2000.0F, 31556.0F}));
}

class SampleScripts : public testing::TestWithParam<const char*>
{
protected:
    SampleScripts()
    {
        const files::path folder = m_Runner.GetFolder();
        files::create_directory(folder / "out");
        files::create_directory(folder / "data");
        for (const char* pszName : {"data/samples", "data/brushes"})
        {
            files::copy(files::path(TELLUR_SOURCE_DIR) / pszName, folder / pszName);
        }
        if (*GetParam() == 'l')
        {
            WriteLevel(m_Runner.Path("out/jacksboro.height"));
        }
    }

    // Plays the sample and, after it, more calls.
    void Play(const std::string& strMore, const char* pszOut) const
    {
        const std::string strFolder = m_Runner.Path("data/samples/");
        WriteBytes(strFolder + "played.tellur",
                   ReadBytes(strFolder + GetParam() + ".tellur") + "\n" + strMore);
        const SRunResult result = m_Runner.Run({"data/samples/played.tellur",
                                                "--log",
                                                "log.txt",
                                                "--out",
                                                pszOut,
                                                "--stats",
                                                "stats.json"});
        ASSERT_EQ(result.iExitCode, 0) << result.strErr << ReadBytes(m_Runner.Path("log.txt"));
        EXPECT_EQ(ReadBytes(m_Runner.Path("log.txt")), "");
    }

    const CReplayRunner m_Runner;
};

TEST_P(SampleScripts, ChangeTheGroundWithEachStrokeOfSixFunctionsAndUndoGivesItBack)
{
    Play("", "played.height");
    const std::string strStats = ReadBytes(m_Runner.Path("stats.json"));
    const std::regex drag(
        R"re("function": "(\w+)", "points": \d+, "visited": \d+, "changed": (\d+))re");
    std::set<std::string> functions;
    std::string strUndo;
    for (std::sregex_iterator i(strStats.begin(), strStats.end(), drag), end; i != end; ++i)
    {
        functions.insert((*i)[1]);
        EXPECT_NE((*i)[2], "0") << "drag " << strUndo.size() / 8 << ", " << (*i)[1];
        strUndo += "undo() \n";
    }
    EXPECT_EQ(functions,
              (std::set<std::string>{"BlurFunction",
                                     "PointHeightFunction",
                                     "PosterizeFunction",
                                     "RampFunction",
                                     "RelativeHeightFunction",
                                     "SetHeightFunction"}));

    SHeightField played;
    ASSERT_TRUE(ReadHeightFile(m_Runner.Path("played.height").c_str(), played));
    const float* pHeights = played.pHeights.get();
    EXPECT_TRUE(std::all_of(
        pHeights, pHeights + played.GetCount(), [](float f) { return f >= 0.0F && f <= 2000.0F; }));

    Play(strUndo + "expect_undo( 0 )\n", "undone.height");
    // The first strokes need nothing that does not come along.
    const std::string strOpened =
        m_Runner.Path(*GetParam() == 'l' ? "out/jacksboro.height" : "data/samples/valley.height");
    EXPECT_EQ(ReadBytes(m_Runner.Path("undone.height")), ReadBytes(strOpened));
    EXPECT_NE(ReadBytes(m_Runner.Path("played.height")), ReadBytes(strOpened));
}

INSTANTIATE_TEST_SUITE_P(Files,
                         SampleScripts,
                         testing::Values("landscape", "first-strokes"),
                         [](const auto& sample)
                         { return *sample.param == 'l' ? "Landscape" : "FirstStrokes"; });

} // namespace
