#include "tellur/plugin/IPluginImpl.h"

#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "host/EditorHost.h"
#include "host/EngineHost.h"
#include "host/IEditorAction.h"
#include "host/Log.h"
#include "host/ModeManager.h"
#include "host/Reflection.h"
#include "host/Terrain.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/CommandIds.h"
#include "tellur/functions/CBlurFunction.h"
#include "tellur/functions/CPointHeightFunction.h"
#include "tellur/functions/CPosterizeFunction.h"
#include "tellur/functions/CRampFunction.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/functions/CSetHeightFunction.h"
#include "tellur/modes/CModeExportTerrainExtent.h"
#include "tellur/modes/CModeTerraforming.h"
#include "tellur/modes/TerraformingState.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/panel/ITerrainPanel.h"
#include "tellur/plugin/CTellurProcessExportTerrainToSTL.h"
#include "tellur/resources/PluginResources.h"

namespace
{

constexpr const char* TOOL_BRUSH_IMAGE = ".\\data\\brushes\\round.png";

} // namespace

IPluginImpl::IPluginImpl()
{
    // What a drag that was never released still needs in the destructor is made before this object
    // and therefore outlives it.
    GetTerraformingState();
    FreeKeptTiles();
    SetPluginContext(this);
}

IPluginImpl::~IPluginImpl()
{
    // Brushes ask the context for the host while they go, so it stays set until they are gone.
    GetTerraformingState().pSession.reset();
    m_p2DDrawDlg.reset();
    m_Menu.DestroyMenu();
    m_FunctionContainer.Clear();
    m_pCurrentBrush = nullptr;
    m_KeptBrushes.clear();
    m_pSmoother.reset();
    m_BrushContainer.Clear();
    FreeKeptTiles();
    SetPluginContext(nullptr);
}

IPlugin* IPluginImpl::Attach(EditorHost* pEditorHost, uint32_t uPlugin, EngineHost* pEngineHost)
{
    m_pEditorHost = pEditorHost;
    m_pEngineHost = pEngineHost;
    m_ActionHandle = MakeActionHandle(uPlugin);
    m_pWorld = m_pEngineHost->GetWorld();
    return this;
}

void IPluginImpl::Initialize()
{
    const CResourceScope scope(&GetPluginResources());
    CreateToolBar();
    CreateMenu();
    m_pEditorHost->RegisterPluginA(this);
    m_pEditorHost->RegisterPluginB(this);
    RegisterModes();
    InitializeFunctionsAndBrushes();
    RecoverBrushFile(PREDEFINED_BRUSHES);
    m_BrushContainer.LoadPredefinedBrushes(PREDEFINED_BRUSHES, &m_BrushFaults);
    m_pCurrentBrush = nullptr;
    ReleaseBrushPreview();
    ApplyEditOverlay(EEditOverlay::Off);
    if (m_pPanel != nullptr)
    {
        m_pPanel->RefreshBrushControls();
        m_pPanel->EnableBrushControls();
    }
    m_pEditorHost->RegisterSetting("2D draw undo manager stack size",
                                   RTTI_INT,
                                   &m_2DDrawUndoMgrStackSize,
                                   "f:EDIT;e:EDIT;c:Tellur;d:2D draw undo manager stack size;");
    m_pEditorHost->RegisterProcess(new CTellurProcessExportTerrainToSTL);
    CEditorAction::PublishEngineHost(m_pEngineHost);
}

void IPluginImpl::CreateToolBar()
{
    m_pEditorHost->CreatePluginToolBar(&m_ToolBar, TOOLBAR_ID);
    for (size_t i = 0; i < m_ToolBar.GetButtonCount(); ++i)
    {
        uint32_t uId = 0;
        uint32_t uStyle = 0;
        int iImage = 0;
        if (m_ToolBar.GetButtonInfo(i, uId, uStyle, iImage))
        {
            m_ToolBar.SetButtonInfo(i, MapResourceId(uId), uStyle, iImage);
        }
    }
    m_ToolBar.SetWindowText("Terrain");
}

void IPluginImpl::CreateMenu()
{
    m_Menu.LoadMenu(MENU_ID);
    RenumberMenu(m_Menu);
    CMenu* pPopup = m_Menu.GetItemCount() > 0 ? m_Menu.GetSubMenu(0) : nullptr;
    m_pEditorHost->InsertPluginMenu(0, this, pPopup, "Terrain", "Tools");
}

void IPluginImpl::RenumberMenu(CMenu& menu)
{
    for (size_t i = 0; i < menu.GetItemCount(); ++i)
    {
        if (CMenu* pSubMenu = menu.GetSubMenu(i))
        {
            RenumberMenu(*pSubMenu);
        }
        else if (menu.GetItemId(i) != 0)
        {
            menu.ModifyItem(i, MapResourceId(menu.GetItemId(i)), menu.GetItemText(i).c_str());
        }
    }
}

void IPluginImpl::RegisterModes()
{
    ModeManager* pModes = m_pEditorHost->GetModeManager();
    m_TerraformingModeId = pModes->RegisterMode(new CModeTerraforming, MODE_GROUP_TERRAIN);
    m_pEditTerrainTypeMode = new CModeEditTerrainType;
    m_EditTerrainTypeModeId = pModes->RegisterMode(m_pEditTerrainTypeMode, MODE_GROUP_TERRAIN);
    m_ExportExtentModeId = pModes->RegisterMode(new CModeExportTerrainExtent, MODE_GROUP_TERRAIN);
}

void IPluginImpl::CreateFunctions()
{
    const auto add = [this](ITellurFunction* pFunction, const char* pszName)
    {
        if (!m_FunctionContainer.AddFunction(pFunction))
        {
            CrashLog("[IPluginImpl::InitializeFunctionsAndBrushes] cannot add %s function\n",
                     pszName);
            delete pFunction;
        }
    };
    add(new CPointHeightFunction, "PointHeight");
    add(new CRelativeHeightFunction, "RelativeHeight");
    add(new CBlurFunction, "Blur");
    add(new CSetHeightFunction, "SetHeight");
    add(new CRampFunction, "Ramp");
    add(new CPosterizeFunction, "Posterize");
}

void IPluginImpl::InitializeFunctionsAndBrushes()
{
    CreateFunctions();
    for (const auto& pFunction : m_FunctionContainer.GetFunctions())
    {
        std::unique_ptr<ITellurFunction> pInstance(pFunction->Clone());
        const bool bNew = m_BrushContainer.FindBrush(pInstance->GetClassName()) == nullptr;
        if (m_BrushContainer.CreateBrush(
                pInstance->GetClassName(), pInstance.get(), TOOL_BRUSH_IMAGE) == nullptr)
        {
            CrashLog("[IPluginImpl::InitializeBrushes] cannot create %s brush\n",
                     pInstance->GetClassName());
        }
        else if (bNew)
        {
            static_cast<void>(pInstance.release()); // the brush has it
        }
    }
}

void IPluginImpl::Activate(bool bShow)
{
    if (bShow)
    {
        OnCommand(COMMAND_TOGGLE_PANEL);
    }
}

void IPluginImpl::Shutdown()
{
    m_pEditorHost->UnregisterPluginA(this);
    m_pEditorHost->UnregisterPluginB(this);
}

void IPluginImpl::DestroyObject(uint32_t /*uReserved*/, IPluginObject* pObject)
{
    delete pObject;
}

void IPluginImpl::ReleaseWorldResources()
{
    ReleaseBrushPreview();
    GetTerraformingState().picked = {};
    GetTerraformingState().pSession.reset(); // a drag cannot go on over a terrain that is gone
    FreeKeptTiles();
}

uint32_t* IPluginImpl::GetActionHandle(uint32_t* pHandle)
{
    *pHandle = m_ActionHandle;
    return pHandle;
}

int32_t IPluginImpl::GetModeGroup()
{
    return MODE_GROUP_TERRAIN;
}

void IPluginImpl::SetCurrentBrush(CTellurBrush* pBrush)
{
    NoteTool();
    m_pCurrentBrush = pBrush;
    ReleaseBrushPreview();
    ApplyEditOverlay(pBrush != nullptr ? EEditOverlay::On : EEditOverlay::Off);
    if (m_pPanel != nullptr)
    {
        m_pPanel->RefreshBrushControls();
        m_pPanel->EnableBrushControls();
    }
}

const SResourceModule* IPluginImpl::GetResourceModule() const
{
    return &GetPluginResources();
}

bool IPluginImpl::UpdateTerrainNormals()
{
    Terrain* pTerrain = GetCurrentTerrain();
    return pTerrain != nullptr && pTerrain->UpdateNormals();
}

void IPluginImpl::RefreshPanelProperties()
{
    if (m_pPanel != nullptr)
    {
        m_pPanel->RefreshToolProperties();
    }
}

void IPluginImpl::RefreshPanelExtent()
{
    if (m_pPanel != nullptr)
    {
        m_pPanel->RefreshExtent();
    }
}
