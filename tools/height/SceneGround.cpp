#include "tools/height/SceneGround.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace
{

constexpr uint32_t FINEST = 4; // points a cell is split into

// The four vertices around a point of an axis and their shares: a cubic B-spline, which rounds
// what is a vertex wide and never overshoots at the edge of a terrace.
struct STap
{
    uint32_t aIndex[4] = {};
    float aWeight[4] = {};
};

std::vector<STap> MakeTaps(uint32_t uVertices, uint32_t uMost)
{
    const uint32_t uCells = uVertices - 1;
    const uint32_t uFiner = std::clamp(uMost / uCells, 1U, FINEST);
    const uint32_t uPoints = std::min(uCells * uFiner, uMost) + 1;
    std::vector<STap> taps(uPoints);
    for (uint32_t i = 0; i < uPoints; ++i)
    {
        const double dAt = static_cast<double>(i) * uCells / (uPoints - 1);
        const uint32_t uCell = std::min(static_cast<uint32_t>(dAt), uCells - 1);
        const auto t = static_cast<float>(dAt - uCell);
        const float s = 1.0F - t;
        STap& tap = taps[i];
        for (uint32_t k = 0; k < 4; ++k)
        {
            // The vertices from one before the cell on; beyond the border the last vertex counts
            // again.
            tap.aIndex[k] = std::min(std::max(uCell + k, 1U) - 1, uCells);
        }
        tap.aWeight[0] = s * s * s / 6.0F;
        tap.aWeight[1] = (4.0F - 6.0F * t * t + 3.0F * t * t * t) / 6.0F;
        tap.aWeight[2] = (4.0F - 6.0F * s * s + 3.0F * s * s * s) / 6.0F;
        tap.aWeight[3] = t * t * t / 6.0F;
    }
    return taps;
}

// Makes the finer grid with its heights. A side gets at most uMost cells.
void Refine(const SHeightField& field, uint32_t uMost, SSceneGround& ground)
{
    const std::vector<STap> columns = MakeTaps(field.uSizeX, uMost);
    const std::vector<STap> rows = MakeTaps(field.uSizeZ, uMost);
    ground.uSizeX = static_cast<uint32_t>(columns.size());
    ground.uSizeZ = static_cast<uint32_t>(rows.size());
    ground.fStepX = std::fabs(field.size.x) / static_cast<float>(ground.uSizeX - 1);
    ground.fStepZ = std::fabs(field.size.z) / static_cast<float>(ground.uSizeZ - 1);
    ground.heights.reserve(columns.size() * rows.size());
    std::vector<float> merged(field.uSizeX);
    for (const STap& row : rows)
    {
        // Four rows are merged into one first, which the points of the row then share.
        std::fill(merged.begin(), merged.end(), 0.0F);
        for (size_t k = 0; k < 4; ++k)
        {
            const float* pRow = field.pHeights.get() + size_t{row.aIndex[k]} * field.uSizeX;
            for (uint32_t x = 0; x < field.uSizeX; ++x)
            {
                merged[x] += pRow[x] * row.aWeight[k];
            }
        }
        for (const STap& tap : columns)
        {
            float fHeight = 0.0F;
            for (size_t k = 0; k < 4; ++k)
            {
                fHeight += merged[tap.aIndex[k]] * tap.aWeight[k];
            }
            ground.heights.push_back(fHeight);
        }
    }
}

// How far each point lies below the shadow's upper edge, terrain units; at or below 0 in the sun.
// One sweep away from the sun: the edge falls with the sun's height from line to line.
std::vector<float> MakeShadows(const SSceneGround& ground, const SVec3& sun)
{
    // The lines are swept along the side on which the sun moves faster from point to point, so the
    // edge shifts by no more than one point from line to line.
    const bool bAlongX = std::fabs(sun.x) * ground.fStepZ > std::fabs(sun.z) * ground.fStepX;
    const uint32_t uLines = bAlongX ? ground.uSizeX : ground.uSizeZ;
    const uint32_t uAcross = bAlongX ? ground.uSizeZ : ground.uSizeX;
    const size_t nLine = bAlongX ? 1 : ground.uSizeX;
    const size_t nAcross = bAlongX ? ground.uSizeX : 1;
    const float fMain = bAlongX ? sun.x / ground.fStepX : sun.z / ground.fStepZ;
    const float fSide = bAlongX ? sun.z / ground.fStepZ : sun.x / ground.fStepX;
    const float fFall = sun.y / std::fabs(fMain);
    const float fShift = fSide / std::fabs(fMain); // points sideways towards the sun, a line

    std::vector<float> edge(uAcross);
    std::vector<float> before(uAcross);
    std::vector<float> depths(ground.heights.size());
    for (uint32_t uLine = 0; uLine < uLines; ++uLine)
    {
        const size_t nStart = nLine * (fMain > 0.0F ? uLines - 1 - uLine : uLine);
        for (uint32_t i = 0; i < uAcross; ++i)
        {
            const float fHeight = ground.heights[nStart + i * nAcross];
            float fEdge = -1.0F;
            if (uLine > 0)
            {
                const float fAt = std::clamp(
                    static_cast<float>(i) + fShift, 0.0F, static_cast<float>(uAcross - 1));
                const auto uAt = std::min(static_cast<uint32_t>(fAt), uAcross - 2);
                const float fShare = fAt - static_cast<float>(uAt);
                fEdge = before[uAt] + (before[uAt + 1] - before[uAt]) * fShare - fFall;
            }
            depths[nStart + i * nAcross] = uLine > 0 ? fEdge - fHeight : 0.0F;
            edge[i] = uLine > 0 ? std::max(fEdge, fHeight) : fHeight;
        }
        before.swap(edge);
    }
    return depths;
}

// Replaces each value by the mean of those around it, uRadius points to each side.
void Smooth(std::vector<float>& values, uint32_t uSizeX, uint32_t uSizeZ, uint32_t uRadius)
{
    const auto run = [&values, uRadius](size_t nFirst, size_t nStride, uint32_t uCount)
    {
        // A mean is the difference of two running sums, so the radius costs nothing.
        std::vector<double> sums(uCount + 1);
        for (uint32_t i = 0; i < uCount; ++i)
        {
            sums[i + 1] = sums[i] + values[nFirst + i * nStride];
        }
        for (uint32_t i = 0; i < uCount; ++i)
        {
            const uint32_t uFrom = i > uRadius ? i - uRadius : 0;
            const uint32_t uTo = std::min(i + uRadius + 1, uCount);
            values[nFirst + i * nStride] =
                static_cast<float>((sums[uTo] - sums[uFrom]) / (uTo - uFrom));
        }
    };
    for (uint32_t z = 0; z < uSizeZ; ++z)
    {
        run(size_t{z} * uSizeX, 1, uSizeX);
    }
    for (uint32_t x = 0; x < uSizeX; ++x)
    {
        run(x, uSizeX, uSizeZ);
    }
}

float Step(float fFrom, float fTo, float fValue)
{
    const float t = std::clamp((fValue - fFrom) / (fTo - fFrom), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

SVec3 Normalize(const SVec3& v)
{
    const float fLength = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    return {v.x / fLength, v.y / fLength, v.z / fLength};
}

SVec3 GetNormal(const SSceneGround& ground, uint32_t uX, uint32_t uZ)
{
    const uint32_t uLeft = uX > 0 ? uX - 1 : 0;
    const uint32_t uRight = std::min(uX + 1, ground.uSizeX - 1);
    const uint32_t uAbove = uZ > 0 ? uZ - 1 : 0;
    const uint32_t uBelow = std::min(uZ + 1, ground.uSizeZ - 1);
    const SVec3 left = ground.GetPoint(uLeft, uZ);
    const SVec3 right = ground.GetPoint(uRight, uZ);
    const SVec3 above = ground.GetPoint(uX, uAbove);
    const SVec3 below = ground.GetPoint(uX, uBelow);
    return Normalize({-(right.y - left.y) / (right.x - left.x),
                      1.0F,
                      -(below.y - above.y) / (below.z - above.z)});
}

void Light(SSceneGround& ground, const SDayLight& day, const SLookEdge& range)
{
    const std::vector<float> depths = MakeShadows(ground, day.way);
    // Lengths follow the width of the terrain, so that terrains of all sizes look alike.
    const uint32_t uRadius = std::max(1U, ground.uSizeX / 80);
    const float fRadius = static_cast<float>(uRadius) * ground.fStepX;
    const float fSide = std::max(static_cast<float>(ground.uSizeX) * ground.fStepX,
                                 static_cast<float>(ground.uSizeZ) * ground.fStepZ);
    const float fPatches = PATCHES / fSide;
    const float fEdge = 0.3F * ground.fStepX; // how soft a shadow is
    const auto [pLow, pHigh] = std::minmax_element(ground.heights.begin(), ground.heights.end());
    float fLow = 0.0F;
    float fHigh = 0.0F;
    const bool bOwn = range.fTo <= range.fFrom;
    GetTintRange(bOwn ? *pLow : range.fFrom, bOwn ? *pHigh : range.fTo, fSide, fLow, fHigh);
    const SGroundTints tints;
    std::vector<float> means = ground.heights;
    Smooth(means, ground.uSizeX, ground.uSizeZ, uRadius);
    ground.colors.resize(ground.heights.size());
    for (uint32_t z = 0; z < ground.uSizeZ; ++z)
    {
        for (uint32_t x = 0; x < ground.uSizeX; ++x)
        {
            const size_t n = size_t{z} * ground.uSizeX + x;
            const SVec3 point = ground.GetPoint(x, z);
            const SVec3 normal = GetNormal(ground, x, z);
            const float fSun = 1.0F - Step(0.0F, fEdge, depths[n]);
            // A point above its surroundings sees more of the sky.
            const float fSky =
                std::clamp(0.95F + 1.6F * (point.y - means[n]) / fRadius, 0.45F, 1.2F);
            const SColor own = GetGroundTint(tints,
                                             (point.y - fLow) / (fHigh - fLow),
                                             normal.y,
                                             GetRoughness(point.x * fPatches, point.z * fPatches));
            ground.colors[n] = GetLitSquares(own, day, normal, fSun, fSky);
        }
    }
}

} // namespace

SSceneGround MakeSceneGround(const SHeightField& field,
                             const SDayLight& day,
                             const SLookEdge& range,
                             uint32_t uMost)
{
    SSceneGround ground;
    Refine(field, uMost, ground);
    Light(ground, day, range);
    return ground;
}
