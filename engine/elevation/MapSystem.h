#pragma once

#include "engine/terrain/SGeoTags.h"
#include "host/Export.h"

#include <cstdint>
#include <string>

// Keys of a GeoTIFF that say what the numbers of a place are.
constexpr uint16_t KEY_MODEL_TYPE = 1024;
constexpr uint16_t KEY_RASTER_TYPE = 1025;
constexpr uint16_t KEY_GEOGRAPHIC_SYSTEM = 2048;
constexpr uint16_t KEY_ANGLE_UNIT = 2054;
constexpr uint16_t KEY_PROJECTED_SYSTEM = 3072;
constexpr uint16_t MODEL_GEOGRAPHIC = 2;
constexpr uint16_t RASTER_CELLS = 1;  // the place of a column and a row is the corner of a cell
constexpr uint16_t RASTER_POINTS = 2; // it is that of a sample

// Whether the keys say longitude and latitude in degrees.
bool IsGeographic(const SGeoTags& geo);

// Whether there can be such a place: all corners are numbers, and those in degrees lie between the
// poles.
bool IsPlacePossible(const SGeoTags& geo);

// The system of the map for a person, "EPSG 32611 (WGS 84 / UTM zone 11N)"; empty when the file
// does not say it.
TELLUR_API std::string GetSystemText(const SGeoTags& geo);

// "376328.66, 3807902.83", with digits for a tenth of a metre in degrees and lengths alike.
TELLUR_API std::string GetPlaceText(const SMapPoint& point);
