#include "tellur/brushes/CFunctionContainer.h"

#include "host/Log.h"
#include "tellur/stroke/ITellurFunction.h"

#include <cstring>

CFunctionContainer::CFunctionContainer() = default;
CFunctionContainer::~CFunctionContainer() = default;

bool CFunctionContainer::AddFunction(ITellurFunction* pFunction)
{
    if (pFunction == nullptr)
    {
        CrashLog("[CFunctionContainer::AddFunction] pFunction == NULL\n");
        return false;
    }
    if (FindFunction(pFunction->GetClassName()) != nullptr)
    {
        CrashLog("[CFunctionContainer::AddFunction] function of name %s already exists\n",
                 pFunction->GetClassName());
        return false;
    }
    m_Functions.emplace_back(pFunction);
    return true;
}

const ITellurFunction* CFunctionContainer::FindFunction(const char* pszClassName) const
{
    if (pszClassName == nullptr)
    {
        return nullptr;
    }
    for (const auto& pFunction : m_Functions)
    {
        if (std::strcmp(pFunction->GetClassName(), pszClassName) == 0)
        {
            return pFunction.get();
        }
    }
    return nullptr;
}

void CFunctionContainer::Clear()
{
    m_Functions.clear();
}
