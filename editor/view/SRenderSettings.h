#pragma once

#include "editor/view/SGroundMark.h"
#include "engine/terrain/GroundLook.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <optional>
#include <string>

class CPaintLayer;
class ITexture;

// How a view wants its picture. Plain values that the view keeps and changes freely from frame to
// frame; the renderer keeps none of them.
struct SRenderSettings
{
    static constexpr float LEAST_QUALITY = 0.05F; // lower ones count as this

    // Where the light comes from: yaw in degrees from +x towards +z, pitch above the horizon.
    // Colours of light and sky follow it.
    float fSunYaw = DAY_TIMES[0].fYaw;
    float fSunPitch = DAY_TIMES[0].fPitch;
    float fAmbient = DAY_TIMES[0].fAmbient; // light without the sun, 0..1

    void SetTime(const SDayTime& time)
    {
        fSunYaw = time.fYaw;
        fSunPitch = time.fPitch;
        fAmbient = time.fAmbient;
    }

    int FindTime() const { return FindDayTime(fSunYaw, fSunPitch, fAmbient); }

    bool bWireFrame = false; // edges of the triangles that are really drawn
    bool bGrid = false;      // cell lines, and every 32nd stronger
    // Ground steeper than the angle is orange, up to it from five degrees less blue.
    bool bSteep = false;
    float fSteepDegrees = 45.0F;
    bool bFlatShading = false; // facets of the drawn triangles instead of the terrain's normals

    // What a card does at no cost that is felt, and a processor that draws does not.
    bool bSmoothEdges = false; // a pixel is covered in quarters
    bool bPatches = false;     // natural ground is patchy

    // The largest error of a triangle in device pixels at full quality. Lower is finer.
    float fDetailPixels = 1.5F;
    // LEAST_QUALITY..1, lower draws coarser: the view lowers it when frames take long.
    float fQuality = 1.0F;

    // A frame sends about so many bytes of a terrain that comes in or has changed, no more. Whoever
    // lowers this draws again until the statistics say that all of it is there.
    uint64_t uMostNewBytes = UINT64_MAX;

    // The terrain-type bitmap, stretched over the whole terrain; null: none. Borrowed for the call.
    ITexture* pTypeBitmap = nullptr;
    float fTypeBlend = 0.6F; // 0: ground only, 1: bitmap only

    // What is being painted takes the place of the terrain-type bitmap while it is shown. Null:
    // none. Borrowed for the call.
    const CPaintLayer* pPaintLayer = nullptr;

    SGroundMark mark;        // of the tool at hand
    float fMarkTint = 0.72F; // strength of its colour at full weight, 0..1

    // The file of the material shown while the terrain names none; empty: natural ground.
    std::string strDefaultMaterial;

    std::optional<SColor> skyTop; // nothing: that of the time of day
    std::optional<SColor> skyBottom;
    float fHaze = 0.22F; // how far distant ground takes the colour of the sky, 0..1
    bool bMask = true;   // false: the overlay of the terrain keeps nothing now and is left out
    SColor maskColor = {0.80F, 0.16F, 0.22F, 0.55F}; // where the mask keeps brushes off
};
