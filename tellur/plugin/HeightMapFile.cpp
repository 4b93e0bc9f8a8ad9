#include "tellur/plugin/HeightMapFile.h"

#include "framework/core/CResourceScope.h"
#include "framework/core/MessageBox.h"
#include "framework/core/ResourceModule.h"
#include "host/EditorHost.h"
#include "host/FileSystem.h"
#include "host/Log.h"
#include "host/Notice.h"
#include "host/Terrain.h"
#include "host/TerrainSize.h"
#include "host/World.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/plugin/HeightMapResampling.h"
#include "tellur/resources/PluginResources.h"

namespace
{

constexpr const char* BACKUP_SUFFIX = ".bak";

// The terrain's heights at another size, in steps that hold no more than the grid they read and the
// grid they write. Null when there is no memory.
std::unique_ptr<SHeightMapData>
ResampleHeights(const Terrain& terrain, uint32_t uFrom, uint32_t uTo)
{
    auto pGrid = std::make_unique<SHeightMapData>(uFrom);
    if (pGrid->heights == nullptr)
    {
        return nullptr;
    }
    terrain.GetHeightMap(pGrid->heights.get(), uFrom);
    while (pGrid != nullptr && pGrid->size != uTo)
    {
        pGrid = pGrid->size < uTo ? Refine(*pGrid) : Coarsen(*pGrid);
    }
    return pGrid;
}

// The full path of the environment's height map; empty when there is none.
std::string GetHeightMapFile()
{
    const PluginContext& context = *GetPluginContext();
    World* pWorld = context.GetWorld();
    IEnvironment* pEnvironment = pWorld != nullptr ? pWorld->GetEnvironment() : nullptr;
    std::string strFile;
    if (pEnvironment != nullptr)
    {
        const std::string strName = pEnvironment->GetHeightMapName();
        context.GetEditorHost()->GetEnvironmentFile(ENVIRONMENT_CLASS,
                                                    context.GetPluginActionHandle(),
                                                    ENVIRONMENT_FULL_PATH,
                                                    &strName,
                                                    &strFile);
    }
    return strFile;
}

} // namespace

bool SaveHeightMap(const char* pszPath)
{
    const CResourceScope scope(&GetPluginResources());
    std::string strPath = pszPath != nullptr ? pszPath : "";
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    if (strPath.empty() && pHost != nullptr)
    {
        strPath = pHost->BrowseForFile(
            FILE_DIALOG_SAVE, "height", nullptr, "data", "Height map files (*.height)|*.height");
    }
    Terrain* pTerrain = GetCurrentTerrain();
    const CSaveNotice notice;
    if (strPath.empty() || pTerrain == nullptr ||
        !pTerrain->SaveHeightMap(strPath.c_str(), nullptr, 0, 0))
    {
        return false;
    }
    notice.Say(strPath.c_str());
    return true;
}

void CheckHeightMapWritable()
{
    const CResourceScope scope(&GetPluginResources());
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    if (pHost == nullptr || !pHost->QueryEntityClass(ENVIRONMENT_CLASS))
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

// What can fail without a trace comes first: the steps, the memory, the name of the file. Only then
// the old file goes aside, the new one is written, and the host has it read.
void ChangeHeightMapResolution(int32_t iVertices)
{
    const CResourceScope scope(&GetPluginResources());
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    World* pWorld = GetPluginContext()->GetWorld();
    IEnvironment* pEnvironment = pWorld != nullptr ? pWorld->GetEnvironment() : nullptr;
    Terrain* pTerrain = pEnvironment != nullptr ? pEnvironment->GetTerrain() : nullptr;
    if (pTerrain == nullptr || pHost == nullptr || !pHost->QueryEntityClass(ENVIRONMENT_CLASS))
    {
        return;
    }
    const uint32_t uFrom = pTerrain->GetCellsPerSide() + 1;
    const auto uTo = static_cast<uint32_t>(iVertices);
    if (uFrom == uTo)
    {
        return;
    }
    if (iVertices < 1 || uTo > TERRAIN_MAX_VERTICES || !IsReachable(uFrom, uTo))
    {
        CrashLog("[IPluginImpl::ChangeHeightMapResolution] no steps lead from %u to %d vertices\n",
                 uFrom,
                 iVertices);
        return;
    }
    if (!GetTerraformingState().IsDragging())
    {
        FreeKeptTiles(); // of the old size, and the grids need the room
    }
    auto pGrid = ResampleHeights(*pTerrain, uFrom, uTo);
    if (pGrid == nullptr)
    {
        CrashLog("[IPluginImpl::ChangeHeightMapResolution] not enough memory for %u x %u heights\n",
                 uTo,
                 uTo);
        return;
    }
    const std::string strFile = GetHeightMapFile();
    if (strFile.empty())
    {
        return;
    }
    if (fs::exists(strFile.c_str()))
    {
        // Fails when there is a backup already: the older one is the one to keep.
        fs::rename(strFile.c_str(), (strFile + BACKUP_SUFFIX).c_str());
    }
    if (!pTerrain->SaveHeightMap(strFile.c_str(), pGrid->heights.get(), uTo, uTo))
    {
        CrashLog("[IPluginImpl::ChangeHeightMapResolution] failed to save file %s\n",
                 strFile.c_str());
        return;
    }
    pGrid.reset(); // the reload needs the room
    pHost->GetEnvironmentFile(ENVIRONMENT_CLASS,
                              GetPluginContext()->GetPluginActionHandle(),
                              ENVIRONMENT_RELOAD,
                              nullptr,
                              nullptr);
    pHost->RefreshAfterReload();
    pWorld->ReloadTerrain();
}
