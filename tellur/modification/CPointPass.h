#pragma once

#include "host/HostTypes.h"
#include "host/ITerrainAccess.h"
#include "host/ShapeSampling.h"
#include "tellur/modification/HeightPass.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class CHeightTiles;
struct SBrushShape;
struct SPointInNumbers;

// What an operation point has written.
struct SPointChange
{
    SGridBox box;
    size_t nChanged = 0;
    size_t nVisited = 0;
    float fMin = 3.4e38F; // of the heights written
    float fMax = 0.0F;
    bool bDiffers = false; // some of them differ from what was there

    void Add(int iFirstX, int iLastX, int iZ);
};

// Runs an operation point that is told in numbers, tile by tile, taking each when its turn comes,
// so that it is in the cache. Owned by the session; its memory is reused from point to point.
class CPointPass
{
public:
    struct SGround
    {
        CHeightTiles& tiles;
        float* pShown; // row-major heights that follow the destination; null: none
        float fStepX;  // terrain units between vertices
        float fStepZ;
        float fMaxHeight;
    };

    // Runs the point over the footprint's vertices. box: these; not empty, all on the ground.
    // False, and some of it may be done, when there is no memory for a tile.
    bool Run(const SPointInNumbers& point,
             const SGridBox& box,
             const SGround& ground,
             SPointChange& change);

private:
    struct SWork;

    // Pixel pairs of columns or rows side by side.
    struct SPairs
    {
        std::vector<int32_t> first;
        std::vector<int32_t> second;
        std::vector<float> firstWeights;

        void Find(const SPixelLine& line, int iSize, size_t nCount);
    };

    void MakeGroups(const SPointInNumbers& point, const SGridBox& box, float fStepX);
    void BlendRow(const SBrushShape& shape, size_t nRow, float* pRow) const;
    bool RunBand(const SWork& work, int iFirstZ, int iLastZ, SPointChange& change);

    std::vector<SColumnGroup> m_Groups;
    SPairs m_Columns;             // of the groups
    SPairs m_Rows;                // of the box
    std::vector<float> m_Shape;   // blended image rows, one for each row of a band of tiles
    std::vector<float> m_Targets; // of a tile, with a group's width before and behind
    size_t m_ShapePitch = 0;
};
