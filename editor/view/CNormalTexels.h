#pragma once

#include "editor/view/SNormalTile.h"
#include "engine/terrain/SVertexRect.h"

#include <cstdint>
#include <vector>

struct SHeightView;

// The texels of normals as SNormalTile describes them, made by the processor: for cards that cannot
// draw them, and where the processor is the card and would be slower at drawing them. Keeps only
// the part that is being made. Owned by the tiles; knows no context.
class CNormalTexels
{
public:
    // Makes the normals of the vertices in part, which lie in the tile; looks at those around it,
    // too.
    void Make(const SHeightView& ground, const SNormalTile& tile, const SVertexRect& part);

    // Answers the texels of a level that the part reaches, row by row, x in the lower half; valid
    // until the next call.
    const uint32_t* Take(uint32_t uLevel);

private:
    void TakeMeans(uint32_t uLevel, uint32_t uRow, const SVertexRect& texels, uint32_t* pTo) const;

    const SHeightView* m_Ground = nullptr; // for the time of a part
    const SNormalTile* m_Tile = nullptr;
    SVertexRect m_Part;
    SVertexRect m_Block; // vertices whose normals are there, a little more than the part
    std::vector<uint32_t> m_Normals; // of the block, row by row
    std::vector<uint32_t> m_Texels;
};
