#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <cstdint>
#include <span>
#include <string>

// The ".npy" array file, versions 1 to 3: two dimensions in C order of int16, uint16, float32 or
// float64 in either byte order. NaN is a void.

// True when the bytes begin with the signature of such a file.
TELLUR_API bool IsNpy(std::span<const uint8_t> bytes);

// Decodes a whole file. False with the fault, without a line feed; grid is then as it was.
TELLUR_API bool DecodeNpy(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault);
