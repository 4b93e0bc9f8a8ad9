#include "engine/elevation/ReportText.h"

#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdio>

std::string MakeText(const char* pszFormat, ...)
{
    va_list arguments;
    va_start(arguments, pszFormat);
    // The text is made twice, first for its length alone, and a list can be used only once.
    va_list again;
    va_copy(again, arguments);
    std::string strText(static_cast<size_t>(std::vsnprintf(nullptr, 0, pszFormat, arguments)),
                        '\0');
    std::vsnprintf(strText.data(), strText.size() + 1, pszFormat, again);
    va_end(again);
    va_end(arguments);
    return strText;
}

std::string MakeNumber(double dValue)
{
    constexpr int DIGITS = 7;
    constexpr double MOST_WHOLE = 1e15; // whole numbers below it are shown whole
    if (dValue == std::floor(dValue) && std::fabs(dValue) < MOST_WHOLE)
    {
        return MakeText("%.0f", dValue + 0.0); // never "-0"
    }
    char aText[32];
    const auto [pEnd, error] = std::to_chars(
        std::begin(aText), std::end(aText), dValue, std::chars_format::general, DIGITS);
    return {aText, pEnd};
}

std::string MakeExactText(double dValue)
{
    char aText[32];
    const auto [pEnd, error] = std::to_chars(std::begin(aText), std::end(aText), dValue);
    return {aText, pEnd};
}

std::string GetSampleTypeText(const SSampleInfo& info)
{
    if (info.eType == ESampleType::Float && info.eByteOrder == EByteOrder::None)
    {
        return "numbers as text";
    }
    const char* pszType = info.eType == ESampleType::Float    ? "float"
                          : info.eType == ESampleType::Signed ? "signed"
                                                              : "unsigned";
    const char* pszOrder = info.eByteOrder == EByteOrder::Big      ? ", big-endian"
                           : info.eByteOrder == EByteOrder::Little ? ", little-endian"
                                                                   : "";
    return MakeText("%u bits %s%s", info.uBits, pszType, pszOrder);
}
