#pragma once

#include "engine/elevation/SSampleGrid.h"

#include <cstdint>
#include <span>
#include <string>

// True when the bytes begin like a TIFF file, classic or big, in either byte order.
bool IsTiff(std::span<const uint8_t> bytes);

// The first picture of a TIFF file, with the tags that geographic programs add: spacing, whether
// that is in degrees, and the value that means "no data". Samples of 8, 16, 32 bits or 64-bit
// floating point, one a pixel, strips or tiles, any compression that libtiff was built with. The
// grid comes out with its north row first, whatever corner the file starts in.
//
// bytes: the whole file, borrowed for the call; it may hold anything. False leaves a fault in
// strFault, a phrase without the file's name and without a line feed (rows counted from 1, in the
// order of the file), and the grid as it was. A size that the bytes cannot hold is refused before
// memory is taken; nothing is thrown.
bool DecodeGeoTiff(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault);
