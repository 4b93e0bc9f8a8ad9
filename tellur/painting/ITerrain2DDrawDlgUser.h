#pragma once

#include "host/IPaintLayer.h"

#include <cstdint>

class IImage;
class IPalette;

// The painting mode as the draw dialog sees it. Texts and the palette are borrowed until the mode
// changes them. UI thread.
class ITerrain2DDrawDlgUser
{
public:
    virtual ~ITerrain2DDrawDlgUser() = default;
    virtual const char* GetBrushShapeName() const = 0; // file name, may be empty
    // pImage: borrowed and copied; null keeps the shape and takes the name alone.
    virtual void SetBrushShape(const IImage* pImage, const char* pszPath) = 0;
    virtual void SetFunction(const char* pszName) = 0; // unknown ones are ignored
    virtual const char* GetFunctionName() const = 0;   // null without a function
    virtual const IPalette* GetPalette() const = 0;    // of the bitmap file, null for none
    virtual uint32_t GetChannelMask() const = 0;       // EPaintChannel
    virtual void SetChannelMask(uint32_t uChannels) = 0;
    virtual float GetPower() const = 0; // 0 to 1
    virtual void SetPower(float fPower) = 0;
    virtual float GetHardness() const = 0; // 0 to 1
    virtual void SetHardness(float fHardness) = 0;
    virtual const char* GetPaintMaterial() const = 0; // null without a paint layer
    virtual void SetPaintMaterial(const char* pszName) = 0;
    virtual void SetTexelMapping(bool bVertices) = 0;
    virtual ETexelMapping GetTexelMapping() const = 0;
    // Writes how far the extent's slider reaches, a quarter of the terrain's width in terrain
    // units, and the width of the bitmap in texels; 0 for what is not there.
    virtual void GetMappingSizes(float* pLength, uint32_t* pWidth) const = 0;
    virtual void SetColor(const float* pColor) = 0; // red, green, blue, alpha, 0 to 1
    virtual void Undo() = 0;
    virtual void Redo() = 0;
};
