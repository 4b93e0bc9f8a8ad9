#include "tellur/plugin/CPluginModes.h"

#include "host/EditorHost.h"
#include "host/IEditorAction.h"
#include "host/Log.h"
#include "host/Notice.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CModeExportTerrainExtent.h"
#include "tellur/modes/CModeTerraforming.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/plugin/BrushText.h"

namespace
{

// Null while there is no host.
ModeManager* GetModes()
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    return pHost != nullptr ? pHost->GetModeManager() : nullptr;
}

} // namespace

void CPluginModes::Register(ModeManager& modes)
{
    m_TerraformingModeId = modes.RegisterMode(new CModeTerraforming, MODE_GROUP_TERRAIN);
    m_pEditTerrainTypeMode = new CModeEditTerrainType;
    m_EditTerrainTypeModeId = modes.RegisterMode(m_pEditTerrainTypeMode, MODE_GROUP_TERRAIN);
    m_ExportExtentModeId = modes.RegisterMode(new CModeExportTerrainExtent, MODE_GROUP_TERRAIN);
}

bool CPluginModes::SetMode(int32_t iModeId, int32_t iParameter) const
{
    ModeManager* pModes = GetModes();
    if (pModes == nullptr)
    {
        return false;
    }
    if (iModeId == NO_MODE)
    {
        return pModes->DeactivateMode(iParameter);
    }
    if (!pModes->IsModeAvailable(iModeId))
    {
        LogR("[IPluginImpl::SetMode] mode %d not available\n", iModeId);
        return false;
    }
    if (!pModes->CanDeactivateCurrentMode())
    {
        LogR("[IPluginImpl::SetMode] current mode cannot be deactivated\n");
        return false;
    }
    return pModes->ActivateMode(iModeId, iParameter);
}

void CPluginModes::EnableTerraforming(bool bEnable) const
{
    ModeManager* pModes = GetModes();
    if (pModes == nullptr)
    {
        return;
    }
    const bool bAlreadyTerraforming = pModes->GetCurrentModeId() == m_TerraformingModeId;
    if (bAlreadyTerraforming == bEnable)
    {
        LogR("[IPluginImpl::EnableTerraforming] bAlreadyTerraforming == bEnable\n");
        return;
    }
    if (bEnable)
    {
        SetMode(m_TerraformingModeId, 0);
        return;
    }
    const std::string strTool = GetToolName(GetPluginContext()->GetCurrentBrush()); // gone with it
    if (pModes->DeactivateMode(0))
    {
        Notice(((strTool.empty() ? "The tool" : strTool) + " was put away").c_str());
    }
}

bool CPluginModes::IsTerraforming() const
{
    ModeManager* pModes = GetModes();
    return pModes != nullptr && m_TerraformingModeId != NO_MODE &&
           pModes->GetCurrentModeId() == m_TerraformingModeId;
}

bool CPluginModes::IsGroupCurrent() const
{
    ModeManager* pModes = GetModes();
    return pModes != nullptr && pModes->GetCurrentModeGroup() == MODE_GROUP_TERRAIN;
}

// "none" comes first: ids of modes that are not registered are -1, too.
std::array<CPluginModes::SName, 4> CPluginModes::GetNames() const
{
    return {{{"none", NO_MODE},
             {"terraforming", m_TerraformingModeId},
             {"export_extent", m_ExportExtentModeId},
             {"edit_terrain_type", m_EditTerrainTypeModeId}}};
}

std::optional<int32_t> CPluginModes::FindMode(const std::string& strName) const
{
    for (const SName& name : GetNames())
    {
        if (strName == name.pszName)
        {
            return name.iModeId;
        }
    }
    return std::nullopt;
}

const char* CPluginModes::GetCurrentName() const
{
    ModeManager* pModes = GetModes();
    const int iCurrent = pModes != nullptr ? pModes->GetCurrentModeId() : NO_MODE;
    for (const SName& name : GetNames())
    {
        if (iCurrent == name.iModeId)
        {
            return name.pszName;
        }
    }
    return nullptr;
}
