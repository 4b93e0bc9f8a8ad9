#pragma once

#include "host/Export.h"
#include "host/HostTypes.h"

#include <array>
#include <cstdint>

// How ground and sky look, in numbers: the views' shaders get them as they are, and pictures that
// are drawn without a card go by the functions below, so that a level looks alike in both. Colours
// are those of the screen; light is multiplied with their squares, which are nearly what a screen
// sends out.

// From where on something shows until it covers all.
struct SLookEdge
{
    float fFrom = 0.0F;
    float fTo = 1.0F;
};

// Natural ground: its tint by height, rock where it is steep, snow on the heights. Muted, so that
// marks and painted colours stand out from it.
struct SGroundTints
{
    static constexpr int COLORS = 5; // low, middle and high ground, rock, snow

    std::array<SColor, COLORS> colors = {{{0.45F, 0.49F, 0.36F, 1.0F},
                                          {0.56F, 0.56F, 0.42F, 1.0F},
                                          {0.63F, 0.57F, 0.47F, 1.0F},
                                          {0.55F, 0.51F, 0.45F, 1.0F},
                                          {0.91F, 0.92F, 0.93F, 1.0F}}};
    // Of middle and high ground, and of snow: shares of the level's range of heights. Of rock, and
    // of where no snow stays: what the y of a normal lacks to 1.
    SLookEdge middle = {0.04F, 0.34F};
    SLookEdge high = {0.38F, 0.68F};
    SLookEdge snow = {0.80F, 0.92F};
    SLookEdge rock = {0.05F, 0.20F};
    SLookEdge bare = {0.10F, 0.24F};
};

// The light of a time of day. Lights are factors of the squares of colours.
struct SDayLight
{
    SVec3 way;    // towards the sun
    SVec3 sun;    // on ground that faces it
    SVec3 sky;    // from above
    SVec3 bounce; // from below
    SColor skyTop;
    SColor skyBottom; // at the horizon and below it
};

// A place of the sun that a person can choose by name.
struct SDayTime
{
    const char* pszName;
    float fYaw; // as for GetDayLight
    float fPitch;
    float fAmbient;
};

// The first one is what a new installation has.
inline constexpr SDayTime DAY_TIMES[] = {
    {"As on maps", 215.0F, 38.0F, 0.38F},
    {"Dawn", 8.0F, 7.0F, 0.42F},
    {"Morning", 40.0F, 30.0F, 0.36F},
    {"Noon", 90.0F, 64.0F, 0.34F},
    {"Afternoon", 145.0F, 36.0F, 0.36F},
    {"Evening", 174.0F, 8.0F, 0.40F},
    {"Overcast", 215.0F, 58.0F, 0.85F},
};

// Steps across and down and width of a pattern that lies evenly between -0.5 and 0.5 in any part of
// a picture. Added before a colour becomes bytes it makes an even gradient of what were bands, and
// leaves colours that are bytes already as they are.
inline constexpr SVec3 DITHER = {0.7548777F, 0.5698403F, 0.98F / 255.0F};

// Patches as plants grow them: how many lie along the longer side of a terrain, what each of their
// five sizes counts beside the larger one before it, their mean, and what one does to the share of
// the heights, to the steepness and to the brightness.
inline constexpr float PATCHES = 60.0F;
inline constexpr float PATCH_FALL = 0.66F;
inline constexpr float PATCH_MEAN = 0.643F;
inline constexpr SVec3 PATCH_EFFECT = {0.07F, 0.04F, 0.26F};

// How fast the colour of the sky leaves that of the horizon, and how much of it is missing straight
// below.
inline constexpr float SKY_RISE = 0.22F;
inline constexpr float SKY_FALL = 0.16F;

// Degrees: yaw from +x, the east, towards +z, the south; pitch above the horizon. fAmbient: share
// of the light that comes from the sky, 0 to 1.
TELLUR_API SDayLight GetDayLight(float fYaw, float fPitch, float fAmbient);

// Which of DAY_TIMES that is; -1 for another one.
TELLUR_API int FindDayTime(float fYaw, float fPitch, float fAmbient);

// The heights that tints go by, x to y: those of the ground, but at least so much that the first
// strokes on flat ground raise no snow. fSide: the longer one of the terrain.
TELLUR_API void GetTintRange(float fLow, float fHigh, float fSide, float& fFrom, float& fTo);

// What patches make of a place, about -1 to 1; places are counted in patches.
TELLUR_API float GetRoughness(float fX, float fZ);

// fShare: of the range of heights. fUp: y of the normal. fRough: see GetRoughness, 0 for ground
// without patches.
TELLUR_API SColor GetGroundTint(const SGroundTints& tints, float fShare, float fUp, float fRough);

// What light makes of a colour: the squares of what is shown, before any is cut off at 1.
TELLUR_API SVec3 GetLitSquares(
    const SColor& color, const SDayLight& day, const SVec3& normal, float fSun, float fSky);

// fRise: y of the direction that is looked in.
TELLUR_API SColor GetSkyColor(const SColor& top, const SColor& bottom, float fRise);

// What is added to a colour in this pixel.
TELLUR_API float GetDither(uint32_t uX, uint32_t uY);
