#include "framework/core/CResourceScope.h"

#include "framework/core/ResourceModule.h"

namespace
{

const SResourceModule* g_Current = nullptr;
// The scopes that live, each with the one around it: a module that goes is taken out of all of
// them.
CResourceScope* g_Innermost = nullptr;

} // namespace

CResourceScope::CResourceScope(const SResourceModule* pModule)
    : m_Previous(g_Current)
    , m_Outer(g_Innermost)
{
    g_Current = pModule;
    g_Innermost = this;
}

CResourceScope::~CResourceScope()
{
    g_Current = m_Previous;
    g_Innermost = m_Outer;
}

void CResourceScope::Forget(const SResourceModule* pModule)
{
    g_Current = g_Current != pModule ? g_Current : nullptr;
    for (CResourceScope* pScope = g_Innermost; pScope != nullptr; pScope = pScope->m_Outer)
    {
        if (pScope->m_Previous == pModule)
        {
            pScope->m_Previous = nullptr;
        }
    }
}

const SResourceModule* GetCurrentResourceModule()
{
    return g_Current;
}
