// Manual pages and --help say the same, and all programs read their command lines alike.

#include "tests/project/ProjectTree.h"
#include "tests/support/TestPaths.h"

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

TEST(Programs, ReadTheirCommandLinesAlike)
{
    std::vector<std::string> programs = ListPrograms();
    programs.emplace_back("framework-gallery");
    for (const std::string& strProgram : programs)
    {
        SCOPED_TRACE(strProgram);
        const auto expect = [&](const std::string& strLine, int iCode, const std::string& strSays)
        {
            const SRun run = RunCommand(strProgram + " " + strLine);
            EXPECT_EQ(run.nExitCode, iCode) << strLine;
            EXPECT_EQ(run.strOutput, strSays);
        };
        const auto expectFault = [&](const std::string& strLine, const std::string& strFault)
        {
            expect(strLine, 2, strProgram + ": " + strFault + " (try --help)\n");
        };
        const std::string strUsage = RunCommand(strProgram + " --help").strOutput;
        EXPECT_TRUE(strUsage.starts_with("usage: " + strProgram)) << strUsage;
        expect("-h", 0, strUsage);
        expect("one two three --help", 0, strUsage);
        expect("--version --nonsense", 0, strProgram + " " TELLUR_VERSION "\n");
        expectFault("--nonsense=1 --version", "unknown option --nonsense");
        expectFault("-x", "unknown option -x");
        expectFault("-hello", "unknown option -hello");
        expectFault("--vers", "unknown option --vers");
        expectFault("--help=1", "--help takes no value");
        // The first option that the usage names with a value.
        const std::string strOption = FindAll(strUsage, std::regex("--[a-z-]+ [A-Z]")).at(0);
        const std::string strName = strOption.substr(0, strOption.find(' '));
        expectFault(strName, strName + " needs a value");
        expectFault(strName + "=", strName + " needs a value");
    }
}

TEST(Programs, OnlyWidgetsAndTheEditorNeedQt)
{
    std::vector<std::string> binaries = ListPrograms();
    binaries.insert(binaries.end(),
                    {"libtellur.so",
                     "libtellur_engine.so",
                     "libtellur_framework.so",
                     "libtellur_widgets_qt.so"});
    for (const std::string& strBinary : binaries)
    {
        SCOPED_TRACE(strBinary);
        const std::string strPath = std::string(TELLUR_BIN_DIR) + "/" + strBinary;
        const SRun needed = RunCommand("readelf -d '" + strPath + "' | grep NEEDED");
        ASSERT_EQ(needed.nExitCode, 0) << needed.strOutput;
        const SRun symbols = RunCommand("nm -D --undefined-only '" + strPath + "'");
        ASSERT_EQ(symbols.nExitCode, 0) << symbols.strOutput;
        const bool bWidgets =
            strBinary == "libtellur_widgets_qt.so" || strBinary == "tellur-editor";
        EXPECT_EQ(symbols.strOutput.find("@Qt_") != std::string::npos, bWidgets);
        for (const std::string& strLine : SplitLines(needed.strOutput))
        {
            EXPECT_TRUE(bWidgets || strLine.find("libQt") == std::string::npos) << strLine;
        }
    }
}
