#pragma once

#include "host/HostTypes.h"

#include <cstdint>
#include <string>

class CRuntimeClass;
class ICamera;
class IFrontEnd;
class IViewWindow;
enum EFileDialog : int;

enum class ECameraKey : uint32_t
{
    Back,
    Right,
    Forward,
    Left,
};

// Everything the host needs a person or a window for. The editor answers with its windows, the
// script player from its script, so that both run on the very same host. Implemented by the
// program, borrowed by CEditorHost for its whole life. UI thread.
class IHostFace
{
public:
    virtual ~IHostFace() = default;

    // Key state, cursor, capture and message boxes of the window framework; borrowed, made current
    // for the life of the host. Null keeps the framework's own default.
    virtual IFrontEnd* GetFrontEnd() = 0;

    // As the operations of EditorHost of the same names.
    virtual bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) = 0;
    virtual std::string BrowseForFile(EFileDialog eKind,
                                      const char* pszDefaultExtension,
                                      const char* pszInitialName,
                                      const char* pszInitialFolder,
                                      const char* pszFilter) = 0;
    virtual bool HandlesViewAction(ViewId view, uint32_t uActionHandle) = 0;

    virtual ViewId GetActiveView() = 0;
    virtual IViewWindow* GetViewWindow(ViewId view) = 0; // borrowed, null when there is none
    virtual void RedrawViews() = 0;
    virtual void RefreshView(ViewId view) = 0;
    // True when the ray under the point hits the terrain; else hit is untouched.
    virtual bool PickTerrain(ViewId view, ViewPoint point, SVec3& hit) = 0;

    virtual bool IsKeyboardNavigationOn() = 0;
    virtual bool IsCameraKeyDown(ECameraKey eKey) = 0;
    virtual void TurnCamera(ViewId view, float fDegrees) = 0;
    virtual void LookFromDirection(ICamera* pCamera, float fX, float fY) = 0;
    virtual void SetViewToggle(ViewId view, bool bOn) = 0;

    // Creates and shows the docked panel of that class. False when this face shows no windows.
    virtual bool OpenPluginView(const CRuntimeClass* pClass) = 0;
    virtual void ClosePluginView() = 0;
    // Windows of the plug-in are about to be worked without a person. False when there can be none.
    virtual bool PrepareWindows() = 0;
    virtual void OnCaptionChanged(const char* pszCaption) = 0; // borrowed for the call
    // As IProgressSink: shows how far the work is, false cancels it.
    virtual bool OnProgress(const char* pszWhat, float fDone) = 0;
};
