#include "engine/reflection/ObjectFinder.h"
#include "engine/reflection/PointerText.h"
#include "host/NumberText.h"
#include "host/ReflectionFields.h"

namespace
{

constexpr std::string_view NULL_TEXT = "null";

} // namespace

void AppendPointer(std::string& strText, const CRTTIObject* pObject)
{
    if (pObject == nullptr)
    {
        strText += NULL_TEXT;
        return;
    }
    AppendNumber(strText, pObject->GetObjectId());
}

bool ParsePointer(std::string_view strText, const CRTTI* pClass, CRTTIObject*& pObject)
{
    const std::string_view strId = TrimBlanks(strText);
    if (strId == NULL_TEXT)
    {
        pObject = nullptr;
        return true;
    }
    int32_t iId = 0;
    CRTTIObject* pFound = ParseNumber(strId, iId) ? FindObjectOfClass(iId, pClass) : nullptr;
    if (pFound == nullptr)
    {
        return false;
    }
    pObject = pFound;
    return true;
}

CRTTIFieldPointer::CRTTIFieldPointer(FAddress pAddress, const CRTTI* pClass)
    : CRTTIField(RTTI_POINTER, pAddress)
    , m_Class(pClass)
{
}

std::string CRTTIFieldPointer::ToString(const CRTTIObject* pObject) const
{
    std::string strText;
    if (pObject != nullptr)
    {
        AppendPointer(strText, *static_cast<CRTTIObject* const*>(GetAddress(pObject)));
    }
    return strText;
}

bool CRTTIFieldPointer::Parse(CRTTIObject* pObject, const char* pszText)
{
    return ParsePointer(pszText, m_Class, *static_cast<CRTTIObject**>(GetAddress(pObject)));
}
