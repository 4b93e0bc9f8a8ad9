#include "host/FileSystem.h"
#include "tests/support/CTempFolder.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>

namespace
{

size_t CountEntries(const CTempFolder& folder)
{
    const std::filesystem::directory_iterator entries(folder.GetFolder());
    return static_cast<size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

TEST(FileWrite, AnyMixOfWritesSeeksAndCutsGivesTheModelsBytes)
{
    const CTempFolder folder;
    std::mt19937 random(4);
    std::string strModel;
    size_t iPosition = 0;
    fs::file file;
    ASSERT_TRUE(file.open(folder.Path("x.bin").c_str(), fs::mode_write));
    for (int i = 0; i < 2000; ++i)
    {
        const unsigned uKind = random() % 16;
        if (uKind == 0)
        {
            iPosition = random() % 400000;
            ASSERT_TRUE(file.seek(iPosition));
        }
        else if (uKind == 1)
        {
            strModel.resize(iPosition);
            ASSERT_TRUE(file.set_eof());
        }
        else
        {
            const std::string strPart(uKind == 2 ? random() % 200000 : random() % 500,
                                      static_cast<char>(random()));
            if (!strPart.empty())
            {
                strModel.resize(std::max(strModel.size(), iPosition + strPart.size()));
                strModel.replace(iPosition, strPart.size(), strPart);
            }
            ASSERT_EQ(file.write(strPart.data(), strPart.size()), strPart.size());
            iPosition += strPart.size();
        }
        ASSERT_EQ(file.tell(), iPosition) << i;
        ASSERT_EQ(file.length(), std::max(strModel.size(), iPosition)) << i;
    }
    ASSERT_TRUE(file.close());
    EXPECT_TRUE(ReadBytes(folder.Path("x.bin")) == strModel);
    EXPECT_EQ(CountEntries(folder), 1U);
}

TEST(FileWrite, TheOldFileStaysUntilCloseAndAfterDiscardAndAbandon)
{
    const CTempFolder folder;
    const std::string strTarget = folder.Path("x.txt");
    WriteBytes(strTarget, "old");
    {
        fs::file abandoned;
        ASSERT_TRUE(abandoned.open(strTarget.c_str(), fs::mode_write));
        abandoned.write("new", 3);
        EXPECT_EQ(ReadBytes(strTarget), "old");
        ASSERT_TRUE(abandoned.open(strTarget.c_str(), fs::mode_write));
        abandoned.write("newer", 5);
    }
    fs::file file;
    ASSERT_TRUE(file.open(strTarget.c_str(), fs::mode_write));
    file.write("new", 3);
    file.discard();
    EXPECT_FALSE(file.close());
    EXPECT_EQ(ReadBytes(strTarget), "old");
    EXPECT_EQ(CountEntries(folder), 1U);

    fs::file second;
    ASSERT_TRUE(file.open(strTarget.c_str(), fs::mode_write));
    ASSERT_TRUE(second.open(strTarget.c_str(), fs::mode_write));
    file.write("first", 5);
    second.write("second", 6);
    ASSERT_TRUE(second.close());
    ASSERT_TRUE(file.close());
    EXPECT_EQ(ReadBytes(strTarget), "first");
    EXPECT_EQ(CountEntries(folder), 1U);
}

TEST(FileWrite, PermissionsLinksAndLongNamesAreKept)
{
    const CTempFolder folder;
    const std::string strLong = folder.Path((std::string(251, 'n') + ".txt").c_str());
    WriteBytes(folder.Path("deep/real.txt"), "old");
    ASSERT_EQ(chmod(folder.Path("deep/real.txt").c_str(), 0640), 0);
    std::filesystem::create_symlink("deep/real.txt", folder.Path("inner"));
    std::filesystem::create_symlink(folder.Path("inner"), folder.Path("outer"));
    std::filesystem::create_symlink("deep/new.txt", folder.Path("dangling"));
    std::filesystem::create_symlink("loop", folder.Path("loop"));
    fs::file file;
    for (const std::string& strPath : {folder.Path("outer"), folder.Path("dangling"), strLong})
    {
        SCOPED_TRACE(strPath);
        ASSERT_TRUE(file.open(strPath.c_str(), fs::mode_write));
        ASSERT_EQ(file.write(strPath.data(), strPath.size()), strPath.size());
        ASSERT_TRUE(file.close()) << file.last_error().get_error_text();
        EXPECT_EQ(ReadBytes(strPath), strPath);
    }
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("outer")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("dangling")));
    EXPECT_EQ(ReadBytes(folder.Path("deep/real.txt")), folder.Path("outer"));
    struct stat info = {};
    ASSERT_EQ(stat(folder.Path("deep/real.txt").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0640U);
    EXPECT_FALSE(file.open(folder.Path("loop").c_str(), fs::mode_write));
    EXPECT_EQ(file.last_error().get_error_text(),
              folder.Path("loop") + ": Too many levels of symbolic links");
}

TEST(FileWrite, TextOfAnyLength)
{
    const CTempFolder folder;
    const std::string strLong(70000, 'y');
    fs::ifile file;
    EXPECT_EQ(file.printf("%d", 1), -1);
    ASSERT_TRUE(file.open(folder.Path("x.txt").c_str(), fs::mode_write));
    EXPECT_EQ(file.printf("%*sfade %6.5f \"%s\"\n", 4, "", 0.125, "n"), 21);
    EXPECT_EQ(file.printf("%s", strLong.c_str()), 70000);
    file << "\nab" << nullptr << ""
         << "c\n";
    ASSERT_TRUE(file.close());
    EXPECT_EQ(ReadBytes(folder.Path("x.txt")), "    fade 0.12500 \"n\"\n" + strLong + "\nabc\n");
}
