#pragma once

#include "host/Export.h"

#include <cstdint>
#include <span>

// The files of heights that are read and written here.
enum class EElevationFormat : uint8_t
{
    Unknown,
    Height,    // ".height", the engine's own
    Png,       // grey, 16 bits; fewer are read too
    Raw16,     // ".r16", bare unsigned 16-bit samples
    Raw32,     // ".r32", bare 32-bit floats
    Npy,       // ".npy"
    Hgt,       // ".hgt"
    Tiff,      // ".tif", ".tiff"
    AsciiGrid, // ".asc"
};

// A name for people, such as "raw 16-bit".
TELLUR_API const char* GetElevationFormatName(EElevationFormat eFormat);

// By the extension of the path, in either case.
TELLUR_API EElevationFormat FindFormatByName(const char* pszPath);

// By the first bytes of a file (64 are enough) where they are a signature, else by its extension.
TELLUR_API EElevationFormat RecogniseElevation(std::span<const uint8_t> bytes, const char* pszPath);

// Opens the file for RecogniseElevation; by the extension when it cannot be read.
TELLUR_API EElevationFormat FindFormatOfFile(const char* pszPath);

// Whether samples of the format are codes of heights, so that full white has a height. A ".r32"
// holds codes only when full white is said.
TELLUR_API bool HoldsCodes(EElevationFormat eFormat, bool bWhiteIsSaid);
