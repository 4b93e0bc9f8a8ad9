#include "tellur/proplist/PropClasses.h"

#include "host/ReflectionFields.h"

#include <algorithm>

const CRTTI* GetPointedClass(const CRTTIField& field)
{
    if (field.GetType() == RTTI_POINTER)
    {
        return static_cast<const CRTTIFieldPointer&>(field).GetPointedClass();
    }
    if (field.GetType() == RTTI_POINTER_LIST)
    {
        return static_cast<const CRTTIFieldPointerList&>(field).GetPointedClass();
    }
    return nullptr;
}

std::vector<const CRTTI*> FindConcreteClasses(const CRTTI* pClass)
{
    std::vector<const CRTTI*> classes;
    for (const CRTTI* pCandidate : CRTTI::GetClasses())
    {
        if (pClass != nullptr && pCandidate->IsDerivedFrom(pClass) && !pCandidate->IsAbstract() &&
            !pCandidate->IsInterface())
        {
            classes.push_back(pCandidate);
        }
    }
    std::sort(classes.begin(),
              classes.end(),
              [](const CRTTI* pLeft, const CRTTI* pRight) { return pRight->NameGreater(*pLeft); });
    return classes;
}
