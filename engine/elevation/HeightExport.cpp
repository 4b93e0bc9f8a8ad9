#include "engine/elevation/HeightExport.h"

#include "engine/elevation/CExportRows.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/MapSystem.h"
#include "engine/elevation/ReportText.h"
#include "host/FileSystem.h"
#include "host/Log.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <new>
#include <utility>

namespace
{

constexpr double MOST_HALF = 65504.0; // that a float of 16 bits holds

double FindHighest(const SSampleView& heights)
{
    // Heights below 0 do not count: what is looked for becomes the height of white.
    float fHighest = 0.0F;
    for (size_t i = 0; i < heights.GetCount(); ++i)
    {
        const float fHeight = heights.pSamples[i];
        fHighest = std::isfinite(fHeight) ? std::max(fHighest, fHeight) : fHighest;
    }
    return static_cast<double>(fHighest);
}

// What samples of the format can be; dUnit and the byte order are set by others.
void SetLimits(SExportPlan& plan, bool bCodes)
{
    plan.bRound = plan.pFormat->eSamples != ESampleType::Float;
    switch (plan.pFormat->eSamples)
    {
    case ESampleType::Unsigned:
        plan.dLow = 0.0;
        plan.dHigh = 65535.0;
        break;
    case ESampleType::Signed:
        plan.dLow = -32767.0; // -32768 is a void
        plan.dHigh = 32767.0;
        break;
    case ESampleType::Float:
        const double dMost = plan.uBits == 16 ? MOST_HALF : static_cast<double>(FLT_MAX);
        plan.dLow = bCodes ? 0.0 : -dMost;
        plan.dHigh = bCodes ? 1.0 : dMost;
        break;
    }
}

uint32_t GetBits(const SElevationFormat& format, uint32_t uAsked)
{
    const bool bHalf = format.eSamples != ESampleType::Float || (format.bHalves && uAsked == 16);
    return bHalf ? 16 : 32;
}

// Why this cannot be written in that format; empty when it can.
std::string FindFault(const SElevationFormat* pFormat,
                      const SSampleView& heights,
                      const SExportOptions& options)
{
    if (!IsWritten(pFormat))
    {
        return "the extension names no format (" + ListElevationFormats(true) + ")";
    }
    if (heights.pSamples == nullptr || std::min(heights.uColumns, heights.uRows) < MIN_SAMPLES)
    {
        return "no heights";
    }
    if (options.IsWhiteSaid() && options.dUnit > 0.0)
    {
        return "a height of white and a unit are given, only one can hold";
    }
    if (options.IsWhiteSaid() && !HoldsCodes(*pFormat, true))
    {
        return "holds heights, no codes: it has no white, give a unit";
    }
    if ((options.dUnit > 0.0 || options.dBase != 0.0) && pFormat->bTerrain)
    {
        return "a height file holds terrain units";
    }
    if (options.bSouthFirst && (pFormat->bTerrain || pFormat->bNorthUp || pFormat->bDegreeTile))
    {
        return "the first row of the format is north";
    }
    if (options.uBits != 0 && options.uBits != GetBits(*pFormat, options.uBits))
    {
        return MakeText("the format has no samples of %u bits", options.uBits);
    }
    if (pFormat->pszSquareFile != nullptr && heights.uColumns != heights.uRows)
    {
        return MakeText("%u x %u heights: %s is square",
                        heights.uColumns,
                        heights.uRows,
                        pFormat->pszSquareFile);
    }
    return "";
}

double ChooseUnit(const SSampleView& heights,
                  const SVec3& size,
                  const SExportOptions& options,
                  SExportPlan& plan)
{
    // A unit that is said, or heights as they are: neither needs a height of white.
    if (!HoldsCodes(*plan.pFormat, options.IsWhiteSaid()) || options.dUnit > 0.0)
    {
        return options.dUnit > 0.0 ? options.dUnit : 1.0;
    }
    double dWhite = options.dWhite;
    if (!options.IsWhiteSaid())
    {
        const double dMaxHeight = std::fabs(static_cast<double>(size.y));
        const double dHighest = FindHighest(heights);
        // At least the highest height, so that nothing is cut above.
        dWhite = std::max(dMaxHeight, dHighest);
        plan.lines.push_back(
            "assumed: full white is the " +
            std::string(dHighest > dMaxHeight ? "highest height " : "maximum height ") +
            MakeNumber(dWhite));
    }
    return (dWhite - options.dBase) / plan.dHigh;
}

std::string GetTypeText(const SExportPlan& plan)
{
    SSampleGrid grid; // for the words alone
    grid.eType = plan.pFormat->eSamples;
    grid.uBits = plan.uBits;
    grid.eByteOrder = plan.eByteOrder;
    return GetSampleTypeText(grid);
}

// Why the format cannot tell the place; empty when it can.
const char* FindPlaceFault(const SExportPlan& plan, const SGeoTags& geo)
{
    const double dCell = std::max(plan.dSpacingX, plan.dSpacingZ);
    if (!plan.pFormat->bKeepsSpacing)
    {
        return "the format has none";
    }
    if (plan.bSouthFirst)
    {
        return "its rows run from the south";
    }
    if (!plan.pFormat->bNorthUp)
    {
        return "";
    }
    // A reader goes by the size of cells.
    return !geo.IsNorthUp() ? "its rows must run from west to east, from the north on"
           : geo.bDegrees != (dCell < MAX_DEGREES_CELL) ? "its cells would be taken for other units"
                                                        : "";
}

// Takes over what is known of the place, as far as the format can say it.
void PlaceOnMap(const SGeoTags& geo, const SSampleView& heights, SExportPlan& plan)
{
    if (!geo.bKnown)
    {
        return;
    }
    const double dOwnX = plan.dSpacingX;
    const double dOwnZ = plan.dSpacingZ;
    const auto getStep = [](const SMapPoint& from, const SMapPoint& to, uint32_t uSamples)
    {
        return std::hypot(to.dX - from.dX, to.dY - from.dY) / (uSamples - 1);
    };
    plan.dSpacingX = getStep(geo.first, geo.lastX, heights.uColumns);
    plan.dSpacingZ = getStep(geo.first, geo.lastZ, heights.uRows);
    const std::string strFault = FindPlaceFault(plan, geo);
    if (!strFault.empty())
    {
        plan.dSpacingX = dOwnX;
        plan.dSpacingZ = dOwnZ;
        plan.lines.push_back("note: the place on the map is not written: " + strFault);
        return;
    }
    plan.geo = geo;
    std::string strSystem = GetSystemText(geo);
    strSystem = strSystem.empty() ? "" : " in " + strSystem;
    strSystem +=
        !strSystem.empty() && plan.pFormat->bNorthUp ? ", which the format does not say" : "";
    plan.lines.push_back("place: x = 0, z = 0 is at " + GetPlaceText(geo.first) + strSystem);
}

void AddScaleLines(SExportPlan& plan)
{
    plan.lines.push_back(std::string("scale: ") + (plan.bRound ? "one step" : "1.0") +
                         " of the file is " + MakeNumber(plan.dUnit) + " in terrain units" +
                         (plan.bRound ? ", heights are rounded to whole steps" : ""));
    if (plan.dBase != 0.0)
    {
        plan.lines.push_back("base: 0 in the file is height " + MakeNumber(plan.dBase));
    }
    if (plan.pFormat->bKeepsSpacing)
    {
        plan.lines.push_back("spacing: " + MakeNumber(plan.dSpacingX) + " x " +
                             MakeNumber(plan.dSpacingZ) +
                             (plan.geo.bDegrees ? " degrees" : " of the file's units"));
    }
    else
    {
        plan.lines.emplace_back("note: the format keeps no spacing and no maximum height");
    }
}

void AddLossLines(SExportPlan& plan)
{
    const std::pair<size_t, std::string> losses[] = {
        {plan.nBelow, "below " + MakeNumber(plan.dBase + plan.dLow * plan.dUnit)},
        {plan.nAbove, "above " + MakeNumber(plan.dBase + plan.dHigh * plan.dUnit)},
        {plan.nVoids, "that are no finite numbers"},
    };
    for (const auto& [nCount, strWhich] : losses)
    {
        if (nCount > 0)
        {
            plan.lines.push_back(MakeText(
                "warning: %zu heights %s do not fit and are clamped", nCount, strWhich.c_str()));
        }
    }
}

// Gives the fault, empty when there is none.
std::string MakePlan(const char* pszPath,
                     const SSampleView& heights,
                     const SVec3& size,
                     const SExportOptions& options,
                     SExportPlan& plan)
{
    plan.pFormat = FindFormatByName(pszPath);
    std::string strFault = FindFault(plan.pFormat, heights, options);
    if (!strFault.empty())
    {
        return strFault;
    }
    const SElevationFormat& format = *plan.pFormat;
    const bool bBigAsked = format.bRaw && options.eByteOrder == EByteOrder::Big;
    plan.eByteOrder = bBigAsked ? EByteOrder::Big : format.eByteOrder;
    plan.uBits = GetBits(format, options.uBits);
    plan.dBase = options.dBase;
    plan.bSouthFirst = options.bSouthFirst;
    // Before the unit is chosen, which may follow from the highest sample there can be.
    SetLimits(plan, HoldsCodes(format, options.IsWhiteSaid()));
    plan.lines.push_back(MakeText("%s: %u x %u samples", pszPath, heights.uColumns, heights.uRows));
    plan.lines.push_back(MakeText("format: %s, %s", format.pszName, GetTypeText(plan).c_str()));
    if (format.bTerrain)
    {
        return ""; // the terrain as it is
    }
    if (format.bRaw && options.eByteOrder == EByteOrder::None)
    {
        plan.lines.emplace_back("assumed: little-endian byte order");
    }
    plan.lines.push_back(std::string("order: the first row is ") +
                         (plan.bSouthFirst ? "south (the largest z)" : "north (z = 0)") +
                         ", the first column is west (x = 0)");
    plan.dUnit = ChooseUnit(heights, size, options, plan);
    if (!std::isfinite(plan.dUnit) || plan.dUnit <= 0.0)
    {
        return "has no height of white above " + MakeNumber(plan.dBase);
    }
    plan.dSpacingX = std::fabs(static_cast<double>(size.x)) / (heights.uColumns - 1);
    plan.dSpacingZ = std::fabs(static_cast<double>(size.z)) / (heights.uRows - 1);
    // A unit holds for lengths as well, so that the proportions of the terrain stay.
    if (options.dUnit > 0.0)
    {
        plan.dSpacingX /= plan.dUnit;
        plan.dSpacingZ /= plan.dUnit;
    }
    PlaceOnMap(options.geo, heights, plan);
    CExportRows::CountLosses(heights, plan);
    if (plan.nNoData > 0)
    {
        plan.geo.noData.reset();
        plan.lines.push_back(MakeText(
            "note: no number is written for voids: %zu heights are that number", plan.nNoData));
    }
    AddScaleLines(plan);
    AddLossLines(plan);
    return "";
}

// Gives the whole line, empty when all went well or is logged; bDone says which.
std::string Write(const char* pszPath, CExportRows& rows, const SExportPlan& plan, bool& bDone)
{
    fs::file file;
    std::string strFault;
    if (!file.open(pszPath, fs::mode_write))
    {
        return file.last_error().get_error_text();
    }
    const bool bWritten = plan.pFormat->pWrite(file, rows, plan, strFault);
    // A full disk is the file's own error, whatever a library made of it.
    if (!bWritten && *file.last_error().get_error_text() == '\0')
    {
        file.discard();
        return std::string(pszPath) + ": " + (strFault.empty() ? "cancelled" : strFault);
    }
    bDone = file.close() && bWritten;
    return bDone ? "" : file.last_error().get_error_text();
}

} // namespace

bool PlanExport(const char* pszPath,
                const SSampleView& heights,
                const SVec3& size,
                const SExportOptions& options,
                SExportPlan& plan)
{
    SExportPlan made;
    const std::string strFault =
        pszPath == nullptr ? "no path" : MakePlan(pszPath, heights, size, options, made);
    if (!strFault.empty())
    {
        CrashLog("[PlanExport] %s: %s\n", pszPath != nullptr ? pszPath : "", strFault.c_str());
        return false;
    }
    plan = std::move(made);
    return true;
}

bool ExportHeights(const char* pszPath,
                   const SSampleView& heights,
                   const SVec3& size,
                   const SExportPlan& plan)
{
    if (pszPath == nullptr || plan.pFormat == nullptr)
    {
        CrashLog("[ExportHeights] no path or no plan\n");
        return false;
    }
    try
    {
        if (plan.pFormat->pSave != nullptr)
        {
            return plan.pFormat->pSave(pszPath, heights, size, plan);
        }
        CExportRows rows(heights, plan);
        bool bDone = false;
        const std::string strLine = Write(pszPath, rows, plan, bDone);
        if (!strLine.empty())
        {
            CrashLog("[ExportHeights] %s\n", strLine.c_str());
        }
        return bDone;
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[ExportHeights] %s: not enough memory\n", pszPath);
        return false;
    }
}
