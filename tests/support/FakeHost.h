#pragma once

#include "host/CUndo.h"
#include "host/EditorHost.h"
#include "host/IEditorAction.h"
#include "host/IEditorMode.h"
#include "host/IPluginStrokes.h"
#include "host/ModeManager.h"
#include "tellur/context/PluginContext.h"
#include "tests/support/FakeWorld.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Switches modes as a host does and forwards input to the current one.
class CFakeModeManager : public ModeManager
{
public:
    explicit CFakeModeManager(FakeCalls* pCallList)
        : pCalls(pCallList)
    {
    }

    int RegisterMode(IEditorMode* pMode, int iGroup) override;
    bool ActivateMode(int iModeId, int iParameter) override;
    bool DeactivateMode(int iParameter) override;
    bool CanDeactivateCurrentMode() override;

    int GetCurrentModeId() override { return iCurrent; }

    int GetCurrentModeGroup() override;
    bool IsModeAvailable(int iModeId) override;
    void OnLButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock) override;
    void OnMouseMove(ViewId view,
                     uint32_t uFlags,
                     const SPointBlock* pPoint,
                     const SWheelBlock* pWheel,
                     const SStepBlock* pStep) override;
    void OnLButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock) override;
    void OnAction(ViewId view, int iAction, uint32_t uCount) override;
    void Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) override;

    IEditorMode* GetCurrent() const; // null when there is none

    struct SMode
    {
        std::unique_ptr<IEditorMode> pMode;
        int iGroup = 0;
    };

    std::vector<SMode> modes; // by id
    int iCurrent = -1;
    std::optional<bool> mayDeactivate; // answers instead of the mode
    FakeCalls* pCalls;
};

class CFakeViewWindow : public IViewWindow
{
public:
    uintptr_t GetWindowHandle() const override { return 77; }
};

// What PickTerrain answers: 1 with the hit, anything else leaves it alone.
struct SPick
{
    int iResult = 0;
    SVec3 hit;
};

// The editor. Answers are public members; undo records and processes are owned.
class CFakeEditorHost : public EditorHost
{
public:
    struct SSetting
    {
        std::string strName;
        uint32_t uType = 0;
        void* pValue = nullptr;
        std::string strEditFlags;
    };

    CFakeEditorHost(ITextureManager* pTextures, ModeManager* pModeManager, FakeCalls* pCallList);
    ~CFakeEditorHost() override;

    // Answers for the next picks, in order; after them lastPick counts.
    void Hit(float fX, float fY, float fZ) { picks.push_back({1, {fX, fY, fZ}}); }

    void Miss() { picks.push_back({}); }

    ITextureManager* GetTextureManager() override { return pTextureManager; }

    void RegisterProcess(IEditorAction* pProcess) override;

    IPaintLayer* GetPaintLayer() override { return pPaintLayer; }

    void TurnCamera(ViewId view, float fDegrees) override;
    void LookFromDirection(ICamera* pCamera, float fX, float fY) override;
    void SetViewToggle(ViewId view, bool bOn) override;

    bool IsKeyboardNavigationOn() override { return bNavigation; }

    bool IsCameraBackKeyDown() override { return bBack; }

    bool IsCameraRightKeyDown() override { return bRight; }

    bool IsCameraForwardKeyDown() override { return bForward; }

    bool IsCameraLeftKeyDown() override { return bLeft; }

    void OnTerrainChanged() override { AddCall(pCalls, "Host.OnTerrainChanged()"); }

    void RefreshAfterReload() override { AddCall(pCalls, "Host.RefreshAfterReload()"); }

    void RegisterSetting(const char* pszName,
                         ERTTIType eType,
                         void* pValue,
                         const char* pszEditFlags) override;
    bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) override;
    std::string BrowseForFile(EFileDialog eKind,
                              const char* pszDefaultExtension,
                              const char* pszInitialName,
                              const char* pszInitialFolder,
                              const char* pszFilter) override;

    void RedrawViews() override { AddCall(pCalls, "Host.RedrawViews()"); }

    ViewId GetActiveView() override { return activeView; }

    IViewWindow* GetViewWindow(ViewId /*view*/) override { return bHasWindow ? &window : nullptr; }

    void RefreshView(ViewId view) override { AddCall(pCalls, "Host.RefreshView(%u)", view); }

    bool HandlesViewAction(ViewId view, uint32_t uActionHandle) override;
    void OpenPluginView(const CRuntimeClass* pClass) override;

    void ClosePluginView() override;

    ModeManager* GetModeManager() override { return pModes; }

    bool CreatePluginToolBar(CToolBar* pToolBar, uint32_t uResourceId) override;
    void InsertPluginMenu(int iPosition,
                          IPlugin* pPlugin,
                          CMenu* pPopup,
                          const char* pszTitle,
                          const char* pszParent) override;
    bool QueryEntityClass(const char* pszClassName) override;
    void SetPluginViewState(EPluginViewState eState,
                            uint32_t uActionHandle,
                            uint32_t uReserved) override;
    void GetEnvironmentFile(const char* pszClassName,
                            uint32_t uActionHandle,
                            EEnvironmentRequest eRequest,
                            const std::string* pIn,
                            std::string* pOut) override;

    void RegisterPluginA(IPlugin*) override { AddCall(pCalls, "Host.RegisterPluginA()"); }

    void UnregisterPluginA(IPlugin*) override { AddCall(pCalls, "Host.UnregisterPluginA()"); }

    void RegisterPluginB(IPlugin*) override { AddCall(pCalls, "Host.RegisterPluginB()"); }

    void UnregisterPluginB(IPlugin*) override { AddCall(pCalls, "Host.UnregisterPluginB()"); }

    const char* GetRegistryRoot() override { return "Software\\Test"; }

    void SetModeCaption(const char* pszCaption) override;

    const char* LookupText(int32_t /*iId*/, const void* /*pObject*/) override { return nullptr; }

    void AddUndo(CUndo* pUndo) override;
    void RegisterActions(const std::vector<SActionDescriptor>& newActions) override;
    int PickTerrain(ViewId view, ViewPoint point, SVec3& hit, uint32_t uReserved) override;

    std::deque<SPick> picks;
    SPick lastPick; // for when picks is empty
    std::vector<std::unique_ptr<CUndo>> undos;
    std::function<void(const CRuntimeClass*)> onOpenView; // a test with windows makes the view
    std::function<void()> onCloseView;
    std::vector<std::unique_ptr<IEditorAction>> processes;
    std::vector<SSetting> settings;
    std::vector<SActionDescriptor> actions;
    std::optional<std::string> promptAnswer; // none: cancelled
    std::string strBrowseAnswer;
    std::string strEnvironmentFolder; // put before the name that request 16 hands in
    bool bNavigation = false;
    bool bBack = false;
    bool bRight = false;
    bool bForward = false;
    bool bLeft = false;
    bool bHasWindow = true;
    bool bHandlesViewAction = false;
    bool bToolBarWorks = true;
    bool bKnowsEntityClass = true;
    ViewId activeView = 1;
    CFakeViewWindow window;
    IPaintLayer* pPaintLayer = nullptr;
    ITextureManager* pTextureManager; // null for a host without one
    ModeManager* pModes;
    FakeCalls* pCalls;
};

// The whole surrounding of a plug-in folder: terrain, world, engine, host and context, all writing
// to one list. Is the process's context while it lives.
class CFakeContext : public PluginContext
{
public:
    explicit CFakeContext(uint32_t uCellsX = 8,
                          uint32_t uCellsZ = 8,
                          const SVec3& size = {80.0F, 1000.0F, 80.0F});
    ~CFakeContext() override;
    CFakeContext(const CFakeContext&) = delete;
    CFakeContext& operator=(const CFakeContext&) = delete;

    EditorHost* GetEditorHost() const override { return pEditorHost; }

    EngineHost* GetEngineHost() const override { return pEngineHost; }

    World* GetWorld() const override { return pWorld; }

    uint32_t GetPluginActionHandle() const override { return 0x4300; }

    CTellurBrush* GetCurrentBrush() const override { return pBrush; }

    void SetCurrentBrush(CTellurBrush* pNewBrush) override;

    CFunctionContainer* GetFunctionContainer() override { return pFunctions; }

    CBrushContainer* GetBrushContainer() override { return nullptr; }

    bool AddBrushToPredefined(CTellurBrush*) override { return false; }

    void UsePredefinedBrush(const CTellurBrush&) override {}

    bool IsAutoUpdateNormals() const override { return bAutoUpdateNormals; }

    void SetAutoUpdateNormals(bool bOn) override { bAutoUpdateNormals = bOn; }

    bool UpdateTerrainNormals() override;
    void CheckHeightMapWritable() override;

    bool SaveHeightMap(const char*) override { return false; }

    void ChangeHeightMapResolution(int32_t) override {}

    int GetTerraformingModeId() const override { return iTerraformingModeId; }

    void EnableTerraforming(bool) override {}

    bool SetMode(int32_t iModeId, int32_t iParameter) override;

    int GetEditTerrainTypeModeId() const override { return iEditTerrainTypeModeId; }

    CModeEditTerrainType* GetEditTerrainTypeMode() const override { return pEditTerrainTypeMode; }

    CTerrain2DDrawDlg* Get2DDrawDlg() const override { return pDrawDlg; }

    int32_t Get2DDrawUndoDepth() const override { return iUndoDepth; }

    void SetToolBarButton(uint32_t uCommand, bool bPressed) override;

    void SetPanel(ITerrainPanel*) override {}

    SExtentLimits GetExtentLimits() const override { return {}; }

    void SetExtentLimits(const SExtentLimits&) override {}

    const SResourceModule* GetResourceModule() const override { return nullptr; }

    bool GetToolTipText(SToolTipText&) const override { return false; }

    void RefreshPanelProperties() override { AddCall(&calls, "Context.RefreshPanelProperties()"); }

    void RefreshPanelExtent() override { AddCall(&calls, "Context.RefreshPanelExtent()"); }

    SDragStatistics& GetDragStatistics() override { return statistics; }

    SPointOutcome& GetPointOutcome() override { return outcome; }

    FakeCalls TakeCalls(); // and clears

    FakeCalls calls;
    CFakeTerrain terrain;
    CFakeTextureManager textures;
    CFakeModeManager modes;
    CFakeEditorHost host;
    CFakeWorld world;
    CFakeEngineHost engine;

    EditorHost* pEditorHost = &host; // null: the host has gone away
    EngineHost* pEngineHost = &engine;
    World* pWorld = &world;
    CTellurBrush* pBrush = nullptr;
    CFunctionContainer* pFunctions = nullptr;
    bool bAutoUpdateNormals = false;
    int iTerraformingModeId = NO_MODE;
    int iEditTerrainTypeModeId = NO_MODE;
    CModeEditTerrainType* pEditTerrainTypeMode = nullptr;
    CTerrain2DDrawDlg* pDrawDlg = nullptr;
    int32_t iUndoDepth = 10;
    SDragStatistics statistics;
    SPointOutcome outcome;

private:
    PluginContext* m_Previous;
};
