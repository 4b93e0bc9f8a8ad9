#include "framework/drawing/CBitmap.h"
#include "tests/framework/drawing/Canvas.h"

#include <cmath>
#include <limits>
#include <utility>

namespace
{

// Draws a picture of the letters of Show.
void Paint(CDrawContext& context, const std::string& strPicture)
{
    SPoint at;
    for (const char cLetter : strPicture)
    {
        const ColorRef uLetter = cLetter == 'B' ? BLUE : cLetter == '.' ? WHITE : 0;
        context.SetPixel(at.x, at.y, cLetter == 'R' ? RED : uLetter);
        at = cLetter == '/' ? SPoint{0, at.y + 1} : SPoint{at.x + 1, at.y};
    }
}

struct SCopyCase
{
    const char* pszName;
    void (*pCopy)(CDrawContext& target, const CDrawContext& source); // source: RB#/B#R
    const char* pszPicture;                                          // 6 by 4 pixels
};

constexpr int FAR = std::numeric_limits<int>::max();

// clang-format off
const SCopyCase COPY_CASES[] = {
    {"plain", [](CDrawContext& t, const CDrawContext& s) { t.BitBlt({1, 1, 4, 3}, s, {0, 0}); },
     "....../.RB#../.B#R../......"},
    {"from inside", [](CDrawContext& t, const CDrawContext& s) { t.BitBlt({4, 2, 9, 9}, s, {1, 0}); },
     "....../....../....B#/....#R"},
    {"source outside stays", [](CDrawContext& t, const CDrawContext& s) { t.BitBlt({0, 0, 6, 4}, s, {-2, -1}); },
     "....../..RB#./..B#R./......"},
    {"above and left", [](CDrawContext& t, const CDrawContext& s) { t.BitBlt({-2, -1, 1, 1}, s, {0, 0}); },
     "R...../....../....../......"},
    {"nowhere", [](CDrawContext& t, const CDrawContext& s) { t.BitBlt({-9, 0, -5, 4}, s, {0, 0}); t.BitBlt({3, 3, 1, 1}, s, {0, 0});
                                                             t.BitBlt({0, 0, 6, 4}, s, {FAR, FAR});
                                                             t.StretchBlt({0, 0, 6, 4}, s, {2, 0, 2, 2}); },
     "....../....../....../......"},
    {"twice as large", [](CDrawContext& t, const CDrawContext& s) { t.StretchBlt({0, 0, 6, 4}, s, {0, 0, 3, 2}); },
     "RRBB##/RRBB##/BB##RR/BB##RR"},
    {"halves go on", [](CDrawContext& t, const CDrawContext& s) { t.StretchBlt({0, 0, 3, 1}, s, {0, 0, 2, 1}); },
     "RBB.../....../....../......"},
    {"smaller: the middle pixel", [](CDrawContext& t, const CDrawContext& s) { t.StretchBlt({0, 0, 1, 1}, s, {0, 0, 3, 2}); },
     "#...../....../....../......"},
    {"part, stretched, cut", [](CDrawContext& t, const CDrawContext& s) { t.StretchBlt({-2, 2, 4, 6}, s, {1, 0, 3, 2}); },
     "....../....../B###../B###.."},
    {"key", [](CDrawContext& t, const CDrawContext& s) { t.TransparentBlt({0, 0, 6, 2}, s, {0, 0, 3, 2}, BLUE); },
     "RR..##/..##RR/....../......"},
    {"clip", [](CDrawContext& t, const CDrawContext& s) { t.SetClip(SRect{2, 0, 4, 3}); t.StretchBlt({0, 0, 6, 4}, s, {0, 0, 3, 2});
                                                          t.SetClip({}); },
     "..BB../..BB../..##../......"},
};

// clang-format on

// 32 bits with one pixel a column: a red of rising opacity.
CBitmap MakeFade(const std::vector<uint8_t>& opacities)
{
    CPixelBuffer pixels;
    EXPECT_TRUE(pixels.Create(static_cast<int>(opacities.size()), 1, 32));
    for (size_t i = 0; i < opacities.size(); ++i)
    {
        pixels.SetPixel(static_cast<int>(i), 0, MakeColor(250, 9, 100));
        pixels.GetRow(0)[i * 4 + 3] = opacities[i];
    }
    CBitmap bitmap;
    EXPECT_TRUE(bitmap.SetAlphaPixels(std::move(pixels)));
    return bitmap;
}

} // namespace

TEST(CDrawContext, CopiesBetweenAllDepths)
{
    for (const SCopyCase& copyCase : COPY_CASES)
    {
        for (const int nFrom : DEPTHS)
        {
            for (const int nTo : DEPTHS)
            {
                SCOPED_TRACE(std::string(copyCase.pszName) + ", " + std::to_string(nFrom) + " to " +
                             std::to_string(nTo));
                SCanvas source(3, 2, nFrom);
                Paint(source.context, "RB#/B#R");
                SCanvas target(6, 4, nTo);
                copyCase.pCopy(target.context, source.context);
                EXPECT_EQ(Show(target.context), copyCase.pszPicture);
            }
        }
    }
}

TEST(CDrawContext, CopiesWithinOneBufferReadWhatWasThereBefore)
{
    for (const int nBits : DEPTHS)
    {
        SCOPED_TRACE(nBits);
        SCanvas canvas(6, 2, nBits);
        Paint(canvas.context, "RB#.../#BR...");
        canvas.context.BitBlt({1, 0, 4, 2}, canvas.context, {0, 0});
        EXPECT_EQ(Show(canvas.context), "RRB#../##BR..");
        canvas.context.StretchBlt({0, 0, 6, 2}, canvas.context, {1, 0, 4, 1});
        EXPECT_EQ(Show(canvas.context), "RRBB##/RRBB##");
    }
}

TEST(CDrawContext, BitmapsBlendByTheirOpacityAndPlainCopiesIgnoreIt)
{
    const std::vector<uint8_t> opacities = {0, 1, 64, 127, 128, 254, 255};
    CBitmap fade = MakeFade(opacities);
    for (const int nBits : DEPTHS)
    {
        const ColorRef uUnder = AtDepth(MakeColor(10, 200, 100), nBits);
        SCanvas canvas(7, 1, nBits);
        canvas.context.FillRect({0, 0, 7, 1}, uUnder);
        canvas.context.DrawBitmap({0, 0}, fade);
        for (int i = 0; i < 7; ++i)
        {
            SCOPED_TRACE(std::to_string(nBits) + ", " + std::to_string(i));
            const double fOpacity = opacities[static_cast<size_t>(i)] / 255.0;
            const auto mix = [fOpacity](int iOver, int iUnder)
            {
                return static_cast<uint8_t>(std::round(iOver * fOpacity + iUnder * (1 - fOpacity)));
            };
            const ColorRef uMixed = MakeColor(
                mix(250, GetRed(uUnder)), mix(9, GetGreen(uUnder)), mix(100, GetBlue(uUnder)));
            EXPECT_EQ(canvas.context.GetPixel(i, 0), AtDepth(uMixed, nBits));
            EXPECT_TRUE(nBits != 32 || canvas.buffer.GetRow(0)[i * 4 + 3] == 255);
        }
        CDrawContext memory = CDrawContext::CreateCompatible(canvas.context);
        memory.SelectBitmap(&fade);
        canvas.context.BitBlt({0, 0, 7, 1}, memory, {0, 0});
        EXPECT_EQ(Show(canvas.context, {{'x', MakeColor(250, 9, 100)}}), "xxxxxxx");
        EXPECT_TRUE(nBits != 32 || canvas.buffer.GetRow(0)[3] == 255);
    }
    CBitmap clear = MakeFade({0});
    CDrawContext memory = CDrawContext::CreateCompatible(SCanvas(1, 1, 32).context);
    memory.SelectBitmap(&clear);
    memory.DrawBitmap({0, 0, 1, 1}, fade, {2, 0, 3, 1});
    EXPECT_EQ(clear.GetPixels().GetRow(0)[3], 64);
}

TEST(CDrawContext, ColorsAreMappedOnceAndKeepTheirOpacity)
{
    const SColorPair pairs[] = {{RED, BLUE}, {BLUE, RED}, {RED, 0}, {WHITE, 0}};
    for (const int nBits : DEPTHS)
    {
        SCOPED_TRACE(nBits);
        SCanvas canvas(4, 2, nBits);
        Paint(canvas.context, "RB#./.#BR");
        canvas.context.MapColors(pairs);
        EXPECT_EQ(Show(canvas.context), "BR##/##RB");
        canvas.context.ReplaceColor({1, 0, 99, 1}, 0, WHITE);
        EXPECT_EQ(Show(canvas.context), "BR../##RB");
        canvas.context.SetClip(SRect{0, 1, 3, 2});
        canvas.context.ReplaceColor({-9, -9, 99, 99}, RED, 0);
        canvas.context.MapColors({pairs + 1, 1});
        canvas.context.SetClip({});
        EXPECT_EQ(Show(canvas.context), "BR../###B");
        // Greys that only some depths keep apart.
        canvas.context.FillRect({0, 0, 4, 2}, 0x848484);
        canvas.context.ReplaceColor({0, 0, 4, 2}, 0x808080, RED);
        EXPECT_EQ(canvas.context.GetPixel(0, 0), AtDepth(0x848484, nBits));
        canvas.context.ReplaceColor({0, 0, 4, 2}, 0x858585, RED);
        EXPECT_EQ(canvas.context.GetPixel(0, 0) == RED, nBits == 16);
    }
    CBitmap fade = MakeFade({0, 7, 255});
    CDrawContext memory = CDrawContext::CreateCompatible(SCanvas(1, 1, 32).context);
    memory.SelectBitmap(&fade);
    memory.ReplaceColor({0, 0, 3, 1}, MakeColor(250, 9, 100), BLUE);
    const uint8_t* pRow = fade.GetPixels().GetRow(0);
    EXPECT_EQ(Show(memory), "BBB");
    EXPECT_EQ(pRow[3] + 256 * pRow[7] + 65536 * pRow[11], 7 * 256 + 255 * 65536);
    memory.SetPixel(0, 0, RED);
    EXPECT_EQ(pRow[3], 255);
}
