// The brush shape: CVertDataSet::GetDataFromBitmap. Sampling is separable, so the columns of the
// footprint are resolved once, and each grid row blends its two image rows once; per vertex one
// pair of that blended row is left to mix.

#include "brushes/ITellurBitmap.h"
#include "host/Image.h"
#include "host/Log.h"
#include "modification/CVertDataSet.h"
#include "modification/VectorClones.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr float PIXEL_SCALE = 0.003921569F; // 1 / 255
constexpr float MIN_SAMPLE = 0.0001F;       // below it the image counts as black
constexpr float MIN_EXTENT = 1.0e-6F;

// The two pixels around an image position and the weight of the first one. fOffset: distance from
// the centre in terrain units, fPixels: the same in pixels, iHalf: the centre's pixel.
struct SPixelPair
{
    int iFirst;
    int iSecond;
    float fFirstWeight;
};

SPixelPair GetPixelPair(float fOffset, float fPixels, int iSize)
{
    // Far outside both pixels are the border's; keep the number within an int.
    const float fLimit = static_cast<float>(iSize + 2);
    fPixels = std::isnan(fPixels) ? 0.0F : std::clamp(fPixels, -fLimit, fLimit);
    const int iHalf = iSize / 2;
    SPixelPair pair{};
    if (fOffset > 0.0F)
    {
        const int i = static_cast<int>(fPixels);
        pair.iFirst = iHalf + i;
        pair.iSecond = pair.iFirst + 1;
        pair.fFirstWeight = 1.0F - (fPixels - static_cast<float>(i));
    }
    else
    {
        const float fAbs = std::fabs(fPixels);
        const int n = static_cast<int>(fAbs);
        pair.iFirst = iHalf - n - 1;
        pair.iSecond = iHalf - n;
        pair.fFirstWeight = fAbs - static_cast<float>(n);
    }
    pair.iFirst = std::clamp(pair.iFirst, 0, iSize - 1);
    pair.iSecond = std::clamp(pair.iSecond, 0, iSize - 1);
    return pair;
}

TELLUR_VECTOR_CLONES
void BlendPixels(
    const uint8_t* pFirst, const uint8_t* pSecond, float fFirstWeight, float* pDest, size_t nCount)
{
    const float fSecondWeight = 1.0F - fFirstWeight;
    for (size_t i = 0; i < nCount; ++i)
    {
        pDest[i] = static_cast<float>(pFirst[i]) * PIXEL_SCALE * fFirstWeight +
                   static_cast<float>(pSecond[i]) * PIXEL_SCALE * fSecondWeight;
    }
}

struct SShape
{
    float fPower;
    float fHardness;
};

TELLUR_VECTOR_CLONES
void SampleRow(const float* pRow,
               const int* pColumns,
               const float* pColumnWeights,
               SShape shape,
               float* pWeights,
               size_t nCount)
{
    for (size_t i = 0; i < nCount; ++i)
    {
        // Columns hold pairs: left and right pixel.
        const float fLeft = pColumnWeights[i];
        const float b = pRow[pColumns[2 * i]] * fLeft + pRow[pColumns[2 * i + 1]] * (1.0F - fLeft);
        float fHard = b + shape.fHardness;
        fHard = fHard < 0.0F ? 0.0F : fHard;
        fHard = fHard > 1.0F ? 1.0F : fHard;
        pWeights[i] = shape.fPower * (std::fabs(b) >= MIN_SAMPLE ? fHard : b);
    }
}

} // namespace

void CVertDataSet::SetAllWeights(float fWeight)
{
    std::fill_n(m_Verts.GetWeights(), m_Verts.GetCount(), fWeight);
}

void CVertDataSet::BuildColumnTable(float fCenterX, float fExtent, int iWidth)
{
    int ixFirst = m_Verts.GetRuns().front().ixFirst;
    int ixLast = ixFirst;
    for (const SVertRun& run : m_Verts.GetRuns())
    {
        ixFirst = std::min(ixFirst, run.ixFirst);
        ixLast = std::max(ixLast, run.ixFirst + static_cast<int>(run.nCount) - 1);
    }
    m_FirstColumn = ixFirst;
    const size_t nColumns = static_cast<size_t>(ixLast - ixFirst) + 1;
    m_Columns.resize(2 * nColumns);
    m_ColumnWeights.resize(nColumns);
    for (size_t i = 0; i < nColumns; ++i)
    {
        const float fX = static_cast<float>(ixFirst + static_cast<int>(i)) * m_Verts.GetStepX();
        const float fOffset = fX - fCenterX;
        const float fPixels = static_cast<float>(iWidth) * fOffset * (1.0F / fExtent);
        const SPixelPair pair = GetPixelPair(fOffset, fPixels, iWidth);
        m_Columns[2 * i] = pair.iFirst;
        m_Columns[2 * i + 1] = pair.iSecond;
        m_ColumnWeights[i] = pair.fFirstWeight;
    }
}

void CVertDataSet::GetDataFromBitmap(
    const SVec3& center, float fExtent, ITellurBitmap* pBitmap, float fPower, float fHardness)
{
    if (pBitmap == nullptr)
    {
        CrashLog("[CVertDataSet::GetDataFromBitmap] no bitmap\n");
        SetAllWeights(0.0F);
        return;
    }
    if (std::fabs(fExtent) < MIN_EXTENT)
    {
        CrashLog("[CVertDataSet::GetDataFromBitmap] extent is 0\n");
        SetAllWeights(0.0F);
        return;
    }
    if (m_Verts.IsEmpty())
    {
        return;
    }
    const int iWidth = pBitmap->GetXSize();
    const int iHeight = pBitmap->GetYSize();
    const IImage* pImage = pBitmap->GetImage();
    const uint8_t* pPixels = pImage != nullptr ? pImage->GetRawData() : nullptr;
    if (pPixels == nullptr || iWidth < 1 || iHeight < 1)
    {
        pBitmap->GetPoint(0, 0); // says what is missing
        SetAllWeights(0.0F);
        return;
    }

    BuildColumnTable(center.x, fExtent, iWidth);
    m_BlendedRow.resize(static_cast<size_t>(iWidth));
    int izBlended = 0;
    bool bBlended = false;
    for (const SVertRun& run : m_Verts.GetRuns())
    {
        if (!bBlended || izBlended != run.iz)
        {
            const float fOffset = static_cast<float>(run.iz) * m_Verts.GetStepZ() - center.z;
            const float fPixelRow = static_cast<float>(iHeight) * fOffset * (1.0F / fExtent);
            const SPixelPair rows = GetPixelPair(fOffset, fPixelRow, iHeight);
            BlendPixels(pPixels + static_cast<size_t>(rows.iFirst) * static_cast<size_t>(iWidth),
                        pPixels + static_cast<size_t>(rows.iSecond) * static_cast<size_t>(iWidth),
                        rows.fFirstWeight,
                        m_BlendedRow.data(),
                        m_BlendedRow.size());
            izBlended = run.iz;
            bBlended = true;
        }
        const size_t nColumn = static_cast<size_t>(run.ixFirst - m_FirstColumn);
        SampleRow(m_BlendedRow.data(),
                  m_Columns.data() + 2 * nColumn,
                  m_ColumnWeights.data() + nColumn,
                  {fPower, fHardness},
                  m_Verts.GetWeights() + run.nFirst,
                  run.nCount);
    }
}
