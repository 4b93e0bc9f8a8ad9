#include "tellur/brushes/SpacingShare.h"

#include "host/Image.h"
#include "host/ShapeSampling.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace
{

constexpr float FINEST = 1.0F / 32.0F;
constexpr float COARSEST = 1.0F / 8.0F;
// What is at most a hundredth below the highest weight belongs to the plateau that is measured.
constexpr float EVEN = 0.99F;
constexpr size_t MOST_SAMPLES = 512; // along a side; finer ones tell nothing about such widths

using WeightTable = std::array<float, 256>; // of a grey byte

WeightTable GetWeights(float fHardness)
{
    WeightTable weights = {};
    constexpr int SAME[2] = {0, 0};
    constexpr float WHOLE = 1.0F;
    for (size_t i = 0; i < weights.size(); ++i)
    {
        const float fSample = static_cast<float>(i) / 255.0F;
        SampleShapeRow(&fSample, SAME, &WHOLE, {1.0F, fHardness}, &weights[i], 1);
    }
    return weights;
}

// How far a line of samples stays at or above a level; lengths are samples, ends between two
// samples are found on the straight line between them.
class CRun
{
public:
    void Add(float fWeight, float fLevel)
    {
        const bool bHigh = fWeight >= fLevel;
        if (bHigh)
        {
            // A run begins half a sample before the first one of a line, else where the straight
            // line between two samples crosses the level.
            m_Length = m_Length >= 0.0F ? m_Length + 1.0F
                       : m_bFirst       ? HALF
                                        : (fWeight - fLevel) / (fWeight - m_Before);
        }
        else if (m_Length >= 0.0F)
        {
            m_Widest = std::max(m_Widest, m_Length + (m_Before - fLevel) / (m_Before - fWeight));
            m_Length = NONE;
        }
        m_Before = fWeight;
        m_bFirst = false;
    }

    float GetWidest() const { return std::max(m_Widest, m_Length + HALF); }

private:
    static constexpr float HALF = 0.5F; // from a sample in the last column to the border
    static constexpr float NONE = -1.0F;

    float m_Length = NONE;
    float m_Widest = 0.0F;
    float m_Before = 0.0F;
    bool m_bFirst = true;
};

} // namespace

// The widest run on the plateau is measured along the rows and along the columns, and the narrower
// of the two counts.
float GetSpacingShare(const IImage& shape, float fHardness)
{
    const size_t nSide = shape.GetWidth();
    const uint8_t* pPixels = shape.GetRawData();
    if (pPixels == nullptr || nSide == 0)
    {
        return COARSEST;
    }
    const size_t nSamples = std::min(nSide, MOST_SAMPLES);
    const auto getPixel = [&](size_t iX, size_t iZ)
    {
        return pPixels[iZ * nSide / nSamples * nSide + iX * nSide / nSamples];
    };
    uint8_t uHighest = 0;
    for (size_t z = 0; z < nSamples; ++z)
    {
        for (size_t x = 0; x < nSamples; ++x)
        {
            uHighest = std::max(uHighest, getPixel(x, z));
        }
    }
    const WeightTable weights = GetWeights(fHardness);
    const float fLevel = weights[uHighest] * EVEN;
    if (fLevel <= 0.0F)
    {
        return COARSEST; // it leaves nothing
    }
    // One walk over the image measures its rows and its columns.
    std::vector<CRun> columns(nSamples);
    float fRows = 0.0F;
    for (size_t z = 0; z < nSamples; ++z)
    {
        CRun row;
        for (size_t x = 0; x < nSamples; ++x)
        {
            const float fWeight = weights[getPixel(x, z)];
            row.Add(fWeight, fLevel);
            columns[x].Add(fWeight, fLevel);
        }
        fRows = std::max(fRows, row.GetWidest());
    }
    float fColumns = 0.0F;
    for (const CRun& column : columns)
    {
        fColumns = std::max(fColumns, column.GetWidest());
    }
    const float fShare = std::min(fRows, fColumns) / static_cast<float>(nSamples);
    return std::clamp(fShare, FINEST, COARSEST);
}
