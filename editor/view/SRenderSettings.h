#pragma once

#include "editor/view/SGroundMark.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <string>

class CPaintLayer;
class ITexture;

// How a view wants its picture. Plain values that the view keeps and changes freely from frame to
// frame; the renderer keeps none of them.
struct SRenderSettings
{
    static constexpr float LEAST_QUALITY = 0.05F; // lower ones count as this

    // Where the light comes from: yaw in degrees from +x towards +z, pitch above the horizon.
    float fSunYaw = 215.0F;
    float fSunPitch = 38.0F;
    float fAmbient = 0.38F; // light without the sun, 0..1

    bool bWireFrame = false;   // edges of the triangles that are really drawn
    bool bGrid = false;        // cell lines, and every 32nd stronger
    bool bFlatShading = false; // facets of the drawn triangles instead of the terrain's normals

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

    // The file of the material shown while the terrain names none; empty: plain grey.
    std::string strDefaultMaterial;

    SColor skyTop = {0.36F, 0.47F, 0.60F, 1.0F};
    SColor skyBottom = {0.73F, 0.78F, 0.82F, 1.0F};
    float fHaze = 0.22F; // how far distant ground takes the colour of the sky, 0..1
    bool bMask = true;   // false: the overlay of the terrain keeps nothing now and is left out
    SColor maskColor = {0.80F, 0.16F, 0.22F, 0.55F}; // where the mask keeps brushes off
};
