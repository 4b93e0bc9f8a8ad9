#pragma once

#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/SImageCodec.h"

// The codec of JPEG, as SImageCodec says. There are no palettes.

bool IsJpeg(std::span<const uint8_t> data);
SImageSize PeekJpegSize(std::span<const uint8_t> data);
bool DecodeJpeg(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool EncodeJpeg(const IImage& image,
                const IPalette* pPalette,
                std::vector<uint8_t>& out,
                std::string& strFault);
