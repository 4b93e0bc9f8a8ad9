#pragma once

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <type_traits>

// Numbers as text, with a decimal point whatever the locale of the process says: a window system
// and a host may set it, and files, fields and messages must read the same everywhere. Plain
// functions, any thread, any order.

constexpr std::string_view TEXT_BLANKS = " \t\r\n";

// The text without blanks in front and behind, a part of the argument.
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

// Reads a text that is, without the blanks around it, one finite number of the type's range. False,
// with value untouched, for any other text.
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

// Reads what a person types: as ParseNumber does, but with a plus in front and a comma for the
// point allowed.
template <class TNumber> bool ParseTypedNumber(std::string_view strText, TNumber& value)
{
    std::string strNumber(TrimBlanks(strText));
    strNumber.erase(0, strNumber.starts_with('+') ? 1 : 0);
    std::replace(strNumber.begin(), strNumber.end(), ',', '.'); // two of them are no number
    return ParseNumber(strNumber, value);
}

// Puts the number behind the text. Floating numbers: the shortest text that reads back to the same
// bits.
template <class TNumber> void AppendNumber(std::string& strText, TNumber value)
{
    char szNumber[40];
    const auto [pEnd, fault] = std::to_chars(szNumber, szNumber + sizeof szNumber, value);
    strText.append(szNumber, fault == std::errc() ? pEnd : szNumber);
}

// Gives the text of printf's "%.*f", or with another format that of "%.*g" and so on; at most 100
// digits.
inline std::string
FormatNumber(double fValue, int iDigits, std::chars_format eFormat = std::chars_format::fixed)
{
    char szNumber[512]; // the largest number has 309 digits before the point
    const auto [pEnd, fault] = std::to_chars(
        szNumber, szNumber + sizeof szNumber, fValue, eFormat, std::clamp(iDigits, 0, 100));
    return {szNumber, fault == std::errc() ? pEnd : szNumber};
}
