// The one persistent setting and the height-map file.

#include "framework/core/CResourceScope.h"
#include "framework/core/MessageBox.h"
#include "framework/core/ResourceModule.h"
#include "host/EditorHost.h"
#include "host/FileSystem.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "parser/KeywordValues.h"
#include "plugin/IPluginImpl.h"
#include "resources/PluginResources.h"

namespace
{

constexpr const char* SETTING_KEY = "Tellur2DDrawUndoMgrStackSize";
constexpr int32_t DEFAULT_UNDO_DEPTH = 10;
constexpr const char* ENVIRONMENT_CLASS = "Environment";
constexpr uint32_t REQUEST_FULL_PATH = 16;

} // namespace

void IPluginImpl::ResetSettings()
{
    m_2DDrawUndoMgrStackSize = DEFAULT_UNDO_DEPTH;
}

void IPluginImpl::SaveSettings(fs::ifile& file)
{
    file.printf("\n!%s( i )\n\n", SETTING_KEY);
    file.printf("%s( %d )\n", SETTING_KEY, m_2DDrawUndoMgrStackSize);
}

void IPluginImpl::LoadSettings(const CTCPARSE_KEYWORD* pFirst)
{
    for (const CTCPARSE_KEYWORD* pKey = pFirst; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, SETTING_KEY))
        {
            m_2DDrawUndoMgrStackSize = GetIntValue(pKey->params);
        }
    }
}

bool IPluginImpl::SaveHeightMap(const char* pszPath)
{
    const CResourceScope scope(&GetPluginResources());
    std::string strPath = pszPath != nullptr ? pszPath : "";
    if (strPath.empty() && m_pEditorHost != nullptr)
    {
        strPath = m_pEditorHost->BrowseForFile(
            0, "height", nullptr, "data", "Height map files (*.height)|*.height");
    }
    Terrain* pTerrain = m_pWorld != nullptr ? m_pWorld->GetTerrain() : nullptr;
    return !strPath.empty() && pTerrain != nullptr &&
           pTerrain->SaveHeightMap(strPath.c_str(), nullptr, 0, 0);
}

// The full path of the environment's height map; empty when there is none.
std::string IPluginImpl::GetHeightMapFile() const
{
    IEnvironment* pEnvironment = m_pWorld != nullptr ? m_pWorld->GetEnvironment() : nullptr;
    std::string strFile;
    if (pEnvironment != nullptr)
    {
        const std::string strName = pEnvironment->GetHeightMapName();
        m_pEditorHost->GetEnvironmentFile(
            ENVIRONMENT_CLASS, m_ActionHandle, REQUEST_FULL_PATH, &strName, &strFile);
    }
    return strFile;
}

void IPluginImpl::CheckHeightMapWritable()
{
    const CResourceScope scope(&GetPluginResources());
    if (m_pEditorHost == nullptr || !m_pEditorHost->QueryEntityClass(ENVIRONMENT_CLASS))
    {
        return;
    }
    const std::string strFile = GetHeightMapFile();
    if (!strFile.empty() && fs::exists(strFile.c_str()) && fs::read_only(strFile.c_str()))
    {
        const std::string strText =
            "Height map file " + strFile + " is read-only.\nChanges won't be saved.";
        ShowMessageBox(strText.c_str(), MB_OK | MB_ICONEXCLAMATION);
    }
}
