#pragma once

#include "host/HostTypes.h"

#include <cstddef>

class IImage;

// The paint layer shows the terrain-type bitmap on the terrain while it is painted, and runs the
// loop over its texels; what happens to a texel is the plug-in's. EditorHost::GetPaintLayer gives
// the one of the host. UI thread.
//
// Order of calls, all by the plug-in: SetMaterial, SetBlendFactor and SetTexelToVertexMapping at
// any time, they last; Begin when the painting mode becomes current; then SetBrush as the cursor
// moves and Paint for each point of a stroke, which calls ITerrain2DFunction::Apply before it
// returns, or ITerrain2DRowFunction::ApplyRow of a function that has that, too; End when the mode
// is left. Begin again, with other texels, is how undo shows its result. Each call that changes
// what is seen has the views redrawn by the host. Apply and ApplyRow must not call the layer.

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

// What a paint stroke does to one texel. Made and owned by the plug-in.
class ITerrain2DFunction
{
public:
    virtual ~ITerrain2DFunction() = default;
    virtual const char* GetName() const = 0; // static text, as dialogs and scripts name it
    // Whether it may paint a bitmap with a palette (true) or without.
    virtual bool IsUsableFor(bool bPaletteImage) const = 0;
    // pTexel: four bytes, borrowed, red first, changed in place. fWeight: above 0, at most 1,
    // from the brush shape. fStrength: the power of Paint. uExtra: 0. True when the texel was
    // processed.
    virtual bool Apply(uint8_t* pTexel, float fWeight, float fStrength, uint32_t uExtra) = 0;
};

// Boxes: x and z count, y is ignored; terrain units, they may reach beyond the terrain.
class IPaintLayer
{
public:
    virtual ~IPaintLayer() = default;
    // Starts painting on a copy of the work image, of 32 bits a texel; another format is one logged
    // line, and nothing happens. pBrushShape: as in SetBrush; null: no shape. uChannels:
    // EPaintChannel. Images are borrowed for the call.
    virtual void Begin(const IImage* pWorkImage, const IImage* pBrushShape, uint32_t uChannels) = 0;
    virtual void End() = 0; // drops the copy and the brush; nothing is shown any more
    // The bitmap as it is now, borrowed until the next Begin or End; null when nothing is painted
    // on.
    virtual const IImage* GetImage() const = 0;
    // Calls the function, borrowed for the call, for each texel under the box whose weight is above
    // 0, row by row, or for each row (host/ITerrain2DRowFunction.h). fPower is handed on, fHardness
    // (0 to 1) is added to what the shape has. Nothing without a bitmap, a shape, a terrain or a
    // function.
    virtual void
    Paint(const SExtents& box, ITerrain2DFunction* pFunction, float fPower, float fHardness) = 0;
    // Sets the outline of the brush and its shape (whose luminance counts, stretched over the box),
    // which are copied; a null argument leaves what was set.
    virtual void SetBrush(const SExtents* pBox, const IImage* pBrushShape) = 0;
    virtual void SetChannelMask(uint32_t uChannels) = 0; // EPaintChannel, what is shown
    virtual void SetBlendFactor(float fFactor) = 0; // 0 terrain alone, 1 bitmap alone; kept within
    // Name of the material that is shown under the bitmap; borrowed until it is set, "" for none.
    virtual const char* GetMaterial() const = 0;
    virtual void SetMaterial(const char* pszName) = 0;  // copied; null is ""
    virtual void SetTexelToVertexMapping(bool bOn) = 0; // true: ETexelMapping::Vertices
    virtual ETexelMapping GetTexelMapping() const = 0;  // Centers at first
};
