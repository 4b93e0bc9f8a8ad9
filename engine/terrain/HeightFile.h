#pragma once

#include "engine/terrain/SHeightField.h"
#include "host/Export.h"

#include <string>

// The ".height" file, little-endian: the 8 bytes "HEIGHTF1"; vertices along x and along z (32-bit
// unsigned); size vector x, y, z (32-bit floats); a 32-bit 0; the heights as 32-bit floats, row by
// row; the CRC-32 (polynomial of zlib) of every byte before it.

// Reads a file. False with one logged line that names the file and the fault; field is then as it
// was. Nothing is allocated before the sizes in the file agree with its length.
TELLUR_API bool ReadHeightFile(const char* pszPath, SHeightField& field);

// The backup that a change of resolution has left of a height map which is not there: its path.
// Empty when the map is there, and when there is no backup.
TELLUR_API std::string FindHeightBackup(const std::string& strPath);

// Writes uSizeX x uSizeZ heights (borrowed) through fs::file. False with one logged line when the
// file cannot be written or its reader would refuse it; the old file then stays.
TELLUR_API bool WriteHeightFile(const char* pszPath,
                                const float* pHeights,
                                uint32_t uSizeX,
                                uint32_t uSizeZ,
                                const SVec3& size);
