#pragma once

#include "engine/elevation/SImportOptions.h"
#include "engine/elevation/SSampleGrid.h"

#include <cstdint>
#include <span>
#include <string>

// Decode whole ".r16" (unsigned) and ".r32" (float) files of bare samples; NaN is a void. Shape and
// byte order are those of the options: little-endian when not said, a square when neither columns
// nor rows are. False with the fault, without a line feed; grid is then as it was.
bool DecodeRaw16(std::span<const uint8_t> bytes,
                 const SImportOptions& options,
                 SSampleGrid& grid,
                 std::string& strFault);
bool DecodeRaw32(std::span<const uint8_t> bytes,
                 const SImportOptions& options,
                 SSampleGrid& grid,
                 std::string& strFault);
