#pragma once

#include "host/HostTypes.h"

#include <cstdint>
#include <vector>

struct SGroundAct;
struct SProtectAct;

enum class EHostEvent : uint32_t
{
    ButtonDown,
    MouseMove,
    ButtonUp,
    Action,
    Command,
    Undo,
    Redo,
    PaintUndo,       // of the last stroke on the bitmap, asked for through the host
    PaintRedo,       // as this
    UndoAdded,       // a record came; inside the event that made it
    LevelChanged,    // another terrain; the undo stack is empty
    TerrainReloaded, // the same level has another terrain: the file was read again, an import, or
                     // undo or redo of one of these, in the middle of that event. Also when the
                     // plug-in has a reload shown that brought nothing
    Reshaped,        // the ground was changed as a whole; or not after all
    Protected,       // another protection, or the same after all: told before the first change of a
                     // step, and when it is a step or was taken back
    DragDropped,     // for want of memory: heights as before the press, no record. In an open
                     // step: as before that, and it is over
    StepBegun,       // records that come are one step of the history, until
    StepEnded,       // it is whole, with or without one
};

// One thing that happened on the host. Members that an event has no use for are 0.
struct SHostEvent
{
    EHostEvent eKind = EHostEvent::LevelChanged;
    ViewId view = NO_VIEW;
    uint32_t uFlags = 0;  // EMouseFlag
    SStepBlock step = {}; // of a move
    int32_t iWheel = 0;
    int32_t iAction = 0;
    uint32_t uCount = 0;   // of an action
    uint32_t uCommand = 0; // global number

    // What the plug-in was told when it asked for the point under the cursor during the event; no
    // hit before the event, and when it did not ask.
    bool bHit = false;
    SVec3 hit = {};

    // What a new step of the protection consists of, in its order; borrowed. Null: there is none.
    const std::vector<SProtectAct>* pProtected = nullptr;

    // What has reshaped the ground as a step, borrowed. Null: there is none.
    const SGroundAct* pGround = nullptr;

    // Of TerrainReloaded: the event that it lies in says how to get there, Reshaped, Undo or Redo.
    bool bTold = false;
};

// Is told of everything that a host hands to plug-ins and of every change of the level. Borrowed by
// CHostObservers between Add and Remove; must not add or remove observers from within a call. UI
// thread.
class IHostObserver
{
public:
    virtual ~IHostObserver() = default;

    // Called before the plug-ins see the event. Not called for UndoAdded, LevelChanged,
    // TerrainReloaded, DragDropped and StepEnded. An undo or redo that finds nothing to do, of
    // heights or painting, has no OnEvent. The release that ends a drag may come inside another
    // event.
    virtual void OnBeforeEvent(const SHostEvent& /*event*/) {}

    virtual void OnEvent(const SHostEvent& /*event*/) {}

    // One of the two calls above ended for want of memory: what the observer keeps of the event is
    // not whole. The observer must manage without memory here.
    virtual void OnMissedEvent() {}
};
