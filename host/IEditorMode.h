#pragma once

#include "host/HostTypes.h"

// One way in which the host's 3D views take input. A plug-in makes it and registers it with the
// ModeManager, which owns it from then on and destroys it without another call before the library
// is closed. UI thread.
//
// Becoming current: IsAvailable of the new mode; CanDeactivate, OnLButtonUp of a drag that runs,
// Suspend(false) where it is suspended, and Deactivate of the mode before; then Activate. While
// Deactivate runs, no mode is current; while Activate runs, this one is. Each may call the
// ModeManager again, and a mode may leave itself from any of its calls.
//
// While it is current: SetCursor, input as the plug-in forwards it, Render. A press is followed by
// moves with MOUSE_LEFT in their flags and by one release; moves without it come as well, and a
// last one at (-1, -1) when the cursor leaves the view. A script's events have no place, (0, 0):
// EditorHost::PickTerrain knows where its cursor is. What a mode keeps from a press it must be
// able to drop without a release: a press that comes while it believes in an older one begins anew.
class IEditorMode
{
public:
    virtual ~IEditorMode() = default;

    // The host's number of the mode: set once by ModeManager::RegisterMode, kept, never
    // interpreted.
    virtual void SetId(uint32_t uId) = 0;
    virtual uint32_t GetId() const = 0;
    virtual const char* GetName() const = 0; // for logs, static text
    // A number that a host may keep here, 0 at first; the mode makes nothing of it.
    virtual uint32_t GetUserData() const = 0;
    virtual void SetUserData(uint32_t uData) = 0;

    virtual bool IsAvailable() = 0;   // false: may not become current now
    virtual bool CanDeactivate() = 0; // false: may not be left now, unless the plug-in is unloaded
    // The cursor has come over a view, or the host has changed the tool under it: sets its cursor.
    // False: it has none, and the host shows its own. It may also announce itself and redraw.
    virtual bool SetCursor() = 0;
    virtual void Activate() = 0;   // takes the input; announces itself with SetModeCaption
    virtual void Deactivate() = 0; // gives back what it shows and holds; also without a level
    // True: something else has the mouse for a while, such as the camera; a release that comes then
    // gives up the drag. False: it is back. Not called twice with the same value.
    virtual void Suspend(bool bSuspended) = 0;

    // Button events are (view, point, flags), moves (view, flags, point, ...). uFlags: EMouseFlag.
    // point: for EditorHost::PickTerrain.
    virtual void OnLButtonDown(ViewId view, ViewPoint point, uint32_t uFlags) = 0;
    // uExtra1: address of an SWheelBlock, uExtra2: of an SStepBlock, both valid for the call.
    virtual void OnMouseMove(
        ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t uExtra1, uintptr_t uExtra2) = 0;
    virtual void OnLButtonUp(ViewId view, ViewPoint point, uint32_t uFlags) = 0;
    virtual void OnAction(ViewId view, int iAction, uint32_t uCount) = 0; // see IPlugin::OnAction
    virtual void Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) = 0; // see IPlugin
    // Once for each frame of each view: draws with EngineHost::DrawLine, DrawLines and
    // Terrain::DrawProjectedTexture. Changes nothing else. There may be no terrain.
    virtual void Render() = 0;
};
