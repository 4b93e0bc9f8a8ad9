#include "engine/elevation/CExportRows.h"

#include <algorithm>
#include <cmath>

namespace
{

double GetSample(float fHeight, const SExportPlan& plan)
{
    const double dSample = (static_cast<double>(fHeight) - plan.dBase) / plan.dUnit;
    // Halves go up, below 0 too.
    return plan.bRound ? std::floor(dSample + 0.5) : dSample;
}

} // namespace

CExportRows::CExportRows(const SSampleView& heights, const SExportPlan& plan)
    : m_Heights(heights)
    , m_Plan(plan)
    , m_Row(heights.uColumns)
    , m_Progress("Writing the height map", heights.uRows)
{
}

const float* CExportRows::GetRow(uint32_t uRow)
{
    if (!m_Progress.Reach(uRow))
    {
        return nullptr;
    }
    const uint32_t uFrom = m_Plan.bSouthFirst ? m_Heights.uRows - 1 - uRow : uRow;
    const float* pHeights = m_Heights.pSamples + static_cast<size_t>(uFrom) * m_Heights.uColumns;
    const SExportPlan& plan = m_Plan;
    std::transform(pHeights,
                   pHeights + m_Heights.uColumns,
                   m_Row.begin(),
                   [&plan](float fHeight)
                   {
                       const double dSample = GetSample(fHeight, plan);
                       return std::isfinite(fHeight)
                                  ? static_cast<float>(std::clamp(dSample, plan.dLow, plan.dHigh))
                                  : 0.0F;
                   });
    return m_Row.data();
}

void CExportRows::CountLosses(const SSampleView& heights, SExportPlan& plan)
{
    size_t nBelow = 0;
    size_t nAbove = 0;
    size_t nVoids = 0;
    size_t nNoData = 0;
    const auto fNoData = static_cast<float>(plan.geo.noData.value_or(NAN)); // equal to nothing
    // In single precision: a height that is white itself may end a last bit above it in double.
    const auto fLow = static_cast<float>(plan.dLow);
    const auto fHigh = static_cast<float>(plan.dHigh);
    const auto fBase = static_cast<float>(plan.dBase);
    for (size_t i = 0; i < heights.GetCount(); ++i)
    {
        const float fHeight = heights.pSamples[i];
        const auto fSample = static_cast<float>(GetSample(fHeight, plan));
        const bool bVoid = !std::isfinite(fHeight);
        // A mark "not editable" just below 0 is lost too when it is rounded to 0.
        const bool bBelow = fSample < fLow || (fLow == 0.0F && fHeight < fBase);
        nVoids += bVoid ? 1 : 0;
        nBelow += !bVoid && bBelow ? 1 : 0;
        nNoData += fSample == fNoData ? 1 : 0;
        nAbove += !bVoid && fSample > fHigh ? 1 : 0;
    }
    plan.nBelow = nBelow;
    plan.nAbove = nAbove;
    plan.nVoids = nVoids;
    plan.nNoData = nNoData;
}
