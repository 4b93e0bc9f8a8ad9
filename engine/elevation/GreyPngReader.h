#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <cstdint>
#include <span>
#include <string>

// Decodes a whole grey PNG of 1 to 16 bits a sample into its codes, 0 to 2^bits - 1. False with the
// fault, without a line feed, also for colours and transparency; grid is then as it was.
TELLUR_API bool
DecodeGreyPng(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault);
