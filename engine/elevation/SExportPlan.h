#pragma once

#include "engine/elevation/SElevationFormat.h"

#include <cstddef>
#include <string>
#include <vector>

// What a user says of a file to export. 0: not said.
struct SExportOptions
{
    // One of the two at most: the height of full white in a file of codes, or the terrain units of
    // one step or unit of the file.
    double dWhite = 0.0;
    double dUnit = 0.0;
    EByteOrder eByteOrder = EByteOrder::None; // of a raw file; None: little
    uint32_t uBits = 0;                       // of a float: 16 where the format has them, or 32
    double dBase = 0.0;                       // the height that is 0 in the file
    bool bSouthFirst = false; // the first row of the file is the last of the terrain

    // Not said by a user but known of the heights: where they lie on a map.
    SGeoTags geo = {};

    // dWhite counts although it is not above 0: of ground that lies below it.
    bool bLowWhite = false;

    bool IsWhiteSaid() const { return bLowWhite || dWhite > 0.0; }
};

// How heights become samples: counted from the base, divided by the unit, rounded, cut to what the
// format holds.
struct SExportPlan
{
    const SElevationFormat* pFormat = nullptr; // a row of the table
    EByteOrder eByteOrder = EByteOrder::Little;
    uint32_t uBits = 32; // a sample
    double dUnit = 1.0;  // terrain units of 1 in the file
    double dBase = 0.0;  // the height that is 0 there
    bool bSouthFirst = false;
    double dLow = 0.0; // what a sample can be
    double dHigh = 0.0;
    bool bRound = false;
    double dSpacingX = 0.0; // in the file's unit of length
    double dSpacingZ = 0.0;
    SGeoTags geo; // what is written of the place on a map; its spacing then counts

    // Heights that the file cannot hold: they become the lowest and the highest sample, and 0.
    size_t nBelow = 0;
    size_t nAbove = 0;
    size_t nVoids = 0;  // not finite
    size_t nNoData = 0; // heights that would read as voids

    // One line each without a line feed: what is written, what is assumed, what is lost.
    std::vector<std::string> lines;
};
