#pragma once

#include "host/Export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A place on a map: to the east and to the north, or longitude and latitude.
struct SMapPoint
{
    double dX = 0.0;
    double dY = 0.0;
};

// Where the ground of a terrain lies on a map, as the file said that it came from; kept so that a
// file that is written can say it again. Nothing in the editor goes by it.
struct SGeoTags
{
    bool bKnown = false; // the rest means nothing without

    // Of the vertices in three corners. Corners and no spacing, because another resolution of the
    // same ground has the same.
    SMapPoint first; // x = 0, z = 0
    SMapPoint lastX; // the other end of that row
    SMapPoint lastZ; // the other end of that column

    bool bDegrees = false;        // longitude and latitude
    bool bCells = false;          // files name corners of cells, half a step outside of the samples
    std::optional<double> noData; // the height that stands for a void in such files

    // Of a GeoTIFF, as it has them: the directory of keys and what they refer to.
    std::vector<uint16_t> keys;
    std::vector<double> numbers;
    std::string strNames;

    SMapPoint GetLast() const // the fourth corner
    {
        return {lastX.dX + lastZ.dX - first.dX, lastX.dY + lastZ.dY - first.dY};
    }

    double GetMiddleY() const { return (lastX.dY + lastZ.dY) / 2.0; }

    // True when rows run east and columns south, as all formats have it that say a corner and a
    // size of cells alone.
    TELLUR_API bool IsNorthUp() const;

    // Of the same ground turned by quarters to the right, seen from above, and then mirrored.
    TELLUR_API void Turn(uint32_t uQuarters, bool bFlipX, bool bFlipZ);
    // Of the ground between these shares of the whole, 0 to 1.
    TELLUR_API void Crop(double dFromX, double dToX, double dFromZ, double dToZ);

    // One key of the directory that holds its value itself; none when it is not there.
    TELLUR_API std::optional<uint16_t> FindKey(uint16_t uKey) const;
};
