#pragma once

#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/SImageCodec.h"

// The codec of TGA, as SImageCodec says.

// Whether the file ends in the footer, which is the format's only mark. Files of old lack it.
bool HasTgaFooter(std::span<const uint8_t> data);
bool MayTgaHavePalette(std::span<const uint8_t> data);
SImageSize PeekTgaSize(std::span<const uint8_t> data);
bool DecodeTga(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool EncodeTga(const IImage& image,
               const IPalette* pPalette,
               std::vector<uint8_t>& out,
               std::string& strFault);
