#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Grey bytes as pixels of a display, for CBitmap::CreateBitmap: 5-6-5 at 16 bits, three equal bytes
// at 24 and these and 255 at 32. False, with no pixels, for another depth.
TELLUR_API bool
MakeGreyPixels(const uint8_t* pGrey, size_t nPixels, int nBits, std::vector<uint8_t>& pixels);
