#include "engine/reflection/EditFlags.h"
#include "engine/reflection/FieldBinary.h"
#include "host/Reflection.h"

CRTTIField::CRTTIField(ERTTIType eType, FAddress pAddress)
    : m_Type(eType)
    , m_Address(pAddress)
{
}

CRTTIField::~CRTTIField() = default;

bool CRTTIField::Initialize(const char* pszName, const char* pszEditFlags)
{
    SEditFlags parsed;
    if (pszName == nullptr || *pszName == '\0' || pszEditFlags == nullptr ||
        !ParseEditFlags(pszEditFlags, parsed))
    {
        return false;
    }
    m_Name = pszName;
    m_Description = parsed.strDescription;
    m_Category = parsed.strCategory;
    m_Flags = parsed.uFlags;
    m_EditFlags = parsed.uEditFlags;
    m_Min = parsed.fMin;
    m_Max = parsed.fMax;
    m_Step = parsed.fStep;
    m_Precision = parsed.iPrecision;
    return true;
}

bool CRTTIField::FromString(CRTTIObject* pObject, const char* pszText)
{
    if (pObject == nullptr || pszText == nullptr || !Parse(pObject, pszText))
    {
        return false;
    }
    pObject->OnFieldChanged(this);
    return true;
}

bool CRTTIField::Save(fs::file& file, const CRTTIObject* pObject) const
{
    return pObject != nullptr && SaveFieldValue(file, m_Type, GetAddress(pObject));
}

bool CRTTIField::Load(fs::file& file, CRTTIObject* pObject)
{
    if (pObject == nullptr)
    {
        return false;
    }
    if (!LoadFieldValue(file, *this, GetAddress(pObject)))
    {
        pObject->OnFailedToLoadField(this);
        return false;
    }
    return true;
}

const void* CRTTIField::GetAddress(const CRTTIObject* pObject) const
{
    // The address routine only computes, it does not write.
    return m_Address(const_cast<CRTTIObject*>(pObject));
}
