#pragma once

#include "host/HostTypes.h"

// One way in which the host's 3D views take input. Made by a plug-in, owned by the ModeManager once
// registered. Called on the UI thread. Button events carry (view, point, flags), the move event
// (view, flags, point, ...).
class IEditorMode
{
public:
    virtual ~IEditorMode() = default;
    virtual void SetId(uint32_t uId) = 0; // the host's, never interpreted
    virtual uint32_t GetId() const = 0;
    virtual const char* GetName() const = 0;
    virtual uint32_t GetUserData() const = 0;
    virtual void SetUserData(uint32_t uData) = 0;
    virtual bool IsAvailable() = 0;
    virtual bool CanDeactivate() = 0;
    virtual bool SetCursor() = 0; // true when a cursor was set
    virtual void Activate() = 0;
    virtual void Deactivate() = 0;
    virtual void Suspend(bool bSuspended) = 0;
    virtual void OnLButtonDown(ViewId view, ViewPoint point, uint32_t uFlags) = 0;
    // uExtra1: address of an SWheelBlock, uExtra2: of an SStepBlock, both valid for the call.
    virtual void OnMouseMove(
        ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t uExtra1, uintptr_t uExtra2) = 0;
    virtual void OnLButtonUp(ViewId view, ViewPoint point, uint32_t uFlags) = 0;
    virtual void OnAction(ViewId view, int iAction, uint32_t uCount) = 0;
    virtual void Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) = 0;
    virtual void Render() = 0; // once a frame while the mode is current
};
