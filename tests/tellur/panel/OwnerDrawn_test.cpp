// The buttons of the panel and of the draw dialog that draw themselves, pixel by pixel at every
// depth.

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"
#include "host/Image.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/painting/CColorButton.h"
#include "tellur/painting/CTerrain2DDrawDlgBitmapButton.h"
#include "tellur/panel/CImageToggleButton.h"
#include "tellur/panel/CTellurBitmapButton.h"
#include "tests/tellur/panel/PanelFixture.h"

namespace
{

template <class TButton> class CDrawn : public TButton
{
public:
    using TButton::DrawItem;
};

constexpr ColorRef GROUND = 0x123456;

int Count(const CPixelBuffer& pixels, ColorRef uColor)
{
    int nFound = 0;
    for (int i = 0; i < pixels.GetHeight() * pixels.GetWidth(); ++i)
    {
        nFound += pixels.GetPixel(i % pixels.GetWidth(), i / pixels.GetWidth()) == uColor ? 1 : 0;
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

class COwnerDrawn : public CPanelFixture
{
protected:
    template <class TButton>
    CPixelBuffer Draw(TButton& button, int iWidth, int iHeight, int nBits = 32, uint32_t uState = 0)
    {
        CPixelBuffer pixels;
        EXPECT_TRUE(pixels.Create(iWidth, iHeight, nBits));
        CDrawContext context(pixels);
        context.FillRect(pixels.GetBounds(), GROUND);
        button.DrawItem({&context, pixels.GetBounds(), uState});
        EXPECT_EQ(context.SetTextColor(0), 0U) << "the colours before are back";
        EXPECT_EQ(context.SetBackColor(0), 0xFFFFFFU);
        return pixels;
    }

    // The grey shape of MakeShape, stretched to 4 x 4 pixels.
    template <class TButton> void ExpectShape(TButton& button, int nBits)
    {
        SCOPED_TRACE(nBits);
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

    // A brush whose shape is 2 x 2 pixels.
    void MakeShape(CTellurBrush& brush)
    {
        const uint8_t grey[] = {0, 200, 100, 255};
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(2, 2, EImageFormat::Indexed8, grey));
        ASSERT_TRUE(IL_SaveImage(m_Folder.Path("shape.png").c_str(), pImage.get(), nullptr));
        ASSERT_TRUE(brush.LoadBitmap(m_Folder.Path("shape.png").c_str()));
    }

    // Pixels of a picture that are not where it is drawn, on a ground in place of its own grey.
    static int CountWrong(
        const CPixelBuffer& pixels, const CBitmap& image, int iLeft, int iTop, ColorRef uGround)
    {
        int nWrong = 0;
        for (int i = 0; i < image.GetWidth() * image.GetHeight(); ++i)
        {
            const int x = i % image.GetWidth();
            const int y = i / image.GetWidth();
            const ColorRef uColor = image.GetPixels().GetPixel(x, y);
            const ColorRef uMapped = uColor == 0xC0C0C0 ? uGround
                                     : uColor == 0x808080
                                         ? GetSystemColor(ESystemColor::ButtonShadow)
                                     : uColor == 0xDFDFDF ? GetSystemColor(ESystemColor::Light3D)
                                                          : uColor;
            nWrong += pixels.GetPixel(iLeft + x, iTop + y) != uMapped ? 1 : 0;
        }
        return nWrong;
    }
};

} // namespace

TEST_F(COwnerDrawn, AShapeIsStretchedAndInThePanelMissingAtOneDepth)
{
    CTellurBrush brush;
    ASSERT_NO_FATAL_FAILURE(MakeShape(brush));
    CDrawn<CTellurBitmapButton> ofPanel;
    ofPanel.SetBrush(&brush);
    CDrawn<CTerrain2DDrawDlgBitmapButton> ofDialog;
    const uint8_t colors[] = {0, 0, 0, 200, 200, 200, 100, 100, 100, 255, 255, 255};
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(2, 2, EImageFormat::Rgb24, colors));
    ofDialog.SetImage(pImage.get());
    for (const int nBits : {32, 16, 32}) // and back: the pixels are made anew
    {
        ExpectShape(ofPanel, nBits);
        ExpectShape(ofDialog, nBits);
    }
    ExpectShape(ofDialog, 24);
    EXPECT_EQ(Count(Draw(ofPanel, 4, 4, 24), GROUND), 16);
    ofPanel.SetBrush(nullptr);
    ofDialog.SetImage(nullptr);
    for (const int nBits : {24, 32})
    {
        EXPECT_EQ(Count(Draw(ofPanel, 4, 4, nBits), 0), 16) << "black without a brush";
        EXPECT_EQ(Count(Draw(ofDialog, 4, 4, nBits), 0), 16) << "black without a shape";
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(COwnerDrawn, TheImageIsInTheMiddleOfARaisedOrSunkenFrame)
{
    CDrawn<CImageToggleButton> button;
    button.SetImages(&GetPluginResources(), 2130);
    button.SetToggle(true);
    CBitmap image;
    ASSERT_TRUE(image.LoadBitmap(2130, 1.0, &GetPluginResources()));
    const int w = image.GetWidth();
    const int h = image.GetHeight();
    const ColorRef uFace = GetSystemColor(ESystemColor::ButtonFace);
    const ColorRef uHighlight = GetSystemColor(ESystemColor::ButtonHighlight);
    // Border lines are 1 wide: the inner room is 2 smaller on each side, its centre is where the
    // image goes, one further than its frame.
    const int iSide = 40;
    const int iLeft = (iSide - 4 - w) / 2 + 2;
    const int iTop = (iSide - 4 - h) / 2 + 2;
    const CPixelBuffer up = Draw(button, iSide, iSide, 32);
    EXPECT_EQ(CountWrong(up, image, iLeft, iTop, uFace), 0);
    EXPECT_EQ(up.GetPixel(4, 4), uFace);
    const CPixelBuffer pressed = Draw(button, iSide, iSide, 32, ITEM_SELECTED);
    EXPECT_EQ(CountWrong(pressed, image, iLeft + 1, iTop + 1, uFace), 0);
    button.SetChecked(true);
    const CPixelBuffer down = Draw(button, iSide, iSide, 32);
    EXPECT_EQ(CountWrong(down, image, iLeft + 1, iTop + 1, uHighlight), 0);
    EXPECT_EQ(down.GetPixel(4, 4), uHighlight) << "filled around the image";
    EXPECT_EQ(down.GetPixel(0, 0), pressed.GetPixel(0, 0)) << "both are sunken";
    EXPECT_NE(down.GetPixel(0, 0), up.GetPixel(0, 0));
    button.SetChecked(false);

    const CPixelBuffer disabled = Draw(button, iSide, iSide, 32, ITEM_DISABLED);
    int nDots = 0;
    for (int y = 0; y < h; ++y)
    {
        for (int x = y & 1; x < w; x += 2)
        {
            nDots += disabled.GetPixel(iLeft + x, iTop + y) == uFace ? 1 : 0;
        }
    }
    EXPECT_EQ(nDots, w * h / 2) << "every second pixel";

    const CPixelBuffer focus = Draw(button, iSide, iSide, 32, ITEM_FOCUS);
    EXPECT_NE(focus.GetPixel(iLeft - 1, iTop - 1), up.GetPixel(iLeft - 1, iTop - 1));
    EXPECT_EQ(focus.GetPixel(iLeft - 2, iTop - 2), up.GetPixel(iLeft - 2, iTop - 2));
}

TEST_F(COwnerDrawn, AnImageLargerThanItsButtonShowsItsMiddleOrIsStretched)
{
    CDrawn<CImageToggleButton> button;
    button.SetImages(&GetPluginResources(), 2125);
    CBitmap image;
    ASSERT_TRUE(image.LoadBitmap(2125, 1.0, &GetPluginResources()));
    const int iRoom = image.GetWidth() - 8;
    const CPixelBuffer small = Draw(button, iRoom + 4, iRoom + 4, 32);
    // The frame begins at 2, the image at 3, and the first four pixels are cut off; so is what
    // would reach the frame on the other side.
    int nWrong = 0;
    for (int x = 0; x < iRoom - 3; ++x)
    {
        const ColorRef uColor = image.GetPixels().GetPixel(4 + x, 4 + x);
        const bool bGrey = uColor == 0xC0C0C0 || uColor == 0x808080 || uColor == 0xDFDFDF;
        nWrong += !bGrey && small.GetPixel(3 + x, 3 + x) != uColor ? 1 : 0;
    }
    EXPECT_EQ(nWrong, 0);
    button.SetStretch(true);
    const CPixelBuffer wide = Draw(button, 2 * image.GetWidth() + 5, 40, 32);
    const CPixelBuffer narrow = Draw(button, 40, 40, 32);
    EXPECT_NE(wide.GetPixel(wide.GetWidth() / 2, 36), GROUND);
    EXPECT_NE(narrow.GetPixel(20, 20), GROUND);
    CDrawn<CImageToggleButton> empty; // without a picture there is the frame
    EXPECT_NE(Draw(empty, 20, 20, 32).GetPixel(10, 10), GROUND);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(COwnerDrawn, ASwatchShowsItsColourAndNumbersInTheInverse)
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

TEST_F(COwnerDrawn, AnUndefinedSwatchIsCrossedOut)
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
