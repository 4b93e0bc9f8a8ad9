#include "editor/script/CScriptKeywords.h"

#include "editor/script/CScriptPlayer.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "host/Log.h"
#include "parser/CTCParseNodes.h"
#include "parser/KeywordValues.h"

#include <algorithm>
#include <string_view>

namespace
{

const SScriptKeyword* Find(const std::vector<SScriptKeyword>& keywords, std::string_view strName)
{
    const auto found =
        std::find_if(keywords.begin(),
                     keywords.end(),
                     [strName](const auto& keyword) { return strName == keyword.pszName; });
    return found != keywords.end() ? &*found : nullptr;
}

} // namespace

CScriptKeywords::CScriptKeywords(IPlugin* pPlugin)
    : m_Host(CScriptPlayer::GetHostKeywords())
{
    auto* pScript = dynamic_cast<IPluginScript*>(pPlugin);
    if (pScript == nullptr)
    {
        return;
    }
    m_Blocks = pScript->GetBlockKeywords();
    for (const SScriptKeyword& keyword : pScript->GetKeywords())
    {
        if (FindOfHost(keyword.pszName) == nullptr)
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

const SScriptKeyword* CScriptKeywords::FindOfHost(const char* pszName) const
{
    return Find(m_Host, pszName);
}

const SScriptKeyword* CScriptKeywords::FindOfPlugin(const char* pszName) const
{
    return Find(m_Plugin, pszName);
}

EKeywordFile CScriptKeywords::GetFileUse(const CTCPARSE_KEYWORD& keyword) const
{
    for (const auto* pKeywords : {&m_Host, &m_Plugin, &m_Blocks})
    {
        for (const SScriptKeyword& known : *pKeywords)
        {
            if (IsKeyword(&keyword, known.pszName))
            {
                return known.eFile;
            }
        }
    }
    return EKeywordFile::None;
}
