#include "engine/imaging/PicturePreview.h"
#include "tests/engine/imaging/FormatRows.h"
#include "tests/support/CLogCatcher.h"

#include <algorithm>
#include <fstream>

namespace
{

// Null and exactly one line that names the file, or an image and silence.
void ExpectImageOrOneLine(const std::string& strPath, CLogCatcher& Log)
{
    const ImagePtr pImage = LoadImage(strPath);
    const PalettePtr pPalette = LoadPalette(strPath);
    const SPicturePreview Preview = LoadPicturePreview(strPath.c_str(), 64);
    ASSERT_TRUE(pImage || !Preview.pImage);
    ASSERT_EQ(Preview.strWhy.empty(), Preview.pImage != nullptr);
    const std::string strText = Log.GetText();
    ASSERT_EQ(Log.TakeLines().size(), pImage ? 0U : 1U);
    ASSERT_EQ(strText.rfind("[IL_LoadImage] " + strPath + ": ", 0) == 0, !pImage) << strText;
    ASSERT_TRUE(pImage || !pPalette);
}

// A sample of a format, and its row.
using Damage = std::pair<const SFormatRow*, SForeignSample>;

std::vector<Damage> GetDamages()
{
    std::vector<Damage> Damages;
    for (const SFormatRow& Row : FORMAT_ROWS)
    {
        for (const SForeignSample& Sample : Row.Samples)
        {
            Damages.emplace_back(&Row, Sample);
        }
    }
    return Damages;
}

class CDamagedImages : public ::testing::TestWithParam<Damage>
{
protected:
    void SetUp() override
    {
        WriteFile(m_Folder.Path("raw"), MakeNoise(size_t{7} * 5 * 3, 2));
        const auto& [pRow, Sample] = GetParam();
        m_Path = m_Folder.Path((std::string(Sample.Name) + "." + pRow->Extension).c_str());
        RunConvert("-size 7x5 -depth 8 rgb:" + m_Folder.Path("raw") + " " + Sample.Arguments + " " +
                   Sample.Prefix + m_Path);
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
        WriteFile(m_Path, GetParam().first->ClaimSides(m_Whole, uSide));
        EXPECT_FALSE(LoadImage(m_Path));
        const std::vector<std::string> Lines = m_Log.TakeLines();
        ASSERT_EQ(Lines.size(), 1U);
        const SPicturePreview Preview = LoadPicturePreview(m_Path.c_str(), 7999U * 8000U);
        if (uSide > 0 && uSide <= 65535)
        {
            EXPECT_EQ(Preview.uWidth, uSide);
            EXPECT_EQ(Preview.uHeight, uSide);
            EXPECT_EQ(Preview.strWhy, "too large to be shown here");
        }
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
                         ::testing::ValuesIn(GetDamages()),
                         [](const auto& Info) {
                             return std::string(Info.param.second.Name) + "_" +
                                    Info.param.first->Extension;
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
