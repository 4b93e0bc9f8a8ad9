// Values: what rows show and how a new value reaches the objects.

#include "host/Log.h"
#include "host/NumberText.h"
#include "host/Reflection.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"
#include "tellur/proplist/CPropListCtrl.h"
#include "tellur/proplist/PropClasses.h"
#include "tellur/proplist/PropText.h"

#include <cmath>

void CPropListCtrl::ReadRow(SPropRow& row) const
{
    if (row.pField == nullptr)
    {
        return;
    }
    row.strText = ::GetValueText(*row.pField, row.iElement, row.objects.front()).value_or("");
    row.bDifferent = false;
    for (const CRTTIObject* pObject : row.objects)
    {
        row.bDifferent =
            row.bDifferent ||
            ::GetValueText(*row.pField, row.iElement, pObject).value_or("") != row.strText;
    }
}

std::string CPropListCtrl::GetShownText(const SPropRow& row) const
{
    if (row.pField == nullptr)
    {
        return {};
    }
    if (row.bDifferent)
    {
        return PROP_DIFFERENT_VALUES;
    }
    return ::GetShownText(*row.pField, row.iElement, row.objects.front(), m_pUser);
}

void CPropListCtrl::RefreshRow(SPropRow& row, const CPropInPlaceCtrl* pSender)
{
    ReadRow(row);
    const int iItem = row.iItem;
    const std::string strShown = GetShownText(row);
    if (iItem >= 0 && GetCellText(iItem, VALUE_COLUMN) != strShown)
    {
        SetCellText(iItem, VALUE_COLUMN, strShown.c_str());
    }
    for (const auto& pEditor : row.editors)
    {
        if (pEditor != nullptr && pEditor.get() != pSender)
        {
            pEditor->SetValueText(row.strText);
        }
    }
}

void CPropListCtrl::RefreshValues()
{
    if (m_nApplying > 0)
    {
        m_bRefreshLater = true;
        return;
    }
    if (IsTreeStale())
    {
        Rebuild();
        return;
    }
    for (const auto& pRow : m_Rows)
    {
        RefreshRow(*pRow, nullptr);
    }
}

void CPropListCtrl::ApplyValue(SPropRow& row, const char* pszText, const CPropInPlaceCtrl* pSender)
{
    if (pszText == nullptr || row.pField == nullptr)
    {
        return;
    }
    const bool bWasDifferent = row.bDifferent;
    const bool bWrite = row.strText != pszText || bWasDifferent;
    m_bRefreshLater = false;
    if (bWrite)
    {
        row.strText = pszText;
        ++m_nApplying;
        WriteValue(row, pszText);
        --m_nApplying;
        if (m_bRebuildLater || IsTreeStale())
        {
            Rebuild();
            return;
        }
    }
    RefreshRow(row, pSender);
    if (bWrite && bWasDifferent && &row == m_pEdited)
    {
        ChooseEditors(row);
    }
    for (const auto& pOther : m_Rows)
    {
        const bool bSame = pOther->pField == row.pField && pOther->objects == row.objects;
        if (bWrite && pOther.get() != &row && (bSame || m_bRefreshLater))
        {
            RefreshRow(*pOther, nullptr);
        }
    }
}

// Parts are written with the rest of their object's value around them.
void CPropListCtrl::WriteValue(const SPropRow& row, const std::string& strText)
{
    if (m_pUser == nullptr)
    {
        return;
    }
    CRTTIField* pField = row.pField;
    const PropObjects objects = row.objects; // the row may go on the way
    m_iWritten = row.iElement;
    const bool bClass =
        GetPointedClass(*pField) != nullptr && CRTTI::FindClass(strText.c_str()) != nullptr;
    if (m_iWritten < 0 || bClass)
    {
        m_pUser->SetFieldValue(pField, strText.c_str(), objects);
    }
    else
    {
        for (CRTTIObject* pObject : objects)
        {
            const std::string strWhole = MakeWholeText(*pField, m_iWritten, pObject, strText);
            m_pUser->SetFieldValue(pField, strWhole.c_str(), {pObject});
        }
    }
    m_iWritten = -1;
}

bool CPropListCtrl::HandleFieldEdit(const PropObjects& objects,
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

bool CPropListCtrl::WriteOne(CRTTIObject& object,
                             CRTTIField& field,
                             const std::string& strText,
                             int iElement)
{
    const CRTTI* pPointed = GetPointedClass(field);
    const CRTTI* pClass = pPointed != nullptr ? CRTTI::FindClass(strText.c_str()) : nullptr;
    if (pClass != nullptr && pClass->IsDerivedFrom(pPointed))
    {
        std::unique_ptr<CRTTIObject> pNew(pClass->Create());
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

std::string CPropListCtrl::ParseText(const SPropRow& row, const std::string& strTyped) const
{
    return m_Hooks.parse ? m_Hooks.parse(*row.pField, strTyped) : PutPoints(*row.pField, strTyped);
}

std::string CPropListCtrl::FormatText(const SPropRow& row, const std::string& strText) const
{
    return m_Hooks.format ? m_Hooks.format(*row.pField, strText) : strText;
}

std::string CPropListCtrl::FormatNumber(const SPropRow& row, double fValue) const
{
    if (m_Hooks.format)
    {
        return m_Hooks.format(*row.pField, ::FormatNumber(fValue, 6));
    }
    if (IsInteger(*row.pField))
    {
        return std::to_string(std::llround(fValue));
    }
    if (GetComponentCount(*row.pField) == 0 || row.iElement >= 0)
    {
        return {};
    }
    // All components of a vector move together.
    std::vector<std::string> words = SplitWords(row.strText);
    double fFirst = 0.0;
    const bool bFirst = !words.empty() && ParseNumber(words[0], fFirst);
    for (std::string& strWord : words)
    {
        double fWord = 0.0;
        ParseNumber(strWord, fWord);
        strWord =
            ::FormatNumber(fWord + (bFirst ? fValue - fFirst : 0.0), row.pField->GetPrecision());
    }
    return JoinWords(words);
}

bool CPropListCtrl::MayEdit(const SPropRow& row) const
{
    return !m_Hooks.mayEdit || m_Hooks.mayEdit(*row.pField);
}
