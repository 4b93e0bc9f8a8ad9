#include "host/IPluginStrokes.h"
#include "host/Reflection.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/modification/CVertDataSet.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/ParseNodes.h"
#include "tests/tellur/brushes/BrushParts.h"

#include <gtest/gtest.h>

using CBrushClone = CPluginFixture;

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

TEST_F(CBrushClone, HasEverythingAndItsOwnParts)
{
    WriteGrey("a.png", 1, 1, {9});
    WriteGrey("mask.png", 1, 1, {255});
    CTellurBrush brush;
    brush.SetName("Ridge");
    brush.SetPowerModifier(1.5F);
    brush.SetUsageDensity(2.5F);
    brush.SetExtent(3.5F);
    brush.SetFadeFactor(4.5F);
    brush.SetHardness(5.5F);
    brush.SetVerticalDistance(6.5F);
    brush.LoadBitmap("a.png");
    brush.SetBitmapChanged(false);
    brush.SetFunction(new CRelativeHeightFunction);
    CRTTIObject* pObject = brush.GetRTTIObject();
    ASSERT_TRUE(pObject->FindField("m_Height")->FromString(pObject, "12"));
    brush.SetMask("mask.png");
    brush.SetMaskEnabled(true);
    const auto save = [](const CTellurBrush& saved)
    {
        return GetWritten([&](fs::ifile& file) { EXPECT_TRUE(saved.Save(file, 0)); });
    };
    const std::string strBlock = save(brush);

    const std::unique_ptr<CTellurBrush> pClone(brush.Clone());
    EXPECT_EQ(m_Host.GetWorld().GetRegistrationCount(), 2U);
    EXPECT_NE(pClone->GetMaskHandle(), brush.GetMaskHandle());
    brush.SetName("Other");
    brush.LoadBitmap("missing.png");
    brush.SetMask("missing.png");
    ASSERT_TRUE(pObject->FindField("m_Height")->FromString(pObject, "13"));
    EXPECT_EQ(m_Host.GetEngine().GetTextures().GetCount(), 1U) << "the copy's own use";
    EXPECT_EQ(save(*pClone), strBlock);
    EXPECT_EQ(pClone->GetBitmapImage()->GetRawData()[0], 9);
    EXPECT_TRUE(pClone->IsBitmapChanged());
    EXPECT_TRUE(pClone->IsMaskEnabled());
}

// A stroke may turn the image in sixteen ways.
TEST_F(CBrushClone, TurnedImagesOfALargeShapeGoWithTheStroke)
{
    constexpr uint32_t LARGE = 300;
    constexpr size_t BYTES = size_t{LARGE} * LARGE;
    WriteGrey("large.png", LARGE, LARGE, std::vector<uint8_t>(BYTES, 200));
    CTellurBrush brush;
    brush.SetFunction(new CRecordingFunction("A"));
    ASSERT_TRUE(brush.LoadBitmap("large.png"));
    const size_t nBefore = GetHeldBytes();
    SBrushShape shape;
    for (int i = 1; i <= 20; ++i)
    {
        m_Plugin->SetPointForm({.fXX = -1.0F, .fZZ = 1.0F - 0.01F * static_cast<float>(i)});
        EXPECT_TRUE(brush.GetShape(shape));
    }
    EXPECT_GT(GetHeldBytes(), nBefore + 15 * BYTES);
    EXPECT_LT(GetHeldBytes(), nBefore + 17 * BYTES);
    brush.End(nullptr, 1, 2, 3);
    EXPECT_LT(GetHeldBytes(), nBefore + BYTES);
    EXPECT_TRUE(brush.GetShape(shape)); // once more
    EXPECT_EQ(shape.pPixels[BYTES / 2 + LARGE / 2], 200);
}
