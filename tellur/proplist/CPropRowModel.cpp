#include "tellur/proplist/CPropRowModel.h"

#include "host/Reflection.h"
#include "tellur/proplist/CPropRowBuilder.h"
#include "tellur/proplist/IPropRowView.h"
#include "tellur/proplist/PropClasses.h"
#include "tellur/proplist/PropText.h"

#include <algorithm>

CPropRowModel::CPropRowModel(IPropRowView& view)
    : m_View(view)
{
}

void CPropRowModel::SetObjects(const PropObjects& objects)
{
    std::vector<const CRTTI*> classes;
    for (const CRTTIObject* pObject : objects)
    {
        classes.push_back(pObject->GetRTTI());
    }
    // An object may have gone and another one stand at its address.
    if (objects == m_Objects && classes == m_Classes)
    {
        RefreshValues();
        return;
    }
    m_Objects = objects;
    m_Classes = std::move(classes);
    if (m_nWriting > 0)
    {
        // A value is on its way out of a row, which has to live until it is written.
        m_bRowsLater = true;
        return;
    }
    MakeRows();
}

void CPropRowModel::SetShowHidden(bool bShow)
{
    if (m_bShowHidden != bShow)
    {
        m_bShowHidden = bShow;
        MakeRows();
    }
}

void CPropRowModel::RefreshValues()
{
    if (m_nWriting > 0)
    {
        m_bReadLater = true;
        return;
    }
    // Pointers may lead elsewhere by now, and rows below them may be of objects that are gone.
    if (IsStale())
    {
        MakeRows();
        return;
    }
    for (const auto& pRow : m_Rows)
    {
        ReadRow(*pRow, nullptr);
    }
}

SPropRow* CPropRowModel::GetShown(int iItem) const
{
    const bool bThere = iItem >= 0 && iItem < GetShownCount();
    return bThere ? m_Shown[static_cast<size_t>(iItem)] : nullptr;
}

SPropRow* CPropRowModel::FindRow(const std::string& strKey) const
{
    const auto found = std::find_if(m_Rows.begin(),
                                    m_Rows.end(),
                                    [&strKey](const auto& pRow) { return pRow->strKey == strKey; });
    return found != m_Rows.end() ? found->get() : nullptr;
}

SPropRow* CPropRowModel::FindAgain(const SPropRow& row) const
{
    const auto found = std::find_if(
        m_Rows.begin(), m_Rows.end(), [&row](const auto& pRow) { return pRow.get() == &row; });
    return found != m_Rows.end() ? found->get() : FindRow(row.strKey);
}

void CPropRowModel::SetOpen(SPropRow& row, bool bOpen)
{
    if (row.bParent && row.bOpen != bOpen)
    {
        row.bOpen = bOpen;
        if (m_Toggled.erase(row.strKey) == 0)
        {
            m_Toggled.insert(row.strKey);
        }
        FindShown();
    }
}

std::string CPropRowModel::GetShownText(const SPropRow& row) const
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

// While a user writes a value, SetObjects and RefreshValues are only noted, because the row is
// still at work. They are made up for afterwards.
void CPropRowModel::SetValue(SPropRow& row,
                             const std::string& strText,
                             const CPropInPlaceCtrl* pSender)
{
    if (row.pField == nullptr)
    {
        return;
    }
    const bool bWrite = row.strText != strText || row.bDifferent;
    m_bReadLater = false;
    if (bWrite)
    {
        row.strText = strText;
        ++m_nWriting;
        if (m_pUser != nullptr)
        {
            m_Writer.Write(*m_pUser, row, strText);
        }
        --m_nWriting;
        if (m_bRowsLater || IsStale())
        {
            MakeRows();
            return;
        }
    }
    ReadRow(row, pSender);
    for (const auto& pOther : m_Rows)
    {
        // A field has several rows where its parts have some, too.
        const bool bSame = pOther->pField == row.pField && pOther->objects == row.objects;
        if (bWrite && pOther.get() != &row && (bSame || m_bReadLater))
        {
            ReadRow(*pOther, nullptr);
        }
    }
}

void CPropRowModel::SetWholeField(const SPropRow& row, const std::string& strText)
{
    if (m_pUser != nullptr && row.pField != nullptr)
    {
        // A copy of the objects, because the row may go on the way.
        m_pUser->SetFieldValue(row.pField, strText.c_str(), PropObjects(row.objects));
        RefreshValues();
    }
}

void CPropRowModel::RemoveElement(const SPropRow& row)
{
    std::vector<std::string> words = SplitWords(row.pField->ToString(row.objects.front()));
    if (static_cast<size_t>(row.iElement) < words.size())
    {
        words.erase(words.begin() + row.iElement);
        SetWholeField(row, JoinWords(words));
    }
}

bool CPropRowModel::HandleFieldEdit(const PropObjects& objects,
                                    CRTTIField* pField,
                                    const char* pszValue,
                                    int iElement)
{
    return m_Writer.HandleFieldEdit(objects, pField, pszValue, iElement);
}

bool CPropRowModel::IsStale() const
{
    return std::any_of(m_Rows.begin(),
                       m_Rows.end(),
                       [](const auto& pRow)
                       {
                           const bool bPointer = pRow->pField != nullptr && pRow->iElement < 0 &&
                                                 GetPointedClass(*pRow->pField) != nullptr;
                           return bPointer && pRow->FindPointed() != pRow->pointed;
                       });
}

void CPropRowModel::MakeRows()
{
    m_bRowsLater = false;
    m_Rows = CPropRowBuilder(m_Toggled, m_bShowHidden, m_pUser).Build(m_Objects);
    FindShown();
    m_View.OnRowsMade();
}

void CPropRowModel::FindShown()
{
    m_Shown.clear();
    int iClosedDepth = -1; // rows deeper than this are hidden; -1: none is
    for (const auto& pRow : m_Rows)
    {
        pRow->iItem = -1;
        if (iClosedDepth >= 0 && pRow->iDepth > iClosedDepth)
        {
            continue;
        }
        iClosedDepth = pRow->bParent && !pRow->bOpen ? pRow->iDepth : -1;
        pRow->iItem = GetShownCount();
        m_Shown.push_back(pRow.get());
    }
}

void CPropRowModel::ReadRow(SPropRow& row, const CPropInPlaceCtrl* pSender)
{
    row.ReadValue();
    m_View.OnValueRead(row, pSender);
}
