#pragma once

#include "engine/elevation/SElevationFormat.h"
#include "host/Export.h"

#include <cstdint>
#include <span>
#include <string>

// The formats of height maps that are read and written here. All that imports, exports, offers or
// lists height maps goes through this table.
TELLUR_API std::span<const SElevationFormat> GetElevationFormats();

// Finds a format by the extension of the path, in either case. Null when no format has it.
TELLUR_API const SElevationFormat* FindFormatByName(const char* pszPath);

// Finds a format by the first bytes of a file (64 are enough) where they are a signature, else by
// the extension of the path. Null when neither tells.
TELLUR_API const SElevationFormat* RecogniseElevation(std::span<const uint8_t> bytes,
                                                      const char* pszPath);

// Does the same with the file of that path. One that cannot be read is told by its extension.
TELLUR_API const SElevationFormat* FindFormatOfFile(const char* pszPath);

// Whether files can be written in the format; false for null.
TELLUR_API bool IsWritten(const SElevationFormat* pFormat);

// Lists the usual extension of each format for a fault: "height, png, r16". bWritten: only formats
// that can be written are listed.
TELLUR_API std::string ListElevationFormats(bool bWritten);
