#include "framework/drawing/SystemColors.h"

#include "framework/core/IWindowSystem.h"
#include "framework/drawing/IDrawingSystem.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr int DARKEST_FACE = 0x20;   // leaves room for two shades below
constexpr int BRIGHTEST_FACE = 0xEF; // leaves room for two shades above
constexpr int SHADE_STEP = 8;        // of 255; what 5 bits can tell apart

// What edges are made of, from dark to bright.
struct SShades
{
    ColorRef uDarkShadow = 0;
    ColorRef uShadow = 0;
    ColorRef uFace = 0;
    ColorRef uLight = 0;
    ColorRef uHighlight = 0;
};

int GetBrightness(ColorRef uColor)
{
    return (GetRed(uColor) + GetGreen(uColor) + GetBlue(uColor)) / 3;
}

template <class TChange> ColorRef ChangeChannels(ColorRef uColor, TChange&& change)
{
    const auto changed = [&change](int iChannel)
    {
        return static_cast<uint8_t>(std::clamp(change(iChannel), 0, 255));
    };
    return MakeColor(changed(GetRed(uColor)), changed(GetGreen(uColor)), changed(GetBlue(uColor)));
}

// Makes shades of a face alone, which is first moved to where two shades fit on either side of it.
SShades MakeShades(ColorRef uPaletteFace)
{
    const int iBrightness = GetBrightness(uPaletteFace);
    const int iMove = std::clamp(iBrightness, DARKEST_FACE, BRIGHTEST_FACE) - iBrightness;
    SShades shades;
    shades.uFace = ChangeChannels(uPaletteFace, [iMove](int i) { return i + iMove; });
    // A bright face takes highlights up to white; on a dark one that would glare.
    const int iPart = iBrightness >= 128 ? 2 : 8;
    const auto lighten = [iPart](int iChannel, int iSteps)
    {
        return iChannel + std::max(iSteps * SHADE_STEP, iSteps * (255 - iChannel) / iPart);
    };
    shades.uDarkShadow = ChangeChannels(shades.uFace, [](int i) { return i * 3 / 8; });
    shades.uShadow = ChangeChannels(shades.uFace, [](int i) { return i * 5 / 8; });
    shades.uLight = ChangeChannels(shades.uFace, [&](int i) { return lighten(i, 1); });
    shades.uHighlight = ChangeChannels(shades.uFace, [&](int i) { return lighten(i, 2); });
    return shades;
}

// Whether each shade is brighter than the one before by as much as 16 bits a pixel can show.
bool AreDistinct(const SShades& shades)
{
    const std::array<ColorRef, 5> order = {
        shades.uDarkShadow, shades.uShadow, shades.uFace, shades.uLight, shades.uHighlight};
    return std::adjacent_find(order.begin(),
                              order.end(),
                              [](ColorRef uDark, ColorRef uBright) {
                                  return GetBrightness(uBright) - GetBrightness(uDark) < SHADE_STEP;
                              }) == order.end();
}

SShades GetShades(const IDrawingSystem& system)
{
    const SShades given = {system.GetPaletteColor(ESystemColor::DarkShadow),
                           system.GetPaletteColor(ESystemColor::ButtonShadow),
                           system.GetPaletteColor(ESystemColor::ButtonFace),
                           system.GetPaletteColor(ESystemColor::Light3D),
                           system.GetPaletteColor(ESystemColor::ButtonHighlight)};
    return AreDistinct(given) ? given : MakeShades(given.uFace);
}

ColorRef GetClassicColor(ESystemColor eColor)
{
    switch (eColor)
    {
    case ESystemColor::ButtonFace:
        return 0xC0C0C0;
    case ESystemColor::ButtonShadow:
    case ESystemColor::GrayText:
        return 0x808080;
    case ESystemColor::Light3D:
        return 0xDFDFDF;
    case ESystemColor::ButtonHighlight:
    case ESystemColor::Window:
    case ESystemColor::HighlightText:
        return 0xFFFFFF;
    case ESystemColor::Highlight:
        return MakeColor(0, 0, 0x80);
    case ESystemColor::DarkShadow:
    case ESystemColor::ButtonText:
    case ESystemColor::WindowText:
        break;
    }
    return 0;
}

ColorRef GetColorOf(const IDrawingSystem& system, ESystemColor eColor)
{
    switch (eColor)
    {
    case ESystemColor::ButtonFace:
        return GetShades(system).uFace;
    case ESystemColor::ButtonShadow:
        return GetShades(system).uShadow;
    case ESystemColor::ButtonHighlight:
        return GetShades(system).uHighlight;
    case ESystemColor::Light3D:
        return GetShades(system).uLight;
    case ESystemColor::DarkShadow:
        return GetShades(system).uDarkShadow;
    default:
        return system.GetPaletteColor(eColor);
    }
}

int GetBorder(double fScale)
{
    // The comparison takes a scale that is no number to 1, too.
    return fScale > 1 ? static_cast<int>(std::round(std::min(fScale, 100.0))) : 1;
}

} // namespace

ColorRef GetSystemColor(ESystemColor eColor)
{
    IWindowSystem* pSystem = OpenWindowSystem();
    const bool bPalette = pSystem != nullptr && pSystem->GetDrawing().IsReady();
    return bPalette ? GetColorOf(pSystem->GetDrawing(), eColor) : GetClassicColor(eColor);
}

int GetBorderWidth(double fScale)
{
    return GetBorder(fScale);
}

int GetBorderHeight(double fScale)
{
    return GetBorder(fScale);
}
