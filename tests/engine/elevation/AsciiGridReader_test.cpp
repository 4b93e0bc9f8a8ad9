#include "engine/elevation/AsciiGridReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string_view>
#include <tuple>

namespace
{

bool Decode(std::string_view text, SSampleGrid& grid, std::string& strFault)
{
    const std::vector<uint8_t> bytes(text.begin(), text.end()); // exact, for the sanitizer
    return DecodeAsciiGrid(bytes, grid, strFault);
}

TEST(AsciiGridReader, ReadsHeadersInAnyOrderAndRowsFromTheNorth)
{
    const float fNan = std::nanf("");
    const std::vector<float> plain = {1, -2.5F, 3e2F, 4, 5, 6};
    const std::vector<float> holes = {1, fNan, 3, 4, 5, fNan};
    const std::tuple<const char*, std::vector<float>, double, double, bool> aCases[] = {
        // clang-format off
        {"ncols 3\nnrows 2\nxllcorner 500\nyllcorner 40\ncellsize 30\n1 -2.5 3e2\n4 5 6\n", plain, 30, 30, false},
        {"NROWS 2\r\nNCols 3\r\ncellsize 1e-2\r\nYLLCENTER -33\r\nXLLCENTER -71.5\r\n"
         "NODATA_value -9999\r\n1 -9999.0 3\r\n4 5 -9999\r\n", holes, 0.01, 0.01, true},
        {"dx 2 dy +3 nodata_value -3.40282346639e+38 ncols 3 nrows 2\n"
         "+1 -3.4028234663852886e+38\t3 4\n\n5 NaN", holes, 2, 3, false},
        {"ncols 3 nrows 2 cellsize 0.01 xllcorner 500000 yllcorner 40 1 -2.5 300 4 5 6", plain, 0.01, 0.01, false},
        {"ncols 3 nrows 2 cellsize 0.01 1 -2.5 300 4 5 6", plain, 0.01, 0.01, false},
        {"cellsize 1 ncols 3 nrows 2 nan 1 1 1 1 1", {fNan, 1, 1, 1, 1, 1}, 1, 1, false},
        // clang-format on
    };
    for (const auto& [pszText, samples, dSpacingX, dSpacingZ, bInDegrees] : aCases)
    {
        SCOPED_TRACE(pszText);
        SSampleGrid grid;
        std::string strFault;
        ASSERT_TRUE(Decode(pszText, grid, strFault)) << strFault;
        EXPECT_EQ(grid.uColumns, 3U);
        EXPECT_EQ(grid.uRows, 2U);
        ASSERT_EQ(grid.samples.size(), 6U);
        for (size_t i = 0; i < 6; ++i)
        {
            EXPECT_EQ(std::isnan(grid.samples[i]), std::isnan(samples[i])) << i;
            EXPECT_TRUE(std::isnan(samples[i]) || grid.samples[i] == samples[i]) << i;
        }
        EXPECT_EQ(grid.dSpacingX, dSpacingX);
        EXPECT_EQ(grid.dSpacingZ, dSpacingZ);
        EXPECT_EQ(grid.bInDegrees, bInDegrees);
    }
}

TEST(AsciiGridReader, SaysWhatIsWrongAndWhere)
{
    const std::string strHeader = "ncols 3 nrows 2 cellsize 1\n";
    const std::pair<std::string, const char*> aCases[] = {
        {"", "the header has no ncols"},
        {"1 2 3", "the header has no ncols"},
        {"ncols 3 cellsize 1 1 2 3", "the header has no nrows"},
        {"ncols 3 nrows 2 1 2 3 4 5 6", "the header has no cellsize above 0"},
        {"ncols 3 nrows 2 cellsize -1 1 2 3 4 5 6", "the header has no cellsize above 0"},
        {"ncols 3 nrows 2 dx 4 1 2 3 4 5 6", "the header has no cellsize above 0"},
        {"ncols 2.5 nrows 2", "ncols must be a whole number from 2 to 65535"},
        {"ncols 2 nrows 65536", "nrows must be a whole number from 2 to 65535"},
        {"ncols 2 nrows 1e999", "nrows \"1e999\" is no number"},
        {"ncols", "ncols \"\" is no number"},
        {"ncols 3 width 2", "unknown word \"width\" in the header"},
        {"\xEF\xBB\xBFncols 3", "the header has no ncols"},
        {strHeader, "the file ends in row 1 of 2, after 0 of 3 samples"},
        {strHeader + "1 2 3 4", "the file ends in row 2 of 2, after 1 of 3 samples"},
        {strHeader + "1 2 3\n4 5 6\n7", "more samples than 2 rows of 3 have"},
        {strHeader + "1 2 3\n4 5,5 6", "row 2, column 2: \"5,5\" is no number"},
        {strHeader + "1 2\x1b[31m 3\n4 5 6", "row 1, column 2: \"2?[31m\" is no number"},
        {strHeader + "1 2 1e39\n4 5 6", "row 1, column 3: \"1e39\" is out of range"},
        {strHeader + "1 2 3\n4 -inf 6", "row 2, column 2: \"-inf\" is out of range"},
        {"ncols 65535 nrows 65535 cellsize 1 1 2",
         "the file ends in row 1 of 65535, after 2 of 65535 samples"},
    };
    for (const auto& [strText, pszFault] : aCases)
    {
        SSampleGrid grid;
        grid.uRows = 99;
        std::string strFault;
        EXPECT_FALSE(Decode(strText, grid, strFault)) << strText;
        EXPECT_EQ(strFault, pszFault);
        EXPECT_EQ(grid.uRows, 99U);
    }
}

} // namespace
