#pragma once

#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/SImageCodec.h"

// The codec of BMP, as SImageCodec says.

bool IsBmp(std::span<const uint8_t> data);
bool MayBmpHavePalette(std::span<const uint8_t> data);
SImageSize PeekBmpSize(std::span<const uint8_t> data);
bool DecodeBmp(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool EncodeBmp(const IImage& image,
               const IPalette* pPalette,
               std::vector<uint8_t>& out,
               std::string& strFault);
