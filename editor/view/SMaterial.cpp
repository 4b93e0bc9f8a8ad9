#include "editor/view/SMaterial.h"

#include "host/Log.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

namespace
{

struct SKind
{
    const char* pszName;
    EMaterialKind eKind;
    int nLeast; // colours
};

constexpr SKind KINDS[] = {
    {"plain", EMaterialKind::Plain, 1},
    {"checker", EMaterialKind::Checker, 2},
    {"contours", EMaterialKind::Contours, 3},
    {"slope", EMaterialKind::Slope, 2},
    {"bands", EMaterialKind::Bands, 2},
    {"terrain", EMaterialKind::Terrain, 0},
    {"hollows", EMaterialKind::Hollows, 1},
};

bool Fail(const std::string& strPath, const char* pszFault)
{
    CrashLog("[SMaterial::Load] %s: %s\n", strPath.c_str(), pszFault);
    return false;
}

const SKind* FindKind(const char* pszName)
{
    for (const SKind& kind : KINDS)
    {
        if (pszName != nullptr && std::strcmp(kind.pszName, pszName) == 0)
        {
            return &kind;
        }
    }
    return nullptr;
}

const CTCPARSE_VEC4* GetColor(const CTCPARSE_PARAM* pParam)
{
    return pParam != nullptr && pParam->type == tcparse_vec4
               ? static_cast<const CTCPARSE_VEC4*>(pParam)
               : nullptr;
}

} // namespace

bool SMaterial::Load(const std::string& strPath)
{
    ETCParseStatus eStatus = tcparse_done;
    const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(
        TCParseFile(strPath.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    if (eStatus == tcparse_failed)
    {
        return false; // the parser has said where
    }
    if (eStatus == tcparse_unreadable)
    {
        return Fail(strPath, "cannot be read");
    }
    // Read apart, so that a fault leaves the material as it was.
    SMaterial read;
    read.nColors = 0;
    const SKind* pKind = nullptr;
    for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, "kind"))
        {
            pKind = FindKind(GetStringValue(pKey->params));
        }
        else if (IsKeyword(pKey, "step"))
        {
            read.fStep = GetFloatValue(pKey->params);
        }
        else if (IsKeyword(pKey, "color"))
        {
            const CTCPARSE_VEC4* pColor = GetColor(pKey->params);
            if (pColor == nullptr || read.nColors == COLORS)
            {
                return Fail(strPath, "a colour too many, or one that is none");
            }
            read.colors[static_cast<size_t>(read.nColors++)] = {
                pColor->x, pColor->y, pColor->z, pColor->w};
        }
    }
    if (pKind == nullptr)
    {
        return Fail(strPath, "no known kind of material");
    }
    if (read.nColors < pKind->nLeast || !std::isfinite(read.fStep) || read.fStep < 0.0F)
    {
        return Fail(strPath, "too few colours for its kind, or a step below 0");
    }
    if (pKind->eKind != EMaterialKind::Terrain)
    {
        std::fill(read.colors.begin() + read.nColors,
                  read.colors.end(),
                  read.colors[static_cast<size_t>(read.nColors) - 1]);
    }
    read.eKind = pKind->eKind;
    *this = read;
    return true;
}
