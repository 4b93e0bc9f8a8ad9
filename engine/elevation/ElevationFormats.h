#pragma once

#include "engine/elevation/SElevationFormat.h"
#include "host/Export.h"

#include <cstdint>
#include <span>
#include <string>

// The formats of height maps that are read and written here. All that imports, exports, offers or
// lists height maps goes through this table.
TELLUR_API std::span<const SElevationFormat> GetElevationFormats();

// By the extension of the path, in either case. Null when it is no format's.
TELLUR_API const SElevationFormat* FindFormatByName(const char* pszPath);

// By the first bytes of a file (64 are enough) where they are a signature, else by its extension.
TELLUR_API const SElevationFormat* RecogniseElevation(std::span<const uint8_t> bytes,
                                                      const char* pszPath);

// Opens the file for RecogniseElevation; by the extension when it cannot be read.
TELLUR_API const SElevationFormat* FindFormatOfFile(const char* pszPath);

// Whether files can be written in the format; false for null.
TELLUR_API bool IsWritten(const SElevationFormat* pFormat);

// The usual extension of each format, for faults: "height, png, r16". bWritten: of those alone that
// are written too.
TELLUR_API std::string ListElevationFormats(bool bWritten);
