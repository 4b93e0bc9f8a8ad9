#include "framework/widgets/FieldText.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace
{

constexpr float LARGEST_WITH_DECIMALS = 999999.0F;

bool ParseValue(const std::string& strText, float& fValue)
{
    const char* pFirst = strText.c_str();
    const char* pLast = pFirst + strText.size();
    while (pFirst != pLast && *pFirst == ' ')
    {
        ++pFirst;
    }
    while (pLast != pFirst && pLast[-1] == ' ')
    {
        --pLast;
    }
    pFirst += pFirst != pLast && *pFirst == '+' ? 1 : 0;
    float fParsed = 0.0F;
    const std::from_chars_result result = std::from_chars(pFirst, pLast, fParsed);
    if (result.ec != std::errc() || result.ptr != pLast || !std::isfinite(fParsed))
    {
        return false;
    }
    fValue = fParsed;
    return true;
}

} // namespace

std::string FormatFieldValue(float fValue)
{
    char szText[64];
    const bool bLarge = std::fabs(fValue) > LARGEST_WITH_DECIMALS;
    std::snprintf(szText, sizeof(szText), bLarge ? "%.0f" : "%.6g", static_cast<double>(fValue));
    if (szText[0] != '\0' && std::string(szText).find('e') != std::string::npos)
    {
        std::snprintf(szText, sizeof(szText), "%.9f", static_cast<double>(fValue));
    }
    return szText;
}

bool ReadFieldValue(const std::string& strText, float& fValue)
{
    return strText == FormatFieldValue(fValue) || ParseValue(strText, fValue);
}

bool ReadsAsValue(const std::string& strText, float fValue)
{
    float fShown = 0.0F;
    return strText == FormatFieldValue(fValue) || (ParseValue(strText, fShown) && fShown == fValue);
}
