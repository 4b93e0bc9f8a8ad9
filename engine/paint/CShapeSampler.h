#pragma once

#include "engine/paint/TexelRange.h"

#include <cstdint>
#include <memory>
#include <vector>

class IImage;

// Where texels lie along one side of the terrain, and the footprint along it.
struct SShapeSide
{
    STexelRange texels;
    uint32_t nTexels = 0;
    float fSide = 0.0F; // of the terrain
    float fMin = 0.0F;  // of the footprint
    float fMax = 0.0F;
};

// Weights of texels from a brush shape that is stretched over a box. Keeps its buffers from box to
// box. Owned by the paint layer.
class CShapeSampler
{
public:
    // Keeps a copy as one byte a pixel; null: no shape.
    void SetShape(const IImage* pShape);

    const IImage* GetShape() const { return m_Shape.get(); } // grey, null without one

    // Prepares the columns of a box. False without a shape, and for a box of no width.
    bool Begin(const SShapeSide& columns, ETexelMapping eMapping);
    // The weights of the columns' texels in that row, 0 to 1, valid until the next call. Null for a
    // box of no depth.
    const float* SampleRow(uint32_t uRow, const SShapeSide& rows, float fHardness);

private:
    std::unique_ptr<IImage> m_Shape;
    ETexelMapping m_Mapping = ETexelMapping::Centers;
    std::vector<int> m_Columns; // first and second pixel of each column
    std::vector<float> m_ColumnWeights;
    std::vector<float> m_BlendedRow; // of the shape
    std::vector<float> m_Weights;    // of the texels of a row
};
