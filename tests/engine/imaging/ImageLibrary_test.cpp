#include "tests/engine/imaging/FormatRows.h"
#include "tests/support/CLogCatcher.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace
{

// The second computation: grey in floating point, everything else byte by byte.
Bytes ConvertByHand(const IImage& Source, EImageFormat eTo)
{
    const std::ptrdiff_t nBytes = eTo == EImageFormat::Rgba32  ? 4
                                  : eTo == EImageFormat::Rgb24 ? 3
                                                               : 1;
    const Bytes Rgba = GetRgba(&Source);
    Bytes Converted;
    for (size_t i = 0; i < Rgba.size(); i += 4)
    {
        Bytes Pixel(&Rgba[i], &Rgba[i] + nBytes);
        if (nBytes == 1)
        {
            const double fGrey = 0.299 * Rgba[i] + 0.587 * Rgba[i + 1] + 0.114 * Rgba[i + 2];
            Pixel[0] = static_cast<uint8_t>(std::floor(fGrey + 0.5));
        }
        Converted.insert(Converted.end(), Pixel.begin(), Pixel.end());
    }
    return Converted;
}

} // namespace

TEST(ImageCreation, CopiesTheBufferOrFillsWithZeros)
{
    const Bytes Pixels = MakeNoise(size_t{5} * 3 * 4);
    for (const uint32_t uBits : {8U, 24U, 32U})
    {
        const Bytes Expected(Pixels.begin(), Pixels.begin() + 5 * 3 * uBits / 8);
        const ImagePtr pImage(IL_CreateImageFromBufferBPP(5, 3, uBits, Pixels.data()));
        const ImagePtr pZero(IL_CreateImageFromBufferBPP(5, 3, uBits, nullptr));
        EXPECT_EQ(GetPixels(pImage.get()), Expected);
        EXPECT_EQ(GetPixels(pZero.get()), Bytes(Expected.size(), 0));
    }
}

TEST(ImageCreation, RefusesSizesAndFormatsOutsideTheTable)
{
    const ImagePtr pLongest(IL_CreateImageFromBufferBPP(32768, 1, 8, nullptr));
    EXPECT_TRUE(pLongest);
    for (const auto& [uWidth, uHeight, uBits] : std::initializer_list<std::array<uint32_t, 3>>{
             {32769, 1, 8}, {1, 32769, 8}, {0, 1, 8}, {1, 0, 8}, {1, 1, 16}})
    {
        EXPECT_FALSE(ImagePtr(IL_CreateImageFromBufferBPP(uWidth, uHeight, uBits, nullptr)));
    }
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromBufferFormat(1, 1, EImageFormat::Unknown, nullptr)));
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromBufferFormat(1, 1, EImageFormat{7}, nullptr)));
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromImage(nullptr)));
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromImage(pLongest.get(), EImageFormat{7})));
}

// Every pair of formats against a second computation, pixel by pixel.
TEST(ImageCreation, ConvertsBetweenAllFormats)
{
    const EImageFormat Formats[] = {
        EImageFormat::Indexed8, EImageFormat::Rgb24, EImageFormat::Rgba32};
    for (const EImageFormat eFrom : Formats)
    {
        const ImagePtr pSource = MakeImage(9, 7, eFrom, MakeNoise(size_t{9} * 7 * 4));
        for (const EImageFormat eTo : Formats)
        {
            const ImagePtr pCopy(IL_CreateImageFromImage(pSource.get(), eTo));
            ASSERT_TRUE(pCopy && pCopy->GetFormat() == eTo);
            EXPECT_EQ(GetPixels(pCopy.get()), ConvertByHand(*pSource, eTo));
        }
        const ImagePtr pSame(IL_CreateImageFromImage(pSource.get()));
        EXPECT_EQ(GetPixels(pSame.get()), GetPixels(pSource.get()));
    }
}

TEST(Palette, FindsTheFirstExactEntryElseTheNearest)
{
    // Many entries share a slot of any hash; the repeated ones must give their first place.
    Colors Entries;
    for (uint32_t i = 0; i < 200; ++i)
    {
        Entries.push_back({static_cast<uint8_t>(i * 37), static_cast<uint8_t>(i % 90), 7});
    }
    Entries[150] = Entries[20];
    const CTempFolder Folder;
    const CTestPalette Source(Entries);
    const ImagePtr pImage = MakeImage(1, 1, EImageFormat::Indexed8, {0});
    ASSERT_TRUE(IL_SaveImage(Folder.Path("p.tga").c_str(), pImage.get(), &Source));
    const PalettePtr pLoaded = LoadPalette(Folder.Path("p.tga"));
    ASSERT_TRUE(pLoaded);
    const PalettePtr pClone(pLoaded->Clone());
    EXPECT_EQ(pClone->GetEntry(200), nullptr);

    Bytes Asked = MakeNoise(3000);
    for (const auto& Entry : Entries)
    {
        Asked.insert(Asked.end(), Entry.begin(), Entry.end());
    }
    for (size_t i = 0; i < Asked.size(); i += 3)
    {
        size_t nBest = 0;
        int iBest = 1 << 30;
        for (size_t nEntry = 0; nEntry < Entries.size(); ++nEntry)
        {
            int iDistance = 0;
            for (size_t k = 0; k < 3; ++k)
            {
                iDistance +=
                    (Entries[nEntry][k] - Asked[i + k]) * (Entries[nEntry][k] - Asked[i + k]);
            }
            nBest = iDistance < iBest ? nEntry : nBest;
            iBest = std::min(iBest, iDistance);
        }
        ASSERT_EQ(pClone->FindIndex(Asked[i], Asked[i + 1], Asked[i + 2]), nBest) << i;
    }
}

TEST(ImageLibrary, NamesTheFileAndTheFaultOfALoad)
{
    const CTempFolder Folder;
    CLogCatcher Log;
    WriteFile(Folder.Path("text.png"), {'h', 'e', 'l', 'l', 'o'});
    WriteFile(Folder.Path("empty.bmp"), {});
    WriteFile(Folder.Path("short.tga"), {0, 0, 2});
    WriteFile(Folder.Path("odd.tga"), Bytes(100, 9));
    std::filesystem::create_directory(Folder.Path("folder.png"));
    EXPECT_EQ(ListImageNames(false), "PNG, JPEG, TGA, BMP or DDS");
    const std::string strForeign = "not a " + ListImageNames(false) + " file";
    EXPECT_EQ(strForeign.find("not a PNG, JPEG, TGA, BMP"), 0U);
    const std::pair<const char*, std::string> Cases[] = {
        {"text.png", strForeign},
        {"empty.bmp", strForeign},
        {"short.tga", "damaged TGA file: the file ends too early"},
        {"odd.tga", "damaged TGA file, or a kind of TGA that is not supported"},
        {"folder.png", "is a folder"},
        {"none.png", "No such file or directory"},
    };
    for (const auto& [pszName, strFault] : Cases)
    {
        const std::string strPath = Folder.Path(pszName);
        EXPECT_FALSE(LoadImage(strPath));
        EXPECT_FALSE(LoadPalette(strPath));
        EXPECT_EQ(Log.GetText(), "[IL_LoadImage] " + strPath + ": " + strFault + "\n");
        Log.Clear();
    }
    EXPECT_EQ(IL_LoadImage(nullptr), nullptr);
    EXPECT_EQ(Log.GetText(), "[IL_LoadImage] pszPath == NULL\n");
}

// Content decides, so a wrong extension does no harm; only TGA files of old need theirs.
TEST(ImageLibrary, TellsFormatsByContent)
{
    const CTempFolder Folder;
    const ImagePtr pImage = MakeImage(2, 2, EImageFormat::Rgb24, MakeNoise(12));
    for (const SFormatRow& Row : FORMAT_ROWS)
    {
        std::string strName = std::string("a.") + Row.Extension;
        if (Row.GetCodec().pEncode == nullptr)
        {
            continue;
        }
        strName[2] = static_cast<char>(strName[2] - 'a' + 'A'); // in either case
        ASSERT_TRUE(IL_SaveImage(Folder.Path(strName.c_str()).c_str(), pImage.get(), nullptr));
        std::filesystem::copy_file(Folder.Path(strName.c_str()),
                                   Folder.Path("x.jpg"),
                                   std::filesystem::copy_options::overwrite_existing);
        const ImagePtr pLoaded = LoadImage(Folder.Path("x.jpg"));
        ASSERT_TRUE(pLoaded) << strName;
        EXPECT_TRUE(Row.Exact.empty() || GetPixels(pLoaded.get()) == GetPixels(pImage.get()))
            << strName;
    }
}

TEST(ImageLibrary, ARefusedSaveIsOneLineAndKeepsTheOldFile)
{
    const CTempFolder Folder;
    CLogCatcher Log;
    const ImagePtr pIndexed = MakeImage(2, 1, EImageFormat::Indexed8, {1, 2});
    const ImagePtr pGlass = MakeImage(1, 1, EImageFormat::Rgba32, {1, 2, 3, 4});
    const CTestPalette Two({{1, 2, 3}, {4, 5, 6}});
    const CTestPalette Three({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    const CTestPalette None({});
    const CTestPalette TooMany(Colors(257));

    const auto ExpectRefusal = [&](const char* pszName,
                                   const ImagePtr& pImage,
                                   const IPalette* pPalette,
                                   const std::string& strFault)
    {
        const std::string strPath = Folder.Path(pszName);
        WriteFile(strPath, {'o', 'l', 'd'});
        EXPECT_FALSE(IL_SaveImage(strPath.c_str(), pImage.get(), pPalette));
        EXPECT_EQ(Log.GetText(), "[IL_SaveImage] " + strPath + ": " + strFault + "\n");
        EXPECT_EQ(ReadBytes(strPath), "old");
        Log.Clear();
    };
    const std::string strNoKind = "the extension is none of " + ListImageExtensions("", ", ", true);
    EXPECT_EQ(strNoKind.find("the extension is none of png, jpg, jpeg, tga, bmp, "), 0U);
    const char* const pszCount = "the palette has none or too many entries";
    ExpectRefusal("a.png", pIndexed, &Two, "an index has no entry in the palette");
    ExpectRefusal("a.bmp", pIndexed, &None, pszCount);
    ExpectRefusal("a.tga", pIndexed, &TooMany, pszCount);
    ExpectRefusal("a.dds", pIndexed, &Three, "this file format holds no palette");
    ExpectRefusal("a.jpg", pGlass, nullptr, "JPEG holds no transparency");
    ExpectRefusal("a.gif", pGlass, nullptr, strNoKind);
    ExpectRefusal("png", pGlass, nullptr, strNoKind);
    EXPECT_FALSE(IL_SaveImage(nullptr, pGlass.get(), nullptr));
    EXPECT_FALSE(IL_SaveImage("a.png", nullptr, nullptr));
    EXPECT_EQ(Log.GetText(), "[IL_SaveImage] pszPath == NULL\n[IL_SaveImage] pImage == NULL\n");
    Log.Clear();
    EXPECT_FALSE(IL_SaveImage(Folder.Path("png/no/folder.png").c_str(), pGlass.get(), nullptr));
    EXPECT_EQ(Log.TakeLines().size(), 1U);
}
