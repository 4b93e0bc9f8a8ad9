#pragma once

#include "host/HostTypes.h"

#include <string>
#include <vector>

class CMenu; // framework/core, as the next two
class CRuntimeClass;
class CToolBar;
class CUndo;
class ICamera;
class IEditorAction;
class IPaintLayer;
class IPlugin;
class ITextureManager;
class ModeManager;
class Terrain;
struct SActionDescriptor;
enum ERTTIType : uint32_t;

// What a plug-in can ask of the level editor: the services of host, engine and level. InitializeMe
// gets the EditorHost and the EngineHost, and every other object comes from these two: views and
// modes from here, World from the EngineHost, Terrain from the World. The plug-in may call any of
// it from Initialize to NOTIFY_HOST_GOES, also from within a call of the host's, on the UI thread;
// what it hands over with a register operation or AddUndo is the host's from the call on.
//
// Pointers that come back are borrowed: those of the host, the engine and the World until
// NOTIFY_HOST_GOES, everything else until the level changes unless its operation says otherwise, so
// it is asked for anew at each use. Texts are UTF-8, copied at the boundary in both directions; a
// text that comes back is borrowed until the next call. Null texts mean "" unless said otherwise.

// What EditorHost::BrowseForFile asks for.
enum EFileDialog : int
{
    FILE_DIALOG_SAVE = 0, // a file to save; without a default extension, an existing or a new one
    FILE_DIALOG_OPEN = 1, // an existing file
};

// What EditorHost::GetEnvironmentFile is to do.
enum EEnvironmentRequest : uint32_t
{
    ENVIRONMENT_FULL_PATH = 16, // tell the full path of the height-map file
    ENVIRONMENT_RELOAD = 17,    // read it again
};

// What EditorHost::SetPluginViewState says.
enum EPluginViewState : int
{
    PLUGIN_VIEW_OPENS = 1,
};

// Answers of EditorHost::PickTerrain; any other number is a miss, too.
enum EPickResult : int
{
    PICK_MISS = 0,
    PICK_HIT = 1,
};

// The window of one view, owned by the host.
class IViewWindow
{
public:
    virtual ~IViewWindow() = default;
    virtual uintptr_t GetWindowHandle() const = 0; // for mouse capture, never 0
};

// The level editor. The order of the operations is agreed; the headings only group what stands
// together.
class EditorHost
{
public:
    virtual ~EditorHost() = default;

    // Parts of the host.
    virtual ITextureManager* GetTextureManager() = 0; // borrowed, may be null
    // Adds a process to the host's list. The host owns it from the call on, also when it cannot use
    // it; null is ignored.
    virtual void RegisterProcess(IEditorAction* pProcess) = 0;
    virtual IPaintLayer* GetPaintLayer() = 0; // borrowed, may be null

    // Camera navigation by keyboard, for what a mode does with ECameraAction. A view or a camera
    // that is not there is ignored, null too.
    virtual void TurnCamera(ViewId view, float fDegrees) = 0; // positive to the right
    virtual void LookFromDirection(ICamera* pCamera, float fX, float fY) = 0; // each -1, 0 or 1
    virtual void SetViewToggle(ViewId view, bool bOn) = 0;                    // the wire frame
    virtual bool IsKeyboardNavigationOn() = 0; // whether the keys below are to move cameras
    // Whether the key of that direction is held, in the active view.
    virtual bool IsCameraBackKeyDown() = 0;
    virtual bool IsCameraRightKeyDown() = 0;
    virtual bool IsCameraForwardKeyDown() = 0;
    virtual bool IsCameraLeftKeyDown() = 0;

    // What the plug-in has done to the level.
    virtual void OnTerrainChanged() = 0;   // after a drag that sculpts, and its record
    virtual void RefreshAfterReload() = 0; // after ENVIRONMENT_RELOAD; sends NOTIFY_LEVEL_CHANGED

    // A setting of the host's grid, bound to a member that outlives the plug-in's shutdown: the
    // grid writes it at any time and tells nobody, and SaveSettings keeps it. eType: of the member,
    // as of a reflected field. The texts are CRTTIField's; what is unknown in the edit flags is
    // left out. Null for the value is one logged line and no setting.
    virtual void RegisterSetting(const char* pszName,
                                 ERTTIType eType,
                                 void* pValue,
                                 const char* pszEditFlags) = 0;

    // Questions to the person, who may take as long as they like; see IPlugin.h for what comes in
    // between. A host without a person answers as if they were cancelled.
    //
    // Asks for a text and puts it into strAnswer, whose text is shown first. False when cancelled;
    // strAnswer is then untouched. Texts are copied.
    virtual bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) = 0;
    // Asks for a file and gives its path, relative to the roots where it lies in one (see
    // FileSystem.h). Empty when cancelled, and after one logged line for a file to open whose path
    // has a quotation mark in it. Null texts: none. pszFilter: a description followed by patterns,
    // separated by '|'.
    virtual std::string BrowseForFile(EFileDialog eKind,
                                      const char* pszDefaultExtension,
                                      const char* pszInitialName,
                                      const char* pszInitialFolder,
                                      const char* pszFilter) = 0;

    // Views. Drawing comes later, once for however many calls.
    virtual void RedrawViews() = 0;     // something shown in all views changed
    virtual ViewId GetActiveView() = 0; // where the cursor or the focus was last; NO_VIEW for none
    virtual IViewWindow* GetViewWindow(ViewId view) = 0; // null when there is none
    virtual void RefreshView(ViewId view) = 0; // something shown in that one; none is ignored
    // Asked by a mode before it does a camera action: true when the host has dealt with it itself.
    virtual bool HandlesViewAction(ViewId view, uint32_t uActionHandle) = 0;

    // Panel, modes, toolbar and menu.
    //
    // Creates and shows the plug-in's docked panel: an object of the class, which the host owns,
    // then its window; the panel is there when the call returns, unless no window can be shown.
    // pClass: borrowed, static storage of the library; null opens none.
    virtual void OpenPluginView(const CRuntimeClass* pClass) = 0;
    virtual void ClosePluginView() = 0; // destroys window and object; nothing when it is closed
    virtual ModeManager* GetModeManager() = 0; // never null
    // Fills the plug-in's toolbar object (borrowed until the plug-in is unloaded) from the resource
    // and docks it. False for null and when the resource is missing.
    virtual bool CreatePluginToolBar(CToolBar* pToolBar, uint32_t uResourceId) = 0;
    // Adds the pop-up (borrowed until the plug-in is unloaded, null is ignored) under its title to
    // the menu pszParent, an unknown one is "Tools". iPosition: a wish. Ids of its entries are
    // global commands.
    virtual void InsertPluginMenu(int iPosition,
                                  IPlugin* pPlugin,
                                  CMenu* pPopup,
                                  const char* pszTitle,
                                  const char* pszParent) = 0;

    // The environment.
    //
    // True when the level has an entity of that class, false for null; asked before anything is
    // done with it.
    virtual bool QueryEntityClass(const char* pszClassName) = 0;
    // Said just before OpenPluginView, for hosts that place panels by plug-in. From then on the
    // host runs PANEL_COMMAND of that plug-in when the person opens or closes the panel at its
    // frame; where that leaves an open one open, the host closes it and sends NOTIFY_PANEL_CLOSED.
    // uReserved: 0.
    virtual void
    SetPluginViewState(EPluginViewState eState, uint32_t uActionHandle, uint32_t uReserved) = 0;
    // ENVIRONMENT_FULL_PATH: turns the height-map file name (pIn) into its full path (pOut); an
    // empty name into that of a file of the host's own, for a level that has none. pOut is
    // untouched without such a class or either string. ENVIRONMENT_RELOAD, no strings:
    // World::ReloadTerrain, which becomes one step of undo.
    virtual void GetEnvironmentFile(const char* pszClassName,
                                    uint32_t uActionHandle,
                                    EEnvironmentRequest eRequest,
                                    const std::string* pIn,
                                    std::string* pOut) = 0;

    // Two lists of plug-ins: A gets input, commands and notifications, B writes and reads settings.
    // A plug-in calls both registrations once, in Initialize, and both others once, in Shutdown. It
    // is borrowed in between; null and a second time are ignored.
    virtual void RegisterPluginA(IPlugin* pPlugin) = 0;
    virtual void UnregisterPluginA(IPlugin* pPlugin) = 0;
    virtual void RegisterPluginB(IPlugin* pPlugin) = 0;
    virtual void UnregisterPluginB(IPlugin* pPlugin) = 0;

    // Names and texts.
    //
    // Gives the path below the user's hive, '\\' in front and none at its end; borrowed, static.
    virtual const char* GetRegistryRoot() = 0;
    virtual void SetModeCaption(const char* pszCaption) = 0; // of the mode that is current; copied
    // Gives the name of an object of the engine, borrowed; null for an unknown one.
    virtual const char* LookupText(int32_t iId, const void* pObject) = 0;

    // Undo, actions, picking.
    virtual void AddUndo(CUndo* pUndo) = 0; // owned by the host from the call on; null is ignored
    // Takes copies of the plug-in's keyboard actions. A default key that a command of the host has
    // stays the host's; the person can give the action another one.
    virtual void RegisterActions(const std::vector<SActionDescriptor>& actions) = 0;
    // PICK_HIT when the ray under the point hits the ground; hit is then in terrain units, else
    // untouched. While a drag sculpts, a host may aim at the ground of the press and take the
    // height from the ground as it is. point: as the event had it, which only means something until
    // the next one. uReserved: 0.
    virtual int PickTerrain(ViewId view, ViewPoint point, SVec3& hit, uint32_t uReserved) = 0;
};
