#include "engine/elevation/TargetExport.h"

#include "engine/elevation/DegreeLength.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightExport.h"
#include "engine/elevation/ReportText.h"
#include "engine/elevation/Resample.h"
#include "engine/elevation/SExportNotes.h"
#include "engine/elevation/TileSet.h"
#include "host/FileSystem.h"
#include "host/Log.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace
{

bool Fail(const std::string& strPath, const std::string& strFault)
{
    CrashLog("[PlanExport] %s: %s\n", strPath.c_str(), strFault.c_str());
    return false;
}

// Why these files cannot be written; empty when they can.
std::string FindFault(const std::string& strPath, const SExportTarget& target)
{
    const SElevationFormat* pFormat = FindFormatByName(strPath.c_str());
    if (pFormat == nullptr || pFormat != FindFormatByName(("x." + target.strExtension).c_str()))
    {
        return "\"" + target.strName + "\" is written to files of ." + target.strExtension;
    }
    return "";
}

// Finds what lies in the way of the files.
void ListOldFiles(const std::string& strPath, uint32_t uTiles, STargetExport& planned)
{
    const auto add = [](const std::string& strFile, std::vector<std::string>& files)
    {
        if (fs::exists(strFile.c_str()))
        {
            files.push_back(strFile);
        }
    };
    if (uTiles == 1)
    {
        add(strPath, planned.replaced);
    }
    else
    {
        // As far as whoever reads the set would go on.
        const STileSet old = STileSet::Extend(strPath, uTiles);
        for (uint32_t i = 0; i < old.uColumns * old.uRows; ++i)
        {
            const uint32_t uX = i % old.uColumns;
            const uint32_t uY = i / old.uColumns;
            add(GetTilePath(strPath, uX, uY),
                std::max(uX, uY) < uTiles ? planned.replaced : planned.removed);
        }
    }
    add(GetTargetTextPath(strPath), planned.replaced);
}

// What cannot be removed is logged; the export stands.
void RemoveTiles(const std::vector<std::string>& tiles)
{
    for (const std::string& strTile : tiles)
    {
        if (fs::remove(strTile.c_str()) != 0 && fs::exists(strTile.c_str()))
        {
            CrashLog(
                "[ExportHeights] %s: cannot be removed, and would be read with the new tiles\n",
                strTile.c_str());
        }
    }
}

bool WriteTiles(const std::string& strPath,
                const SSampleView& samples,
                const SVec3& size,
                const STargetExport& made)
{
    const SExportForm& form = made.form;
    std::vector<float> tile(size_t{form.uTileColumns} * form.uTileRows);
    const SSampleView view{tile.data(), form.uTileColumns, form.uTileRows};
    for (uint32_t i = 0; i < form.uTiles * form.uTiles; ++i)
    {
        const uint32_t uX = i % form.uTiles;
        const uint32_t uY = i / form.uTiles;
        const uint32_t uZ = made.target.bSouthFirst ? form.uTiles - 1 - uY : uY; // from the north
        CopyWindow(samples,
                   uX * (form.uTileColumns - 1),
                   uZ * (form.uTileRows - 1),
                   form.uTileColumns,
                   form.uTileRows,
                   tile.data());
        SExportPlan plan = made.plan;
        const double dShare = 1.0 / form.uTiles;
        plan.geo.Crop(uX * dShare, (uX + 1) * dShare, uZ * dShare, (uZ + 1) * dShare);
        if (!ExportHeights(GetTilePath(strPath, uX, uY).c_str(), view, size, plan))
        {
            return false;
        }
    }
    return true;
}

bool WriteText(const std::string& strPath, const std::string& strText)
{
    fs::file file;
    if (file.open(strPath.c_str(), fs::mode_write))
    {
        file.write(strText.data(), strText.size());
        if (file.close())
        {
            return true;
        }
    }
    CrashLog("[ExportHeights] %s\n", file.last_error().get_error_text());
    return false;
}

} // namespace

ELevelUnit GuessLevelUnit(const SGeoTags& geo, const SVec3& size)
{
    constexpr double BETWEEN = 10.0; // units a metre: one, or a hundred
    if (!geo.bKnown)
    {
        return ELevelUnit::Centimetre;
    }
    const SDegreeLength length =
        geo.bDegrees ? GetDegreeLength(geo.GetMiddleY()) : SDegreeLength{1.0, 1.0};
    const double dMetres = std::hypot((geo.lastZ.dX - geo.first.dX) * length.dEast,
                                      (geo.lastZ.dY - geo.first.dY) * length.dNorth);
    return std::fabs(static_cast<double>(size.z)) < BETWEEN * dMetres ? ELevelUnit::Metre
                                                                      : ELevelUnit::Centimetre;
}

bool PlanTargetExport(const std::string& strPath,
                      const SExportTarget& target,
                      const STargetChoice& choice,
                      const SSampleView& heights,
                      const SVec3& size,
                      const SGeoTags& geo,
                      STargetExport& made)
{
    try
    {
        const uint32_t uTiles = choice.uTiles;
        STargetExport planned;
        planned.target = target;
        planned.facts = SGroundFacts::Measure(heights, size);
        planned.facts.eUnit = choice.unit.value_or(GuessLevelUnit(geo, size));
        std::string strFault = FindFault(strPath, target);
        if (!strFault.empty() || !planned.form.Make(target, planned.facts, uTiles, strFault))
        {
            return Fail(strPath, strFault);
        }
        const SExportForm& form = planned.form;
        if (form.IsInterpolated(planned.facts))
        {
            planned.samples.resize(size_t{form.uColumns} * form.uRows);
            if (!Resample(heights, form.uColumns, form.uRows, planned.samples.data()))
            {
                return Fail(strPath, "cancelled");
            }
        }
        SExportOptions options = form.GetOptions(target);
        options.geo = geo;
        if (!PlanExport(strPath.c_str(), planned.GetSamples(heights), size, options, planned.plan))
        {
            return false;
        }
        std::vector<std::string>& lines = planned.plan.lines;
        if (form.IsInterpolated(planned.facts))
        {
            lines.push_back(MakeText("fit: %u x %u vertices interpolated to %u x %u samples",
                                     heights.uColumns,
                                     heights.uRows,
                                     form.uColumns,
                                     form.uRows));
        }
        if (uTiles > 1)
        {
            lines.push_back("tiles: " + form.GetSamplesText() + " samples, from " +
                            GetTilePath(strPath, 0, 0) + " on");
        }
        if (target.bMetres)
        {
            lines.push_back((choice.unit ? "unit: " : "assumed: ") +
                            SExportForm::GetUnitText(planned.facts));
        }
        for (const auto& [strLabel, strNumber] : form.numbers)
        {
            lines.emplace_back("to type: ").append(strLabel).append(": ").append(strNumber);
        }
        ListOldFiles(strPath, uTiles, planned);
        made = std::move(planned);
        return true;
    }
    catch (const std::bad_alloc&)
    {
        return Fail(strPath, "not enough memory");
    }
}

bool WriteTargetExport(const std::string& strPath,
                       const SSampleView& heights,
                       const SVec3& size,
                       const STargetExport& made)
{
    try
    {
        const SSampleView samples = made.GetSamples(heights);
        fs::commit_group group;
        const bool bWritten = made.form.uTiles > 1
                                  ? WriteTiles(strPath, samples, size, made)
                                  : ExportHeights(strPath.c_str(), samples, size, made.plan);
        if (!bWritten ||
            !WriteText(GetTargetTextPath(strPath), made.form.GetText(made.target, made.facts)))
        {
            return false;
        }
        if (!group.commit())
        {
            CrashLog("[ExportHeights] %s\n", group.last_error().get_error_text());
            return false;
        }
        RemoveTiles(made.removed);
        return true;
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[ExportHeights] %s: not enough memory\n", strPath.c_str());
        return false;
    }
}

bool DropOldText(const std::string& strPath)
{
    const std::string strText = GetTargetTextPath(strPath);
    SExportNotes notes;
    return notes.Read(strText) && notes.uTiles == 1 && fs::remove(strText.c_str()) == 0;
}

std::string GetTargetTextPath(const std::string& strPath)
{
    return strPath + ".txt";
}
