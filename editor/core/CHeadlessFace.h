#pragma once

#include "editor/core/IHostFace.h"
#include "host/EditorHost.h"

// The face of a host that nobody watches: one view with a window to capture the mouse for, every
// question cancelled, nothing under the cursor, no panel. Programs without windows derive from it
// and answer what they know better.
class CHeadlessFace : public IHostFace
{
public:
    static constexpr ViewId VIEW = 1;

    IFrontEnd* GetFrontEnd() override { return nullptr; }

    bool PromptText(const char*, const char*, std::string&) override { return false; }

    std::string
    BrowseForFile(EFileDialog, const char*, const char*, const char*, const char*) override
    {
        return {};
    }

    bool HandlesViewAction(ViewId, uint32_t) override { return false; }

    ViewId GetActiveView() override { return VIEW; }

    IViewWindow* GetViewWindow(ViewId view) override { return view == VIEW ? &m_Window : nullptr; }

    void RedrawViews() override {}

    void RefreshView(ViewId) override {}

    bool PickTerrain(ViewId, ViewPoint, SVec3&) override { return false; }

    bool IsKeyboardNavigationOn() override { return false; }

    bool IsCameraKeyDown(ECameraKey) override { return false; }

    void TurnCamera(ViewId, float) override {}

    void LookFromDirection(ICamera*, float, float) override {}

    void SetViewToggle(ViewId, bool) override {}

    bool OpenPluginView(const CRuntimeClass*) override { return false; }

    void ClosePluginView() override {}

    bool PrepareWindows() override { return false; }

    void OnCaptionChanged(const char*) override {}

    bool OnProgress(const char*, float) override { return true; }

private:
    class CWindow : public IViewWindow
    {
    public:
        uintptr_t GetWindowHandle() const override { return VIEW; }
    };

    CWindow m_Window;
};
