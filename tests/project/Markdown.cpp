#include "tests/project/Markdown.h"

#include "tests/project/ProjectTree.h"

#include <gtest/gtest.h>

#include <cctype>
#include <regex>

SMarkdown::SMarkdown(const std::string& strDocument)
    : strPath(strDocument)
{
    static const std::regex s_Fence("^ *```([a-z]*)\\s*$");
    static const std::regex s_Marker("^<!-- ([a-z]+)(?:: (.*))? -->$");
    std::smatch match;
    std::smatch marker;
    std::string strBefore;
    bool bInside = false;
    int nLine = 0;
    for (const std::string& strLine : ReadLines(strPath))
    {
        ++nLine;
        if (std::regex_match(strLine, match, s_Fence))
        {
            bInside = !bInside;
            if (bInside)
            {
                SDocBlock block;
                block.strLanguage = match[1];
                block.nLine = nLine;
                if (std::regex_match(strBefore, marker, s_Marker))
                {
                    block.strKind = marker[1];
                    block.strArgument = marker[2];
                }
                blocks.push_back(block);
            }
        }
        else if (bInside)
        {
            blocks.back().lines.push_back(strLine);
        }
        else
        {
            prose.push_back({strLine, nLine});
        }
        strBefore = strLine;
    }
    EXPECT_FALSE(bInside) << strPath << ": a fence is not closed";
}

std::vector<std::string> GetCodeSpans(const std::string& strLine)
{
    std::vector<std::string> spans;
    size_t iStart = strLine.find('`');
    while (iStart != std::string::npos)
    {
        const size_t iEnd = strLine.find('`', iStart + 1);
        if (iEnd == std::string::npos)
        {
            break;
        }
        spans.push_back(strLine.substr(iStart + 1, iEnd - iStart - 1));
        iStart = strLine.find('`', iEnd + 1);
    }
    return spans;
}

std::vector<std::string> GetLinks(const std::string& strLine)
{
    static const std::regex s_Link("\\]\\(([^)\\s]+)\\)");
    static const std::regex s_Code("`[^`]*`");
    const std::string strText = std::regex_replace(strLine, s_Code, "");
    std::vector<std::string> links;
    for (std::sregex_iterator it(strText.begin(), strText.end(), s_Link), end; it != end; ++it)
    {
        links.push_back((*it)[1]);
    }
    return links;
}

std::vector<std::string> GetAnchors(const SMarkdown& document)
{
    std::vector<std::string> anchors;
    for (const SDocLine& line : document.prose)
    {
        if (!line.strText.starts_with("#"))
        {
            continue;
        }
        std::string strAnchor;
        for (const char c : Trim(line.strText.substr(line.strText.find_first_not_of('#'))))
        {
            const auto uChar = static_cast<unsigned char>(c);
            if (std::isalnum(uChar) || c == '-' || c == '_')
            {
                strAnchor += static_cast<char>(std::tolower(uChar));
            }
            else if (c == ' ')
            {
                strAnchor += '-';
            }
        }
        anchors.push_back(strAnchor);
    }
    return anchors;
}
