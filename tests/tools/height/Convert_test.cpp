#include "engine/terrain/HeightFile.h"
#include "host/Image.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tools/height/Convert.h"
#include "tools/height/Picture.h"
#include "tools/height/Resample.h"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <sstream>
#include <tuple>

namespace
{

TEST(Resample, CornersStayAndAPlaneStaysAPlane)
{
    SSampleGrid grid;
    grid.uColumns = 5;
    grid.uRows = 3;
    for (uint32_t i = 0; i < 15; ++i)
    {
        grid.samples.push_back(static_cast<float>(i % 5) * 4.0F -
                               static_cast<float>(i / 5) * 10.0F);
    }

    const uint32_t aSizes[][2] = {{2, 2}, {5, 3}, {9, 5}, {33, 17}, {4, 7}};
    for (const auto& [uSizeX, uSizeZ] : aSizes)
    {
        SCOPED_TRACE(uSizeX);
        std::vector<float> heights(size_t{uSizeX} * uSizeZ, -1.0F);
        Resample(grid, uSizeX, uSizeZ, heights.data());
        for (uint32_t i = 0; i < heights.size(); ++i)
        {
            // From column 0 to 4 the plane rises by 16, from row 0 to 2 it falls by 20.
            const float fX = static_cast<float>(i % uSizeX) / static_cast<float>(uSizeX - 1);
            const float fZ = static_cast<float>(i / uSizeX) / static_cast<float>(uSizeZ - 1);
            EXPECT_NEAR(heights[i], 16.0F * fX - 20.0F * fZ, 1e-4F) << i;
        }
        EXPECT_EQ(heights.front(), 0.0F);
        EXPECT_EQ(heights[uSizeX - 1], 16.0F);
        EXPECT_EQ(heights.back(), -4.0F);
    }
    grid = {2, 2, {0, 10, 20, 70}, 0};
    std::vector<float> heights(9);
    Resample(grid, 3, 3, heights.data());
    EXPECT_EQ(heights, (std::vector<float>{0, 5, 10, 10, 25, 40, 20, 45, 70}));
}

TEST(Resample, DefaultsAreTheNearestSizeAndTheNextRoundHeight)
{
    const uint32_t aSizes[][3] = {{403, 344, 513},
                                  {33, 20, 33},
                                  {48, 48, 33},
                                  {49, 49, 65},
                                  {1201, 1201, 1025},
                                  {1537, 9, 2049},
                                  {65535, 2, 16385}};
    for (const auto& aCase : aSizes)
    {
        EXPECT_EQ(GetNearestSize(aCase[0], aCase[1]), aCase[2]) << aCase[0] << " x " << aCase[1];
    }
    const float aHeights[][2] = {
        {1076, 2000}, {2000, 5000}, {6929, 10000}, {0.25F, 1}, {-5, 1000}, {0, 1000}};
    for (const auto& aCase : aHeights)
    {
        EXPECT_EQ(GetDefaultMaxHeight(aCase[0]), aCase[1]) << aCase[0];
    }
    EXPECT_GE(GetDefaultMaxHeight(3.4e38F), 3.4e38F);
}

// Reads the words behind the program's name; whether it could, with the fault if not.
bool ReadOptions(const std::string& strWords, SHeightOptions& options, std::string& strFault)
{
    std::istringstream stream(strWords);
    const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
    std::vector<const char*> line{"tellur-height"};
    for (const std::string& strWord : words)
    {
        line.push_back(strWord.c_str());
    }
    return options.Read(static_cast<int>(line.size()), line.data(), strFault);
}

TEST(SHeightOptions, ReadsWhatTheUsageSays)
{
    SHeightOptions options;
    std::string strFault;
    ASSERT_TRUE(ReadOptions("convert --size 513 in.npy --spacing-x 74 --spacing-z 92.5 out.height "
                            "--max-height 2e3",
                            options,
                            strFault));
    EXPECT_EQ(options.inputs, std::vector<std::string>{"in.npy"});
    EXPECT_EQ(options.strOutput, "out.height");
    EXPECT_EQ(options.uSize, 513U);
    EXPECT_EQ(options.fSpacingZ, 92.5F);
    EXPECT_EQ(options.fMaxHeight, 2000.0F);

    SHeightOptions picture;
    ASSERT_TRUE(ReadOptions("picture a b c.png --pixels 300", picture, strFault));
    EXPECT_EQ(picture.inputs, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(picture.uPixels, 300U);
}

TEST(SHeightOptions, RefusesEachWrongLineWithItsReason)
{
    const std::tuple<const char*, const char*> aCases[] = {
        {"", "no command given"},
        {"export", "unknown command export"},
        {"convert", "convert needs one input and one output"},
        {"picture a", "picture needs inputs and an output"},
        {"convert a b --sise 9", "unknown option --sise"},
        {"convert a b --pixels 9", "unknown option --pixels"},
        {"convert a b --size", "--size needs a value"},
        {"convert a b --size 1", "--size needs a whole number from 2 to 16385"},
        {"convert a b --size 16386", "--size needs a whole number from 2 to 16385"},
        {"convert a b --size 33x", "--size needs a whole number from 2 to 16385"},
        {"convert a b --width -3", "--width needs a number above 0"},
        {"convert a b --depth inf", "--depth needs a number above 0"},
        {"convert a b --max-height nan", "--max-height needs a number above 0"},
        {"convert a b --width 1 --spacing-x 1",
         "--width and --spacing-x say the same, give one of them"},
        {"convert a b --depth 1 --spacing-z 1",
         "--depth and --spacing-z say the same, give one of them"},
    };
    for (const auto& [pszWords, pszFault] : aCases)
    {
        SHeightOptions options;
        std::string strFault;
        EXPECT_FALSE(ReadOptions(pszWords, options, strFault)) << pszWords;
        EXPECT_EQ(strFault, pszFault);
    }
}

class ConvertTest : public testing::Test
{
protected:
    // A 3 x 2 tile of bytes that is a ".npy" file: 1 2 3 / 4 5 900.
    void SetUp() override
    {
        const std::string strHeader = "{'descr': '<i2', 'fortran_order': False, 'shape': (2, 3)}";
        std::string strBytes =
            std::string("\x93NUMPY\1\0", 8) + static_cast<char>(strHeader.size());
        strBytes += '\0' + strHeader + std::string("\1\0\2\0\3\0\4\0\5\0\x84\3", 12);
        WriteBytes(m_Folder.Path("in.npy"), strBytes);
        m_Options.inputs = {m_Folder.Path("in.npy")};
        m_Options.strOutput = m_Folder.Path("out.height");
    }

    std::string ConvertAndGetReport()
    {
        testing::internal::CaptureStdout();
        EXPECT_TRUE(Convert(m_Options));
        return testing::internal::GetCapturedStdout();
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    SHeightOptions m_Options;
};

TEST_F(ConvertTest, WritesTheTerrainAskedForAndSaysWhatItAssumed)
{
    const std::string strAssumed = ConvertAndGetReport();
    SHeightField field;
    ASSERT_TRUE(ReadHeightFile(m_Options.strOutput.c_str(), field));
    EXPECT_EQ(field.uSizeX, 33U);
    EXPECT_EQ(field.pHeights[32], 3.0F);
    EXPECT_EQ(field.pHeights[33 * 33 - 1], 900.0F);
    EXPECT_EQ(strAssumed,
              m_Options.inputs[0] + ": 3 x 2 samples\n" + m_Options.strOutput +
                  ": 33 x 33 vertices\n"
                  "size: 2 x 1, maximum height 1000\n"
                  "range: 1 to 900\n"
                  "step: 0.0625 x 0.03125\n"
                  "assumed: 33 vertices a side, the nearest supported size (--size)\n"
                  "assumed: one terrain unit between samples along x (--spacing-x, --width)\n"
                  "assumed: one terrain unit between samples along z (--spacing-z, --depth)\n"
                  "assumed: maximum height 1000 (--max-height)\n");

    m_Options.uSize = 3;
    m_Options.fSpacingX = 74;
    m_Options.fDepth = 92;
    m_Options.fMaxHeight = 500;
    const std::string strGiven = ConvertAndGetReport();
    EXPECT_NE(strGiven.find("size: 148 x 92, maximum height 500\n"), std::string::npos);
    EXPECT_NE(strGiven.find("note: heights above the maximum height stay until they are edited\n"),
              std::string::npos);
    EXPECT_EQ(strGiven.find("assumed"), std::string::npos) << strGiven;
}

TEST_F(ConvertTest, AFaultIsOneLineAndLeavesTheOldFile)
{
    WriteBytes(m_Options.strOutput, "old");
    m_Options.inputs = {m_Folder.Path("none.npy")};
    EXPECT_FALSE(Convert(m_Options));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    EXPECT_EQ(ReadBytes(m_Options.strOutput), "old");
    m_Options.inputs = {m_Folder.Path("in.npy")};
    m_Options.strOutput = m_Folder.GetFolder();
    EXPECT_FALSE(Convert(m_Options));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
}

TEST_F(ConvertTest, PicturesStandSideBySideInTheColoursOfTheFirst)
{
    const std::string strFlat = m_Folder.Path("flat.height");
    const std::string strPeak = m_Folder.Path("peak.height");
    std::vector<float> heights(40 * 40, 20.0F);
    ASSERT_TRUE(WriteHeightFile(strFlat.c_str(), heights.data(), 40, 40, {400, -80, 400}));
    heights[20 * 40 + 20] = 400.0F;
    ASSERT_TRUE(WriteHeightFile(strPeak.c_str(), heights.data(), 40, 30, {400, 80, 300}));
    m_Options.inputs = {strFlat, strPeak};
    m_Options.strOutput = m_Folder.Path("both.png");
    ASSERT_TRUE(DrawPicture(m_Options));
    const std::unique_ptr<IImage> pImage(IL_LoadImage(m_Options.strOutput.c_str()));
    ASSERT_NE(pImage, nullptr);
    EXPECT_EQ(pImage->GetWidth(), 88U);
    EXPECT_EQ(pImage->GetHeight(), 40U);
    const auto getPixel = [&pImage](uint32_t uX, uint32_t uY)
    {
        const uint8_t* p = pImage->GetRawData() + 3 * (uY * 88 + uX);
        return std::vector<int>(p, p + 3);
    };
    const std::vector<int> white{255, 255, 255};
    EXPECT_EQ(getPixel(44, 20), white) << "the gap";
    EXPECT_EQ(getPixel(60, 35), white) << "below the shorter one";
    EXPECT_EQ(getPixel(0, 0), getPixel(48, 0)) << "equal heights, equal colours";
    EXPECT_NE(getPixel(0, 0), white);
    EXPECT_NE(getPixel(20, 20), getPixel(68, 20));

    const std::string strThin = m_Folder.Path("thin.height");
    ASSERT_TRUE(WriteHeightFile(strThin.c_str(), heights.data(), 2, 2, {400, 80, 0.01F}));
    m_Options.inputs = {strThin, strThin, strThin};
    m_Options.uPixels = 16385;
    EXPECT_FALSE(DrawPicture(m_Options));
    EXPECT_EQ(m_Log.TakeLines(),
              std::vector<std::string>{"[DrawPicture] " + m_Options.strOutput +
                                       ": the pictures together are too large"});
}

} // namespace
