#include "tests/engine/imaging/ImageSamples.h"
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
    for (const auto& [uBits, eFormat] : {std::pair{8U, EImageFormat::Indexed8},
                                         std::pair{24U, EImageFormat::Rgb24},
                                         std::pair{32U, EImageFormat::Rgba32}})
    {
        SCOPED_TRACE(uBits);
        const Bytes Expected(Pixels.begin(), Pixels.begin() + 5 * 3 * uBits / 8);
        const ImagePtr pByFormat(IL_CreateImageFromBufferFormat(5, 3, eFormat, Pixels.data()));
        const ImagePtr pByBits(IL_CreateImageFromBufferBPP(5, 3, uBits, Pixels.data()));
        const ImagePtr pZero(IL_CreateImageFromBufferBPP(5, 3, uBits, nullptr));
        ASSERT_TRUE(pByFormat && pByBits && pZero);
        EXPECT_EQ(GetPixels(pByFormat.get()), Expected);
        EXPECT_EQ(GetPixels(pByBits.get()), Expected);
        EXPECT_EQ(pByBits->GetFormat(), eFormat);
        EXPECT_EQ(pByFormat->GetBitsPerPixel(), uBits);
        EXPECT_EQ(GetPixels(pZero.get()), Bytes(Expected.size(), 0));
    }
}

TEST(ImageCreation, RefusesSizesAndFormatsOutsideTheTable)
{
    const ImagePtr pLongest(IL_CreateImageFromBufferBPP(32768, 1, 8, nullptr));
    EXPECT_TRUE(pLongest);
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromBufferBPP(32769, 1, 8, nullptr)));
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromBufferBPP(1, 32769, 8, nullptr)));
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromBufferBPP(0, 1, 8, nullptr)));
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromBufferBPP(1, 0, 8, nullptr)));
    EXPECT_FALSE(ImagePtr(IL_CreateImageFromBufferBPP(1, 1, 16, nullptr)));
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
            SCOPED_TRACE(std::to_string(static_cast<uint32_t>(eFrom)) + " to " +
                         std::to_string(static_cast<uint32_t>(eTo)));
            const ImagePtr pCopy(IL_CreateImageFromImage(pSource.get(), eTo));
            ASSERT_TRUE(pCopy);
            EXPECT_EQ(pCopy->GetFormat(), eTo);
            EXPECT_EQ(GetPixels(pCopy.get()), ConvertByHand(*pSource, eTo));
        }
        const ImagePtr pSame(IL_CreateImageFromImage(pSource.get()));
        EXPECT_EQ(pSame->GetFormat(), eFrom);
        EXPECT_EQ(GetPixels(pSame.get()), GetPixels(pSource.get()));
        EXPECT_NE(pSame->GetRawData(), pSource->GetRawData());
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
    const char* const pszForeign = "not a PNG, JPEG, TGA, BMP or DDS file";
    const std::pair<const char*, std::string> Cases[] = {
        {"text.png", pszForeign},
        {"empty.bmp", pszForeign},
        {"short.tga", "damaged TGA file: the file ends too early"},
        {"odd.tga", "damaged TGA file, or a kind of TGA that is not supported"},
        {"folder.png", "is a folder"},
    };
    for (const auto& [pszName, strFault] : Cases)
    {
        const std::string strPath = Folder.Path(pszName);
        EXPECT_FALSE(LoadImage(strPath));
        std::string strLine = "[IL_LoadImage] " + strPath;
        strLine.append(": ").append(strFault);
        EXPECT_EQ(Log.TakeLines(), std::vector<std::string>{strLine});
        EXPECT_FALSE(LoadPalette(strPath));
        EXPECT_EQ(Log.GetText(), "");
    }
    EXPECT_FALSE(LoadImage(Folder.Path("none.png")));
    const std::vector<std::string> lines = Log.TakeLines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].rfind("[IL_LoadImage] " + Folder.Path("none.png") + ": ", 0), 0U)
        << lines[0];
    EXPECT_EQ(IL_LoadImage(nullptr), nullptr);
    EXPECT_EQ(Log.GetText(), "[IL_LoadImage] pszPath == NULL\n");
}

// Content decides, so a wrong extension does no harm; only TGA files of old need theirs.
TEST(ImageLibrary, TellsFormatsByContent)
{
    const CTempFolder Folder;
    const ImagePtr pImage = MakeImage(2, 2, EImageFormat::Rgb24, MakeNoise(12));
    for (const char* pszName : {"a.PNG", "b.bmp", "c.TGA", "d.dds"})
    {
        ASSERT_TRUE(IL_SaveImage(Folder.Path(pszName).c_str(), pImage.get(), nullptr));
        std::filesystem::copy_file(Folder.Path(pszName),
                                   Folder.Path("x.jpg"),
                                   std::filesystem::copy_options::overwrite_existing);
        const ImagePtr pLoaded = LoadImage(Folder.Path("x.jpg"));
        EXPECT_EQ(GetPixels(pLoaded.get()), GetPixels(pImage.get())) << pszName;
    }
}

TEST(ImageLibrary, ARefusedSaveIsOneLineAndKeepsTheOldFile)
{
    const CTempFolder Folder;
    CLogCatcher Log;
    const ImagePtr pIndexed = MakeImage(2, 1, EImageFormat::Indexed8, {1, 2});
    const ImagePtr pGlass = MakeImage(1, 1, EImageFormat::Rgba32, {1, 2, 3, 4});
    const CTestPalette Two({{1, 2, 3}, {4, 5, 6}});
    const CTestPalette None({});
    const CTestPalette TooMany(Colors(257));

    const struct
    {
        const char* Name;
        const IImage* Image;
        const IPalette* Palette;
        const char* Fault;
    } Cases[] = {
        {"a.png", pIndexed.get(), &Two, "an index has no entry in the palette"},
        {"a.bmp", pIndexed.get(), &None, "the palette has none or too many entries"},
        {"a.tga", pIndexed.get(), &TooMany, "the palette has none or too many entries"},
        {"a.jpg", pGlass.get(), nullptr, "JPEG holds no transparency"},
        {"a.gif", pGlass.get(), nullptr, "the extension is none of png, jpg, jpeg, tga, bmp, dds"},
        {"png", pGlass.get(), nullptr, "the extension is none of png, jpg, jpeg, tga, bmp, dds"},
    };

    for (const auto& Case : Cases)
    {
        const std::string strPath = Folder.Path(Case.Name);
        WriteFile(strPath, {'o', 'l', 'd'});
        EXPECT_FALSE(IL_SaveImage(strPath.c_str(), Case.Image, Case.Palette));
        EXPECT_EQ(Log.GetText(), "[IL_SaveImage] " + strPath + ": " + Case.Fault + "\n");
        EXPECT_EQ(ReadBytes(strPath), "old");
        Log.Clear();
    }
    EXPECT_FALSE(IL_SaveImage(nullptr, pGlass.get(), nullptr));
    EXPECT_FALSE(IL_SaveImage("a.png", nullptr, nullptr));
    EXPECT_EQ(Log.GetText(), "[IL_SaveImage] pszPath == NULL\n[IL_SaveImage] pImage == NULL\n");
    Log.Clear();
    const std::string strNowhere = Folder.Path("png/no/folder.png");
    EXPECT_FALSE(IL_SaveImage(strNowhere.c_str(), pGlass.get(), nullptr));
    const std::vector<std::string> lines = Log.TakeLines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].rfind("[IL_SaveImage] " + strNowhere + ": ", 0), 0U) << lines[0];
}
