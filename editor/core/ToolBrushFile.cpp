#include "editor/core/ToolBrushFile.h"

#include "host/FileSystem.h"
#include "host/IPluginScript.h"
#include "host/IPluginTools.h"
#include "host/Log.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

namespace
{

constexpr SScriptKeyword FITTED = {"fitted", "ss"};
constexpr SScriptKeyword LOST_MASK = {"lost_mask", "ss"};
constexpr SScriptKeyword END = {"end_of_tools", ""};
constexpr char BRUSH[] = "tool_brush";
constexpr char MASK[] = "mask";

std::string GetText(const CTCPARSE_PARAM* pParam)
{
    const char* pszText = GetStringValue(pParam);
    return pszText != nullptr ? pszText : "";
}

// The text of a line of the block; empty without it.
std::string FindText(const CTCPARSE_KEYWORD& brush, const char* pszName)
{
    std::string strText;
    for (const CTCPARSE_KEYWORD* pKey = brush.block; pKey != nullptr; pKey = pKey->next)
    {
        strText = IsKeyword(pKey, pszName) ? GetText(pKey->params) : strText;
    }
    return strText;
}

std::string MakePairLine(const SScriptKeyword& keyword,
                         const std::string& strFirst,
                         const std::string& strSecond)
{
    return std::string(keyword.pszName) + "( " + QuoteText(strFirst) + ", " + QuoteText(strSecond) +
           " )\n\n";
}

using TextPairs = std::map<std::string, std::string>;

TextPairs FindPairs(const CTCPARSE_KEYWORD* pTree, const SScriptKeyword& keyword)
{
    TextPairs pairs;
    for (const CTCPARSE_KEYWORD* pKey = pTree; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, keyword.pszName) && pKey->params != nullptr)
        {
            pairs[GetText(pKey->params)] = GetText(pKey->params->next);
        }
    }
    return pairs;
}

// Whether nothing is missing at the end. pCut: the block that is cut off there, null for none.
bool IsWhole(const CTCPARSE_KEYWORD* pTree,
             const STCParseOutline& outline,
             const std::vector<SToolOffer>& offers,
             const CTCPARSE_KEYWORD*& pCut)
{
    std::set<std::string> tools;
    const CTCPARSE_KEYWORD* pLast = nullptr;
    for (const CTCPARSE_KEYWORD* pKey = pTree; pKey != nullptr; pKey = pKey->next)
    {
        pLast = pKey;
        if (IsKeyword(pKey, BRUSH))
        {
            tools.insert(FindText(*pKey, "function"));
        }
    }
    pCut = outline.nOpenBlocks > 0 ? pLast : nullptr;
    const bool bSaysSo = std::ranges::any_of(
        outline.calls, [](const auto& call) { return IsKeyword(call.pCall, END.pszName); });
    const bool bHasAll = std::ranges::all_of(
        offers, [&](const auto& tool) { return tools.contains(tool.pszFunction); });
    char szEnd[CTCPARSE_KEYWORD::NAME_BYTES] = {};
    std::snprintf(szEnd, sizeof(szEnd), "%s", END.pszName);
    const bool bOfBefore = outline.declarations.Find(szEnd) == nullptr;
    return pCut == nullptr && (bSaysSo || (bOfBefore && bHasAll));
}

// Gives the block the mask that it had to leave out.
void PutBackMask(CTCPARSE_KEYWORD& brush, const std::string& strMask)
{
    auto pMask = std::make_unique<CTCPARSE_KEYWORD>();
    std::snprintf(pMask->name, sizeof(pMask->name), "%s", MASK);
    pMask->params = new CTCPARSE_STRING(strMask.c_str());
    pMask->line = brush.line;
    CTCPARSE_KEYWORD** ppLast = &brush.block;
    while (*ppLast != nullptr)
    {
        ppLast = &(*ppLast)->next;
    }
    *ppLast = pMask.release();
}

// Finds the mask of a block and logs a line for one that is not there.
std::string TakeMask(const std::string& strFile, CTCPARSE_KEYWORD& brush, const TextPairs& lost)
{
    std::string strMask = FindText(brush, MASK);
    const auto found = lost.find(FindText(brush, "function"));
    const bool bLost = strMask.empty() && found != lost.end();
    strMask = bLost ? found->second : strMask;
    if (!strMask.empty() && !fs::exists(strMask.c_str()))
    {
        WarnLog("[LoadToolBrushes] %s, line %d: the mask %s is not there\n",
                strFile.c_str(),
                static_cast<int>(brush.line),
                strMask.c_str());
    }
    else if (bLost)
    {
        PutBackMask(brush, strMask);
    }
    return strMask;
}

// False after a logged line.
bool PlayBrush(const std::string& strFile, IPluginScript& script, const CTCPARSE_KEYWORD& brush)
{
    std::string strWhy = "it is no keyword of the plug-in";
    if (script.Play(&brush, strWhy) == EScriptResult::Done)
    {
        return true;
    }
    WarnLog("[LoadToolBrushes] %s, line %d: tool_brush: %s\n",
            strFile.c_str(),
            static_cast<int>(brush.line),
            strWhy.c_str());
    return false;
}

} // namespace

EToolFile LoadToolBrushes(const std::string& strFile,
                          IPluginScript& script,
                          const std::vector<SToolOffer>& offers,
                          SKeptTools& kept)
{
    ETCParseStatus eStatus = tcparse_done;
    STCParseOutline outline;
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(TCParseFile(strFile.c_str(), outline, eStatus));
    if (eStatus == tcparse_unreadable && !fs::exists(strFile.c_str()))
    {
        return EToolFile::None;
    }
    if (eStatus != tcparse_done)
    {
        WarnLog("[LoadToolBrushes] %s: cannot be read, the tools begin anew\n", strFile.c_str());
        return EToolFile::Faulty;
    }
    EToolFile eResult = EToolFile::Read;
    const CTCPARSE_KEYWORD* pCut = nullptr;
    if (!IsWhole(pTree.get(), outline, offers, pCut))
    {
        WarnLog("[LoadToolBrushes] %s: the end is missing, tools that are not there begin anew\n",
                strFile.c_str());
        eResult = EToolFile::Faulty;
    }
    kept.fitted = FindPairs(pTree.get(), FITTED);
    const TextPairs lost = FindPairs(pTree.get(), LOST_MASK);
    for (CTCPARSE_KEYWORD* pKey = pTree.get(); pKey != nullptr; pKey = pKey->next)
    {
        if (!IsKeyword(pKey, BRUSH) || pKey == pCut)
        {
            continue;
        }
        const std::string strFunction = FindText(*pKey, "function");
        const std::string strMask = TakeMask(strFile, *pKey, lost);
        if (!PlayBrush(strFile, script, *pKey))
        {
            eResult = EToolFile::Faulty;
            continue;
        }
        kept.found.insert(strFunction);
        kept.masks[strFunction] = strMask;
    }
    return eResult;
}

std::string GetToolBrushDeclarations(IPluginScript& script)
{
    std::string strText;
    for (const SScriptKeyword& keyword : script.GetKeywords())
    {
        strText += std::strcmp(keyword.pszName, BRUSH) == 0 ? MakeDeclaration(keyword) : "";
    }
    for (const SScriptKeyword& keyword : script.GetBlockKeywords())
    {
        strText += MakeDeclaration(keyword);
    }
    return strText + MakeDeclaration(FITTED) + MakeDeclaration(LOST_MASK) + MakeDeclaration(END) +
           "\n";
}

std::string MakeFittedLine(const std::string& strFunction, const std::string& strReady)
{
    return MakePairLine(FITTED, strFunction, strReady);
}

std::string MakeLostMaskLine(const std::string& strFunction, const std::string& strMask)
{
    return MakePairLine(LOST_MASK, strFunction, strMask);
}

std::string MakeEndLine()
{
    return std::string(END.pszName) + "()\n";
}
