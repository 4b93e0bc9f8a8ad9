#pragma once

#include "host/Export.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <vector>

struct SReliefOptions
{
    // Pixels along the longer side, in the terrain's true proportions; 0 gives one pixel a vertex.
    uint32_t uLongerSide = 0;
    // Heights of the lowest and the highest colour. With fHigh at or below fLow the range of the
    // heights is taken; pictures to be compared need the same fixed range, which fixes colours and
    // shading alike.
    float fLow = 0.0F;
    float fHigh = 0.0F;
};

// Three bytes a pixel: red, green, blue; rows from the top.
struct SReliefPicture
{
    uint32_t uWidth = 0;
    uint32_t uHeight = 0;
    std::vector<uint8_t> rgb;
};

// Shaded relief of a terrain seen from above: colours by height from green lowland to white
// summits, lit from the north-west. Row 0 is z = 0, the terrain's north; columns follow x. A slope
// of 0 shows the plain colour of its height. pHeights: uSizeX x uSizeZ vertices, row-major,
// borrowed. False without a line when the sizes are none of a terrain, the picture would be wider
// than 16385 pixels, or there is no memory for it.
TELLUR_API bool RenderRelief(const float* pHeights,
                             uint32_t uSizeX,
                             uint32_t uSizeZ,
                             const SVec3& size,
                             const SReliefOptions& options,
                             SReliefPicture& picture);
