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

    virtual void OnTerrainChanged() = 0;   // a terraforming drag has ended
    virtual void RefreshAfterReload() = 0; // the environment was reloaded

    // An editable, persistent setting bound to a member that outlives the plug-in's shutdown.
    // uType: field type number of the reflection (5 is int32_t). Texts are copied.
    virtual void RegisterSetting(const char* pszName,
                                 uint32_t uType,
                                 void* pValue,
                                 const char* pszEditFlags) = 0;
    // False when cancelled; strAnswer is then untouched.
    virtual bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) = 0;
    // iKind 1 opens an existing file; iKind 0 saves with a default extension, or names an existing
    // or new file without one. Null texts are allowed. pszFilter: a description followed by
    // patterns, separated by '|'. Empty when cancelled.
    virtual std::string BrowseForFile(int iKind,
                                      const char* pszDefaultExtension,
                                      const char* pszInitialName,
                                      const char* pszInitialFolder,
                                      const char* pszFilter) = 0;
    virtual void RedrawViews() = 0;                      // something shown in all views changed
    virtual ViewId GetActiveView() = 0;                  // NO_VIEW when there is none
    virtual IViewWindow* GetViewWindow(ViewId view) = 0; // borrowed, null when there is none
    virtual void RefreshView(ViewId view) = 0;
    // True when the host has dealt with the view action itself.
    virtual bool HandlesViewAction(ViewId view, uint32_t uActionHandle) = 0;

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
    virtual bool QueryEntityClass(const char* pszClassName) = 0;
    virtual void SetPluginViewState(int iState, uint32_t uActionHandle, uint32_t uReserved) = 0;
    // uRequest 16: turns the height-map file name (pIn) into its full path (pOut); an empty name
    // into that of a file of the host's own, for a level that has none. uRequest 17, no strings:
    // reloads the environment, which becomes one step of undo.
    virtual void GetEnvironmentFile(const char* pszClassName,
                                    uint32_t uActionHandle,
                                    uint32_t uRequest,
                                    const std::string* pIn,
                                    std::string* pOut) = 0;

    // Two pairs; a plug-in calls both registrations once and both unregistrations once. A lists the
    // plug-in for input and commands, B for settings.
    virtual void RegisterPluginA(IPlugin* pPlugin) = 0;
    virtual void UnregisterPluginA(IPlugin* pPlugin) = 0;
    virtual void RegisterPluginB(IPlugin* pPlugin) = 0;
    virtual void UnregisterPluginB(IPlugin* pPlugin) = 0;

    virtual const char* GetRegistryRoot() = 0;                            // borrowed
    virtual void SetModeCaption(const char* pszCaption) = 0;              // copied
    virtual const char* LookupText(int32_t iId, const void* pObject) = 0; // null when unknown
    virtual void AddUndo(CUndo* pUndo) = 0; // owned by the host from the call on; null is ignored
    virtual void RegisterActions(const std::vector<SActionDescriptor>& actions) = 0; // copied
    // 1 when the ray under the point hits the terrain; hit is then in terrain units, else
    // untouched.
    virtual int PickTerrain(ViewId view, ViewPoint point, SVec3& hit, uint32_t uReserved) = 0;
};
