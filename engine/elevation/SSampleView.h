#pragma once

#include <cstddef>
#include <cstdint>

// A grid of heights that somebody else owns: row 0 is north (z = 0), column 0 west (x = 0), index
// row * uColumns + column.
struct SSampleView
{
    const float* pSamples = nullptr;
    uint32_t uColumns = 0;
    uint32_t uRows = 0;

    size_t GetCount() const { return static_cast<size_t>(uColumns) * uRows; }
};
