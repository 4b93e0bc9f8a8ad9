#include "engine/imaging/Grey16.h"
#include "tests/engine/imaging/ImageSamples.h"
#include "tests/support/CLogCatcher.h"

#include <cstring>

namespace
{

std::vector<uint16_t> MakeSamples(size_t nCount)
{
    const Bytes Noise = MakeNoise(nCount * 2);
    std::vector<uint16_t> Samples(nCount);
    std::memcpy(Samples.data(), Noise.data(), Noise.size());
    return Samples;
}

} // namespace

TEST(Grey16, KeepsEverySampleAndAnIndependentProgramAgrees)
{
    const CTempFolder Folder;
    const std::string strPath = Folder.Path("h.png");
    const std::vector<uint16_t> Samples = MakeSamples(size_t{33} * 17);
    ASSERT_TRUE(SaveGrey16(strPath.c_str(), 33, 17, Samples.data()));
    uint32_t uWidth = 0;
    uint32_t uHeight = 0;
    std::vector<uint16_t> Loaded;
    ASSERT_TRUE(LoadGrey16(strPath.c_str(), uWidth, uHeight, Loaded));
    EXPECT_TRUE(uWidth == 33 && uHeight == 17);
    EXPECT_EQ(Loaded, Samples);

    Bytes BigEndian;
    Bytes HighBytes;
    for (const uint16_t uSample : Samples)
    {
        BigEndian.push_back(static_cast<uint8_t>(uSample >> 8));
        BigEndian.push_back(static_cast<uint8_t>(uSample));
        HighBytes.push_back(static_cast<uint8_t>(uSample >> 8));
    }
    RunConvert(strPath + " -endian MSB -depth 16 gray:" + Folder.Path("raw"));
    EXPECT_EQ(ReadFile(Folder.Path("raw")), BigEndian);

    // An interlaced file of that program, read back; as an image it is cut to its high bytes.
    const std::string strForeign = Folder.Path("i.png");
    RunConvert("-size 33x17 -endian MSB -depth 16 gray:" + Folder.Path("raw") +
               " -interlace PNG -define png:color-type=0 -define png:bit-depth=16 " + strForeign);
    ASSERT_TRUE(LoadGrey16(strForeign.c_str(), uWidth, uHeight, Loaded));
    EXPECT_EQ(Loaded, Samples);
    const ImagePtr pImage = LoadImage(strForeign);
    EXPECT_EQ(GetPixels(pImage.get()), HighBytes);

    // Fewer bits are widened to the full range.
    const ImagePtr pSmall = MakeImage(3, 1, EImageFormat::Indexed8, {0, 1, 255});
    ASSERT_TRUE(IL_SaveImage(strPath.c_str(), pSmall.get(), nullptr));
    ASSERT_TRUE(LoadGrey16(strPath.c_str(), uWidth, uHeight, Loaded));
    EXPECT_EQ(Loaded, (std::vector<uint16_t>{0, 257, 65535}));
}

TEST(Grey16, ARefusalIsOneLineAndLeavesEverythingAsItWas)
{
    const CTempFolder Folder;
    CLogCatcher Log;
    const ImagePtr pColor = MakeImage(1, 1, EImageFormat::Rgb24, {1, 2, 3});
    ASSERT_TRUE(IL_SaveImage(Folder.Path("c.png").c_str(), pColor.get(), nullptr));
    ASSERT_TRUE(IL_SaveImage(Folder.Path("c.bmp").c_str(), pColor.get(), nullptr));
    const std::vector<uint16_t> Samples = MakeSamples(64);
    ASSERT_TRUE(SaveGrey16(Folder.Path("cut.png").c_str(), 8, 8, Samples.data()));
    const Bytes Whole = ReadFile(Folder.Path("cut.png"));
    const std::pair<const char*, const char*> Cases[] = {
        {"c.png", "not a PNG file of plain grey"},
        {"c.bmp", "not a PNG file"},
        {"cut.png", "damaged PNG file: the file ends too early"},
    };
    uint32_t uWidth = 77;
    uint32_t uHeight = 78;
    std::vector<uint16_t> Loaded = {79};
    for (size_t nLength = 8; nLength < Whole.size(); ++nLength)
    {
        WriteFile(Folder.Path("cut.png"), {Whole.begin(), Whole.begin() + nLength});
        for (const auto& [pszName, pszFault] : Cases)
        {
            const std::string strPath = Folder.Path(pszName);
            ASSERT_FALSE(LoadGrey16(strPath.c_str(), uWidth, uHeight, Loaded));
            ASSERT_EQ(Log.GetText(), "[LoadGrey16] " + strPath + ": " + pszFault + "\n");
            Log.Clear();
        }
    }
    EXPECT_FALSE(LoadGrey16(nullptr, uWidth, uHeight, Loaded));
    EXPECT_TRUE(uWidth == 77 && uHeight == 78 && Loaded == std::vector<uint16_t>{79});

    Log.Clear();
    const std::string strCut = Folder.Path("cut.png");
    const std::string strOld = ReadBytes(strCut);
    EXPECT_FALSE(SaveGrey16(strCut.c_str(), 0, 8, Samples.data()));
    EXPECT_FALSE(SaveGrey16(strCut.c_str(), 8, 8, nullptr));
    EXPECT_EQ(Log.GetText(),
              "[SaveGrey16] " + strCut +
                  ": a size of 0 x 8 pixels is not supported, the "
                  "limit is 268468225 pixels (16385 x 16385) and 32768 a side\n" +
                  "[SaveGrey16] pSamples == NULL\n");
    EXPECT_EQ(ReadBytes(strCut), strOld);
}
