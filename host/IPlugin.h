#pragma once

#include "host/Export.h"
#include "host/HostTypes.h"

namespace fs
{
class ifile;
}
class CMenu;
class CTCPARSE_KEYWORD;
class EditorHost;
class EngineHost;

// Codes of IPlugin::OnHostNotify; a plug-in ignores others.
enum EHostNotification : int32_t
{
    NOTIFY_PANEL_CLOSED = 1,  // the user closed the plug-in's panel
    NOTIFY_LEVEL_CHANGED = 5, // the terrain's resolution or the level changed
    NOTIFY_HOST_GOES = 10,    // the host goes away, its pointers are dead from here on
};

// The action handle of a plug-in: its commands have the numbers from the handle + 1 on.
constexpr uint32_t MakeActionHandle(uint32_t uPlugin)
{
    return 0x4000U + 256U * (uPlugin % 64U);
}

// Base of what IPlugin::DestroyObject deletes.
class IPluginObject
{
public:
    virtual ~IPluginObject() = default;
};

// A plug-in as the host drives it, C++ only, host and plug-in built by the same compiler. One
// object per library, owned by the library. Order of calls: InitializeMe, RegisterActions,
// Initialize, LoadSettings, Activate(true) when the panel was open last time; at the end
// SaveSettings, Shutdown, OnHostNotify(NOTIFY_HOST_GOES). LoadSettings may also come before
// Initialize. UI thread. Reserved operations are for purposes that a plug-in may leave at their
// defaults.
class IPlugin
{
public:
    virtual void ReservedA(uintptr_t) = 0;
    virtual void ResetSettings() = 0;
    virtual void SaveSettings(fs::ifile& file) = 0;                // borrowed, open for writing
    virtual void LoadSettings(const CTCPARSE_KEYWORD* pFirst) = 0; // borrowed, null allowed
    virtual bool ReservedB(uintptr_t, uintptr_t) = 0;
    virtual void ReservedC(uintptr_t) = 0;
    virtual void ReservedD() = 0;
    virtual void ReservedE() = 0;
    virtual void RegisterActions() = 0;
    // pszBuffer: large enough for the text and its terminator, null allowed.
    virtual void GetCommandText(int32_t iPlugin, int32_t iCommand, char* pszBuffer) = 0;
    virtual void Initialize() = 0;
    virtual void Activate(bool bShow) = 0;
    virtual void Shutdown() = 0;
    virtual void OnCommand(int32_t iCommand) = 0; // local command, 1 to 5
    virtual void DestroyObject(uint32_t uReserved, IPluginObject* pObject) = 0;
    virtual void ReleaseWorldResources() = 0; // the level is about to close
    virtual void ReservedF() = 0;
    virtual uint32_t* GetActionHandle(uint32_t* pHandle) = 0; // writes and returns pHandle
    virtual int32_t GetModeGroup() = 0;

    virtual void ReservedG(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    virtual void ReservedH(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    // iX, iY: view pixels; iDx, iDy: pixels since the last event.
    virtual void OnLButtonDown(ViewId, uint32_t, int32_t, int32_t, int32_t, int32_t) {}

    virtual void OnLButtonUp(ViewId, uint32_t, int32_t, int32_t, int32_t, int32_t) {}

    virtual void ReservedI(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    virtual void ReservedJ(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    virtual void ReservedK(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    virtual void ReservedL(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    // view, flags, x, y, wheel, buttons, dx, dy
    virtual void OnMouseMove(ViewId, uint32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t)
    {
    }

    virtual int32_t
    ReservedM(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t)
    {
        return 0;
    }

    virtual void OnAction(ViewId, int32_t, uint32_t) {} // view, action, repeat count

    virtual void Notify(uintptr_t, uintptr_t, uintptr_t) {}

    virtual void ReservedN() {}

    // True when an item was added. pMenu: borrowed for the call. Asked only where
    // HasContextMenuItems has said yes.
    virtual bool
    AddContextMenuItems(CMenu* pMenu, ViewId view, ViewPoint point, uint32_t uReserved) = 0;
    virtual bool ReservedO(uintptr_t) = 0;
    virtual bool HasContextMenuItems(ViewId view, ViewPoint point, uint32_t uReserved) = 0;
    // iCode: EHostNotification.
    virtual void OnHostNotify(int32_t iCode, uintptr_t uReserved) = 0;
    virtual void ReservedP(uintptr_t, uintptr_t, uintptr_t, uintptr_t) = 0;

    virtual bool ReservedQ(uintptr_t, uintptr_t) { return false; }

    virtual bool ReservedR(uintptr_t, uintptr_t, uintptr_t, uintptr_t) { return false; }

    virtual bool ReservedS(uintptr_t, uintptr_t) { return false; }

    virtual bool ReservedT(uintptr_t) = 0;
    virtual void ReservedU(uintptr_t, uintptr_t) = 0;
    virtual int32_t ReservedV(uintptr_t, uintptr_t, uintptr_t, uintptr_t) = 0;
    virtual ~IPlugin() = default;
};

// What a plug-in object may offer beyond IPlugin, each an interface of its own that the object
// derives from: IPluginScript, IPluginTools, IPluginStrokes, IPluginPainting, IPluginBrushes. A
// host asks for one with dynamic_cast from the IPlugin pointer and does without where that gives
// null; it lives as long as the object.

// The one exported function of a plug-in library. uPlugin: the plug-in's index in the host.
using FInitializeMe = IPlugin* (*)(EditorHost*, uint32_t, EngineHost*);
