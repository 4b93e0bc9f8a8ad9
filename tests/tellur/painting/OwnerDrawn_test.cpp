// The draw dialog's buttons that draw themselves, pixel by pixel at every depth.

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/CDrawContext.h"
#include "tellur/painting/CColorButton.h"
#include "tellur/painting/CTerrain2DDrawDlgBitmapButton.h"
#include "tests/tellur/painting/PaintingFixture.h"

namespace
{

constexpr ColorRef GROUND = 0x123456;

template <class TButton> class CDrawn : public TButton
{
public:
    using TButton::DrawItem;
};

template <class TButton>
CPixelBuffer Draw(CDrawn<TButton>& button, int iWidth, int iHeight, int nBits = 32)
{
    CPixelBuffer pixels;
    EXPECT_TRUE(pixels.Create(iWidth, iHeight, nBits));
    CDrawContext context(pixels);
    context.FillRect(pixels.GetBounds(), GROUND);
    button.DrawItem({&context, pixels.GetBounds(), 0});
    EXPECT_EQ(context.SetTextColor(0), 0U) << "the colours before are back";
    EXPECT_EQ(context.SetBackColor(0), 0xFFFFFFU);
    return pixels;
}

int Count(const CPixelBuffer& pixels, ColorRef uColor)
{
    int nFound = 0;
    for (int y = 0; y < pixels.GetHeight(); ++y)
    {
        for (int x = 0; x < pixels.GetWidth(); ++x)
        {
            nFound += pixels.GetPixel(x, y) == uColor ? 1 : 0;
        }
    }
    return nFound;
}

ColorRef AtDepth(ColorRef uColor, int nBits)
{
    CPixelBuffer one;
    one.Create(1, 1, nBits);
    one.SetPixel(0, 0, uColor);
    return one.GetPixel(0, 0);
}

} // namespace

TEST(PaintButtons, ASwatchShowsItsColourAndNumbersInTheInverse)
{
    CDrawn<CColorButton> button;
    const float orange[] = {1.0F, 0.5F, 0.0F, 1.0F};
    button.SetColor(orange);
    EXPECT_EQ(button.GetColorRef(), 0x007FFFU);
    for (const int nBits : {16, 24, 32})
    {
        const CPixelBuffer pixels = Draw(button, 120, 40, nBits);
        const ColorRef uSwatch = AtDepth(0x007FFF, nBits);
        EXPECT_EQ(pixels.GetPixel(0, 0), uSwatch) << "over the frame too";
        EXPECT_EQ(pixels.GetPixel(119, 39), uSwatch);
        EXPECT_GT(Count(pixels, AtDepth(0xFF8000, nBits)), 5) << "the numbers' ink";
        EXPECT_GT(Count(pixels, uSwatch), 120 * 40 * 3 / 4);
    }
    // The middle of the text is that of the swatch.
    const CPixelBuffer pixels = Draw(button, 120, 40);
    int iLeft = 120;
    int iRight = 0;
    for (int x = 0; x < 120; ++x)
    {
        for (int y = 0; y < 40; ++y)
        {
            if (pixels.GetPixel(x, y) != 0x007FFF)
            {
                iLeft = std::min(iLeft, x);
                iRight = std::max(iRight, x);
            }
        }
    }
    EXPECT_NEAR(iLeft + iRight, 119, 4);

    button.SetShowText(false);
    EXPECT_EQ(Count(Draw(button, 120, 40), 0x007FFF), 120 * 40);
    button.SetShowText(true);
    const std::pair<uint32_t, ColorRef> channels[] = {
        {1, 0x0000FF}, {2, 0x007F00}, {4, 0x000000}, {3, 0x007FFF}, {0, 0}};
    for (const auto& [uShown, uColor] : channels)
    {
        button.SetDisplayChannels(uShown);
        EXPECT_EQ(Count(Draw(button, 120, 40), uColor), 120 * 40) << uShown << ": and no text";
    }
}

TEST(PaintButtons, AnUndefinedSwatchIsCrossedOut)
{
    CDrawn<CColorButton> button;
    EXPECT_TRUE(button.IsDefined());
    EXPECT_EQ(button.GetColorRef(), 0xFFFFFFU);
    button.SetUndefined();
    EXPECT_EQ(button.GetColorRef(), 0x808080U);
    button.SetShowText(false);
    const CPixelBuffer pixels = Draw(button, 40, 40);
    for (int i = 1; i < 39; ++i)
    {
        for (const int iBeside : {-1, 0, 1})
        {
            EXPECT_EQ(pixels.GetPixel(i, i + iBeside), 0U) << i << " " << iBeside;
        }
        EXPECT_EQ(pixels.GetPixel(i, 40 - i), 0U) << i;
    }
    EXPECT_EQ(pixels.GetPixel(20, 5), 0x808080U);
    button.SetShowText(true);
    EXPECT_GT(Count(Draw(button, 160, 40), 0), Count(Draw(button, 160, 40), 0xFFFFFF) + 100);
    button.SetColorBytes(255, 0, 51);
    EXPECT_TRUE(button.IsDefined());
    EXPECT_EQ(button.GetColorRef(), 0x3300FFU);
    EXPECT_EQ(button.GetColor()[2], 0.2F);
    EXPECT_EQ(button.GetColor()[3], 1.0F);
}

TEST(PaintButtons, TheShapeIsStretchedAtEveryDepth)
{
    CLogCatcher log;
    CDrawn<CTerrain2DDrawDlgBitmapButton> button;
    for (const int nBits : {16, 24, 32})
    {
        EXPECT_EQ(Count(Draw(button, 4, 4, nBits), 0), 16) << "black without a shape";
    }
    const uint8_t colors[] = {0, 0, 0, 200, 200, 200, 100, 100, 100, 255, 255, 255};
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(2, 2, EImageFormat::Rgb24, colors));
    button.SetImage(pImage.get());
    for (const int nBits : {32, 16, 24, 32}) // and back: the pixels are made anew
    {
        const CPixelBuffer pixels = Draw(button, 4, 4, nBits);
        EXPECT_EQ(pixels.GetPixel(0, 0), 0U);
        EXPECT_EQ(pixels.GetPixel(3, 1), AtDepth(0xC8C8C8, nBits));
        EXPECT_EQ(pixels.GetPixel(1, 2), AtDepth(0x646464, nBits));
        EXPECT_EQ(pixels.GetPixel(2, 3), AtDepth(0xFFFFFF, nBits));
        if (nBits == 16)
        {
            EXPECT_EQ(pixels.GetRow(0)[6], 0x59);
            EXPECT_EQ(pixels.GetRow(0)[7], 0xCE);
        }
    }
    button.SetImage(nullptr);
    EXPECT_EQ(Count(Draw(button, 4, 4), 0), 16);
    EXPECT_EQ(log.GetText(), "");
}
