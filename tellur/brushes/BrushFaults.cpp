#include "tellur/brushes/BrushFaults.h"

#include "host/IPluginBrushes.h"
#include "parser/KeywordValues.h"
#include "tellur/brushes/CTellurBrush.h"

#include <cstring>

namespace
{

// Of several calls the last one counts, as it does where a brush is loaded.
const CTCPARSE_KEYWORD* FindLast(const CTCPARSE_KEYWORD* pBlock, const char* pszKey)
{
    const CTCPARSE_KEYWORD* pFound = nullptr;
    for (const CTCPARSE_KEYWORD* pKey = pBlock; pKey != nullptr; pKey = pKey->next)
    {
        pFound = IsKeyword(pKey, pszKey) ? pKey : pFound;
    }
    return pFound;
}

std::string GetText(const CTCPARSE_KEYWORD* pKey)
{
    const char* pszText = pKey != nullptr ? GetStringValue(pKey->params) : nullptr;
    return pszText != nullptr ? pszText : "";
}

// The call as it is written.
std::string ShowCall(const CTCPARSE_KEYWORD& call)
{
    return std::string(call.name) + "( \"" + GetText(&call) + "\" )";
}

} // namespace

void FindBrushFaults(const CTCPARSE_KEYWORD& written,
                     const CTellurBrush& brush,
                     bool bLoaded,
                     std::vector<SBrushFault>& faults)
{
    const CTCPARSE_KEYWORD* pFunction = FindLast(written.block, "function");
    const CTCPARSE_KEYWORD* pMask = FindLast(written.block, "mask");
    const CTCPARSE_KEYWORD* pBitmap = FindLast(written.block, "bitmap");
    const CTCPARSE_KEYWORD* pPath = pBitmap != nullptr ? FindLast(pBitmap->block, "path") : nullptr;
    const std::string strName = GetText(FindLast(written.block, "brush_name"));
    const auto add = [&](const CTCPARSE_KEYWORD& where, const std::string& strFault)
    {
        faults.push_back({strName, where.line, strFault});
    };
    if (!bLoaded)
    {
        add(pFunction != nullptr ? *pFunction : written,
            pFunction != nullptr ? ShowCall(*pFunction) + " is unknown, the brush is left out"
                                 : "it is empty and left out");
        return;
    }
    if (brush.GetRTTIObject() == nullptr)
    {
        add(pFunction != nullptr ? *pFunction : written,
            "it has no function, so the brushes cannot be saved");
    }
    if (brush.GetBitmapPath() == nullptr)
    {
        const std::string strWhy = pPath != nullptr ? ShowCall(*pPath) + " cannot be loaded: " : "";
        add(pPath != nullptr ? *pPath : written,
            strWhy + "it has no image, so the brushes cannot be saved");
    }
    if (brush.GetMaskPath() != GetText(pMask))
    {
        add(*pMask, ShowCall(*pMask) + " cannot be loaded, it has no mask");
    }
    for (const CTCPARSE_KEYWORD* pFile : {pPath, pMask})
    {
        if (pFile != nullptr && BreaksBrushFile(GetText(pFile).c_str()))
        {
            add(*pFile, "a path with a quotation mark makes the saved brushes unreadable");
        }
    }
}

bool BreaksBrushFile(const char* pszPath)
{
    return pszPath != nullptr && std::strchr(pszPath, '"') != nullptr;
}
