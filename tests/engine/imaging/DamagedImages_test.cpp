#include "tests/engine/imaging/ImageSamples.h"
#include "tests/support/CLogCatcher.h"

#include <algorithm>
#include <fstream>

namespace
{

struct SSample
{
    const char* Name;
    const char* Arguments; // what makes the independent program write it
    const char* Prefix;
};

const SSample Samples[] = {
    {"rgb.png", "-define png:color-type=2", ""},
    {"rgba.png", "-interlace PNG -define png:color-type=6", ""},
    {"palette.png", "-define png:color-type=3", ""},
    {"grey.png", "-colorspace Gray -define png:color-type=0 -depth 16", ""},
    {"photo.jpg", "", ""},
    {"steps.jpg", "-interlace JPEG -colorspace Gray", ""},
    {"plain.tga", "", ""},
    {"runs.tga", "-compress RLE", ""},
    {"mapped.tga", "-type Palette -compress RLE", ""},
    {"rgb.bmp", "", "BMP3:"},
    {"alpha.bmp", "-alpha on", ""},
    {"palette.bmp", "-type Palette -compress none", "BMP3:"},
    {"runs.bmp", "-type Palette -compress RLE", "BMP3:"},
    {"plain.dds", "-define dds:compression=none", ""},
    {"blocks.dds", "-define dds:compression=dxt5", ""},
};

// Null and exactly one line that names the file, or an image and silence.
void ExpectImageOrOneLine(const std::string& strPath, CLogCatcher& Log)
{
    const ImagePtr pImage = LoadImage(strPath);
    const PalettePtr pPalette = LoadPalette(strPath);
    const std::string strText = Log.GetText();
    ASSERT_EQ(Log.TakeLines().size(), pImage ? 0U : 1U);
    ASSERT_EQ(strText.rfind("[IL_LoadImage] " + strPath + ": ", 0) == 0, !pImage) << strText;
    ASSERT_TRUE(pImage || !pPalette);
}

class CDamagedImages : public ::testing::TestWithParam<SSample>
{
protected:
    void SetUp() override
    {
        WriteFile(m_Folder.Path("raw"), MakeNoise(size_t{7} * 5 * 3, 2));
        m_Path = m_Folder.Path(GetParam().Name);
        RunConvert("-size 7x5 -depth 8 rgb:" + m_Folder.Path("raw") + " " + GetParam().Arguments +
                   " " + GetParam().Prefix + m_Path);
        m_Whole = ReadFile(m_Path);
        ASSERT_TRUE(LoadImage(m_Path));
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    std::string m_Path;
    Bytes m_Whole;
};

uint64_t GetPeakKilobytes()
{
    std::ifstream Status("/proc/self/status");
    std::string strWord;
    uint64_t nKilobytes = 0;
    while (Status >> strWord && strWord != "VmPeak:")
    {
    }
    Status >> nKilobytes;
    return nKilobytes;
}

// The check value of a PNG chunk.
uint32_t GetCrc(const Bytes& Data, size_t nFirst, size_t nCount)
{
    uint32_t uCrc = 0xFFFFFFFF;
    for (size_t i = nFirst; i < nFirst + nCount; ++i)
    {
        uCrc ^= Data[i];
        for (int iBit = 0; iBit < 8; ++iBit)
        {
            uCrc = uCrc >> 1 ^ (uCrc & 1 ? 0xEDB88320 : 0);
        }
    }
    return ~uCrc;
}

void PutSide(Bytes& Data, size_t nPosition, uint32_t uSide, size_t nBytes, bool bBigEndian)
{
    for (size_t i = 0; i < nBytes; ++i)
    {
        const size_t nShift = 8 * (bBigEndian ? nBytes - 1 - i : i);
        Data[nPosition + i] = static_cast<uint8_t>(uSide >> nShift);
    }
}

size_t FindFrame(const Bytes& Jpeg)
{
    const std::string strBytes(Jpeg.begin(), Jpeg.end());
    return std::min(strBytes.find("\xFF\xC0"), strBytes.find("\xFF\xC2"));
}

// The same file with other sides in its header, all check values right.
Bytes ClaimSides(const Bytes& Whole, const std::string& strName, uint32_t uSide)
{
    Bytes Data = Whole;
    const std::string strExtension = strName.substr(strName.find('.') + 1);
    const bool bBigEndian = strExtension == "png" || strExtension == "jpg";
    const bool bShort = strExtension == "tga" || strExtension == "jpg";
    const size_t nBytes = bShort ? 2 : 4;
    const size_t nFirst = strExtension == "png"   ? 16
                          : strExtension == "jpg" ? FindFrame(Data) + 5
                          : strExtension == "bmp" ? 18
                                                  : 12;
    PutSide(Data, nFirst, uSide, nBytes, bBigEndian);
    PutSide(Data, nFirst + nBytes, uSide, nBytes, bBigEndian);
    if (strExtension == "png")
    {
        PutSide(Data, 29, GetCrc(Data, 12, 17), 4, true);
    }
    return Data;
}

} // namespace

TEST_P(CDamagedImages, CutAtEveryLength)
{
    testing::internal::CaptureStderr();
    const Bytes Pixels = GetPixels(LoadImage(m_Path).get());
    for (size_t nLength = 0; nLength < m_Whole.size(); ++nLength)
    {
        SCOPED_TRACE(nLength);
        WriteFile(m_Path, {m_Whole.begin(), m_Whole.begin() + nLength});
        ASSERT_NO_FATAL_FAILURE(ExpectImageOrOneLine(m_Path, m_Log));
        // The mark at the end of runs, padding, a footer may go; then no pixel may differ.
        const ImagePtr pImage = LoadImage(m_Path);
        ASSERT_TRUE(!pImage || GetPixels(pImage.get()) == Pixels);
        m_Log.Clear();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_P(CDamagedImages, AFlippedByteAtEveryPosition)
{
    testing::internal::CaptureStderr();
    for (size_t nPosition = 0; nPosition < m_Whole.size(); ++nPosition)
    {
        for (const uint8_t uFlip : {0x01, 0x80, 0xFF})
        {
            SCOPED_TRACE(std::to_string(nPosition) + " ^ " + std::to_string(uFlip));
            Bytes Data = m_Whole;
            Data[nPosition] ^= uFlip;
            WriteFile(m_Path, Data);
            ASSERT_NO_FATAL_FAILURE(ExpectImageOrOneLine(m_Path, m_Log));
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_P(CDamagedImages, AClaimOfManyPixelsIsRefusedBeforeTheyAreAllocated)
{
    const uint64_t nPeakBefore = GetPeakKilobytes();
    for (const uint32_t uSide : {8000U, 16385U, 16386U, 30000U, 65535U, 0x7FFFFFFFU, 0U})
    {
        SCOPED_TRACE(uSide);
        WriteFile(m_Path, ClaimSides(m_Whole, GetParam().Name, uSide));
        EXPECT_FALSE(LoadImage(m_Path));
        const std::vector<std::string> Lines = m_Log.TakeLines();
        ASSERT_EQ(Lines.size(), 1U);
        const std::string strSide = std::to_string(uSide);
        const std::string strLimit = ": a size of " + strSide + " x " + strSide +
                                     " pixels is not supported, the limit is 268468225 pixels "
                                     "(16385 x 16385) and 32768 a side";
        if (uSide > 0 && uSide <= 65535) // what all headers can say
        {
            EXPECT_EQ(Lines[0].ends_with(strLimit), uSide > 16385) << Lines[0];
        }
    }
    EXPECT_LT(GetPeakKilobytes() - nPeakBefore, 32U * 1024);
}

INSTANTIATE_TEST_SUITE_P(Samples,
                         CDamagedImages,
                         ::testing::ValuesIn(Samples),
                         [](const auto& Info)
                         {
                             std::string strName = Info.param.Name;
                             strName[strName.find('.')] = '_';
                             return strName;
                         });

// All markers are there, but half of the picture's data is not.
TEST(DamagedJpeg, ScanDataThatEndsEarlyIsDamage)
{
    const CTempFolder Folder;
    CLogCatcher Log;
    const ImagePtr pImage = MakeImage(32, 32, EImageFormat::Rgb24, MakeNoise(size_t{32} * 32 * 3));
    const std::string strPath = Folder.Path("a.jpg");
    ASSERT_TRUE(IL_SaveImage(strPath.c_str(), pImage.get(), nullptr));
    Bytes Data = ReadFile(strPath);
    Data.resize(Data.size() - 700);
    Data[11] = 9; // a revision that readers remark on first
    Data.insert(Data.end(), {0xFF, 0xD9});
    WriteFile(strPath, Data);
    EXPECT_FALSE(LoadImage(strPath));
    EXPECT_EQ(Log.GetText().rfind("[IL_LoadImage] " + strPath + ": damaged JPEG file: ", 0), 0U);
}
