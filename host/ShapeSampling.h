#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>

// How a brush-shape image is stretched over a footprint and sampled, for terrain vertices and for
// texels alike. Sampling is separable: the pixels around a column are found once for a footprint,
// two image rows are blended once for a row, and one pair of that blended row is left to mix at
// each point: GetPixelPair for each column and for the row, BlendPixelRows, SampleShapeRow. Plain
// functions that cannot fail, any thread; buffers are the caller's. Implemented by the engine
// library.

// Side of a footprint, terrain units; over a smaller one no image is stretched.
constexpr float SHAPE_LEAST_SIDE = 1.0e-6F;

// The two pixels around an image position and the weight of the first one; the second has the rest.
struct SPixelPair
{
    int iFirst = 0;
    int iSecond = 0;
    float fFirstWeight = 0.0F;
};

struct SShapeStrength
{
    float fPower = 1.0F;
    float fHardness = 0.0F; // added to every sample that is not black, the sum kept within 0 to 1
};

// fOffset: distance from the footprint's centre, terrain units; fPixels: the same in pixels of the
// image, iSize * fOffset * (1 / side of the footprint). Beyond the image its border counts.
TELLUR_API SPixelPair GetPixelPair(float fOffset, float fPixels, int iSize);

// Where GetPixelPairs puts its results, as many of each as it is asked for.
struct SPixelPairs
{
    int32_t* pFirst = nullptr;
    int32_t* pSecond = nullptr;
    float* pFirstWeights = nullptr;
};

// Columns or rows side by side.
struct SPixelLine
{
    int iFirst = 0;       // number of the first one
    float fStep = 1.0F;   // from one to the next, terrain units
    float fCenter = 0.0F; // of the footprint, terrain units; number 0 lies at 0
    float fExtent = 1.0F; // side of the footprint, terrain units
};

// Does what GetPixelPair does for nCount columns or rows.
TELLUR_API void
GetPixelPairs(const SPixelLine& line, int iSize, const SPixelPairs& pairs, size_t nCount);

// Blends two image rows of nCount grey bytes into one of values 0 to 1. pDest: takes nCount of
// them.
TELLUR_API void BlendPixelRows(
    const uint8_t* pFirst, const uint8_t* pSecond, float fFirstWeight, float* pDest, size_t nCount);

// Weights of nCount points of a row: power * (b + hardness), or power * b where the sample b is
// below 0.0001. pRow: a blended row. pColumns: first and second pixel of each point, 2 * nCount.
// pColumnWeights: of the first ones, nCount. pWeights: nCount results.
TELLUR_API void SampleShapeRow(const float* pRow,
                               const int* pColumns,
                               const float* pColumnWeights,
                               SShapeStrength strength,
                               float* pWeights,
                               size_t nCount);
