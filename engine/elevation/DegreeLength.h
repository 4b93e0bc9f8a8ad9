#pragma once

#include "engine/terrain/SGeoTags.h"
#include "host/Export.h"

#include <string_view>

// How long a degree is, in metres, along a circle of latitude and along a meridian.
struct SDegreeLength
{
    double dEast = 0.0;
    double dNorth = 0.0;
};

// At a latitude from -90 to 90, on the ellipsoid WGS 84.
TELLUR_API SDegreeLength GetDegreeLength(double dLatitude);

// Whether there can be such a latitude.
inline bool IsLatitude(double dLatitude)
{
    return dLatitude >= -90.0 && dLatitude <= 90.0;
}

// Finds the south-west corner of a tile of one degree in its file's name: "N46E007.hgt",
// "dem_s33w071.SRTMGL1.hgt". False, and corner is left alone, when the name has none.
TELLUR_API bool FindTileCorner(std::string_view path, SMapPoint& corner);
