#include "tests/support/TestPaths.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

const std::filesystem::path SCRIPT_FOLDER =
    std::filesystem::path(TELLUR_SOURCE_DIR) / "tests" / "scripts";

std::vector<std::string> GetScripts()
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(SCRIPT_FOLDER))
    {
        if (entry.path().extension() == ".tellur")
        {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string GetCaseName(const testing::TestParamInfo<std::string>& script)
{
    std::string strName = script.param;
    std::replace(strName.begin(), strName.end(), '-', '_');
    return strName;
}

class CReplayScripts : public testing::TestWithParam<std::string>
{
};

} // namespace

// The files hold bodies; each states what it expects.
TEST_P(CReplayScripts, MeetsItsExpectationsAndGivesTheSameTerrainEachTime)
{
    const CReplayRunner runner;
    std::filesystem::copy(SCRIPT_FOLDER,
                          runner.GetFolder(),
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::overwrite_existing);
    const std::string strBody = ReadBytes(runner.Path((GetParam() + ".tellur").c_str()));
    for (const bool bPlain : {false, true}) // with direct access to the heights, and without
    {
        std::vector<std::string> arguments = {"--out", bPlain ? "plain.height" : "direct.height"};
        arguments.resize(bPlain ? 3 : 2, "--plain-terrain");
        const SRunResult result = runner.Play(strBody, arguments);
        ASSERT_EQ(result.iExitCode, 0) << result.strErr << ReadBytes(runner.Path("log.txt"));
        EXPECT_EQ(result.strErr, "");
    }
    EXPECT_EQ(ReadBytes(runner.Path("direct.height")), ReadBytes(runner.Path("plain.height")));
}

INSTANTIATE_TEST_SUITE_P(Files, CReplayScripts, testing::ValuesIn(GetScripts()), GetCaseName);
