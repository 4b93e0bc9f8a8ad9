#pragma once

#include "engine/imaging/CImage.h"
#include "engine/imaging/CPalette.h"
#include "host/TerrainSize.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What the codecs share. They work on memory: no file is opened and no line is logged there.
// SImageCodec says what each of their functions does.

// What a decoder makes.
struct SPicture
{
    std::unique_ptr<CImage> pImage;
    std::unique_ptr<CPalette> pPalette; // null unless the file is a paletted one
};

// More pixels than this are refused, whatever the format: as many as the largest terrain has
// vertices. A few packed bytes can claim any number, and what is painted needs twelve bytes a
// pixel.
constexpr uint64_t MAX_PIXELS = uint64_t{TERRAIN_MAX_VERTICES} * TERRAIN_MAX_VERTICES;

bool StartsWith(std::span<const uint8_t> data, std::string_view strMark);

// Decoders call this as soon as they know the size. False with a fault that names size and limit
// when a side is 0 or too long, or there are too many pixels.
bool CheckImageSize(uint64_t uWidth, uint64_t uHeight, std::string& strFault);

// Decoders call this for CheckImageSize and then an image whose pixels are still to be filled.
// False with the fault.
bool MakeImage(SPicture& picture,
               uint32_t uWidth,
               uint32_t uHeight,
               EImageFormat eFormat,
               std::string& strFault);

// Encoders append with this inside callbacks of libraries, which no exception may pass. False when
// there is no memory.
bool AppendBytes(std::vector<uint8_t>& out, const uint8_t* pData, size_t nBytes);
