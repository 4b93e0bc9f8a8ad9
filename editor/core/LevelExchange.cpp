#include "editor/core/LevelExchange.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/SLevelText.h"
#include "editor/core/Words.h"
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
    SSampleGrid grid;
    SImportReport report;
    if (!ReadElevation(pszPath, options, grid, report))
    {
        return false;
    }
    const bool bDone = ImportLevel(host, document, pszPath, std::move(grid), report, options, eAs);
    lines = bDone ? report.lines : lines;
    return bDone;
}

bool ImportLevel(CEditorHost& host,
                 CLevelDocument& document,
                 const char* pszPath,
                 SSampleGrid&& grid,
                 SImportReport& report,
                 const SImportOptions& options,
                 EImportAs eAs)
{
    SHeightField field;
    if (!MakeTerrain(pszPath, std::move(grid), options, field, report))
    {
        return false;
    }
    if (eAs == EImportAs::ThisLevel && document.HasLevel())
    {
        const std::string strName = std::filesystem::path(pszPath).filename().string();
        host.GetLevelHeights().Replace(std::move(field), Words("Import ") + strName);
        return true;
    }
    SLevelText text;
    text.geo = field.geo;
    return document.TakeOver(text,
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
    SExportOptions placed = options;
    placed.geo = pTerrain->GetGeoTags();
    return PlanExport(pszPath, GetSamples(*pTerrain), pTerrain->GetSizeVector(), placed, plan);
}

bool ExportLevel(CEditorHost& host, const char* pszPath, const SExportPlan& plan)
{
    const CTerrain* pTerrain = host.GetEngine().GetCWorld().GetCTerrain();
    return pTerrain != nullptr &&
           ExportHeights(pszPath, GetSamples(*pTerrain), pTerrain->GetSizeVector(), plan);
}

SGroundFacts GetGroundFacts(CEditorHost& host)
{
    const CTerrain* pTerrain = host.GetEngine().GetCWorld().GetCTerrain();
    if (pTerrain == nullptr)
    {
        return {};
    }
    SGroundFacts facts = SGroundFacts::Measure(GetSamples(*pTerrain), pTerrain->GetSizeVector());
    facts.eUnit = GuessLevelUnit(pTerrain->GetGeoTags(), pTerrain->GetSizeVector());
    return facts;
}

bool PlanLevelExport(CEditorHost& host,
                     const std::string& strPath,
                     const SExportTarget& target,
                     const STargetChoice& choice,
                     STargetExport& made)
{
    const CTerrain* pTerrain = host.GetEngine().GetCWorld().GetCTerrain();
    return pTerrain != nullptr && PlanTargetExport(strPath,
                                                   target,
                                                   choice,
                                                   GetSamples(*pTerrain),
                                                   pTerrain->GetSizeVector(),
                                                   pTerrain->GetGeoTags(),
                                                   made);
}

bool ExportLevel(CEditorHost& host, const std::string& strPath, const STargetExport& made)
{
    const CTerrain* pTerrain = host.GetEngine().GetCWorld().GetCTerrain();
    return pTerrain != nullptr &&
           WriteTargetExport(strPath, GetSamples(*pTerrain), pTerrain->GetSizeVector(), made);
}
