#pragma once

#include "engine/terrain/SGeoTags.h"

#include <cstdint>

class CTiffFile;
struct SSampleInfo;
struct tiff;

// The tags that say where the pixels of a GeoTIFF lie. Samples stand for places here, so what a
// file says of the corners of cells is moved by half a cell, both ways.

// Fills in the spacing, whether it is in degrees, and the place where the tags say one that can be;
// rows and columns are known already. A tag that makes no sense counts as absent.
void ReadGeoTags(const CTiffFile& file, SSampleInfo& info);

// Tells libtiff of the tags and sets those of a grid of that shape. spacing: in the file's unit, of
// a grid whose place is not known: its south-west sample is then at 0, 0. False when libtiff does
// not take them.
bool WriteGeoTags(
    tiff* pTiff, const SGeoTags& geo, const SMapPoint& spacing, uint32_t uColumns, uint32_t uRows);
