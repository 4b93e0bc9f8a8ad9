#pragma once

#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/SImageCodec.h"

// The codec of PNG, as SImageCodec says.

bool IsPng(std::span<const uint8_t> data);
bool MayPngHavePalette(std::span<const uint8_t> data);
SImageSize PeekPngSize(std::span<const uint8_t> data);
bool DecodePng(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool EncodePng(const IImage& image,
               const IPalette* pPalette,
               std::vector<uint8_t>& out,
               std::string& strFault);
