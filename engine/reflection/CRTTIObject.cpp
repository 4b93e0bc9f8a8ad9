#include "host/Reflection.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{

// The member when the field has the type and belongs to the object's class or one of its bases;
// null otherwise, since a field of another class would point anywhere.
template <class TValue>
const TValue* FindMember(const CRTTIObject& object, const CRTTIField* pField, ERTTIType eType)
{
    if (pField == nullptr || pField->GetType() != eType)
    {
        return nullptr;
    }
    for (const CRTTI* pClass = object.GetRTTI(); pClass != nullptr; pClass = pClass->GetBase())
    {
        const std::vector<CRTTIField*>& fields = pClass->GetFields();
        if (std::find(fields.begin(), fields.end(), pField) != fields.end())
        {
            return static_cast<const TValue*>(pField->GetAddress(&object));
        }
    }
    return nullptr;
}

template <class TValue>
bool GetMember(const CRTTIObject& object, const CRTTIField* pField, ERTTIType eType, TValue& value)
{
    const TValue* pMember = FindMember<TValue>(object, pField, eType);
    if (pMember == nullptr)
    {
        return false;
    }
    value = *pMember;
    return true;
}

template <class TValue>
bool SetMember(CRTTIObject& object, CRTTIField* pField, ERTTIType eType, const TValue& value)
{
    if (FindMember<TValue>(object, pField, eType) == nullptr ||
        (pField->GetFlags() & RTTI_FIELD_READONLY) != 0)
    {
        return false;
    }
    *static_cast<TValue*>(pField->GetAddress(&object)) = value;
    object.OnFieldChanged(pField);
    return true;
}

} // namespace

CRTTIField* CRTTIObject::FindField(const char* pszName) const
{
    for (const CRTTI* pClass = GetRTTI(); pClass != nullptr && pszName != nullptr;
         pClass = pClass->GetBase())
    {
        for (CRTTIField* pField : pClass->GetFields())
        {
            if (std::strcmp(pField->GetName(), pszName) == 0)
            {
                return pField;
            }
        }
    }
    return nullptr;
}

const char* CRTTIObject::GetClassNameA() const
{
    return GetRTTI()->GetClassNameA();
}

bool CRTTIObject::IsExactClass(const CRTTI* pClass) const
{
    return GetRTTI() == pClass;
}

bool CRTTIObject::FromClass(const CRTTI* pClass) const
{
    return GetRTTI()->IsDerivedFrom(pClass);
}

bool CRTTIObject::IsExactEngineClass(int32_t iEngineClass) const
{
    return GetRTTI()->GetEngineClass() == iEngineClass;
}

bool CRTTIObject::FromEngineClass(int32_t iEngineClass) const
{
    const CRTTI* pClass = GetRTTI();
    while (pClass != nullptr && pClass->GetEngineClass() != iEngineClass)
    {
        pClass = pClass->GetBase();
    }
    return pClass != nullptr;
}

bool CRTTIObject::SaveFields(fs::file& file) const
{
    // The object's class comes before its bases, and LoadFields goes the same way: the file says
    // nothing of fields but their values.
    for (const CRTTI* pClass = GetRTTI(); pClass != nullptr; pClass = pClass->GetBase())
    {
        for (const CRTTIField* pField : pClass->GetFields())
        {
            if (!pField->Save(file, this))
            {
                return false;
            }
        }
    }
    return true;
}

bool CRTTIObject::LoadFields(fs::file& file)
{
    for (const CRTTI* pClass = GetRTTI(); pClass != nullptr; pClass = pClass->GetBase())
    {
        for (CRTTIField* pField : pClass->GetFields())
        {
            if (!pField->Load(file, this))
            {
                return false;
            }
        }
    }
    return true;
}

bool CRTTIObject::GetFieldIntEditor(const CRTTIField* pField, int32_t& iValue) const
{
    return GetMember(*this, pField, RTTI_INT, iValue);
}

bool CRTTIObject::SetFieldIntEditor(CRTTIField* pField, int32_t iValue)
{
    return SetMember(*this, pField, RTTI_INT, iValue);
}

bool CRTTIObject::GetFieldFloatEditor(const CRTTIField* pField, float& fValue) const
{
    return GetMember(*this, pField, RTTI_FLOAT, fValue);
}

bool CRTTIObject::SetFieldFloatEditor(CRTTIField* pField, float fValue)
{
    return std::isfinite(fValue) && SetMember(*this, pField, RTTI_FLOAT, fValue);
}

bool CRTTIObject::GetFieldDoubleEditor(const CRTTIField* pField, double& fValue) const
{
    return GetMember(*this, pField, RTTI_DOUBLE, fValue);
}

bool CRTTIObject::SetFieldDoubleEditor(CRTTIField* pField, double fValue)
{
    return std::isfinite(fValue) && SetMember(*this, pField, RTTI_DOUBLE, fValue);
}

bool CRTTIObject::GetFieldBoolEditor(const CRTTIField* pField, bool& bValue) const
{
    return GetMember(*this, pField, RTTI_BOOL, bValue);
}

bool CRTTIObject::SetFieldBoolEditor(CRTTIField* pField, bool bValue)
{
    return SetMember(*this, pField, RTTI_BOOL, bValue);
}

bool CRTTIObject::GetFieldStringEditor(const CRTTIField* pField, std::string& strValue) const
{
    return GetMember(*this, pField, RTTI_STRING, strValue);
}

bool CRTTIObject::SetFieldStringEditor(CRTTIField* pField, const char* pszValue)
{
    return pszValue != nullptr && SetMember(*this, pField, RTTI_STRING, std::string(pszValue));
}
