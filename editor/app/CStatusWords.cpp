#include "editor/app/CStatusWords.h"

#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CStatusLine.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginTools.h"

#include <cmath>
#include <utility>

namespace
{

constexpr qint64 TIME_TO_READ_MS = 1000;
constexpr const char* NO_TOOL_YET = TextKey("No tool: choose one in the panel or press 1 to 6");

// Begins a reason that is of the whole stroke, and what is said instead when it is of a place.
constexpr const char* NOTHING_CHANGED = TextKey("Nothing changed: ");
constexpr const char* NOTHING_HERE = TextKey("Nothing changes here: ");
constexpr const char* OF_A_PLACE = TextKey(" here"); // which that need not say again

// Empty where nothing is to be said.
QString GetReason(const SPointOutcome& outcome)
{
    const QString strValue = QString::number(static_cast<double>(outcome.fValue), 'g', 6);
    switch (outcome.eKind)
    {
    case EPointOutcome::NoGround:
        return Words("No ground under the cursor");
    case EPointOutcome::NoVertices:
        return Words("Nothing changed: no vertex that can change lies under the brush");
    case EPointOutcome::Faded:
        return Words("The stroke has faded out after ") + strValue;
    case EPointOutcome::NoPower:
        return Words("Nothing changed: the power of the brush is 0");
    case EPointOutcome::NoShape:
        return Words("Nothing changed: the brush image is black here");
    case EPointOutcome::Masked:
        return Words("Nothing changed: the mask is black here");
    case EPointOutcome::Band:
        return Words("Nothing changed: no height within the vertical distance of ") + strValue;
    case EPointOutcome::Limit:
        return QString(Words("Nothing changed: the ground is at its %1 height, "))
                   .arg(outcome.fValue > 0.0F ? Words("highest") : Words("lowest")) +
               strValue;
    case EPointOutcome::Strongest:
        return Words("Nothing changed: this stroke has done the most it can here");
    case EPointOutcome::NoLength:
        return Words("No ramp: it begins and ends on one spot");
    case EPointOutcome::Same:
        return Words("Nothing changed: the ground is already as the tool would make it");
    case EPointOutcome::Protected:
        return Words("Nothing changed: the ground here is protected");
    case EPointOutcome::NoExtent:
        return Words("Nothing changed: the extent of the brush is not above 0");
    case EPointOutcome::NoWork:
        return Words("Nothing changed: the tool has nothing to do with its numbers in the panel");
    case EPointOutcome::None:
    case EPointOutcome::Changed:
    case EPointOutcome::Sideways:
        break;
    }
    return {};
}

// The reason as it is told while the stroke has changed something elsewhere.
QString GetReasonHere(const QString& strReason)
{
    const QString strChanged = Words(NOTHING_CHANGED);
    if (!strReason.startsWith(strChanged))
    {
        return strReason;
    }
    return Words(NOTHING_HERE) + strReason.mid(strChanged.size()).remove(Words(OF_A_PLACE));
}

// Another stroke may well change what is here.
bool IsOfStroke(EPointOutcome eKind)
{
    return eKind == EPointOutcome::Same || eKind == EPointOutcome::Strongest;
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

bool CStatusWords::IsStepOpen() const
{
    return m_Editor.GetHost().GetHistory().IsStepOpen();
}

void CStatusWords::OnBeforeEvent(const SHostEvent& event)
{
    if (event.eKind != EHostEvent::ButtonDown || m_Face.IsScriptPlayed())
    {
        return;
    }
    if (auto* pStrokes = m_Editor.FindInterface<IPluginStrokes>())
    {
        pStrokes->TakePointOutcome(); // what happened before is not this drag's
    }
    if (!m_Stroke.bRuns || !IsStepOpen())
    {
        m_Stroke = {};
        m_Stroke.bRuns = true;
        m_Stroke.bTool = m_Editor.GetHost().GetModes().GetCurrentModeId() != NO_MODE;
    }
}

void CStatusWords::OnEvent(const SHostEvent& event)
{
    if (!m_Stroke.bRuns)
    {
        return;
    }
    switch (event.eKind)
    {
    case EHostEvent::ButtonDown:
        if (m_Editor.GetHost().GetEngine().GetCWorld().GetCTerrain() == nullptr)
        {
            m_Status.Say(Words("No level: File > New level or Open"));
            m_Stroke = {};
            break;
        }
        if (m_Stroke.bTool)
        {
            m_Status.Withdraw(Words(NO_TOOL_YET));
        }
        else
        {
            m_Status.Say(Words(NO_TOOL_YET));
        }
        Hear(event);
        break;
    case EHostEvent::MouseMove:
        Hear(event);
        break;
    case EHostEvent::ButtonUp:
        Hear(event);
        if (!IsStepOpen())
        {
            EndStroke();
        }
        break;
    case EHostEvent::StepEnded:
        EndStroke();
        break;
    case EHostEvent::StepBegun: // of another stroke
    case EHostEvent::DragDropped:
        m_Stroke = {};
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
    const bool bHere = !m_Face.GetHand().bElsewhere;
    if (outcome.eKind == EPointOutcome::Changed)
    {
        NoteChange(event, bHere);
    }
    m_Stroke.bHeard = m_Stroke.bHeard || outcome.eKind != EPointOutcome::None;
    m_Stroke.bSideways = m_Stroke.bSideways || outcome.eKind == EPointOutcome::Sideways;
    const QString strReason = GetReason(outcome);
    if (strReason.isEmpty())
    {
        return;
    }
    if (!bHere)
    {
        HoldReason(outcome, strReason);
    }
    else if ((m_Stroke.uSaid & (1U << static_cast<uint32_t>(outcome.eKind))) == 0 &&
             IsNews(outcome, event))
    {
        SayReason(outcome, strReason);
    }
}

void CStatusWords::NoteChange(const SHostEvent& event, bool bHere)
{
    if (!m_Stroke.bChanged)
    {
        m_Stroke.bChanged = true;
        const QString strHere = GetReasonHere(m_Stroke.strSaid);
        m_Status.Replace(m_Stroke.strSaid, strHere);
        m_Stroke.strSaid = strHere;
    }
    if (bHere)
    {
        m_Stroke.bChangedHere = true;
        m_Stroke.changed = event.hit;
        m_Stroke.bChangedSince = true;
        // The reason goes when it is true no longer, but not before it could be read.
        if (m_Stroke.sinceSaid.isValid() && m_Stroke.sinceSaid.hasExpired(TIME_TO_READ_MS))
        {
            WithdrawReason();
        }
    }
}

void CStatusWords::SayReason(const SPointOutcome& outcome, const QString& strReason)
{
    m_Stroke.uSaid |= 1U << static_cast<uint32_t>(outcome.eKind);
    m_Stroke.eSaid = outcome.eKind;
    m_Stroke.strSaid = m_Stroke.bChanged ? GetReasonHere(strReason) : strReason;
    m_Stroke.sinceSaid.start();
    m_Stroke.bChangedSince = false;
    m_Status.Say(m_Stroke.strSaid);
}

void CStatusWords::HoldReason(const SPointOutcome& outcome, const QString& strReason)
{
    // An image that has left the ground says nothing, and the first of the others goes for all;
    // only that a stroke has faded out is to be known even where it has changed something.
    const bool bFaded = outcome.eKind == EPointOutcome::Faded;
    if (outcome.eKind != EPointOutcome::NoGround && (m_Stroke.strHeld.isEmpty() || bFaded))
    {
        m_Stroke.strHeld = strReason;
        m_Stroke.eHeld = outcome.eKind;
    }
}

// A stroke that has just changed something here need not say that it changes nothing more; the
// point of the release is such a one.
bool CStatusWords::IsNews(const SPointOutcome& outcome, const SHostEvent& event) const
{
    if (!IsOfStroke(outcome.eKind) || !m_Stroke.bChangedHere)
    {
        return true;
    }
    const float fAway =
        std::hypot(event.hit.x - m_Stroke.changed.x, event.hit.z - m_Stroke.changed.z);
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    const float fExtent = pTools != nullptr ? pTools->GetBrushExtent() : 0.0F;
    return event.bHit && fAway >= fExtent / 2;
}

void CStatusWords::WithdrawReason()
{
    if (!m_Stroke.strSaid.isEmpty())
    {
        m_Status.Withdraw(m_Stroke.strSaid);
        m_Stroke.strSaid.clear();
    }
}

void CStatusWords::EndStroke()
{
    const SStroke stroke = std::exchange(m_Stroke, {});
    if (stroke.bChangedSince || (stroke.bChanged && IsOfStroke(stroke.eSaid)))
    {
        m_Status.Withdraw(stroke.strSaid);
    }
    if (stroke.uSaid != 0)
    {
        return;
    }
    const bool bHeld = !stroke.bChanged || stroke.eHeld == EPointOutcome::Faded;
    if (bHeld && !stroke.strHeld.isEmpty())
    {
        m_Status.Say(stroke.strHeld);
    }
    else if (!stroke.bChanged && stroke.bSideways)
    {
        m_Status.Say(Words("Nothing changed: this tool follows the mouse up and down"));
    }
    else if (!stroke.bHeard && stroke.bTool && HasNoExtent())
    {
        m_Status.Say(GetReason({EPointOutcome::NoExtent})); // a click has no point then
    }
}

bool CStatusWords::HasNoExtent() const
{
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    return pTools != nullptr && pTools->IsTerraforming() && !(pTools->GetBrushExtent() > 0.0F);
}
