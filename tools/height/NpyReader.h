#pragma once

#include "tools/height/SSampleGrid.h"

#include <cstdint>
#include <span>
#include <string>

// The ".npy" array file, versions 1 to 3: two dimensions in C order of int16, uint16, float32 or
// float64 in either byte order.

// True when the bytes begin like one.
bool IsNpy(std::span<const uint8_t> bytes);

// Decodes a whole file. False with the fault, without a line feed; grid is then as it was.
bool DecodeNpy(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault);
