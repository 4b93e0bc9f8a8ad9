#pragma once

#include "host/Export.h"

#include <cstdint>
#include <vector>

// Grey PNG files with 16 bits a sample, as height maps come: exact both ways. Samples lie row by
// row, top row first.

// Reads a grey PNG; fewer than 16 bits are scaled up so that full white is 65535. False with one
// logged line when the file is no such PNG or has colours or transparency; the arguments then stay
// as they were.
TELLUR_API bool LoadGrey16(const char* pszPath,
                           uint32_t& uWidth,
                           uint32_t& uHeight,
                           std::vector<uint16_t>& samples);

// Writes a grey PNG of 16 bits. pSamples: uWidth * uHeight of them, borrowed for the call. Sides
// are 1 to 32768. False with one logged line; the old file then stays.
TELLUR_API bool
SaveGrey16(const char* pszPath, uint32_t uWidth, uint32_t uHeight, const uint16_t* pSamples);
