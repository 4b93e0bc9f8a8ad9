#pragma once

#include "engine/imaging/SImageCodec.h"
#include "host/Export.h"

#include <string>

// The file formats of the image library. All that reads, writes, offers or lists pictures goes
// through this table.
TELLUR_API std::span<const SImageCodec> GetImageCodecs();

// By the bytes, and by the extension where the bytes need no mark. Null for no known format.
const SImageCodec* RecogniseImage(std::span<const uint8_t> data, const char* pszPath);

// The one that writes files of the path's extension, in either case; null when none does.
const SImageCodec* FindEncoder(const char* pszPath);

// For sentences: "PNG, JPEG, TGA, BMP or DDS". bWritten: the formats alone that are written too.
TELLUR_API std::string ListImageNames(bool bWritten);

// All extensions with pszBefore before each and pszBetween between them: "*.png *.jpg". bWritten:
// as above.
TELLUR_API std::string
ListImageExtensions(const char* pszBefore, const char* pszBetween, bool bWritten);
