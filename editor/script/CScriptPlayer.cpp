#include "editor/script/CScriptPlayer.h"

#include "editor/core/CEditorHost.h"
#include "editor/script/CScriptCall.h"
#include "editor/script/HostKeywords.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "parser/CTCParseNodes.h"

#include <utility>

CScriptPlayer::CScriptPlayer(CEditorHost& host,
                             CScriptCursor& cursor,
                             ViewId view,
                             IPlugin* pPlugin,
                             const std::string& strScriptPath,
                             std::function<bool()> onPlayed)
    : m_Host(host)
    , m_View(view)
    , m_Script(dynamic_cast<IPluginScript*>(pPlugin))
    , m_OnPlayed(std::move(onPlayed))
    , m_ScriptPath(strScriptPath)
    , m_Keywords(pPlugin)
    , m_Folder(strScriptPath, m_Keywords)
    , m_Mouse(host, cursor, view, pPlugin)
{
}

bool CScriptPlayer::Play(CTCPARSE_KEYWORD* pFirst, std::string& strFault)
{
    size_t nPlayed = 0;
    for (CTCPARSE_KEYWORD* pKeyword = pFirst; pKeyword != nullptr; pKeyword = pKeyword->next)
    {
        ++nPlayed;
        std::string strWhy;
        std::string strCall = CScriptCall(*pKeyword).GetText(); // playing changes file names
        bool bPlayed = false;
        if (!m_Host.GetInput().Guard("CScriptPlayer::Play",
                                     [&] { bPlayed = PlayKeyword(*pKeyword, strWhy); }))
        {
            strWhy = "not enough memory";
        }
        if (!bPlayed)
        {
            strFault = m_ScriptPath + ": " + strCall.append(": ").append(strWhy);
            strFault += " (keyword " + std::to_string(nPlayed) + ")";
            EndSteps();
            return false;
        }
        if (m_OnPlayed && !m_OnPlayed())
        {
            break;
        }
    }
    m_Mouse.EndDrag();
    EndSteps();
    return true;
}

// Those that the script has left open.
void CScriptPlayer::EndSteps()
{
    m_Host.GetProtection().End();
    m_Host.GetHistory().EndStep();
}

bool CScriptPlayer::PlayKeyword(CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    const SHostKeyword* pOfHost = FindHostKeyword(keyword.name);
    const SScriptKeyword* pOfPlugin = m_Keywords.FindOfPlugin(keyword.name);
    const SScriptKeyword* pKeyword = pOfHost != nullptr ? &pOfHost->keyword : pOfPlugin;
    const CScriptCall call(keyword);
    if (pKeyword == nullptr)
    {
        strWhy = "not a keyword of scripts";
        return false;
    }
    if (!call.HasTypes(pKeyword->pszTypes))
    {
        strWhy = "wrong arguments";
        return false;
    }
    if (m_Folder.WouldReplaceScript(keyword))
    {
        strWhy = "would replace the script itself";
        return false;
    }
    if (keyword.block != nullptr && (pOfHost != nullptr || pKeyword->bWindows))
    {
        strWhy = "takes no block";
        return false;
    }
    if (pOfHost != nullptr)
    {
        SScriptPlaying playing = {m_Host, m_View, m_Folder, m_Mouse, m_Picture};
        return pOfHost->pPlay(playing, call, strWhy);
    }
    if (pKeyword->bWindows && !m_Host.PrepareWindows())
    {
        strWhy = "there are no windows to paint with";
        return false;
    }
    return PlayPluginKeyword(keyword, strWhy);
}

bool CScriptPlayer::PlayPluginKeyword(CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    m_Folder.LocateFiles(keyword);
    const EScriptResult eResult = m_Script->Play(&keyword, strWhy);
    if (eResult == EScriptResult::Unknown)
    {
        strWhy = "not a keyword of this plug-in";
    }
    return eResult == EScriptResult::Done;
}
