#include "host/Log.h"
#include "host/Reflection.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace
{

// Made by the first class that registers, so it is destroyed after the last one has left.
std::vector<const CRTTI*>& GetRegistry()
{
    static std::vector<const CRTTI*> s_Classes;
    return s_Classes;
}

const char* OrEmpty(const char* pszText)
{
    return pszText != nullptr ? pszText : "";
}

} // namespace

CRTTI::CRTTI(const char* pszClassName,
             int32_t iEngineClass,
             FFactory pFactory,
             const CRTTI* pBase,
             uint32_t uFlags,
             FRegisterFields pRegisterFields)
    : m_ClassName(OrEmpty(pszClassName))
    , m_EngineClass(iEngineClass)
    , m_Factory(pFactory)
    , m_Base(pBase)
    , m_Flags(uFlags)
{
    GetRegistry().push_back(this);
    if (pRegisterFields != nullptr)
    {
        pRegisterFields(*this);
    }
}

CRTTI::~CRTTI()
{
    std::erase(GetRegistry(), this);
    for (CRTTIField* pField : m_Fields)
    {
        delete pField;
    }
}

bool CRTTI::AddField(CRTTIField* pField)
{
    std::unique_ptr<CRTTIField> owned(pField);
    if (owned == nullptr)
    {
        return false;
    }
    for (const CRTTIField* pOther : m_Fields)
    {
        if (std::strcmp(pOther->GetName(), owned->GetName()) == 0)
        {
            return false;
        }
    }
    m_Fields.push_back(owned.release());
    return true;
}

void CRTTI::RegisterField(CRTTIField* pField, const char* pszName, const char* pszEditFlags)
{
    std::unique_ptr<CRTTIField> owned(pField);
    // AddField owns the field from the call on, also when it refuses it.
    if (owned == nullptr || !owned->Initialize(pszName, pszEditFlags) || !AddField(owned.release()))
    {
        CrashExit("RTTI FATAL ERROR %s.%s: %s\n",
                  GetClassNameA(),
                  OrEmpty(pszName),
                  OrEmpty(pszEditFlags));
    }
}

bool CRTTI::IsDerivedFrom(const CRTTI* pClass) const
{
    const CRTTI* pOwn = this;
    while (pOwn != nullptr && pOwn != pClass)
    {
        pOwn = pOwn->m_Base;
    }
    return pOwn != nullptr;
}

bool CRTTI::NameGreater(const CRTTI& other) const
{
    return m_ClassName > other.m_ClassName;
}

CRTTIObject* CRTTI::Create() const
{
    return m_Factory != nullptr ? m_Factory() : nullptr;
}

const CRTTI* CRTTI::FindClass(const char* pszClassName)
{
    const std::vector<const CRTTI*>& classes = GetRegistry();
    const auto found = std::find_if(classes.begin(),
                                    classes.end(),
                                    [pszClassName](const CRTTI* pClass)
                                    { return pClass->m_ClassName == OrEmpty(pszClassName); });
    return found != classes.end() ? *found : nullptr;
}

std::vector<const CRTTI*> CRTTI::GetClasses()
{
    return GetRegistry();
}
