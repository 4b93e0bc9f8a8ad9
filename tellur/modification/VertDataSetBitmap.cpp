// The brush shape: CVertDataSet::GetDataFromBitmap.

#include "host/Image.h"
#include "host/Log.h"
#include "host/ShapeSampling.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/ITellurBitmap.h"

#include <algorithm>
#include <cmath>

void CVertDataSet::SetAllWeights(float fWeight)
{
    std::fill_n(m_Verts.GetWeights(), m_Verts.GetCount(), fWeight);
}

// Sampling is separable, so the pixels of each column are found once for the whole footprint.
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
    if (std::fabs(fExtent) < SHAPE_LEAST_SIDE)
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
        // Runs of one row follow each other, so the row is blended once for all of them.
        if (!bBlended || izBlended != run.iz)
        {
            const float fOffset = static_cast<float>(run.iz) * m_Verts.GetStepZ() - center.z;
            const float fPixelRow = static_cast<float>(iHeight) * fOffset * (1.0F / fExtent);
            const SPixelPair rows = GetPixelPair(fOffset, fPixelRow, iHeight);
            BlendPixelRows(pPixels + static_cast<size_t>(rows.iFirst) * static_cast<size_t>(iWidth),
                           pPixels +
                               static_cast<size_t>(rows.iSecond) * static_cast<size_t>(iWidth),
                           rows.fFirstWeight,
                           m_BlendedRow.data(),
                           m_BlendedRow.size());
            izBlended = run.iz;
            bBlended = true;
        }
        const size_t nColumn = static_cast<size_t>(run.ixFirst - m_FirstColumn);
        SampleShapeRow(m_BlendedRow.data(),
                       m_Columns.data() + 2 * nColumn,
                       m_ColumnWeights.data() + nColumn,
                       {fPower, fHardness},
                       m_Verts.GetWeights() + run.nFirst,
                       run.nCount);
    }
}
