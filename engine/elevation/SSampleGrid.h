#pragma once

#include "engine/terrain/SGeoTags.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Samples a side that a file may have.
constexpr uint32_t MIN_SAMPLES = 2;
constexpr uint32_t MAX_SAMPLES = 65535;

// Smaller cells near the origin of the map are taken for degrees of longitude and latitude.
constexpr double MAX_DEGREES_CELL = 0.1;

enum class ESampleType : uint8_t
{
    Unsigned,
    Signed,
    Float,
};

enum class EByteOrder : uint8_t
{
    None, // text, or one byte a sample
    Little,
    Big,
};

// What a file of elevations says of itself.
struct SSampleInfo
{
    uint32_t uColumns = 0;
    uint32_t uRows = 0;
    ESampleType eType = ESampleType::Float;
    uint32_t uBits = 32; // a sample
    EByteOrder eByteOrder = EByteOrder::None;
    double dSpacingX = 0.0;  // between samples along a row, in the file's unit of length; 0: unsaid
    double dSpacingZ = 0.0;  // between rows
    bool bInDegrees = false; // the spacings are angles, no lengths
    SGeoTags geo;            // of the corner samples
    bool bBadPlace = false;  // the file says a place that there cannot be, geo does not know it
};

// Elevations as a file has them: row 0 is north, column 0 west, index row * uColumns + column, in
// the file's own unit of height. A NaN is a void: a sample that the file lacks. All others are
// finite.
struct SSampleGrid : SSampleInfo
{
    std::vector<float> samples;
};
