#pragma once

#include "editor/core/CChangeCount.h"
#include "editor/core/CLevelHeights.h"
#include "editor/core/CModeManager.h"
#include "editor/core/CPluginRegistry.h"
#include "editor/core/CSettings.h"
#include "editor/core/CUndoStack.h"
#include "editor/core/IHostObserver.h"
#include "host/EditorHost.h"
#include "host/Progress.h"

#include <memory>
#include <new>
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
// over; asks its face for what needs a person. Owned by the program. UI thread.
class CEditorHost : public EditorHost,
                    public IProgressSink,
                    private IUndoListener,
                    private ITerrainKeeper
{
public:
    explicit CEditorHost(IHostFace& face); // borrowed, outlives the host
    ~CEditorHost() override;               // after the CPluginLoader of this host
    CEditorHost(const CEditorHost&) = delete;
    CEditorHost& operator=(const CEditorHost&) = delete;

    // A new flat level, or the level of a ".height" file. A running drag is ended first, the undo
    // stack is emptied and the plug-in is told. False with one logged line; the level before stays.
    bool NewLevel(uint32_t uCells, const SVec3& size);
    bool OpenLevel(const char* pszPath);
    // A level with these heights, which must be valid ones (see CTerrain), and no file.
    void TakeLevel(SHeightField&& field);

    // The open level's heights as a whole, and what its file holds of them.
    CLevelHeights& GetLevelHeights() { return m_LevelHeights; }

    // Input, sent the way of the boundary: to every plug-in that is listed for input, which gives
    // it to the mode manager. x, y: view pixels; dx, dy: pixels since the last event. A drag
    // belongs to the view it began in: other views hear nothing of the mouse until it ends, a press
    // in one of them ends it first, and a release there counts as its own.
    void SendButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock& block);
    void SendMouseMove(ViewId view,
                       uint32_t uFlags,
                       const SPointBlock& point,
                       const SWheelBlock& wheel,
                       const SStepBlock& step);
    void SendButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock& block);
    void SendAction(ViewId view, int32_t iAction, uint32_t uCount);
    // Runs a plug-in's command by its global number. False when it is no plug-in's.
    bool SendCommand(uint32_t uCommand);
    // Sends the release of a button that is held, where the cursor was last: the capture is lost,
    // the level goes away, or the mode is left. The mouse is free afterwards.
    void EndDrag();

    // Does work that calls plug-ins or needs much memory. False, with one logged line that begins
    // with the operation, when there was not enough: a drag that ran is then over and its heights
    // are those of before it. Whatever else the work changed is its own to put back.
    template <typename TWork> bool Guard(const char* pszOperation, TWork work)
    {
        try
        {
            work();
            return true;
        }
        catch (const std::bad_alloc&)
        {
            OnNoMemory(pszOperation);
            return false;
        }
    }

    // The user closed the plug-in's panel.
    void NotifyPanelClosed();

    // Observers are told in the order they were added.
    void AddObserver(IHostObserver* pObserver); // borrowed
    void RemoveObserver(IHostObserver* pObserver);

    bool IsDragging() const { return m_DragView != NO_VIEW; }

    // As IHostFace::PrepareWindows.
    bool PrepareWindows();

    // One frame: debug lines anew, then the current mode draws.
    void RenderFrame();

    bool Undo(); // false when there is nothing
    bool Redo();
    bool GoToStep(size_t nPosition); // as CUndoStack::GoTo
    // Takes the last stroke on the bitmap back, or paints it again. Nothing without one.
    void StepPaint(bool bRedo);

    void LoadSettings();
    bool SaveSettings();
    // Destroys and forgets everything that came from the plug-in. Its library may go afterwards.
    void DestroyPluginObjects();

    CEngineHost& GetEngine() { return *m_Engine; }

    CPaintLayer& GetCPaintLayer() { return *m_PaintLayer; }

    CModeManager& GetModes() { return m_Modes; }

    CUndoStack& GetUndoStack() { return m_Undo; }

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
    void PrepareLevelChange();
    bool FinishLevelChange(); // true
    void NotifyPlugins(int32_t iCode);
    void NotifyLevelChanged();
    // Tells the observers before and after. Events may happen inside one another.
    template <typename TSend>
    void SendEvent(const char* pszOperation, const SHostEvent& event, TSend send);
    template <typename TTell> void TellEach(TTell tell);
    void TellBefore(const SHostEvent& event);
    void Tell(const SHostEvent& event);
    void FinishDrag(ViewId view, uint32_t uFlags, const SButtonBlock& block);
    void OnNoMemory(const char* pszOperation);
    // What the first plug-in that has it offers; null when none does.
    template <typename TInterface> TInterface* FindInterface() const;
    std::string GetUndoText() const;

    // IUndoListener
    void OnBeforeStep(bool bRedo) override;
    void OnStep(bool bRedo) override;

    // ITerrainKeeper
    bool IsTerrainHeld() const override { return IsDragging(); }

    void OnBeforeReplacement(bool bByPlugin) override;
    void OnReplaced(bool bNewStep) override;

    IHostFace& m_Face;
    IFrontEnd* m_FrontEndBefore = nullptr;
    IProgressSink* m_ProgressBefore = nullptr;
    std::unique_ptr<CEngineHost> m_Engine;     // never null
    std::unique_ptr<CPaintLayer> m_PaintLayer; // never null
    CModeManager m_Modes;
    CUndoStack m_Undo;
    CLevelHeights m_LevelHeights;
    bool m_bReplaced = false; // by the last reload, which has been told
    CSettings m_Settings;
    CPluginRegistry m_Registry;
    SHostCounters m_Counters;
    std::string m_Caption;
    ViewId m_DragView = NO_VIEW; // the view a button is held in
    std::vector<IHostObserver*> m_Observers;
    SHostEvent m_Event;       // the one that the plug-ins see at present
    SButtonBlock m_DragPoint; // where the cursor was last during that drag
    CChangeCount m_Changes;   // of the heights, since the last record or press
};
