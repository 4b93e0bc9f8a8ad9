#include "editor/core/CHostHistory.h"

#include "editor/core/CChangeCount.h"
#include "editor/core/CHostInput.h"
#include "editor/core/CHostObservers.h"
#include "editor/core/CPluginRegistry.h"
#include "editor/core/Words.h"
#include "host/IPlugin.h"
#include "host/IPluginMark.h"
#include "host/IPluginPainting.h"

#include <cmath>
#include <new>
#include <utility>

namespace
{

constexpr size_t BYTES_OF_A_VERTEX = 9; // in an undo record: two heights, and where they are

std::string GetPlaceText(const SVec3& at)
{
    return std::to_string(std::lround(at.x)) + ", " + std::to_string(std::lround(at.z));
}

// pMark: of the tool that has drawn it; null: not known.
std::string GetTrackText(const SDragTrack& track, const SToolMark* pMark)
{
    if (pMark != nullptr && pMark->eKind == EToolKind::Ramp && track.bHit)
    {
        return Words("from ") + GetPlaceText(track.first) + Words(" to ") +
               GetPlaceText(track.last);
    }
    std::string strText;
    if (pMark != nullptr && pMark->eKind == EToolKind::Add)
    {
        strText = pMark->eSign == EToolSign::Lower ? Words("lowers, ") : Words("raises, ");
    }
    strText +=
        std::to_string(track.nMoves) + (track.nMoves == 1 ? Words(" point") : Words(" points"));
    return track.bHit ? strText + Words(" at ") + GetPlaceText(track.first) : strText;
}

} // namespace

CHostHistory::CHostHistory(const CPluginRegistry& registry,
                           CHostInput& input,
                           CHostObservers& observers,
                           CChangeCount& changes)
    : m_Registry(registry)
    , m_Input(input)
    , m_Observers(observers)
    , m_Changes(changes)
{
    m_Stack.SetListener(this);
    m_Input.SetStepKeeper(this);
}

CHostHistory::~CHostHistory()
{
    m_Input.SetStepKeeper(nullptr);
}

void CHostHistory::Add(CUndo* pUndo, std::string strText)
{
    m_Changes.Follow();
    if (m_Stack.Add(pUndo, std::move(strText), m_Changes.GetCount() * BYTES_OF_A_VERTEX))
    {
        Describe();
        m_Observers.Tell({.eKind = EHostEvent::UndoAdded});
    }
    else if (IsStepOpen())
    {
        // A part of the step was taken back, and half of one is none.
        m_Stack.CancelStep();
        m_Observers.Tell({.eKind = EHostEvent::DragDropped});
    }
    // Another record of the same stroke holds only what changes from here.
    m_Changes.Clear();
}

// Says in the list of steps what and where a stroke was.
void CHostHistory::Describe()
{
    if (!m_Input.IsMouseEvent())
    {
        return;
    }
    SToolMark mark;
    auto* pMark = m_Registry.FindInterface<IPluginMark>();
    const bool bMark = pMark != nullptr && pMark->GetMark(false, mark);
    try
    {
        m_Stack.Describe(GetTrackText(m_Input.GetDragTrack(), bMark ? &mark : nullptr));
    }
    catch (const std::bad_alloc&)
    {
        return; // a step can be undone without it
    }
}

bool CHostHistory::AddStep(CUndo* pUndo, std::string strText, size_t nBytes)
{
    const bool bAdded = m_Stack.Add(pUndo, std::move(strText), nBytes);
    if (bAdded)
    {
        m_Observers.Tell({.eKind = EHostEvent::UndoAdded});
    }
    else if (IsStepOpen())
    {
        m_Stack.CancelStep();
        m_Observers.Tell({.eKind = EHostEvent::DragDropped});
    }
    return bAdded;
}

bool CHostHistory::BeginStep(ViewId view)
{
    if (IsStepOpen())
    {
        return false;
    }
    const SHostEvent event = {.eKind = EHostEvent::StepBegun, .view = view};
    m_Observers.TellBefore(event);
    m_StepView = view;
    m_Stack.BeginStep();
    m_Observers.Tell(event);
    return true;
}

void CHostHistory::EndStep(ViewId view)
{
    if (IsStepOpen() && (view == NO_VIEW || view == m_StepView))
    {
        m_Stack.EndStep();
        m_Observers.Tell({.eKind = EHostEvent::StepEnded, .view = m_StepView});
    }
}

void CHostHistory::OnPress(ViewId view)
{
    if (view != m_StepView)
    {
        EndStep();
    }
}

bool CHostHistory::Undo()
{
    EndStep();
    // A step may need memory: one that has replaced the terrain reads the other one.
    bool bUndone = false;
    m_Input.Guard("CEditorHost::Undo", [&] { bUndone = m_Stack.Undo(); });
    return bUndone;
}

bool CHostHistory::Redo()
{
    EndStep();
    bool bRedone = false;
    m_Input.Guard("CEditorHost::Redo", [&] { bRedone = m_Stack.Redo(); });
    return bRedone;
}

bool CHostHistory::GoToStep(size_t nPosition)
{
    EndStep();
    bool bThere = false;
    m_Input.Guard("CEditorHost::GoToStep", [&] { bThere = m_Stack.GoTo(nPosition); });
    return bThere;
}

void CHostHistory::StepPaint(bool bRedo)
{
    EndStep();
    const SHostEvent event = {.eKind = bRedo ? EHostEvent::PaintRedo : EHostEvent::PaintUndo};
    if (auto* pPainting = m_Registry.FindInterface<IPluginPainting>())
    {
        bool bStepped = false;
        m_Observers.TellBefore(event);
        m_Input.Guard("CEditorHost::StepPaint", [&] { bStepped = pPainting->StepPaint(bRedo); });
        if (bStepped)
        {
            m_Observers.Tell(event);
        }
    }
}

void CHostHistory::OnBeforeStep(bool bRedo)
{
    m_Observers.TellBefore({.eKind = bRedo ? EHostEvent::Redo : EHostEvent::Undo});
}

void CHostHistory::OnStep(bool bRedo)
{
    m_Observers.Tell({.eKind = bRedo ? EHostEvent::Redo : EHostEvent::Undo});
}
