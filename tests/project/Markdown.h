#pragma once

#include <string>
#include <vector>

// A fenced block, with what the comment line before it says of it: "<!-- KIND: ARGUMENT -->" or
// "<!-- KIND -->".
struct SDocBlock
{
    std::string strLanguage;
    std::string strKind;
    std::string strArgument;
    std::vector<std::string> lines;
    int nLine = 0; // of the opening fence
};

struct SDocLine
{
    std::string strText;
    int nLine = 0;
};

// A document of the project, taken apart.
struct SMarkdown
{
    explicit SMarkdown(const std::string& strPath);

    std::string Place(int nLine) const { return strPath + ":" + std::to_string(nLine); }

    std::string strPath;
    std::vector<SDocLine> prose; // lines outside of fences
    std::vector<SDocBlock> blocks;
};

// Contents of the code spans of a line, in order.
std::vector<std::string> GetCodeSpans(const std::string& strLine);

// Targets of the links and pictures of a line.
std::vector<std::string> GetLinks(const std::string& strLine);

// The anchors of a document's headings.
std::vector<std::string> GetAnchors(const SMarkdown& document);
