#include "engine/elevation/HeightImport.h"
#include "engine/elevation/Resample.h"
#include "engine/terrain/HeightFile.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{

TEST(Resample, CornersStayAndAPlaneStaysAPlane)
{
    // From column 0 to the last the plane rises by 16, from row 0 to the last it falls by 20.
    constexpr uint32_t SHAPES[][2] = {{5, 3}, {201, 120}};
    constexpr uint32_t SIZES[][2] = {{2, 2}, {5, 3}, {9, 5}, {33, 33}, {4, 7}, {257, 129}};
    for (const auto& [uColumns, uRows] : SHAPES)
    {
        const auto getPlane = [](uint32_t i, uint32_t uX, uint32_t uZ)
        {
            return 16.0F * static_cast<float>(i % uX) / static_cast<float>(uX - 1) -
                   20.0F * static_cast<float>(i / uX) / static_cast<float>(uZ - 1);
        };
        std::vector<float> samples(size_t{uColumns} * uRows);
        for (uint32_t i = 0; i < samples.size(); ++i)
        {
            samples[i] = getPlane(i, uColumns, uRows);
        }
        for (const auto& [uSizeX, uSizeZ] : SIZES)
        {
            SCOPED_TRACE(testing::Message() << uColumns << " to " << uSizeX);
            std::vector<float> heights(size_t{uSizeX} * uSizeZ, -1.0F);
            Resample({samples.data(), uColumns, uRows}, uSizeX, uSizeZ, heights.data());
            for (uint32_t i = 0; i < heights.size(); ++i)
            {
                ASSERT_NEAR(heights[i], getPlane(i, uSizeX, uSizeZ), 1e-4F) << i;
            }
            EXPECT_EQ(heights[uSizeX - 1], 16.0F);
            EXPECT_EQ(heights.back(), -4.0F);
        }
    }
    const std::vector<float> four{0, 10, 20, 70};
    std::vector<float> heights(9);
    Resample({four.data(), 2, 2}, 3, 3, heights.data());
    EXPECT_EQ(heights, (std::vector<float>{0, 5, 10, 10, 25, 40, 20, 45, 70}));
}

TEST(Resample, DefaultsAreTheNearestSizeAndTheNextRoundHeight)
{
    const uint32_t aSizes[][4] = {// columns, rows, nearest, largest that fits into the columns
                                  {403, 344, 513, 257},
                                  {33, 20, 33, 33},
                                  {48, 48, 33, 33},
                                  {49, 49, 65, 33},
                                  {1201, 1201, 1025, 1025},
                                  {1537, 9, 2049, 1025},
                                  {65535, 2, 16385, 16385},
                                  {32, 2, 33, 0}};
    for (const auto& aCase : aSizes)
    {
        EXPECT_EQ(GetNearestSize(aCase[0], aCase[1]), aCase[2]) << aCase[0] << " x " << aCase[1];
        EXPECT_EQ(GetLargestSize(aCase[0]), aCase[3]) << aCase[0];
    }
    const float aHeights[][2] = {
        {1076, 2000}, {2000, 5000}, {6929, 10000}, {0.25F, 1}, {-5, 1000}, {0, 1000}};
    for (const auto& aCase : aHeights)
    {
        EXPECT_EQ(GetDefaultMaxHeight(aCase[0]), aCase[1]) << aCase[0];
    }
    EXPECT_GE(GetDefaultMaxHeight(3.4e38F), 3.4e38F);
}

class HeightImport : public testing::Test
{
protected:
    // A little-endian file of bare samples, which m_Options gives its shape.
    template <typename TSample>
    void WriteRaw(const char* pszName, uint32_t uColumns, const std::vector<TSample>& samples)
    {
        m_Path = m_Folder.Path(pszName);
        std::string strBytes(samples.size() * sizeof(TSample), '\0');
        std::memcpy(strBytes.data(), samples.data(), strBytes.size());
        WriteBytes(m_Path, strBytes);
        m_Options.uColumns = uColumns;
    }

    bool Import()
    {
        const bool bDone = ImportHeights(m_Path.c_str(), m_Options, m_Field, m_Report);
        EXPECT_EQ(m_Log.TakeLines().size(), bDone ? 0U : 1U);
        return bDone;
    }

    void ExpectFault(const std::string& strFault)
    {
        EXPECT_FALSE(ImportHeights(m_Path.c_str(), m_Options, m_Field, m_Report));
        EXPECT_EQ(m_Log.TakeLines(),
                  std::vector<std::string>{"[ImportHeights] " + m_Path + ": " + strFault});
    }

    std::vector<float> GetHeights() const
    {
        return {m_Field.pHeights.get(), m_Field.pHeights.get() + m_Field.GetCount()};
    }

    bool HasLine(const std::string& strLine) const
    {
        return std::find(m_Report.lines.begin(), m_Report.lines.end(), strLine) !=
               m_Report.lines.end();
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    std::string m_Path;
    SImportOptions m_Options;
    SHeightField m_Field;
    SImportReport m_Report;
};

TEST_F(HeightImport, CodesBecomeHeightsByWhiteByUnitOrByRange)
{
    WriteRaw<uint16_t>("a.r16", 2, {13107, 26214, 65535, 0}); // 0.2, 0.4 and 1 of white
    m_Options.eFit = EFit::Keep;
    m_Options.dWhite = 500.0;
    ASSERT_TRUE(Import());
    EXPECT_EQ(GetHeights(), (std::vector<float>{100, 200, 500, 0}));
    EXPECT_EQ(m_Field.size.y, 500.0F);
    m_Options.fMaxHeight = 800.0F;
    ASSERT_TRUE(Import());
    EXPECT_EQ(m_Field.size.y, 800.0F);

    m_Options.fMaxHeight = 0.0F;
    m_Options.dWhite = 0.0;
    m_Options.dUnit = 0.5;
    ASSERT_TRUE(Import());
    EXPECT_EQ(GetHeights(), (std::vector<float>{6553.5F, 13107, 32767.5F, 0}));
    EXPECT_EQ(m_Field.size.y, 50000.0F);

    WriteRaw<uint16_t>("a.r16", 2, {1000, 1500, 3000, 2000}); // 0.25 and 0.5 of the range
    m_Options.dUnit = 0.0;
    ASSERT_TRUE(Import());
    EXPECT_EQ(GetHeights(), (std::vector<float>{0, 250, 1000, 500}));
    EXPECT_TRUE(HasLine("assumed: the lowest sample 1000 is height 0, the highest 3000 is the "
                        "maximum height"));
    EXPECT_TRUE(HasLine("scale: one step of the file is 0.5 in terrain units"));
    EXPECT_TRUE(HasLine("assumed: maximum height 1000"));
    m_Options.fMaxHeight = 80.0F;
    ASSERT_TRUE(Import());
    EXPECT_EQ(GetHeights(), (std::vector<float>{0, 20, 80, 40}));
    WriteRaw<uint16_t>("flat.r16", 2, {7, 7, 7, 7});
    ASSERT_TRUE(Import());
    EXPECT_EQ(GetHeights(), std::vector<float>(4, 0.0F));

    WriteRaw<float>("a.r32", 2, {0.5F, -2, 1, NAN});
    ASSERT_TRUE(Import());
    EXPECT_EQ(GetHeights(), (std::vector<float>{0.5F, -2, 1, -0.5F / 3}));
    EXPECT_TRUE(HasLine("voids: 1 samples filled from their neighbours"));
    EXPECT_TRUE(HasLine("note: heights below 0 cannot be edited"));
    m_Options.dWhite = 300.0;
    ASSERT_TRUE(Import());
    EXPECT_EQ(GetHeights()[0], 150.0F);
    EXPECT_TRUE(HasLine("note: heights above the maximum height stay until they are edited"));
}

TEST_F(HeightImport, AWindowTakesTheSamplesAsTheyAre)
{
    std::vector<float> samples(70 * 40);
    for (size_t i = 0; i < samples.size(); ++i)
    {
        samples[i] = static_cast<float>(1000 * (i / 70) + i % 70); // row and column
    }
    WriteRaw("a.r32", 70, samples);
    m_Options.eFit = EFit::Crop;
    m_Options.fSpacingX = 2.0F;

    const struct
    {
        uint32_t uSize;
        std::optional<uint32_t> cropX;
        std::optional<uint32_t> cropZ;
        uint32_t uExpectedSize;
        float fFirst;
    } aCases[] = {
        {0, {}, {}, 33, 3018}, // (70 - 33) / 2, (40 - 33) / 2
        {0, 37, 7, 33, 7037},
        {0, 0, {}, 33, 3000},
        {40, 30, 0, 40, 30},
        {2, {}, 38, 2, 38034},
    };

    for (const auto& c : aCases)
    {
        SCOPED_TRACE(c.fFirst);
        m_Options.uSize = c.uSize;
        m_Options.cropX = c.cropX;
        m_Options.cropZ = c.cropZ;
        ASSERT_TRUE(Import());
        ASSERT_EQ(m_Field.uSizeX, c.uExpectedSize);
        ASSERT_EQ(m_Field.uSizeZ, c.uExpectedSize);
        const auto fLast = static_cast<float>(c.uExpectedSize - 1);
        EXPECT_EQ(GetHeights().front(), c.fFirst);
        EXPECT_EQ(GetHeights()[c.uExpectedSize - 1], c.fFirst + fLast);
        EXPECT_EQ(GetHeights().back(), c.fFirst + 1001 * fLast);
        EXPECT_EQ(m_Field.size.x, 2 * fLast) << "the width is the window's";
        EXPECT_EQ(m_Field.size.z, fLast);
    }
    m_Options.uSize = 41;
    ExpectFault("70 x 40 samples have no room for a window of 41 x 41");
    m_Options.uSize = 0;
    m_Options.cropX = 38;
    ExpectFault("a window of 33 samples cannot start at column 38 of 70");
    m_Options.cropX = 37;
    m_Options.cropZ = 8;
    ExpectFault("a window of 33 samples cannot start at row 8 of 40");
    WriteRaw("small.r32", 32, std::vector<float>(32 * 40));
    ExpectFault("32 x 40 samples have no room for a window of 33 x 33");
}

TEST_F(HeightImport, TheFilesOwnSpacingCountsWhenItIsALength)
{
    const auto writeGrid = [this](const char* pszPlace)
    {
        m_Path = m_Folder.Path("a.txt"); // told by its content
        WriteBytes(m_Path,
                   std::string("ncols 3\nnrows 2\n") + pszPlace +
                       "nodata_value -9999\n1 2 3\n4 5 -9999\n");
    };
    writeGrid("xllcorner 500000\nyllcorner 4000000\ndx 30\ndy 20\n");
    ASSERT_TRUE(Import());
    EXPECT_EQ(m_Field.uSizeX, 33U);
    EXPECT_EQ(m_Field.uSizeZ, 33U);
    EXPECT_EQ(m_Field.size.x, 60.0F);
    EXPECT_EQ(m_Field.size.z, 20.0F);
    EXPECT_EQ(GetHeights().back(), 10.0F / 3) << "the mean of 2, 3 and 5";
    m_Options.dUnit = 100.0; // lengths are in the file's unit too
    m_Options.fDepth = 7.0F;
    ASSERT_TRUE(Import());
    EXPECT_EQ(m_Field.size.x, 6000.0F);
    EXPECT_EQ(m_Field.size.z, 7.0F);
    EXPECT_EQ(GetHeights()[32], 300.0F);

    m_Options = {};
    writeGrid("xllcorner 7\nyllcorner 46\ncellsize 0.01\n");
    ASSERT_TRUE(Import());
    EXPECT_NEAR(m_Field.size.x, 0.02F * 77448.0F, 1.5F) << "two cells, a degree at 46.01 north";
    EXPECT_NEAR(m_Field.size.z, 0.01F * 111151.0F, 1.1F);
    m_Options.fSpacingX = 4.0F;
    ASSERT_TRUE(Import());
    EXPECT_EQ(m_Field.size.x, 8.0F);
}

TEST_F(HeightImport, WhatCannotBeIsOneLineAndLeavesTheTerrain)
{
    WriteRaw<float>("a.r32", 2, {1, 2, 3, 3e38F});
    ASSERT_TRUE(Import());
    const std::vector<float> before = GetHeights();
    m_Options.dUnit = 100.0;
    ExpectFault("in terrain units its heights are too large");
    m_Options.dWhite = 5.0;
    ExpectFault("a height of white and a unit are given, only one can hold");
    m_Options.dUnit = m_Options.dWhite = 0.0;
    m_Options.uSize = 16386;
    ExpectFault("no terrain has 16386 vertices a side");
    m_Options.uSize = 0;
    m_Options.fSpacingX = 3e38F;
    m_Options.uColumns = 4;
    WriteRaw<float>("a.r32", 4, std::vector<float>(12));
    ExpectFault("its width, depth or maximum height is too large or too small");
    m_Path = m_Folder.Path("a.hgt");
    WriteBytes(m_Path, std::string(8, '\1'));
    m_Options = {};
    m_Options.dWhite = 5.0;
    ExpectFault("holds heights, no codes: it has no white, give a unit");
    WriteBytes(m_Path, "HEIGHTF1 and nothing else");
    EXPECT_FALSE(Import());
    EXPECT_EQ(GetHeights(), before);
}

} // namespace
