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

// A plug-in as the host drives it. Both are C++ of the same compiler; interfaces are classes with
// virtual operations in an agreed order. Everything is called on the UI thread, in both directions.
//
// Start. The library is opened, and its static objects are made; the plug-in object is one of them.
// The host calls InitializeMe, RegisterActions, Initialize, LoadSettings and, when the panel was
// open last time, Activate(true). LoadSettings may also come before Initialize.
//
// While it runs, in any order: input and actions, commands, context menus, notifications. Plug-ins
// get them while EditorHost::RegisterPluginA has them listed. Each plug-in gets all input, and
// hands it to the ModeManager when the mode that is current is of its own group. A press is
// followed by moves with the button held and by one release, in the same view; the release comes
// too where the person made none (the level or the mode is left, the mouse is lost).
//
// Another level, or another terrain in it: the release of a drag that runs, ReleaseWorldResources,
// the other heights, the undo records are destroyed (not where the change is a record itself),
// OnHostNotify(NOTIFY_LEVEL_CHANGED). Where the other level cannot be read, ReleaseWorldResources
// was called, heights and records stay, and no notification comes. The first level comes in this
// way, too. A reload that the plug-in asks for itself with EditorHost::GetEnvironmentFile comes
// without ReleaseWorldResources.
//
// End. The release of a drag that runs, the current mode is left, SaveSettings (by a host that
// keeps settings), the panel is closed, Shutdown, OnHostNotify(NOTIFY_HOST_GOES). Then the host
// destroys all that it owns of the plug-in (modes, undo records, processes) without another call to
// it, and closes the library, which destroys the plug-in object.
//
// A call into the host may call the plug-in again before it returns: leaving a mode ends its drag,
// opening the panel makes it, a reload notifies. While a question to the person is open, frames,
// timers and autosaves go on. Nothing throws but std::bad_alloc, which a plug-in may let through to
// the host out of input, actions, commands, notifications, Undo, Redo and Render: the host takes
// the drag back (IPluginStrokes::DropDrag) and logs a line.

// Codes of IPlugin::OnHostNotify; a plug-in ignores others.
enum EHostNotification : int32_t
{
    NOTIFY_PANEL_CLOSED = 1,  // the user closed the plug-in's panel
    NOTIFY_LEVEL_CHANGED = 5, // the terrain's resolution or the level changed
    NOTIFY_HOST_GOES = 10,    // the host goes away, its pointers are dead from here on
};

// The action handle of the plug-in with that index. The plug-in's local commands 1 to 255 have the
// numbers handle + 1 to handle + 255 in the host's menus and toolbars.
constexpr uint32_t MakeActionHandle(uint32_t uPlugin)
{
    return 0x4000U + 256U * (uPlugin % 64U);
}

// The index that MakeActionHandle was given, less its multiples of 64.
constexpr int32_t GetPluginIndex(uint32_t uActionHandle)
{
    return static_cast<int32_t>(uActionHandle / 256U % 64U);
}

// The local command that opens and closes the panel, of a plug-in that has one: see
// EditorHost::SetPluginViewState.
constexpr uint32_t PANEL_COMMAND = 1;

// Base of what IPlugin::DestroyObject deletes.
class IPluginObject
{
public:
    virtual ~IPluginObject() = default;
};

// One object per library, owned by the library. Operations without a default must be there. The
// reserved ones are for purposes that a plug-in may leave alone: their arguments mean nothing to
// it, and it does nothing and answers as the comment says.
class IPlugin
{
public:
    virtual void ReservedA(uintptr_t) = 0; // does nothing
    // Puts the plug-in's settings back to their defaults, because the person asks for that.
    virtual void ResetSettings() = 0;
    // Appends the plug-in's keys to the host's settings file, as declarations and calls. file:
    // borrowed, open for writing; its faults are the host's to see. Only with RegisterPluginB.
    virtual void SaveSettings(fs::ifile& file) = 0;
    // Picks its own keys from the whole chain of the settings file, the last of a name counts.
    // pFirst: borrowed for the call, null without a file; parser/KeywordValues.h reads it, names
    // are in lower case. Only with RegisterPluginB.
    virtual void LoadSettings(const CTCPARSE_KEYWORD* pFirst) = 0;
    virtual bool ReservedB(uintptr_t, uintptr_t) = 0; // true
    // These do nothing.
    virtual void ReservedC(uintptr_t) = 0;
    virtual void ReservedD() = 0;
    virtual void ReservedE() = 0;
    // Called once, before Initialize; calls EditorHost::RegisterActions.
    virtual void RegisterActions() = 0;
    // Writes the short text of a local command, as a button shows it, with its terminator into
    // pszBuffer, an empty one where there is none. The caller's buffer has room for any text of the
    // plug-in: 1024 bytes of ours. Null and the index of another plug-in leave it.
    virtual void GetCommandText(int32_t iPlugin, int32_t iCommand, char* pszBuffer) = 0;
    // Called once; registers the plug-in, its modes, toolbar, menu, settings and processes with the
    // host.
    virtual void Initialize() = 0;
    // Opens the panel for true, which does not come while it is open. False does nothing.
    virtual void Activate(bool bShow) = 0;
    // Called once; calls EditorHost::UnregisterPluginA and UnregisterPluginB. The host can still be
    // called until NOTIFY_HOST_GOES, and what the plug-in has handed over stays the host's.
    virtual void Shutdown() = 0;
    virtual void OnCommand(int32_t iCommand) = 0; // a local command was chosen; others are ignored
    // Deletes an object that this library made, in its heap; null is ignored. uReserved: 0. Ours
    // does not call it, since destructors are virtual.
    virtual void DestroyObject(uint32_t uReserved, IPluginObject* pObject) = 0;
    // The level's textures, heights and whatever else belongs to it are about to go: gives back
    // what it has from World and texture manager, and keeps nothing that depends on the size.
    virtual void ReleaseWorldResources() = 0;
    virtual void ReservedF() = 0; // does nothing
    // Writes MakeActionHandle of its index to pHandle, never null, and returns pHandle.
    virtual uint32_t* GetActionHandle(uint32_t* pHandle) = 0;
    // The group of all its modes, an EModeGroup or a number of its own. Ours does not call it,
    // since each mode is registered with its group.
    virtual int32_t GetModeGroup() = 0;

    // These two do nothing.
    virtual void ReservedG(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    // As above.
    virtual void ReservedH(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    // The left button went down in a view: view, EMouseFlag, x, y in view pixels, dx, dy since the
    // last event. Goes to ModeManager::OnLButtonDown, the four numbers as one block.
    virtual void OnLButtonDown(ViewId, uint32_t, int32_t, int32_t, int32_t, int32_t) {}

    // The left button went up, or the host ends the drag, which the plug-in cannot tell apart: the
    // same arguments, without MOUSE_LEFT.
    virtual void OnLButtonUp(ViewId, uint32_t, int32_t, int32_t, int32_t, int32_t) {}

    // These four do nothing.
    virtual void ReservedI(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    // As above.
    virtual void ReservedJ(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    // As above.
    virtual void ReservedK(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    // As above.
    virtual void ReservedL(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {}

    // The cursor moved, with or without the button, or left the view (x and y are -1): view,
    // EMouseFlag, x, y, notches of the wheel, EMouseButton, dx, dy. Goes to
    // ModeManager::OnMouseMove.
    virtual void OnMouseMove(ViewId, uint32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t)
    {
    }

    // Answers 0.
    virtual int32_t
    ReservedM(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t)
    {
        return 0;
    }

    // A key of an action: view, its number (of this plug-in's own, or ECameraAction), how many
    // strokes of the key this stands for. A key that is held comes again and again, each with 1; a
    // script may give another number. What is no business of the plug-in goes to the current mode.
    virtual void OnAction(ViewId, int32_t, uint32_t) {}

    // Three numbers that a host wants the current mode to have; ours sends none.
    virtual void Notify(uintptr_t, uintptr_t, uintptr_t) {}

    // Does nothing.
    virtual void ReservedN() {}

    // Inserts its items into the context menu of a view. True when there is one more. pMenu:
    // borrowed for the call. point: for PickTerrain. Asked only where HasContextMenuItems has said
    // yes.
    virtual bool
    AddContextMenuItems(CMenu* pMenu, ViewId view, ViewPoint point, uint32_t uReserved) = 0;
    virtual bool ReservedO(uintptr_t) = 0; // false
    // Whether it has items for that point; changes nothing. uReserved: 0, as above.
    virtual bool HasContextMenuItems(ViewId view, ViewPoint point, uint32_t uReserved) = 0;
    virtual void OnHostNotify(int32_t iCode, uintptr_t uReserved) = 0;      // EHostNotification; 0
    virtual void ReservedP(uintptr_t, uintptr_t, uintptr_t, uintptr_t) = 0; // does nothing

    // False.
    virtual bool ReservedQ(uintptr_t, uintptr_t) { return false; }

    // False.
    virtual bool ReservedR(uintptr_t, uintptr_t, uintptr_t, uintptr_t) { return false; }

    // False.
    virtual bool ReservedS(uintptr_t, uintptr_t) { return false; }

    virtual bool ReservedT(uintptr_t) = 0;                                     // false
    virtual void ReservedU(uintptr_t, uintptr_t) = 0;                          // does nothing
    virtual int32_t ReservedV(uintptr_t, uintptr_t, uintptr_t, uintptr_t) = 0; // 0
    virtual ~IPlugin() = default; // run by the library, never by the host
};

// What a plug-in object may offer beyond IPlugin, each an interface of its own that the object
// derives from: IPluginScript, IPluginTools, IPluginMark, IPluginStrokes, IPluginPainting,
// IPluginBrushes. A host asks for one with dynamic_cast from the IPlugin pointer and does without
// where that gives null; it lives as long as the object. From Initialize to NOTIFY_HOST_GOES all of
// them can be called; those that only tell something can be called during a drag and from within a
// call of the plug-in's.

// The one exported function of a plug-in library, "InitializeMe", C linkage. uPlugin: the plug-in's
// index in the host. Keeps the two pointers, which are borrowed until NOTIFY_HOST_GOES and never
// null, calls no more than EngineHost::GetWorld, and returns the plug-in object; null fails the
// load. Called once for a library that is opened.
using FInitializeMe = IPlugin* (*)(EditorHost*, uint32_t, EngineHost*);
