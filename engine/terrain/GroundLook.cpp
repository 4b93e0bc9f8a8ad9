#include "engine/terrain/GroundLook.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

constexpr float RADIANS = 0.017453292519943F;
constexpr float LEAST_RANGE = 0.02F; // of the terrain's side

// Brightness of sun and sky where all light comes from one of them.
constexpr float SUN_LIGHT = 1.36F;
constexpr float SKY_LIGHT = 0.94F;

constexpr SLookEdge LOW_SUN = {26.0F, 4.0F}; // degrees: its colours, from none to all
constexpr SLookEdge CLOUDS = {0.6F, 0.95F};  // of ambient light

// A clear day, its first and last light, a day with clouds. Sun, sky, ground as SDayLight.
constexpr SDayLight DAY = {{},
                           {1.02F, 0.99F, 0.94F},
                           {0.92F, 0.99F, 1.12F},
                           {0.42F, 0.39F, 0.33F},
                           {0.36F, 0.48F, 0.62F, 1.0F},
                           {0.74F, 0.79F, 0.83F, 1.0F}};
constexpr SDayLight DAWN = {{},
                            {1.16F, 0.88F, 0.78F},
                            {0.88F, 0.92F, 1.16F},
                            {0.40F, 0.36F, 0.36F},
                            {0.36F, 0.43F, 0.60F, 1.0F},
                            {0.82F, 0.75F, 0.74F, 1.0F}};
constexpr SDayLight EVENING = {{},
                               {1.26F, 0.84F, 0.56F},
                               {0.92F, 0.90F, 1.10F},
                               {0.44F, 0.34F, 0.27F},
                               {0.29F, 0.36F, 0.53F, 1.0F},
                               {0.84F, 0.73F, 0.62F, 1.0F}};
constexpr SDayLight CLOUDED = {{},
                               {1.0F, 1.0F, 1.0F},
                               {0.99F, 1.0F, 1.03F},
                               {0.45F, 0.44F, 0.42F},
                               {0.58F, 0.62F, 0.66F, 1.0F},
                               {0.76F, 0.78F, 0.79F, 1.0F}};

float Step(const SLookEdge& edge, float fValue)
{
    const float t = std::clamp((fValue - edge.fFrom) / (edge.fTo - edge.fFrom), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

SVec3 Mix(const SVec3& a, const SVec3& b, float fShare)
{
    return {a.x + (b.x - a.x) * fShare, a.y + (b.y - a.y) * fShare, a.z + (b.z - a.z) * fShare};
}

SColor Mix(const SColor& a, const SColor& b, float fShare)
{
    return {a.r + (b.r - a.r) * fShare,
            a.g + (b.g - a.g) * fShare,
            a.b + (b.b - a.b) * fShare,
            a.a + (b.a - a.a) * fShare};
}

SDayLight Mix(const SDayLight& a, const SDayLight& b, float fShare)
{
    return {{},
            Mix(a.sun, b.sun, fShare),
            Mix(a.sky, b.sky, fShare),
            Mix(a.bounce, b.bounce, fShare),
            Mix(a.skyTop, b.skyTop, fShare),
            Mix(a.skyBottom, b.skyBottom, fShare)};
}

float Hash(int32_t iX, int32_t iZ)
{
    uint32_t u = static_cast<uint32_t>(iX) * 374761393U + static_cast<uint32_t>(iZ) * 668265263U;
    u = (u ^ (u >> 13U)) * 1274126177U;
    return static_cast<float>((u ^ (u >> 16U)) & 0xFFFFU) / 65535.0F;
}

SVec3 Scale(const SVec3& vec, float fBy)
{
    return {vec.x * fBy, vec.y * fBy, vec.z * fBy};
}

} // namespace

SDayLight GetDayLight(float fYaw, float fPitch, float fAmbient)
{
    const float fEast = std::cos(fYaw * RADIANS);
    const SDayLight low = Mix(EVENING, DAWN, 0.5F + 0.5F * fEast);
    SDayLight day = Mix(Mix(DAY, low, Step(LOW_SUN, fPitch)), CLOUDED, Step(CLOUDS, fAmbient));
    day.way = {fEast * std::cos(fPitch * RADIANS),
               std::sin(fPitch * RADIANS),
               std::sin(fYaw * RADIANS) * std::cos(fPitch * RADIANS)};
    day.sun = Scale(day.sun, (1.0F - fAmbient) * SUN_LIGHT);
    day.sky = Scale(day.sky, fAmbient * SKY_LIGHT);
    day.bounce = Scale(day.bounce, fAmbient * SKY_LIGHT);
    return day;
}

int FindDayTime(float fYaw, float fPitch, float fAmbient)
{
    constexpr float NEAR = 0.005F; // a file has fewer digits
    const auto* pFound = std::find_if(std::begin(DAY_TIMES),
                                      std::end(DAY_TIMES),
                                      [&](const SDayTime& time)
                                      {
                                          return std::fabs(time.fYaw - fYaw) < NEAR &&
                                                 std::fabs(time.fPitch - fPitch) < NEAR &&
                                                 std::fabs(time.fAmbient - fAmbient) < NEAR;
                                      });
    return pFound != std::end(DAY_TIMES) ? static_cast<int>(pFound - DAY_TIMES) : -1;
}

void GetTintRange(float fLow, float fHigh, float fSide, float& fFrom, float& fTo)
{
    fFrom = fLow;
    fTo = fLow + std::max({fHigh - fLow, fSide * LEAST_RANGE, 1e-3F});
}

// Value noise of five octaves.
float GetRoughness(float fX, float fZ)
{
    constexpr SLookEdge CELL = {0.0F, 1.0F};
    float fSum = 0.0F;
    float fShare = 0.5F;
    for (int i = 0; i < 5; ++i, fX *= 2.1F, fZ *= 2.1F, fShare *= PATCH_FALL)
    {
        const float fCellX = std::floor(fX);
        const float fCellZ = std::floor(fZ);
        const auto iX = static_cast<int32_t>(fCellX);
        const auto iZ = static_cast<int32_t>(fCellZ);
        const float u = Step(CELL, fX - fCellX);
        const float v = Step(CELL, fZ - fCellZ);
        const float fTop = Hash(iX, iZ) + (Hash(iX + 1, iZ) - Hash(iX, iZ)) * u;
        const float fLow = Hash(iX, iZ + 1) + (Hash(iX + 1, iZ + 1) - Hash(iX, iZ + 1)) * u;
        fSum += fShare * (fTop + (fLow - fTop) * v);
    }
    return (fSum - PATCH_MEAN) * 2.0F;
}

SColor GetGroundTint(const SGroundTints& tints, float fShare, float fUp, float fRough)
{
    const float fSteep = 1.0F - fUp;
    const float fHigh = fShare + PATCH_EFFECT.x * fRough;
    SColor color = Mix(tints.colors[0], tints.colors[1], Step(tints.middle, fHigh));
    color = Mix(color, tints.colors[2], Step(tints.high, fHigh));
    color = Mix(color, tints.colors[3], Step(tints.rock, fSteep + PATCH_EFFECT.y * fRough));
    const float fBright = 1.0F + PATCH_EFFECT.z * fRough;
    color = {color.r * fBright, color.g * fBright, color.b * fBright, color.a};
    const float fSnow = Step(tints.snow, fHigh) * (1.0F - Step(tints.bare, fSteep));
    return Mix(color, tints.colors[4], fSnow);
}

SVec3 GetLitSquares(
    const SColor& color, const SDayLight& day, const SVec3& normal, float fSun, float fSky)
{
    const float fFacing =
        std::max(0.0F, normal.x * day.way.x + normal.y * day.way.y + normal.z * day.way.z);
    const SVec3 around = Scale(Mix(day.bounce, day.sky, 0.5F + 0.5F * normal.y), fSky);
    return {color.r * color.r * (day.sun.x * fFacing * fSun + around.x),
            color.g * color.g * (day.sun.y * fFacing * fSun + around.y),
            color.b * color.b * (day.sun.z * fFacing * fSun + around.z)};
}

SColor GetSkyColor(const SColor& top, const SColor& bottom, float fRise)
{
    const float fUp = std::clamp(fRise, 0.0F, 1.0F);
    const float fLeft = 1.0F - SKY_FALL * std::clamp(-fRise, 0.0F, 1.0F);
    const SColor color = Mix(bottom, top, fUp * (1.0F + SKY_RISE) / (fUp + SKY_RISE));
    return {color.r * fLeft, color.g * fLeft, color.b * fLeft, color.a};
}

float GetDither(uint32_t uX, uint32_t uY)
{
    const float fAt =
        (static_cast<float>(uX) + 0.5F) * DITHER.x + (static_cast<float>(uY) + 0.5F) * DITHER.y;
    return (fAt - std::floor(fAt) - 0.5F) * DITHER.z;
}
