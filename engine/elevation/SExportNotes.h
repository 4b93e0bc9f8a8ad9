#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <string>

// What the text beside an exported height map says of it, so that whoever imports the map need not
// type it. Read from what SExportForm::GetText writes.
struct SExportNotes
{
    uint32_t uTiles = 0;   // a side
    uint32_t uColumns = 0; // samples of one tile
    uint32_t uRows = 0;
    bool bSouthFirst = false;
    double dUnit = 0.0;  // height of one step, or of 1.0
    double dBase = 0.0;  // height of 0
    double dWidth = 0.0; // of the level along x and z
    double dDepth = 0.0;
    double dHighest = 0.0;                    // its maximum height
    EByteOrder eByteOrder = EByteOrder::None; // of a raw file

    // strPath: of the text. False without a line where there is none, or one that does not say all
    // of it: it may be anybody's.
    TELLUR_API bool Read(const std::string& strPath);

    // Whether it tells of that many tiles a side, and of so many samples all together.
    bool IsOf(uint32_t uTilesAside, uint32_t uWholeColumns, uint32_t uWholeRows) const
    {
        return uTiles == uTilesAside && (uColumns - 1) * uTiles + 1 == uWholeColumns &&
               (uRows - 1) * uTiles + 1 == uWholeRows;
    }
};
