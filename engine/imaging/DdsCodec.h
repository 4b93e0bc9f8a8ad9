#pragma once

#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/SImageCodec.h"

// The codec of DDS, as SImageCodec says. There are no palettes.

bool IsDds(std::span<const uint8_t> data);
SImageSize PeekDdsSize(std::span<const uint8_t> data);
bool DecodeDds(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool EncodeDds(const IImage& image,
               const IPalette* pPalette,
               std::vector<uint8_t>& out,
               std::string& strFault);
