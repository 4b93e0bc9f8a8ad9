#include "editor/script/CScriptKeywords.h"

#include "editor/script/HostKeywords.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "host/Log.h"
#include "parser/CTCParseNodes.h"
#include "parser/KeywordValues.h"

#include <algorithm>
#include <string_view>

namespace
{

EKeywordFile FindUse(const std::vector<SScriptKeyword>& keywords, const CTCPARSE_KEYWORD& keyword)
{
    for (const SScriptKeyword& known : keywords)
    {
        if (IsKeyword(&keyword, known.pszName))
        {
            return known.eFile;
        }
    }
    return EKeywordFile::None;
}

} // namespace

CScriptKeywords::CScriptKeywords(IPlugin* pPlugin)
{
    for (const SHostKeyword& row : GetHostKeywords())
    {
        m_Host.push_back(row.keyword);
    }
    auto* pScript = dynamic_cast<IPluginScript*>(pPlugin);
    if (pScript == nullptr)
    {
        return;
    }
    m_Blocks = pScript->GetBlockKeywords();
    for (const SScriptKeyword& keyword : pScript->GetKeywords())
    {
        if (FindHostKeyword(keyword.pszName) == nullptr)
        {
            m_Plugin.push_back(keyword);
            continue;
        }
        CrashLog("[CScriptKeywords::CScriptKeywords] %s is a keyword of the host, the plug-in's is "
                 "left out\n",
                 keyword.pszName);
    }
}

std::string CScriptKeywords::GetDeclarations() const
{
    std::string strText;
    for (const auto* pKeywords : {&m_Host, &m_Plugin, &m_Blocks})
    {
        for (const SScriptKeyword& keyword : *pKeywords)
        {
            strText += MakeDeclaration(keyword);
        }
    }
    return strText + "\n";
}

const SScriptKeyword* CScriptKeywords::FindOfPlugin(const char* pszName) const
{
    const auto found =
        std::find_if(m_Plugin.begin(),
                     m_Plugin.end(),
                     [strName = std::string_view(pszName)](const SScriptKeyword& keyword)
                     { return strName == keyword.pszName; });
    return found != m_Plugin.end() ? &*found : nullptr;
}

EKeywordFile CScriptKeywords::GetFileUse(const CTCPARSE_KEYWORD& keyword) const
{
    const EKeywordFile eOfHost = FindUse(m_Host, keyword);
    return eOfHost != EKeywordFile::None ? eOfHost : FindUse(m_Plugin, keyword);
}

EKeywordFile CScriptKeywords::GetFileUseInBlock(const CTCPARSE_KEYWORD& keyword) const
{
    return FindUse(m_Blocks, keyword);
}
