#include "tools/height/Info.h"

#include "engine/elevation/ImportPlan.h"
#include "engine/elevation/MapSystem.h"
#include "engine/elevation/ReportText.h"
#include "engine/elevation/Resample.h"
#include "host/Program.h"

#include <cstdio>

namespace
{

std::string GetSpacingText(const SSampleGrid& grid)
{
    if (grid.dSpacingX <= 0.0 || grid.dSpacingZ <= 0.0)
    {
        return "not said";
    }
    return MakeNumber(grid.dSpacingX) + " x " + MakeNumber(grid.dSpacingZ) +
           (grid.bInDegrees ? " degrees" : "");
}

void PrintPlace(const SGeoTags& geo)
{
    if (geo.bKnown)
    {
        const std::string strSystem = GetSystemText(geo);
        std::printf("  place: %s to %s\n",
                    GetPlaceText(geo.first).c_str(),
                    GetPlaceText(geo.GetLast()).c_str());
        std::printf("  system: %s\n", strSystem.empty() ? "not said" : strSystem.c_str());
    }
}

void PrintFile(const std::string& strPath, const SSampleGrid& grid, const SImportReport& report)
{
    std::printf("%s\n", strPath.c_str());
    std::printf("  format: %s\n", report.pFormat->pszName);
    std::printf("  samples: %u columns x %u rows\n", grid.uColumns, grid.uRows);
    std::printf("  type: %s\n", GetSampleTypeText(grid).c_str());
    std::printf("  spacing: %s\n", GetSpacingText(grid).c_str());
    PrintPlace(grid.geo);
    std::printf("  range: %s to %s\n",
                MakeNumber(static_cast<double>(report.fLow)).c_str(),
                MakeNumber(static_cast<double>(report.fHigh)).c_str());
    std::printf("  voids: %zu\n", report.nVoids);
    std::printf("  nearest size: %u\n", GetNearestSize(grid.uColumns, grid.uRows));
    if (report.pFormat->bTerrain)
    {
        std::printf("  size: %s x %s, maximum height %s\n",
                    MakeNumber(static_cast<double>(report.size.x)).c_str(),
                    MakeNumber(static_cast<double>(report.size.z)).c_str(),
                    MakeNumber(static_cast<double>(report.size.y)).c_str());
    }
    for (const std::string& strLine : report.lines)
    {
        if (strLine.starts_with("warning: ") || strLine.starts_with("assumed: ") ||
            strLine.starts_with("tiles: "))
        {
            std::printf("  %s\n", strLine.c_str());
        }
    }
    if (!report.pFormat->bTerrain)
    {
        std::printf("  %s\n", GetOrderLine(false).c_str());
    }
}

} // namespace

bool PrintInfo(const SHeightOptions& options)
{
    bool bGood = true;
    for (const std::string& strInput : options.inputs)
    {
        SSampleGrid grid;
        SImportReport report;
        if (ReadElevation(strInput.c_str(), options.import, grid, report))
        {
            PrintFile(strInput, grid, report);
            if (!FlushStandardOutput("tellur-height"))
            {
                return false;
            }
        }
        else
        {
            bGood = false;
        }
    }
    return bGood;
}
