#include "host/FileSystem.h"
#include "tests/engine/reflection/CSample.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

constexpr const char* TEXTS[] = {
    "-7",       "200",        "-300",        "60000",
    "-70000",   "4000000000", "-5000000000", "18000000000",
    "0.1",      "-2.5",       "1",           "a b\n",
    "1 2",      "3 4 5",      "6 7 8 9",     "16 15 14 13 12 11 10 9 8 7 6 5 4 3 2 1",
    "mode_far", "one|top|64", "7",           "-8 null 7",
};

// The values of all fields as one text.
std::string Describe(const CSample& sample)
{
    std::string strText;
    for (const CRTTIField* pField : CSample::GetClass().GetFields())
    {
        strText += pField->ToString(&sample) + "/";
    }
    return strText;
}

class CFieldBinary : public testing::Test
{
protected:
    CFieldBinary()
    {
        SetObjectFinder(&FindSampleObject);
        const std::vector<CRTTIField*>& fields = CSample::GetClass().GetFields();
        EXPECT_EQ(fields.size(), std::size(TEXTS));
        for (size_t i = 0; i < fields.size(); ++i)
        {
            EXPECT_TRUE(fields[i]->FromString(&m_Sample, TEXTS[i])) << TEXTS[i];
        }
    }

    ~CFieldBinary() override { SetObjectFinder(nullptr); }

    std::string SaveField(const char* pszField)
    {
        fs::file file;
        EXPECT_TRUE(file.open(m_Path.c_str(), fs::mode_write));
        EXPECT_TRUE(m_Sample.FindField(pszField)->Save(file, &m_Sample));
        EXPECT_TRUE(file.close());
        return ReadBytes(m_Path);
    }

    CTempFolder m_Folder;
    std::string m_Path = m_Folder.Path("fields.bin");
    CSample m_Sample;
};

} // namespace

TEST_F(CFieldBinary, BytesAreAsDocumented)
{
    using namespace std::string_literals;
    EXPECT_EQ(SaveField("short") + SaveField("bool"), "\xD4\xFE\1"s);
    EXPECT_EQ(SaveField("double"), "\0\0\0\0\0\0\x04\xC0"s);
    EXPECT_EQ(SaveField("string"), "\4\0\0\0a b\n"s);
    EXPECT_EQ(SaveField("vec2"), "\0\0\x80\x3F\0\0\0\x40"s);
    EXPECT_EQ(SaveField("enum"), "\xFB\xFF\xFF\xFF"s);
    EXPECT_EQ(SaveField("pointer"), "\1\7\0\0\0"s);
    EXPECT_EQ(SaveField("list"), "\3\0\0\0\1\xF8\xFF\xFF\xFF\0\0\0\0\0\1\7\0\0\0"s);
}

TEST_F(CFieldBinary, AllFieldsComeBackAndEveryCutIsOneFailedField)
{
    fs::file file;
    ASSERT_TRUE(file.open(m_Path.c_str(), fs::mode_write));
    ASSERT_TRUE(m_Sample.SaveFields(file));
    ASSERT_TRUE(file.close());
    const std::string strBytes = ReadBytes(m_Path);
    CSample loaded;
    ASSERT_TRUE(file.open(m_Path.c_str(), fs::mode_read));
    ASSERT_TRUE(loaded.LoadFields(file));
    EXPECT_TRUE(file.eof());
    EXPECT_EQ(Describe(loaded), Describe(m_Sample));
    EXPECT_TRUE(loaded.failed.empty());
    const CSample untouched;
    for (size_t nBytes = 0; nBytes < strBytes.size(); ++nBytes)
    {
        WriteBytes(m_Path, strBytes.substr(0, nBytes));
        CSample cut;
        ASSERT_TRUE(file.open(m_Path.c_str(), fs::mode_read));
        ASSERT_FALSE(cut.LoadFields(file)) << nBytes;
        ASSERT_EQ(cut.failed.size(), 1U) << nBytes;
        const CRTTIField* pFailed = cut.FindField(cut.failed[0].c_str());
        ASSERT_EQ(pFailed->ToString(&cut), pFailed->ToString(&untouched)) << nBytes;
    }
}

TEST_F(CFieldBinary, ValuesThatAreNoneAreRefused)
{
    using namespace std::string_literals;

    const std::pair<const char*, std::string> cases[] = {
        {"bool", "\2"s},
        {"enum", "\2\0\0\0"s},
        {"float", "\0\0\xC0\x7F"s},
        {"double", "\0\0\0\0\0\0\xF0\x7F"s},
        {"vec3", "\0\0\0\0\0\0\x80\xFF\0\0\0\0"s},
        {"string", "\xFF\xFF\xFF\xFFshort"s},
        {"pointer", "\2\7\0\0\0"s},
        {"pointer", "\1\6\0\0\0"s},
        {"pointer", "\1\x09\0\0\0"s}, // of another class
        {"list", "\xFF\xFF\xFF\xFF\1\7\0\0\0"s},
        {"list", "\2\0\0\0\1\7\0\0\0\1\6\0\0\0"s},
    };

    fs::file file;
    const std::string strBefore = Describe(m_Sample);
    for (const auto& [pszField, strBytes] : cases)
    {
        SCOPED_TRACE(pszField);
        m_Sample.failed.clear();
        WriteBytes(m_Path, strBytes);
        ASSERT_TRUE(file.open(m_Path.c_str(), fs::mode_read));
        EXPECT_FALSE(m_Sample.FindField(pszField)->Load(file, &m_Sample));
        EXPECT_EQ(m_Sample.failed, std::vector<std::string>{pszField});
        EXPECT_EQ(Describe(m_Sample), strBefore);
    }
    file.close();
    EXPECT_FALSE(m_Sample.SaveFields(file));
    EXPECT_FALSE(m_Sample.FindField("int")->Save(file, nullptr));
    EXPECT_FALSE(m_Sample.FindField("int")->Load(file, nullptr));
}
