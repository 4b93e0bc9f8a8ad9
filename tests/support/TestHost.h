#pragma once

#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CTexture.h"
#include "tests/support/Calls.h"

#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>

// The person at a host under test. Answers are public members; what is asked and shown is listed.
class CTestFace : public CHeadlessFace
{
public:
    // These add an answer to the picks to come, given in order; after the last of them lastPick
    // counts. A miss, and a lastPick that is not set, mean no ground under the cursor.
    void Hit(float fX, float fY, float fZ) { picks.push_back(SVec3{fX, fY, fZ}); }

    void Miss() { picks.emplace_back(); }

    bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) override;
    std::string BrowseForFile(EFileDialog eKind,
                              const char* pszDefaultExtension,
                              const char* pszInitialName,
                              const char* pszInitialFolder,
                              const char* pszFilter) override;
    bool HandlesViewAction(ViewId view, uint32_t uActionHandle) override;

    IViewWindow* GetViewWindow(ViewId) override
    {
        return bHasWindow ? CHeadlessFace::GetViewWindow(VIEW) : nullptr;
    }

    void RedrawViews() override { AddCall(pCalls, "Host.RedrawViews()"); }

    void RefreshView(ViewId view) override { AddCall(pCalls, "Host.RefreshView(%u)", view); }

    bool PickTerrain(ViewId view, ViewPoint point, SVec3& hit) override;

    bool IsKeyboardNavigationOn() override { return bNavigation; }

    bool IsCameraKeyDown(ECameraKey eKey) override { return cameraKeys.count(eKey) > 0; }

    void TurnCamera(ViewId view, float fDegrees) override;
    void LookFromDirection(ICamera* pCamera, float fX, float fY) override;
    void SetViewToggle(ViewId view, bool bOn) override;
    bool OpenPluginView(const CRuntimeClass* pClass) override;
    void ClosePluginView() override;

    void OnCaptionChanged(const char* pszCaption) override
    {
        AddCall(pCalls, "Host.SetModeCaption(%s)", pszCaption);
    }

    Calls calls;
    Calls* pCalls = &calls; // null: nothing is listed, and no memory taken for it
    std::deque<std::optional<SVec3>> picks;
    std::optional<SVec3> lastPick;
    std::optional<std::string> promptAnswer; // none: cancelled
    std::string strBrowseAnswer;             // empty: cancelled
    std::set<ECameraKey> cameraKeys;
    bool bNavigation = false;
    bool bHasWindow = true;
    bool bHandlesViewAction = false;
    std::function<void(const CRuntimeClass*)> onOpenView; // a test with windows makes the view
    std::function<void()> onCloseView;
};

// The host that ships. Lists, besides what its face does, what else a plug-in tells or gives it.
class CTestHost : public CEditorHost
{
public:
    explicit CTestHost(CTestFace& face);

    CWorld& GetWorld() { return GetEngine().GetCWorld(); }

    CTerrain& GetTerrain() { return *GetWorld().GetCTerrain(); } // there must be a level

    float At(uint32_t uX, uint32_t uZ);
    void SetHeight(uint32_t uX, uint32_t uZ, float fHeight);

    IPaintLayer* GetPaintLayer() override
    {
        return bHasPaintLayer ? CEditorHost::GetPaintLayer() : nullptr;
    }

    void RegisterProcess(IEditorAction* pProcess) override;
    void OnTerrainChanged() override;
    void RegisterSetting(const char* pszName,
                         ERTTIType eType,
                         void* pValue,
                         const char* pszEditFlags) override;
    bool CreatePluginToolBar(CToolBar* pToolBar, uint32_t uResourceId) override;
    void InsertPluginMenu(int iPosition,
                          IPlugin* pPlugin,
                          CMenu* pPopup,
                          const char* pszTitle,
                          const char* pszParent) override;
    void SetPluginViewState(EPluginViewState eState,
                            uint32_t uActionHandle,
                            uint32_t uReserved) override;
    void RegisterPluginA(IPlugin* pPlugin) override;
    void RegisterPluginB(IPlugin* pPlugin) override;

    void AddUndo(CUndo* pUndo) override;

    bool bHasPaintLayer = true;
    CUndo* pLastUndo = nullptr; // on the stack

private:
    CTestFace& m_Face;
};

// Makes a flat terrain without a host, of so many cells along x and z.
CTerrain MakeTerrain(uint32_t uCellsX, uint32_t uCellsZ, const SVec3& size);
