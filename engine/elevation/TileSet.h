#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// A height map in several files of one folder, NAME_x0_y0.png, NAME_x1_y0.png ...: x counts along
// the rows of the whole, y the rows of tiles from the first on. As they are written here,
// neighbours both have the samples of their edge.

// The file of one tile of what would be strPath as a whole.
TELLUR_API std::string GetTilePath(const std::string& strPath, uint32_t uX, uint32_t uY);

struct STileSet
{
    std::string strPath;   // of the whole, which is no file
    uint32_t uColumns = 0; // tiles
    uint32_t uRows = 0;

    // Looks what lies beside the first tile of a set, whose name ends in "_x0_y0". False for the
    // name of another file, and for a tile that is alone.
    TELLUR_API bool Find(const std::string& strFirstTile);

    // What a set of uTiles tiles a side would be read as, with tiles of a larger one behind it.
    // strPath: of the whole.
    static STileSet Extend(const std::string& strPath, uint32_t uTiles);

    // Makes one grid of all. read: reads one file, false when the fault is known to it. Edges
    // that all neighbours have both come once; else the tiles lie side by side. lines: what
    // was done. False with strLine, the whole line, or with none where read has failed.
    bool Join(const std::function<bool(const std::string&, SSampleGrid&)>& read,
              SSampleGrid& grid,
              std::vector<std::string>& lines,
              std::string& strLine) const;
};
