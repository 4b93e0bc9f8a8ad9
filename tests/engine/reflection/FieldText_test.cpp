#include "tests/engine/reflection/CSample.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

namespace
{

// Field, text, and the text that comes back, null: refused.
// clang-format off
constexpr std::array<const char*, 3> TEXT_CASES[] = {
    {"char", "-128", "-128"}, {"char", "127", "127"}, {"char", "128", nullptr}, {"char", "a", nullptr},
    {"uchar", "255", "255"}, {"uchar", "256", nullptr}, {"uchar", "-1", nullptr},
    {"short", "-32768", "-32768"}, {"short", "32768", nullptr},
    {"ushort", "65535", "65535"}, {"ushort", "65536", nullptr},
    {"int", " \t-2147483648\r\n", "-2147483648"}, {"int", "2147483648", nullptr}, {"int", "1 2", nullptr},
    {"int", "1.0", nullptr}, {"int", "", nullptr}, {"int", " ", nullptr}, {"int", "0x10", nullptr},
    {"uint", "4294967295", "4294967295"}, {"uint", "4294967296", nullptr}, {"uint", "-0", nullptr},
    {"int64", "-9223372036854775808", "-9223372036854775808"}, {"int64", "9223372036854775808", nullptr},
    {"uint64", "18446744073709551615", "18446744073709551615"}, {"uint64", "18446744073709551616", nullptr},
    {"float", "500.0", "500"}, {"float", " 0.1 ", "0.1"}, {"float", "-1e3", "-1000"}, {"float", "16777217", "16777216"},
    {"float", "1e39", nullptr}, {"float", "nan", nullptr}, {"float", "inf", nullptr}, {"float", "-infinity", nullptr},
    {"float", "1.5x", nullptr}, {"float", "1,5", nullptr}, {"float", ".", nullptr},
    {"double", "0.1", "0.1"}, {"double", "1e309", nullptr}, {"double", "123456789.125", "123456789.125"},
    {"bool", "1", "1"}, {"bool", "0", "0"}, {"bool", " TRUE", "1"}, {"bool", "False ", "0"}, {"bool", "2", nullptr},
    {"bool", "yes", nullptr}, {"bool", "", nullptr},
    {"string", " kept; as it is | \n", " kept; as it is | \n"}, {"string", "", ""},
    {"vec2", "1 -2.5", "1 -2.5"}, {"vec2", "1", nullptr}, {"vec2", "1 2 3", nullptr},
    {"vec3", "\t1   2\t3 ", "1 2 3"}, {"vec3", "1 2 x", nullptr}, {"vec3", "1 nan 3", nullptr},
    {"vec4", "0.25 0.5 0.75 1", "0.25 0.5 0.75 1"}, {"vec4", "1 2 3", nullptr},
    {"matrix", "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16", "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16"},
    {"matrix", "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15", nullptr},
    {"enum", "mode_min", "mode_min"}, {"enum", " 1 ", "mode_min"}, {"enum", "-5", "mode_far"},
    {"enum", "Mode_min", nullptr}, {"enum", "2", nullptr}, {"enum", "min mode", nullptr}, {"enum", "", nullptr},
    {"flags", "two", "two"}, {"flags", "two | one", "both"}, {"flags", "top|1", "one|top"}, {"flags", "0", "0"},
    {"flags", "7", "both|4"}, {"flags", "8", "8"}, {"flags", "one|", nullptr}, {"flags", "One", nullptr},
    {"flags", "", nullptr}, {"flags", "-1", nullptr},
    {"pointer", "7", "7"}, {"pointer", " -8 ", "-8"}, {"pointer", "null", "null"}, {"pointer", "9", nullptr},
    {"pointer", "6", nullptr}, {"pointer", "", nullptr},
    {"list", "7 null -8 7", "7 null -8 7"}, {"list", " ", ""}, {"list", "7 9", nullptr}, {"list", "7,7", nullptr},
};

// clang-format on

// The text of the value in the field reads back to the same bits, here and in the C library.
template <class TNumber>
void ExpectLosslessAndShort(CSample& sample, const char* pszField, TNumber& value)
{
    constexpr bool FLOAT = sizeof(TNumber) == sizeof(float);
    const TNumber before = value;
    const std::string strText = sample.FindField(pszField)->ToString(&sample);
    value = static_cast<TNumber>(FLOAT ? std::strtof(strText.c_str(), nullptr)
                                       : std::strtod(strText.c_str(), nullptr));
    ASSERT_TRUE(value == before && std::signbit(value) == std::signbit(before)) << strText;
    value = 0;
    ASSERT_TRUE(sample.FindField(pszField)->FromString(&sample, strText.c_str()));
    ASSERT_TRUE(value == before && std::signbit(value) == std::signbit(before)) << strText;
    char szLong[64];
    std::snprintf(szLong, sizeof szLong, "%.*g", FLOAT ? 9 : 17, before);
    ASSERT_LE(strText.size(), std::strlen(szLong)) << strText;
}

} // namespace

TEST(FieldText, ReadingGivesTheValueOrLeavesIt)
{
    SetObjectFinder(&FindSampleObject);
    for (const auto& [pszField, pszText, pszRead] : TEXT_CASES)
    {
        SCOPED_TRACE(std::string(pszField) + " '" + pszText + "'");
        CSample sample;
        CRTTIField* pField = sample.FindField(pszField);
        const std::string strBefore = pField->ToString(&sample);
        const bool bRead = pszRead != nullptr;
        EXPECT_EQ(pField->FromString(&sample, pszText), bRead);
        EXPECT_EQ(pField->ToString(&sample), bRead ? pszRead : strBefore);
        EXPECT_EQ(sample.changed, std::vector<std::string>(bRead ? 1 : 0, pszField));
        EXPECT_FALSE(pField->FromString(&sample, nullptr));
        EXPECT_FALSE(pField->FromString(nullptr, pszText));
        EXPECT_EQ(pField->ToString(nullptr), "");
    }
    SetObjectFinder(nullptr);
    CSample sample;
    EXPECT_FALSE(sample.FindField("pointer")->FromString(&sample, "7"));
    sample.m_Enum = 42; // a value without a name
    EXPECT_EQ(sample.FindField("enum")->ToString(&sample), "42");
}

TEST(FieldText, FloatingNumbersAreLosslessAndShort)
{
    std::mt19937_64 random(5);
    CSample sample;
    for (int i = 0; i < 20000; ++i)
    {
        const uint64_t uBits = random();
        sample.m_Float = std::bit_cast<float>(static_cast<uint32_t>(uBits >> 16));
        sample.m_Double = std::bit_cast<double>(uBits);
        if (std::isfinite(sample.m_Float) && std::isfinite(sample.m_Double))
        {
            ASSERT_NO_FATAL_FAILURE(ExpectLosslessAndShort(sample, "float", sample.m_Float));
            ASSERT_NO_FATAL_FAILURE(ExpectLosslessAndShort(sample, "double", sample.m_Double));
        }
    }
}

TEST(CEnumInfo, KeepsTheOrderAndRefusesDoubles)
{
    CEnumInfo info;
    EXPECT_TRUE(info.Add(5, "five", "the five"));
    EXPECT_TRUE(info.Add(-1, "minus", nullptr));
    EXPECT_FALSE(info.Add(5, "other", "") || info.Add(6, "five", "") || info.Add(6, "", "") ||
                 info.Add(6, nullptr, ""));
    ASSERT_EQ(info.GetInfo().size(), 2U);
    EXPECT_EQ(info.Find("minus"), &info.GetInfo()[1]);
    EXPECT_EQ(info.Find(-1), &info.GetInfo()[1]);
    EXPECT_EQ(info.Find("Minus"), nullptr);
    EXPECT_EQ(info.Find(static_cast<const char*>(nullptr)), nullptr);
}
