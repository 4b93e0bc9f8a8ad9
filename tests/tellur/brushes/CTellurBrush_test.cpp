#include "host/Reflection.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/modification/CVertDataSet.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/FakeHost.h"
#include "tests/support/ParseNodes.h"
#include "tests/tellur/brushes/BrushParts.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

} // namespace

TEST(CTellurBrush, SaysWhatIsMissingInWholeLines)
{
    CLogCatcher log;
    CTellurBrush brush;
    EXPECT_EQ(brush.Start(nullptr, 1, 2, 3), 0);
    EXPECT_EQ(brush.End(nullptr, 1, 2, 3), 0);
    EXPECT_EQ(brush.OnMouseMove(nullptr, 1, 2, 3, 4, 5), 0);
    EXPECT_FALSE(brush.SetCursor());
    EXPECT_EQ(brush.GetFunctionName(), nullptr);
    EXPECT_FALSE(brush.LoadBitmap(nullptr));
    EXPECT_FALSE(brush.Load(nullptr));
    EXPECT_EQ(log.TakeLines(),
              (Lines{"[CTellurBrush::Start] no function interface available",
                     "[CTellurBrush::End] no function interface available",
                     "[CTellurBrush::OnMouseMove] no function interface available",
                     "[CTellurBrush::SetCursor] no function interface",
                     "[CTellurBrush::GetFunctionName] no function",
                     "[CTellurBrush::LoadBitmap] no path",
                     "[CTellurBrush::Load] no key"}));
    EXPECT_FALSE(brush.IsBitmapChanged());
}

TEST(CTellurBrush, FootprintIsClippedToTheTerrain)
{
    struct SCase
    {
        const char* pszName;
        float fExtent;
        float fX;
        float fZ;
        const char* pszRaw;
        const char* pszClipped;
    };

    // A terrain of 100 x 60.
    // clang-format off
    const SCase cases[] = {
        {"low corner", 20, 0, 5, "[-10 0 -5, 10 0 15]", "[0 0 0, 10 0 15]"},
        {"high corner", 20, 95, 60, "[85 0 50, 105 0 70]", "[85 0 50, 100 0 60]"},
        {"odd extent", 5, 50, 30, "[47.5 0 27.5, 52.5 0 32.5]", "[47.5 0 27.5, 52.5 0 32.5]"},
    };
    // clang-format on
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        CTellurBrush brush;
        brush.SetExtent(test.fExtent);
        SExtents clipped = {{7, 7, 7}, {7, 7, 7}};
        SExtents raw = clipped;
        EXPECT_EQ(&brush.GetExtents(clipped, test.fX, test.fZ, raw, 100, 60), &clipped);
        EXPECT_EQ(ToText(raw), test.pszRaw);
        EXPECT_EQ(ToText(clipped), test.pszClipped);
    }
}

TEST(CTellurBrush, CloneHasEverythingAndItsOwnParts)
{
    const CUserFolder folder;
    WritePicture(folder.Path("a.png"), 1, 1, 8, {9});
    CFakeContext context;
    context.textures.Put("mask.png", 1, 1, {255});
    CLogCatcher log;
    CTellurBrush brush;
    brush.SetName("Ridge");
    brush.SetPowerModifier(1.5F);
    brush.SetUsageDensity(2.5F);
    brush.SetExtent(3.5F);
    brush.SetFadeFactor(4.5F);
    brush.SetHardness(5.5F);
    brush.SetVerticalDistance(6.5F);
    brush.LoadBitmap("a.png");
    EXPECT_TRUE(brush.IsBitmapChanged());
    brush.SetBitmapChanged(false);
    brush.SetFunction(new CRelativeHeightFunction);
    CRTTIObject* pObject = brush.GetRTTIObject();
    ASSERT_TRUE(pObject->FindField("m_Height")->FromString(pObject, "12"));
    brush.SetMask("mask.png");
    brush.SetMaskEnabled(true);
    context.TakeCalls();

    const std::unique_ptr<CTellurBrush> pClone(brush.Clone());
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Textures.Load(mask.png, 1)",
                         "World.RegisterTerrainTexture(mask.png, tellur_edit_heightmap)"}));
    brush.SetName("Other");
    brush.LoadBitmap("missing.png");
    ASSERT_TRUE(pObject->FindField("m_Height")->FromString(pObject, "13"));
    EXPECT_STREQ(pClone->GetName(), "Ridge");
    EXPECT_EQ(pClone->GetPowerModifier(), 1.5F);
    EXPECT_EQ(pClone->GetUsageDensity(), 2.5F);
    EXPECT_EQ(pClone->GetExtent(), 3.5F);
    EXPECT_EQ(pClone->GetFadeFactor(), 4.5F);
    EXPECT_EQ(pClone->GetHardness(), 5.5F);
    EXPECT_EQ(pClone->GetVerticalDistance(), 6.5F);
    EXPECT_STREQ(pClone->GetBitmapPath(), "a.png");
    EXPECT_EQ(pClone->GetBitmapImage()->GetRawData()[0], 9);
    EXPECT_TRUE(pClone->IsBitmapChanged());
    EXPECT_STREQ(pClone->GetFunctionName(), "RelativeHeightFunction");
    CRTTIObject* pCopy = pClone->GetRTTIObject();
    ASSERT_NE(pCopy, pObject);
    EXPECT_EQ(pCopy->FindField("m_Height")->ToString(pCopy), "12");
    EXPECT_EQ(pClone->GetMaskPath(), "mask.png");
    EXPECT_TRUE(pClone->IsMaskEnabled());
    EXPECT_EQ(pClone->GetMaskHandle(), brush.GetMaskHandle() + 1);
}
