#pragma once

#include "framework/drawing/IDrawingSystem.h"

// Font and palette of the Qt application.
class CDrawingSystem final : public IDrawingSystem
{
public:
    bool IsReady() const override;
    ColorRef GetPaletteColor(ESystemColor eColor) const override;
    SSize GetTextSize(const char* pszUtf8, double fScale) const override;
    void CoverText(const char* pszUtf8,
                   double fScale,
                   const SRect& box,
                   uint8_t* pCoverage,
                   size_t uStride) const override;
};
