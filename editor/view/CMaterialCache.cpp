#include "editor/view/CMaterialCache.h"

const SMaterial& CMaterialCache::Get(const std::string& strName)
{
    const auto found = m_Materials.find(strName);
    if (found != m_Materials.end())
    {
        return found->second;
    }
    SMaterial& material = m_Materials[strName];
    if (!strName.empty())
    {
        material.Load(strName);
    }
    return material;
}
