#pragma once

#include "tools/height/SSampleGrid.h"

#include <cstdint>
#include <span>
#include <string>

// Decodes a whole ".hgt" tile: big-endian int16 metres, a square without a header. Samples of
// -32768 are voids of the survey; they are filled from the samples around them, from the rim of
// each hole inward, and counted. False with the fault, without a line feed; grid is then as it was.
bool DecodeHgt(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault);
