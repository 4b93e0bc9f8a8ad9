// What holds for every file of the project.

#include "tests/project/ProjectTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

namespace
{

const std::vector<std::string> CODE = {".h", ".cpp", ".inc"};

size_t CountCodeLines(const std::vector<std::string>& files)
{
    size_t nLines = 0;
    for (const std::string& strFile : files)
    {
        const std::string strText = ReadFile(strFile);
        const std::vector<std::string> stripped = SplitLines(StripCode(strText));
        const std::vector<std::string> whole = SplitLines(strText);
        for (size_t i = 0; i < whole.size(); ++i)
        {
            // A line that holds only a text counts, one that holds only a comment does not.
            const std::string strLine = Trim(whole[i]);
            const bool bComment = strLine.starts_with("//") || strLine.starts_with("/*");
            nLines += Trim(stripped[i]).empty() && (strLine.empty() || bComment) ? 0 : 1;
        }
    }
    return nLines;
}

// Expects that no line matches; raw: comments and texts count too.
void ExpectNowhere(const std::vector<std::string>& files, const std::regex& pattern, bool bRaw)
{
    for (const std::string& strFile : files)
    {
        const std::string strText = ReadFile(strFile);
        int nLine = 0;
        for (const std::string& strLine : SplitLines(bRaw ? strText : StripCode(strText)))
        {
            ++nLine;
            EXPECT_FALSE(std::regex_search(strLine, pattern))
                << strFile << ":" << nLine << ": " << strLine;
        }
    }
}

} // namespace

TEST(SourceFiles, AreAllLookedAt)
{
    std::vector<std::string> folders = GetProductFolders();
    folders.insert(folders.end(), {"tests", "benchmarks"});
    for (const std::string& strFolder : ListFolders())
    {
        const bool bListed = std::find(folders.begin(), folders.end(), strFolder) != folders.end();
        EXPECT_TRUE(bListed || ListFiles({strFolder}, CODE).empty())
            << strFolder << " holds code that no rule is applied to";
    }
    for (const std::string& strFolder : GetPluginFolders())
    {
        const std::string strTop = strFolder.substr(0, strFolder.find('/'));
        EXPECT_EQ(std::count(folders.begin(), folders.end(), strTop), 1) << strFolder;
    }
}

TEST(SourceFiles, StayShort)
{
    const auto expectAtMost = [](const std::vector<std::string>& files, size_t nMost)
    {
        EXPECT_FALSE(files.empty());
        for (const std::string& strFile : files)
        {
            EXPECT_LE(ReadLines(strFile).size(), nMost) << strFile;
        }
    };
    expectAtMost(ListFiles(GetProductFolders(), CODE), 400);
    expectAtMost(ListFiles({"tests", "benchmarks"}, CODE), 410);
    expectAtMost({"README.md"}, 100);
}

TEST(SourceFiles, LeaveNothingForLater)
{
    // In two parts, so that this file does not find itself.
    const std::regex later("TO"
                           "DO|FIX"
                           "ME|XX"
                           "X:");
    ExpectNowhere(ListFiles(GetProductFolders(), CODE), later, true);
    ExpectNowhere(ListFiles({"tests", "benchmarks", "cmake"}), later, true);
}

TEST(SourceFiles, NameNoFolderOfOneMachine)
{
    const std::regex machine("/(wo"
                             "rk|ho"
                             "me|ro"
                             "ot)/");
    ExpectNowhere(ListFiles(GetProductFolders(), {".h", ".cpp", ".txt", ".1", ".inc"}),
                  std::regex("/(wo"
                             "rk|ho"
                             "me|ro"
                             "ot|tm"
                             "p)/"),
                  true);
    ExpectNowhere(ListFiles({"tests", "benchmarks"}, {".h", ".cpp", ".txt", ".py"}), machine, true);
    ExpectNowhere(
        ListFiles({"cmake", "run", "test", "bench", "CMakeLists.txt", "CMakePresets.json"}),
        machine,
        true);
    ExpectNowhere(ListDocuments(), machine, true);
}

TEST(SourceFiles, OfThePluginThrowNothingAndCanBeUnloaded)
{
    const std::vector<std::string>& folders = GetPluginFolders();
    ExpectNowhere(ListFiles(folders, CODE), std::regex("\\b(throw|try|catch)\\b"), false);
    // Either would keep the library in memory after it is closed.
    ExpectNowhere(ListFiles(folders, CODE), std::regex("\\b(std::regex|thread_local)\\b"), false);
}

TEST(SourceFiles, OfTestsHaveShortFunctionsThatDoNotSleep)
{
    const std::vector<std::string> files = ListFiles({"tests"}, CODE);
    ExpectNowhere(
        files, std::regex("\\b(u?sleep|nanosleep|sleep_(for|until)|qWait|qSleep) *\\("), false);
    for (const std::string& strFile : files)
    {
        const std::vector<std::string> lines = SplitLines(StripCode(ReadFile(strFile)));
        for (size_t i = 1; i < lines.size(); ++i)
        {
            const std::string strIndent = lines[i].starts_with("    {") ? "    " : "";
            const bool bFunction =
                lines[i] == strIndent + "{" && lines[i - 1].find(')') != std::string::npos;
            size_t iEnd = i;
            while (bFunction && iEnd + 1 < lines.size() &&
                   !lines[iEnd + 1].starts_with(strIndent + "}"))
            {
                ++iEnd;
            }
            EXPECT_LE(iEnd - i, 60U) << strFile << ":" << i;
        }
    }
}

TEST(SourceFiles, AreTestedToTheAgreedShare)
{
    const size_t nTests = CountCodeLines(ListFiles({"tests"}, CODE));
    const size_t nOther = CountCodeLines(ListFiles(GetProductFolders(), CODE)) +
                          CountCodeLines(ListFiles({"benchmarks"}, CODE));
    const double fShare = static_cast<double>(nTests) / static_cast<double>(nTests + nOther);
    EXPECT_GE(fShare, 0.20) << nTests << " lines of tests, " << nOther << " of the rest";
    EXPECT_LE(fShare, 0.35) << nTests << " lines of tests, " << nOther << " of the rest";
}

TEST(SourceFiles, HeadersIncludeThemselvesOnceAndSourcesTheirOwnHeaderFirst)
{
    for (const std::string& strFile : ListFiles(GetProductFolders(), CODE))
    {
        const std::string strText = ReadFile(strFile);
        if (strFile.ends_with(".h"))
        {
            EXPECT_TRUE(strText.starts_with("#pragma once\n")) << strFile;
            continue;
        }
        const std::string strHeader = strFile.substr(0, strFile.rfind('.')) + ".h";
        const size_t iFirst = strText.find("#include");
        if (strFile.ends_with(".cpp") && ExistsInTree(strHeader) && iFirst != std::string::npos)
        {
            EXPECT_EQ(strText.find("#include \"" + strHeader + "\""), iFirst) << strFile;
        }
    }
}
