#include "engine/elevation/HeightImport.h"

#include "engine/elevation/ImportPlan.h"
#include "engine/elevation/ReportText.h"
#include "engine/elevation/Resample.h"
#include "engine/elevation/VoidFiller.h"
#include "host/Log.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <new>
#include <utility>

namespace
{

constexpr float NO_MAX_HEIGHT = 1000.0F; // where no sample is above 0

// The samples in terrain units.
void ScaleSamples(const SImportPlan& plan, std::vector<float>& samples)
{
    // Samples that are heights already keep every bit.
    if (plan.dScale == 1.0 && plan.dOffset == 0.0)
    {
        return;
    }
    const double dOffset = plan.dOffset;
    const double dScale = plan.dScale;
    std::transform(samples.begin(),
                   samples.end(),
                   samples.begin(),
                   [=](float fSample) {
                       return static_cast<float>((static_cast<double>(fSample) - dOffset) * dScale);
                   });
}

bool FitHeights(const SSampleGrid& grid,
                const SFitWindow& w,
                EFit eFit,
                SHeightField& field,
                std::string& strFault)
{
    if (!field.Allocate(w.uSizeX, w.uSizeZ))
    {
        strFault = MakeText("not enough memory for %u x %u vertices", w.uSizeX, w.uSizeZ);
        return false;
    }
    const SSampleView view{grid.samples.data(), grid.uColumns, grid.uRows};
    // For a file that is kept as it is Resample finds as many vertices as samples and copies them.
    if (eFit != EFit::Crop)
    {
        strFault = "cancelled";
        return Resample(view, w.uSizeX, w.uSizeZ, field.pHeights.get());
    }
    CopyWindow(view, w.uColumn, w.uRow, w.uColumns, w.uRows, field.pHeights.get());
    return true;
}

void ReportTerrain(const SHeightField& field, std::vector<std::string>& lines)
{
    const auto [pLow, pHigh] =
        std::minmax_element(field.pHeights.get(), field.pHeights.get() + field.GetCount());
    const double dSizeX = static_cast<double>(field.size.x);
    const double dSizeZ = static_cast<double>(field.size.z);
    lines.push_back(MakeText("terrain: %u x %u vertices", field.uSizeX, field.uSizeZ));
    lines.push_back("size: " + MakeNumber(dSizeX) + " x " + MakeNumber(dSizeZ) +
                    ", maximum height " + MakeNumber(static_cast<double>(field.size.y)));
    lines.push_back("range: " + MakeNumber(static_cast<double>(*pLow)) + " to " +
                    MakeNumber(static_cast<double>(*pHigh)));
    lines.push_back("step: " + MakeNumber(dSizeX / (field.uSizeX - 1)) + " x " +
                    MakeNumber(dSizeZ / (field.uSizeZ - 1)));
    if (*pLow < 0.0F)
    {
        lines.emplace_back("note: heights below 0 cannot be edited");
    }
    if (*pHigh > field.size.y)
    {
        lines.emplace_back("note: heights above the maximum height stay until they are edited");
    }
}

bool Make(SSampleGrid& grid,
          const SImportOptions& options,
          SHeightField& field,
          SImportReport& report,
          std::string& strFault)
{
    SImportPlan plan;
    if (!PlanImport(grid, report, options, plan, strFault))
    {
        return false;
    }
    // Voids go first: a fit would spread them.
    if (report.nVoids > 0)
    {
        FillVoids(grid);
    }
    OrientGrid(options.orientation, grid);
    ScaleSamples(plan, grid.samples);
    if (!FitHeights(grid, plan.window, options.eFit, field, strFault))
    {
        return false;
    }
    field.size = plan.size;
    field.geo = std::move(plan.geo);
    report.lines.insert(report.lines.end(), plan.lines.begin(), plan.lines.end());
    ReportTerrain(field, report.lines);
    return true;
}

} // namespace

float GetDefaultMaxHeight(float fHighest)
{
    if (!(fHighest > 0.0F))
    {
        return NO_MAX_HEIGHT;
    }
    double dUnit = 1.0;
    while (5.0 * dUnit <= fHighest)
    {
        dUnit *= 10.0;
    }
    double dMaxHeight = 5.0 * dUnit;
    dMaxHeight = 2.0 * dUnit > fHighest ? 2.0 * dUnit : dMaxHeight;
    dMaxHeight = dUnit > fHighest ? dUnit : dMaxHeight;
    return static_cast<float>(std::min<double>(dMaxHeight, FLT_MAX));
}

bool MakeTerrain(const char* pszPath,
                 SSampleGrid&& grid,
                 const SImportOptions& options,
                 SHeightField& field,
                 SImportReport& report)
{
    try
    {
        SSampleGrid samples = std::move(grid);
        SImportReport made = report;
        SHeightField imported;
        std::string strFault;
        if (Make(samples, options, imported, made, strFault))
        {
            field = std::move(imported);
            report = std::move(made);
            return true;
        }
        CrashLog("[ImportHeights] %s: %s\n", pszPath, strFault.c_str());
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[ImportHeights] %s: not enough memory\n", pszPath);
    }
    return false;
}

bool ImportHeights(const char* pszPath,
                   const SImportOptions& options,
                   SHeightField& field,
                   SImportReport& report)
{
    SSampleGrid grid;
    SImportReport made;
    if (!ReadElevation(pszPath, options, grid, made) ||
        !MakeTerrain(pszPath, std::move(grid), options, field, made))
    {
        return false;
    }
    report = std::move(made);
    return true;
}
