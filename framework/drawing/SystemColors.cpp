#include "framework/drawing/SystemColors.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

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

ColorRef GetPaletteColor(const QPalette& palette, QPalette::ColorRole eRole)
{
    const QColor color = palette.color(QPalette::Active, eRole);
    return MakeColor(static_cast<uint8_t>(color.red()),
                     static_cast<uint8_t>(color.green()),
                     static_cast<uint8_t>(color.blue()));
}

SShades GetShades(const QPalette& palette)
{
    const SShades given = {GetPaletteColor(palette, QPalette::Shadow),
                           GetPaletteColor(palette, QPalette::Dark),
                           GetPaletteColor(palette, QPalette::Button),
                           GetPaletteColor(palette, QPalette::Midlight),
                           GetPaletteColor(palette, QPalette::Light)};
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

ColorRef GetColorOf(const QPalette& palette, ESystemColor eColor)
{
    switch (eColor)
    {
    case ESystemColor::ButtonFace:
        return GetShades(palette).uFace;
    case ESystemColor::ButtonShadow:
        return GetShades(palette).uShadow;
    case ESystemColor::ButtonHighlight:
        return GetShades(palette).uHighlight;
    case ESystemColor::Light3D:
        return GetShades(palette).uLight;
    case ESystemColor::DarkShadow:
        return GetShades(palette).uDarkShadow;
    case ESystemColor::ButtonText:
        return GetPaletteColor(palette, QPalette::ButtonText);
    case ESystemColor::Window:
        return GetPaletteColor(palette, QPalette::Base);
    case ESystemColor::WindowText:
        return GetPaletteColor(palette, QPalette::Text);
    case ESystemColor::Highlight:
        return GetPaletteColor(palette, QPalette::Highlight);
    case ESystemColor::HighlightText:
        return GetPaletteColor(palette, QPalette::HighlightedText);
    case ESystemColor::GrayText:
        break;
    }
    const QColor gray = palette.color(QPalette::Disabled, QPalette::Text);
    return MakeColor(static_cast<uint8_t>(gray.red()),
                     static_cast<uint8_t>(gray.green()),
                     static_cast<uint8_t>(gray.blue()));
}

int GetBorder(double fScale)
{
    return fScale > 1 ? static_cast<int>(std::round(std::min(fScale, 100.0))) : 1;
}

} // namespace

ColorRef GetSystemColor(ESystemColor eColor)
{
    const bool bPalette = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
    return bPalette ? GetColorOf(QGuiApplication::palette(), eColor) : GetClassicColor(eColor);
}

int GetBorderWidth(double fScale)
{
    return GetBorder(fScale);
}

int GetBorderHeight(double fScale)
{
    return GetBorder(fScale);
}
