#include "framework/core/ResourceModule.h"
#include "framework/drawing/CBitmap.h"
#include "tests/framework/drawing/Canvas.h"
#include "tests/support/CLogCatcher.h"

#include <QtCore/QBuffer>
#include <QtGui/QImage>

#include <array>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace
{

using Bytes = std::vector<uint8_t>;

Bytes MakePng(int iWidth, int iHeight, const std::function<QRgb(int x, int y)>& pixel)
{
    QImage image(iWidth, iHeight, QImage::Format_ARGB32);
    for (int y = 0; y < iHeight; ++y)
    {
        for (int x = 0; x < iWidth; ++x)
        {
            image.setPixel(x, y, pixel(x, y));
        }
    }
    QBuffer buffer;
    EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "PNG"));
    return {buffer.data().begin(), buffer.data().end()};
}

// The left part opaque red, the right part a transparent green that must never be seen.
Bytes MakeHalf(int iWidth, int iHeight)
{
    return MakePng(
        iWidth, iHeight, [iWidth](int x, int) { return x < iWidth / 2 ? 0xFFFF0000 : 0x0000FF00; });
}

// The pixels' own bytes, row after row.
Bytes TakeBytes(const CPixelBuffer& pixels)
{
    Bytes bytes;
    for (int y = 0; y < pixels.GetHeight(); ++y)
    {
        const uint8_t* pRow = pixels.GetRow(y);
        bytes.insert(bytes.end(), pRow, pRow + pixels.GetWidth() * pixels.GetBitsPerPixel() / 8);
    }
    return bytes;
}

} // namespace

TEST(CPixelBuffer, LayoutIsTheOneOfTheDisplay)
{
    // clang-format off
    const struct { int nBits; int iStride; Bytes grey; Bytes color; } cases[] = {
        {16, 8, {0x59, 0xCE}, {0x01, 0xFC}},
        {24, 12, {200, 200, 200}, {8, 129, 255}},
        {32, 12, {200, 200, 200, 255}, {8, 129, 255, 255}}};

    // clang-format on
    for (const auto& layout : cases)
    {
        SCOPED_TRACE(layout.nBits);
        CPixelBuffer pixels;
        ASSERT_TRUE(pixels.Create(3, 2, layout.nBits));
        EXPECT_EQ(pixels.GetStride(), layout.iStride);
        pixels.SetPixel(1, 1, MakeColor(200, 200, 200));
        pixels.SetPixel(2, 1, MakeColor(255, 129, 8));
        pixels.SetPixel(3, 1, WHITE);
        pixels.SetPixel(0, 2, WHITE);
        const size_t nBytes = layout.grey.size();
        const uint8_t* pRow = pixels.GetRow(1);
        EXPECT_EQ(Bytes(pRow + nBytes, pRow + 2 * nBytes), layout.grey);
        EXPECT_EQ(Bytes(pRow + 2 * nBytes, pRow + 3 * nBytes), layout.color);
        EXPECT_EQ(pixels.GetPixel(2, 1), layout.nBits == 16 ? MakeColor(255, 130, 8) : 0x0881FFU);
        EXPECT_EQ(pixels.GetPixel(0, 0) + pixels.GetPixel(-1, 0) + pixels.GetPixel(0, 2), 0U);
        EXPECT_EQ(pixels.GetRow(2), nullptr);

        CPixelBuffer taken = std::move(pixels);
        EXPECT_EQ(pixels.GetBounds(), SRect());
        using Sizes = std::vector<std::array<int, 3>>;
        for (const auto& [cx, cy, nBits] :
             Sizes{{0, 1, 16}, {1, -1, 16}, {32769, 1, 16}, {1, 32769, 16}, {1, 1, 8}, {1, 1, 0}})
        {
            EXPECT_FALSE(taken.Create(cx, cy, nBits)) << cx << ", " << cy << ", " << nBits;
        }
        EXPECT_FALSE(taken.CopyFrom(CPixelBuffer()));
        EXPECT_EQ(taken.GetWidth(), 3);
        ASSERT_TRUE(pixels.CopyFrom(taken));
        EXPECT_EQ(TakeBytes(pixels), TakeBytes(taken));
    }
}

TEST(CBitmap, TakesPackedRowsAndRefusesOtherPlanesAndDepths)
{
    Bytes source(3 * 2 * 4);
    for (size_t i = 0; i < source.size(); ++i)
    {
        source[i] = static_cast<uint8_t>(i * 7 + 1);
    }
    for (const int nBits : DEPTHS)
    {
        SCOPED_TRACE(nBits);
        CBitmap bitmap;
        ASSERT_TRUE(bitmap.CreateBitmap(3, 2, 1, nBits, source.data()));
        Bytes expected(source.begin(), source.begin() + 6 * nBits / 8);
        for (size_t i = 3; nBits == 32 && i < expected.size(); i += 4)
        {
            expected[i] = 255;
        }
        EXPECT_EQ(TakeBytes(bitmap.GetPixels()), expected);
        EXPECT_FALSE(bitmap.CreateBitmap(3, 2, 4, nBits, source.data()));
        EXPECT_FALSE(bitmap.CreateBitmap(3, 2, 1, 8, source.data()));
        EXPECT_FALSE(bitmap.CreateBitmap(0, 2, 1, nBits, source.data()));
        EXPECT_FALSE(bitmap.SetPixels(CPixelBuffer()));
        CBitmap copy;
        EXPECT_FALSE(bitmap.CopyFrom(copy));
        EXPECT_TRUE(copy.CopyFrom(bitmap));
        bitmap.Delete();
        EXPECT_EQ(bitmap.GetBitsPerPixel(), 0);
        EXPECT_EQ(TakeBytes(copy.GetPixels()), expected);
        EXPECT_EQ(copy.SetAlphaPixels(std::move(copy.GetPixels())), nBits == 32);
        EXPECT_EQ(copy.GetWidth(), 3);
    }
}

TEST(CBitmap, PicturesGetTheExactSizeOfTheScaleWithoutFringes)
{
    const Bytes single = MakeHalf(16, 15);
    const Bytes twice = MakePng(32, 30, [](int, int) { return 0xFF8080C0; });
    const SBitmapResource tables[] = {
        {1, {single.data(), single.size()}},
        {2, {single.data(), single.size(), twice.data(), twice.size()}}};
    const SResourceModule module = {"pictures", {}, {}, {}, {}, tables};

    // Where the picture of double size is taken, there is one opaque colour.
    // clang-format off
    const struct { uint32_t uId; double fScale; int iWidth; int iHeight; bool bDouble; } cases[] = {
        {1, 1, 16, 15, false}, {1, 1.5, 24, 23, false}, {1, 2, 32, 30, false}, {1, 0.3, 5, 5, false},
        {2, 1, 16, 15, false}, {2, 1.25, 20, 19, true}, {2, 2, 32, 30, true}, {2, 3, 48, 45, true}};

    // clang-format on
    for (const auto& picture : cases)
    {
        SCOPED_TRACE(std::to_string(picture.uId) + ", " + std::to_string(picture.fScale));
        CBitmap bitmap;
        ASSERT_TRUE(bitmap.LoadBitmap(picture.uId, picture.fScale, &module));
        EXPECT_EQ(bitmap.GetWidth(), picture.iWidth);
        EXPECT_EQ(bitmap.GetHeight(), picture.iHeight);
        EXPECT_EQ(bitmap.HasAlpha(), !picture.bDouble);
        const ColorRef uColor = picture.bDouble ? MakeColor(0x80, 0x80, 0xC0) : RED;
        for (int x = 0; x < picture.iWidth; ++x)
        {
            const uint8_t* pPixel = bitmap.GetPixels().GetRow(picture.iHeight / 2) + x * 4;
            const double fFromEdge = (x + 0.5) - picture.iWidth / 2.0;
            const bool bEdge = std::abs(fFromEdge) <= std::max(1.0, picture.fScale);
            EXPECT_TRUE(pPixel[3] == 0 ||
                        bitmap.GetPixels().GetPixel(x, picture.iHeight / 2) == uColor)
                << x;
            EXPECT_TRUE(bEdge || pPixel[3] == (picture.bDouble || fFromEdge < 0 ? 255 : 0)) << x;
        }
    }
}

TEST(CBitmap, ResourcesThatCannotBeShownAreOneLineAndKeepTheBitmap)
{
    const Bytes png = MakeHalf(40, 30);
    const Bytes wide = MakePng(5000, 1, [](int, int) { return 0xFFFFFFFF; });
    const Bytes garbage(500, 0x41);
    std::vector<SBitmapResource> tables = {{1, {png.data(), png.size()}},
                                           {2, {}},
                                           {3, {garbage.data(), garbage.size()}},
                                           {4, {png.data(), png.size(), garbage.data(), 9}},
                                           {5, {wide.data(), wide.size()}}};
    // Cut anywhere before its last chunk.
    for (size_t n = 0; n + 16 < png.size(); ++n)
    {
        tables.push_back({static_cast<uint32_t>(100 + n), {png.data(), n}});
    }
    const SResourceModule module = {"broken", {}, {}, {}, {}, tables};
    CLogCatcher log;
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadBitmap(4, 1, &module));
    const auto fails = [&](uint32_t uId, double fScale, const std::string& strFault)
    {
        EXPECT_FALSE(bitmap.LoadBitmap(uId, fScale, &module)) << uId;
        EXPECT_EQ(log.GetText(),
                  "[CBitmap::LoadBitmap] bitmap " + std::to_string(uId) + " " + strFault + "\n");
        EXPECT_EQ(bitmap.GetWidth(), 40);
        log.Clear();
    };
    fails(99, 1, "not found");
    for (const SBitmapResource& table : std::span(tables).subspan(1))
    {
        fails(table.uId, 2, "is no PNG picture");
    }
    fails(1, 0, "cannot be scaled by 0");
    fails(1, -1, "cannot be scaled by -1");
    fails(1, 0.01, "cannot be scaled by 0.01");
    fails(1, 1000, "cannot be scaled by 1000");
    fails(1, std::numeric_limits<double>::quiet_NaN(), "cannot be scaled by nan");

    // Without a module the registered ones are searched.
    EXPECT_FALSE(bitmap.LoadBitmap(1, 2));
    RegisterResourceModule(&module);
    EXPECT_TRUE(bitmap.LoadBitmap(1, 2));
    UnregisterResourceModule(&module);
    EXPECT_EQ(bitmap.GetWidth(), 80);
}
