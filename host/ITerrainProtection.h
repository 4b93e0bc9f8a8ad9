#pragma once

#include <cstdint>

// Which vertices of a terrain are to stay as they are, for a tool that changes heights. Looked for
// with dynamic_cast from the Terrain pointer; null for a terrain that protects nothing.
// Terrain::SetHeights and SetBlockHeights leave these vertices alone by themselves; a tool that
// asks keeps its own copies of heights equal to them, and must ask where it writes through
// ITerrainAccess. UI thread.
class ITerrainProtection
{
public:
    virtual ~ITerrainProtection() = default;

    // Of a square of SIDE x SIDE vertices that begins at multiples of it: a word a row, the lowest
    // bit the first vertex of the row, 1 for one that is protected. Null where none of them is.
    // Borrowed until other heights come and until the protection changes, which it does in no drag.
    static constexpr int32_t SIDE = 64;
    virtual const uint64_t* GetProtectedRows(int32_t iSquareX, int32_t iSquareZ) const = 0;
};
