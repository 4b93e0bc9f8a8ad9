#include "editor/autosave/SAutosaveText.h"

#include "editor/core/Processes.h"
#include "editor/script/ProtectionText.h"
#include "engine/terrain/SHeightField.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <unistd.h>

#include <memory>

namespace
{

constexpr char DECLARATIONS[] = "!autosave_of( s )\n!autosave_number( i )\n"
                                "!autosave_heights( s, s )\n!autosave_flat( i, v3, f )\n"
                                "!autosave_bitmap( s, s )\n!autosave_process( i, s )\n"
                                "!autosave_protection( i, i )\n!autosave_protected( i, i, s )\n";

std::string GetText(const CTCPARSE_PARAM* pParam)
{
    const char* pszText = GetStringValue(pParam);
    return pszText != nullptr ? pszText : "";
}

} // namespace

std::string SAutosaveText::Write() const
{
    const int iOwner = ::getpid();
    std::string strText = DECLARATIONS;
    strText += "autosave_of( " + QuoteText(level.strPath) + " )\n";
    strText += "autosave_number( " + std::to_string(uNumber) + " )\n";
    if (strHeights.empty())
    {
        strText += "autosave_flat( " + std::to_string(level.uCellsX) + ", [" +
                   MakeExactNumber(level.size.x) + ", " + MakeExactNumber(level.size.y) + ", " +
                   MakeExactNumber(level.size.z) + "], " + MakeExactNumber(fFlat) + " )\n";
    }
    else
    {
        strText +=
            "autosave_heights( " + QuoteText(strHeights) + ", " + QuoteText(strStamp) + " )\n";
    }
    if (!strBitmap.empty())
    {
        strText +=
            "autosave_bitmap( " + QuoteText(strBitmap) + ", " + QuoteText(strTexels) + " )\n";
    }
    if (!protection.IsEmpty())
    {
        strText += "autosave_protection( " + std::to_string(protection.GetSizeX()) + ", " +
                   std::to_string(protection.GetSizeZ()) + " )\n" +
                   GetSquareCalls({}, protection, "autosave_protected");
    }
    strText += "autosave_process( " + std::to_string(iOwner) + ", " +
               QuoteText(GetProcessStart(iOwner)) + " )\n\n";
    SLevelText absolute = level;
    absolute.strPath.clear(); // nothing is relative to where the copy lies
    return strText + absolute.Write();
}

bool SAutosaveText::Read(const std::string& strFile)
{
    const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile(strFile.c_str()));
    std::string strPath;
    bool bBase = false;
    for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
    {
        const CTCPARSE_PARAM* pSecond = pKey->params != nullptr ? pKey->params->next : nullptr;
        if (IsKeyword(pKey, "autosave_of"))
        {
            strPath = GetText(pKey->params);
        }
        else if (IsKeyword(pKey, "autosave_number"))
        {
            uNumber = static_cast<uint32_t>(GetIntValue(pKey->params));
        }
        else if (IsKeyword(pKey, "autosave_heights"))
        {
            strHeights = GetText(pKey->params);
            strStamp = GetText(pSecond);
            bBase = !strHeights.empty();
        }
        else if (IsKeyword(pKey, "autosave_flat") && pSecond != nullptr &&
                 pSecond->type == tcparse_vec3)
        {
            const auto& size = static_cast<const CTCPARSE_VEC3&>(*pSecond);
            level.uCellsX = level.uCellsZ = static_cast<uint32_t>(GetIntValue(pKey->params));
            level.size = {size.x, size.y, size.z};
            fFlat = GetFloatValue(pSecond->next);
            bBase = true;
        }
        else if (IsKeyword(pKey, "autosave_bitmap"))
        {
            strBitmap = GetText(pKey->params);
            strTexels = GetText(pSecond);
        }
        else if (IsKeyword(pKey, "autosave_protection"))
        {
            const auto uSizeX = static_cast<uint32_t>(GetIntValue(pKey->params));
            const auto uSizeZ = static_cast<uint32_t>(GetIntValue(pSecond));
            if (IsTerrainSizeValid(uSizeX, uSizeZ))
            {
                protection = CVertexProtection(uSizeX, uSizeZ);
            }
        }
        else if (IsKeyword(pKey, "autosave_protected") && pSecond != nullptr)
        {
            ReadSquareText(GetText(pSecond->next).c_str(),
                           GetIntValue(pKey->params),
                           GetIntValue(pSecond),
                           protection);
        }
        else if (IsKeyword(pKey, "autosave_process"))
        {
            iProcess = GetIntValue(pKey->params);
            strStart = GetText(pSecond);
        }
    }
    level.Read(pFirst.get()); // a level that was never saved names no height map
    level.strPath = strPath;
    return bBase && uNumber > 0;
}
