#include "tests/engine/imaging/ImageSamples.h"
#include "tests/support/CLogCatcher.h"

#include <algorithm>

// Files written byte by byte from the descriptions of their formats.
namespace
{

// Little-endian, nBytes of it.
void Put(Bytes& Data, size_t nPosition, uint32_t uValue, size_t nBytes = 4)
{
    Data.resize(std::max(Data.size(), nPosition + nBytes));
    for (size_t i = 0; i < nBytes; ++i)
    {
        Data[nPosition + i] = static_cast<uint8_t>(uValue >> (8 * i));
    }
}

constexpr EImageFormat Rgb = EImageFormat::Rgb24;
constexpr EImageFormat Rgba = EImageFormat::Rgba32;
constexpr EImageFormat Indexed = EImageFormat::Indexed8;

Bytes Join(const Bytes& First, const Bytes& Second)
{
    Bytes Both = First;
    Both.insert(Both.end(), Second.begin(), Second.end());
    return Both;
}

Bytes Repeat(const Bytes& Pixel, size_t nCount)
{
    return nCount == 0 ? Bytes{} : Join(Pixel, Repeat(Pixel, nCount - 1));
}

struct SHandMade
{
    const char* Name;
    Bytes File;
    EImageFormat Format;
    Bytes Pixels;
    Colors Palette = {};
};

Bytes MakeTga(uint8_t uType, uint8_t uBits, uint8_t uDescriptor, const Bytes& Rest)
{
    return Join({0, 0, uType, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 2, 0, uBits, uDescriptor}, Rest);
}

// 2 x 2 with a map of two entries, the first of them number 3.
Bytes MakeMappedTga(uint8_t uType, uint8_t uEntryBits, const Bytes& Rest)
{
    return Join({2, 1, uType, 3, 0, 2, 0, uEntryBits, 0, 0, 0, 0, 2, 0, 2, 0, 8, 0x20, 'i', 'd'},
                Rest);
}

// 4 x 3 pixels of one byte, palette of two entries, bottom row first.
Bytes MakeRunBmp(uint32_t uBits, uint32_t uCompression, const Bytes& Runs)
{
    Bytes File = {'B', 'M'};
    Put(File, 10, 62);
    Put(File, 14, 40);
    Put(File, 18, 4);
    Put(File, 22, 3);
    Put(File, 26, 1, 2);
    Put(File, 28, uBits, 2);
    Put(File, 30, uCompression);
    Put(File, 46, 2);
    Put(File, 50, 0);
    return Join(Join(File, {1, 2, 3, 0, 4, 5, 6, 0}), Runs);
}

Bytes MakeDds(uint32_t uSide, const char* pszCode, const Bytes& Blocks)
{
    Bytes File(128, 0);
    std::copy_n("DDS ", 4, File.begin());
    Put(File, 4, 124);
    Put(File, 12, uSide);
    Put(File, 16, uSide);
    Put(File, 76, 32);
    Put(File, 80, 4);
    std::copy_n(pszCode, 4, File.begin() + 84);
    return Join(File, Blocks);
}

Bytes MakeExtendedDds(uint32_t uNumber, const Bytes& Pixels)
{
    Bytes File = MakeDds(1, "DX10", {});
    Put(File, 128, uNumber);
    Put(File, 144, 0);
    return Join(File, Pixels);
}

// Red 5 bits 31 and blue 31: the two ends of the block's line of colours; four rows, one of each.
const Bytes ColorBlock = {0x00, 0xF8, 0x1F, 0x00, 0x00, 0x55, 0xAA, 0xFF};

// The same rows from the ends 255, 0, 0 and 0, 0, 255: end, end, two thirds and one third red.
Bytes MakeRows(uint8_t uAlpha)
{
    return Join(Join(Repeat({255, 0, 0, uAlpha}, 4), Repeat({0, 0, 255, uAlpha}, 4)),
                Join(Repeat({170, 0, 85, uAlpha}, 4), Repeat({85, 0, 170, uAlpha}, 4)));
}

const Bytes StoredTop = {3, 2, 1, 6, 5, 4};
const Bytes StoredBottom = {9, 8, 7, 12, 11, 10};
const Bytes TopFirst = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
const Colors Entries = {{3, 2, 1}, {6, 5, 4}};
const Colors Shifted = {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {3, 2, 1}, {6, 5, 4}};

std::vector<SHandMade> MakeTgaCases()
{
    // clang-format off
    return {
        {"a.tga", MakeTga(2, 24, 0x20, Join(StoredTop, StoredBottom)), Rgb, TopFirst},
        {"bottom.tga", MakeTga(2, 24, 0, Join(StoredBottom, StoredTop)), Rgb, TopFirst},
        {"mirrored.tga", MakeTga(2, 24, 0x30, {6, 5, 4, 3, 2, 1, 12, 11, 10, 9, 8, 7}), Rgb,
         TopFirst},
        // A run of three pixels crosses from the lower row to the upper one; one literal follows.
        {"runs.tga", MakeTga(10, 24, 0, {0x82, 3, 2, 1, 0x00, 6, 5, 4}), Rgb,
         {1, 2, 3, 4, 5, 6, 1, 2, 3, 1, 2, 3}},
        {"grey.tga", MakeTga(3, 8, 0, {1, 2, 3, 4}), Indexed, {3, 4, 1, 2}},
        {"greyruns.tga", MakeTga(11, 8, 0x20, {0x03, 9, 8, 7, 6}), Indexed, {9, 8, 7, 6}},
        {"mapped.tga", MakeMappedTga(1, 24, {1, 2, 3, 4, 5, 6, 3, 4, 4, 3}), Indexed,
         {3, 4, 4, 3}, Shifted},
        {"mappedruns.tga", MakeMappedTga(9, 32, {1, 2, 3, 0, 4, 5, 6, 0, 0x83, 4}), Indexed,
         {4, 4, 4, 4}, Shifted},
        // Five bits a channel, red highest: 31, 0, 0; 0, 31, 0; 0, 0, 31; 16, 16, 16.
        {"short.tga", MakeTga(2, 16, 0x20, {0x00, 0x7C, 0xE0, 0x03, 0x1F, 0x00, 0x10, 0x42}), Rgb,
         {255, 0, 0, 0, 255, 0, 0, 0, 255, 132, 132, 132}},
        {"alpha.tga", MakeTga(2, 32, 0x28, {3, 2, 1, 0, 3, 2, 1, 0, 3, 2, 1, 0, 3, 2, 1, 0}),
         Rgba, Repeat({1, 2, 3, 0}, 4)},
        // No alpha bits are declared and no pixel has alpha: opaque.
        {"noalpha.tga", MakeTga(2, 32, 0x20, {3, 2, 1, 0, 3, 2, 1, 0, 3, 2, 1, 0, 3, 2, 1, 0}),
         Rgba, Repeat({1, 2, 3, 255}, 4)},
    };
    // clang-format on
}

std::vector<SHandMade> MakeOtherCases()
{
    // Alpha 4 bits a pixel, 0 to 15 down the block; alpha ends 200 and 100, all pixels the first or
    // second end in turn.
    const Bytes Alpha4 = {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE};
    const Bytes Alpha8 = {200, 100, 0x08, 0x82, 0x20, 0x08, 0x82, 0x20};
    Bytes Bc2 = MakeRows(0);
    Bytes Bc3 = MakeRows(0);
    for (size_t i = 0; i < 16; ++i)
    {
        Bc2[i * 4 + 3] = static_cast<uint8_t>(i * 17);
        Bc3[i * 4 + 3] = i % 2 == 0 ? 200 : 100;
    }
    // The lower end first: the third colour is the middle, the fourth is transparent.
    const Bytes Holes = Join(Join(Repeat({0, 0, 255, 255}, 4), Repeat({255, 0, 0, 255}, 4)),
                             Join(Repeat({127, 0, 127, 255}, 4), Bytes(16, 0)));
    // clang-format off
    return {
        // A run, two skipped pixels, the end of a row, literals with padding, a skip of one row.
        {"runs8.bmp", MakeRunBmp(8, 1, {2, 1, 0, 0, 0, 3, 1, 0, 1, 0, 0, 2, 0, 1, 1, 1, 0, 1}),
         Indexed, {0, 0, 0, 1, 1, 0, 1, 0, 1, 1, 0, 0}, Entries},
        {"runs4.bmp", MakeRunBmp(4, 2, {4, 0x01, 0, 0, 0, 3, 0x10, 0x10, 0, 0, 3, 0x11, 0, 1}),
         Indexed, {1, 1, 1, 0, 1, 0, 1, 0, 0, 1, 0, 1}, Entries},
        // Complete rows need no mark at the end.
        {"unmarked.bmp", MakeRunBmp(8, 1, {4, 1, 0, 0, 4, 0, 0, 0, 4, 1}), Indexed,
         {1, 1, 1, 1, 0, 0, 0, 0, 1, 1, 1, 1}, Entries},
        {"bc1.dds", MakeDds(4, "DXT1", ColorBlock), Rgba, MakeRows(255)},
        {"holes.dds", MakeDds(4, "DXT1", {0x1F, 0x00, 0x00, 0xF8, 0x00, 0x55, 0xAA, 0xFF}), Rgba,
         Holes},
        {"bc2.dds", MakeDds(4, "DXT3", Join(Alpha4, ColorBlock)), Rgba, Bc2},
        {"bc3.dds", MakeDds(4, "DXT5", Join(Alpha8, ColorBlock)), Rgba, Bc3},
        // A side that fills no whole block.
        {"small.dds", MakeDds(1, "DXT1", ColorBlock), Rgba, {255, 0, 0, 255}},
        {"x28.dds", MakeExtendedDds(28, {1, 2, 3, 4}), Rgba, {1, 2, 3, 4}},
        {"x87.dds", MakeExtendedDds(87, {1, 2, 3, 4}), Rgba, {3, 2, 1, 4}},
        {"x88.dds", MakeExtendedDds(88, {1, 2, 3, 4}), Rgb, {3, 2, 1}},
        {"x61.dds", MakeExtendedDds(61, {9}), Indexed, {9}},
    };
    // clang-format on
}

void Check(const std::vector<SHandMade>& Cases)
{
    const CTempFolder Folder;
    const CLogCatcher Log;
    for (const SHandMade& Case : Cases)
    {
        SCOPED_TRACE(Case.Name);
        WriteFile(Folder.Path(Case.Name), Case.File);
        const ImagePtr pImage = LoadImage(Folder.Path(Case.Name));
        const PalettePtr pPalette = LoadPalette(Folder.Path(Case.Name));
        ASSERT_TRUE(pImage) << Log.GetText();
        EXPECT_EQ(pImage->GetFormat(), Case.Format);
        EXPECT_EQ(GetPixels(pImage.get()), Case.Pixels);
        EXPECT_EQ(GetColors(pPalette.get()), Case.Palette);
    }
    EXPECT_EQ(Log.GetText(), "");
}

} // namespace

TEST(HandMadeImages, TgaBmpRunsAndDdsBlocks)
{
    Check(MakeTgaCases());
    Check(MakeOtherCases());
}

TEST(HandMadeImages, RunsThatDoNotFitAreRefused)
{
    const CTempFolder Folder;
    CLogCatcher Log;
    const std::pair<std::string, Bytes> Cases[] = {
        {"wide.bmp", MakeRunBmp(8, 1, {3, 1, 2, 1, 0, 1})},
        {"tall.bmp", MakeRunBmp(8, 1, {0, 0, 0, 0, 0, 0, 1, 1, 0, 1})},
        {"skip.bmp", MakeRunBmp(8, 1, {0, 2, 0, 3, 0, 1})},
        {"end.bmp", MakeRunBmp(8, 1, {4, 1, 0, 0, 4, 1})},
        {"literal.bmp", MakeRunBmp(8, 1, {0, 4, 1, 1})},
        {"long.tga", MakeTga(11, 8, 0, {0x84, 1})},
        {"end.tga", MakeTga(11, 8, 0, {0x80, 1, 0x81})},
        {"literal.tga", MakeTga(11, 8, 0, {0x03, 1, 2})},
    };
    for (const auto& [strName, File] : Cases)
    {
        const std::string strPath = Folder.Path(strName.c_str());
        const char* const pszKind = strName.back() == 'p' ? "BMP" : "TGA";
        WriteFile(strPath, File);
        EXPECT_FALSE(LoadImage(strPath));
        EXPECT_EQ(Log.GetText(),
                  "[IL_LoadImage] " + strPath + ": damaged " + pszKind +
                      " file: the runs do not fit the picture\n");
        Log.Clear();
    }
}
