#include "tellur/proplist/CPropRowBuilder.h"

#include "host/Reflection.h"
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

CPropRowBuilder::CPropRowBuilder(const std::set<std::string>& toggled,
                                 bool bHidden,
                                 IPropListCtrlUser* pUser)
    : m_Toggled(toggled)
    , m_bHidden(bHidden)
    , m_pUser(pUser)
{
}

bool CPropRowBuilder::HasRow(const CRTTIField& field) const
{
    const bool bHidden = (field.GetEditFlags() & RTTI_EDIT_HIDDEN) != 0 && !m_bHidden;
    return (field.GetFlags() & (RTTI_FIELD_EDIT | RTTI_FIELD_READONLY)) != 0 && !bHidden;
}

PropRows CPropRowBuilder::Build(const PropObjects& objects)
{
    if (!objects.empty())
    {
        AddFields(objects, 0, "");
    }
    for (size_t i = 0; i + 1 < m_Rows.size(); ++i)
    {
        m_Rows[i]->bParent = m_Rows[i + 1]->iDepth > m_Rows[i]->iDepth;
    }
    return std::move(m_Rows);
}

SPropRow& CPropRowBuilder::AddRow(CRTTIField* pField, int iElement, const PropObjects& objects)
{
    // Each row is an object of its own, so a reference stays good while others are added.
    m_Rows.push_back(std::make_shared<SPropRow>());
    SPropRow& row = *m_Rows.back();
    row.pField = pField;
    row.iElement = iElement;
    row.objects = objects;
    return row;
}

// A row's key is the way to it: "/" before a category, "." before a field, "#" before a part. So it
// is the same for other objects with the same fields.
void CPropRowBuilder::AddFields(const PropObjects& objects, int iDepth, const std::string& strKey)
{
    for (CRTTIObject* pObject : objects)
    {
        // What lies on the way here: a pointer back to it is not followed.
        m_Path.insert(pObject);
    }
    for (const auto& [strCategory, fields] : GroupFields(objects))
    {
        const bool bAny = std::any_of(
            fields.begin(), fields.end(), [this](const auto* pField) { return HasRow(*pField); });
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
            if (HasRow(*pField))
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

void CPropRowBuilder::AddField(CRTTIField& field,
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
    row.pointed = row.FindPointed();
    row.ReadValue();
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
CPropRowBuilder::GetPartName(const CRTTIField& field, int iPart, const PropObjects& objects) const
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

void CPropRowBuilder::AddParts(const SPropRow& row, int nParts)
{
    for (int i = 0; i < nParts; ++i)
    {
        SPropRow& part = AddRow(row.pField, i, row.objects);
        part.strName = GetPartName(*row.pField, i, row.objects);
        part.strKey = row.strKey + "#" + std::to_string(i);
        part.iDepth = row.iDepth + 1;
        part.ReadValue();
    }
}

// The fields of what the pointers point to, when all of them do and none leads back.
void CPropRowBuilder::AddPointed(const SPropRow& row)
{
    const bool bCircle = std::any_of(row.pointed.begin(),
                                     row.pointed.end(),
                                     [this](const auto* p) { return m_Path.count(p) > 0; });
    if (!row.pointed.empty() && row.pointed.size() == row.objects.size() && !bCircle)
    {
        AddFields(row.pointed, row.iDepth + 1, row.strKey);
    }
}
