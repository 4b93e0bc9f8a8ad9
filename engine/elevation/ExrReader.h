#pragma once

#include "engine/elevation/SSampleGrid.h"

#include <cstdint>
#include <span>
#include <string>

// Whether the bytes begin as an OpenEXR file does; four are enough.
bool IsExr(std::span<const uint8_t> bytes);

// Decodes a whole OpenEXR file of one part: its only channel, or the one that is called Y. NaN is a
// void. False with the fault, without a line feed; grid is then as it was.
bool DecodeExr(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault);
