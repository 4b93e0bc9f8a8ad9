// Files of the float pipelines, made here byte by byte as their description has it.

#include "engine/elevation/ExrReader.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>

namespace
{

template <typename TNumber> std::string Bytes(TNumber number)
{
    std::string strBytes(sizeof(number), '\0');
    std::memcpy(strBytes.data(), &number, sizeof(number));
    return strBytes;
}

std::string Text(const char* pszText)
{
    return std::string(pszText) + '\0';
}

std::string Attribute(const char* pszName, const char* pszType, const std::string& strValue)
{
    return Text(pszName) + Text(pszType) + Bytes(static_cast<uint32_t>(strValue.size())) + strValue;
}

constexpr uint32_t UINT_TYPE = 0;
constexpr uint32_t HALF_TYPE = 1;
constexpr uint32_t FLOAT_TYPE = 2;

// Rows that are not compressed, each a chunk of its own; the window begins at 3, -2.
struct SExrFile
{
    struct SChannel
    {
        const char* pszName;
        uint32_t uType;
        int32_t iSampling = 1;
    };

    std::vector<SChannel> channels{{"Z", HALF_TYPE}};
    std::vector<std::string> rows; // the samples of each
    int32_t iColumns = 2;
    int32_t iRows = 2;
    uint32_t uVersion = 2;
    std::string strMore = {}; // attributes

    std::string Make() const
    {
        std::string strChannels;
        for (const SChannel& channel : channels)
        {
            strChannels += Text(channel.pszName) + Bytes(channel.uType) + Bytes(0U) +
                           Bytes(channel.iSampling) + Bytes(channel.iSampling);
        }
        const std::string strWindow =
            Bytes(3) + Bytes(-2) + Bytes(3 + iColumns - 1) + Bytes(-2 + iRows - 1);
        std::string strFile = "\x76\x2F\x31\x01" + Bytes(uVersion) +
                              Attribute("channels", "chlist", strChannels + '\0') +
                              Attribute("compression", "compression", std::string(1, '\0')) +
                              Attribute("dataWindow", "box2i", strWindow) +
                              Attribute("displayWindow", "box2i", strWindow) +
                              Attribute("lineOrder", "lineOrder", std::string(1, '\0')) +
                              Attribute("pixelAspectRatio", "float", Bytes(1.0F)) +
                              Attribute("screenWindowCenter", "v2f", Bytes(0.0F) + Bytes(0.0F)) +
                              Attribute("screenWindowWidth", "float", Bytes(1.0F)) + strMore + '\0';
        uint64_t nAt = strFile.size() + rows.size() * sizeof(uint64_t);
        std::string strChunks;
        for (size_t i = 0; i < rows.size(); ++i)
        {
            strFile += Bytes(nAt + strChunks.size());
            strChunks += Bytes(static_cast<int32_t>(i) - 2) +
                         Bytes(static_cast<uint32_t>(rows[i].size())) + rows[i];
        }
        return strFile + strChunks;
    }
};

SSampleGrid Decode(const SExrFile& file, std::string& strFault)
{
    const std::string strFile = file.Make();
    const std::vector<uint8_t> bytes(strFile.begin(), strFile.end());
    SSampleGrid grid;
    EXPECT_TRUE(IsExr(bytes));
    const bool bRead = DecodeExr(bytes, grid, strFault);
    EXPECT_EQ(bRead, strFault.empty());
    return grid;
}

TEST(ExrReader, OneChannelOfAnyTypeIsTheHeights)
{
    std::string strFault;
    // 1, -2 / 65504, a void.
    const SExrFile halves{
        .rows = {std::string("\0\x3C\0\xC0", 4), std::string("\xFF\x7B\0\x7E", 4)}};
    const SSampleGrid grid = Decode(halves, strFault);
    ASSERT_EQ(strFault, "");
    EXPECT_EQ(grid.uColumns, 2U);
    EXPECT_EQ(grid.uRows, 2U);
    EXPECT_EQ(grid.uBits, 16U);
    EXPECT_EQ(grid.eType, ESampleType::Float);
    EXPECT_EQ(std::vector<float>(grid.samples.begin(), grid.samples.end() - 1),
              (std::vector<float>{1.0F, -2.0F, 65504.0F}));
    EXPECT_TRUE(std::isnan(grid.samples[3]));

    const SExrFile counts{.channels = {{"N", UINT_TYPE}},
                          .rows = {Bytes(7U) + Bytes(70000U), Bytes(0U) + Bytes(1U)}};
    const SSampleGrid whole = Decode(counts, strFault);
    ASSERT_EQ(strFault, "");
    EXPECT_EQ(whole.eType, ESampleType::Unsigned);
    EXPECT_EQ(whole.samples, (std::vector<float>{7.0F, 70000.0F, 0.0F, 1.0F}));

    // Of several the one called Y; they lie one after the other in a row.
    const std::string strAside(4, '\x11');
    const SExrFile several{
        .channels = {{"A", HALF_TYPE}, {"Y", FLOAT_TYPE}},
        .rows = {strAside + Bytes(0.1F) + Bytes(-5.0F), strAside + Bytes(3e20F) + Bytes(4.0F)}};
    const SSampleGrid chosen = Decode(several, strFault);
    ASSERT_EQ(strFault, "");
    EXPECT_EQ(chosen.uBits, 32U);
    EXPECT_EQ(chosen.samples, (std::vector<float>{0.1F, -5.0F, 3e20F, 4.0F}));
}

TEST(ExrReader, WhatIsNoGridOfHeightsIsRefusedInWords)
{
    const std::vector<std::string> rows(2, std::string(4, '\0'));
    const std::string strTile = Bytes(60000U) + Bytes(60000U) + '\0';
    const std::pair<SExrFile, std::string> aFiles[] = {
        {{.channels = {{"A", HALF_TYPE}, {"B", HALF_TYPE}}, .rows = rows},
         "has 2 channels, and none is called Y"},
        {{.channels = {{"Y", HALF_TYPE, 2}}, .rows = rows}, "its channel has not every sample"},
        {{.rows = rows, .uVersion = 2 | 0x1000},
         "an EXR file of several parts or of samples in depth"},
        {{.rows = rows, .uVersion = 2 | 0x800},
         "an EXR file of several parts or of samples in depth"},
        {{.rows = rows, .iColumns = 60000, .iRows = 60000}, "too short for 60000 x 60000 samples"},
        {{.rows = rows, .iColumns = 1}, "1 x 2 samples are no grid that can be read"},
        {{.rows = rows, .uVersion = 2 | 0x200, .strMore = Attribute("tiles", "tiledesc", strTile)},
         "tiles of 60000 x 60000 samples are too large"},
        // An attribute that claims two gigabytes.
        {{.rows = rows, .strMore = Text("owner") + Text("string") + Bytes(0x7FFFFFFFU)},
         "damaged EXR file: its header has no end"},
        {{.rows = {std::string("\0\x7C\0\0", 4), std::string(4, '\0')}},
         "the sample at column 0, row 0 is not a finite number"},
    };
    for (const auto& [file, strExpected] : aFiles)
    {
        std::string strFault;
        const SSampleGrid grid = Decode(file, strFault);
        EXPECT_EQ(strFault, strExpected);
        EXPECT_TRUE(grid.samples.empty());
    }
}

} // namespace
