#pragma once

#include "editor/view/SMaterial.h"

#include <map>
#include <string>

// Materials by file name, each read once. Owned by the renderer.
class CMaterialCache
{
public:
    // Natural ground for an empty name and, after one logged line, for a file that is no material.
    const SMaterial& Get(const std::string& strName);

private:
    std::map<std::string, SMaterial> m_Materials;
};
