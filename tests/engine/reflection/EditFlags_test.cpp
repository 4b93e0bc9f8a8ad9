#include "tests/engine/reflection/CSample.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

CRTTIFieldFloat MakeField()
{
    return CRTTIFieldFloat(RTTI_MEMBER_ADDRESS(CSample, m_Float));
}

} // namespace

TEST(EditFlags, EveryPartIsRead)
{
    CRTTIFieldFloat field = MakeField();
    ASSERT_TRUE(field.Initialize("m_Height", "f:EDIT;e:EDIT;d:Delta height [cm]: now;"));
    EXPECT_STREQ(field.GetName(), "m_Height");
    EXPECT_STREQ(field.GetDescription(), "Delta height [cm]: now");
    EXPECT_EQ(field.GetPrecision(), 3);

    ASSERT_TRUE(field.Initialize("x",
                                 "c:Tellur;f:EDIT|READONLY;e:SPINNER|DESCRIPTION;min:-1.5;max:1e3;"
                                 "step:0.25;prec:0;d:;"));
    EXPECT_STREQ(field.GetCategory(), "Tellur");
    EXPECT_EQ(field.GetFlags(), 0x3U);
    EXPECT_EQ(field.GetEditFlags(), 0x8E04U);
    EXPECT_EQ(field.GetMin(), -1.5);
    EXPECT_EQ(field.GetMax(), 1000.0);
    EXPECT_EQ(field.GetStep(), 0.25);
    EXPECT_EQ(field.GetPrecision(), 0);

    ASSERT_TRUE(field.Initialize("y", ""));
    EXPECT_EQ(field.GetFlags() + field.GetEditFlags(), 0U);
}

TEST(EditFlags, MalformedOnesLeaveTheFieldAsItWas)
{
    CRTTIFieldFloat field = MakeField();
    ASSERT_TRUE(field.Initialize("kept", "f:EDIT;e:COMBO;c:A;d:B;"));
    for (const char* pszFlags : {"f:EDIT",    "f:EDIT;e",     "x:EDIT;",        "f:edit;",
                                 "e:;",       "e:EDIT|;",     "e:|EDIT;",       ";",
                                 "EDIT;",     "min:;",        "min:a;",         "max:inf;",
                                 "step:0;",   "step:-1;",     "prec:-1;",       "prec:18;",
                                 "prec:1.5;", "min:2;max:1;", "F:EDIT;",        "e: EDIT;",
                                 "f:EDIT;;",  "min:1x;",      "d:open; f:EDIT;"})
    {
        SCOPED_TRACE(pszFlags);
        EXPECT_FALSE(field.Initialize("other", pszFlags));
        EXPECT_STREQ(field.GetName(), "kept");
        EXPECT_EQ(field.GetEditFlags(), 0x2U);
        EXPECT_STREQ(field.GetDescription(), "B");
    }
    EXPECT_FALSE(field.Initialize("", "f:EDIT;"));
    EXPECT_FALSE(field.Initialize(nullptr, "f:EDIT;"));
    EXPECT_FALSE(field.Initialize("x", nullptr));
}
