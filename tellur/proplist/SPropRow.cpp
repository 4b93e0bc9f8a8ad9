#include "tellur/proplist/SPropRow.h"

#include "host/Reflection.h"
#include "tellur/proplist/PropClasses.h"
#include "tellur/proplist/PropText.h"

void SPropRow::ReadValue()
{
    if (pField == nullptr)
    {
        return;
    }
    strText = GetValueText(*pField, iElement, objects.front()).value_or("");
    bDifferent = false;
    for (const CRTTIObject* pObject : objects)
    {
        bDifferent = bDifferent || GetValueText(*pField, iElement, pObject).value_or("") != strText;
    }
}

bool SPropRow::IsEditable() const
{
    return pField != nullptr && (pField->GetFlags() & RTTI_FIELD_EDIT) != 0;
}

PropObjects SPropRow::FindPointed() const
{
    PropObjects found;
    for (CRTTIObject* pObject : objects)
    {
        const PropObjects own = GetPointed(*pField, pObject);
        found.insert(found.end(), own.begin(), own.end());
    }
    return found;
}

PropObjects SPropRow::FindTargets() const
{
    if (pField == nullptr || GetPointedClass(*pField) == nullptr)
    {
        return objects;
    }
    PropObjects targets;
    for (CRTTIObject* pObject : objects)
    {
        const PropObjects own = GetPointed(*pField, pObject);
        if (iElement < 0)
        {
            targets.insert(targets.end(), own.begin(), own.end());
        }
        else if (static_cast<size_t>(iElement) < own.size())
        {
            targets.push_back(own[static_cast<size_t>(iElement)]);
        }
    }
    std::erase(targets, nullptr);
    return targets;
}
