#include "tests/engine/imaging/FormatRows.h"
#include "tests/support/CLogCatcher.h"

#include <cstring>

namespace
{

Colors MakeRamp()
{
    Colors Ramp(256);
    for (size_t i = 0; i < Ramp.size(); ++i)
    {
        Ramp[i].fill(static_cast<uint8_t>(i));
    }
    return Ramp;
}

// Repeats an entry and is in no order, so that a codec that sorts or joins colours shows.
Colors MakeEntries(uint32_t uCount)
{
    const Bytes Noise = MakeNoise(size_t{uCount} * 3);
    Colors Entries(uCount);
    std::memcpy(Entries.data(), Noise.data(), Noise.size());
    Entries.back() = Entries.front();
    return Entries;
}

// Odd widths show rows that are padded.
const std::array<std::array<uint32_t, 2>, 4> Sizes = {{{1, 1}, {3, 5}, {17, 4}, {64, 33}}};

class CImageRoundTrip : public ::testing::TestWithParam<SFormatRow>
{
protected:
    std::string Path(const std::string& strName) const
    {
        return m_Folder.Path((strName + "." + GetParam().Extension).c_str());
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
        for (const EImageFormat eFormat : GetParam().Exact)
        {
            SCOPED_TRACE(static_cast<uint32_t>(eFormat));
            const ImagePtr pImage =
                MakeImage(uWidth, uHeight, eFormat, MakeNoise(size_t{uWidth} * uHeight * 4));
            const bool bRamp = eFormat == EImageFormat::Indexed8 && GetParam().GreyIsRamp;
            Check(*pImage, {}, bRamp ? MakeRamp() : Colors{});
        }
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_P(CImageRoundTrip, KeepsIndicesAndTheOrderOfThePalette)
{
    if (!GetParam().HasPalettes())
    {
        return;
    }
    for (const uint32_t uCount : {1U, 2U, 5U, 16U, 200U, 256U, 0U})
    {
        SCOPED_TRACE(uCount);
        const Colors Entries = uCount != 0 ? MakeEntries(uCount) : MakeRamp();
        for (const auto& [uWidth, uHeight] : Sizes)
        {
            const auto uBelow = static_cast<uint32_t>(Entries.size());
            const Bytes Pixels = MakeNoise(size_t{uWidth} * uHeight, uBelow);
            Check(*MakeImage(uWidth, uHeight, EImageFormat::Indexed8, Pixels), Entries, Entries);
        }
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_P(CImageRoundTrip, AnIndependentProgramReadsTheSamePicture)
{
    const CTestPalette Palette(MakeEntries(31));
    const auto Check = [&](EImageFormat eFormat, const IPalette* pPalette)
    {
        SCOPED_TRACE(static_cast<uint32_t>(eFormat));
        const Bytes Pixels = MakeNoise(size_t{13} * 6 * 4, pPalette != nullptr ? 31 : 256);
        const ImagePtr pImage = MakeImage(13, 6, eFormat, Pixels);
        ASSERT_TRUE(IL_SaveImage(Path("a").c_str(), pImage.get(), pPalette));
        RunConvert(Path("a") + " -auto-orient -depth 8 rgba:" + Path("raw"));
        EXPECT_EQ(ReadFile(Path("raw")), GetRgba(pImage.get(), pPalette));
    };
    for (const EImageFormat eFormat : GetParam().Exact)
    {
        Check(eFormat, nullptr);
    }
    if (GetParam().HasPalettes())
    {
        Check(EImageFormat::Indexed8, &Palette);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats,
                         CImageRoundTrip,
                         ::testing::ValuesIn(FORMAT_ROWS),
                         [](const auto& Info) { return std::string(Info.param.Extension); });

TEST(ImageRoundTripRows, AreThoseOfTheCodecs)
{
    std::vector<std::string> Codecs;
    for (const SImageCodec& Codec : GetImageCodecs())
    {
        Codecs.emplace_back(Codec.extensions[0]);
    }
    std::vector<std::string> Rows;
    for (const SFormatRow& Row : FORMAT_ROWS)
    {
        Rows.emplace_back(Row.Extension);
    }
    EXPECT_EQ(Rows, Codecs);
}

TEST(ImageRoundTripJpeg, StaysCloseAndKeepsTheKind)
{
    const CTempFolder Folder;
    const CLogCatcher Log;
    for (const EImageFormat eFormat :
         {EImageFormat::Rgb24, EImageFormat::Rgba32, EImageFormat::Indexed8})
    {
        // A plain slope, which this kind of compression is made for.
        Bytes Slope;
        for (uint32_t i = 0; i < 40 * 24; ++i)
        {
            Slope.push_back(static_cast<uint8_t>(i % 40 * 4));
            Slope.push_back(static_cast<uint8_t>(i / 40 * 8));
            Slope.insert(Slope.end(), {90, 255});
        }
        const ImagePtr pSlope = MakeImage(40, 24, EImageFormat::Rgba32, Slope);
        const ImagePtr pImage(IL_CreateImageFromImage(pSlope.get(), eFormat));
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
