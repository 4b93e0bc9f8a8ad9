#pragma once

#include "framework/core/CMenu.h"
#include "host/IPlugin.h"
#include "host/IPluginBrushes.h"
#include "host/IPluginPainting.h"
#include "host/IPluginScript.h"
#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"
#include "host/ModeManager.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CFunctionContainer.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/plugin/CToolBarReg.h"

#include <memory>
#include <string>
#include <utility>

class CModeEditTerrainType;

// The plug-in: one object with static storage, from the load of the library to its unload. It owns
// brushes, functions, menu and toolbar; the modes and the process belong to the host once
// registered.
class IPluginImpl : public IPlugin,
                    public IPluginScript,
                    public IPluginTools,
                    public IPluginStrokes,
                    public IPluginPainting,
                    public IPluginBrushes,
                    public PluginContext
{
public:
    IPluginImpl();
    ~IPluginImpl() override;
    IPluginImpl(const IPluginImpl&) = delete;
    IPluginImpl& operator=(const IPluginImpl&) = delete;

    // What the exported InitializeMe does.
    IPlugin* Attach(EditorHost* pEditorHost, uint32_t uPlugin, EngineHost* pEngineHost);

    // IPlugin
    void ReservedA(uintptr_t) override {}

    void ResetSettings() override;
    void SaveSettings(fs::ifile& file) override;
    void LoadSettings(const CTCPARSE_KEYWORD* pFirst) override;

    bool ReservedB(uintptr_t, uintptr_t) override { return true; }

    void ReservedC(uintptr_t) override {}

    void ReservedD() override {}

    void ReservedE() override {}

    void RegisterActions() override;
    void GetCommandText(int32_t iPlugin, int32_t iCommand, char* pszBuffer) override;
    void Initialize() override;
    void Activate(bool bShow) override;
    void Shutdown() override;
    void OnCommand(int32_t iCommand) override;
    void DestroyObject(uint32_t uReserved, IPluginObject* pObject) override;
    void ReleaseWorldResources() override;

    void ReservedF() override {}

    uint32_t* GetActionHandle(uint32_t* pHandle) override;
    int32_t GetModeGroup() override;
    void OnLButtonDown(
        ViewId view, uint32_t uFlags, int32_t iX, int32_t iY, int32_t iDx, int32_t iDy) override;
    void OnLButtonUp(
        ViewId view, uint32_t uFlags, int32_t iX, int32_t iY, int32_t iDx, int32_t iDy) override;
    void OnMouseMove(ViewId view,
                     uint32_t uFlags,
                     int32_t iX,
                     int32_t iY,
                     int32_t iWheel,
                     int32_t iButtons,
                     int32_t iDx,
                     int32_t iDy) override;
    void OnAction(ViewId view, int32_t iAction, uint32_t uCount) override;
    void Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) override;
    bool
    AddContextMenuItems(CMenu* pMenu, ViewId view, ViewPoint point, uint32_t uReserved) override;

    bool ReservedO(uintptr_t) override { return false; }

    bool HasContextMenuItems(ViewId view, ViewPoint point, uint32_t uReserved) override;
    void OnHostNotify(int32_t iCode, uintptr_t uReserved) override;

    void ReservedP(uintptr_t, uintptr_t, uintptr_t, uintptr_t) override {}

    bool ReservedT(uintptr_t) override { return false; }

    void ReservedU(uintptr_t, uintptr_t) override {}

    int32_t ReservedV(uintptr_t, uintptr_t, uintptr_t, uintptr_t) override { return 0; }

    // IPluginScript
    EScriptResult Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy) override;
    bool WriteState(fs::ifile& file) override;

    // IPluginTools
    bool IsTerraforming() override;
    bool IsPainting() override;
    std::string GetFunctionName() override;
    std::string GetToolName() override;
    float GetBrushExtent() override;
    bool IsMaskActing() override;
    bool HeedsMinMax() override;
    bool TakeTool(const char* pszFunction) override;
    float GetBrushValue(EBrushValue eValue) override;
    float SetBrushValue(EBrushValue eValue, float fValue) override;
    bool InvertTool(float& fHeight) override;
    bool SetToolHeight(float fHeight) override;
    std::string GetMaskPath() override;
    bool IsMaskEnabled() override;
    void EnableMask(bool bEnable) override;
    bool ChooseMask() override;

    // IPluginStrokes
    float GetStrokeSpacing() override;
    const float* GetPressTile(uint32_t uTileX, uint32_t uTileZ) override;

    SPointOutcome TakePointOutcome() override { return std::exchange(m_PointOutcome, {}); }

    SDragStatistics TakeDragStatistics() override;
    bool BeginSmoothing() override;
    void EndSmoothing() override;
    bool DropDrag() override;

    // IPluginPainting
    const IImage* GetBitmap() override;
    uint64_t GetBitmapRevision() override;
    std::string GetBitmapFile() override;
    std::string GetUnsavedBitmap() override;
    std::string GetUnreadBitmap() override;
    bool WouldDropPainting(int32_t iModeId) override;
    bool SaveBitmap(const char* pszPath) override;
    bool StepPaint(bool bRedo) override;

    // IPluginBrushes
    const char* GetBrushFile() override;

    const std::vector<SBrushFault>& GetBrushFaults() override { return m_BrushFaults; }

    bool HasUnsavedBrushes() override { return m_BrushContainer.IsUnsaved(); }

    bool SaveBrushes() override;

    // PluginContext
    EditorHost* GetEditorHost() const override { return m_pEditorHost; }

    EngineHost* GetEngineHost() const override { return m_pEngineHost; }

    World* GetWorld() const override { return m_pWorld; }

    uint32_t GetPluginActionHandle() const override { return m_ActionHandle; }

    CTellurBrush* GetCurrentBrush() const override { return m_pCurrentBrush; }

    void SetCurrentBrush(CTellurBrush* pBrush) override;

    CFunctionContainer* GetFunctionContainer() override { return &m_FunctionContainer; }

    CBrushContainer* GetBrushContainer() override { return &m_BrushContainer; }

    bool AddBrushToPredefined(CTellurBrush* pBrush) override;
    void UsePredefinedBrush(const CTellurBrush& brush) override;

    bool IsAutoUpdateNormals() const override { return m_bAutoUpdateNormals; }

    void SetAutoUpdateNormals(bool bOn) override { m_bAutoUpdateNormals = bOn; }

    bool UpdateTerrainNormals() override;
    void CheckHeightMapWritable() override;

    bool SaveHeightMap(const char* pszPath) override;
    void ChangeHeightMapResolution(int32_t iVertices) override;

    int GetTerraformingModeId() const override { return m_TerraformingModeId; }

    void EnableTerraforming(bool bEnable) override;

    bool SetMode(int32_t iModeId, int32_t iParameter) override;

    int GetEditTerrainTypeModeId() const override { return m_EditTerrainTypeModeId; }

    CModeEditTerrainType* GetEditTerrainTypeMode() const override { return m_pEditTerrainTypeMode; }

    CTerrain2DDrawDlg* Get2DDrawDlg() const override { return m_p2DDrawDlg.get(); }

    int32_t Get2DDrawUndoDepth() const override { return m_2DDrawUndoMgrStackSize; }

    void SetToolBarButton(uint32_t uCommand, bool bPressed) override;

    void SetPanel(ITerrainPanel* pPanel) override { m_pPanel = pPanel; }

    SExtentLimits GetExtentLimits() const override { return m_ExtentLimits; }

    void SetExtentLimits(const SExtentLimits& limits) override { m_ExtentLimits = limits; }

    const SResourceModule* GetResourceModule() const override;

    bool GetToolTipText(SToolTipText& tip) const override;
    void RefreshPanelProperties() override;
    void RefreshPanelExtent() override;

    SDragStatistics& GetDragStatistics() override { return m_DragStatistics; }

    SPointOutcome& GetPointOutcome() override { return m_PointOutcome; }

private:
    uint32_t MapResourceId(uint32_t uResourceId) const;

    uint32_t GetGlobalCommand(uint32_t uCommand) const { return m_ActionHandle + uCommand; }

    void CreateToolBar();
    void CreateMenu();
    void RenumberMenu(CMenu& menu);
    void RegisterModes();
    void InitializeFunctionsAndBrushes();
    void CreateFunctions();
    void TogglePanel();
    bool Open2DDrawDlg(); // false when it cannot be shown
    void ApplyPickedHeight();
    class CRTTIField* FindHeightField() const;
    bool CanPickHeight(ViewId view) const;
    bool PickHeight(ViewId view, ViewPoint point, float& fHeight) const;
    bool IsModeGroupCurrent() const;
    std::string GetHeightMapFile() const;
    bool PlayBrush(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy);
    bool PlayMode(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy);
    bool PlayAutoNormals(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy);
    bool PlayBrushFile(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy);
    bool PlayUseBrush(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy);
    bool PlaySaveBrushes(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy);
    bool PlayResolution(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy);
    EScriptResult PlayPaint(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy);
    bool PlayPaintingMode(std::string& strWhy);
    void WritePaintBrush(fs::ifile& file) const;
    void WritePaintState(fs::ifile& file) const;
    bool IsDragInProgress() const;
    bool WriteBrush(fs::ifile& file, const CTellurBrush& brush) const;
    bool HasBrush(const CTellurBrush* pBrush) const; // it is there still
    void NoteTool(); // the current one, before another one or none is
    CTellurBrush* FindLastTool() const;
    class CRTTIField* FindHeightFieldOf(const char* pszFunction) const;
    class CRTTIField* FindAmountField() const;
    float GetAmount();
    void SetAmount(float fValue);
    float ClampExtent(float fExtent) const;
    void ShowTool(bool bExtentOnly); // its values have changed

    EditorHost* m_pEditorHost = nullptr;
    EngineHost* m_pEngineHost = nullptr;
    World* m_pWorld = nullptr;
    uint32_t m_ActionHandle = 0;
    CToolBarReg m_ToolBar;
    int32_t m_TerraformingModeId = NO_MODE;
    int32_t m_EditTerrainTypeModeId = NO_MODE;
    int32_t m_ExportExtentModeId = NO_MODE;
    CModeEditTerrainType* m_pEditTerrainTypeMode = nullptr; // the host's
    std::unique_ptr<CTerrain2DDrawDlg> m_p2DDrawDlg;        // null until the first command
    SExtentLimits m_ExtentLimits;
    int32_t m_2DDrawUndoMgrStackSize = 10;
    bool m_bAutoUpdateNormals = false;
    CBrushContainer m_BrushContainer;
    std::vector<SBrushFault> m_BrushFaults; // of the library, as it was at the start
    CFunctionContainer m_FunctionContainer;
    std::string m_HeightMapPath; // nothing fills it, so saving always asks
    float m_PickedHeight = 0.0F; // offered by the last context menu
    CMenu m_Menu;

    ITerrainPanel* m_pPanel = nullptr;         // the host's; null while closed
    CTellurBrush* m_pCurrentBrush = nullptr;   // in a container or among the script's
    CBrushContainer::CBrushList m_KeptBrushes; // the script's last, and what a drag still uses
    SDragStatistics m_DragStatistics;
    CTellurBrush* m_pLastTool = nullptr;       // that was put away; may be gone
    std::string m_LastFunction;                // of it
    std::unique_ptr<CTellurBrush> m_pSmoother; // the brush of strokes that smooth
    CTellurBrush* m_pSmoothed = nullptr;       // current before one; null outside; may be gone
    SPointOutcome m_PointOutcome;
};
