#include "engine/reflection/PointerText.h"
#include "host/NumberText.h"
#include "host/ReflectionFields.h"

namespace
{

using PointerList = std::vector<CRTTIObject*>;

} // namespace

CRTTIFieldPointerList::CRTTIFieldPointerList(FAddress pAddress, const CRTTI* pClass)
    : CRTTIField(RTTI_POINTER_LIST, pAddress)
    , m_Class(pClass)
{
}

std::string CRTTIFieldPointerList::ToString(const CRTTIObject* pObject) const
{
    std::string strText;
    if (pObject != nullptr)
    {
        for (const CRTTIObject* pElement : *static_cast<const PointerList*>(GetAddress(pObject)))
        {
            strText += strText.empty() ? "" : " ";
            AppendPointer(strText, pElement);
        }
    }
    return strText;
}

bool CRTTIFieldPointerList::Parse(CRTTIObject* pObject, const char* pszText)
{
    PointerList list;
    std::string_view strRest = pszText;
    for (std::string_view strWord = TakeWord(strRest); !strWord.empty();
         strWord = TakeWord(strRest))
    {
        list.push_back(nullptr);
        if (!ParsePointer(strWord, m_Class, list.back()))
        {
            return false;
        }
    }
    // Stored at the end, so that a text with one unknown object changes nothing.
    *static_cast<PointerList*>(GetAddress(pObject)) = std::move(list);
    return true;
}
