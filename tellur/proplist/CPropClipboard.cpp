#include "tellur/proplist/CPropClipboard.h"

#include "host/EngineHost.h"
#include "host/Reflection.h"
#include "tellur/proplist/PropClasses.h"

#include <algorithm>

namespace
{

// One pointer: a pointer field, or an element of a list.
bool IsSingle(const CRTTIField& field, int iElement)
{
    return field.GetType() == RTTI_POINTER || iElement >= 0;
}

} // namespace

void CPropClipboard::Copy(const SPropRow& row)
{
    m_pField = row.pField;
    m_iElement = row.iElement;
    m_Text = row.strText;
    m_Pointed.clear();
    if (GetPointedClass(*row.pField) != nullptr)
    {
        for (const CRTTIObject* pObject : row.FindTargets())
        {
            m_Pointed.push_back(pObject->GetObjectId());
        }
    }
}

bool CPropClipboard::Fits(const SPropRow& row, IPropListCtrlUser& user) const
{
    const CRTTIField& target = *row.pField;
    if (m_pField == nullptr || (target.GetFlags() & RTTI_FIELD_READONLY) != 0 || !row.IsEditable())
    {
        return false;
    }
    const CRTTI* pClass = GetPointedClass(target);
    if (pClass == nullptr || GetPointedClass(*m_pField) == nullptr)
    {
        return m_pField->GetType() == target.GetType() && (m_iElement < 0) == (row.iElement < 0);
    }
    if (IsSingle(*m_pField, m_iElement) != IsSingle(target, row.iElement))
    {
        return false;
    }
    EngineHost* pEngine = user.GetEngineHost();
    return std::all_of(m_Pointed.begin(),
                       m_Pointed.end(),
                       [&](int32_t iId)
                       {
                           const CRTTIObject* pObject =
                               pEngine != nullptr ? pEngine->FindObjectById(iId) : nullptr;
                           return pObject != nullptr && pObject->FromClass(pClass);
                       });
}
