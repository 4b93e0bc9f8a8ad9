#pragma once

#include "host/HostTypes.h"

class IEditorMode;

// The host's switch between editor modes; exactly one mode is current, or none. The plug-in gets it
// from EditorHost::GetModeManager at each use and calls all of it, on the UI thread: RegisterMode
// in IPlugin::Initialize, the others from then to NOTIFY_HOST_GOES. What a switch calls on the
// modes, and in which order, IEditorMode.h says; all of that has happened when the operation
// returns, and from within it a mode may ask for another switch.

constexpr int NO_MODE = -1; // the id of no mode

// Groups of modes: a plug-in hands input on while the current mode is of its own group.
enum EModeGroup : int
{
    MODE_GROUP_NONE = -1,   // no mode is current
    MODE_GROUP_TERRAIN = 7, // the terrain tool's; other plug-ins take other numbers
};

class ModeManager
{
public:
    virtual ~ModeManager() = default;

    // Takes ownership of the mode (null gives NO_MODE; one that is registered keeps its id). The id
    // is 0 or more and is told to the mode. iGroup: EModeGroup or a number of the plug-in's own.
    virtual int RegisterMode(IEditorMode* pMode, int iGroup) = 0;
    // Leaves the current mode and makes this one current. True too when it is so already, without a
    // call to it. False when it is unknown, not available, or refused by the current one or by the
    // host. iParameter: the host's, 0.
    virtual bool ActivateMode(int iModeId, int iParameter) = 0;
    // Leaves the current mode; none is current then. False when it may not be left. iParameter: 0.
    virtual bool DeactivateMode(int iParameter) = 0;
    virtual bool CanDeactivateCurrentMode() = 0;   // asks the mode; true when there is none
    virtual int GetCurrentModeId() = 0;            // NO_MODE when there is none
    virtual int GetCurrentModeGroup() = 0;         // MODE_GROUP_NONE when there is none
    virtual bool IsModeAvailable(int iModeId) = 0; // asks the mode; false for an unknown one

    // Hand the plug-in's forwarded input to the current mode, without one to nobody. The blocks are
    // borrowed for the call, null ones make it nothing; OnMouseMove gives the mode the addresses of
    // the last two as extra1 and extra2.
    virtual void OnLButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock) = 0;
    virtual void OnMouseMove(ViewId view,
                             uint32_t uFlags,
                             const SPointBlock* pPoint,
                             const SWheelBlock* pWheel,
                             const SStepBlock* pStep) = 0;
    virtual void OnLButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock) = 0;
    virtual void OnAction(ViewId view, int iAction, uint32_t uCount) = 0;
    virtual void Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) = 0;
};
