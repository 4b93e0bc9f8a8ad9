#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <cstdint>
#include <span>
#include <string>

// What a file of bare samples does not say of itself.
struct SRawLayout
{
    bool bFloat = false;                        // 32-bit floats, else unsigned 16-bit
    EByteOrder eByteOrder = EByteOrder::Little; // not None
    uint32_t uColumns = 0;                      // 0: what the rows leave; a square without both
    uint32_t uRows = 0;
};

// Decodes a whole ".r16" or ".r32" file; NaN is a void. False with the fault, without a line feed;
// grid is then as it was.
TELLUR_API bool DecodeRaw(std::span<const uint8_t> bytes,
                          const SRawLayout& layout,
                          SSampleGrid& grid,
                          std::string& strFault);
