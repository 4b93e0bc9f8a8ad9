#pragma once

#include "engine/imaging/SImageCodec.h"
#include "host/Export.h"

#include <string>

// The file formats of the image library. All that reads, writes, offers or lists pictures goes
// through this table.
TELLUR_API std::span<const SImageCodec> GetImageCodecs();

// Finds the format of a file by its bytes, and by the extension of its path where files of a format
// may lack the mark. Null when it is none of the table.
const SImageCodec* RecogniseImage(std::span<const uint8_t> data, const char* pszPath);

// Finds the format that writes files of the path's extension, in either case; null when none does.
const SImageCodec* FindEncoder(const char* pszPath);

// Lists names for a sentence: "PNG, JPEG, TGA, BMP or DDS". bWritten: only formats that can be
// written are listed.
TELLUR_API std::string ListImageNames(bool bWritten);

// Lists all extensions with pszBefore before each and pszBetween between them: "*.png *.jpg".
// bWritten: as above.
TELLUR_API std::string
ListImageExtensions(const char* pszBefore, const char* pszBetween, bool bWritten);
