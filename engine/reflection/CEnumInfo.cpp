#include "host/Reflection.h"

#include <algorithm>

bool CEnumInfo::Add(int32_t iValue, const char* pszName, const char* pszDescription)
{
    if (pszName == nullptr || *pszName == '\0' || Find(iValue) != nullptr ||
        Find(pszName) != nullptr)
    {
        return false;
    }
    m_Entries.push_back({iValue, pszName, pszDescription != nullptr ? pszDescription : ""});
    return true;
}

const CEnumInfo::SEntry* CEnumInfo::Find(int32_t iValue) const
{
    const auto found =
        std::find_if(m_Entries.begin(),
                     m_Entries.end(),
                     [iValue](const SEntry& entry) { return entry.iValue == iValue; });
    return found != m_Entries.end() ? &*found : nullptr;
}

const CEnumInfo::SEntry* CEnumInfo::Find(const char* pszName) const
{
    if (pszName == nullptr)
    {
        return nullptr;
    }
    const auto found =
        std::find_if(m_Entries.begin(),
                     m_Entries.end(),
                     [pszName](const SEntry& entry) { return entry.strName == pszName; });
    return found != m_Entries.end() ? &*found : nullptr;
}
