// The defined brushes, the height map, normals and the material.

#include "framework/core/MessageBox.h"
#include "host/EditorHost.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/panel/CTellurView.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/panel/PanelIds.h"
#include "tellur/panel/PanelScale.h"
#include "tellur/panel/SaveBrushes.h"

#include <cstdio>
#include <cstdlib>

namespace
{

constexpr int FIRST_RESOLUTION = 33; // vertices per side
constexpr int RESOLUTION_LIMIT = 5000;

std::string GetResolutionText(int iVertices)
{
    const std::string strNumber = std::to_string(iVertices);
    return strNumber + "x" + strNumber;
}

std::string GetCurrentResolution(const Terrain& terrain)
{
    return GetResolutionText(static_cast<int>(terrain.GetCellsPerSide()) + 1);
}

} // namespace

void CTellurView::ListenToLevel()
{
    OnSelectionChange(PANEL_BRUSH_LIST, [this] { OnSelectBrush(); });
    OnClick(PANEL_ADD_BRUSH, [this] { OnAddBrush(); });
    OnClick(PANEL_SAVE_BRUSHES, [this] { OnSaveBrushes(); });
    OnSelectionChange(PANEL_RESOLUTION, [this] { OnSelectResolution(); });
    OnClick(PANEL_SAVE_HEIGHT_MAP, [] { GetPluginPart<IPanelPlugin>()->SaveHeightMap(""); });
    OnClick(PANEL_AUTO_NORMALS, [this] { OnAutoNormals(); });
    OnClick(PANEL_UPDATE_NORMALS, [] { GetPluginContext()->UpdateTerrainNormals(); });
    OnClick(PANEL_MATERIAL_BROWSE, [this] { OnBrowseMaterial(); });
}

void CTellurView::AddBrushToList(CTellurBrush* pBrush)
{
    if (pBrush == nullptr)
    {
        CrashLog("[CTellurView::AddBrushToList] no brush\n");
        return;
    }
    const char* pszName = pBrush->GetName();
    const int iItem = m_BrushList.AddString(pszName != nullptr ? pszName : "");
    m_BrushList.SetItemData(iItem, reinterpret_cast<uintptr_t>(pBrush));
}

void CTellurView::FillBrushList()
{
    m_BrushList.SetRedraw(false);
    m_BrushList.ResetContent();
    for (const auto& pBrush : GetPluginPart<IPanelPlugin>()->GetBrushContainer()->GetPredefined())
    {
        AddBrushToList(pBrush.get());
    }
    m_BrushList.SetRedraw(true);
}

void CTellurView::OnSelectBrush()
{
    PluginContext* pContext = GetPluginContext();
    const int iItem = m_BrushList.GetCurSel();
    if (iItem < 0)
    {
        if (IsTerraformingOn())
        {
            GetPluginPart<IPanelPlugin>()->EnableTerraforming(false);
        }
        pContext->SetCurrentBrush(nullptr);
        ShowBrush();
        return;
    }
    const auto* pBrush =
        reinterpret_cast<const CTellurBrush*>(m_BrushList.GetItemData(iItem)); // NOLINT
    if (pBrush != nullptr)
    {
        GetPluginPart<IPanelPlugin>()->UsePredefinedBrush(*pBrush);
        // Without a brush before, the mode could not be switched on until now.
        if (pContext->GetCurrentBrush() != nullptr && !IsTerraformingOn())
        {
            GetPluginPart<IPanelPlugin>()->EnableTerraforming(true);
        }
    }
    ShowBrush();
}

void CTellurView::OnAddBrush()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr)
    {
        CrashLog("[CTellurView::OnChangeEditPower] no current brush\n"); // as the power says it
        return;
    }
    if (GetPluginPart<IPanelPlugin>()->AddBrushToPredefined(pBrush))
    {
        FillBrushList();
    }
}

void CTellurView::OnSaveBrushes()
{
    if (!SaveBrushesWithCopy(*GetPluginPart<IPanelPlugin>()->GetBrushContainer(),
                             PREDEFINED_BRUSHES))
    {
        ShowMessageBox("Failed to save brushes", MB_OK | MB_ICONEXCLAMATION);
    }
}

void CTellurView::FillResolutionList()
{
    m_Resolutions.SetRedraw(false);
    m_Resolutions.ResetContent();
    for (int n = FIRST_RESOLUTION; n < RESOLUTION_LIMIT; n = 2 * n - 1)
    {
        m_Resolutions.AddString(GetResolutionText(n).c_str());
    }
    if (const Terrain* pTerrain = GetCurrentTerrain())
    {
        m_Resolutions.SetCurSel(m_Resolutions.FindString(GetCurrentResolution(*pTerrain).c_str()));
    }
    m_Resolutions.SetRedraw(true);
}

void CTellurView::OnSelectResolution()
{
    const Terrain* pTerrain = GetCurrentTerrain();
    const int iItem = m_Resolutions.GetCurSel();
    if (pTerrain == nullptr || iItem < 0)
    {
        return;
    }
    const std::string strCurrent = GetCurrentResolution(*pTerrain);
    const std::string strChosen = m_Resolutions.GetItemText(iItem);
    if (strCurrent == strChosen)
    {
        return;
    }
    char szQuestion[160];
    std::snprintf(szQuestion,
                  sizeof(szQuestion),
                  "Are You sure You want to change terrain resolution from %s to %s?",
                  strCurrent.c_str(),
                  strChosen.c_str());
    if (ShowMessageBox(szQuestion, MB_YESNO | MB_ICONQUESTION) != EMessageBoxAnswer::Yes)
    {
        m_Resolutions.SetCurSel(m_Resolutions.FindString(strCurrent.c_str()));
        return;
    }
    const int iVertices = std::atoi(strChosen.c_str());
    if (iVertices != 0)
    {
        GetPluginPart<IPanelPlugin>()->ChangeHeightMapResolution(iVertices);
        FillResolutionList(); // what the terrain has now, also when it could not be changed
    }
}

void CTellurView::OnAutoNormals()
{
    ReadControls();
    GetPluginPart<IPanelPlugin>()->SetAutoUpdateNormals(m_AutoNormals == CHECK_ON);
}

void CTellurView::OnBrowseMaterial()
{
    EditorHost* pHost = GetEditorHost();
    if (pHost == nullptr)
    {
        return;
    }
    ReadControls();
    const std::string strPath = pHost->BrowseForFile(
        FILE_DIALOG_OPEN, "mat", m_Material.c_str(), "data", "Material files (*.mat)|*.mat");
    if (!strPath.empty())
    {
        m_Material = strPath;
        WriteFields();
        GetTerraformingState().SetEditMaterial(strPath.c_str());
    }
}
