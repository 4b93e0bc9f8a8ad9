#include "host/FileSystem.h"
#include "tests/support/CTempFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>

namespace
{

// A user root and a data root of their own, the defaults again at the end.
class CRoots : public testing::Test
{
protected:
    CRoots()
    {
        std::filesystem::create_directories(User(""));
        std::filesystem::create_directories(Data(""));
        fs::set_user_root(User("").c_str());
        fs::set_data_root(Data("").c_str());
    }

    ~CRoots() override
    {
        fs::set_user_root(nullptr);
        fs::set_data_root("");
    }

    std::string User(const char* pszName) const { return m_Folder.Path("user/") + pszName; }

    std::string Data(const char* pszName) const { return m_Folder.Path("data/") + pszName; }

    static std::string Read(const std::string& strPath)
    {
        fs::file file;
        if (!file.open(strPath.c_str(), fs::mode_read))
        {
            return file.last_error().get_error_text();
        }
        std::string strBytes(file.length(), '\0');
        EXPECT_EQ(file.read(strBytes.data(), strBytes.size()), strBytes.size());
        return strBytes;
    }

    static bool Write(const std::string& strPath, const std::string& strBytes)
    {
        fs::file file;
        return file.open(strPath.c_str(), fs::mode_write) &&
               file.write(strBytes.data(), strBytes.size()) == strBytes.size() && file.close();
    }

    CTempFolder m_Folder;
};

} // namespace

TEST_F(CRoots, NamesAreFoundAsWrittenThenWithoutCaseUserBeforeData)
{
    WriteBytes(User("Maps/Both.txt"), "user");
    WriteBytes(Data("Maps/Both.txt"), "data");
    WriteBytes(User("Maps/mixed.TXT"), "other case");
    WriteBytes(Data("maps/only.txt"), "only data");
    WriteBytes(User("Twin/x.txt"), "upper");
    WriteBytes(User("twin/x.txt"), "lower");
    WriteBytes(User("twin/y.txt"), "second folder");
    WriteBytes(User("twin/Z.txt"), "Z");
    WriteBytes(User("twin/z.txt"), "z");

    const std::pair<std::string, const char*> cases[] = {
        {"Maps/Both.txt", "user"},
        {"Maps\\Both.txt", "user"},
        {"./MAPS//..\\maps\\both.TXT", "user"},
        {"Maps/Mixed.txt", "other case"},
        {"Maps/ONLY.txt", "only data"},
        {"Twin/x.txt", "upper"},
        {"twin/x.txt", "lower"},
        {"TWIN/x.txt", "upper"}, // byte order decides between two that are equally wrong
        {"Twin/y.txt", "second folder"},
        {"Twin/z.txt", "z"},
        {"Twin/Z.txt", "Z"},
        {User("MAPS/both.txt"), "user"},
        {Data("maps/Only.txt"), "only data"},
    };

    for (const auto& [strPath, pszExpected] : cases)
    {
        EXPECT_EQ(Read(strPath), pszExpected) << strPath;
        EXPECT_TRUE(fs::exists(strPath.c_str())) << strPath;
        EXPECT_EQ(ReadBytes(fs::root_path(strPath.c_str())), pszExpected);
    }
    EXPECT_EQ(Read("Maps\\None.txt"), "Maps\\None.txt: No such file or directory");
    EXPECT_FALSE(fs::exists("Maps/None.txt"));
    EXPECT_FALSE(fs::exists(""));
    EXPECT_FALSE(fs::exists(nullptr));
    EXPECT_EQ(fs::root_path("mAps\\New\\None.txt"), User("Maps/New/None.txt"));
    EXPECT_EQ(Read(User("Maps")), User("Maps") + ": is a folder");
}

TEST_F(CRoots, WritesGoToTheUserRootAndAreWhatIsReadAfterwards)
{
    WriteBytes(Data("Brushes/set.txt"), "installed");
    WriteBytes(User("own.TXT"), "old");
    ASSERT_TRUE(Write("brushes/SET.txt", "changed"));
    ASSERT_TRUE(Write("Own.txt", "new"));
    EXPECT_EQ(ReadBytes(Data("Brushes/set.txt")), "installed");
    EXPECT_EQ(Read("Brushes/set.txt"), "changed");
    EXPECT_EQ(ReadBytes(User("own.TXT")), "new");
    EXPECT_FALSE(std::filesystem::exists(User("Own.txt")));
    EXPECT_FALSE(Write("Nowhere/new.txt", "x"));
    EXPECT_FALSE(std::filesystem::exists(User("Nowhere")));

    ASSERT_EQ(chmod(Data("Brushes/set.txt").c_str(), 0444), 0);
    EXPECT_TRUE(fs::read_only(Data("Brushes/set.txt").c_str()));
    ASSERT_EQ(chmod(User("own.TXT").c_str(), 0444), 0);
    EXPECT_TRUE(fs::read_only("own.txt"));
    EXPECT_FALSE(fs::read_only("none.txt"));
}

TEST_F(CRoots, RenameAndRemoveTakeTheSamePathsAndNeverOverwrite)
{
    WriteBytes(User("a.txt"), "a");
    WriteBytes(User("b.txt"), "b");
    WriteBytes(Data("c.txt"), "c");
    EXPECT_EQ(fs::rename("a.txt", "B.TXT"), -1);
    EXPECT_EQ(fs::rename("a.txt", "c.txt"), -1);
    EXPECT_EQ(fs::rename("none.txt", "new.txt"), -1);
    EXPECT_EQ(fs::rename("c.txt", "new.txt"), -1);
    EXPECT_EQ(fs::rename("a.txt", ""), -1);
    EXPECT_EQ(ReadBytes(User("b.txt")), "b");
    EXPECT_EQ(fs::rename("A.txt", "A.TXT"), 0);
    EXPECT_EQ(ReadBytes(User("A.TXT")), "a");
    EXPECT_FALSE(std::filesystem::exists(User("a.txt")));
    EXPECT_EQ(fs::rename("a.txt", ".\\moved.txt"), 0);
    EXPECT_EQ(ReadBytes(User("moved.txt")), "a");

    EXPECT_EQ(fs::remove("Moved.txt"), 0);
    EXPECT_FALSE(fs::exists("moved.txt"));
    EXPECT_EQ(fs::remove("moved.txt"), -1);
    EXPECT_EQ(fs::remove("c.txt"), -1);
    EXPECT_EQ(ReadBytes(Data("c.txt")), "c");
}

TEST_F(CRoots, TheDefaultUserRootIsTheCurrentFolderAtTheTimeOfUse)
{
    const std::filesystem::path before = std::filesystem::current_path();
    WriteBytes(m_Folder.Path("one/x.txt"), "one");
    WriteBytes(m_Folder.Path("two/x.txt"), "two");
    fs::set_user_root(nullptr);
    std::filesystem::current_path(m_Folder.Path("one"));
    EXPECT_EQ(Read("X.txt"), "one");
    std::filesystem::current_path(m_Folder.Path("two"));
    EXPECT_EQ(Read("x.txt"), "two");
    EXPECT_EQ(fs::root_path("new.txt"), std::filesystem::current_path().string() + "/new.txt");
    std::filesystem::current_path(before);
}

TEST(PathNormalize, SeparatorsDotsAndCase)
{
    const std::array<const char*, 3> cases[] = {
        {"Data\\Interface/_State.png", "Data/Interface/_State.png", "data/interface/_state.png"},
        {"./a//b/./c/", "a/b/c", "a/b/c"},
        {"A/b/../C", "A/C", "a/c"},
        {"a/../../b", "../b", "../b"},
        {"..\\..\\x", "../../x", "../../x"},
        {"/../A/./..//B", "/B", "/b"},
        {"\\", "/", "/"},
        {"a/..", "", ""},
        {"..a/b..", "..a/b..", "..a/b.."},
        {"\xC3\x84/Z", "\xC3\x84/Z", "\xC3\x84/z"},
        {"", "", ""},
        {nullptr, "", ""},
    };

    for (const auto& [pszSource, pszKept, pszLower] : cases)
    {
        std::string strDest = "before";
        fs::path_normalize(strDest, pszSource, false);
        EXPECT_EQ(strDest, pszKept);
        strDest = pszSource != nullptr ? pszSource : "";
        fs::path_normalize(strDest, strDest.c_str(), true);
        EXPECT_EQ(strDest, pszLower);
    }
}
