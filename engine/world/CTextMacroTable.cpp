#include "engine/world/CTextMacroTable.h"

#include <algorithm>

namespace
{

std::string MakeLower(const char* pszName)
{
    std::string strLower = pszName;
    std::transform(strLower.begin(),
                   strLower.end(),
                   strLower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return strLower;
}

} // namespace

const char* CTextMacroTable::Find(const char* pszName) const
{
    const auto found = pszName != nullptr ? m_Values.find(MakeLower(pszName)) : m_Values.end();
    return found != m_Values.end() ? found->second.c_str() : nullptr;
}

void CTextMacroTable::Set(const char* pszName, const char* pszValue)
{
    if (pszName == nullptr || *pszName == '\0')
    {
        return;
    }
    if (pszValue == nullptr)
    {
        m_Values.erase(MakeLower(pszName));
        return;
    }
    m_Values[MakeLower(pszName)] = pszValue;
}
