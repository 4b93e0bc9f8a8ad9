#pragma once

#include "host/IPlugin.h"
#include "tellur/brushes/IFunctionSource.h"
#include "tellur/context/PluginContext.h"
#include "tellur/functions/IFieldsWatcher.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/modes/IModesPlugin.h"
#include "tellur/painting/IPaintingPlugin.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/plugin/CBrushAtHand.h"
#include "tellur/plugin/CBrushLibrary.h"
#include "tellur/plugin/CHeightPick.h"
#include "tellur/plugin/CPainting.h"
#include "tellur/plugin/CPanelLink.h"
#include "tellur/plugin/CPluginMark.h"
#include "tellur/plugin/CPluginMenus.h"
#include "tellur/plugin/CPluginModes.h"
#include "tellur/plugin/CPluginScript.h"
#include "tellur/plugin/CPluginStrokes.h"
#include "tellur/plugin/CPluginTools.h"

#include <string>

// What the parts of the plug-in object below know of one another.
struct SPluginParts
{
    explicit SPluginParts(CBrushContainer& brushes)
        : brush(brushes, panel)
        , heightPick(brush, panel)
    {
    }

    CPanelLink panel;
    CPluginModes modes;
    CPluginMenus menus;
    CTerraformingState terraforming;
    CBrushAtHand brush;
    CHeightPick heightPick;
};

// The plug-in: one object with static storage, from the load of the library to its unload. It is
// put together of parts, each with a job and what it owns: those that a host looks for are bases,
// so that it finds them from IPlugin, the others lie in SPluginParts. What is left here is the
// host's calls and the order in which parts come and go; the modes and the process belong to the
// host once registered.
class IPluginImpl : public IPlugin,
                    public PluginContext,
                    public IFunctionSource,
                    public IFieldsWatcher,
                    public IModesPlugin,
                    public IPaintingPlugin,
                    public IPanelPlugin,
                    public CBrushLibrary,
                    private SPluginParts,
                    public CPainting,
                    public CPluginTools,
                    public CPluginMark,
                    public CPluginStrokes,
                    public CPluginScript
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

    void ResetSettings() override { ResetSetting(); }

    void SaveSettings(fs::ifile& file) override { SaveSetting(file); }

    void LoadSettings(const CTCPARSE_KEYWORD* pFirst) override { LoadSetting(pFirst); }

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

    // PluginContext
    EditorHost* GetEditorHost() const override { return m_pEditorHost; }

    EngineHost* GetEngineHost() const override { return m_pEngineHost; }

    World* GetWorld() const override { return m_pWorld; }

    uint32_t GetPluginActionHandle() const override { return m_ActionHandle; }

    CTellurBrush* GetCurrentBrush() const override { return brush.Get(); }

    void SetCurrentBrush(CTellurBrush* pBrush) override { brush.Set(pBrush); }

    bool IsAutoUpdateNormals() const override { return m_bAutoUpdateNormals; }

    bool UpdateTerrainNormals() override;

    SDragStatistics& GetDragStatistics() override { return GetStatistics(); }

    SPointOutcome& GetPointOutcome() override { return GetOutcome(); }

    const SPointForm& GetPointForm() const override { return GetForm(); }

    bool GetToolTipText(SToolTipText& tip) const override;

    // IPluginBrushes
    int32_t FindBrushAtHand() override { return FindTaken(brush.GetTool()); }

    // IFunctionSource
    CFunctionContainer* GetFunctionContainer() override { return &GetFunctions(); }

    // IFieldsWatcher
    void OnFieldsChanged() override { panel.ShowFunctionFields(); }

    // IModesPlugin
    CTerraformingState& GetTerraforming() override { return terraforming; }

    int32_t GetTerraformingModeId() const override { return modes.GetTerraformingId(); }

    void CheckHeightMapWritable() override;

    void SetToolBarButton(uint32_t uCommand, bool bPressed) override
    {
        menus.SetToolBarButton(uCommand, bPressed);
    }

    void RefreshPanelExtent() override { panel.ShowExtent(); }

    // IPaintingPlugin
    int32_t GetEditTerrainTypeModeId() const override { return modes.GetEditTerrainTypeId(); }

    CModeEditTerrainType* GetEditTerrainTypeMode() const override
    {
        return modes.GetPaintingMode();
    }

    CTerrain2DDrawDlg* Get2DDrawDlg() const override { return GetDialog(); }

    int32_t Get2DDrawUndoDepth() const override { return GetUndoDepth(); }

    bool SetMode(int32_t iModeId, int32_t iParameter) override
    {
        return modes.SetMode(iModeId, iParameter);
    }

    // IPanelPlugin
    void SetPanel(ITerrainPanel* pPanel) override { panel.SetPanel(pPanel); }

    SExtentLimits GetExtentLimits() const override { return panel.GetExtentLimits(); }

    void SetExtentLimits(const SExtentLimits& limits) override { panel.SetExtentLimits(limits); }

    CBrushContainer* GetBrushContainer() override { return &GetBrushes(); }

    bool AddBrushToPredefined(CTellurBrush* pBrush) override;
    void UsePredefinedBrush(const CTellurBrush& predefined) override;

    void EnableTerraforming(bool bEnable) override { modes.EnableTerraforming(bEnable); }

    void SetAutoUpdateNormals(bool bOn) override { m_bAutoUpdateNormals = bOn; }

    bool SaveHeightMap(const char* pszPath) override;
    void ChangeHeightMapResolution(int32_t iVertices) override;

private:
    void TogglePanel();

    EditorHost* m_pEditorHost = nullptr;
    EngineHost* m_pEngineHost = nullptr;
    World* m_pWorld = nullptr;
    uint32_t m_ActionHandle = 0;
    bool m_bAutoUpdateNormals = false;
    std::string m_HeightMapPath; // nothing fills it, so saving always asks
};
