#include "engine/terrain/LineMeasure.h"

#include "engine/terrain/CTerrain.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr float DEGREES = 57.29577951F; // of a radian

float GetGround(const CTerrain& terrain, float fX, float fZ)
{
    const SVec3 size = terrain.GetSize();
    return terrain.GetHeightAt(std::clamp(fX, 0.0F, size.x), std::clamp(fZ, 0.0F, size.z));
}

float GetAngle(float fUp, float fAlong)
{
    return std::atan2(std::fabs(fUp), fAlong) * DEGREES;
}

} // namespace

SLineMeasure MeasureLine(const CTerrain& terrain,
                         const SVec3& from,
                         const SVec3& to,
                         size_t nMost,
                         std::vector<float>& heights)
{
    const SVec3 size = terrain.GetSize();
    const float fCell = std::min(size.x / static_cast<float>(terrain.GetCellsPerSide()),
                                 size.z / static_cast<float>(terrain.GetCellsPerSideZ()));
    SLineMeasure measure;
    measure.fDistance = std::hypot(to.x - from.x, to.z - from.z);
    const float fSamples = std::ceil(measure.fDistance / (fCell / 2)) + 1.0F;
    const size_t nSamples = static_cast<size_t>(
        std::clamp(fSamples, 2.0F, static_cast<float>(std::max<size_t>(nMost, 2))));
    heights.resize(nSamples);
    for (size_t i = 0; i < nSamples; ++i)
    {
        const float fShare = static_cast<float>(i) / static_cast<float>(nSamples - 1);
        heights[i] = GetGround(
            terrain, from.x + (to.x - from.x) * fShare, from.z + (to.z - from.z) * fShare);
    }
    const float fStep = measure.fDistance / static_cast<float>(nSamples - 1);
    for (size_t i = 1; i < nSamples; ++i)
    {
        const float fUp = heights[i] - heights[i - 1];
        measure.fGround += std::hypot(fStep, fUp);
        (fUp > 0.0F ? measure.fClimb : measure.fDrop) += std::fabs(fUp);
        measure.fSteepest = std::max(measure.fSteepest, GetAngle(fUp, fStep));
    }
    measure.fRise = heights.back() - heights.front();
    measure.fSlope = GetAngle(measure.fRise, measure.fDistance);
    return measure;
}

float MeasureSlope(const CTerrain& terrain, const SVec3& at)
{
    const SVec3 size = terrain.GetSize();
    const float fHalfX = size.x / static_cast<float>(terrain.GetCellsPerSide()) / 2;
    const float fHalfZ = size.z / static_cast<float>(terrain.GetCellsPerSideZ()) / 2;
    // At the edge the window is narrower, and lies inside.
    const float fWest = std::max(at.x - fHalfX, 0.0F);
    const float fEast = std::min(at.x + fHalfX, size.x);
    const float fNorth = std::max(at.z - fHalfZ, 0.0F);
    const float fSouth = std::min(at.z + fHalfZ, size.z);
    if (!(fEast > fWest) || !(fSouth > fNorth))
    {
        return 0.0F;
    }
    const float fX =
        (GetGround(terrain, fEast, at.z) - GetGround(terrain, fWest, at.z)) / (fEast - fWest);
    const float fZ =
        (GetGround(terrain, at.x, fSouth) - GetGround(terrain, at.x, fNorth)) / (fSouth - fNorth);
    return std::atan(std::hypot(fX, fZ)) * DEGREES;
}
