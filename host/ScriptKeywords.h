#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// What a keyword of replay scripts says about itself: host and plug-in each have a table of their
// own, and whoever plays, records or checks a script asks both.

// What the first argument names.
enum class EKeywordFile : uint8_t
{
    None,
    Read,    // a file beside the script where there is one, else what the roots have
    Written, // a file beside the script
};

struct SScriptKeyword
{
    const char* pszName = "";  // lower case
    const char* pszTypes = ""; // a letter an argument: i f s, v of three numbers, w of four
    EKeywordFile eFile = EKeywordFile::None;
    bool bWindows = false; // whoever plays it shows windows, which the host has to have
};

// As a script declares it, one line.
inline std::string MakeDeclaration(const SScriptKeyword& keyword)
{
    std::string strText = std::string("!") + keyword.pszName + "(";
    const char* pszBefore = " ";
    for (const char cType : std::string_view(keyword.pszTypes))
    {
        strText += pszBefore;
        pszBefore = ", ";
        const std::string strVector = cType == 'v' ? "v3" : cType == 'w' ? "v4" : "";
        strText += strVector.empty() ? std::string(1, cType) : strVector;
    }
    return strText + (*keyword.pszTypes == '\0' ? ")\n" : " )\n");
}
