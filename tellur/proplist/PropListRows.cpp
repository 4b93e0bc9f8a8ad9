// The tree of rows: which fields there are, and their parts.

#include "host/Reflection.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"
#include "tellur/proplist/CPropListCtrl.h"
#include "tellur/proplist/PropClasses.h"
#include "tellur/proplist/PropText.h"

#include <algorithm>
#include <cstdio>

namespace
{

constexpr const char COMPONENTS[] = "xyzwrgba";
constexpr int FIRST_COLOR_COMPONENT = 4;
constexpr int MATRIX_SIDE = 4;

// The fields that all objects have, most derived class first, by category in the order met.
std::vector<std::pair<std::string, std::vector<CRTTIField*>>>
GroupFields(const PropObjects& objects)
{
    std::vector<std::pair<std::string, std::vector<CRTTIField*>>> groups;
    for (const CRTTI* pClass = objects.front()->GetRTTI(); pClass != nullptr;
         pClass = pClass->GetBase())
    {
        const bool bCommon = std::all_of(objects.begin(),
                                         objects.end(),
                                         [pClass](const CRTTIObject* pObject)
                                         { return pObject->FromClass(pClass); });
        for (CRTTIField* pField : bCommon ? pClass->GetFields() : std::vector<CRTTIField*>())
        {
            const std::string strCategory = pField->GetCategory();
            const auto found =
                std::find_if(groups.begin(),
                             groups.end(),
                             [&](const auto& group) { return group.first == strCategory; });
            if (found == groups.end())
            {
                groups.push_back({strCategory, {pField}});
            }
            else
            {
                found->second.push_back(pField);
            }
        }
    }
    return groups;
}

} // namespace

bool CPropListCtrl::IsShown(const CRTTIField& field) const
{
    const bool bHidden = (field.GetEditFlags() & RTTI_EDIT_HIDDEN) != 0 && !m_bShowHidden;
    return (field.GetFlags() & (RTTI_FIELD_EDIT | RTTI_FIELD_READONLY)) != 0 && !bHidden;
}

void CPropListCtrl::BuildRows()
{
    m_Path.clear();
    if (!m_Objects.empty())
    {
        AddFields(m_Objects, 0, "");
    }
    for (size_t i = 0; i + 1 < m_Rows.size(); ++i)
    {
        m_Rows[i]->bParent = m_Rows[i + 1]->iDepth > m_Rows[i]->iDepth;
    }
}

SPropRow& CPropListCtrl::AddRow(CRTTIField* pField, int iElement, const PropObjects& objects)
{
    m_Rows.push_back(std::make_unique<SPropRow>());
    SPropRow& row = *m_Rows.back();
    row.pField = pField;
    row.iElement = iElement;
    row.objects = objects;
    return row;
}

void CPropListCtrl::AddFields(const PropObjects& objects, int iDepth, const std::string& strKey)
{
    for (CRTTIObject* pObject : objects)
    {
        m_Path.insert(pObject);
    }
    for (const auto& [strCategory, fields] : GroupFields(objects))
    {
        const bool bAny = std::any_of(
            fields.begin(), fields.end(), [this](const auto* pField) { return IsShown(*pField); });
        if (!bAny)
        {
            continue;
        }
        int iFieldDepth = iDepth;
        std::string strFieldKey = strKey;
        if (!strCategory.empty()) // what has no category stands beside the categories
        {
            SPropRow& row = AddRow(nullptr, -1, objects);
            row.strName = strCategory;
            row.strKey = strKey;
            row.strKey.append("/").append(strCategory);
            row.iDepth = iDepth;
            row.bOpen = m_Toggled.count(row.strKey) == 0;
            strFieldKey = row.strKey;
            ++iFieldDepth;
        }
        for (CRTTIField* pField : fields)
        {
            if (IsShown(*pField))
            {
                AddField(*pField, objects, iFieldDepth, strFieldKey);
            }
        }
    }
    for (CRTTIObject* pObject : objects)
    {
        m_Path.erase(pObject);
    }
}

void CPropListCtrl::AddField(CRTTIField& field,
                             const PropObjects& objects,
                             int iDepth,
                             const std::string& strKey)
{
    SPropRow& row = AddRow(&field, -1, objects);
    const bool bDescription = (field.GetEditFlags() & RTTI_EDIT_DESCRIPTION) != 0;
    row.strName = bDescription ? field.GetDescription() : field.GetName();
    if (const CRTTI* pClass = GetPointedClass(field))
    {
        const bool bList = field.GetType() == RTTI_POINTER_LIST;
        row.strName += std::string("<") + pClass->GetClassNameA() + (bList ? "[]>" : ">");
    }
    row.strKey = strKey + "." + field.GetName();
    row.iDepth = iDepth;
    // The sixteen rows of a matrix are in the way until somebody asks for them.
    row.bOpen = (field.GetType() == RTTI_MATRIX) == (m_Toggled.count(row.strKey) > 0);
    for (CRTTIObject* pObject : objects)
    {
        const PropObjects pointed = GetPointed(field, pObject);
        row.pointed.insert(row.pointed.end(), pointed.begin(), pointed.end());
    }
    ReadRow(row);
    const CEnumInfo* pInfo = field.GetEnumInfo();
    if (field.GetType() == RTTI_FLAGS && pInfo != nullptr)
    {
        AddParts(row, static_cast<int>(pInfo->GetInfo().size()));
    }
    else if (field.GetType() == RTTI_POINTER_LIST && objects.size() == 1)
    {
        AddParts(row, static_cast<int>(row.pointed.size()));
    }
    else if (field.GetType() == RTTI_POINTER)
    {
        AddPointed(row);
    }
    else
    {
        AddParts(row, GetComponentCount(field));
    }
}

std::string
CPropListCtrl::GetPartName(const CRTTIField& field, int iPart, const PropObjects& objects) const
{
    const auto iIndex = static_cast<size_t>(iPart);
    switch (field.GetType())
    {
    case RTTI_FLAGS:
        return field.GetEnumInfo()->GetInfo()[iIndex].strName;
    case RTTI_POINTER_LIST:
    {
        const CRTTIObject* pTarget = GetPointed(field, objects.front())[iIndex];
        return pTarget != nullptr && m_pUser != nullptr
                   ? m_pUser->GetObjectName(pTarget, pTarget->GetObjectId())
                   : PROP_NULL;
    }
    case RTTI_MATRIX:
    {
        char szName[32];
        std::snprintf(szName, sizeof(szName), "[%d,%d]", iPart / MATRIX_SIDE, iPart % MATRIX_SIDE);
        return szName;
    }
    default:
    {
        const bool bColor =
            (field.GetEditFlags() & RTTI_EDIT_COLOR) != 0 && field.GetType() != RTTI_VEC2;
        return std::string(1, COMPONENTS[iPart + (bColor ? FIRST_COLOR_COMPONENT : 0)]);
    }
    }
}

void CPropListCtrl::AddParts(SPropRow& row, int nParts)
{
    CRTTIField* pField = row.pField;
    const PropObjects objects = row.objects;
    const std::string strKey = row.strKey;
    const int iDepth = row.iDepth + 1;
    for (int i = 0; i < nParts; ++i)
    {
        SPropRow& part = AddRow(pField, i, objects);
        part.strName = GetPartName(*pField, i, objects);
        part.strKey = strKey + "#" + std::to_string(i);
        part.iDepth = iDepth;
        ReadRow(part);
    }
}

// The fields of what the pointers point to, when all of them do and none leads back.
void CPropListCtrl::AddPointed(SPropRow& row)
{
    const bool bCircle = std::any_of(row.pointed.begin(),
                                     row.pointed.end(),
                                     [this](const auto* p) { return m_Path.count(p) > 0; });
    if (!row.pointed.empty() && row.pointed.size() == row.objects.size() && !bCircle)
    {
        AddFields(PropObjects(row.pointed), row.iDepth + 1, std::string(row.strKey));
    }
}

bool CPropListCtrl::IsTreeStale() const
{
    for (const auto& pRow : m_Rows)
    {
        if (pRow->pField == nullptr || pRow->iElement >= 0 ||
            GetPointedClass(*pRow->pField) == nullptr)
        {
            continue;
        }
        PropObjects pointed;
        for (CRTTIObject* pObject : pRow->objects)
        {
            const PropObjects own = GetPointed(*pRow->pField, pObject);
            pointed.insert(pointed.end(), own.begin(), own.end());
        }
        if (pointed != pRow->pointed)
        {
            return true; // rows behind this one may be of objects that are gone
        }
    }
    return false;
}

SPropRow* CPropListCtrl::FindRow(const std::string& strKey) const
{
    const auto found = std::find_if(m_Rows.begin(),
                                    m_Rows.end(),
                                    [&strKey](const auto& pRow) { return pRow->strKey == strKey; });
    return found != m_Rows.end() ? found->get() : nullptr;
}

void CPropListCtrl::Rebuild()
{
    const bool bFocus = HasFocus();
    const std::string strEdited = m_pEdited != nullptr ? m_pEdited->strKey : "";
    m_pEdited = nullptr;
    m_bRebuildLater = false;
    for (const auto& pRow : m_Rows)
    {
        for (const auto& pEditor : pRow->editors)
        {
            if (pEditor != nullptr)
            {
                pEditor->Abandon();
            }
        }
    }
    if (bFocus)
    {
        SetFocus(); // here rather than wherever the window system puts it
    }
    for (const auto& pRow : m_Rows)
    {
        for (const auto& pEditor : pRow->editors)
        {
            if (pEditor != nullptr)
            {
                pEditor->GetWindow().DestroyWindow();
            }
        }
    }
    // An editor may be the very one that this comes from, with a dialog of its own still open.
    for (auto& pRow : m_Rows)
    {
        if (std::any_of(pRow->editors.begin(),
                        pRow->editors.end(),
                        [](const auto& pEditor) { return pEditor != nullptr; }))
        {
            m_Dead.push_back(std::move(pRow));
        }
    }
    m_Rows.clear();
    BuildRows();
    ShowRows();
    SPropRow* pEdited = FindRow(strEdited);
    if (pEdited != nullptr && pEdited->iItem >= 0)
    {
        SelectItem(pEdited->iItem);
        BeginEdit(pEdited);
    }
}
