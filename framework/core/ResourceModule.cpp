#include "framework/core/ResourceModule.h"

#include "framework/core/Cursor.h"

#include <algorithm>
#include <vector>

namespace
{

using Modules = std::vector<const SResourceModule*>;

// Made by the first library that registers, so it outlives that library's static data.
Modules& GetModules()
{
    static Modules s_Modules;
    return s_Modules;
}

template <class TResource>
const TResource* FindIn(std::span<const TResource> resources, uint32_t uId)
{
    const auto found =
        std::find_if(resources.begin(),
                     resources.end(),
                     [uId](const TResource& resource) { return resource.uId == uId; });
    return found != resources.end() ? &*found : nullptr;
}

template <class TResource>
const TResource* Find(std::span<const TResource> SResourceModule::*pTable, uint32_t uId)
{
    // The current module need not be one of the registered ones.
    const SResourceModule* pCurrent = GetCurrentResourceModule();
    const TResource* pFound = pCurrent != nullptr ? FindIn(pCurrent->*pTable, uId) : nullptr;
    for (const SResourceModule* pModule : GetModules())
    {
        pFound = pFound != nullptr ? pFound : FindIn(pModule->*pTable, uId);
    }
    return pFound;
}

} // namespace

void RegisterResourceModule(const SResourceModule* pModule)
{
    Modules& modules = GetModules();
    if (pModule != nullptr && std::find(modules.begin(), modules.end(), pModule) == modules.end())
    {
        modules.push_back(pModule);
    }
}

void UnregisterResourceModule(const SResourceModule* pModule)
{
    if (pModule == nullptr)
    {
        return;
    }
    std::erase(GetModules(), pModule);
    CResourceScope::Forget(pModule);
    for (const SCursorResource& cursor : pModule->cursors)
    {
        if (GetCursor() == &cursor)
        {
            SetCursor(nullptr);
        }
    }
}

const SMenuResource* FindMenuResource(uint32_t uId)
{
    return Find(&SResourceModule::menus, uId);
}

const SToolBarResource* FindToolBarResource(uint32_t uId)
{
    return Find(&SResourceModule::toolBars, uId);
}

const SCursorResource* FindCursorResource(uint32_t uId)
{
    return Find(&SResourceModule::cursors, uId);
}

const SBitmapResource* FindBitmapResource(uint32_t uId)
{
    return Find(&SResourceModule::bitmaps, uId);
}

const SDialogResource* FindDialogResource(uint32_t uId)
{
    return Find(&SResourceModule::dialogs, uId);
}

bool LoadStringResource(uint32_t uId, std::string& strText)
{
    const SStringResource* pFound = Find(&SResourceModule::strings, uId);
    if (pFound == nullptr)
    {
        return false;
    }
    strText = pFound->pszText;
    return true;
}
