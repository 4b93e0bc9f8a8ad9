#pragma once

#include "engine/elevation/ElevationFormat.h"
#include "engine/elevation/SSampleGrid.h"
#include "engine/elevation/SSampleView.h"
#include "host/Export.h"
#include "host/HostTypes.h"

#include <cstddef>
#include <string>
#include <vector>

// Export of height maps, in two steps so that a user can see what the first says before the second
// writes. First row of a file is north (z = 0), first column west (x = 0).

// What a user says of a file to export. 0: not said.
struct SExportOptions
{
    // One of the two at most: the height of full white in a file of codes, or the terrain units of
    // one step or unit of the file.
    double dWhite = 0.0;
    double dUnit = 0.0;
    EByteOrder eByteOrder = EByteOrder::None; // of a raw file; None: little
};

// How heights become samples: divided by the unit, rounded, cut to what the format holds.
struct SExportPlan
{
    EElevationFormat eFormat = EElevationFormat::Unknown;
    EByteOrder eByteOrder = EByteOrder::Little;
    double dUnit = 1.0; // terrain units of 1 in the file
    double dLow = 0.0;  // what a sample can be
    double dHigh = 0.0;
    bool bRound = false;
    double dSpacingX = 0.0; // in the file's unit of length
    double dSpacingZ = 0.0;

    // Heights that the file cannot hold: they become the lowest and the highest sample, and 0.
    size_t nBelow = 0;
    size_t nAbove = 0;
    size_t nVoids = 0; // not finite

    // One line each without a line feed: what is written, what is assumed, what is lost.
    std::vector<std::string> lines;
};

// The format is that of the path's extension. size: the terrain's size vector. Nothing is written.
// False with one logged line.
TELLUR_API bool PlanExport(const char* pszPath,
                           const SSampleView& heights,
                           const SVec3& size,
                           const SExportOptions& options,
                           SExportPlan& plan);

// Writes heights as planned for them, through fs::file. Row by row, without a copy of the grid; a
// PNG takes two bytes a sample and its own length. False with one logged line; the old file then
// stays.
TELLUR_API bool ExportHeights(const char* pszPath,
                              const SSampleView& heights,
                              const SVec3& size,
                              const SExportPlan& plan);
