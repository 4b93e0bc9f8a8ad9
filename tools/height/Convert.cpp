#include "tools/height/Convert.h"

#include "engine/terrain/HeightFile.h"
#include "host/Log.h"
#include "tools/height/Resample.h"
#include "tools/height/SampleFile.h"

#include <algorithm>
#include <cfloat>
#include <cstdio>

namespace
{

void PrintAssumptions(const SHeightOptions& options, const SHeightField& field)
{
    if (options.uSize == 0)
    {
        std::printf("assumed: %u vertices a side, the nearest supported size (--size)\n",
                    field.uSizeX);
    }
    if (options.fWidth == 0.0F && options.fSpacingX == 0.0F)
    {
        std::printf("assumed: one terrain unit between samples along x (--spacing-x, --width)\n");
    }
    if (options.fDepth == 0.0F && options.fSpacingZ == 0.0F)
    {
        std::printf("assumed: one terrain unit between samples along z (--spacing-z, --depth)\n");
    }
    if (options.fMaxHeight == 0.0F)
    {
        std::printf("assumed: maximum height %.7g (--max-height)\n",
                    static_cast<double>(field.size.y));
    }
}

void PrintReport(const SHeightOptions& options, const SSampleGrid& grid, const SHeightField& field)
{
    const float* pHeights = field.pHeights.get();
    const auto [pLow, pHigh] = std::minmax_element(pHeights, pHeights + field.GetCount());
    std::printf("%s: %u x %u samples\n", options.inputs[0].c_str(), grid.uColumns, grid.uRows);
    if (grid.nFilledVoids > 0)
    {
        std::printf("voids: %zu samples filled from their neighbours\n", grid.nFilledVoids);
    }
    std::printf("%s: %u x %u vertices\n", options.strOutput.c_str(), field.uSizeX, field.uSizeZ);
    std::printf("size: %.7g x %.7g, maximum height %.7g\n",
                static_cast<double>(field.size.x),
                static_cast<double>(field.size.z),
                static_cast<double>(field.size.y));
    std::printf("range: %.7g to %.7g\n", static_cast<double>(*pLow), static_cast<double>(*pHigh));
    std::printf("step: %.7g x %.7g\n",
                static_cast<double>(field.size.x) / (field.uSizeX - 1),
                static_cast<double>(field.size.z) / (field.uSizeZ - 1));
    PrintAssumptions(options, field);
    if (*pLow < 0.0F)
    {
        std::printf("note: heights below 0 cannot be edited\n");
    }
    if (*pHigh > field.size.y)
    {
        std::printf("note: heights above the maximum height stay until they are edited\n");
    }
}

float GetLength(float fLength, float fSpacing, uint32_t uSamples)
{
    return fLength > 0.0F ? fLength
                          : (fSpacing > 0.0F ? fSpacing : 1.0F) * static_cast<float>(uSamples - 1);
}

} // namespace

float GetDefaultMaxHeight(float fHighest)
{
    if (!(fHighest > 0.0F))
    {
        return 1000.0F;
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

bool Convert(const SHeightOptions& options)
{
    SSampleGrid grid;
    if (!ReadSamples(options.inputs[0], grid))
    {
        return false;
    }
    SHeightField field;
    const uint32_t uSize =
        options.uSize > 0 ? options.uSize : GetNearestSize(grid.uColumns, grid.uRows);
    if (!field.Allocate(uSize, uSize))
    {
        CrashLog("[Convert] %s: not enough memory for %u x %u vertices\n",
                 options.strOutput.c_str(),
                 uSize,
                 uSize);
        return false;
    }
    Resample(grid, uSize, uSize, field.pHeights.get());
    const float fHighest = *std::max_element(grid.samples.begin(), grid.samples.end());
    field.size = {GetLength(options.fWidth, options.fSpacingX, grid.uColumns),
                  options.fMaxHeight > 0.0F ? options.fMaxHeight : GetDefaultMaxHeight(fHighest),
                  GetLength(options.fDepth, options.fSpacingZ, grid.uRows)};
    if (!WriteHeightFile(options.strOutput.c_str(), field.pHeights.get(), uSize, uSize, field.size))
    {
        return false;
    }
    PrintReport(options, grid, field);
    return true;
}
