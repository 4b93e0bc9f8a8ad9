#include "tellur/proplist/CPropValueWriter.h"

#include "host/Log.h"
#include "host/Reflection.h"
#include "tellur/proplist/PropClasses.h"
#include "tellur/proplist/PropText.h"

void CPropValueWriter::Write(IPropListCtrlUser& user,
                             const SPropRow& row,
                             const std::string& strText)
{
    CRTTIField* pField = row.pField;
    const PropObjects objects = row.objects; // the row may go on the way
    m_iWritten = row.iElement;
    // The name of a class stands for a new object, which is no text to put others around.
    const bool bClass =
        GetPointedClass(*pField) != nullptr && CRTTI::FindClass(strText.c_str()) != nullptr;
    if (m_iWritten < 0 || bClass)
    {
        user.SetFieldValue(pField, strText.c_str(), objects);
    }
    else
    {
        for (CRTTIObject* pObject : objects)
        {
            const std::string strWhole = MakeWholeText(*pField, m_iWritten, pObject, strText);
            user.SetFieldValue(pField, strWhole.c_str(), {pObject});
        }
    }
    m_iWritten = -1;
}

bool CPropValueWriter::HandleFieldEdit(const PropObjects& objects,
                                       CRTTIField* pField,
                                       const char* pszValue,
                                       int iElement)
{
    if (pField == nullptr || pszValue == nullptr)
    {
        return false;
    }
    bool bAll = true;
    for (CRTTIObject* pObject : objects)
    {
        bAll = WriteOne(*pObject, *pField, pszValue, iElement) && bAll;
    }
    return bAll;
}

bool CPropValueWriter::WriteOne(CRTTIObject& object,
                                CRTTIField& field,
                                const std::string& strText,
                                int iElement)
{
    const CRTTI* pPointed = GetPointedClass(field);
    const CRTTI* pClass = pPointed != nullptr ? CRTTI::FindClass(strText.c_str()) : nullptr;
    if (pClass != nullptr && pClass->IsDerivedFrom(pPointed))
    {
        std::unique_ptr<CRTTIObject> pNew(pClass->Create());
        // A user's SetFieldValue does not tell the element, so Write has noted it.
        const int iAdopted = iElement >= 0 ? iElement : m_iWritten;
        if (pNew != nullptr && object.AdoptObject(&field, iAdopted, pNew.get()))
        {
            static_cast<void>(pNew.release()); // the object's
            object.OnFieldChanged(&field);
            return true;
        }
        LogR("[CPropListCtrl::HandleFieldEdit] %s.%s takes no new %s\n",
             object.GetClassNameA(),
             field.GetName(),
             strText.c_str());
        return false;
    }
    const std::string strWhole = MakeWholeText(field, iElement, &object, strText);
    if (!field.FromString(&object, ClampText(field, strWhole).c_str()))
    {
        LogR("[CPropListCtrl::HandleFieldEdit] \"%s\" is no value for %s.%s\n",
             strText.c_str(),
             object.GetClassNameA(),
             field.GetName());
        return false;
    }
    return true;
}
