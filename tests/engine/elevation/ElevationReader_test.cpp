#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightImport.h"
#include "engine/elevation/VoidFiller.h"
#include "engine/imaging/PngWriter.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <tuple>

namespace
{

constexpr const char* HEADER = "{'descr': '<i2', 'fortran_order': False, 'shape': (2, 3), }\n";

// A whole ".npy" file; the header's length takes two bytes in version 1, else four.
std::string MakeNpy(char cVersion, const std::string& strHeader, const std::string& strSamples)
{
    std::string strBytes = "\x93NUMPY";
    strBytes += cVersion;
    strBytes += '\0';
    for (int i = 0; i < (cVersion == 1 ? 2 : 4); ++i)
    {
        strBytes += static_cast<char>(strHeader.size() >> (8 * i));
    }
    return strBytes + strHeader + strSamples;
}

template <typename TSample>
std::string MakeSamples(std::initializer_list<TSample> samples, bool bBigEndian)
{
    std::string strBytes;
    for (const TSample sample : samples)
    {
        char aBytes[sizeof(TSample)];
        std::memcpy(aBytes, &sample, sizeof(TSample));
        if (bBigEndian)
        {
            std::reverse(std::begin(aBytes), std::end(aBytes));
        }
        strBytes.append(aBytes, sizeof(TSample));
    }
    return strBytes;
}

class ElevationReader : public testing::Test
{
protected:
    bool Read(const char* pszName, const std::string& strBytes)
    {
        m_Path = m_Folder.Path(pszName);
        WriteBytes(m_Path, strBytes);
        m_Grid = {};
        m_Grid.uColumns = 99; // stays when reading fails
        const bool bRead = ReadElevation(m_Path.c_str(), m_Options, m_Grid, m_Report);
        m_Lines = m_Log.TakeLines();
        EXPECT_EQ(m_Lines.size(), bRead ? 0U : 1U);
        EXPECT_TRUE(bRead || (m_Grid.uColumns == 99 && m_Grid.samples.empty()));
        return bRead;
    }

    void ExpectFault(const char* pszName, const std::string& strBytes, const std::string& strFault)
    {
        EXPECT_FALSE(Read(pszName, strBytes));
        EXPECT_EQ(m_Lines, std::vector<std::string>{"[ReadElevation] " + m_Path + ": " + strFault});
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    std::string m_Path;
    SImportOptions m_Options;
    SImportReport m_Report;
    SSampleGrid m_Grid;
    std::vector<std::string> m_Lines;
};

TEST_F(ElevationReader, ReadsEveryTypeByteOrderAndVersionOfNpy)
{
    const struct
    {
        const char* pszType;
        std::string strSamples;
        std::vector<float> expected;
    } aCases[] = {
        {"<i2", MakeSamples<int16_t>({-2, 32767, -32768}, false), {-2, 32767, -32768}},
        {">i2", MakeSamples<int16_t>({-2, 32767, -32768}, true), {-2, 32767, -32768}},
        {"<u2", MakeSamples<uint16_t>({1, 65535, 2}, false), {1, 65535, 2}},
        {">u2", MakeSamples<uint16_t>({1, 65535, 2}, true), {1, 65535, 2}},
        {"=f4", MakeSamples<float>({1.5F, -2, 1e30F}, false), {1.5F, -2, 1e30F}},
        {">f4", MakeSamples<float>({1.5F, -2, 1e30F}, true), {1.5F, -2, 1e30F}},
        {"<f8", MakeSamples<double>({0.1, -2, 5}, false), {0.1F, -2, 5}},
        {">f8", MakeSamples<double>({0.1, -2, 5}, true), {0.1F, -2, 5}},
    };

    for (const auto& oneCase : aCases)
    {
        for (const char cVersion : {'\1', '\2', '\3'})
        {
            SCOPED_TRACE(testing::Message() << oneCase.pszType << ", version " << int{cVersion});
            const std::string strHeader =
                std::string("{'descr': '") + oneCase.pszType +
                "', 'fortran_order': False, 'shape': (2, 3), }          \n";
            ASSERT_TRUE(Read(
                "a.npy", MakeNpy(cVersion, strHeader, oneCase.strSamples + oneCase.strSamples)));
            EXPECT_EQ(m_Grid.uRows, 2U);
            EXPECT_EQ(m_Grid.uColumns, 3U);
            std::vector<float> expected = oneCase.expected;
            expected.insert(expected.end(), oneCase.expected.begin(), oneCase.expected.end());
            EXPECT_EQ(m_Grid.samples, expected);
        }
    }
    // Another name, another order of keys, other blanks.
    EXPECT_TRUE(Read("elevation.dat",
                     MakeNpy(1,
                             "{\"shape\":(2,3),\"descr\":\"<i2\",  \"fortran_order\"  :False}",
                             std::string(12, '\0'))));
}

TEST_F(ElevationReader, RefusesEachFaultOfNpyByItsName)
{
    const std::string strTwelve(12, '\0');
    const auto withHeader = [&](const std::string& strHeader)
    {
        return MakeNpy(1, strHeader, strTwelve);
    };
    const auto withShape = [&](const std::string& strShape)
    {
        return withHeader("{'descr': '<i2', 'fortran_order': False, 'shape': " + strShape + ", }");
    };
    const auto withType = [&](const std::string& strType)
    {
        return withHeader("{'descr': '" + strType +
                          "', 'fortran_order': False, 'shape': (2, 3), }");
    };
    const float fNan = std::numeric_limits<float>::quiet_NaN();

    const std::tuple<std::string, const char*> faults[] = {
        {"", "not a .npy file (wrong magic)"},
        {"\x93NUMPX" + strTwelve, "not a .npy file (wrong magic)"},
        {MakeNpy(4, HEADER, strTwelve), "version 4 is not known"},
        {MakeNpy(2, HEADER, "").substr(0, 11), "shorter than a header"},
        {MakeNpy(2, HEADER, "").substr(0, 40), "shorter than its header says"},
        {MakeNpy(1, HEADER, strTwelve.substr(1)), "shorter than its shape says"},
        {MakeNpy(1, HEADER, strTwelve + "x"), "longer than its shape says"},
        {withType("<i4"), "type \"<i4\" is not int16, uint16, float32 or float64"},
        {withType("<\n2"), "type \"<?2\" is not int16, uint16, float32 or float64"},
        {withShape("(6,)"), "has 1 dimensions, not 2"},
        {withShape("(1, 2, 3)"), "has 3 dimensions, not 2"},
        {withShape("(1, 6)"), "has 1 rows and 6 columns, not 2 to 65535 of each"},
        // 2^32 x 2^32 samples: the product would be 0 in 64 bits.
        {withShape("(4294967296, 4294967296)"),
         "has 4294967296 rows and 4294967296 columns, not 2 to 65535 of each"},
        {withShape("(65535, 65535)"), "shorter than its shape says"},
        {withHeader("{'descr': '<i2', 'fortran_order': True, 'shape': (2, 3), }"),
         "is in Fortran order, not in C order"},
        {MakeNpy(1,
                 "{'descr': '<f4', 'fortran_order': False, 'shape': (2, 2), }",
                 MakeSamples<float>({fNan, 2, 3, INFINITY}, false)),
         "the sample at column 1, row 1 is not a finite number"},
        {MakeNpy(1,
                 "{'descr': '<f8', 'fortran_order': False, 'shape': (2, 2), }",
                 MakeSamples<double>({1, 1e300, 3, 4}, false)),
         "the sample at column 1, row 0 is not a finite number"},
    };

    for (const auto& [strBytes, pszFault] : faults)
    {
        ExpectFault("a.npy", strBytes, pszFault);
    }
}

TEST_F(ElevationReader, RefusesWhatIsNoHeaderOfAPlainArray)
{
    for (const char* pszHeader :
         {"",
          "{",
          "{}",
          "{'descr': '<i2', 'fortran_order': False, }",
          "{'descr': [('x', '<i2')], 'fortran_order': False, 'shape': (2, 3), }",
          "{'descr': '<i2', 'fortran_order': 0, 'shape': (2, 3), }",
          "{'descr': '<i2', 'fortran_order': False, 'shape': (2, -3), }",
          "{'descr': '<i2', 'fortran_order': False, 'shape': (2 3), }",
          "{'descr': '<i2', 'fortran_order': False, 'shape': (99999999999999999999, 3), }",
          "{'descr': '<i2', 'descr': '<i2', 'fortran_order': False, 'shape': (2, 3), }",
          "{'descr': '<i2', 'fortran_order': False, 'shape': (2, 3), 'more': 1}",
          "{'descr': '<i2', 'fortran_order': False, 'shape': (2, 3), } x",
          "{'descr': '<i2}"})
    {
        SCOPED_TRACE(pszHeader);
        ExpectFault("a.npy",
                    MakeNpy(1, pszHeader, std::string(12, '\0')),
                    "its header is not one of a plain array");
    }
}

TEST_F(ElevationReader, FillsTheVoidsOfAHgtTileFromTheirRims)
{
    constexpr int16_t NONE = -32768;
    // clang-format off
    ASSERT_TRUE(Read("N44W072.HGT", MakeSamples<int16_t>({
        10,   10,   10,   10,   10,
        10,   NONE, NONE, NONE, 10,
        10,   NONE, NONE, NONE, 10,
        10,   NONE, NONE, NONE, 10,
        10,   10,   10,   10,   NONE}, true)));
    // clang-format on
    EXPECT_EQ(m_Grid.uColumns, 5U);
    EXPECT_EQ(m_Grid.uRows, 5U);
    EXPECT_EQ(m_Report.nVoids, 10U);
    EXPECT_TRUE(std::isnan(m_Grid.samples[24])) << "reading alone does not fill";
    EXPECT_EQ(FillVoids(m_Grid), 10U);
    EXPECT_EQ(m_Grid.samples, std::vector<float>(25, 10.0F));

    // The outer ring first, from what is known; then the next from that ring.
    // clang-format off
    ASSERT_TRUE(Read("a.hgt", MakeSamples<int16_t>({
        0,    100,  NONE, NONE,
        -200, 300,  NONE, NONE,
        NONE, NONE, NONE, NONE,
        NONE, NONE, NONE, NONE}, true)));
    // clang-format on
    const float fFirst = (100.0F + 300.0F) / 2.0F;      // next to 100 and 300
    const float fBelowLeft = (-200.0F + 300.0F) / 2.0F; // below -200 and 300
    EXPECT_EQ(FillVoids(m_Grid), 12U);
    EXPECT_EQ(m_Grid.samples[2], fFirst);
    EXPECT_EQ(m_Grid.samples[8], fBelowLeft);
    EXPECT_EQ(m_Grid.samples[3], fFirst) << "its neighbours of the ring before are both that";
    EXPECT_EQ(m_Grid.samples[10], 300.0F) << "only the corner of 300 is known around it";

    // Grids need not be square: 3 columns, 2 rows.
    const float fNan = std::numeric_limits<float>::quiet_NaN();
    m_Grid = {};
    m_Grid.uColumns = 3;
    m_Grid.uRows = 2;
    m_Grid.samples = {fNan, 4, fNan, fNan, 8, 2};
    EXPECT_EQ(FillVoids(m_Grid), 3U);
    EXPECT_EQ(m_Grid.samples, (std::vector<float>{6, 4, 14.0F / 3, 6, 8, 2}));
}

TEST_F(ElevationReader, RefusesWhatIsNoHgtTileAndNoFileAtAll)
{
    ExpectFault("a.hgt", "", "its 0 bytes are no square of 16-bit samples");
    ExpectFault("a.hgt", std::string(2, 'x'), "its 2 bytes are no square of 16-bit samples");
    ExpectFault("a.hgt", std::string(24, 'x'), "its 24 bytes are no square of 16-bit samples");
    ExpectFault("a.hgt",
                MakeSamples<int16_t>({-32768, -32768, -32768, -32768}, true),
                "has no sample that is not void");
    ExpectFault("a.dem",
                std::string(18, 'x'),
                "is no height map that can be read (" + ListElevationFormats(false) + ")");
    ExpectFault("a.png", std::string(18, 'x'), "not a PNG file");
    EXPECT_FALSE(ReadElevation(m_Folder.Path("missing.npy").c_str(), {}, m_Grid, m_Report));
    EXPECT_FALSE(ReadElevation(m_Folder.GetFolder().c_str(), {}, m_Grid, m_Report));
    const std::vector<std::string> lines = m_Log.TakeLines();
    const std::string strLong = m_Folder.Path("long.r16");
    WriteBytes(strLong, "");
    std::filesystem::resize_file(strLong, (uint64_t{64} << 30) + 1); // takes no room
    EXPECT_FALSE(ReadElevation(strLong.c_str(), {}, m_Grid, m_Report));
    EXPECT_EQ(m_Log.TakeLines()[0],
              "[ReadElevation] " + strLong + ": the file is too long for a height map");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].find("[ReadElevation] " + m_Folder.Path("missing.npy") + ": "), 0U);
    EXPECT_EQ(lines[1].find("[ReadElevation] " + m_Folder.GetFolder() + ": "), 0U);
}

TEST_F(ElevationReader, RawFilesTakeTheirShapeAndOrderFromTheOptions)
{
    const std::string strSix = MakeSamples<uint16_t>({1, 2, 3, 256, 5, 65535}, false);
    for (const auto& [uColumns, uRows] : {std::pair{3U, 2U}, {3U, 0U}, {0U, 2U}})
    {
        m_Options.uColumns = uColumns;
        m_Options.uRows = uRows;
        ASSERT_TRUE(Read("a.r16", strSix));
        EXPECT_EQ(m_Grid.uColumns, 3U);
        EXPECT_EQ(m_Grid.samples, (std::vector<float>{1, 2, 3, 256, 5, 65535}));
    }
    m_Options.eByteOrder = EByteOrder::Big;
    ASSERT_TRUE(Read("a.R16", strSix));
    EXPECT_EQ(m_Grid.samples[3], 1.0F);

    const float fNan = std::numeric_limits<float>::quiet_NaN();
    m_Options = {};
    ASSERT_TRUE(Read("a.r32", MakeSamples<float>({1.5F, fNan, 3, -4}, false)));
    EXPECT_EQ(m_Report.nVoids, 1U);
    EXPECT_EQ(m_Grid.samples[3], -4.0F);
    EXPECT_EQ(m_Report.lines,
              (std::vector<std::string>{m_Path + ": 2 x 2 samples",
                                        "format: raw 32-bit float, 32 bits float, little-endian",
                                        "assumed: little-endian byte order",
                                        "assumed: a square of 2 x 2 samples"}));

    ExpectFault("a.r16", strSix, "its 12 bytes are no square of 16-bit samples");
    ExpectFault("a.r32", strSix + "x", "its 13 bytes are no square of 32-bit samples");
    ExpectFault("a.r32",
                MakeSamples<float>({1, 2, -INFINITY, 4}, false),
                "the sample at column 0, row 1 is not a finite number");
    m_Options.uColumns = 65535; // the product with a row count is far beyond the bytes
    m_Options.uRows = 65535;
    ExpectFault("a.r16", strSix, "its 12 bytes are no grid of 65535 x 65535 16-bit samples");
    m_Options.uRows = 0;
    ExpectFault("a.r16", strSix, "its 12 bytes are no grid of 65535 x ? 16-bit samples");
}

// A grey PNG of 2 x 2 pixels; Pixels: its rows without gaps.
std::string MakePng(int nBitDepth, int nColorType, const std::vector<uint8_t>& pixels)
{
    SPngPixels png;
    png.uWidth = 2;
    png.uHeight = 2;
    png.iBitDepth = nBitDepth;
    png.iColorType = nColorType;
    png.nRowBytes = pixels.size() / 2;
    png.pRows = pixels.data();
    std::vector<uint8_t> bytes;
    std::string strFault;
    EXPECT_TRUE(WritePng(png, bytes, strFault)) << strFault;
    return {bytes.begin(), bytes.end()};
}

TEST_F(ElevationReader, PngGivesItsCodesAndWarnsOfTerraces)
{
    const std::string strWarning =
        "warning: 8 bits tell only 256 heights apart, slopes become terraces";
    // The name is another format's: the content counts.
    ASSERT_TRUE(Read("a.hgt", MakePng(8, 0, {0, 1, 200, 255})));
    EXPECT_EQ(m_Grid.samples, (std::vector<float>{0, 1, 200, 255}));
    EXPECT_EQ(m_Report.lines.back(), strWarning);
    m_Options.dWhite = 510.0; // of code 255
    m_Options.eFit = EFit::Keep;
    SHeightField field;
    ASSERT_TRUE(ImportHeights(m_Path.c_str(), m_Options, field, m_Report));
    EXPECT_EQ(std::vector<float>(field.pHeights.get(), field.pHeights.get() + 4),
              (std::vector<float>{0, 2, 400, 510}));
    ASSERT_TRUE(Read("a.png", MakePng(16, 0, {0, 0, 1, 0, 0, 1, 255, 255})));
    EXPECT_EQ(m_Grid.samples, (std::vector<float>{0, 1, 256, 65535}));
    EXPECT_NE(m_Report.lines.back(), strWarning);

    ExpectFault("a.png", MakePng(8, 2, std::vector<uint8_t>(12)), "not a PNG file of plain grey");
}

} // namespace
