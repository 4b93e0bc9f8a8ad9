#include "tellur/panel/CTerrainLook.h"

#include "framework/widgets/CButton.h"
#include "framework/widgets/CFormWindow.h"
#include "host/EditorHost.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/panel/PanelIds.h"

CTerrainLook::CTerrainLook(CFormWindow& form)
    : m_Form(form)
{
    form.BindCheck(PANEL_AUTO_NORMALS, m_AutoNormals);
    form.BindText(PANEL_MATERIAL, m_Material);
    form.OnClick(PANEL_AUTO_NORMALS, [this] { OnAutoNormals(); });
    form.OnClick(PANEL_UPDATE_NORMALS, [] { GetPluginContext()->UpdateTerrainNormals(); });
    form.OnClick(PANEL_MATERIAL_BROWSE, [this] { OnBrowseMaterial(); });
}

void CTerrainLook::Take()
{
    m_AutoNormals = GetPluginContext()->IsAutoUpdateNormals() ? CHECK_ON : CHECK_OFF;
    m_Material = GetTerraformingState().GetEditMaterial();
}

void CTerrainLook::OnAutoNormals()
{
    m_Form.ReadControls();
    GetPluginPart<IPanelPlugin>()->SetAutoUpdateNormals(m_AutoNormals == CHECK_ON);
}

void CTerrainLook::OnBrowseMaterial()
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    if (pHost == nullptr)
    {
        return;
    }
    m_Form.ReadControls();
    const std::string strPath = pHost->BrowseForFile(
        FILE_DIALOG_OPEN, "mat", m_Material.c_str(), "data", "Material files (*.mat)|*.mat");
    if (!strPath.empty())
    {
        m_Material = strPath;
        m_Form.WriteControls();
        GetTerraformingState().SetEditMaterial(strPath.c_str());
    }
}
