#include "framework/widgets/FieldText.h"

#include "host/NumberText.h"

#include <cmath>

namespace
{

// Beyond it six digits would need an exponent.
constexpr float LARGEST_WITH_DECIMALS = 999999.0F;

} // namespace

std::string FormatFieldValue(float fValue)
{
    const auto dValue = static_cast<double>(fValue);
    if (std::fabs(fValue) > LARGEST_WITH_DECIMALS)
    {
        return FormatNumber(dValue, 0);
    }
    // Very small numbers get an exponent in this format and are written out instead.
    const std::string strText = FormatNumber(dValue, 6, std::chars_format::general);
    return strText.find('e') == std::string::npos ? strText : FormatNumber(dValue, 9);
}

bool ReadFieldValue(const std::string& strText, float& fValue)
{
    return strText == FormatFieldValue(fValue) || ParseTypedNumber(strText, fValue);
}

bool ReadsAsValue(const std::string& strText, float fValue)
{
    float fShown = 0.0F;
    return strText == FormatFieldValue(fValue) ||
           (ParseTypedNumber(strText, fShown) && fShown == fValue);
}
