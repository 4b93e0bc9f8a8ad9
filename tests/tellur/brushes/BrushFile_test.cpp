#include "host/Reflection.h"
#include "tellur/brushes/CFunctionContainer.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/functions/CSetHeightFunction.h"
#include "tests/support/ParseNodes.h"
#include "tests/tellur/brushes/BrushParts.h"

#include <gtest/gtest.h>

// A brush as a block of text, and back.

namespace
{

using CBrushBlock = CPluginFixture;

std::string GetNumbers(const CTellurBrush& brush)
{
    Calls text;
    AddCall(&text,
            "%g %g %g %g %g %g",
            brush.GetPowerModifier(),
            brush.GetUsageDensity(),
            brush.GetFadeFactor(),
            brush.GetHardness(),
            brush.GetExtent(),
            brush.GetVerticalDistance());
    return text.front();
}

} // namespace

TEST_F(CBrushBlock, SaveStopsAtWhatIsMissing)
{
    WriteGrey("a.png", 1, 1, {9});
    CTellurBrush brush;
    brush.SetName("Hill");
    const auto save = [&](fs::ifile& file)
    {
        EXPECT_FALSE(brush.Save(file, 0));
    };
    EXPECT_EQ(GetWritten(save), "");
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CTellurBrush::Save] no bitmap"});

    brush.SetBitmap(new CTellurBitmap);
    EXPECT_EQ(GetWritten(save), "");
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CTellurBrush::Save] no function"});

    auto* pFunction = new CRecordingFunction("A");
    brush.SetFunction(pFunction);
    EXPECT_EQ(GetWritten(save), "brush_name( \"Hill\")\nbitmap()\n{\n");
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CTellurBitmap::Save] no bitmap file path",
                     "[CTellurBrush::Save] brush Hill failed to save bitmap"}));

    ASSERT_TRUE(brush.LoadBitmap("a.png"));
    pFunction->bWorks = false;
    EXPECT_EQ(GetWritten(save),
              "brush_name( \"Hill\")\nbitmap()\n{\n  path( \"a.png\" )\n}\n<function at 0>\n");
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CTellurBrush::Save] brush Hill failed to save function"});
}

TEST_F(CBrushBlock, LoadsNumbersOfTheRightTypeUnderAnyCaseOfTheirKeys)
{
    CTellurBrush brush;
    brush.SetName("old");
    EXPECT_TRUE(brush.Load(Block({Node("Power_Modifier", {Float(2)}),
                                  Node("USAGE_DENSITY", {Float(3)}),
                                  Node("fade_factor", {Float(4), Float(40)}),
                                  Node("hardness", {Float(5)}),
                                  Node("extent", {Float(6)}),
                                  Node("vertical_distance", {Float(-7)}),
                                  Node("brush_name", {Text("new")}),
                                  Node("mask_enabled", {Int(1)}),
                                  Node("something", {Float(8)})})
                               .get()));
    EXPECT_EQ(GetNumbers(brush), "2 3 4 5 6 -7");
    EXPECT_STREQ(brush.GetName(), "new");
    EXPECT_FALSE(brush.IsMaskEnabled()); // no key of a brush

    // A parameter of another type, or none, gives 0 and no name.
    EXPECT_TRUE(brush.Load(Block({Node("power_modifier", {Int(2)}),
                                  Node("usage_density"),
                                  Node("fade_factor", {Text("4")}),
                                  Node("hardness", {Int(5), Float(5)}),
                                  Node("extent", {Int(6)}),
                                  Node("vertical_distance"),
                                  Node("brush_name", {Int(7)})})
                               .get()));
    EXPECT_EQ(GetNumbers(brush), "0 0 0 0 0 0");
    EXPECT_EQ(brush.GetName(), nullptr);
}

TEST_F(CBrushBlock, LoadsItsImageAndMask)
{
    WriteGrey("a.png", 1, 1, {9});
    WriteGrey("m.png", 1, 1, {255});
    CTellurBrush brush;
    EXPECT_TRUE(brush.Load(
        Block({Node("bitmap", {}, {Node("path", {Text("a.png")})}), Node("mask", {Text("m.png")})})
            .get()));
    EXPECT_STREQ(brush.GetBitmapPath(), "a.png");
    EXPECT_EQ(brush.GetMaskPath(), "m.png");
    EXPECT_TRUE(brush.IsBitmapChanged());
    EXPECT_EQ(m_Log.GetText(), "");

    // What cannot be read keeps what is there; a mask without a text too.
    brush.SetBitmapChanged(false);
    EXPECT_TRUE(brush.Load(Block({Node("bitmap", {}, {Node("path", {Text("missing.png")})}),
                                  Node("bitmap"),
                                  Node("mask", {Int(3)}),
                                  Node("mask")})
                               .get()));
    EXPECT_STREQ(brush.GetBitmapPath(), "a.png");
    EXPECT_EQ(brush.GetMaskPath(), "m.png");
    EXPECT_FALSE(brush.IsBitmapChanged());
    const Lines lines = m_Log.TakeLines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[1], "[CTellurBitmap::Load] unable to load bitmap file missing.png");
    EXPECT_EQ(lines[2], "[CTellurBitmap::LoadIni] no key");

    // A block without a path is an image without one.
    EXPECT_TRUE(brush.Load(Block({Node("bitmap", {}, {Node("other")})}).get()));
    EXPECT_EQ(brush.GetBitmapPath(), nullptr);
    EXPECT_EQ(brush.GetBitmapImage(), nullptr);
    EXPECT_TRUE(brush.IsBitmapChanged());
}

TEST_F(CBrushBlock, LoadsAFunctionAsACopyOfItsPrototype)
{
    static Calls s_Calls; // the plug-in's prototypes tell of their end after the test's
    Calls& calls = s_Calls;
    calls.clear();
    CFunctionContainer& functions = *m_Plugin->GetFunctionContainer();
    auto* pRecording = new CRecordingFunction("A", &calls);
    ASSERT_TRUE(functions.AddFunction(pRecording));
    ASSERT_TRUE(functions.AddFunction(new CRelativeHeightFunction));
    CTellurBrush brush;

    EXPECT_TRUE(brush.Load(Block({Node("function", {Text("A")})}).get()));
    EXPECT_STREQ(brush.GetFunctionName(), "A");
    EXPECT_EQ(calls, Calls{}); // nothing to read
    EXPECT_TRUE(brush.Load(Block({Node("function",
                                       {Text("RelativeHeightFunction")},
                                       {Node("attrib", {Text("m_Height"), Text("-25.5")})})})
                               .get()));
    CRTTIObject* pObject = brush.GetRTTIObject();
    EXPECT_EQ(pObject->FindField("m_Height")->ToString(pObject), "-25.5");
    EXPECT_EQ(calls, Calls{"~A"});

    // A copy that cannot read its block is dropped; the brush keeps its function.
    pRecording->bWorks = false;
    EXPECT_TRUE(brush.Load(Block({Node("function", {Text("A")}, {Node("x")})}).get()));
    EXPECT_EQ(calls, (Calls{"~A", "Load(block)", "~A"}));
    EXPECT_EQ(brush.GetRTTIObject(), pObject);
    EXPECT_EQ(m_Log.GetText(), "");

    // An unknown name ends the reading; what stood before it counts.
    const char* const names[] = {"relativeheightfunction", "Other", nullptr};
    for (const char* pszName : names)
    {
        brush.SetExtent(1.0F);
        brush.SetHardness(1.0F);
        CTCPARSE_PARAM* pName = pszName != nullptr ? Text(pszName) : Int(1);
        EXPECT_FALSE(brush.Load(Block({Node("extent", {Float(77)}),
                                       Node("function", {pName}),
                                       Node("hardness", {Float(77)})})
                                    .get()));
        EXPECT_EQ(brush.GetExtent(), 77.0F);
        EXPECT_EQ(brush.GetHardness(), 1.0F);
        EXPECT_EQ(brush.GetRTTIObject(), pObject);
        EXPECT_EQ(m_Log.TakeLines(),
                  Lines{std::string("[CTellurBrush::Load] unrecognized function ") +
                        (pszName != nullptr ? pszName : "")});
    }
}
