#include "tests/framework/drawing/Canvas.h"
#include "tests/support/CLogCatcher.h"

#include <cstdlib>

namespace
{

// The smallest rectangle around all pixels of other colours; empty when there are none.
SRect FindOthers(const CDrawContext& context, ColorRef uColor)
{
    const SRect all = context.GetClipBox();
    SRect found = {all.right, all.bottom, all.left, all.top};
    for (int y = all.top; y < all.bottom; ++y)
    {
        for (int x = all.left; x < all.right; ++x)
        {
            if (context.GetPixel(x, y) != uColor)
            {
                found = {std::min(found.left, x),
                         std::min(found.top, y),
                         std::max(found.right, x + 1),
                         std::max(found.bottom, y + 1)};
            }
        }
    }
    return found;
}

// Whether a pixel has most of a colour; thin strokes cover none whole.
bool HasColor(const CDrawContext& context, ColorRef uColor)
{
    const SRect all = context.GetClipBox();
    bool bFound = false;
    for (int i = 0; i < all.right * all.bottom; ++i)
    {
        const ColorRef uSeen = context.GetPixel(i % all.right, i / all.right);
        bFound = bFound || ((uSeen ^ uColor) & 0x808080) == 0;
    }
    return bFound;
}

} // namespace

TEST(CDrawContext, TextStandsWhereTheFlagsSay)
{
    const CGuiApplication application;
    for (const int nBits : DEPTHS)
    {
        for (const double fScale : {1.0, 2.0})
        {
            SCOPED_TRACE(std::to_string(nBits) + ", " + std::to_string(fScale));
            SCanvas canvas(240, 80, nBits, fScale);
            CDrawContext& context = canvas.context;
            context.SetTextColor(BLUE);
            const SSize size = context.GetTextSize("HHIHH");
            ASSERT_GT(size.cx, size.cy);
            const SRect area = {11, 7, 211, 77};

            context.SetBackColor(RED);
            EXPECT_TRUE(context.DrawText("HHIHH", area, TEXT_CENTER | TEXT_VCENTER));
            const SRect cell = FindOthers(context, WHITE);
            EXPECT_EQ(cell.GetWidth(), size.cx);
            EXPECT_EQ(cell.GetHeight(), size.cy);
            EXPECT_LE(std::abs(cell.left - area.left - (area.right - cell.right)), 1);
            EXPECT_LE(std::abs(cell.top - area.top - (area.bottom - cell.bottom)), 1);
            EXPECT_TRUE(HasColor(context, RED) && HasColor(context, BLUE));
            context.ReplaceColor(cell, RED, WHITE);
            const SRect glyphs = FindOthers(context, WHITE);
            EXPECT_LE(std::abs(glyphs.left - cell.left - (cell.right - glyphs.right)), 2 * fScale);

            context.FillRect({0, 0, 240, 80}, WHITE);
            EXPECT_TRUE(context.DrawText("HHIHH", area, TEXT_LEFT));
            EXPECT_EQ(FindOthers(context, WHITE), SRect({11, 7, 11 + size.cx, 7 + size.cy}));
        }
    }
}

TEST(CDrawContext, TextEndsAtRectangleClipAndPixels)
{
    const CGuiApplication application;
    SCanvas canvas(60, 30, 32);
    CDrawContext& context = canvas.context;
    context.SetBackColor(RED);
    context.DrawText("a text that is far too long for the place it has", {10, 5, 40, 12}, 0);
    EXPECT_EQ(FindOthers(context, WHITE), SRect({10, 5, 40, 12}));
    context.FillRect({0, 0, 60, 30}, WHITE);
    context.SetClip(SRect{20, 0, 25, 30});
    context.DrawText("HHHHHHHHHHHHHHHHHHHHHHHH", {-10, 0, 90, 30}, TEXT_CENTER);
    context.SetClip({});
    const SRect seen = FindOthers(context, WHITE);
    EXPECT_EQ(SRect({seen.left, 0, seen.right, 1}), SRect({20, 0, 25, 1}));
    context.FillRect({0, 0, 60, 30}, WHITE);
    EXPECT_TRUE(context.DrawText("H", {70, 0, 90, 30}, 0));
    EXPECT_TRUE(context.DrawText("", {0, 0, 60, 30}, 0));
    EXPECT_TRUE(FindOthers(context, WHITE).IsEmpty());

    // Without background the ground is seen between the strokes, whatever its colour.
    context.FillRect({0, 0, 60, 30}, BLUE);
    context.DrawText("OO", {0, 0, 60, 30}, TEXT_TRANSPARENT);
    EXPECT_FALSE(HasColor(context, RED));
    EXPECT_TRUE(HasColor(context, 0));
    const SSize apart = context.GetTextSize("a b");
    EXPECT_EQ(context.GetTextSize("a\nb"), apart);
    EXPECT_EQ(context.GetTextSize("a\tb"), apart);
    EXPECT_EQ(context.SetBackColor(0), RED);

    CLogCatcher log;
    EXPECT_FALSE(context.DrawText(nullptr, {0, 0, 60, 30}, 0));
    EXPECT_EQ(log.GetText(), "[CDrawContext::DrawText] text is null\n");
}

TEST(CDrawContext, TextWithoutAnApplicationIsOneLineInTheLog)
{
    SCanvas canvas(60, 30, 24);
    CLogCatcher log;
    EXPECT_FALSE(canvas.context.DrawText("H", {0, 0, 60, 30}, 0));
    EXPECT_EQ(canvas.context.GetTextSize("H"), SSize());
    EXPECT_EQ(log.TakeLines(),
              std::vector<std::string>(
                  {"[CDrawContext::DrawText] no application to take the font from",
                   "[CDrawContext::GetTextSize] no application to take the font from"}));
    EXPECT_TRUE(FindOthers(canvas.context, WHITE).IsEmpty());
}
