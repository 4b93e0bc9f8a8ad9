#include "framework/core/Cursor.h"
#include "framework/core/ResourceModule.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

constexpr SStringResource HOST_STRINGS[] = {{1, "host one"}, {2, "host two"}};
constexpr SStringResource FIRST_STRINGS[] = {
    {1, "first one"}, {2, "first two"}, {3, "first three"}};
constexpr SStringResource SECOND_STRINGS[] = {{3, "second three"}, {4, "second four"}};
constexpr uint8_t BYTES[] = {1, 2, 3};
constexpr SCursorResource FIRST_CURSORS[] = {{7, {BYTES, 3}, 1, 2}, {8, {BYTES, 3}, 0, 0}};
constexpr SBitmapResource SECOND_BITMAPS[] = {{7, {BYTES, 3}}};

const SResourceModule HOST = {"host", {}, {}, HOST_STRINGS, {}, {}};
const SResourceModule FIRST = {"first", {}, {}, FIRST_STRINGS, FIRST_CURSORS, {}};
const SResourceModule SECOND = {"second", {}, {}, SECOND_STRINGS, {}, SECOND_BITMAPS};

// "-" for a string that no module has.
std::string Load(uint32_t uId)
{
    std::string strText = "-";
    const bool bFound = LoadStringResource(uId, strText);
    EXPECT_EQ(bFound, strText != "-");
    return strText;
}

class CResourceModules : public testing::Test
{
protected:
    CResourceModules()
    {
        RegisterResourceModule(&FIRST);
        RegisterResourceModule(&SECOND);
        RegisterResourceModule(&FIRST);
        RegisterResourceModule(nullptr);
    }

    ~CResourceModules() override
    {
        UnregisterResourceModule(&FIRST);
        UnregisterResourceModule(&SECOND);
        UnregisterResourceModule(nullptr);
    }
};

} // namespace

TEST_F(CResourceModules, LookupsTakeTheCurrentOneThenTheOrderOfRegistration)
{
    EXPECT_EQ(Load(1) + "/" + Load(3) + "/" + Load(4) + "/" + Load(5),
              "first one/first three/second four/-");
    {
        const CResourceScope host(&HOST);
        EXPECT_EQ(Load(2) + "/" + Load(3), "host two/first three");
        const CResourceScope second(&SECOND);
        EXPECT_EQ(Load(2) + "/" + Load(3), "first two/second three");
    }
    UnregisterResourceModule(&FIRST);
    EXPECT_EQ(Load(1) + "/" + Load(3), "-/second three");
    ASSERT_NE(FindBitmapResource(7), nullptr);
    EXPECT_EQ(FindBitmapResource(7)->picture.nBytes, 3U);
    EXPECT_EQ(FindBitmapResource(8), nullptr);
}

TEST_F(CResourceModules, ScopesRestoreAndAnUnregisteredModuleIsCurrentNowhere)
{
    EXPECT_EQ(GetCurrentResourceModule(), nullptr);
    {
        const CResourceScope outer(&FIRST);
        {
            const CResourceScope middle(&SECOND);
            {
                const CResourceScope none(nullptr);
                EXPECT_EQ(GetCurrentResourceModule(), nullptr);
                const CResourceScope inner(&FIRST);
                EXPECT_EQ(GetCurrentResourceModule(), &FIRST);
                UnregisterResourceModule(&FIRST);
                EXPECT_EQ(GetCurrentResourceModule(), nullptr);
            }
            EXPECT_EQ(GetCurrentResourceModule(), &SECOND);
        }
        EXPECT_EQ(GetCurrentResourceModule(), nullptr);
    }
    EXPECT_EQ(GetCurrentResourceModule(), nullptr);
}

TEST_F(CResourceModules, CursorsComeFromTheCurrentModuleOnly)
{
    EXPECT_EQ(LoadCursorResource(7), nullptr);
    EXPECT_EQ(FindCursorResource(7), &FIRST_CURSORS[0]);
    const CResourceScope second(&SECOND);
    EXPECT_EQ(LoadCursorResource(7), nullptr);
    const CResourceScope first(&FIRST);
    EXPECT_EQ(LoadCursorResource(7), &FIRST_CURSORS[0]);
    EXPECT_EQ(LoadCursorResource(32512), nullptr);
    SetCursor(LoadCursorResource(8));
    UnregisterResourceModule(&SECOND);
    EXPECT_EQ(GetCursor(), &FIRST_CURSORS[1]);
    UnregisterResourceModule(&FIRST);
    EXPECT_EQ(GetCursor(), nullptr);
}
