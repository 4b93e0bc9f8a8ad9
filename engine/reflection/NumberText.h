#pragma once

#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <type_traits>

// Numbers as text, the same whatever the process's locale says.

constexpr std::string_view TEXT_BLANKS = " \t\r\n";

inline std::string_view TrimBlanks(std::string_view strText)
{
    const size_t iStart = strText.find_first_not_of(TEXT_BLANKS);
    if (iStart == std::string_view::npos)
    {
        return {};
    }
    return strText.substr(iStart, strText.find_last_not_of(TEXT_BLANKS) + 1 - iStart);
}

// Takes the next word off the front of strRest; empty when there is none.
inline std::string_view TakeWord(std::string_view& strRest)
{
    strRest = TrimBlanks(strRest);
    const std::string_view strWord = strRest.substr(0, strRest.find_first_of(TEXT_BLANKS));
    strRest.remove_prefix(strWord.size());
    return strWord;
}

// The whole text without surrounding blanks must be one finite number of the type's range; value
// is untouched otherwise.
template <class TNumber> bool ParseNumber(std::string_view strText, TNumber& value)
{
    const std::string_view strNumber = TrimBlanks(strText);
    const char* pEnd = strNumber.data() + strNumber.size();
    TNumber parsed = {};
    const auto [pStop, fault] = std::from_chars(strNumber.data(), pEnd, parsed);
    if (fault != std::errc() || pStop != pEnd)
    {
        return false;
    }
    if constexpr (std::is_floating_point_v<TNumber>)
    {
        if (!std::isfinite(parsed))
        {
            return false;
        }
    }
    value = parsed;
    return true;
}

// Floating numbers: the shortest text that reads back to the same bits.
template <class TNumber> void AppendNumber(std::string& strText, TNumber value)
{
    char szNumber[40];
    const auto [pEnd, fault] = std::to_chars(szNumber, szNumber + sizeof szNumber, value);
    strText.append(szNumber, fault == std::errc() ? pEnd : szNumber);
}
