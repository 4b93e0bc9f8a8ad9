#include "tellur/panel/CHeightMapControls.h"

#include "framework/core/MessageBox.h"
#include "framework/widgets/CFormWindow.h"
#include "host/Terrain.h"
#include "tellur/context/PluginContext.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/panel/PanelIds.h"

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

CHeightMapControls::CHeightMapControls(CFormWindow& form)
{
    form.Bind(PANEL_RESOLUTION, m_Resolutions);
    form.OnSelectionChange(PANEL_RESOLUTION, [this] { OnSelectResolution(); });
    form.OnClick(PANEL_SAVE_HEIGHT_MAP, [] { GetPluginPart<IPanelPlugin>()->SaveHeightMap(""); });
}

void CHeightMapControls::FillResolutions()
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

void CHeightMapControls::OnSelectResolution()
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
    // The number ends at the "x".
    const int iVertices = std::atoi(strChosen.c_str());
    if (iVertices != 0)
    {
        GetPluginPart<IPanelPlugin>()->ChangeHeightMapResolution(iVertices);
        FillResolutions(); // what the terrain has now, also when it could not be changed
    }
}
