#include "engine/reflection/ObjectFinder.h"

#include "host/ReflectionFields.h"

namespace
{

FFindObjectById g_Finder = nullptr;

} // namespace

void SetObjectFinder(FFindObjectById pFinder)
{
    g_Finder = pFinder;
}

CRTTIObject* FindObjectOfClass(int32_t iId, const CRTTI* pClass)
{
    CRTTIObject* pObject = g_Finder != nullptr ? g_Finder(iId) : nullptr;
    const bool bFits = pObject != nullptr && (pClass == nullptr || pObject->FromClass(pClass));
    return bFits ? pObject : nullptr;
}
