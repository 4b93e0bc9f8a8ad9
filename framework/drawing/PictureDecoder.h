#pragma once

#include <cstddef>
#include <cstdint>

class CPixelBuffer;

// For the sources of this folder. A picture of a resource has no side longer than this, which also
// bounds what a broken one can make the decoder allocate.
constexpr int MAX_PICTURE_SIDE = 4096;

// Decodes a PNG picture to 32 bits with its opacity in the fourth byte. pPng: borrowed for the
// call. Answers false, without a line in the log, and keeps pixels as they are for null, for what
// is no whole PNG, for too long a side and when memory is short.
bool DecodePicture(const uint8_t* pPng, size_t nBytes, CPixelBuffer& pixels);
