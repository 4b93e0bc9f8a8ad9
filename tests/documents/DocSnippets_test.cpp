// The examples of the documents, run as they stand.

#include "engine/elevation/ElevationFormats.h"
#include "engine/imaging/CodecTable.h"
#include "tests/project/Markdown.h"
#include "tests/project/ProjectTree.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>

namespace
{

std::string JoinLines(const std::vector<std::string>& lines)
{
    std::string strText;
    for (const std::string& strLine : lines)
    {
        strText += strLine + "\n";
    }
    return strText;
}

// Whether the line is the pattern, in which "..." stands for anything.
bool Matches(const std::string& strLine, const std::string& strPattern)
{
    const size_t iGap = strPattern.find("...");
    if (iGap == std::string::npos)
    {
        return strLine == strPattern;
    }
    if (!strLine.starts_with(strPattern.substr(0, iGap)))
    {
        return false;
    }
    const std::string strRest = strPattern.substr(iGap + 3);
    for (size_t i = iGap; i <= strLine.size(); ++i)
    {
        if (Matches(strLine.substr(i), strRest))
        {
            return true;
        }
    }
    return false;
}

// Runs the "$" lines of a block one by one and compares what each prints.
void PlaySession(const SMarkdown& document, const SDocBlock& block, const std::string& strFolder)
{
    for (size_t i = 0; i < block.lines.size();)
    {
        const std::string& strCommand = block.lines[i];
        SCOPED_TRACE(document.Place(block.nLine + 1 + static_cast<int>(i)) + ": " + strCommand);
        ASSERT_TRUE(strCommand.starts_with("$ "));
        const SRun run = RunCommand(strCommand.substr(2), strFolder);
        const std::vector<std::string> printed = SplitLines(run.strOutput);
        size_t nLines = 0;
        for (++i; i < block.lines.size() && !block.lines[i].starts_with("$ "); ++i, ++nLines)
        {
            ASSERT_LT(nLines, printed.size()) << "missing: " << block.lines[i];
            EXPECT_TRUE(Matches(printed[nLines], block.lines[i]))
                << "shown:   " << block.lines[i] << "\nprinted: " << printed[nLines];
        }
        EXPECT_EQ(nLines, printed.size()) << run.strOutput;
    }
}

// The document's blocks in order in one folder: files are written, sessions played. The project's
// data is there as it is in the root of the tree.
size_t PlayDocument(const std::string& strDocument, const CTempFolder& folder)
{
    std::filesystem::create_directory_symlink(TELLUR_SOURCE_DIR "/data", folder.Path("data"));
    const SMarkdown document(strDocument);
    size_t nSessions = 0;
    for (const SDocBlock& block : document.blocks)
    {
        if (block.strKind == "file")
        {
            WriteBytes(folder.Path(block.strArgument.c_str()), JoinLines(block.lines));
        }
        else if (block.strKind == "session")
        {
            PlaySession(document, block, folder.GetFolder());
            ++nSessions;
        }
    }
    return nSessions;
}

// Code as it is compared: without the indentation that the shown lines share.
std::vector<std::string> Unindent(std::vector<std::string> lines)
{
    size_t nShared = std::string::npos;
    for (const std::string& strLine : lines)
    {
        nShared = std::min(nShared, strLine.find_first_not_of(' '));
    }
    for (std::string& strLine : lines)
    {
        strLine.erase(0, std::min(nShared, strLine.size()));
    }
    return lines;
}

// Of other files in the same syntax.
const std::set<std::string> OTHER_KEYWORDS = {"panel_open( i )",
                                              "key( s, i, i )",
                                              "recent( s )",
                                              "level( s )",
                                              "view( s, v3, f, f, f )",
                                              "framed( s )",
                                              "bookmark( i, s, v3, f, f, f )",
                                              "fitted( s, s )",
                                              "lost_mask( s, s )",
                                              "end_of_tools()",
                                              "ready_brush( s, s, f, f )",
                                              "ready_tool( s, s, f, f )"};

} // namespace

TEST(DocSnippets, SessionsPrintWhatTheDocumentsShow)
{
    size_t nSessions = 0;
    for (const std::string& strDocument : ListDocuments())
    {
        const CTempFolder folder;
        nSessions += PlayDocument(strDocument, folder);
    }
    EXPECT_GE(nSessions, 6U);
}

TEST(DocSnippets, PicturesAreWhatTheirScriptsDraw)
{
    const CTempFolder folder;
    PlayDocument("docs/user-guide.md", folder);
    size_t nPictures = 0;
    for (const std::string& strPicture : ListFiles({"docs/pictures"}, {".png"}))
    {
        const std::string strName = strPicture.substr(strPicture.rfind('/') + 1);
        if (std::filesystem::exists(folder.Path(strName.c_str())))
        {
            const SRun run = RunCommand("compare -metric AE '" TELLUR_SOURCE_DIR "/" + strPicture +
                                            "' " + strName + " null:",
                                        folder.GetFolder());
            EXPECT_EQ(run.nExitCode, 0) << strPicture << ": " << run.strOutput << " pixels differ";
            ++nPictures;
        }
    }
    EXPECT_GE(nPictures, 1U);
}

TEST(DocSnippets, CodeStandsInTheFileItIsTakenFrom)
{
    size_t nBlocks = 0;
    for (const std::string& strDocument : ListDocuments())
    {
        const SMarkdown document(strDocument);
        for (const SDocBlock& block : document.blocks)
        {
            if (block.strKind != "from")
            {
                continue;
            }
            ++nBlocks;
            const std::vector<std::string> shown = Unindent(block.lines);
            const std::vector<std::string> source = ReadLines(block.strArgument);
            bool bFound = false;
            for (size_t i = 0; i + shown.size() <= source.size() && !bFound; ++i)
            {
                const auto first = source.begin() + static_cast<ptrdiff_t>(i);
                const auto last = first + static_cast<ptrdiff_t>(shown.size());
                bFound = Unindent({first, last}) == shown;
            }
            EXPECT_TRUE(bFound) << document.Place(block.nLine) << ": not in " << block.strArgument;
        }
    }
    EXPECT_GE(nBlocks, 6U);
}

// Each row of the message table: an input, the message it gives, and whether it stops the file.
TEST(DocSnippets, MessagesOfTheParserAreThoseOfTheTable)
{
    static const std::regex s_Row(R"(\| `(.*?)` \| `(.*?)`[^|]*\| (yes|no) \|)");
    const CTempFolder folder;
    size_t nRows = 0;
    for (const SDocLine& line : SMarkdown("docs/file-formats.md").prose)
    {
        std::smatch match;
        if (!std::regex_match(line.strText, match, s_Row))
        {
            continue;
        }
        ++nRows;
        SCOPED_TRACE(line.strText);
        WriteBytes(folder.Path("in.txt"), match[1]);
        const SRun run = RunCommand("tellur-parse in.txt", folder.GetFolder());
        EXPECT_EQ(run.nExitCode, match[3] == "yes" ? 1 : 0);
        EXPECT_NE(run.strOutput.find("[CTCParse] " + match[2].str()), std::string::npos)
            << run.strOutput;
    }
    EXPECT_GT(nRows, 30U);
}

// The tables of formats against those that the engine goes by: the extensions, in their order.
TEST(DocSnippets, FormatTablesAreThoseOfTheEngine)
{
    static const std::regex s_Extension("`\\.([a-z0-9]+)`");
    std::string strHeights;
    for (const SElevationFormat& format : GetElevationFormats())
    {
        for (const char* pszExtension : format.extensions)
        {
            const bool bRow = pszExtension != nullptr && !format.bTerrain; // that has a chapter
            strHeights += bRow ? "`." + std::string(pszExtension) + "` " : "";
        }
    }
    std::string strDocumented;
    for (const SDocLine& line : SMarkdown("docs/file-formats.md").prose)
    {
        if (line.strText.starts_with("| `."))
        {
            const std::string strCell = line.strText.substr(0, line.strText.find(" | "));
            for (const std::string& strExtension : FindAll(strCell, s_Extension))
            {
                strDocumented += strExtension + " ";
            }
        }
    }
    EXPECT_EQ(strDocumented, strHeights + ListImageExtensions("`.", "` ", false) + "` ");
}

// The keyword tables of the documents and of the manual page against what the player declares.
TEST(DocSnippets, ScriptKeywordsAreThoseOfThePlayer)
{
    static const std::regex s_Call("\\b[a-z_]+\\([ a-z0-9,]*\\)");
    const SRun run = RunCommand("tellur-replay --declarations");
    ASSERT_EQ(run.nExitCode, 0);
    std::set<std::string> declared;
    for (const std::string& strLine : SplitLines(run.strOutput))
    {
        if (!strLine.empty())
        {
            EXPECT_EQ(strLine[0], '!') << strLine;
            declared.insert(strLine.substr(1));
        }
    }
    ASSERT_GT(declared.size(), 20U);
    std::set<std::string> documented;
    for (const SDocLine& line : SMarkdown("docs/file-formats.md").prose)
    {
        const bool bMessage = line.strText.ends_with("| yes |") || line.strText.ends_with("| no |");
        if (line.strText.starts_with("| `") && !bMessage)
        {
            for (const std::string& strSpan : GetCodeSpans(line.strText))
            {
                const std::vector<std::string> calls = FindAll(strSpan, s_Call);
                documented.insert(calls.begin(), calls.end());
            }
        }
    }
    std::string strManual = ReadFile("tools/replay/tellur-replay.1");
    for (const std::string& strCall : declared)
    {
        EXPECT_TRUE(documented.contains(strCall))
            << strCall << " is in no table of file-formats.md";
        const std::string strName = strCall.substr(0, strCall.find('('));
        const std::regex name("\\b" + strName + "\\(");
        const bool bBrushKey =
            std::regex_search(ReadFile("host/BrushBlock.h"), std::regex("\\{\"" + strName + "\""));
        EXPECT_TRUE(bBrushKey || std::regex_search(strManual, name)) << strCall << ": manual page";
    }
    std::set<std::string> others = OTHER_KEYWORDS;
    for (const std::string& strLine : SplitLines(ReadFile("data/exports/ready.exports")))
    {
        if (strLine.starts_with("!") && strLine != "!target( s )") // which heads the table
        {
            EXPECT_TRUE(documented.contains(strLine.substr(1))) << strLine;
            others.insert(strLine.substr(1));
        }
    }
    for (const std::string& strCall : documented)
    {
        EXPECT_TRUE(declared.contains(strCall) || others.contains(strCall)) << strCall;
    }
}
