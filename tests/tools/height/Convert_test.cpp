#include "engine/terrain/HeightFile.h"
#include "host/Image.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tools/height/Convert.h"
#include "tools/height/Info.h"
#include "tools/height/Picture.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

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
              m_Options.inputs[0] +
                  ": 3 x 2 samples\n"
                  "format: NumPy array, 16 bits signed, little-endian\n"
                  "assumed: the first row is north (z = 0), the first column is west (x = 0)\n"
                  "assumed: one unit of the file is one terrain unit\n"
                  "scale: one step of the file is 1 in terrain units\n"
                  "assumed: 33 vertices a side, the nearest supported size\n"
                  "fit: 3 x 2 samples interpolated to 33 x 33 vertices\n"
                  "assumed: one terrain unit between samples along x\n"
                  "assumed: one terrain unit between samples along z\n"
                  "assumed: maximum height 1000\n"
                  "terrain: 33 x 33 vertices\n"
                  "size: 2 x 1, maximum height 1000\n"
                  "range: 1 to 900\n"
                  "step: 0.0625 x 0.03125\n" +
                  m_Options.strOutput +
                  ": 33 x 33 samples\n"
                  "format: height file, 32 bits float, little-endian\n");

    m_Options.import.uSize = 3;
    m_Options.import.dUnit = 1;
    m_Options.import.fSpacingX = 74;
    m_Options.import.fDepth = 11160000;
    m_Options.import.fMaxHeight = 500;
    const std::string strGiven = ConvertAndGetReport();
    EXPECT_NE(strGiven.find("size: 148 x 11160000, maximum height 500\n"), std::string::npos);
    EXPECT_NE(strGiven.find("note: heights above the maximum height stay until they are edited\n"),
              std::string::npos);
    EXPECT_EQ(strGiven.rfind("assumed"), strGiven.find("assumed: the first row")) << strGiven;
}

TEST_F(ConvertTest, ScaleAndOrderAreTheFilesOnTheOtherSideOfTheTerrain)
{
    // Terrain to file: what is said is said of the file. Its grid stays as it is.
    const std::string strTerrain = m_Folder.Path("in.height");
    const float aHeights[] = {0, 2, 4, 6, 8, 10};
    ASSERT_TRUE(WriteHeightFile(strTerrain.c_str(), aHeights, 3, 2, {4, 50, 2}));
    m_Options.inputs = {strTerrain};
    m_Options.strOutput = m_Folder.Path("out.r16");
    m_Options.import.dUnit = 2;
    m_Options.import.eByteOrder = EByteOrder::Big;
    ConvertAndGetReport();
    EXPECT_EQ(ReadBytes(m_Options.strOutput), std::string("\0\0\0\1\0\2\0\3\0\4\0\5", 12));

    // File to file: of the input, unless it is said of the output.
    m_Options.inputs = {m_Options.strOutput};
    m_Options.strOutput = m_Folder.Path("out.r32");
    m_Options.import.uColumns = 3;
    m_Options.output.dUnit = 4;
    m_Options.output.eByteOrder = EByteOrder::Big;
    ConvertAndGetReport();
    EXPECT_EQ(ReadBytes(m_Options.strOutput),
              std::string("\0\0\0\0\x3F\0\0\0\x3F\x80\0\0\x3F\xC0\0\0\x40\0\0\0\x40\x20\0\0", 24));

    // Codes to codes, nothing said of the scale: they stay.
    m_Options.strOutput = m_Folder.Path("copy.r16");
    m_Options.import.dUnit = 0;
    m_Options.output = {};
    ConvertAndGetReport();
    EXPECT_EQ(ReadBytes(m_Options.strOutput), std::string("\0\0\1\0\2\0\3\0\4\0\5\0", 12));
    m_Options.import.uSize = 2;
    m_Options.bFitGiven = true;
    ConvertAndGetReport();
    EXPECT_EQ(ReadBytes(m_Options.strOutput), std::string("\0\0\2\0\3\0\5\0", 8));
}

TEST_F(ConvertTest, TurnsMirrorsAndKeepsThePlace)
{
    // 1 2 3 / 4 5 900, turned to the right: 4 1 / 5 2 / 900 3; mirrored along x: 1 4 / 2 5 / 3 900.
    m_Options.import.orientation = {ETurn::Right, EFlip::X};
    m_Options.import.dUnit = 1;
    m_Options.output.dUnit = 1;
    m_Options.strOutput = m_Folder.Path("turned.r16");
    const std::string strReport = ConvertAndGetReport();
    EXPECT_NE(strReport.find("orientation: turned by 90 degrees to the right, then mirrored along "
                             "x: the file's north-west is at x = 0, z = 0\n"),
              std::string::npos)
        << strReport;
    EXPECT_EQ(ReadBytes(m_Options.strOutput), std::string("\1\0\4\0\2\0\5\0\3\0\x84\3", 12));

    m_Options.import = {};
    m_Options.output = {};
    m_Options.inputs = {m_Folder.Path("place.asc")};
    WriteBytes(m_Options.inputs[0],
               "ncols 2 nrows 2 xllcorner 700000 yllcorner 5100000 cellsize 25 1 2 3 4");
    m_Options.strOutput = m_Folder.Path("place.tif");
    ConvertAndGetReport();
    m_Options.inputs = {m_Options.strOutput};
    testing::internal::CaptureStdout();
    EXPECT_TRUE(PrintInfo(m_Options));
    const std::string strInfo = testing::internal::GetCapturedStdout();
    EXPECT_NE(strInfo.find("  place: 700012.5, 5100037.5 to 700037.5, 5100012.5\n"),
              std::string::npos)
        << strInfo;
}

TEST_F(ConvertTest, InfoTellsWhatEachFileIs)
{
    const std::string strTerrain = m_Folder.Path("a.height");
    const float aHeights[] = {0, -2.5F, 4, 6};
    ASSERT_TRUE(WriteHeightFile(strTerrain.c_str(), aHeights, 2, 2, {4, 50, -2}));
    m_Options.inputs = {m_Folder.Path("none.png"), strTerrain, m_Options.inputs[0]};
    testing::internal::CaptureStdout();
    EXPECT_FALSE(PrintInfo(m_Options)) << "one of three is missing";
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              strTerrain +
                  "\n  format: height file\n"
                  "  samples: 2 columns x 2 rows\n"
                  "  type: 32 bits float, little-endian\n"
                  "  spacing: 4 x 2\n"
                  "  range: -2.5 to 6\n"
                  "  voids: 0\n"
                  "  nearest size: 33\n"
                  "  size: 4 x -2, maximum height 50\n" +
                  m_Options.inputs[2] +
                  "\n  format: NumPy array\n"
                  "  samples: 3 columns x 2 rows\n"
                  "  type: 16 bits signed, little-endian\n"
                  "  spacing: not said\n"
                  "  range: 1 to 900\n"
                  "  voids: 0\n"
                  "  nearest size: 33\n"
                  "  assumed: the first row is north (z = 0), the first column is west (x = 0)\n");
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
}

TEST_F(ConvertTest, AFaultIsOneLineAndLeavesTheOldFile)
{
    WriteBytes(m_Options.strOutput, "old");
    m_Options.inputs = {m_Folder.Path("none.npy")};
    EXPECT_FALSE(Convert(m_Options));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    EXPECT_EQ(ReadBytes(m_Options.strOutput), "old");
    const std::string strLost = m_Folder.Path("lost.height");
    WriteBytes(strLost + ".bak", "kept");
    m_Options.inputs = {strLost};
    EXPECT_FALSE(Convert(m_Options));
    EXPECT_EQ(m_Log.TakeLines(),
              std::vector<std::string>{
                  "[ReadHeightFile] " + strLost + ": No such file or directory; " + strLost +
                  ".bak holds the heights from before a change of resolution"});
    m_Options.inputs = {m_Folder.Path("in.npy")};
    m_Options.strOutput = m_Folder.Path("folder.height");
    std::filesystem::create_directory(m_Options.strOutput);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(Convert(m_Options));
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
}

TEST_F(ConvertTest, TilesForAProgramAreOneHeightMapAgain)
{
    ::setenv("XDG_CONFIG_HOME", m_Folder.GetFolder().c_str(), 1); // no rows of one's own
    m_Options.strTarget = "Ours";
    m_Options.strOutput = m_Folder.Path("out.png");
    EXPECT_FALSE(Convert(m_Options));
    const std::string strLine = m_Log.GetText();
    EXPECT_EQ(strLine.find("[Convert] there is no target \"Ours\" (16-bit PNG; "), 0U) << strLine;
    m_Log.Clear();
    m_Options.strTarget = "EXR float";
    EXPECT_FALSE(Convert(m_Options));
    EXPECT_EQ(m_Log.TakeLines(),
              std::vector<std::string>{"[PlanExport] " + m_Options.strOutput +
                                       ": \"EXR float\" is written to files of .exr"});

    // 3 x 2 samples have no middle row, so one is put between them.
    m_Options.strOutput = m_Folder.Path("out.exr");
    m_Options.uTiles = 2;
    const std::string strReport = ConvertAndGetReport();
    EXPECT_NE(strReport.find("fit: 3 x 2 vertices interpolated to 3 x 3 samples\n"
                             "tiles: 2 x 2 tiles of 2 x 2 samples, from "),
              std::string::npos)
        << strReport;
    m_Options = {};
    m_Options.inputs = {m_Folder.Path("out_x0_y0.exr")};
    testing::internal::CaptureStdout();
    EXPECT_TRUE(PrintInfo(m_Options));
    EXPECT_NE(testing::internal::GetCapturedStdout().find(
                  "  tiles: 2 x 2 of 2 x 2 samples, edges are shared\n"),
              std::string::npos);
    m_Options.strOutput = m_Folder.Path("back.asc");
    EXPECT_TRUE(ConvertAndGetReport().starts_with(m_Folder.Path("out.exr") + ": 3 x 3 samples\n"));
    EXPECT_TRUE(ReadBytes(m_Options.strOutput).ends_with("\n1 2 3\n2.5 3.5 451.5\n4 5 900\n"));
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(ConvertTest, WhatAnEarlierExportLeftIsNotReadWithThisOne)
{
    ::setenv("XDG_CONFIG_HOME", m_Folder.GetFolder().c_str(), 1); // no rows of one's own
    // The text tells of a file that is another one then; what it does not tell of stays.
    const std::string strText = m_Folder.Path("one.exr.txt");
    m_Options.strOutput = m_Folder.Path("one.exr");
    m_Options.strTarget = "EXR float";
    ConvertAndGetReport();
    EXPECT_TRUE(std::filesystem::exists(strText));
    m_Options.strTarget = "";
    ConvertAndGetReport();
    EXPECT_FALSE(std::filesystem::exists(strText));
    WriteBytes(strText, "mine");
    ConvertAndGetReport();
    EXPECT_EQ(ReadBytes(strText), "mine");

    // Nobody can be asked about a tile that a smaller set leaves.
    WriteBytes(m_Folder.Path("out_x2_y0.exr"), "more");
    m_Options.strOutput = m_Folder.Path("out.exr");
    m_Options.strTarget = "EXR float";
    m_Options.uTiles = 2;
    EXPECT_FALSE(Convert(m_Options));
    EXPECT_EQ(m_Log.TakeLines(),
              std::vector<std::string>{"[Convert] " + m_Options.strOutput + ": " +
                                       m_Folder.Path("out_x2_y0.exr") +
                                       " is there, of a set of more tiles"});
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
