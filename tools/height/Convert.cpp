#include "tools/height/Convert.h"

#include "editor/core/ExportTargets.h"
#include "editor/core/UserFolders.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightImport.h"
#include "engine/elevation/TargetExport.h"
#include "engine/terrain/HeightFile.h"
#include "host/Log.h"
#include "host/Program.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
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
        out.dBase = out.dBase != 0.0 ? out.dBase : in.dBase;
    }
    out.eByteOrder = out.eByteOrder == EByteOrder::None ? in.eByteOrder : out.eByteOrder;
    in.dWhite = 0.0;
    in.dUnit = 0.0;
    in.dBase = 0.0;
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

// Null, with one logged line, when there is none of that name.
const SExportTarget* FindTarget(const std::string& strName, std::vector<SExportTarget>& targets)
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path data = program.parent_path().parent_path() / "share" / "tellur";
    targets = ReadExportTargets((data / READY_EXPORTS).string(),
                                GetUserConfigFolder() + "/" + OWN_EXPORTS);
    const SExportTarget* pTarget = FindExportTarget(targets, strName);
    if (pTarget == nullptr)
    {
        std::string strNames;
        for (const SExportTarget& target : targets)
        {
            strNames += (strNames.empty() ? "" : "; ") + target.strName;
        }
        CrashLog("[Convert] there is no target \"%s\" (%s)\n", strName.c_str(), strNames.c_str());
    }
    return pTarget;
}

bool WriteForTarget(const SHeightOptions& options,
                    const SExportTarget& target,
                    const SHeightField& field,
                    const SImportReport& report)
{
    const SSampleView view{field.pHeights.get(), field.uSizeX, field.uSizeZ};
    const STargetChoice choice{std::max(options.uTiles, 1U), options.levelUnit};
    STargetExport made;
    if (!PlanTargetExport(options.strOutput, target, choice, view, field.size, field.geo, made))
    {
        return false;
    }
    // Nobody is there to ask, and what OUT does not name is not thrown away.
    if (!made.removed.empty())
    {
        CrashLog("[Convert] %s: %s is there, of a set of more tiles\n",
                 options.strOutput.c_str(),
                 made.removed.front().c_str());
        return false;
    }
    Print(report.lines);
    Print(made.plan.lines);
    return FlushStandardOutput("tellur-height") &&
           WriteTargetExport(options.strOutput, view, field.size, made);
}

} // namespace

bool Convert(const SHeightOptions& options)
{
    const char* pszOutput = options.strOutput.c_str();
    const SElevationFormat* pTo = FindFormatByName(pszOutput);
    SImportOptions in = options.import;
    SExportOptions out = options.output;
    std::vector<SExportTarget> targets;
    const SExportTarget* pTarget = nullptr;
    if (options.strTarget.empty())
    {
        ChooseScales(options, pTo, in, out);
    }
    else if ((pTarget = FindTarget(options.strTarget, targets)) == nullptr)
    {
        return false;
    }
    // Only a terrain has to be a square of a supported size; elsewhere the grid stays unless asked.
    in.eFit = IsTerrain(pTo) || options.bFitGiven ? in.eFit : EFit::Keep;
    SHeightField field;
    SImportReport report;
    if (!ImportHeights(options.inputs[0].c_str(), in, field, report))
    {
        return false;
    }
    if (pTarget != nullptr)
    {
        return WriteForTarget(options, *pTarget, field, report);
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
    if (!FlushStandardOutput("tellur-height") || !ExportHeights(pszOutput, view, field.size, plan))
    {
        return false;
    }
    DropOldText(options.strOutput);
    return true;
}
