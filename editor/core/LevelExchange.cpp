// Import and export: what a level gives and takes of other formats.

#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/SLevelText.h"
#include "engine/elevation/HeightImport.h"
#include "engine/terrain/CTerrain.h"
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

bool CLevelDocument::Import(const char* pszPath,
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
    if (eAs == EImportAs::ThisLevel && HasLevel())
    {
        const std::string strName = std::filesystem::path(pszPath).filename().string();
        m_Host.GetLevelHeights().Replace(std::move(field), "Import " + strName);
        return true;
    }
    m_bOpening = true;
    m_Host.TakeLevel(std::move(field));
    m_bOpening = false;
    SetSource({}, {}, false);
    return true;
}

bool CLevelDocument::PlanExport(const char* pszPath,
                                const SExportOptions& options,
                                SExportPlan& plan)
{
    const CTerrain* pTerrain = GetTerrain();
    if (pTerrain == nullptr)
    {
        CrashLog("[CLevelDocument::PlanExport] there is no level\n");
        return false;
    }
    return ::PlanExport(pszPath, GetSamples(*pTerrain), pTerrain->GetSizeVector(), options, plan);
}

bool CLevelDocument::Export(const char* pszPath, const SExportPlan& plan)
{
    const CTerrain* pTerrain = GetTerrain();
    return pTerrain != nullptr &&
           ExportHeights(pszPath, GetSamples(*pTerrain), pTerrain->GetSizeVector(), plan);
}
