#pragma once

#include "tellur/stroke/SVertexRule.h"

#include <cstddef>
#include <cstdint>

// The pass of an operation point over one tile: weight from the brush image, function, merge,
// clamp, and both writes, eight vertices at a time and each memory line once. Plain functions that
// cannot fail. Built for any processor and for AVX2; both give the same bits as GetPixelPair,
// BlendPixelRows, SampleShapeRow, the functions' loops over a set and MergeHeights in a row.

constexpr float MIN_CHANGE = 1.0e-6F; // a difference up to this is no change
constexpr int PASS_LANES =
    8; // vertices of a group; groups begin at multiples of it in a terrain row

// Where a group of eight columns finds its pixels in a row of the brush image.
struct SColumnGroup
{
    int32_t aFirst[PASS_LANES] = {}; // pixel of each column's pair; in a near group from iBase on
    int32_t aSecond[PASS_LANES] = {};
    float aWeight[PASS_LANES] = {}; // of the first one
    int32_t iBase = 0;
    int32_t iNear = 0; // 1: all pixels lie among the eight from iBase on
    int32_t aPad[6] = {};
};

// One tile's part of a point. Pointers to rows point at the first row of the part; rows of the tile
// are 64 floats apart.
struct SPassTile
{
    const float* pSource = nullptr; // at the tile's first column
    float* pDest = nullptr;
    float* pShown = nullptr; // the terrain's heights at the tile's first column; null: not shown
    size_t nShownPitch = 0;  // floats from row to row
    int iFirst = 0;          // columns of the tile, from and to (exclusive), 0 to iThere
    int iEnd = 0;
    int iThere = 0; // columns of the tile that lie on the terrain, at most 64
    int iRows = 0;

    const SColumnGroup* pGroups = nullptr; // the first one holds the first column
    const float* pShape = nullptr; // blended rows of the image, 0 to 1, eight floats behind each
    size_t nShapePitch = 0;
    const float* pTargets = nullptr; // for Move, at the first group's first column
    size_t nTargetPitch = 0;
    float fPower = 1.0F;
    float fHardness = 0.0F;
    float fMaxHeight = 0.0F;
    // A bit a column of the tile, 1 where nothing changes; the first row of the part, others
    // follow. Null: none.
    const uint64_t* pProtected = nullptr;
};

// What was written: sums over the tiles of a point, and where in the last one.
struct SPassResult
{
    float fMin = 3.4e38F; // of the heights that were written
    float fMax = 0.0F;
    bool bDiffers = false; // some of them differ from what was there
    size_t nVisited = 0;   // vertices that may be edited
    size_t nWritten = 0;
    // In the last tile: a bit a column, and rows of its part; no rows without columns.
    uint64_t uColumns = 0;
    int iFirstRow = 0;
    int iLastRow = 0;
};

using FnTilePass = void (*)(const SVertexRule& rule, const SPassTile& tile, SPassResult& result);

// What a drag changed in a row of SHeightTile::SIDE vertices: a bit for each whose destination is
// not below 0 and differs by more than MIN_CHANGE. A smaller difference is a trace: the destination
// gets the source's height, and bTraces is set.
using FnRowChanges = uint64_t (*)(const float* pSource, float* pDest, bool& bTraces);

// The form that this processor runs fastest: AVX2 where it has that.
FnTilePass GetTilePass();
FnRowChanges GetRowChanges();
// Both forms by name, so that tests can hold one against the other.
void RunTilePassPlain(const SVertexRule& rule, const SPassTile& tile, SPassResult& result);
void RunTilePassAvx2(const SVertexRule& rule, const SPassTile& tile, SPassResult& result);
uint64_t FindRowChangesPlain(const float* pSource, float* pDest, bool& bTraces);
uint64_t FindRowChangesAvx2(const float* pSource, float* pDest, bool& bTraces);
