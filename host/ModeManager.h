#pragma once

#include "host/HostTypes.h"

class IEditorMode;

constexpr int NO_MODE = -1; // the id of no mode

// Groups of modes: a plug-in hands input on while the current mode is of its own group.
enum EModeGroup : int
{
    MODE_GROUP_NONE = -1,   // no mode is current
    MODE_GROUP_TERRAIN = 7, // the terrain tool's; other plug-ins take other numbers
};

// The host's switch between editor modes; exactly one mode is current, or none. Asked for anew at
// each use. UI thread.
class ModeManager
{
public:
    virtual ~ModeManager() = default;

    // Takes ownership of the mode (null gives NO_MODE). The id is 0 or more and is told to the
    // mode.
    virtual int RegisterMode(IEditorMode* pMode, int iGroup) = 0;
    // Leaves the current mode and makes this one current. False when it is unknown, not available,
    // or the current one may not be left. iParameter: the host's, 0.
    virtual bool ActivateMode(int iModeId, int iParameter) = 0;
    // Leaves the current mode; none is current then. False when it may not be left.
    virtual bool DeactivateMode(int iParameter) = 0;
    virtual bool CanDeactivateCurrentMode() = 0; // true when there is none
    virtual int GetCurrentModeId() = 0;          // NO_MODE when there is none
    virtual int GetCurrentModeGroup() = 0;       // MODE_GROUP_NONE when there is none
    virtual bool IsModeAvailable(int iModeId) = 0;

    // Hand the plug-in's forwarded input to the current mode. The blocks are borrowed for the call;
    // OnMouseMove gives the mode the addresses of the last two as extra1 and extra2.
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
