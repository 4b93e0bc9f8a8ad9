// No class does too much: what its functions are long together, and how many it has of its own.

#include "tests/project/ProjectTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace
{

constexpr size_t MOST_LINES = 400;     // of all bodies, wherever they stand
constexpr size_t MOST_OPERATIONS = 30; // without those that an interface asks for

struct SClass
{
    size_t nLines = 0;
    size_t nOperations = 0;
};

using Classes = std::map<std::string, SClass>;

size_t CountLines(const std::string& strText)
{
    const std::vector<std::string> lines = SplitLines(strText);
    return static_cast<size_t>(std::count_if(
        lines.begin(), lines.end(), [](const auto& str) { return !Trim(str).empty(); }));
}

// Behind the brace that closes the one at that place.
size_t SkipBraces(const std::string& strCode, size_t iOpen)
{
    int nDepth = 0;
    size_t i = iOpen;
    for (; i < strCode.size(); ++i)
    {
        nDepth += strCode[i] == '{' ? 1 : strCode[i] == '}' ? -1 : 0;
        if (nDepth == 0)
        {
            return i + 1;
        }
    }
    return i;
}

// The last operation that stands before its body or its semicolon; empty for a member or a type.
std::string GetOperation(const std::string& strDeclaration)
{
    static const std::regex s_Other(
        "\\b(using|friend|enum|struct|class|static_assert)\\b|= *(default|delete) *$");
    static const std::regex s_Operation(
        "(~?\\w+|operator[^(]*)\\([^;]*\\)\\s*(const)?\\s*(noexcept)?\\s*(override)?\\s*(:.*)?$");
    std::smatch match;
    return !std::regex_search(strDeclaration, s_Other) &&
                   std::regex_search(strDeclaration, match, s_Operation)
               ? match[1].str()
               : "";
}

// What stands between the braces of a class.
void AddMembers(const std::string& strName, const std::string& strBody, SClass& found)
{
    std::string strDeclaration;
    for (size_t i = 0; i < strBody.size(); ++i)
    {
        if (strBody[i] != '{' && strBody[i] != ';')
        {
            strDeclaration += strBody[i] == '\n' ? ' ' : strBody[i];
            continue;
        }
        strDeclaration = std::regex_replace(
            strDeclaration,
            std::regex("\\b(public|protected|private) *:(?!:)|\\btemplate *<[^>]*>"),
            "");
        const std::string strOperation = GetOperation(Trim(strDeclaration));
        const bool bBody = strBody[i] == '{';
        const size_t iEnd = bBody ? SkipBraces(strBody, i) : i + 1;
        const bool bOwn = !strOperation.empty() && strOperation != strName &&
                          strOperation[0] != '~' &&
                          strDeclaration.find(" override") == std::string::npos;
        found.nOperations += bOwn ? 1 : 0;
        found.nLines +=
            bBody && !strOperation.empty() ? CountLines(strBody.substr(i + 1, iEnd - i - 2)) : 0;
        strDeclaration = bBody && strOperation.empty() ? strDeclaration + " " : "";
        i = iEnd - 1;
    }
}

// The code is laid out by the formatter: what belongs to no other stands at the margin.
void AddFile(const std::string& strFile, Classes& classes)
{
    const std::string strCode = StripCode(ReadFile(strFile));
    static const std::regex s_Class("(?:^|\\n)(?:class|struct) (?:[A-Z_]+ )?(\\w+)(?: final)?"
                                    "(?:\\s*:[^;{]*)?\\n\\{");
    static const std::regex s_Function(
        "(?:^|\\n)[^\\s#{}/][^;{}\\n]*?(\\w+)::(?:~?\\w+|operator[^(\\n]*)\\(");
    for (std::sregex_iterator it(strCode.begin(), strCode.end(), s_Class), end; it != end; ++it)
    {
        const size_t iOpen = static_cast<size_t>(it->position() + it->length()) - 1;
        const size_t iEnd = SkipBraces(strCode, iOpen);
        AddMembers((*it)[1], strCode.substr(iOpen + 1, iEnd - iOpen - 2), classes[(*it)[1]]);
    }
    for (std::sregex_iterator it(strCode.begin(), strCode.end(), s_Function), end; it != end; ++it)
    {
        // An initializer list may have braces of its own; a blank line ends what has no body.
        const size_t iOpen = strCode.find("\n{\n", static_cast<size_t>(it->position()));
        const size_t iBlank = strCode.find("\n\n", static_cast<size_t>(it->position()) + 1);
        if (iOpen < iBlank)
        {
            const size_t iEnd = SkipBraces(strCode, iOpen + 1);
            classes[(*it)[1]].nLines += CountLines(strCode.substr(iOpen + 2, iEnd - iOpen - 3));
        }
    }
}

} // namespace

// The interfaces of host/ are as wide as what crosses the boundary, and what is pure ("= 0") is
// asked of others.
TEST(Classes, HaveOneJobEach)
{
    Classes classes;
    for (const std::string& strFile : ListFiles(GetProductFolders(), {".h", ".cpp", ".inl"}))
    {
        if (!strFile.starts_with("host/"))
        {
            AddFile(strFile, classes);
        }
    }
    EXPECT_GT(classes.size(), 200U);
    EXPECT_GT(classes["CTerrain"].nLines, 100U) << "the code is not read as it is written";
    EXPECT_GT(classes["CTerrain"].nOperations, 20U);
    for (const auto& [strName, found] : classes)
    {
        EXPECT_LE(found.nLines, MOST_LINES) << strName;
        EXPECT_LE(found.nOperations, MOST_OPERATIONS) << strName;
    }
}
