#include "engine/reflection/EditFlags.h"

#include "host/NumberText.h"
#include "host/Reflection.h"

#include <span>

namespace
{

struct SNamedBit
{
    std::string_view strName;
    uint32_t uBit;
};

constexpr int PRECISION_MAX = 17; // more digits than a double has

constexpr SNamedBit FIELD_BITS[] = {
    {"EDIT", RTTI_FIELD_EDIT},
    {"READONLY", RTTI_FIELD_READONLY},
};

constexpr SNamedBit EDITOR_BITS[] = {
    {"EDIT", RTTI_EDIT_EDIT},
    {"COMBO", RTTI_EDIT_COMBO},
    {"SPINNER", RTTI_EDIT_SPINNER},
    {"CHECKBOX", RTTI_EDIT_CHECKBOX},
    {"NOMAINSPINNER", RTTI_EDIT_NO_MAIN_SPINNER},
    {"COLOR", RTTI_EDIT_COLOR},
    {"BROWSE", RTTI_EDIT_BROWSE},
    {"FILE", RTTI_EDIT_BROWSE_FILE},
    {"FOLDER", RTTI_EDIT_BROWSE_FOLDER},
    {"HIDDEN", RTTI_EDIT_HIDDEN},
    {"DROP", RTTI_EDIT_DROP},
    {"DESCRIPTION", RTTI_EDIT_DESCRIPTION},
};

bool ParseBits(std::string_view strText, std::span<const SNamedBit> bits, uint32_t& uBits)
{
    size_t iStart = 0;
    // Goes on behind a last '|' as well: the name there is empty, and the text is refused.
    while (iStart <= strText.size())
    {
        const size_t iEnd = std::min(strText.find('|', iStart), strText.size());
        const std::string_view strName = strText.substr(iStart, iEnd - iStart);
        uint32_t uFound = 0;
        for (const SNamedBit& bit : bits)
        {
            uFound = bit.strName == strName ? bit.uBit : uFound;
        }
        if (uFound == 0)
        {
            return false;
        }
        uBits |= uFound;
        iStart = iEnd + 1;
    }
    return true;
}

bool ParseLimit(std::string_view strText, uint32_t uBit, double& fLimit, uint32_t& uBits)
{
    uBits |= uBit;
    return ParseNumber(strText, fLimit);
}

bool ParsePart(std::string_view strKey, std::string_view strText, SEditFlags& flags)
{
    if (strKey == "f")
    {
        return ParseBits(strText, FIELD_BITS, flags.uFlags);
    }
    if (strKey == "e")
    {
        return ParseBits(strText, EDITOR_BITS, flags.uEditFlags);
    }
    if (strKey == "c")
    {
        flags.strCategory = strText;
        return true;
    }
    if (strKey == "d")
    {
        flags.strDescription = strText;
        return true;
    }
    if (strKey == "min")
    {
        return ParseLimit(strText, RTTI_EDIT_HAS_MIN, flags.fMin, flags.uEditFlags);
    }
    if (strKey == "max")
    {
        return ParseLimit(strText, RTTI_EDIT_HAS_MAX, flags.fMax, flags.uEditFlags);
    }
    if (strKey == "step")
    {
        return ParseLimit(strText, RTTI_EDIT_HAS_STEP, flags.fStep, flags.uEditFlags) &&
               flags.fStep > 0.0;
    }
    return strKey == "prec" && ParseNumber(strText, flags.iPrecision) && flags.iPrecision >= 0 &&
           flags.iPrecision <= PRECISION_MAX;
}

} // namespace

bool ParseEditFlags(std::string_view strText, SEditFlags& flags)
{
    constexpr uint32_t BOTH_LIMITS = RTTI_EDIT_HAS_MIN | RTTI_EDIT_HAS_MAX;
    while (!strText.empty())
    {
        const size_t iEnd = strText.find(';');
        const size_t iColon = strText.find(':');
        // A colon that is missing has the largest position there is, and fails as one behind the
        // end.
        if (iEnd == std::string_view::npos || iColon >= iEnd ||
            !ParsePart(
                strText.substr(0, iColon), strText.substr(iColon + 1, iEnd - iColon - 1), flags))
        {
            return false;
        }
        strText.remove_prefix(iEnd + 1);
    }
    return (flags.uEditFlags & BOTH_LIMITS) != BOTH_LIMITS || flags.fMin <= flags.fMax;
}
