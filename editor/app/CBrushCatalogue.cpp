#include "editor/app/CBrushCatalogue.h"

#include "editor/core/CBrushFile.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/Words.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "parser/CTCParseNodes.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <utility>

namespace
{

constexpr char BACK[] = "undo_brushes";
constexpr char AGAIN[] = "redo_brushes";

// A call is put together instead of parsed: a name may then hold whatever a person types.
std::unique_ptr<CTCPARSE_KEYWORD> MakeCall(const char* pszName)
{
    auto pCall = std::make_unique<CTCPARSE_KEYWORD>();
    std::snprintf(pCall->name, sizeof(pCall->name), "%s", pszName);
    return pCall;
}

std::unique_ptr<CTCPARSE_KEYWORD> MakeCall(const char* pszName, size_t iBrush)
{
    std::unique_ptr<CTCPARSE_KEYWORD> pCall = MakeCall(pszName);
    pCall->params = new CTCPARSE_INT(static_cast<int32_t>(iBrush));
    return pCall;
}

std::unique_ptr<CTCPARSE_KEYWORD> MakeCall(const char* pszName, size_t iBrush, size_t iTo)
{
    std::unique_ptr<CTCPARSE_KEYWORD> pCall = MakeCall(pszName, iBrush);
    pCall->params->next = new CTCPARSE_INT(static_cast<int32_t>(iTo));
    return pCall;
}

std::unique_ptr<CTCPARSE_KEYWORD>
MakeCall(const char* pszName, size_t iBrush, const std::string& strText)
{
    std::unique_ptr<CTCPARSE_KEYWORD> pCall = MakeCall(pszName, iBrush);
    pCall->params->next = new CTCPARSE_STRING(strText.c_str());
    return pCall;
}

} // namespace

CBrushCatalogue::CBrushCatalogue(CEditorHost& host, IPlugin* pPlugin)
    : m_Host(host)
    , m_pBrushes(dynamic_cast<IPluginBrushes*>(pPlugin))
    , m_pScript(dynamic_cast<IPluginScript*>(pPlugin))
{
}

bool CBrushCatalogue::Follow()
{
    if (!IsThere() || m_uRevision == m_pBrushes->GetBrushRevision())
    {
        return false;
    }
    m_uRevision = m_pBrushes->GetBrushRevision();
    m_Shown = m_pBrushes->GetDefinedBrushes();
    return true;
}

bool CBrushCatalogue::Say(std::string strLine)
{
    m_Line = std::move(strLine);
    m_iTaken = -1;
    return true;
}

bool CBrushCatalogue::Refuse(std::string strWhy)
{
    Say(std::move(strWhy));
    return false;
}

std::string CBrushCatalogue::GetQuoted(size_t iBrush) const
{
    return '"' + m_Shown[iBrush].strName + '"';
}

bool CBrushCatalogue::Begin(size_t iBrush)
{
    m_bSaveFailed = false;
    if (!IsThere())
    {
        return Refuse(Words("This plug-in has no library of brushes."));
    }
    if (m_uRevision != m_pBrushes->GetBrushRevision())
    {
        return Refuse(Words("The brushes have changed meanwhile; look again."));
    }
    return iBrush < m_Shown.size() || Refuse(Words("There is no brush."));
}

bool CBrushCatalogue::Play(const CTCPARSE_KEYWORD& call)
{
    // The plug-in refuses a drag of its own; a stroke may be another mode's.
    if (m_Host.GetInput().IsDragging())
    {
        return Refuse(Words("Not during a stroke."));
    }
    EScriptResult eResult = EScriptResult::Failed;
    std::string strWhy;
    if (!m_Host.GetInput().Guard("CBrushCatalogue::Play",
                                 [&] { eResult = m_pScript->Play(&call, strWhy); }))
    {
        return Refuse(Words("Not enough memory."));
    }
    if (eResult == EScriptResult::Unknown)
    {
        return Refuse(Words("This plug-in cannot do that."));
    }
    return eResult == EScriptResult::Done || Refuse(Words("Not done: ") + strWhy + '.');
}

bool CBrushCatalogue::Change(const std::vector<std::unique_ptr<CTCPARSE_KEYWORD>>& calls,
                             const char* pszBack)
{
    size_t nPlayed = 0;
    while (nPlayed < calls.size() && Play(*calls[nPlayed]))
    {
        ++nPlayed;
    }
    bool bSaved = nPlayed == calls.size();
    // A brush that is moved to where it is leaves nothing to save.
    if (bSaved && m_pBrushes->GetBrushRevision() != m_uRevision)
    {
        bSaved = false;
        m_Host.GetInput().Guard("CBrushCatalogue::Change",
                                [&] { bSaved = m_pBrushes->SaveBrushes(); });
        m_bSaveFailed = !bSaved;
    }
    if (bSaved)
    {
        return true;
    }
    std::string strWhy = m_bSaveFailed ? GetSaveFault() : std::move(m_Line);
    for (; nPlayed > 0; --nPlayed)
    {
        Play(*MakeCall(pszBack));
    }
    return Refuse(strWhy);
}

std::string CBrushCatalogue::GetSaveFault() const
{
    std::string strFault = GetSaveHindrance(m_Shown);
    if (strFault.empty())
    {
        // Nothing was wrong with the brushes before.
        strFault = GetSaveHindrance(m_pBrushes->GetDefinedBrushes()).empty()
                       ? Words("The brushes cannot be saved")
                       : Words("A brush without an image or a function cannot be saved");
    }
    return strFault + Words("; they are as they were.");
}

bool CBrushCatalogue::Change(std::unique_ptr<CTCPARSE_KEYWORD> pCall, const char* pszBack)
{
    std::vector<std::unique_ptr<CTCPARSE_KEYWORD>> calls;
    calls.push_back(std::move(pCall));
    return Change(calls, pszBack);
}

bool CBrushCatalogue::Take(size_t iBrush)
{
    if (!Begin(iBrush) || !Play(*MakeCall("take_brush", iBrush)))
    {
        return false;
    }
    if (m_pBrushes->FindBrushAtHand() != static_cast<int32_t>(iBrush))
    {
        return Refuse(GetQuoted(iBrush) + (m_Shown[iBrush].strFunction.empty()
                                               ? Words(" has no function, so nothing is at hand.")
                                               : Words(" cannot be taken.")));
    }
    Say(GetQuoted(iBrush) + Words(" is at hand."));
    m_iTaken = static_cast<int32_t>(iBrush);
    return true;
}

bool CBrushCatalogue::FollowHand()
{
    if (m_iTaken < 0 || m_pBrushes->FindBrushAtHand() == m_iTaken)
    {
        return false;
    }
    return Say({});
}

bool CBrushCatalogue::Rename(size_t iBrush, const std::string& strName)
{
    if (!Begin(iBrush) || !Change(MakeCall("rename_brush", iBrush, strName), BACK))
    {
        return false;
    }
    const bool bTwice =
        std::any_of(m_Shown.begin(),
                    m_Shown.end(),
                    [&](const SDefinedBrush& brush)
                    { return &brush != &m_Shown[iBrush] && brush.strName == strName; });
    return Say(GetQuoted(iBrush) + Words(" is now \"") + strName +
               (bTwice ? Words("\", as another one; scripts take the first of them.") : "\"."));
}

bool CBrushCatalogue::Duplicate(size_t iBrush)
{
    // Without a name the plug-in finds one, as for a brush that is added.
    if (!Begin(iBrush) || !Change(MakeCall("duplicate_brush", iBrush, std::string()), BACK))
    {
        return false;
    }
    return Say(GetQuoted(iBrush) + Words(" has a copy."));
}

bool CBrushCatalogue::Remove(std::vector<size_t> brushes)
{
    std::sort(brushes.begin(), brushes.end(), std::greater<>());
    if (brushes.empty())
    {
        return Refuse(Words("No brush is selected."));
    }
    if (!Begin(brushes.front()))
    {
        return false;
    }
    std::vector<std::unique_ptr<CTCPARSE_KEYWORD>> calls;
    calls.reserve(brushes.size());
    for (const size_t iBrush : brushes) // from the end, so that the places of the others stay
    {
        calls.push_back(MakeCall("remove_brush", iBrush));
    }
    if (!Change(calls, BACK))
    {
        return false;
    }
    return Say(brushes.size() == 1
                   ? GetQuoted(brushes.front()) + Words(" is removed; Ctrl+Z brings it back.")
                   : std::to_string(brushes.size()) +
                         Words(" brushes are removed; Ctrl+Z brings back one after another."));
}

bool CBrushCatalogue::Move(size_t iBrush, size_t iTo)
{
    if (!Begin(iBrush) || !Change(MakeCall("move_brush", iBrush, iTo), BACK))
    {
        return false;
    }
    return Say(GetQuoted(iBrush) + Words(" is number ") + std::to_string(iTo + 1) + Words(" of ") +
               std::to_string(m_Shown.size()) + '.');
}

bool CBrushCatalogue::TakeBack()
{
    m_bSaveFailed = false;
    if (!IsThere() || !Change(MakeCall(BACK), AGAIN))
    {
        return false;
    }
    return Say(Words("The last change is taken back."));
}

bool CBrushCatalogue::DoAgain()
{
    m_bSaveFailed = false;
    if (!IsThere() || !Change(MakeCall(AGAIN), BACK))
    {
        return false;
    }
    return Say(Words("The change is done again."));
}
