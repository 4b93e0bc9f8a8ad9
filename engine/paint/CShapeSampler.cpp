#include "engine/paint/CShapeSampler.h"

#include "host/Image.h"
#include "host/ShapeSampling.h"

#include <cmath>

namespace
{

SPixelPair FindPixels(uint32_t uTexel, const SShapeSide& side, ETexelMapping eMapping, int iSize)
{
    const float fCenter = (side.fMin + side.fMax) * 0.5F;
    const float fOffset = GetTexelPosition(uTexel, side.nTexels, side.fSide, eMapping) - fCenter;
    const float fPixels = static_cast<float>(iSize) * fOffset * (1.0F / (side.fMax - side.fMin));
    return GetPixelPair(fOffset, fPixels, iSize);
}

} // namespace

void CShapeSampler::SetShape(const IImage* pShape)
{
    m_Shape.reset(IL_CreateImageFromImage(pShape, EImageFormat::Indexed8));
}

bool CShapeSampler::Begin(const SShapeSide& columns, ETexelMapping eMapping)
{
    if (m_Shape == nullptr || !(columns.fMax - columns.fMin >= SHAPE_LEAST_SIDE) ||
        columns.texels.IsEmpty())
    {
        return false;
    }
    m_Mapping = eMapping;
    const size_t nColumns = columns.texels.uEnd - columns.texels.uFirst;
    m_Columns.resize(2 * nColumns);
    m_ColumnWeights.resize(nColumns);
    m_Weights.resize(nColumns);
    m_BlendedRow.resize(m_Shape->GetWidth());
    // Every row of the box has the same columns, so their pixels are found once.
    for (size_t i = 0; i < nColumns; ++i)
    {
        const auto uTexel = columns.texels.uFirst + static_cast<uint32_t>(i);
        const SPixelPair pair =
            FindPixels(uTexel, columns, m_Mapping, static_cast<int>(m_Shape->GetWidth()));
        m_Columns[2 * i] = pair.iFirst;
        m_Columns[2 * i + 1] = pair.iSecond;
        m_ColumnWeights[i] = pair.fFirstWeight;
    }
    return true;
}

const float* CShapeSampler::SampleRow(uint32_t uRow, const SShapeSide& rows, float fHardness)
{
    if (!(rows.fMax - rows.fMin >= SHAPE_LEAST_SIDE))
    {
        return nullptr;
    }
    const SPixelPair pair =
        FindPixels(uRow, rows, m_Mapping, static_cast<int>(m_Shape->GetHeight()));
    const size_t nWidth = m_Shape->GetWidth();
    const uint8_t* pPixels = m_Shape->GetRawData();
    // The two rows of the shape become one first, so that a texel looks up two pixels and not four.
    BlendPixelRows(pPixels + static_cast<size_t>(pair.iFirst) * nWidth,
                   pPixels + static_cast<size_t>(pair.iSecond) * nWidth,
                   pair.fFirstWeight,
                   m_BlendedRow.data(),
                   nWidth);
    SampleShapeRow(m_BlendedRow.data(),
                   m_Columns.data(),
                   m_ColumnWeights.data(),
                   {1.0F, fHardness},
                   m_Weights.data(),
                   m_Weights.size());
    return m_Weights.data();
}
