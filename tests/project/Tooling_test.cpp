// Settings of the tools that keep the code in order: names that nothing knows would pass unnoticed.

#include "tests/project/ProjectTree.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

namespace
{

constexpr char NAMING[] = "readability-identifier-naming.";

// The entries of "Checks:" as written, without their commas.
std::vector<std::string> ReadChecks()
{
    std::vector<std::string> checks;
    bool bInside = false;
    bool bCommaDue = false;
    for (const std::string& strLine : ReadLines(".clang-tidy"))
    {
        if (bInside && !strLine.starts_with(" "))
        {
            break;
        }
        if (bInside)
        {
            EXPECT_FALSE(bCommaDue) << "a comma is missing before " << strLine;
            std::string strCheck = Trim(strLine);
            bCommaDue = !strCheck.ends_with(",");
            checks.push_back(bCommaDue ? strCheck : strCheck.substr(0, strCheck.size() - 1));
        }
        bInside = bInside || strLine.starts_with("Checks:");
    }
    return checks;
}

std::vector<std::string> ReadOptionKeys()
{
    static const std::regex s_Key("\\{ key: ([A-Za-z0-9_.-]+),");
    std::vector<std::string> keys;
    const std::string strConfig = ReadFile(".clang-tidy");
    for (std::sregex_iterator it(strConfig.begin(), strConfig.end(), s_Key), end; it != end; ++it)
    {
        keys.push_back((*it)[1]);
    }
    return keys;
}

// Splits "AbstractClassPrefix" into the kind of name and what the option says of it.
bool SplitNamingOption(const std::string& strOption, std::string& strKind)
{
    for (const std::string strPart : {"Case", "Prefix", "Suffix", "IgnoredRegexp"})
    {
        if (strOption.ends_with(strPart))
        {
            strKind = strOption.substr(0, strOption.size() - strPart.size());
            return true;
        }
    }
    return false;
}

std::set<std::string> FindOptions(const std::string& strText)
{
    const std::vector<std::string> options = FindAll(strText, std::regex("--[a-z][a-z-]*"));
    return {options.begin(), options.end()};
}

} // namespace

TEST(Lint, KnowsEveryCheckThatItIsTold)
{
    const CTempFolder folder;
    const SRun run = RunCommand("clang-tidy --list-checks -checks='*'", folder.GetFolder());
    ASSERT_EQ(run.nExitCode, 0) << run.strOutput;
    const std::vector<std::string> known = SplitWords(run.strOutput);
    const std::vector<std::string> checks = ReadChecks();
    ASSERT_GT(checks.size(), 10U);
    for (const std::string& strCheck : checks)
    {
        const std::string strName = strCheck.substr(strCheck.starts_with("-") ? 1 : 0);
        const size_t iStar = strName.find('*');
        EXPECT_TRUE(std::any_of(known.begin(),
                                known.end(),
                                [&](const std::string& strKnown)
                                {
                                    return iStar == std::string::npos
                                               ? strKnown == strName
                                               : strKnown.starts_with(strName.substr(0, iStar));
                                }))
            << strCheck;
    }
}

TEST(Lint, KnowsEveryOptionThatItIsTold)
{
    const CTempFolder folder;
    const SRun defaults = RunCommand("clang-tidy --dump-config -checks='*'", folder.GetFolder());
    ASSERT_EQ(defaults.nExitCode, 0) << defaults.strOutput;
    std::set<std::string> kinds;
    for (const std::string& strKey : ReadOptionKeys())
    {
        if (!strKey.starts_with(NAMING))
        {
            EXPECT_NE(defaults.strOutput.find(" " + strKey + "\n"), std::string::npos) << strKey;
            continue;
        }
        std::string strKind;
        EXPECT_TRUE(SplitNamingOption(strKey.substr(sizeof(NAMING) - 1), strKind)) << strKey;
        kinds.insert(strKind);
    }
    // Naming options have no defaults to look at. A kind is known when a bad value of its case is
    // reported.
    ASSERT_GT(kinds.size(), 4U);
    std::string strOptions;
    for (const std::string& strKind : kinds)
    {
        strOptions += std::string("{key: ") + NAMING + strKind + "Case, value: nonsense},";
    }
    WriteBytes(folder.Path("x.cpp"), "int a;\n");
    const SRun run = RunCommand("clang-tidy --config='{Checks: \"readability-identifier-naming\", "
                                "CheckOptions: [" +
                                    strOptions + "]}' x.cpp --",
                                folder.GetFolder());
    for (const std::string& strKind : kinds)
    {
        EXPECT_NE(run.strOutput.find(NAMING + strKind + "Case'"), std::string::npos) << strKind;
    }
}

TEST(ManualPages, FormatCleanlyAndNameEveryOption)
{
    for (const std::string& strProgram : ListPrograms())
    {
        SCOPED_TRACE(strProgram);
        const std::string strPage =
            "tools/" + strProgram.substr(strProgram.find('-') + 1) + "/" + strProgram + ".1";
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

TEST(Presets, NamedInScriptsAndDocumentsExist)
{
    const SRun list = RunCommand("cmake --list-presets=all .");
    ASSERT_EQ(list.nExitCode, 0) << list.strOutput;
    static const std::regex s_Quoted("\"([a-z]+)\"");
    std::set<std::string> presets;
    for (std::sregex_iterator it(list.strOutput.begin(), list.strOutput.end(), s_Quoted), end;
         it != end;
         ++it)
    {
        presets.insert((*it)[1]);
    }
    std::vector<std::string> files = ListFiles({"run", "test", "bench", "cmake", ".ci"});
    const std::vector<std::string> documents = ListDocuments();
    files.insert(files.end(), documents.begin(), documents.end());
    static const std::regex s_Line("(cmake/build|--preset|for preset in) ([a-z ]+)");
    size_t nUses = 0;
    for (const std::string& strFile : files)
    {
        for (const std::string& strLine : ReadLines(strFile))
        {
            std::smatch match;
            if (!std::regex_search(strLine, match, s_Line))
            {
                continue;
            }
            const std::vector<std::string> words = SplitWords(match[2]);
            const size_t nNames = match[1] == "for preset in" ? words.size() : 1;
            for (size_t i = 0; i < nNames && i < words.size(); ++i)
            {
                EXPECT_TRUE(presets.contains(words[i])) << strFile << ": " << strLine;
                ++nUses;
            }
        }
    }
    EXPECT_GT(nUses, 10U);
}
