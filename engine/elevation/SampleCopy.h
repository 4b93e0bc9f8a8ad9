#pragma once

#include "engine/elevation/SSampleGrid.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <span>
#include <string>

static_assert(std::endian::native == std::endian::little, "samples are read as they lie");

// What the readers of plain arrays of samples share.

// Fills the grid's samples, which have their size, with as many numbers from the bytes.
template <typename TSample>
void CopySamples(std::span<const uint8_t> bytes, bool bSwap, std::vector<float>& samples)
{
    for (size_t i = 0; i < samples.size(); ++i)
    {
        uint8_t aBytes[sizeof(TSample)];
        std::memcpy(aBytes, bytes.data() + i * sizeof(TSample), sizeof(TSample));
        if (bSwap)
        {
            std::reverse(std::begin(aBytes), std::end(aBytes));
        }
        samples[i] = static_cast<float>(std::bit_cast<TSample>(aBytes));
    }
}

// False with the fault when a sample is infinite (NaN is a void).
inline bool CheckSamples(const SSampleGrid& grid, std::string& strFault)
{
    const auto found = std::find_if(grid.samples.begin(),
                                    grid.samples.end(),
                                    [](float fSample) { return std::isinf(fSample); });
    if (found == grid.samples.end())
    {
        return true;
    }
    const auto nAt = static_cast<size_t>(found - grid.samples.begin());
    strFault = "the sample at column " + std::to_string(nAt % grid.uColumns) + ", row " +
               std::to_string(nAt / grid.uColumns) + " is not a finite number";
    return false;
}
