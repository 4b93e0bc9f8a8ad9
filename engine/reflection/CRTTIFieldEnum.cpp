#include "host/NumberText.h"
#include "host/ReflectionFields.h"

CRTTIFieldEnum::CRTTIFieldEnum(FAddress pAddress, const CEnumInfo* pInfo)
    : CRTTIField(RTTI_ENUM, pAddress)
    , m_Info(pInfo)
{
}

std::string CRTTIFieldEnum::ToString(const CRTTIObject* pObject) const
{
    std::string strText;
    if (pObject != nullptr)
    {
        const int32_t iValue = *static_cast<const int32_t*>(GetAddress(pObject));
        const CEnumInfo::SEntry* pEntry = m_Info->Find(iValue);
        if (pEntry != nullptr)
        {
            return pEntry->strName;
        }
        AppendNumber(strText, iValue);
    }
    return strText;
}

bool CRTTIFieldEnum::Parse(CRTTIObject* pObject, const char* pszText)
{
    const std::string strName(TrimBlanks(pszText));
    const CEnumInfo::SEntry* pEntry = m_Info->Find(strName.c_str());
    int32_t iValue = 0;
    if (pEntry == nullptr && ParseNumber(strName, iValue))
    {
        pEntry = m_Info->Find(iValue);
    }
    if (pEntry == nullptr)
    {
        return false;
    }
    *static_cast<int32_t*>(GetAddress(pObject)) = pEntry->iValue;
    return true;
}
