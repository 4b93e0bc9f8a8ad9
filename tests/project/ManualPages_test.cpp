// Manual pages and --help say the same.

#include "tests/project/ProjectTree.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace
{

std::set<std::string> FindOptions(const std::string& strText)
{
    const std::vector<std::string> options = FindAll(strText, std::regex("--[a-z][a-z-]*"));
    return {options.begin(), options.end()};
}

} // namespace

TEST(ManualPages, FormatCleanlyAndNameEveryOption)
{
    for (const std::string& strProgram : ListPrograms())
    {
        SCOPED_TRACE(strProgram);
        const std::string strFolder = strProgram == "tellur-editor"
                                          ? "editor/app"
                                          : "tools/" + strProgram.substr(strProgram.find('-') + 1);
        const std::string strPage = strFolder + "/" + strProgram + ".1";
        ASSERT_TRUE(ExistsInTree(strPage)) << strPage;
        const SRun format = RunCommand("groff -man -ww -z -Tutf8 " + strPage);
        EXPECT_EQ(format.nExitCode, 0);
        EXPECT_EQ(format.strOutput, "");

        const SRun help = RunCommand(strProgram + " --help");
        ASSERT_EQ(help.nExitCode, 0);
        std::set<std::string> told = FindOptions(help.strOutput);
        EXPECT_FALSE(told.empty());
        const std::string strText = std::regex_replace(ReadFile(strPage), std::regex("\\\\-"), "-");
        const std::set<std::string> written = FindOptions(strText);
        EXPECT_EQ(told, written);
    }
}
