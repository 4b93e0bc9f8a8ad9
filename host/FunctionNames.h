#pragma once

#include <string>
#include <string_view>

// The class name of a function as a person reads it: "SetHeightFunction" is "Set height".
inline std::string GetReadableFunction(std::string strClass)
{
    constexpr std::string_view SUFFIX = "Function";
    if (strClass.ends_with(SUFFIX))
    {
        strClass.resize(strClass.size() - SUFFIX.size());
    }
    std::string strText;
    for (const char c : strClass)
    {
        const bool bWord = c >= 'A' && c <= 'Z' && !strText.empty();
        strText += bWord ? " " : "";
        strText += bWord ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return strText;
}
