#pragma once

#include "host/HostTypes.h"

#include <string>

namespace fs
{
class ifile;
}
class CRTTIObject;
class CTCPARSE_KEYWORD;
class CTellurBitmap;
class CVertDataSet;
class IImage;
class ITellurFunction;
class ITerrainModification;

// What gives a vertex its weight when no mask does.
struct SBrushShape
{
    const uint8_t* pPixels = nullptr; // row by row, iWidth bytes each; borrowed from the brush
    int iWidth = 0;
    int iHeight = 0;
    float fExtent = 0.0F; // terrain units, not 0
    float fPower = 1.0F;
    float fHardness = 0.0F;
};

// One named brush: footprint, shape, strength and one function. Lengths are terrain units. Drags go
// through it to its function. Owned by its container, or by whoever made it.
class ITellurBrush
{
public:
    virtual ~ITellurBrush() = default;
    virtual void SetName(const char* pszName) = 0; // copied, null allowed
    virtual const char* GetName() const = 0;       // null when it has none
    virtual ITellurBrush* Clone() const = 0;       // owned by the caller

    // The steps of a drag are handed on to the function. Without one they answer 0, with one logged
    // line.
    virtual int
    Start(ITerrainModification* pModification, ViewId view, uint32_t uFlags, ViewPoint point) = 0;
    virtual int
    End(ITerrainModification* pModification, ViewId view, uint32_t uFlags, ViewPoint point) = 0;
    virtual int OnMouseMove(ITerrainModification* pModification,
                            ViewId view,
                            uint32_t uFlags,
                            ViewPoint point,
                            uintptr_t uExtra1,
                            uintptr_t uExtra2) = 0;
    virtual bool Render(ITerrainModification* pModification, const SVec3* pPickedPoint) = 0;

    virtual void SetPowerModifier(float fPower) = 0; // multiplies every weight
    virtual float GetPowerModifier() const = 0;
    virtual void SetUsageDensity(float fDensity) = 0; // kept, no editing step reads it
    virtual float GetUsageDensity() const = 0;
    virtual void SetFadeFactor(float fFade) = 0; // stroke length until the effect is gone, 0: never
    virtual float GetFadeFactor() const = 0;
    virtual void SetHardness(float fHardness) = 0; // added to every non-black sample
    virtual float GetHardness() const = 0;
    virtual void SetVerticalDistance(float fDistance) = 0; // height band, 0: none
    virtual float GetVerticalDistance() const = 0;

    virtual void SetBitmap(CTellurBitmap* pBitmap) = 0; // takes ownership
    virtual IImage* GetBitmapImage() = 0;               // borrowed, null without one
    virtual const IImage* GetBitmapImage() const = 0;
    virtual const char* GetBitmapPath() const = 0; // null without an image
    virtual bool LoadBitmap(const char* pszPath) = 0;
    virtual bool IsBitmapChanged() const = 0; // since the preview was made
    virtual void SetBitmapChanged(bool bChanged) = 0;

    virtual void SetFunction(ITellurFunction* pFunction) = 0; // takes ownership
    virtual const char* GetFunctionName() const = 0;          // null, one logged line, without one
    virtual CRTTIObject* GetRTTIObject() = 0;                 // the function's; null without one
    virtual const CRTTIObject* GetRTTIObject() const = 0;

    virtual void SetMask(const char* pszPath) = 0; // null changes nothing
    virtual const std::string& GetMaskPath() const = 0;
    virtual bool IsMaskEnabled() const = 0;
    virtual void SetMaskEnabled(bool bEnable) = 0;
    // Multiplies the weights by the mask, which is stretched over terrainBox.
    virtual void ApplyMask(CVertDataSet& set, const SExtents& terrainBox) = 0;
    virtual uint32_t GetMaskHandle() const = 0; // overlay registration, 0 without a mask
    virtual float GetMaskXSize(float fLength, int iRepeats) const = 0; // 0 without a mask
    virtual bool SetCursor() = 0;

    virtual void SetExtent(float fExtent) = 0; // side of the square footprint
    virtual float GetExtent() const = 0;
    // The footprint around (fX, fZ): raw, and clipped to a terrain of the given sizes; y is 0 in
    // both. Returns clipped.
    virtual SExtents& GetExtents(
        SExtents& clipped, float fX, float fZ, SExtents& raw, float fSizeX, float fSizeZ) const = 0;
    // Sets the weights of the set from shape, power and hardness.
    virtual void CalculateWeights(CVertDataSet& set, const SVec3& center) = 0;

    // Tells in numbers what CalculateWeights goes by. False where numbers do not tell all of it:
    // without an image, with a mask.
    virtual bool GetShape(SBrushShape& /*shape*/) const { return false; }

    virtual bool Save(fs::ifile& file, int iIndent) const = 0;
    // pBlock: first node of the parsed block.
    virtual bool Load(const CTCPARSE_KEYWORD* pBlock) = 0;
};
