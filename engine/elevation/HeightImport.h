#pragma once

#include "engine/elevation/SElevationFormat.h"
#include "engine/elevation/SImportOptions.h"
#include "engine/elevation/SSampleGrid.h"
#include "engine/terrain/SHeightField.h"
#include "host/Export.h"

#include <cstddef>
#include <string>
#include <vector>

// Import of height maps. First row of a file is north (z = 0), first column west (x = 0).

// What came of an import, to be shown before its heights are used.
struct SImportReport
{
    const SElevationFormat* pFormat = nullptr; // a row of the table; not null after a reading
    std::string strPath;                       // of the file, or of the whole of a set of tiles
    size_t nVoids = 0;                         // samples that the file lacks
    float fLow = 0.0F;                         // of the others, as the file has them
    float fHigh = 0.0F;
    SVec3 size; // of a ".height" file, else 0

    // One line each without a line feed: what the file is, what was assumed ("assumed: ..."), what
    // may disappoint ("warning: ...", "note: ..."), what the terrain is.
    std::vector<std::string> lines;
};

// Reads a file as it is: codes stay codes, voids NaN. False with one logged line that names the
// file and the fault; grid is then as it was.
TELLUR_API bool ReadElevation(const char* pszPath,
                              const SImportOptions& options,
                              SSampleGrid& grid,
                              SImportReport& report);

// Makes a terrain of a file that was read: fills voids, lays the samples in the orientation that is
// asked for, turns them into terrain units, fits them to vertices. pszPath: for the fault. grid:
// taken; report: of the reading, gets what was done. Needs the memory of two grids. False with one
// logged line; field and report are then as they were.
TELLUR_API bool MakeTerrain(const char* pszPath,
                            SSampleGrid&& grid,
                            const SImportOptions& options,
                            SHeightField& field,
                            SImportReport& report);

// Reads a file and makes a terrain of it. False with one logged line; field is then as it was.
TELLUR_API bool ImportHeights(const char* pszPath,
                              const SImportOptions& options,
                              SHeightField& field,
                              SImportReport& report);

// The first of 1, 2, 5, 10, 20, 50 ... that is above the highest sample; 1000 when no sample is
// above 0.
TELLUR_API float GetDefaultMaxHeight(float fHighest);
