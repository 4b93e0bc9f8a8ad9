#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <cstdint>
#include <span>
#include <string>

// Decodes a whole ".hgt" tile: big-endian int16 metres, a square without a header. Samples of
// -32768 are voids of the survey. False with the fault, without a line feed; grid is then as it
// was.
TELLUR_API bool DecodeHgt(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault);

// Says where a tile of one degree lies, whose bytes do not: its corners are on whole degrees of the
// name, and the first sample of a row is the last one of the neighbour's. A name without a place
// leaves the grid in degrees of nowhere.
void PlaceTile(const char* pszPath, SSampleGrid& grid);
