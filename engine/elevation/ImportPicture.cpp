#include "engine/elevation/ImportPicture.h"

#include "engine/elevation/VoidFiller.h"
#include "host/Progress.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace
{

// The part of an axis that one of uParts takes: the first sample, and the one behind the last.
std::pair<uint32_t, uint32_t> GetPart(uint32_t i, uint32_t uParts, uint32_t uSamples)
{
    const auto at = [&](uint32_t uPart)
    {
        return static_cast<uint32_t>(uint64_t{uPart} * uSamples / uParts);
    };
    return {at(i), at(i + 1)};
}

// Adds the samples of one row to the parts that they lie in; voids count for nothing.
void AddRow(const float* pRow,
            uint32_t uColumns,
            std::vector<double>& sums,
            std::vector<uint32_t>& counts)
{
    const auto uParts = static_cast<uint32_t>(sums.size());
    for (uint32_t i = 0; i < uParts; ++i)
    {
        const auto [uFrom, uTo] = GetPart(i, uParts, uColumns);
        for (uint32_t x = uFrom; x < uTo; ++x)
        {
            const bool bVoid = std::isnan(pRow[x]);
            sums[i] += bVoid ? 0.0 : static_cast<double>(pRow[x]);
            counts[i] += bVoid ? 0 : 1;
        }
    }
}

// Black to white by height, over the pixels of a relief.
void DrawGrey(const SSampleGrid& grid, float fLow, float fHigh, SReliefPicture& picture)
{
    const float fScale = fHigh > fLow ? 255.0F / (fHigh - fLow) : 0.0F;
    uint8_t* pPixel = picture.rgb.data();
    for (uint32_t y = 0; y < picture.uHeight; ++y)
    {
        const float* pRow = grid.samples.data() +
                            size_t{GetPart(y, picture.uHeight, grid.uRows).first} * grid.uColumns;
        for (uint32_t x = 0; x < picture.uWidth; ++x, pPixel += 3)
        {
            const float fHeight = pRow[GetPart(x, picture.uWidth, grid.uColumns).first];
            const float fGrey = std::clamp((fHeight - fLow) * fScale, 0.0F, 255.0F);
            std::fill_n(pPixel, 3, static_cast<uint8_t>(fGrey));
        }
    }
}

} // namespace

bool ThinGrid(const SSampleGrid& grid, uint32_t uMost, SSampleGrid& thin)
{
    SSampleGrid made;
    const SSampleInfo& info = grid; // without its samples
    static_cast<SSampleInfo&>(made) = info;
    made.uColumns = std::min(grid.uColumns, uMost);
    made.uRows = std::min(grid.uRows, uMost);
    std::vector<double> sums;
    std::vector<uint32_t> counts;
    CProgressSteps progress("Drawing the height map", made.uRows);
    for (uint32_t i = 0; i < made.uRows; ++i)
    {
        if (!progress.Reach(i))
        {
            return false;
        }
        sums.assign(made.uColumns, 0.0);
        counts.assign(made.uColumns, 0);
        const auto [uFrom, uTo] = GetPart(i, made.uRows, grid.uRows);
        for (uint32_t z = uFrom; z < uTo; ++z)
        {
            AddRow(grid.samples.data() + size_t{z} * grid.uColumns, grid.uColumns, sums, counts);
        }
        for (uint32_t x = 0; x < made.uColumns; ++x)
        {
            made.samples.push_back(counts[x] > 0 ? static_cast<float>(sums[x] / counts[x])
                                                 : std::numeric_limits<float>::quiet_NaN());
        }
    }
    FillVoids(made);
    thin = std::move(made);
    return true;
}

bool DrawImport(const SSampleGrid& thin,
                const SOrientation& orientation,
                const SImportPlan& plan,
                uint32_t uPixels,
                bool bShaded,
                SReliefPicture& picture)
{
    try
    {
        SSampleGrid grid = thin;
        OrientGrid(orientation, grid);
        for (float& fSample : grid.samples)
        {
            fSample =
                static_cast<float>((static_cast<double>(fSample) - plan.dOffset) * plan.dScale);
        }
        // A file of one height is drawn in the colours up to the height limit.
        const bool bFlat = plan.fHigh <= plan.fLow;
        const SReliefOptions options{
            uPixels, bFlat ? 0.0F : plan.fLow, bFlat ? std::fabs(plan.size.y) : plan.fHigh};
        if (!RenderRelief(
                grid.samples.data(), grid.uColumns, grid.uRows, plan.size, options, picture))
        {
            return false;
        }
        if (!bShaded)
        {
            DrawGrey(grid, plan.fLow, plan.fHigh, picture);
        }
        return true;
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}
