#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Samples a side that a file may have.
constexpr uint32_t MIN_SAMPLES = 2;
constexpr uint32_t MAX_SAMPLES = 65535;

// Elevations as a file has them: row 0 is north, column 0 west, index row * uColumns + column, in
// the file's own unit of height. All are finite.
struct SSampleGrid
{
    uint32_t uColumns = 0;
    uint32_t uRows = 0;
    std::vector<float> samples;
    size_t nFilledVoids = 0; // samples that the file lacks, made from their neighbours
};
