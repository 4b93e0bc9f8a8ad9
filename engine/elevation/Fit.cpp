#include "engine/elevation/Fit.h"

#include "engine/elevation/ReportText.h"
#include "engine/elevation/Resample.h"

#include <algorithm>

namespace
{

bool PlaceWindow(uint32_t uSamples,
                 uint32_t uSize,
                 const std::optional<uint32_t>& place,
                 const char* pszAxis,
                 uint32_t& uStart,
                 std::string& strFault)
{
    uStart = place.value_or((uSamples - uSize) / 2);
    // This way round, because a start that a person gives could make a sum wrap.
    if (uStart <= uSamples - uSize)
    {
        return true;
    }
    strFault = MakeText(
        "a window of %u samples cannot start at %s %u of %u", uSize, pszAxis, uStart, uSamples);
    return false;
}

bool ChooseWindow(const SImportOptions& options,
                  SFitWindow& window,
                  std::vector<std::string>& lines,
                  std::string& strFault)
{
    const uint32_t uColumns = window.uColumns;
    const uint32_t uRows = window.uRows;
    const uint32_t uRoom = std::min(uColumns, uRows);
    const uint32_t uLargest = GetLargestSize(uRoom);
    const uint32_t uSize = options.uSize > 0 ? options.uSize : uLargest;
    if (uSize == 0 || uSize > uRoom)
    {
        // For a file that is too small for every size the fault names the smallest one.
        const uint32_t uWanted = std::max(uSize, GetNearestSize(0, 0));
        strFault = MakeText("%u x %u samples have no room for a window of %u x %u",
                            uColumns,
                            uRows,
                            uWanted,
                            uWanted);
        return false;
    }
    if (!PlaceWindow(uColumns, uSize, options.cropX, "column", window.uColumn, strFault) ||
        !PlaceWindow(uRows, uSize, options.cropZ, "row", window.uRow, strFault))
    {
        return false;
    }
    window.uColumns = uSize;
    window.uRows = uSize;
    if (options.uSize == 0)
    {
        lines.push_back(
            MakeText("assumed: %u vertices a side, the largest supported size that fits", uSize));
    }
    if (!options.cropX || !options.cropZ)
    {
        lines.emplace_back("assumed: the window lies in the middle of the file");
    }
    lines.push_back(MakeText("fit: window of %u x %u samples, first column %u, first row %u",
                             uSize,
                             uSize,
                             window.uColumn,
                             window.uRow));
    return true;
}

} // namespace

bool ChooseFit(const SImportOptions& options,
               uint32_t uColumns,
               uint32_t uRows,
               SFitWindow& window,
               std::vector<std::string>& lines,
               std::string& strFault)
{
    window = {0, 0, uColumns, uRows, uColumns, uRows};
    if (options.eFit == EFit::Crop && !ChooseWindow(options, window, lines, strFault))
    {
        return false;
    }
    // One vertex a sample, unless the samples are interpolated.
    window.uSizeX = window.uColumns;
    window.uSizeZ = window.uRows;
    if (options.eFit != EFit::Resample)
    {
        return true;
    }
    const uint32_t uSize = options.uSize > 0 ? options.uSize : GetNearestSize(uColumns, uRows);
    window.uSizeX = uSize;
    window.uSizeZ = uSize;
    if (options.uSize == 0)
    {
        lines.push_back(MakeText("assumed: %u vertices a side, the nearest supported size", uSize));
    }
    if (uSize != uColumns || uSize != uRows)
    {
        lines.push_back(MakeText("fit: %u x %u samples interpolated to %u x %u vertices",
                                 uColumns,
                                 uRows,
                                 uSize,
                                 uSize));
    }
    return true;
}
