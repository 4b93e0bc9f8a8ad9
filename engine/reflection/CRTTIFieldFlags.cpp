#include "host/NumberText.h"
#include "host/ReflectionFields.h"

#include <algorithm>

namespace
{

constexpr char SEPARATOR = '|';

} // namespace

CRTTIFieldFlags::CRTTIFieldFlags(FAddress pAddress, const CEnumInfo* pInfo)
    : CRTTIField(RTTI_FLAGS, pAddress)
    , m_Info(pInfo)
{
}

// Bits without a name follow the names as one number, so that nothing is lost.
std::string CRTTIFieldFlags::ToString(const CRTTIObject* pObject) const
{
    std::string strText;
    if (pObject == nullptr)
    {
        return strText;
    }
    uint32_t uRest = *static_cast<const uint32_t*>(GetAddress(pObject));
    for (const CEnumInfo::SEntry& entry : m_Info->GetInfo())
    {
        const auto uBits = static_cast<uint32_t>(entry.iValue);
        if (uBits != 0 && (uRest & uBits) == uBits)
        {
            strText += (strText.empty() ? "" : "|") + entry.strName;
            uRest &= ~uBits;
        }
    }
    if (uRest != 0 || strText.empty())
    {
        strText += strText.empty() ? "" : "|";
        AppendNumber(strText, uRest);
    }
    return strText;
}

bool CRTTIFieldFlags::Parse(CRTTIObject* pObject, const char* pszText)
{
    const std::string_view strText = pszText;
    uint32_t uValue = 0;
    size_t iStart = 0;
    // Goes on behind a last '|' as well: the name there is empty, and the text is refused.
    while (iStart <= strText.size())
    {
        const size_t iEnd = std::min(strText.find(SEPARATOR, iStart), strText.size());
        const std::string strName(TrimBlanks(strText.substr(iStart, iEnd - iStart)));
        const CEnumInfo::SEntry* pEntry = m_Info->Find(strName.c_str());
        uint32_t uBits = pEntry != nullptr ? static_cast<uint32_t>(pEntry->iValue) : 0;
        if (pEntry == nullptr && !ParseNumber(strName, uBits))
        {
            return false;
        }
        uValue |= uBits;
        iStart = iEnd + 1;
    }
    // Stored at the end, so that a text with one unknown name changes nothing.
    *static_cast<uint32_t*>(GetAddress(pObject)) = uValue;
    return true;
}
