#include "engine/terrain/Relief.h"

#include "engine/terrain/SHeightField.h"
#include "host/TerrainSize.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <new>

namespace
{

struct SStop
{
    float fAt = 0.0F; // share of the height range
    float aColor[3] = {};
};

// The tints of a physical map: lowland, hills, high ground, rock, snow.
constexpr SStop STOPS[] = {
    {0.00F, {96, 146, 98}},
    {0.18F, {142, 178, 110}},
    {0.36F, {204, 204, 142}},
    {0.56F, {202, 168, 112}},
    {0.74F, {162, 118, 82}},
    {0.88F, {176, 164, 156}},
    {1.00F, {250, 250, 250}},
};

constexpr uint32_t TINT_COUNT = 1024;
using FTints = std::vector<std::array<float, 3>>;

FTints MakeTints()
{
    FTints tints(TINT_COUNT);
    for (uint32_t i = 0; i < TINT_COUNT; ++i)
    {
        const float fAt = static_cast<float>(i) / (TINT_COUNT - 1);
        // The search ends before the last stop, which then is the upper one.
        const SStop* pUpper = std::find_if(std::begin(STOPS) + 1,
                                           std::end(STOPS) - 1,
                                           [fAt](const SStop& s) { return s.fAt >= fAt; });
        const SStop* pLower = pUpper - 1;
        const float fShare = (fAt - pLower->fAt) / (pUpper->fAt - pLower->fAt);
        for (size_t c = 0; c < 3; ++c)
        {
            tints[i][c] = pLower->aColor[c] + (pUpper->aColor[c] - pLower->aColor[c]) * fShare;
        }
    }
    return tints;
}

// Suns: horizontal direction towards it (x east, z south), and its share of the light. The two
// weaker ones keep ridges that run along the main sun's direction visible.
struct SSun
{
    float fX = 0.0F;
    float fZ = 0.0F;
    float fShare = 0.0F;
};

constexpr SSun SUNS[] = {{-0.7071F, -0.7071F, 0.7F}, {-1.0F, 0.0F, 0.15F}, {0.0F, -1.0F, 0.15F}};
constexpr float SUN_SLOPE = 1.0F; // rise over run towards the suns, 45 degrees

// Light on a slope, 1 for flat ground, 0 in shadow.
float GetLight(float fSlopeX, float fSlopeZ)
{
    const float fScale = 1.0F / std::sqrt(1.0F + fSlopeX * fSlopeX + fSlopeZ * fSlopeZ);
    float fLight = 0.0F;
    for (const SSun& sun : SUNS)
    {
        // The cosine between the ground's normal and the sun, divided by that of flat ground.
        const float fFacing = SUN_SLOPE - fSlopeX * sun.fX - fSlopeZ * sun.fZ;
        fLight += sun.fShare * std::max(0.0F, fFacing * fScale / SUN_SLOPE);
    }
    return fLight;
}

// Weights with which one pixel of an axis collects vertices: their mean when several lie under it,
// else linear between the two around it.
struct SSpan
{
    uint32_t uFirst = 0;
    uint32_t uCount = 1;
    float fFraction = 0.0F; // of the second vertex; used when uCount is 2 and bLinear
    bool bLinear = false;
};

std::vector<SSpan> MakeSpans(uint32_t uVertices, uint32_t uPixels)
{
    std::vector<SSpan> spans(uPixels);
    const double dCells = uVertices - 1;
    // The first and the last pixel lie on the first and the last vertex.
    const double dPerPixel = uPixels > 1 ? dCells / (uPixels - 1) : 0.0;
    for (uint32_t i = 0; i < uPixels; ++i)
    {
        const double dAt = i * dPerPixel;
        if (dPerPixel < 2.0)
        {
            const uint32_t uCell = std::min(static_cast<uint32_t>(dAt), uVertices - 2);
            spans[i] = {uCell, 2, static_cast<float>(dAt - uCell), true};
            continue;
        }
        const auto uFirst = static_cast<uint32_t>(std::max(0.0, std::ceil(dAt - dPerPixel / 2)));
        const auto uLast = static_cast<uint32_t>(std::min(dCells, std::floor(dAt + dPerPixel / 2)));
        spans[i] = {uFirst, uLast - uFirst + 1, 0.0F, false};
    }
    return spans;
}

float Collect(const float* pValues, const SSpan& span)
{
    if (span.bLinear)
    {
        return pValues[span.uFirst] * (1.0F - span.fFraction) +
               pValues[span.uFirst + 1] * span.fFraction;
    }
    float fSum = 0.0F;
    for (uint32_t i = 0; i < span.uCount; ++i)
    {
        fSum += pValues[span.uFirst + i];
    }
    return fSum / static_cast<float>(span.uCount);
}

// The heights under the pixels, uWidth x uHeight.
std::vector<float> SampleHeights(
    const float* pHeights, uint32_t uSizeX, uint32_t uSizeZ, uint32_t uWidth, uint32_t uHeight)
{
    const std::vector<SSpan> columns = MakeSpans(uSizeX, uWidth);
    const std::vector<SSpan> rows = MakeSpans(uSizeZ, uHeight);
    std::vector<float> sampled(static_cast<size_t>(uWidth) * uHeight);
    std::vector<float> merged(uSizeX);
    for (uint32_t y = 0; y < uHeight; ++y)
    {
        // The rows under the pixels become one row of vertices, in loops along memory; its columns
        // are collected after that.
        const SSpan& span = rows[y];
        std::fill(merged.begin(), merged.end(), 0.0F);
        for (uint32_t i = 0; i < span.uCount; ++i)
        {
            const float fLinear = i == 0 ? 1.0F - span.fFraction : span.fFraction;
            const float fWeight = span.bLinear ? fLinear : 1.0F / static_cast<float>(span.uCount);
            const float* pRow = pHeights + static_cast<size_t>(span.uFirst + i) * uSizeX;
            for (uint32_t x = 0; x < uSizeX; ++x)
            {
                merged[x] += pRow[x] * fWeight;
            }
        }
        float* pOut = sampled.data() + static_cast<size_t>(y) * uWidth;
        for (uint32_t x = 0; x < uWidth; ++x)
        {
            pOut[x] = Collect(merged.data(), columns[x]);
        }
    }
    return sampled;
}

// How many times steeper than true the shading is drawn: mild country seen from far above would
// look flat. From the range alone, so that a fixed range gives equal shading.
float GetExaggeration(float fRange, const SVec3& size)
{
    constexpr float WANTED = 0.075F; // range over longer side that needs no help
    const float fSide = std::max(std::fabs(size.x), std::fabs(size.z));
    const float fSteepness = fRange / fSide;
    return fSteepness > 0.0F ? std::clamp(WANTED / fSteepness, 1.0F, 4.0F) : 1.0F;
}

uint8_t ToByte(float fValue)
{
    // Half a step more cuts to the nearest whole number; the order of arguments deals with NaN.
    const float fAbove = fValue + 0.5F;
    return static_cast<uint8_t>(std::min(255.0F, std::max(0.0F, fAbove)));
}

struct SShading
{
    FTints tints;
    float fLow = 0.0F;
    float fRange = 0.0F;
    float fScaleX = 0.0F; // slope of a difference over two pixels
    float fScaleZ = 0.0F;
};

void ShadePixel(
    const SShading& shading, float fHeight, float fSlopeX, float fSlopeZ, uint8_t* pPixel)
{
    const float fShare = shading.fRange > 0.0F ? (fHeight - shading.fLow) / shading.fRange : 0.0F;
    // The order of arguments makes the lowest tint of a NaN.
    const float fIndex = std::min(1.0F, std::max(0.0F, fShare)) * (TINT_COUNT - 1) + 0.5F;
    const std::array<float, 3>& tint = shading.tints[static_cast<size_t>(fIndex)];
    const float fLight = GetLight(fSlopeX, fSlopeZ);
    // Shadows keep some of their tint. What faces the suns more than flat ground goes towards
    // white.
    const float fShadow = std::min(1.0F, 0.18F + 0.82F * fLight);
    const float fGlare = std::min(0.6F, std::max(0.0F, fLight - 1.0F) * 0.9F);
    for (size_t c = 0; c < 3; ++c)
    {
        const float fLit = tint[c] * fShadow;
        pPixel[c] = ToByte(fLit + (255.0F - fLit) * fGlare);
    }
}

void ShadeRow(const SShading& shading,
              const std::vector<float>& heights,
              uint32_t uY,
              SReliefPicture& picture)
{
    const size_t nWidth = picture.uWidth;
    const size_t nAbove = uY > 0 ? uY - 1 : 0;
    const size_t nBelow = std::min(uY + 1, picture.uHeight - 1);
    const float* pHere = heights.data() + uY * nWidth;
    const float* pAbove = heights.data() + nAbove * nWidth;
    const float* pBelow = heights.data() + nBelow * nWidth;
    // At the borders the difference is over one pixel only.
    const float fScaleZ = nBelow - nAbove == 2 ? shading.fScaleZ : 2.0F * shading.fScaleZ;
    uint8_t* pPixel = picture.rgb.data() + uY * nWidth * 3;
    for (size_t x = 0; x < nWidth; ++x, pPixel += 3)
    {
        const size_t nLeft = x > 0 ? x - 1 : 0;
        const size_t nRight = std::min(x + 1, nWidth - 1);
        const float fScaleX = nRight - nLeft == 2 ? shading.fScaleX : 2.0F * shading.fScaleX;
        ShadePixel(shading,
                   pHere[x],
                   (pHere[nRight] - pHere[nLeft]) * fScaleX,
                   (pBelow[x] - pAbove[x]) * fScaleZ,
                   pPixel);
    }
}

void ChooseSize(uint32_t uSizeX,
                uint32_t uSizeZ,
                const SVec3& size,
                uint32_t uLongerSide,
                SReliefPicture& picture)
{
    picture.uWidth = uSizeX;
    picture.uHeight = uSizeZ;
    if (uLongerSide > 0)
    {
        const double dX = std::fabs(static_cast<double>(size.x));
        const double dZ = std::fabs(static_cast<double>(size.z));
        const double dPixels = uLongerSide / std::max(dX, dZ);
        picture.uWidth = std::max(2U, static_cast<uint32_t>(std::lround(dX * dPixels)));
        picture.uHeight = std::max(2U, static_cast<uint32_t>(std::lround(dZ * dPixels)));
    }
}

void Render(const float* pHeights,
            uint32_t uSizeX,
            uint32_t uSizeZ,
            const SVec3& size,
            const SReliefOptions& options,
            SReliefPicture& picture)
{
    ChooseSize(uSizeX, uSizeZ, size, options.uLongerSide, picture);
    const std::vector<float> heights =
        SampleHeights(pHeights, uSizeX, uSizeZ, picture.uWidth, picture.uHeight);
    float fLow = options.fLow;
    float fHigh = options.fHigh;
    // The range of what is shown: means of many vertices reach less far than the vertices.
    if (!(fHigh > fLow))
    {
        const auto [pLow, pHigh] = std::minmax_element(heights.begin(), heights.end());
        fLow = *pLow;
        fHigh = *pHigh;
    }
    const float fSteeper = GetExaggeration(fHigh - fLow, size);
    SShading shading{MakeTints(), fLow, fHigh - fLow, 0.0F, 0.0F};
    shading.fScaleX = fSteeper * 0.5F * static_cast<float>(picture.uWidth - 1) / std::fabs(size.x);
    shading.fScaleZ = fSteeper * 0.5F * static_cast<float>(picture.uHeight - 1) / std::fabs(size.z);

    picture.rgb.resize(static_cast<size_t>(picture.uWidth) * picture.uHeight * 3);
    for (uint32_t y = 0; y < picture.uHeight; ++y)
    {
        ShadeRow(shading, heights, y, picture);
    }
}

} // namespace

bool RenderRelief(const float* pHeights,
                  uint32_t uSizeX,
                  uint32_t uSizeZ,
                  const SVec3& size,
                  const SReliefOptions& options,
                  SReliefPicture& picture)
{
    if (pHeights == nullptr || !IsTerrainSizeValid(uSizeX, uSizeZ) || !IsSizeVectorValid(size) ||
        options.uLongerSide > TERRAIN_MAX_VERTICES)
    {
        return false;
    }
    try
    {
        Render(pHeights, uSizeX, uSizeZ, size, options, picture);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    return true;
}
