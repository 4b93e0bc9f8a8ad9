#include "tools/height/Convert.h"

#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightImport.h"
#include "engine/terrain/HeightFile.h"
#include "host/Program.h"

#include <cstdio>
#include <new>

namespace
{

bool IsScaleSaid(double dWhite, double dUnit)
{
    return dWhite > 0.0 || dUnit > 0.0;
}

// A terrain has no scale or byte order of its own, so those that are given without a word about
// which file they mean are the output's. What is said of the output by itself wins.
void MoveToOutput(SImportOptions& in, SExportOptions& out)
{
    if (!IsScaleSaid(out.dWhite, out.dUnit))
    {
        out.dWhite = in.dWhite;
        out.dUnit = in.dUnit;
    }
    out.eByteOrder = out.eByteOrder == EByteOrder::None ? in.eByteOrder : out.eByteOrder;
    in.dWhite = 0.0;
    in.dUnit = 0.0;
}

bool IsTerrain(const SElevationFormat* pFormat)
{
    return pFormat != nullptr && pFormat->bTerrain;
}

bool HoldsCodesAlways(const SElevationFormat* pFormat)
{
    return pFormat != nullptr && pFormat->eCodes == ECodes::Always;
}

void ChooseScales(const SHeightOptions& options,
                  const SElevationFormat* pTo,
                  SImportOptions& in,
                  SExportOptions& out)
{
    constexpr double FULL_CODE = 65535.0;
    const SElevationFormat* pFrom = FindFormatOfFile(options.inputs[0].c_str());
    if (IsTerrain(pFrom) && !IsTerrain(pTo))
    {
        MoveToOutput(in, out);
        return;
    }
    const bool bCodes = HoldsCodesAlways(pFrom) && HoldsCodesAlways(pTo);
    if (bCodes && !IsScaleSaid(in.dWhite, in.dUnit) && !IsScaleSaid(out.dWhite, out.dUnit))
    {
        // From codes to codes: they stay what they are.
        in.dWhite = FULL_CODE;
        out.dWhite = FULL_CODE;
    }
}

void Print(const std::vector<std::string>& lines)
{
    for (const std::string& strLine : lines)
    {
        std::printf("%s\n", strLine.c_str());
    }
}

} // namespace

bool Convert(const SHeightOptions& options)
{
    const char* pszOutput = options.strOutput.c_str();
    const SElevationFormat* pTo = FindFormatByName(pszOutput);
    SImportOptions in = options.import;
    SExportOptions out = options.output;
    ChooseScales(options, pTo, in, out);
    // Only a terrain has to be a square of a supported size; elsewhere the grid stays unless asked.
    in.eFit = IsTerrain(pTo) || options.bFitGiven ? in.eFit : EFit::Keep;
    SHeightField field;
    SImportReport report;
    if (!ImportHeights(options.inputs[0].c_str(), in, field, report))
    {
        return false;
    }
    out.geo = field.geo;
    const SSampleView view{field.pHeights.get(), field.uSizeX, field.uSizeZ};
    SExportPlan plan;
    if (!PlanExport(pszOutput, view, field.size, out, plan))
    {
        return false;
    }
    // All that is assumed is on the output before the file is there, so a reader who has gone away
    // leaves no file behind.
    Print(report.lines);
    Print(plan.lines);
    return FlushStandardOutput("tellur-height") && ExportHeights(pszOutput, view, field.size, plan);
}
