#include "editor/core/ToolBrushFile.h"

#include "host/FileSystem.h"
#include "host/IPluginScript.h"
#include "host/Log.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <cstring>
#include <memory>

namespace
{

constexpr SScriptKeyword FITTED = {"fitted", "ss"};
constexpr char BRUSH[] = "tool_brush";

std::string GetText(const CTCPARSE_PARAM* pParam)
{
    const char* pszText = GetStringValue(pParam);
    return pszText != nullptr ? pszText : "";
}

std::string FindFunction(const CTCPARSE_KEYWORD& brush)
{
    std::string strFunction;
    for (const CTCPARSE_KEYWORD* pKey = brush.block; pKey != nullptr; pKey = pKey->next)
    {
        strFunction = IsKeyword(pKey, "function") ? GetText(pKey->params) : strFunction;
    }
    return strFunction;
}

// A mask that is not there is left out by the plug-in, and with it its name when the tools are kept
// again. True after a logged line.
bool HasLostMask(const std::string& strFile, const CTCPARSE_KEYWORD& brush)
{
    for (const CTCPARSE_KEYWORD* pKey = brush.block; pKey != nullptr; pKey = pKey->next)
    {
        const std::string strMask = IsKeyword(pKey, "mask") ? GetText(pKey->params) : "";
        if (!strMask.empty() && !fs::exists(strMask.c_str()))
        {
            CrashLog("[LoadToolBrushes] %s, line %d: the mask %s is not there\n",
                     strFile.c_str(),
                     static_cast<int>(pKey->line),
                     strMask.c_str());
            return true;
        }
    }
    return false;
}

// False after a logged line.
bool PlayBrush(const std::string& strFile, IPluginScript& script, const CTCPARSE_KEYWORD& brush)
{
    std::string strWhy = "it is no keyword of the plug-in";
    if (script.Play(&brush, strWhy) == EScriptResult::Done)
    {
        return true;
    }
    CrashLog("[LoadToolBrushes] %s, line %d: tool_brush: %s\n",
             strFile.c_str(),
             static_cast<int>(brush.line),
             strWhy.c_str());
    return false;
}

} // namespace

EToolFile LoadToolBrushes(const std::string& strFile,
                          IPluginScript& script,
                          std::set<std::string>& found,
                          FittedTools& fitted)
{
    ETCParseStatus eStatus = tcparse_done;
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(
        TCParseFile(strFile.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    if (eStatus == tcparse_unreadable && !fs::exists(strFile.c_str()))
    {
        return EToolFile::None;
    }
    if (eStatus != tcparse_done)
    {
        CrashLog("[LoadToolBrushes] %s: cannot be read, the tools begin anew\n", strFile.c_str());
        return EToolFile::Faulty;
    }
    EToolFile eResult = EToolFile::Read;
    for (const CTCPARSE_KEYWORD* pKey = pTree.get(); pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, FITTED.pszName) && pKey->params != nullptr)
        {
            fitted[GetText(pKey->params)] = GetText(pKey->params->next);
        }
        else if (IsKeyword(pKey, BRUSH) && PlayBrush(strFile, script, *pKey))
        {
            found.insert(FindFunction(*pKey));
            eResult = HasLostMask(strFile, *pKey) ? EToolFile::Faulty : eResult;
        }
        else if (IsKeyword(pKey, BRUSH))
        {
            eResult = EToolFile::Faulty;
        }
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
    return strText + MakeDeclaration(FITTED) + "\n";
}

std::string MakeFittedLine(const std::string& strFunction, const std::string& strReady)
{
    return std::string(FITTED.pszName) + "( " + QuoteText(strFunction) + ", " +
           QuoteText(strReady) + " )\n\n";
}
