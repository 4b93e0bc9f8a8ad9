#pragma once

#include "editor/core/IHostObserver.h"
#include "host/EditorHost.h"
#include "host/IPluginStrokes.h"

#include <cstdint>
#include <new>
#include <string>

class CChangeCount;
class CHostObservers;
class CPluginRegistry;
class IDragOwner;
class IPlugin;
class IStepKeeper;

// What a drag has been so far.
struct SDragTrack
{
    uint32_t nMoves = 0; // events of the mouse behind the press
    bool bHit = false;   // a plug-in has found ground under the cursor:
    SVec3 first;         // where it did first
    SVec3 last;          // and last
};

// The way of all input to the plug-ins: to each one that is listed for input, which gives it to the
// mode manager. The observers are told before and after; events may happen inside one another.
// Keeps to which view a drag belongs, and ends what a plug-in has no memory for. Lines in the log
// name CEditorHost, who owns it. UI thread.
class CHostInput
{
public:
    // Borrowed. changes: started at each press, up to date after each event.
    CHostInput(const CPluginRegistry& registry, CHostObservers& observers, CChangeCount& changes);

    // x, y: view pixels; dx, dy: pixels since the last event. A drag belongs to the view it began
    // in: other views hear nothing of the mouse until it ends, a press in one of them ends it
    // first, and a release there counts as its own.
    void SendButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock& block);
    void SendMouseMove(ViewId view,
                       uint32_t uFlags,
                       const SPointBlock& point,
                       const SWheelBlock& wheel,
                       const SStepBlock& step);
    void SendButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock& block);
    // How the brush is put down at the points that come, until the release that ends the drag.
    void SetPointForm(const SPointForm& form);

    const SPointForm& GetPointForm() const { return m_PointForm; }

    void SendAction(ViewId view, int32_t iAction, uint32_t uCount);
    // Runs a plug-in's command by its global number. False when it is no plug-in's.
    bool SendCommand(uint32_t uCommand);
    // The text that its plug-in has for a command; empty for none, and when it is no plug-in's.
    std::string GetCommandText(uint32_t uCommand) const;
    // As IPlugin::OnHostNotify; no event, so no observer hears of it.
    void Notify(int32_t iCode);

    // Sends the release of a button that is held, where the cursor was last: the capture is lost,
    // the level goes away, or the mode is left. Its owner then does what is left of it, unless a
    // plug-in is at something that bears no drag. The mouse is free afterwards.
    void EndDrag(bool bMaySend = true);

    // Who has sent the press; to be called at each press. Borrowed until ReleaseDragOwner, or until
    // the owner was told of the end.
    void SetDragOwner(IDragOwner* pOwner) { m_pOwner = pOwner; }

    // The owner ends the drag itself. Nothing when another one owns it.
    void ReleaseDragOwner(const IDragOwner* pOwner)
    {
        m_pOwner = m_pOwner == pOwner ? nullptr : m_pOwner;
    }

    void SetStepKeeper(IStepKeeper* pKeeper) { m_pSteps = pKeeper; } // borrowed; null: none

    // For when the plug-ins go: a drag is forgotten, and its release is sent to nobody.
    void ForgetDrag()
    {
        m_DragView = NO_VIEW;
        m_PointForm = {};
        m_pOwner = nullptr;
    }

    bool IsDragging() const { return m_DragView != NO_VIEW; }

    // The drag that runs, or the last one.
    const SDragTrack& GetDragTrack() const { return m_Track; }

    // Whether the plug-ins are at an event of the mouse at present.
    bool IsMouseEvent() const;
    // Makes what a plug-in is told of the ground under the cursor a part of the event that it is
    // at.
    void NoteHit(const SVec3& hit);

    // Does work that calls plug-ins or needs much memory. False, with one logged line that begins
    // with the operation, when there was not enough: a drag that ran is then over and its heights
    // are those of before it. Whatever else the work changed is its own to put back.
    template <typename TWork> bool Guard(const char* pszOperation, TWork work)
    {
        try
        {
            work();
            return true;
        }
        catch (const std::bad_alloc&)
        {
            OnNoMemory(pszOperation);
            return false;
        }
    }

private:
    template <typename TSend>
    void SendEvent(const char* pszOperation, const SHostEvent& event, TSend send);
    void FinishDrag(ViewId view, uint32_t uFlags, const SButtonBlock& block);
    void OnNoMemory(const char* pszOperation);
    IPlugin* FindOwner(uint32_t uCommand, uint32_t& uLocal) const;

    const CPluginRegistry& m_Registry;
    CHostObservers& m_Observers;
    CChangeCount& m_Changes;
    SHostEvent m_Event;          // the one that the plug-ins see at present
    ViewId m_DragView = NO_VIEW; // the view a button is held in
    SDragTrack m_Track;
    SPointForm m_PointForm;   // as the plug-ins have it
    SButtonBlock m_DragPoint; // where the cursor was last during that drag
    IDragOwner* m_pOwner = nullptr;
    IStepKeeper* m_pSteps = nullptr;
};
