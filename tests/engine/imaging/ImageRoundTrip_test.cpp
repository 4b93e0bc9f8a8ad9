#include "tests/engine/imaging/ImageSamples.h"
#include "tests/support/CLogCatcher.h"

namespace
{

Colors MakeRamp()
{
    Colors Ramp;
    for (uint32_t i = 0; i < 256; ++i)
    {
        const auto uGrey = static_cast<uint8_t>(i);
        Ramp.push_back({uGrey, uGrey, uGrey});
    }
    return Ramp;
}

// Repeats an entry and is in no order, so that a codec that sorts or joins colours shows.
Colors MakeEntries(uint32_t uCount)
{
    const Bytes Noise = MakeNoise(size_t{uCount} * 3);
    Colors Entries;
    for (size_t i = 0; i < uCount; ++i)
    {
        Entries.push_back({Noise[i * 3], Noise[i * 3 + 1], Noise[i * 3 + 2]});
    }
    Entries.back() = Entries.front();
    return Entries;
}

// Odd widths show rows that are padded.
const std::array<std::array<uint32_t, 2>, 4> Sizes = {{{1, 1}, {3, 5}, {17, 4}, {64, 33}}};

class CImageRoundTrip : public ::testing::TestWithParam<const char*>
{
protected:
    std::string Path(const std::string& strName) const
    {
        return m_Folder.Path((strName + "." + GetParam()).c_str());
    }

    // Saves, loads, saves again: the same picture and the same file.
    void Check(const IImage& Image, const Colors& Entries, const Colors& Expected) const
    {
        const CTestPalette Palette(Entries);
        const IPalette* pPalette = Entries.empty() ? nullptr : &Palette;
        ASSERT_TRUE(IL_SaveImage(Path("a").c_str(), &Image, pPalette));
        const ImagePtr pLoaded = LoadImage(Path("a"));
        ASSERT_TRUE(pLoaded);
        EXPECT_EQ(pLoaded->GetWidth(), Image.GetWidth());
        EXPECT_EQ(pLoaded->GetHeight(), Image.GetHeight());
        EXPECT_EQ(pLoaded->GetFormat(), Image.GetFormat());
        EXPECT_EQ(GetPixels(pLoaded.get()), GetPixels(&Image));
        const PalettePtr pLoadedPalette = LoadPalette(Path("a"));
        EXPECT_EQ(GetColors(pLoadedPalette.get()), Expected);
        ASSERT_TRUE(IL_SaveImage(Path("b").c_str(), pLoaded.get(), pLoadedPalette.get()));
        EXPECT_EQ(ReadFile(Path("b")), ReadFile(Path("a")));
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
};

} // namespace

TEST_P(CImageRoundTrip, KeepsEveryByteOfColourAndGrey)
{
    for (const auto& [uWidth, uHeight] : Sizes)
    {
        for (const EImageFormat eFormat :
             {EImageFormat::Rgb24, EImageFormat::Rgba32, EImageFormat::Indexed8})
        {
            SCOPED_TRACE(std::to_string(uWidth) + " format " +
                         std::to_string(static_cast<uint32_t>(eFormat)));
            const ImagePtr pImage =
                MakeImage(uWidth, uHeight, eFormat, MakeNoise(size_t{uWidth} * uHeight * 4));
            // A BMP has no grey of its own: it comes back with a ramp as its palette.
            const bool bRamp =
                eFormat == EImageFormat::Indexed8 && std::string(GetParam()) == "bmp";
            Check(*pImage, {}, bRamp ? MakeRamp() : Colors{});
        }
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_P(CImageRoundTrip, KeepsIndicesAndTheOrderOfThePalette)
{
    if (std::string(GetParam()) == "dds")
    {
        const ImagePtr pImage = MakeImage(2, 1, EImageFormat::Indexed8, {0, 1});
        const CTestPalette Palette(MakeEntries(2));
        EXPECT_FALSE(IL_SaveImage(Path("a").c_str(), pImage.get(), &Palette));
        EXPECT_EQ(m_Log.GetText(),
                  "[IL_SaveImage] " + Path("a") + ": this file format holds no palette\n");
        return;
    }
    for (const Colors& Entries : {Colors{{250, 120, 3}},
                                  MakeEntries(2),
                                  MakeEntries(5),
                                  MakeEntries(16),
                                  MakeEntries(200),
                                  MakeEntries(256),
                                  MakeRamp()})
    {
        SCOPED_TRACE(Entries.size());
        for (const auto& [uWidth, uHeight] : Sizes)
        {
            const auto uBelow = static_cast<uint32_t>(Entries.size());
            const ImagePtr pImage = MakeImage(uWidth,
                                              uHeight,
                                              EImageFormat::Indexed8,
                                              MakeNoise(size_t{uWidth} * uHeight, uBelow));
            Check(*pImage, Entries, Entries);
        }
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_P(CImageRoundTrip, AnIndependentProgramReadsTheSamePicture)
{
    const CTestPalette Palette(MakeEntries(31));
    for (const EImageFormat eFormat :
         {EImageFormat::Rgb24, EImageFormat::Rgba32, EImageFormat::Indexed8})
    {
        for (const bool bPalette : {false, true})
        {
            const bool bIndexed = eFormat == EImageFormat::Indexed8;
            if (bPalette && (!bIndexed || std::string(GetParam()) == "dds"))
            {
                continue;
            }
            SCOPED_TRACE(std::to_string(static_cast<uint32_t>(eFormat)) +
                         (bPalette ? " palette" : ""));
            const IPalette* pPalette = bPalette ? &Palette : nullptr;
            const ImagePtr pImage =
                MakeImage(13, 6, eFormat, MakeNoise(size_t{13} * 6 * 4, bPalette ? 31 : 256));
            ASSERT_TRUE(IL_SaveImage(Path("a").c_str(), pImage.get(), pPalette));
            RunConvert(Path("a") + " -auto-orient -depth 8 rgba:" + Path("raw"));
            EXPECT_EQ(ReadFile(Path("raw")), GetRgba(pImage.get(), pPalette));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats,
                         CImageRoundTrip,
                         ::testing::Values("png", "bmp", "tga", "dds"),
                         [](const auto& Info) { return std::string(Info.param); });

TEST(ImageRoundTripJpeg, StaysCloseAndKeepsTheKind)
{
    const CTempFolder Folder;
    const CLogCatcher Log;
    for (const EImageFormat eFormat :
         {EImageFormat::Rgb24, EImageFormat::Rgba32, EImageFormat::Indexed8})
    {
        // A plain slope, which this kind of compression is made for.
        Bytes Pixels;
        for (uint32_t i = 0; i < 40 * 24; ++i)
        {
            const auto uX = static_cast<uint8_t>(i % 40 * 4);
            const auto uY = static_cast<uint8_t>(i / 40 * 8);
            const Bytes Pixel = eFormat == EImageFormat::Indexed8 ? Bytes{uX}
                                : eFormat == EImageFormat::Rgb24  ? Bytes{uX, uY, 90}
                                                                  : Bytes{uX, uY, 90, 255};
            Pixels.insert(Pixels.end(), Pixel.begin(), Pixel.end());
        }
        const ImagePtr pImage = MakeImage(40, 24, eFormat, Pixels);
        const std::string strPath = Folder.Path("a.jpeg");
        ASSERT_TRUE(IL_SaveImage(strPath.c_str(), pImage.get(), nullptr));
        const ImagePtr pLoaded = LoadImage(strPath);
        ASSERT_TRUE(pLoaded);
        const bool bGrey = eFormat == EImageFormat::Indexed8;
        EXPECT_EQ(pLoaded->GetFormat(), bGrey ? eFormat : EImageFormat::Rgb24);
        const Bytes Before = GetRgba(pImage.get());
        const Bytes After = GetRgba(pLoaded.get());
        ASSERT_EQ(Before.size(), After.size());
        for (size_t i = 0; i < Before.size(); ++i)
        {
            ASSERT_NEAR(Before[i], After[i], 6) << i;
        }
    }
    EXPECT_EQ(Log.GetText(), "");
}
