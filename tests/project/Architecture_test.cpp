// The arrows of docs/architecture.md, compared with what the code includes.

#include "tests/project/Markdown.h"
#include "tests/project/ProjectTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <regex>
#include <set>

namespace
{

struct SInclude
{
    std::string strFrom; // file
    std::string strTo;   // between the quotes
    int nLine = 0;

    std::string GetText() const
    {
        return strFrom + ":" + std::to_string(nLine) + ": #include \"" + strTo + "\"";
    }
};

std::vector<SInclude> CollectIncludes()
{
    static const std::regex s_Include("^\\s*#\\s*include\\s*\"([^\"]*)\".*");
    std::vector<SInclude> includes;
    for (const std::string& strFile : ListFiles(GetProductFolders(), {".h", ".cpp", ".inc"}))
    {
        int nLine = 0;
        for (const std::string& strLine : ReadLines(strFile))
        {
            ++nLine;
            std::smatch match;
            if (std::regex_match(strLine, match, s_Include))
            {
                includes.push_back({strFile, match[1], nLine});
            }
        }
    }
    return includes;
}

// Left name of each arrow with the names on its right.
using Arrows = std::map<std::string, std::vector<std::string>>;

Arrows ReadArrows()
{
    Arrows arrows;
    for (const SDocBlock& block : SMarkdown("docs/architecture.md").blocks)
    {
        for (const std::string& strLine : block.lines)
        {
            const size_t iArrow = strLine.find("->");
            if (block.strLanguage != "arrows" || iArrow == std::string::npos)
            {
                continue;
            }
            std::vector<std::string> right = SplitWords(strLine.substr(iArrow + 2));
            std::erase(right, "(nothing)");
            arrows[Trim(strLine.substr(0, iArrow))] = right;
        }
    }
    return arrows;
}

// Whether the file is the name itself or lies in the folder of that name.
bool LiesIn(const std::string& strFile, const std::string& strName)
{
    return strFile == strName || (strFile.starts_with(strName) && strFile[strName.size()] == '/');
}

// The longest left name that the file lies in; a source goes with its header of the same name.
std::string FindOwner(const Arrows& arrows, std::string strFile)
{
    if (strFile.ends_with(".cpp"))
    {
        const std::string strHeader = strFile.substr(0, strFile.size() - 4) + ".h";
        strFile = arrows.contains(strHeader) ? strHeader : strFile;
    }
    std::string strOwner;
    for (const auto& [strName, right] : arrows)
    {
        if (LiesIn(strFile, strName) && strName.size() > strOwner.size())
        {
            strOwner = strName;
        }
    }
    return strOwner;
}

// The nodes of one cycle in order, or nothing.
std::vector<std::string> FindCycle(const std::map<std::string, std::set<std::string>>& edges)
{
    std::map<std::string, int> state; // 1 on the path, 2 done
    std::vector<std::string> path;
    const std::function<bool(const std::string&)> visit = [&](const std::string& strNode)
    {
        state[strNode] = 1;
        path.push_back(strNode);
        const auto it = edges.find(strNode);
        for (const std::string& strNext : it != edges.end() ? it->second : std::set<std::string>())
        {
            if (state[strNext] == 1)
            {
                path.erase(path.begin(), std::find(path.begin(), path.end(), strNext));
                path.push_back(strNext);
                return true;
            }
            if (state[strNext] == 0 && visit(strNext))
            {
                return true;
            }
        }
        path.pop_back();
        state[strNode] = 2;
        return false;
    };
    for (const auto& [strNode, next] : edges)
    {
        if (state[strNode] == 0 && visit(strNode))
        {
            return path;
        }
    }
    return {};
}

std::string Join(const std::vector<std::string>& names)
{
    std::string strText;
    for (const std::string& strName : names)
    {
        strText += (strText.empty() ? "" : " -> ") + strName;
    }
    return strText;
}

} // namespace

TEST(Architecture, EveryIncludeFollowsAnArrow)
{
    const Arrows arrows = ReadArrows();
    ASSERT_GT(arrows.size(), 10U);
    const std::vector<SInclude> includes = CollectIncludes();
    ASSERT_GT(includes.size(), 300U);
    for (const SInclude& include : includes)
    {
        const std::string strOwner = FindOwner(arrows, include.strFrom);
        EXPECT_NE(strOwner, "") << include.strFrom << ": no arrow names its folder";
        EXPECT_EQ(include.strTo.find(".."), std::string::npos) << include.GetText();
        const bool bOwnFile = include.strTo.find('/') == std::string::npos;
        EXPECT_FALSE(bOwnFile) << include.GetText() << ": name the folder";
        const std::vector<std::string>& allowed = arrows.at(strOwner);
        const bool bAllowed =
            LiesIn(include.strTo, strOwner) ||
            std::any_of(allowed.begin(),
                        allowed.end(),
                        [&](const std::string& strName) { return LiesIn(include.strTo, strName); });
        EXPECT_TRUE(bAllowed) << include.GetText() << " is not allowed for " << strOwner;
    }
}

TEST(Architecture, FoldersAndHeadersHaveNoCycles)
{
    const Arrows arrows = ReadArrows();
    std::set<std::string>
        interfaces; // arrows to one header may close a cycle, those to a folder not
    for (const auto& [strName, right] : arrows)
    {
        std::copy_if(right.begin(),
                     right.end(),
                     std::inserter(interfaces, interfaces.end()),
                     [](const std::string& strRight) { return strRight.ends_with(".h"); });
    }
    for (const std::string& strHeader : interfaces)
    {
        EXPECT_TRUE(ExistsInTree(strHeader)) << strHeader;
    }
    std::map<std::string, std::set<std::string>> folders;
    std::map<std::string, std::set<std::string>> files;
    for (const SInclude& include : CollectIncludes())
    {
        files[include.strFrom].insert(include.strTo);
        const std::string strFrom = FindOwner(arrows, include.strFrom);
        const std::string strTo = FindOwner(arrows, include.strTo);
        if (strFrom != strTo && !interfaces.contains(include.strTo))
        {
            folders[strFrom].insert(strTo);
        }
    }
    EXPECT_EQ(Join(FindCycle(folders)), "");
    EXPECT_EQ(Join(FindCycle(files)), "");
}

TEST(Architecture, QtIsEnteredOnlyWhereTheArchitectureSaysSo)
{
    static const std::regex s_Qt("^\\s*#\\s*include\\s*<(Q[A-Za-z]|Qt)[^>]*>.*");
    const auto mayUseQt = [](const std::string& strFile)
    {
        return LiesIn(strFile, "framework/qt") || strFile == "tools/gallery/main.cpp" ||
               LiesIn(strFile, "editor/view") || LiesIn(strFile, "editor/app");
    };
    for (const std::string& strFile : ListFiles(GetProductFolders(), {".h", ".cpp"}))
    {
        int nLine = 0;
        for (const std::string& strLine : ReadLines(strFile))
        {
            ++nLine;
            EXPECT_TRUE(mayUseQt(strFile) || !std::regex_match(strLine, s_Qt))
                << strFile << ":" << nLine << ": " << strLine;
        }
    }
}
