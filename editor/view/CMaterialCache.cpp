#include "editor/view/CMaterialCache.h"

const SMaterial& CMaterialCache::Get(const std::string& strName)
{
    const auto found = m_Materials.find(strName);
    if (found != m_Materials.end())
    {
        return found->second;
    }
    // In the cache before it is read: a file with a fault gives the default look and is not tried
    // again, and logged, in every frame.
    SMaterial& material = m_Materials[strName];
    if (!strName.empty())
    {
        material.Load(strName);
    }
    return material;
}
