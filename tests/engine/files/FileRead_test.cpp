#include "host/FileSystem.h"
#include "tests/support/CTempFolder.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <string>

namespace
{

std::string MakeBytes(size_t nBytes, unsigned uSeed)
{
    std::mt19937 random(uSeed);
    std::string strBytes(nBytes, '\0');
    std::generate(strBytes.begin(), strBytes.end(), [&] { return static_cast<char>(random()); });
    return strBytes;
}

// Read calls to the system so far.
long CountReads()
{
    std::ifstream stream("/proc/self/io");
    std::string strKey;
    long nValue = -1;
    while (stream >> strKey >> nValue && strKey != "syscr:")
    {
    }
    return nValue;
}

} // namespace

TEST(FileRead, AnyMixOfReadsAndSeeksGivesTheFilesBytes)
{
    const CTempFolder folder;
    const std::string strBytes = MakeBytes(300001, 1);
    WriteBytes(folder.Path("x.bin"), strBytes);
    fs::file file;
    ASSERT_TRUE(file.open(folder.Path("x.bin").c_str(), fs::mode_read));
    EXPECT_EQ(file.length(), strBytes.size());
    std::mt19937 random(2);
    size_t iPosition = 0;
    std::string strPart;
    for (int i = 0; i < 3000; ++i)
    {
        if (random() % 4 == 0)
        {
            iPosition = random() % (strBytes.size() + 10);
            ASSERT_TRUE(file.seek(iPosition));
        }
        const size_t nAsked = random() % 8 == 0 ? random() % 150000 : random() % 300;
        const size_t iFrom = std::min(iPosition, strBytes.size());
        const size_t nExpected = std::min(nAsked, strBytes.size() - iFrom);
        strPart.assign(nAsked, '#');
        ASSERT_EQ(file.read(strPart.data(), nAsked), nExpected) << i;
        ASSERT_EQ(strPart.substr(0, nExpected), strBytes.substr(iFrom, nExpected)) << i;
        iPosition += nExpected;
        ASSERT_EQ(file.tell(), iPosition);
        ASSERT_EQ(file.eof(), iPosition >= strBytes.size());
    }
    EXPECT_STREQ(file.last_error().get_error_text(), "");
}

TEST(FileRead, LargeReadsGoStraightAndSmallOnesAreBuffered)
{
    const CTempFolder folder;
    std::string strBytes = MakeBytes(8U << 20, 3);
    WriteBytes(folder.Path("x.bin"), strBytes);
    fs::file file;
    ASSERT_TRUE(file.open(folder.Path("x.bin").c_str(), fs::mode_read));
    const long nBefore = CountReads();
    ASSERT_GE(nBefore, 0);
    const long nOwn = CountReads() - nBefore; // what counting itself costs
    EXPECT_EQ(file.read(strBytes.data(), strBytes.size()), strBytes.size());
    const long nLarge = CountReads();
    EXPECT_EQ(nLarge - nBefore - 2 * nOwn, 1);
    ASSERT_TRUE(file.seek(0));
    for (size_t i = 0; i < strBytes.size() / 8; ++i)
    {
        ASSERT_EQ(file.read(strBytes.data() + 8 * i, 8), 8U);
    }
    EXPECT_LE(CountReads() - nLarge - nOwn, 128);
    EXPECT_EQ(strBytes, ReadBytes(folder.Path("x.bin")));
}

TEST(FileRead, RefusalsNameTheFileAndTheFault)
{
    const CTempFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    WriteBytes(folder.Path("x.bin"), "123");

    const std::tuple<std::string, uint32_t, const char*> cases[] = {
        {folder.GetFolder(), fs::mode_read, "is a folder"},
        {folder.GetFolder(), fs::mode_write, "is a folder"},
        {folder.Path("new/"), fs::mode_write, "is a folder"},
        {folder.Path("none.bin"), fs::mode_read, "No such file or directory"},
        {folder.Path("none/x.bin"), fs::mode_write, "No such file or directory"},
        {folder.Path("x.bin/y"), fs::mode_write, "Not a directory"},
        {folder.Path("pipe"), fs::mode_read, "is no regular file"},
        {folder.Path("x.bin"), 2, "Invalid argument"},
        {"", fs::mode_read, "No such file or directory"},
        {"", fs::mode_write, "No such file or directory"},
    };

    fs::file file;
    for (const auto& [strPath, uMode, pszFault] : cases)
    {
        SCOPED_TRACE(strPath);
        EXPECT_FALSE(file.open(strPath.c_str(), uMode));
        EXPECT_EQ(file.last_error().get_error_text(), strPath + ": " + pszFault);
        EXPECT_STREQ(file.name(), "");
        EXPECT_FALSE(file.close());
    }
    ASSERT_TRUE(file.open(folder.Path("x.bin").c_str(), fs::mode_read));
    EXPECT_STREQ(file.last_error().get_error_text(), "");
    EXPECT_EQ(file.name(), folder.Path("x.bin"));
    EXPECT_EQ(file.write("x", 1), 0U);
    EXPECT_FALSE(file.set_eof());
    EXPECT_EQ(file.last_error().get_error_text(),
              folder.Path("x.bin") + ": is not open for writing");
    EXPECT_FALSE(file.seek(UINT64_MAX));
    EXPECT_TRUE(file.close());
    EXPECT_STREQ(file.name(), "");
    EXPECT_EQ(ReadBytes(folder.Path("x.bin")), "123");
}

TEST(FileRead, FilesBeyondFourGigabytes)
{
    const CTempFolder folder;
    constexpr uint64_t FAR = 5'000'000'000;
    fs::file file;
    ASSERT_TRUE(file.open(folder.Path("far.bin").c_str(), fs::mode_write));
    ASSERT_TRUE(file.seek(FAR)); // a hole, it takes no room
    ASSERT_EQ(file.write("end", 3), 3U);
    ASSERT_TRUE(file.close());
    ASSERT_TRUE(file.open(folder.Path("far.bin").c_str(), fs::mode_read));
    EXPECT_EQ(file.length(), FAR + 3);
    ASSERT_TRUE(file.seek(FAR - 1));
    char szEnd[8] = {};
    EXPECT_EQ(file.read(szEnd, 8), 4U);
    EXPECT_STREQ(szEnd + 1, "end");
    EXPECT_TRUE(file.eof());
}
