#include "framework/drawing/CBitmap.h"
#include "framework/drawing/SystemColors.h"
#include "tests/framework/drawing/Canvas.h"

#include <limits>
#include <vector>

namespace
{

constexpr int FAR = std::numeric_limits<int>::max();
constexpr int NEAR = std::numeric_limits<int>::min();

constexpr auto SOLID = EPenStyle::Solid;
constexpr auto DOTTED = EPenStyle::Dotted;
constexpr auto NO_PEN = EPenStyle::None;

// All pictures are 8 by 5 pixels.
// clang-format off
const struct { SPen pen; SPoint from; SPoint to; const char* pszPicture; } LINES[] = {
    {{SOLID, 1}, {1, 1}, {6, 1}, "......../.#####../......../......../........"},
    {{SOLID, 1}, {6, 1}, {1, 1}, "......../..#####./......../......../........"},
    {{SOLID, 3}, {3, 2}, {3, 2}, "......../......../......../......../........"},
    {{NO_PEN, 1}, {0, 0}, {8, 4}, "......../......../......../......../........"},
    {{SOLID, 1}, {0, 0}, {6, 3}, "#......./.##...../...##.../.....#../........"},
    {{SOLID, 1}, {2, 4}, {3, -1}, "...#..../...#..../..#...../..#...../..#....."},
    {{SOLID, 3}, {1, 2}, {4, 2}, "......../.###..../.###..../.###..../........"},
    {{SOLID, 2}, {3, 3}, {3, 0}, "......../...##.../...##.../...##.../........"},
    {{SOLID, 3}, {0, 0}, {5, 5}, "##....../###...../.###..../..###.../...##..."},
    {{DOTTED, 1}, {1, 0}, {8, 0}, ".#.#.#.#/......../......../......../........"},
    {{DOTTED, 1}, {0, 4}, {0, -1}, "#......./......../#......./......../#......."},
    {{DOTTED, 2}, {0, 1}, {7, 1}, "......../##..##../##..##../......../........"},
    {{DOTTED, 1}, {-3, 1}, {99, 1}, "......../.#.#.#.#/......../......../........"},
    {{SOLID, 1}, {NEAR, 3}, {FAR, 3}, "......../......../......../########/........"},
    {{SOLID, 1}, {1000, 1000}, {-1000, -1000}, "#......./.#....../..#...../...#..../....#..."},
};

const struct { SPen pen; std::optional<ColorRef> brush; SRect rect; const char* pszPicture; } BOXES[] = {
    {{SOLID, 1, RED}, BLUE, {0, 0, 5, 4}, "RRRRR.../RBBBR.../RBBBR.../RRRRR.../........"},
    {{SOLID, 2, RED}, BLUE, {0, 0, 6, 5}, "RRRRRR../RRRRRR../RRBBRR../RRRRRR../RRRRRR.."},
    {{SOLID, 0, RED}, {}, {0, 0, 5, 4}, "RRRRR.../R...R.../R...R.../RRRRR.../........"},
    {{NO_PEN, 9, RED}, BLUE, {0, 0, 3, 2}, "BBB...../BBB...../......../......../........"},
    {{SOLID, 3, RED}, BLUE, {0, 0, 5, 3}, "RRRRR.../RRRRR.../RRRRR.../......../........"},
    {{DOTTED, 1, RED}, {}, {1, 0, 6, 4}, ".R.R.R../......../.R...R../..R.R.../........"},
};

const struct { void (*pDraw)(CDrawContext& c); const char* pszPicture; } DRAWINGS[] = {
    {[](CDrawContext& c) { c.SetClip(SRect{2, 1, 4, 9}); c.FillRect({0, 0, 8, 3}, 0); c.SetPixel(1, 1, 0);
                           c.SetPixel(2, 3, RED); c.SetClip({}); },
     "......../..##..../..##..../..R...../........"},
    {[](CDrawContext& c) { c.FillRect({NEAR, 3, 2, FAR}, RED); c.FillRect({6, -5, 99, 1}, BLUE); },
     "......BB/......../......../RR....../RR......"},
    {[](CDrawContext& c) { c.FillRect({5, 0, 2, 5}, 0); c.FrameRect({5, 0, 2, 5}, 0);
                           c.Rectangle({5, 4, 8, 1}); c.DrawFocusRect({5, 0, 2, 5}); },
     "......../......../......../......../........"},
    {[](CDrawContext& c) { c.FrameRect({1, 0, 5, 4}, RED); },
     ".RRRR.../.R..R.../.R..R.../.RRRR.../........"},
    {[](CDrawContext& c) { c.FrameRect({NEAR, -2, 3, 3}, RED); },
     "..R...../..R...../RRR...../......../........"},
};

// clang-format on

} // namespace

TEST(CDrawContext, ShapesCoverTheSamePixelsAtEveryDepth)
{
    for (const int nBits : DEPTHS)
    {
        SCOPED_TRACE(nBits);
        for (const auto& line : LINES)
        {
            SCanvas canvas(8, 5, nBits);
            canvas.context.SetPen(line.pen);
            canvas.context.DrawLine(line.from, line.to);
            EXPECT_EQ(Show(canvas.context), line.pszPicture) << &line - LINES;
        }
        for (const auto& box : BOXES)
        {
            SCanvas canvas(8, 5, nBits);
            canvas.context.SetPen(box.pen);
            canvas.context.SetBrush(box.brush);
            canvas.context.Rectangle(box.rect);
            EXPECT_EQ(Show(canvas.context), box.pszPicture) << &box - BOXES;
        }
        for (const auto& drawing : DRAWINGS)
        {
            SCanvas canvas(8, 5, nBits);
            drawing.pDraw(canvas.context);
            EXPECT_EQ(Show(canvas.context), drawing.pszPicture) << &drawing - DRAWINGS;
        }
    }
}

TEST(CDrawContext, EdgesTakeTheSystemColorsAndTheScale)
{
    const std::map<char, ColorRef> letters = {{'.', RED},
                                              {'h', GetSystemColor(ESystemColor::ButtonHighlight)},
                                              {'l', GetSystemColor(ESystemColor::Light3D)},
                                              {'f', GetSystemColor(ESystemColor::ButtonFace)},
                                              {'s', GetSystemColor(ESystemColor::ButtonShadow)},
                                              {'d', GetSystemColor(ESystemColor::DarkShadow)}};

    // clang-format off
    const struct { EEdge eEdge; uint32_t uFlags; const char* pszPicture; } cases[] = {
        {EEdge::Raised, 0, "lllld/lhhsd/lh.sd/lsssd/ddddd"},
        {EEdge::Raised, EDGE_SOFT | EDGE_FILL_MIDDLE, "hhhhd/hllsd/hlfsd/hsssd/ddddd"},
        {EEdge::Sunken, EDGE_FILL_MIDDLE, "ssssh/sddlh/sdflh/slllh/hhhhh"},
        {EEdge::Sunken, EDGE_SOFT, "ddddh/dsslh/ds.lh/dlllh/hhhhh"}};

    // clang-format on
    for (const auto& edge : cases)
    {
        for (const int nBits : DEPTHS)
        {
            SCOPED_TRACE(std::string(edge.pszPicture) + ", " + std::to_string(nBits));
            SCanvas canvas(5, 5, nBits);
            canvas.context.FillRect({0, 0, 5, 5}, RED);
            EXPECT_EQ(canvas.context.DrawEdge({0, 0, 5, 5}, edge.eEdge, edge.uFlags),
                      SRect({2, 2, 3, 3}));
            EXPECT_EQ(Show(canvas.context, letters), edge.pszPicture);
        }
    }

    for (const bool bPushed : {false, true})
    {
        SCanvas canvas(9, 9, 32, 1.5);
        EXPECT_EQ(canvas.context.DrawPushButtonFrame({0, 0, 9, 9}, bPushed), SRect({4, 4, 5, 5}));
        EXPECT_EQ(Show(canvas.context, letters).substr(40, 9), bPushed ? "ddssfllhh" : "hhllfssdd");
        canvas.context.SetClip(SRect{0, 0, 0, 0}); // no place is no fault
        canvas.context.DrawPushButtonFrame({3, 3, 4, 4}, bPushed);
    }
}

TEST(CDrawContext, FocusRectangleShowsOnEveryColorAndGoesAway)
{
    for (const int nBits : DEPTHS)
    {
        for (const ColorRef uColor : {0x000000U, 0x808080U, 0x7F7F7FU, 0xC0C0C0U, 0x0040FFU})
        {
            SCOPED_TRACE(std::to_string(nBits) + ", " + std::to_string(uColor));
            SCanvas canvas(9, 7, nBits, 2.0);
            canvas.context.FillRect({0, 0, 9, 7}, uColor);
            canvas.context.DrawFocusRect({0, 0, 8, 6});
            const std::map<char, ColorRef> letters = {{'.', uColor}, {'x', uColor ^ 0x808080}};
            EXPECT_EQ(Show(canvas.context, letters),
                      "xx..xx.../xx..xx.../......xx./......xx./xx..xx.../xx..xx.../.........");
            canvas.context.DrawFocusRect({0, 0, 8, 6});
            EXPECT_EQ(Show(canvas.context, {{'.', uColor}}).find('?'), std::string::npos);
        }
    }
}

TEST(CDrawContext, StatesNestAndSettersReturnWhatWasBefore)
{
    SCanvas canvas(8, 5, 24);
    CDrawContext& context = canvas.context;
    EXPECT_FALSE(context.RestoreState(-1));
    EXPECT_EQ(context.SetTextColor(RED), 0U);
    EXPECT_EQ(context.SetBackColor(BLUE), WHITE);
    EXPECT_EQ(context.SaveState(), 1);
    EXPECT_EQ(context.SetPen({EPenStyle::Dotted, 3, RED}), SPen());
    EXPECT_EQ(context.SetBrush({}), std::optional<ColorRef>(WHITE));
    EXPECT_EQ(context.SaveState(), 2);
    EXPECT_EQ(context.SetClip(SRect{5, 0, 99, 3}), std::optional<SRect>());
    EXPECT_EQ(context.GetClipBox(), SRect({5, 0, 8, 3}));
    EXPECT_FALSE(context.RestoreState(0) || context.RestoreState(3) || context.RestoreState(-2));
    EXPECT_TRUE(context.RestoreState(-1));
    EXPECT_EQ(context.GetClipBox(), SRect({0, 0, 8, 5}));
    EXPECT_EQ(context.SetPen({}), SPen({EPenStyle::Dotted, 3, RED}));
    EXPECT_EQ(context.SaveState(), 2);
    EXPECT_EQ(context.SetTextColor(BLUE), RED);
    EXPECT_TRUE(context.RestoreState(1)); // drops both
    EXPECT_EQ(context.SetPen({}), SPen());
    EXPECT_EQ(context.SetBrush(BLUE), std::optional<ColorRef>(WHITE));
    EXPECT_EQ(context.SetTextColor(0), RED);
    EXPECT_FALSE(context.RestoreState(1));
}

TEST(CDrawContext, MemoryContextDrawsIntoTheSelectedBitmap)
{
    SCanvas canvas(8, 5, 16, 1.5);
    CDrawContext memory = CDrawContext::CreateCompatible(canvas.context);
    EXPECT_EQ(memory.GetScale(), 1.5);
    memory.FillRect({0, 0, 9, 9}, RED);
    memory.MapColors({});
    canvas.context.BitBlt({0, 0, 8, 5}, memory, {0, 0});

    CBitmap compatible;
    CBitmap other;
    ASSERT_TRUE(compatible.CreateCompatibleBitmap(memory, 3, 2));
    ASSERT_TRUE(other.CreateBitmap(3, 2, 1, 32, nullptr));
    EXPECT_EQ(compatible.GetBitsPerPixel(), 16);
    EXPECT_EQ(memory.SelectBitmap(&compatible), nullptr);
    memory.FillRect({1, 0, 3, 2}, RED);
    EXPECT_EQ(memory.SelectBitmap(&other), &compatible);
    EXPECT_EQ(memory.GetBitsPerPixel(), 32);
    EXPECT_EQ(Show(memory), "###/###");
    EXPECT_EQ(memory.SelectBitmap(&compatible), &other);
    EXPECT_EQ(Show(memory), "#RR/#RR");
    compatible.Delete();
    memory.FillRect({0, 0, 3, 2}, RED);
    EXPECT_EQ(memory.GetClipBox(), SRect());

    EXPECT_EQ(canvas.context.SelectBitmap(&other), nullptr);
    EXPECT_EQ(Show(canvas.context), "......../......../......../......../........");
}
