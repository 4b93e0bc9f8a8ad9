#pragma once

#include "engine/elevation/SSampleGrid.h"

#include <cstdint>
#include <span>
#include <string>

// What stands for the corner of a grid that lies nowhere, because the format must say one: small
// cells near 0, 0 would look like degrees of longitude and latitude.
inline double GetNowhere(double dCell)
{
    return dCell < MAX_DEGREES_CELL ? 1000.0 : 0.0;
}

// True when the bytes begin like a text grid: with the word that nearly all files have first,
// although the header may have its words in any order.
bool IsAsciiGrid(std::span<const uint8_t> bytes);

// The text grid of geographic programs (".asc"): a header of words and numbers in any order and
// case (ncols, nrows, xllcorner or xllcenter, yllcorner or yllcenter, cellsize or dx and dy,
// NODATA_value), then the samples, north row first, parted by blanks or line ends. Samples that
// equal NODATA_value, and "nan", are voids. The format does not name its unit of length: cells
// below a tenth of a unit at a place that can be longitude and latitude count as degrees.
//
// A grid that lies nowhere has both coordinates of its corner at GetNowhere.
//
// bytes: the whole file, borrowed for the call; it may hold anything. False leaves a fault in
// strFault, a phrase without the file's name and without a line feed (rows and columns counted from
// 1), and the grid as it was. Memory grows with the samples that are there; nothing is thrown.
bool DecodeAsciiGrid(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault);
