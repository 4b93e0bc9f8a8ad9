#pragma once

#include <cstddef>
#include <cstdint>

class CPixelBuffer;

// Of the sources of this folder. A picture of a resource has no side longer than this, which also
// bounds what a broken one can make it allocate.
constexpr int MAX_PICTURE_SIDE = 4096;

// Decodes a PNG picture to 32 bits with its opacity in the fourth byte. pPng: borrowed for the
// call. False, silently and with pixels kept, for null, for what is no whole PNG and for too long a
// side.
bool DecodePicture(const uint8_t* pPng, size_t nBytes, CPixelBuffer& pixels);
