#pragma once

#include "host/HostTypes.h"

#include <cstddef>

class IImage;

// Channels of the bitmap: what is shown of it and what painting changes. Texels are four bytes, red
// first.
enum EPaintChannel : uint32_t
{
    PAINT_FREE_COLORS = 0x001, // channels count; otherwise texels are whole colours of a palette
    PAINT_RGB_VISIBLE = 0x002,
    PAINT_RGB_EDITABLE = 0x004,
    PAINT_RED_VISIBLE = 0x008,
    PAINT_RED_EDITABLE = 0x010,
    PAINT_GREEN_VISIBLE = 0x020,
    PAINT_GREEN_EDITABLE = 0x040,
    PAINT_BLUE_VISIBLE = 0x080,
    PAINT_BLUE_EDITABLE = 0x100,
    PAINT_ALPHA_VISIBLE = 0x200,
    PAINT_ALPHA_EDITABLE = 0x400,
};

// Where the texels of the bitmap lie along one side of the terrain.
enum class ETexelMapping : uint32_t
{
    Centers = 0,  // texel i covers a share of the side, its position is the middle of that
    Vertices = 1, // the first and the last texel lie on the terrain's edges
};

constexpr size_t PAINT_TEXEL_BYTES = 4;

// What a paint stroke does to one texel.
class ITerrain2DFunction
{
public:
    virtual ~ITerrain2DFunction() = default;
    virtual const char* GetName() const = 0;
    virtual bool IsUsableFor(bool bPaletteImage) const = 0;
    // pTexel: four bytes, changed in place. fWeight: 0 to 1 from the brush shape. True when the
    // texel was processed.
    virtual bool Apply(uint8_t* pTexel, float fWeight, float fStrength, uint32_t uExtra) = 0;
};

// Paints the terrain-type bitmap and shows it on the terrain. Boxes: x and z count, y is ignored;
// terrain units. UI thread.
class IPaintLayer
{
public:
    virtual ~IPaintLayer() = default;
    // Starts painting on a copy of the 32-bit work image. Images are borrowed for the call.
    virtual void Begin(const IImage* pWorkImage, const IImage* pBrushShape, uint32_t uChannels) = 0;
    virtual void End() = 0;
    virtual const IImage* GetImage() const = 0; // borrowed; null when nothing is painted on
    // Calls the function for each texel under the box whose weight is above 0.
    virtual void
    Paint(const SExtents& box, ITerrain2DFunction* pFunction, float fPower, float fHardness) = 0;
    // Brush outline and shape; a null argument leaves what was set.
    virtual void SetBrush(const SExtents* pBox, const IImage* pBrushShape) = 0;
    virtual void SetChannelMask(uint32_t uChannels) = 0;
    virtual void SetBlendFactor(float fFactor) = 0; // 0 terrain alone, 1 bitmap alone
    virtual const char* GetMaterial() const = 0;
    virtual void SetMaterial(const char* pszName) = 0;
    virtual void SetTexelToVertexMapping(bool bOn) = 0;
    virtual ETexelMapping GetTexelMapping() const = 0;
};
