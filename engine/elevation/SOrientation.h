#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <array>
#include <cstdint>

// By how much the samples of a file are turned to the right, seen from above with north at the top.
enum class ETurn : uint8_t
{
    None,
    Right,
    Half,
    Left,
};

// Along which axes of the terrain they are mirrored.
enum class EFlip : uint8_t
{
    None = 0,
    X = 1,
    Z = 2,
    Both = 3,
};

// How the samples of a file lie in the terrain: turned first, then mirrored.
struct SOrientation
{
    ETurn eTurn = ETurn::None;
    EFlip eFlip = EFlip::None;

    bool IsPlain() const { return eTurn == ETurn::None && eFlip == EFlip::None; }

    bool IsSideways() const { return eTurn == ETurn::Right || eTurn == ETurn::Left; }

    bool IsFlipped(EFlip eAlong) const
    {
        return (static_cast<uint8_t>(eFlip) & static_cast<uint8_t>(eAlong)) != 0;
    }

    // Which samples of a file of that shape, by index, become the terrain's corners: at x = 0, z =
    // 0; then the end of that row, the start of the last row and its end.
    TELLUR_API std::array<size_t, 4> GetCorners(uint32_t uColumns, uint32_t uRows) const;

    // The corner of the file that each of them is: "north-west", "north-east" ...
    TELLUR_API std::array<const char*, 4> GetCornerNames() const;
};

// What the file says, as if it had its samples in that orientation.
TELLUR_API void OrientInfo(const SOrientation& orientation, SSampleInfo& info);

// The whole grid. Takes the memory of a second one unless nothing is to be done.
TELLUR_API void OrientGrid(const SOrientation& orientation, SSampleGrid& grid);
