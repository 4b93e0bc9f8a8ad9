#include "framework/core/CRegValue.h"

#include "framework/core/CRegFile.h"
#include "framework/core/CRegText.h"

#include <set>
#include <type_traits>

// Holders are copied and dropped as they are (see the header), so there must be nothing to destroy.
static_assert(std::is_trivially_copyable_v<CRegValue>);
static_assert(std::is_trivially_destructible_v<CRegValue>);

namespace
{

// Keys are never closed, so this holds each path once that was ever opened.
const std::string* KeepKey(std::string strKey)
{
    // The addresses of entries of a set never change, so holders may keep them.
    static std::set<std::string> s_Keys;
    return &*s_Keys.insert(std::move(strKey)).first;
}

// Empty when it means no key.
std::string GetKeyPath(ERegHive eParent, const char* pszPath)
{
    return eParent == ERegHive::CurrentUser && pszPath != nullptr ? CRegText::NormalizePath(pszPath)
                                                                  : std::string();
}

} // namespace

int32_t CRegValue::Open(ERegHive eParent, const char* pszPath)
{
    m_pKey = nullptr;
    std::string strKey = GetKeyPath(eParent, pszPath);
    CRegText text;
    if (strKey.empty() || !CRegFile().Read(text) || !text.HasKey(strKey))
    {
        return -1;
    }
    m_pKey = KeepKey(std::move(strKey));
    return 0;
}

void CRegValue::Create(ERegHive eParent, const char* pszPath)
{
    if (Open(eParent, pszPath) == 0)
    {
        return; // also where nothing can be written
    }
    std::string strKey = GetKeyPath(eParent, pszPath);
    // Another program may have made the key since; it is looked for again under the lock.
    const auto addKey = [&strKey](CRegText& text)
    {
        return text.AddKey(strKey);
    };
    if (!strKey.empty() && CRegFile().Update(addKey))
    {
        m_pKey = KeepKey(std::move(strKey));
    }
}

int32_t CRegValue::SetDWord(const char* pszName, uint32_t uValue)
{
    if (m_pKey != nullptr)
    {
        const std::string strName = pszName != nullptr ? pszName : "";
        CRegFile().Update([&](CRegText& text) { return text.SetDWord(*m_pKey, strName, uValue); });
    }
    return 0;
}

ERegResult CRegValue::QueryDWord(const char* pszName, uint32_t& uValue) const
{
    if (m_pKey == nullptr)
    {
        return REG_RESULT_NO_KEY;
    }
    CRegText text;
    if (!CRegFile().Read(text))
    {
        return REG_RESULT_NOT_FOUND;
    }
    const CRegText::SEntry* pEntry = text.FindEntry(*m_pKey, pszName != nullptr ? pszName : "");
    if (pEntry == nullptr)
    {
        return REG_RESULT_NOT_FOUND;
    }
    if (!pEntry->bDWord)
    {
        return REG_RESULT_OTHER_TYPE;
    }
    uValue = pEntry->uValue;
    return REG_RESULT_OK;
}
