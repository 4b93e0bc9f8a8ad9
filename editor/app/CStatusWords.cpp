#include "editor/app/CStatusWords.h"

#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CStatusLine.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginTools.h"

#include <cmath>

namespace
{

constexpr qint64 TIME_TO_READ_MS = 1000;

// Empty where nothing is to be said.
QString GetReason(const SPointOutcome& outcome)
{
    const QString strValue = QString::number(static_cast<double>(outcome.fValue), 'g', 6);
    switch (outcome.eKind)
    {
    case EPointOutcome::NoGround:
        return "No ground under the cursor";
    case EPointOutcome::NoVertices:
        return "Nothing changed: no vertex that can change lies under the brush";
    case EPointOutcome::Faded:
        return "The stroke has faded out after " + strValue;
    case EPointOutcome::NoPower:
        return "Nothing changed: the power of the brush is 0";
    case EPointOutcome::NoShape:
        return "Nothing changed: the brush image is black here";
    case EPointOutcome::Masked:
        return "Nothing changed: the mask is black here";
    case EPointOutcome::Band:
        return "Nothing changed: no height within the vertical distance of " + strValue;
    case EPointOutcome::Limit:
        return QString("Nothing changed: the ground is at its %1 height, ")
                   .arg(outcome.fValue > 0.0F ? "highest" : "lowest") +
               strValue;
    case EPointOutcome::Strongest:
        return "Nothing changed: this stroke has done the most it can here";
    case EPointOutcome::NoLength:
        return "No ramp: it begins and ends on one spot";
    case EPointOutcome::Same:
        return "Nothing changed: the ground is already as the tool would make it";
    case EPointOutcome::Protected:
        return "Nothing changed: the ground here is protected";
    case EPointOutcome::NoExtent:
        return "Nothing changed: the extent of the brush is not above 0";
    case EPointOutcome::NoWork:
        return "Nothing changed: the tool has nothing to do with its numbers in the panel";
    case EPointOutcome::None:
    case EPointOutcome::Changed:
    case EPointOutcome::Sideways:
        break;
    }
    return {};
}

} // namespace

CStatusWords::CStatusWords(CEditor& editor, const CEditorFace& face, CStatusLine& status)
    : m_Editor(editor)
    , m_Face(face)
    , m_Status(status)
    , m_pBefore(SetNoticeSink(this))
{
    m_Editor.GetHost().GetObservers().Add(this);
}

CStatusWords::~CStatusWords()
{
    m_Editor.GetHost().GetObservers().Remove(this);
    SetNoticeSink(m_pBefore);
}

void CStatusWords::OnNotice(const char* pszText)
{
    if (!m_Face.IsScriptPlayed())
    {
        m_Status.Say(QString::fromUtf8(pszText));
    }
}

void CStatusWords::OnStandingNotice(const char* pszTopic, const char* pszText)
{
    m_Status.Stand(pszTopic, QString::fromUtf8(pszText));
}

void CStatusWords::OnBeforeEvent(const SHostEvent& event)
{
    if (event.eKind != EHostEvent::ButtonDown || m_Face.IsScriptPlayed())
    {
        return;
    }
    auto* pStrokes = m_Editor.FindInterface<IPluginStrokes>();
    m_Drag = {};
    m_Drag.bRuns = true;
    m_Drag.bTool = m_Editor.GetHost().GetModes().GetCurrentModeId() != NO_MODE;
    if (pStrokes != nullptr)
    {
        pStrokes->TakePointOutcome(); // what happened before is not this drag's
    }
}

void CStatusWords::OnEvent(const SHostEvent& event)
{
    if (!m_Drag.bRuns)
    {
        return;
    }
    switch (event.eKind)
    {
    case EHostEvent::ButtonDown:
        if (m_Editor.GetHost().GetEngine().GetCWorld().GetCTerrain() == nullptr)
        {
            m_Status.Say("No level: File > New level or Open");
            m_Drag = {};
            break;
        }
        if (!m_Drag.bTool)
        {
            m_Status.Say("No tool: choose one in the panel or press 1 to 6");
        }
        Hear(event);
        break;
    case EHostEvent::MouseMove:
        Hear(event);
        break;
    case EHostEvent::ButtonUp:
        Hear(event);
        EndDrag();
        break;
    case EHostEvent::DragDropped:
        m_Drag = {};
        break;
    default:
        break;
    }
}

void CStatusWords::Hear(const SHostEvent& event)
{
    auto* pStrokes = m_Editor.FindInterface<IPluginStrokes>();
    const SPointOutcome outcome =
        pStrokes != nullptr ? pStrokes->TakePointOutcome() : SPointOutcome();
    if (outcome.eKind == EPointOutcome::None)
    {
        return;
    }
    if (outcome.eKind == EPointOutcome::Changed)
    {
        m_Drag.bChanged = true;
        m_Drag.changed = event.hit;
        m_Drag.bChangedSince = true;
        // The reason goes when it is true no longer, but not before it could be read.
        if (m_Drag.sinceSaid.isValid() && m_Drag.sinceSaid.hasExpired(TIME_TO_READ_MS))
        {
            WithdrawReason();
        }
    }
    m_Drag.bSideways = m_Drag.bSideways || outcome.eKind == EPointOutcome::Sideways;
    const QString strReason = GetReason(outcome);
    const uint32_t uBit = 1U << static_cast<uint32_t>(outcome.eKind);
    if (!strReason.isEmpty() && (m_Drag.uSaid & uBit) == 0 && IsNews(outcome, event))
    {
        m_Drag.uSaid |= uBit;
        m_Drag.strSaid = strReason;
        m_Drag.sinceSaid.start();
        m_Drag.bChangedSince = false;
        m_Status.Say(strReason);
    }
}

// A stroke that has just changed something here need not say that it changes nothing more; the
// point of the release is such a one.
bool CStatusWords::IsNews(const SPointOutcome& outcome, const SHostEvent& event) const
{
    const bool bDone =
        outcome.eKind == EPointOutcome::Same || outcome.eKind == EPointOutcome::Strongest;
    if (!bDone || !m_Drag.bChanged)
    {
        return true;
    }
    const float fAway = std::hypot(event.hit.x - m_Drag.changed.x, event.hit.z - m_Drag.changed.z);
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    const float fExtent = pTools != nullptr ? pTools->GetBrushExtent() : 0.0F;
    return event.bHit && fAway >= fExtent / 2;
}

void CStatusWords::WithdrawReason()
{
    if (!m_Drag.strSaid.isEmpty())
    {
        m_Status.Withdraw(m_Drag.strSaid);
        m_Drag.strSaid.clear();
    }
}

void CStatusWords::EndDrag()
{
    if (m_Drag.bChangedSince)
    {
        WithdrawReason();
    }
    if (m_Drag.bSideways && !m_Drag.bChanged && m_Drag.uSaid == 0)
    {
        m_Status.Say("Nothing changed: this tool follows the mouse up and down");
    }
    m_Drag = {};
}
