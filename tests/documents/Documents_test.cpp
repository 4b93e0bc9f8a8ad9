// What the documents name exists: links, files, programs, options, names of code, messages,
// keywords.

#include "tests/project/Markdown.h"
#include "tests/project/ProjectTree.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>

namespace
{

bool ExistsInBuild(const std::string& strName)
{
    return std::filesystem::exists(std::string(TELLUR_BIN_DIR) + "/" + strName);
}

// Calls fn(text, where) for each code span.
template <class TFn> void ForEachSpan(const SMarkdown& document, TFn fn)
{
    for (const SDocLine& line : document.prose)
    {
        for (const std::string& strSpan : GetCodeSpans(line.strText))
        {
            fn(strSpan, document.Place(line.nLine));
        }
    }
}

// Calls fn(text, where) for each code span and each line of a fenced block.
template <class TFn> void ForEachCode(const SMarkdown& document, TFn fn)
{
    ForEachSpan(document, fn);
    for (const SDocBlock& block : document.blocks)
    {
        int nLine = block.nLine;
        for (const std::string& strLine : block.lines)
        {
            ++nLine;
            if (block.strLanguage != "arrows") // names folders that are still to come
            {
                fn(strLine, document.Place(nLine));
            }
        }
    }
}

const std::string& GetCode()
{
    static const std::string s_Code = []
    {
        std::vector<std::string> folders = GetProductFolders();
        folders.insert(folders.end(), {"tests", "benchmarks"});
        std::string strAll;
        for (const std::string& strFile : ListFiles(folders, {".h", ".cpp", ".txt", ".map"}))
        {
            strAll += strFile.starts_with("tests/project/") ? "" : ReadFile(strFile);
        }
        return strAll;
    }();
    return s_Code;
}

// Identifiers of all code, for look-ups without a search of the text.
const std::set<std::string>& GetCodeWords()
{
    static const std::set<std::string> s_Words = []
    {
        std::set<std::string> words;
        std::string strWord;
        for (const char c : GetCode())
        {
            if (std::isalnum(static_cast<unsigned char>(c)) || c == '_')
            {
                strWord += c;
                continue;
            }
            words.insert(strWord);
            strWord.clear();
        }
        return words;
    }();
    return s_Words;
}

} // namespace

TEST(Documents, LinksLeadSomewhere)
{
    for (const std::string& strDocument : ListDocuments())
    {
        const SMarkdown document(strDocument);
        for (const SDocLine& line : document.prose)
        {
            for (const std::string& strLink : GetLinks(line.strText))
            {
                SCOPED_TRACE(document.Place(line.nLine) + ": " + strLink);
                EXPECT_EQ(strLink.find("://"), std::string::npos) << "a link out of the project";
                const size_t iMark = strLink.find('#');
                const auto folder = std::filesystem::path(strDocument).parent_path();
                const std::string strFile = strLink.substr(0, iMark);
                const std::string strTarget =
                    strFile.empty() ? strDocument
                                    : (folder / strFile).lexically_normal().generic_string();
                ASSERT_TRUE(ExistsInTree(strTarget));
                if (iMark != std::string::npos)
                {
                    const std::vector<std::string> anchors = GetAnchors(SMarkdown(strTarget));
                    EXPECT_NE(std::find(anchors.begin(), anchors.end(), strLink.substr(iMark + 1)),
                              anchors.end())
                        << "no such heading";
                }
            }
        }
    }
}

TEST(Documents, PathsExist)
{
    static const std::regex s_Path("[A-Za-z0-9_.-]+(/[A-Za-z0-9_.-]+)+/?");
    static const std::regex s_Built("build/[a-z]+/bin/([A-Za-z0-9_.-]+)");
    const std::set<std::string> made = {"build", "out"}; // by a build, or by ./run
    size_t nChecked = 0;
    for (const std::string& strDocument : ListDocuments())
    {
        ForEachCode(SMarkdown(strDocument),
                    [&](const std::string& strCode, const std::string& strPlace)
                    {
                        for (std::string strWord : SplitWords(strCode))
                        {
                            const bool bHere = strWord.starts_with("./");
                            strWord = bHere ? strWord.substr(2) : strWord;
                            std::smatch match;
                            if (std::regex_match(strWord, match, s_Built))
                            {
                                EXPECT_TRUE(ExistsInBuild(match[1]) ||
                                            GetCodeWords().contains(match[1])) // a test program
                                    << strPlace << ": " << strWord;
                                ++nChecked;
                                continue;
                            }
                            const bool bPath = std::regex_match(strWord, s_Path);
                            const std::string strFirst = strWord.substr(0, strWord.find('/'));
                            if (bHere ||
                                (bPath && ExistsInTree(strFirst) && !made.contains(strFirst)))
                            {
                                EXPECT_TRUE(ExistsInTree(strWord)) << strPlace << ": " << strWord;
                                ++nChecked;
                            }
                        }
                    });
    }
    EXPECT_GT(nChecked, 50U);
}

TEST(Documents, ProgramsAndOptionsExist)
{
    static const std::regex s_Program("\\b(tellur-[a-z]+|libtellur[a-z_]*\\.so)\\b");
    static const std::regex s_Option("--[a-z][a-z_-]+");
    // Of programs that are not ours, beside those that our scripts use.
    std::string strKnown = "--gtest_filter --args ";
    for (const std::string& strScript : ListFiles({"run", "test", "bench", "cmake"}))
    {
        strKnown += ReadFile(strScript);
    }
    std::map<std::string, std::string> help;
    strKnown += RunCommand("framework-gallery --help").strOutput; // has no manual page
    for (const std::string& strProgram : ListPrograms())
    {
        const SRun run = RunCommand(strProgram + " --help");
        EXPECT_EQ(run.nExitCode, 0) << strProgram;
        help[strProgram] = run.strOutput;
        strKnown += run.strOutput;
    }
    for (const std::string& strDocument : ListDocuments())
    {
        ForEachCode(SMarkdown(strDocument),
                    [&](const std::string& strCode, const std::string& strPlace)
                    {
                        SCOPED_TRACE(strPlace + ": " + strCode);
                        const std::vector<std::string> programs = FindAll(strCode, s_Program);
                        for (const std::string& strProgram : programs)
                        {
                            // A hidden folder such as the autosave's is no program.
                            const bool bHidden =
                                strCode.find("." + strProgram) != std::string::npos;
                            EXPECT_TRUE(bHidden || ExistsInBuild(strProgram)) << strProgram;
                        }
                        const bool bOurs = !programs.empty() && help.contains(programs.front());
                        const std::string& strText = bOurs ? help[programs.front()] : strKnown;
                        for (const std::string& strOption : FindAll(strCode, s_Option))
                        {
                            const std::regex whole("(^|[^a-z-])" + strOption + "($|[^a-z_-])");
                            EXPECT_TRUE(std::regex_search(strText, whole)) << strOption;
                        }
                    });
    }
}

TEST(Documents, NamesOfCodeExist)
{
    static const std::regex s_Name("([A-Z][A-Za-z0-9]*[a-z][A-Za-z0-9]*|[A-Z]+[a-z]*_[A-Za-z_]+|"
                                   "(m|mode)_[A-Za-z]+)(::[A-Za-z0-9_]+)*(\\([a-z0-9 ]*\\))?");
    static const std::regex s_Word("[A-Za-z_][A-Za-z0-9_]*");
    size_t nChecked = 0;
    for (const std::string& strDocument : ListDocuments())
    {
        ForEachSpan(SMarkdown(strDocument),
                    [&](const std::string& strSpan, const std::string& strPlace)
                    {
                        // Short ones are words that names begin with.
                        if (strSpan.size() < 4 || !std::regex_match(strSpan, s_Name))
                        {
                            return;
                        }
                        ++nChecked;
                        for (const std::string& strWord :
                             FindAll(strSpan.substr(0, strSpan.find('(')), s_Word))
                        {
                            EXPECT_TRUE(GetCodeWords().contains(strWord))
                                << strPlace << ": " << strSpan;
                        }
                    });
    }
    EXPECT_GT(nChecked, 60U);
}

TEST(Documents, MessagesExist)
{
    static const std::regex s_Message("\\[[A-Za-z:]+\\] [^%]*");
    size_t nChecked = 0;
    for (const std::string& strDocument : ListDocuments())
    {
        ForEachSpan(SMarkdown(strDocument),
                    [&](const std::string& strSpan, const std::string& strPlace)
                    {
                        if (!std::regex_match(strSpan, s_Message) ||
                            strSpan.starts_with("[Class::Method]"))
                        {
                            return;
                        }
                        ++nChecked;
                        const bool bParser = strSpan.starts_with("[CTCParse] ");
                        std::string strText = bParser ? strSpan.substr(11) : strSpan;
                        strText = strText.substr(0, strText.find(" \u2026")); // an ellipsis
                        EXPECT_NE(GetCode().find(strText), std::string::npos)
                            << strPlace << ": " << strSpan;
                    });
    }
    EXPECT_GE(nChecked, 3U);
}

TEST(Documents, EveryLibraryThatIsNeededIsListed)
{
    static const std::regex s_Needed("\\[lib[^\\]]*\\.so");
    static const std::regex s_NotListed("tellur|asan|ubsan"); // ours, and those of one build
    const std::string strListed = ReadFile("THIRD-PARTY.md");
    const SRun run =
        RunCommand("readelf -d libtellur*.so tellur-* framework-gallery", TELLUR_BIN_DIR);
    const std::vector<std::string> needed = FindAll(run.strOutput, s_Needed);
    EXPECT_GT(needed.size(), 20U) << run.strOutput;
    for (const std::string& strFound : needed)
    {
        const std::string strFile = strFound.substr(1);
        const bool bListed = strListed.find("`" + strFile + "`") != std::string::npos;
        EXPECT_TRUE(bListed || std::regex_search(strFile, s_NotListed)) << strFile;
    }
}
