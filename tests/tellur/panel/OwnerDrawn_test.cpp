// The panel's buttons that draw themselves, pixel by pixel at every depth.

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"
#include "host/Image.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
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

using Pixels = std::vector<ColorRef>;

class COwnerDrawn : public CPanelFixture
{
protected:
    template <class TButton>
    CPixelBuffer Draw(TButton& button, int iWidth, int iHeight, int nBits, uint32_t uState = 0)
    {
        CPixelBuffer pixels;
        EXPECT_TRUE(pixels.Create(iWidth, iHeight, nBits));
        CDrawContext context(pixels);
        context.FillRect(pixels.GetBounds(), 0x123456);
        button.DrawItem({&context, pixels.GetBounds(), uState});
        return pixels;
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
};

} // namespace

TEST_F(COwnerDrawn, TheShapeIsStretchedAtTwoDepthsAndMissingAtTheThird)
{
    CTellurBrush brush;
    ASSERT_NO_FATAL_FAILURE(MakeShape(brush));
    CDrawn<CTellurBitmapButton> button;
    button.SetBrush(&brush);
    for (const int nBits : {32, 16, 32}) // and back: the pixels are made anew
    {
        const CPixelBuffer pixels = Draw(button, 4, 4, nBits);
        const auto expected = [nBits](uint8_t g)
        {
            CPixelBuffer one;
            one.Create(1, 1, nBits);
            one.SetPixel(0, 0, MakeColor(g, g, g));
            return one.GetPixel(0, 0);
        };
        EXPECT_EQ(pixels.GetPixel(0, 0), expected(0));
        EXPECT_EQ(pixels.GetPixel(3, 1), expected(200));
        EXPECT_EQ(pixels.GetPixel(1, 2), expected(100));
        EXPECT_EQ(pixels.GetPixel(2, 3), expected(255));
        if (nBits == 16)
        {
            EXPECT_EQ(pixels.GetRow(0)[6], 0x59);
            EXPECT_EQ(pixels.GetRow(0)[7], 0xCE);
        }
    }
    const CPixelBuffer none = Draw(button, 4, 4, 24);
    EXPECT_EQ(none.GetPixel(1, 1), 0x123456U);
    button.SetBrush(nullptr);
    for (const int nBits : {24, 32})
    {
        EXPECT_EQ(Draw(button, 4, 4, nBits).GetPixel(2, 2), 0U) << "black without a brush";
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
    const auto mapped = [&](int x, int y, ColorRef uGround)
    {
        const ColorRef uColor = image.GetPixels().GetPixel(x, y);
        return uColor == 0xC0C0C0   ? uGround
               : uColor == 0x808080 ? GetSystemColor(ESystemColor::ButtonShadow)
               : uColor == 0xDFDFDF ? GetSystemColor(ESystemColor::Light3D)
                                    : uColor;
    };
    // Border lines are 1 wide: the inner room is 2 smaller on each side, its centre is where the
    // image goes, one further than its frame.
    const int iSide = 40;
    const int iLeft = (iSide - 4 - w) / 2 + 2;
    const int iTop = (iSide - 4 - h) / 2 + 2;
    const auto expectImage = [&](const CPixelBuffer& pixels, int iMoved, ColorRef uGround)
    {
        int nWrong = 0;
        for (int y = 0; y < h; ++y)
        {
            for (int x = 0; x < w; ++x)
            {
                nWrong +=
                    pixels.GetPixel(iLeft + iMoved + x, iTop + iMoved + y) != mapped(x, y, uGround)
                        ? 1
                        : 0;
            }
        }
        EXPECT_EQ(nWrong, 0);
    };
    const CPixelBuffer up = Draw(button, iSide, iSide, 32);
    expectImage(up, 0, uFace);
    EXPECT_EQ(up.GetPixel(4, 4), uFace);
    const CPixelBuffer pressed = Draw(button, iSide, iSide, 32, ITEM_SELECTED);
    expectImage(pressed, 1, uFace);
    button.SetChecked(true);
    const CPixelBuffer down = Draw(button, iSide, iSide, 32);
    expectImage(down, 1, uHighlight);
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
    EXPECT_NE(wide.GetPixel(wide.GetWidth() / 2, 36), 0x123456U);
    EXPECT_NE(narrow.GetPixel(20, 20), 0x123456U);
    CDrawn<CImageToggleButton> empty; // without a picture there is the frame
    EXPECT_NE(Draw(empty, 20, 20, 32).GetPixel(10, 10), 0x123456U);
    EXPECT_EQ(m_Log.GetText(), "");
}
