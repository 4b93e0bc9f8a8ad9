#include "engine/terrain/HeightFile.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace
{

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

template <typename TValue> void Append(std::string& strBytes, TValue value)
{
    char aBytes[sizeof(TValue)];
    std::memcpy(aBytes, &value, sizeof(TValue));
    strBytes.append(aBytes, sizeof(TValue));
}

// Bit by bit, as the polynomial 0x04C11DB7 is defined for reflected input.
uint32_t GetChecksum(const std::string& strBytes)
{
    uint32_t uRest = 0xFFFFFFFFU;
    for (const char c : strBytes)
    {
        uRest ^= static_cast<uint8_t>(c);
        for (int i = 0; i < 8; ++i)
        {
            uRest = (uRest >> 1) ^ ((uRest & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~uRest;
}

struct SImage
{
    std::string strMagic = "HEIGHTF1";
    uint32_t uSizeX = 3;
    uint32_t uSizeZ = 2;
    SVec3 size{30.0F, -7.5F, 20.0F};
    uint32_t uReserved = 0;
    std::vector<float> heights{0.0F, 1.5F, -2.0F, 1e-30F, 3.25F, 7.5F};
    std::string strAfter;

    std::string Make() const
    {
        std::string strBytes = strMagic;
        Append(strBytes, uSizeX);
        Append(strBytes, uSizeZ);
        Append(strBytes, size);
        Append(strBytes, uReserved);
        for (const float fHeight : heights)
        {
            Append(strBytes, fHeight);
        }
        Append(strBytes, GetChecksum(strBytes));
        return strBytes + strAfter;
    }
};

class HeightFile : public testing::Test
{
protected:
    // Reads into a field that must stay as it is, and gives the one line that says why.
    std::string GetRefusal(const std::string& strBytes)
    {
        WriteBytes(m_Path, strBytes);
        SHeightField field;
        field.Allocate(2, 2);
        field.pHeights[3] = 42.0F;
        EXPECT_FALSE(ReadHeightFile(m_Path.c_str(), field));
        EXPECT_EQ(field.uSizeX, 2U);
        EXPECT_EQ(field.pHeights[3], 42.0F);
        const std::vector<std::string> lines = m_Log.TakeLines();
        EXPECT_EQ(lines.size(), 1U);
        const std::string strLine = lines.empty() ? "" : lines.front();
        const std::string strStart = "[ReadHeightFile] " + m_Path + ": ";
        EXPECT_EQ(strLine.substr(0, strStart.size()), strStart);
        return strLine.substr(std::min(strStart.size(), strLine.size()));
    }

    CTempFolder m_Folder;
    std::string m_Path = m_Folder.Path("a.height");
    CLogCatcher m_Log;
};

TEST_F(HeightFile, HoldsTheDocumentedBytesBothWays)
{
    const SImage image;
    ASSERT_TRUE(WriteHeightFile(m_Path.c_str(), image.heights.data(), 3, 2, image.size));
    EXPECT_EQ(ReadBytes(m_Path), image.Make());

    SHeightField field;
    ASSERT_TRUE(ReadHeightFile(m_Path.c_str(), field));
    EXPECT_EQ(field.uSizeX * 10 + field.uSizeZ, 32U);
    EXPECT_TRUE(field.size.x == 30.0F && field.size.y == -7.5F && field.size.z == 20.0F);
    EXPECT_EQ(std::vector<float>(field.pHeights.get(), field.pHeights.get() + 6), image.heights);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(HeightFile, SurvivesSizesAroundItsBlocks)
{
    // 512 x 512 heights are one block of reading and writing.
    for (const uint32_t uSizeZ : {511U, 512U, 513U, 1024U})
    {
        SCOPED_TRACE(uSizeZ);
        std::vector<float> heights(size_t{512} * uSizeZ);
        for (size_t i = 0; i < heights.size(); ++i)
        {
            heights[i] = static_cast<float>(i * 7919 % 10007) * 0.25F;
        }
        ASSERT_TRUE(WriteHeightFile(m_Path.c_str(), heights.data(), 512, uSizeZ, {1, 1, 1}));
        SHeightField field;
        ASSERT_TRUE(ReadHeightFile(m_Path.c_str(), field));
        ASSERT_EQ(field.GetCount(), heights.size());
        EXPECT_TRUE(std::equal(heights.begin(), heights.end(), field.pHeights.get()));
    }
}

TEST_F(HeightFile, RefusesEachFaultByItsName)
{
    constexpr const char* SIZES = "the vertices per side are not from 2 to 16385";
    constexpr const char* VECTOR = "a component of the size is 0 or not a finite number";
    // clang-format off
    const std::pair<const char*, void (*)(SImage&)> aCases[] = {
        {"not a height file (wrong magic)", [](SImage& i) { i.strMagic = "HEIGHTF2"; }},
        {SIZES, [](SImage& i) { i.uSizeX = 1; }},
        {SIZES, [](SImage& i) { i.uSizeZ = 0; }},
        {SIZES, [](SImage& i) { i.uSizeX = 16386; }},
        {SIZES, [](SImage& i) { i.uSizeZ = 0xFFFFFFFFU; }},
        {VECTOR, [](SImage& i) { i.size.x = 0.0F; }},
        {VECTOR, [](SImage& i) { i.size.y = NOT_A_NUMBER; }},
        {VECTOR, [](SImage& i) { i.size.z = -INFINITE; }},
        {"the reserved word is not 0", [](SImage& i) { i.uReserved = 0x01000000; }},
        {"the height at column 1, row 1 is not a finite number",
         [](SImage& i) { i.heights[4] = NOT_A_NUMBER; }},
        {"the height at column 2, row 0 is not a finite number",
         [](SImage& i) { i.heights[2] = -INFINITE; }},
        {"longer than its sizes say (61 bytes for 3 x 2 vertices)",
         [](SImage& i) { i.strAfter = "x"; }},
        {"shorter than its sizes say (60 bytes for 16385 x 16385 vertices)",
         [](SImage& i) { i.uSizeX = i.uSizeZ = 16385; }},
    };
    // clang-format on
    for (const auto& [pszFault, pSpoil] : aCases)
    {
        SImage image;
        pSpoil(image);
        EXPECT_EQ(GetRefusal(image.Make()), pszFault);
    }
    EXPECT_FALSE(ReadHeightFile(nullptr, *std::make_unique<SHeightField>()));
    EXPECT_EQ(m_Log.TakeLines(), std::vector<std::string>{"[ReadHeightFile] : no path"});
}

TEST_F(HeightFile, RefusesEveryTruncationAndEveryFlippedBit)
{
    const std::string strBytes = SImage().Make();
    for (size_t nLength = 0; nLength < strBytes.size(); ++nLength)
    {
        SCOPED_TRACE(nLength);
        const std::string strFault = GetRefusal(strBytes.substr(0, nLength));
        EXPECT_EQ(strFault.substr(0, 7), nLength < 8 ? "not a h" : "shorter");
    }
    for (size_t nBit = 0; nBit < strBytes.size() * 8; ++nBit)
    {
        SCOPED_TRACE(nBit);
        std::string strFlipped = strBytes;
        strFlipped[nBit / 8] = static_cast<char>(strFlipped[nBit / 8] ^ (1 << nBit % 8));
        const std::string strFault = GetRefusal(strFlipped);
        EXPECT_TRUE(nBit < size_t{8} * 32 ||
                    strFault == "the checksum does not match, the file is damaged");
    }
}

TEST_F(HeightFile, FailedWriteKeepsTheOldFileAndSaysWhy)
{
    const SImage image;
    WriteBytes(m_Path, "old");
    std::vector<float> heights(512 * 1024, 1.0F);
    heights[512 * 700 + 9] = INFINITE;

    const char* const pszSizes = "the vertices per side are not from 2 to 16385";
    const auto expectFault =
        [&](const float* pHeights, uint32_t uX, uint32_t uZ, float fY, const char* pszFault)
    {
        EXPECT_FALSE(WriteHeightFile(m_Path.c_str(), pHeights, uX, uZ, {1, fY, 1}));
        EXPECT_EQ(m_Log.GetText(), "[WriteHeightFile] " + m_Path + ": " + pszFault + "\n");
        EXPECT_EQ(ReadBytes(m_Path), "old");
        m_Log.Clear();
    };
    const float* pHeights = heights.data();
    expectFault(pHeights, 512, 1024, 1, "the height at column 9, row 700 is not a finite number");
    expectFault(pHeights, 1, 9, 1, pszSizes);
    expectFault(pHeights, 9, 16386, 1, pszSizes);
    expectFault(pHeights, 9, 9, 0, "a component of the size is 0 or not a finite number");
    expectFault(nullptr, 9, 9, 1, "no path or no heights");
    EXPECT_FALSE(
        WriteHeightFile(m_Folder.GetFolder().c_str(), image.heights.data(), 3, 2, image.size));
    EXPECT_EQ(m_Log.GetText(), "[WriteHeightFile] " + m_Folder.GetFolder() + ": is a folder\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_Folder.GetFolder()), {}), 1)
        << "a temporary file was left";
}

} // namespace
