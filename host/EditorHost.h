#pragma once

#include "host/HostTypes.h"

#include <string>
#include <vector>

class CRuntimeClass;
class CToolBar;
class CMenu;
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

// The level editor, first argument of InitializeMe. Borrowed by the plug-in from InitializeMe to
// host notification 10. UI thread.
class EditorHost
{
public:
    virtual ~EditorHost() = default;

    // Parts of the host.
    virtual ITextureManager* GetTextureManager() = 0; // borrowed, may be null
    // Owned by the host from the call on, also when it cannot use it; null is ignored.
    virtual void RegisterProcess(IEditorAction* pProcess) = 0;
    virtual IPaintLayer* GetPaintLayer() = 0; // borrowed, may be null

    // Camera navigation by keyboard.
    virtual void TurnCamera(ViewId view, float fDegrees) = 0;
    virtual void LookFromDirection(ICamera* pCamera, float fX, float fY) = 0; // each -1, 0 or 1
    virtual void SetViewToggle(ViewId view, bool bOn) = 0;
    virtual bool IsKeyboardNavigationOn() = 0;
    virtual bool IsCameraBackKeyDown() = 0;
    virtual bool IsCameraRightKeyDown() = 0;
    virtual bool IsCameraForwardKeyDown() = 0;
    virtual bool IsCameraLeftKeyDown() = 0;

    // What the plug-in has done to the level.
    virtual void OnTerrainChanged() = 0;   // a terraforming drag has ended
    virtual void RefreshAfterReload() = 0; // the environment was reloaded

    // A setting.
    //
    // An editable, persistent setting bound to a member that outlives the plug-in's shutdown.
    // eType: of the member, as of a reflected field. Texts are copied.
    virtual void RegisterSetting(const char* pszName,
                                 ERTTIType eType,
                                 void* pValue,
                                 const char* pszEditFlags) = 0;
    // Questions to the person.
    //
    // False when cancelled; strAnswer is then untouched.
    virtual bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) = 0;
    // Null texts are allowed. pszFilter: a description followed by patterns, separated by '|'.
    // Empty when cancelled.
    virtual std::string BrowseForFile(EFileDialog eKind,
                                      const char* pszDefaultExtension,
                                      const char* pszInitialName,
                                      const char* pszInitialFolder,
                                      const char* pszFilter) = 0;
    // Views.
    virtual void RedrawViews() = 0;                      // something shown in all views changed
    virtual ViewId GetActiveView() = 0;                  // NO_VIEW when there is none
    virtual IViewWindow* GetViewWindow(ViewId view) = 0; // borrowed, null when there is none
    virtual void RefreshView(ViewId view) = 0;
    // True when the host has dealt with the view action itself.
    virtual bool HandlesViewAction(ViewId view, uint32_t uActionHandle) = 0;

    // Panel, modes, toolbar and menu.
    //
    // Creates and shows the plug-in's docked panel: an object of the class, which the host owns,
    // then its window. pClass: borrowed, static storage of the library.
    virtual void OpenPluginView(const CRuntimeClass* pClass) = 0;
    virtual void ClosePluginView() = 0;
    virtual ModeManager* GetModeManager() = 0; // borrowed, never null
    // Fills the plug-in's toolbar object from the resource and docks it. False when it is missing.
    virtual bool CreatePluginToolBar(CToolBar* pToolBar, uint32_t uResourceId) = 0;
    // Adds the pop-up (borrowed until the plug-in is unloaded) to the menu pszParent.
    virtual void InsertPluginMenu(int iPosition,
                                  IPlugin* pPlugin,
                                  CMenu* pPopup,
                                  const char* pszTitle,
                                  const char* pszParent) = 0;
    // The environment.
    virtual bool QueryEntityClass(const char* pszClassName) = 0;
    virtual void
    SetPluginViewState(EPluginViewState eState, uint32_t uActionHandle, uint32_t uReserved) = 0;
    // ENVIRONMENT_FULL_PATH: turns the height-map file name (pIn) into its full path (pOut); an
    // empty name into that of a file of the host's own, for a level that has none.
    // ENVIRONMENT_RELOAD, no strings: reloads the environment, which becomes one step of undo.
    virtual void GetEnvironmentFile(const char* pszClassName,
                                    uint32_t uActionHandle,
                                    EEnvironmentRequest eRequest,
                                    const std::string* pIn,
                                    std::string* pOut) = 0;

    // Registration of the plug-in.
    //
    // Two pairs; a plug-in calls both registrations once and both unregistrations once. A lists the
    // plug-in for input and commands, B for settings.
    virtual void RegisterPluginA(IPlugin* pPlugin) = 0;
    virtual void UnregisterPluginA(IPlugin* pPlugin) = 0;
    virtual void RegisterPluginB(IPlugin* pPlugin) = 0;
    virtual void UnregisterPluginB(IPlugin* pPlugin) = 0;

    // Names and texts.
    virtual const char* GetRegistryRoot() = 0;                            // borrowed
    virtual void SetModeCaption(const char* pszCaption) = 0;              // copied
    virtual const char* LookupText(int32_t iId, const void* pObject) = 0; // null when unknown
    // Undo, actions, picking.
    virtual void AddUndo(CUndo* pUndo) = 0; // owned by the host from the call on; null is ignored
    virtual void RegisterActions(const std::vector<SActionDescriptor>& actions) = 0; // copied
    // PICK_HIT when the ray under the point hits the terrain; hit is then in terrain units, else
    // untouched.
    virtual int PickTerrain(ViewId view, ViewPoint point, SVec3& hit, uint32_t uReserved) = 0;
};
