#pragma once

#include "editor/core/CChangeCount.h"
#include "editor/core/CHostGround.h"
#include "editor/core/CHostHistory.h"
#include "editor/core/CHostInput.h"
#include "editor/core/CHostLevel.h"
#include "editor/core/CHostObservers.h"
#include "editor/core/CHostProtection.h"
#include "editor/core/CModeManager.h"
#include "editor/core/CPluginRegistry.h"
#include "editor/core/CSettings.h"
#include "host/EditorHost.h"
#include "host/Progress.h"

#include <memory>
#include <string>
#include <vector>

class CEngineHost;
class CPaintLayer;
class IFrontEnd;
class IHostFace;

// How often the plug-in asked for something that only shows.
struct SHostCounters
{
    uint64_t nRefreshes = 0;      // RefreshView
    uint64_t nTerrainChanged = 0; // OnTerrainChanged
};

// The host: the one implementation of EditorHost that the editor and the script player share. Owns
// the engine with its world, the modes, the undo stack, the settings and all that the plug-in hands
// over; asks its face for what needs a person. What goes the other way, from the person to the
// plug-in, is its input's. Owned by the program. UI thread.
class CEditorHost : public EditorHost, public IProgressSink
{
public:
    explicit CEditorHost(IHostFace& face); // borrowed, outlives the host
    ~CEditorHost() override;               // after the CPluginLoader of this host
    CEditorHost(const CEditorHost&) = delete;
    CEditorHost& operator=(const CEditorHost&) = delete;

    // As CHostLevel's New, Open and Take.
    bool NewLevel(uint32_t uCells, const SVec3& size) { return m_Level.New(uCells, size); }

    bool OpenLevel(const char* pszPath) { return m_Level.Open(pszPath); }

    void TakeLevel(SHeightField&& field) { m_Level.Take(std::move(field)); }

    CLevelHeights& GetLevelHeights() { return m_Level.GetHeights(); }

    // Sends what a person or a script does to the plug-ins.
    CHostInput& GetInput() { return m_Input; }

    // Changes which vertices of the open level strokes leave alone.
    CHostProtection& GetProtection() { return m_Protection; }

    // Changes the ground of the open level as a whole.
    CHostGround& GetGround() { return m_Ground; }

    // Those who are told of all input and of every change of the level.
    CHostObservers& GetObservers() { return m_Observers; }

    // To be called when the user has closed the plug-in's panel: the settings note it and the
    // plug-in is told.
    void NotifyPanelClosed();
    // To be called when the user opens or closes the panel at its frame: ends a drag, and the
    // plug-in does what it does at its own button. False when it has told of no command for that.
    bool SwitchPanel();

    // As IHostFace::PrepareWindows.
    bool PrepareWindows();

    // To be called for each frame before it is drawn: the debug lines begin anew, then the current
    // mode says what it shows.
    void RenderFrame();

    // As the operations of CHostHistory.
    bool Undo() { return m_History.Undo(); }

    bool Redo() { return m_History.Redo(); }

    bool GoToStep(size_t nPosition) { return m_History.GoToStep(nPosition); }

    void StepPaint(bool bRedo) { m_History.StepPaint(bRedo); }

    void LoadSettings();
    bool SaveSettings();
    // Destroys and forgets everything that came from the plug-in. Its library may go afterwards.
    void DestroyPluginObjects();

    CEngineHost& GetEngine() { return *m_Engine; }

    CPaintLayer& GetCPaintLayer() { return *m_PaintLayer; }

    CModeManager& GetModes() { return m_Modes; }

    CHostHistory& GetHistory() { return m_History; }

    CUndoStack& GetUndoStack() { return m_History.GetStack(); }

    CSettings& GetSettings() { return m_Settings; }

    const CPluginRegistry& GetRegistry() const { return m_Registry; }

    const SHostCounters& GetCounters() const { return m_Counters; }

    const std::string& GetCaption() const { return m_Caption; }

    // EditorHost
    ITextureManager* GetTextureManager() override;
    void RegisterProcess(IEditorAction* pProcess) override;
    IPaintLayer* GetPaintLayer() override;
    void TurnCamera(ViewId view, float fDegrees) override;
    void LookFromDirection(ICamera* pCamera, float fX, float fY) override;
    void SetViewToggle(ViewId view, bool bOn) override;
    bool IsKeyboardNavigationOn() override;
    bool IsCameraBackKeyDown() override;
    bool IsCameraRightKeyDown() override;
    bool IsCameraForwardKeyDown() override;
    bool IsCameraLeftKeyDown() override;
    void OnTerrainChanged() override;
    void RefreshAfterReload() override;
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
    void RedrawViews() override;
    ViewId GetActiveView() override;
    IViewWindow* GetViewWindow(ViewId view) override;
    void RefreshView(ViewId view) override;
    bool HandlesViewAction(ViewId view, uint32_t uActionHandle) override;
    void OpenPluginView(const CRuntimeClass* pClass) override;
    void ClosePluginView() override;
    ModeManager* GetModeManager() override;
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
    void RegisterPluginA(IPlugin* pPlugin) override;
    void UnregisterPluginA(IPlugin* pPlugin) override;
    void RegisterPluginB(IPlugin* pPlugin) override;
    void UnregisterPluginB(IPlugin* pPlugin) override;
    const char* GetRegistryRoot() override;
    void SetModeCaption(const char* pszCaption) override;
    const char* LookupText(int32_t iId, const void* pObject) override;
    void AddUndo(CUndo* pUndo) override;
    void RegisterActions(const std::vector<SActionDescriptor>& actions) override;
    int PickTerrain(ViewId view, ViewPoint point, SVec3& hit, uint32_t uReserved) override;

    // IProgressSink, for the life of the host
    bool OnProgress(const char* pszWhat, float fDone) override;

private:
    std::string GetUndoText() const;

    IHostFace& m_Face;
    IFrontEnd* m_FrontEndBefore = nullptr;
    IProgressSink* m_ProgressBefore = nullptr;
    std::unique_ptr<CEngineHost> m_Engine;     // never null
    std::unique_ptr<CPaintLayer> m_PaintLayer; // never null
    CModeManager m_Modes;
    CSettings m_Settings;
    CPluginRegistry m_Registry;
    CHostObservers m_Observers;
    CChangeCount m_Changes; // of the heights, since the last record or press
    CHostInput m_Input;
    CHostHistory m_History;
    CHostProtection m_Protection;
    CHostLevel m_Level;
    CHostGround m_Ground;
    SHostCounters m_Counters;
    std::string m_Caption;
    uint32_t m_PanelHandle = 0; // of the plug-in that had a panel; 0: none
};
