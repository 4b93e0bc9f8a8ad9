#include "editor/core/LevelExchange.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/SLevelText.h"
#include "engine/elevation/HeightImport.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/Log.h"

#include <filesystem>
#include <utility>

namespace
{

SSampleView GetSamples(const CTerrain& terrain)
{
    return {terrain.GetHeightData(), terrain.GetVerticesX(), terrain.GetVerticesZ()};
}

} // namespace

bool ImportLevel(CEditorHost& host,
                 CLevelDocument& document,
                 const char* pszPath,
                 const SImportOptions& options,
                 EImportAs eAs,
                 std::vector<std::string>& lines)
{
    SHeightField field;
    SImportReport report;
    if (!ImportHeights(pszPath, options, field, report))
    {
        return false;
    }
    lines = report.lines;
    if (eAs == EImportAs::ThisLevel && document.HasLevel())
    {
        const std::string strName = std::filesystem::path(pszPath).filename().string();
        host.GetLevelHeights().Replace(std::move(field), "Import " + strName);
        return true;
    }
    return document.TakeOver({},
                             [&](CLevelFiles&)
                             {
                                 host.TakeLevel(std::move(field));
                                 return true;
                             });
}

bool PlanLevelExport(CEditorHost& host,
                     const char* pszPath,
                     const SExportOptions& options,
                     SExportPlan& plan)
{
    const CTerrain* pTerrain = host.GetEngine().GetCWorld().GetCTerrain();
    if (pTerrain == nullptr)
    {
        CrashLog("[CLevelDocument::PlanExport] there is no level\n");
        return false;
    }
    return PlanExport(pszPath, GetSamples(*pTerrain), pTerrain->GetSizeVector(), options, plan);
}

bool ExportLevel(CEditorHost& host, const char* pszPath, const SExportPlan& plan)
{
    const CTerrain* pTerrain = host.GetEngine().GetCWorld().GetCTerrain();
    return pTerrain != nullptr &&
           ExportHeights(pszPath, GetSamples(*pTerrain), pTerrain->GetSizeVector(), plan);
}
