#include "framework/drawing/SystemColors.h"
#include "tests/framework/drawing/Canvas.h"

#include <QtGui/QPalette>

#include <limits>
#include <utility>

namespace
{

int Brightness(ColorRef uColor)
{
    return GetRed(uColor) + GetGreen(uColor) + GetBlue(uColor);
}

constexpr ESystemColor SHADES[] = {ESystemColor::DarkShadow,
                                   ESystemColor::ButtonShadow,
                                   ESystemColor::ButtonFace,
                                   ESystemColor::Light3D,
                                   ESystemColor::ButtonHighlight};

} // namespace

TEST(SystemColors, ShadesStayApartUnderEveryPalette)
{
    CGuiApplication application;

    // clang-format off
    const struct { const char* pszName; QRgb uFace; bool bFaceKept; } cases[] = {
        {"classic", 0xC0C0C0, true}, {"light", 0xEFEFEF, true}, {"dark", 0x323232, true},
        {"white", 0xFFFFFF, false}, {"black", 0x000000, false}, {"blue", 0x000060, true},
        {"cream", 0xFFFFCF, true}, {"rose", 0xFFE6E8, true}, {"middle", 0x7F8081, true}};

    // clang-format on
    for (const auto& face : cases)
    {
        for (const int iShades : {0, 1})
        {
            SCOPED_TRACE(std::string(face.pszName) + (iShades == 0 ? ", one colour" : ", shades"));
            // Palettes of desktops: one colour for all, or what Qt makes of the face.
            QPalette palette{QColor(face.uFace)};
            for (int iRole = QPalette::Light; iShades == 0 && iRole <= QPalette::Mid; ++iRole)
            {
                palette.setColor(static_cast<QPalette::ColorRole>(iRole), QColor(face.uFace));
            }
            QGuiApplication::setPalette(palette);
            const ColorRef uFace = GetSystemColor(ESystemColor::ButtonFace);
            const QColor seen(GetRed(uFace), GetGreen(uFace), GetBlue(uFace));
            EXPECT_EQ(seen == QColor(face.uFace), face.bFaceKept);
            for (const int nBits : DEPTHS)
            {
                for (size_t i = 1; i < std::size(SHADES); ++i)
                {
                    EXPECT_LT(Brightness(AtDepth(GetSystemColor(SHADES[i - 1]), nBits)),
                              Brightness(AtDepth(GetSystemColor(SHADES[i]), nBits)))
                        << nBits << ", " << i;
                }
            }
        }
    }
}

TEST(SystemColors, GoodPalettesAreTakenAsTheyAre)
{
    CGuiApplication application;

    // clang-format off
    const struct { ESystemColor eColor; QPalette::ColorRole eRole; QRgb uColor; } roles[] = {
        {ESystemColor::ButtonFace, QPalette::Button, 0x405060},
        {ESystemColor::ButtonShadow, QPalette::Dark, 0x203040},
        {ESystemColor::DarkShadow, QPalette::Shadow, 0x101112},
        {ESystemColor::Light3D, QPalette::Midlight, 0x506070},
        {ESystemColor::ButtonHighlight, QPalette::Light, 0x708090},
        {ESystemColor::ButtonText, QPalette::ButtonText, 0xFFFE01},
        {ESystemColor::Window, QPalette::Base, 0x010203},
        {ESystemColor::WindowText, QPalette::Text, 0xFDFCFB},
        {ESystemColor::Highlight, QPalette::Highlight, 0x0000FE},
        {ESystemColor::HighlightText, QPalette::HighlightedText, 0xFF00FF}};

    // clang-format on
    QPalette palette;
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(7, 8, 9));
    for (const auto& role : roles)
    {
        palette.setColor(QPalette::Active, role.eRole, QColor(role.uColor));
    }
    QGuiApplication::setPalette(palette);
    for (const auto& role : roles)
    {
        const QColor color(role.uColor);
        EXPECT_EQ(GetSystemColor(role.eColor),
                  static_cast<ColorRef>(color.red() + 256 * color.green() + 65536 * color.blue()))
            << role.eRole;
    }
    EXPECT_EQ(GetSystemColor(ESystemColor::GrayText), MakeColor(7, 8, 9));
}

TEST(SystemColors, ClassicGreysWithoutAnApplicationAndBordersByScale)
{
    EXPECT_EQ(GetSystemColor(ESystemColor::ButtonFace), 0xC0C0C0U);
    EXPECT_EQ(GetSystemColor(ESystemColor::ButtonShadow), 0x808080U);
    EXPECT_EQ(GetSystemColor(ESystemColor::Light3D), 0xDFDFDFU);
    EXPECT_EQ(GetSystemColor(ESystemColor::ButtonHighlight), 0xFFFFFFU);
    EXPECT_EQ(GetSystemColor(ESystemColor::Highlight), MakeColor(0, 0, 0x80));

    const double fNone = std::numeric_limits<double>::quiet_NaN();
    const std::pair<double, int> borders[] = {
        {1, 1}, {1.25, 1}, {1.5, 2}, {2, 2}, {3.4, 3}, {0.3, 1}, {-5, 1}, {fNone, 1}};
    for (const auto& [fScale, nWidth] : borders)
    {
        EXPECT_EQ(GetBorderWidth(fScale), nWidth) << fScale;
        EXPECT_EQ(GetBorderHeight(fScale), nWidth) << fScale;
    }
}
