#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CFunctionContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tests/support/CLogCatcher.h"
#include "tests/tellur/brushes/BrushParts.h"

#include <gtest/gtest.h>

TEST(CBrushContainer, NumbersNamesPastTheHighestOne)
{
    struct SCase
    {
        const char* pszName; // null: none
        std::vector<const char*> others;
        const char* pszNext;
    };

    // clang-format off
    const SCase cases[] = {
        {nullptr, {}, "Brush000"},
        {nullptr, {"Brush000"}, "Brush001"},
        {nullptr, {"Brush"}, "Brush000"},
        {nullptr, {"brush007"}, "Brush000"},
        {"Hill007", {"Hill003", "Hill012"}, "Hill013"},
        {"Hill", {"Hill", "Hill3"}, "Hill004"},
        {"Hill", {"Hilltop005", "Chill009"}, "Hill006"},
        {"Hill2", {"Hil99", "Hill1x"}, "Hill000"},
        {"Hill", {"Hill998"}, "Hill999"},
        {"Hill", {"Hill999"}, "Hill1000"},
        {"Hill", {"Hill00012"}, "Hill013"},
        {"007", {"Hill041", "5"}, "042"},
        {"", {}, "000"},
        {"a1b22", {"a1b3", "a9"}, "a1b004"},
    };
    // clang-format on
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszNext);
        CBrushContainer brushes;
        CTellurBrush brush;
        for (const char* pszOther : test.others)
        {
            brush.SetName(pszOther);
            brushes.AddBrush(&brush, false);
        }
        brush.SetName(nullptr);
        brushes.AddBrush(&brush, false); // one without a name never counts
        brush.SetName(test.pszName);
        brushes.AddBrush(&brush, true);
        EXPECT_STREQ(brushes.GetPredefined().back()->GetName(), test.pszNext);
        EXPECT_STREQ(brush.GetName(), test.pszName); // the caller's own
        // The brush itself does not count among the others.
        CTellurBrush* pFirst = brushes.GetPredefined().front().get();
        pFirst->SetName("Only003");
        brushes.GetNextBrushName(pFirst);
        EXPECT_STREQ(pFirst->GetName(), "Only000");
    }
    // Numbers too long for an int do not wrap.
    CBrushContainer brushes;
    CTellurBrush brush;
    brush.SetName("Hill99999999999999999999");
    brushes.AddBrush(&brush, false);
    brushes.GetNextBrushName(&brush);
    EXPECT_STREQ(brush.GetName(), "Hill1000000000");
}

TEST(CBrushContainer, HoldsOneToolBrushForAFunction)
{
    const CUserFolder folder;
    WritePicture(folder.Path("soft.png"), 1, 1, 8, {9});
    CLogCatcher log;
    CBrushContainer brushes;
    const Lines invalid = {"[CBrushContainer::CreateBrush] invalid arguments"};
    CRecordingFunction unused("A");
    EXPECT_EQ(brushes.CreateBrush(nullptr, &unused, "soft.png"), nullptr);
    EXPECT_EQ(log.TakeLines(), invalid);
    EXPECT_EQ(brushes.CreateBrush("A", nullptr, "soft.png"), nullptr);
    EXPECT_EQ(log.TakeLines(), invalid);
    EXPECT_EQ(brushes.CreateBrush("A", &unused, nullptr), nullptr);
    EXPECT_EQ(log.TakeLines(), invalid);

    Calls calls;
    CTellurBrush* pBrush =
        brushes.CreateBrush("A", new CRecordingFunction("A", &calls), "soft.png");
    ASSERT_NE(pBrush, nullptr);
    EXPECT_STREQ(pBrush->GetName(), "A");
    EXPECT_STREQ(pBrush->GetBitmapPath(), "soft.png");
    EXPECT_EQ(brushes.CreateBrush("A", &unused, "other.png"), pBrush); // unused stays the caller's
    EXPECT_EQ(brushes.FindBrush("A"), pBrush);
    EXPECT_EQ(brushes.FindBrush("a"), nullptr);
    EXPECT_EQ(brushes.FindBrush(nullptr), nullptr);
    EXPECT_EQ(log.GetText(), "");

    // An image that cannot be loaded still gives a brush.
    EXPECT_NE(brushes.CreateBrush("B", new CRecordingFunction("B"), "missing.png"), nullptr);
    log.Clear();

    EXPECT_FALSE(brushes.SetBrush(nullptr));
    EXPECT_EQ(log.TakeLines(),
              Lines{"[CBrushContainer::SetBrush] null ptr passed to function<no line feed>"});
    CTellurBrush stranger;
    stranger.SetFunction(new CRecordingFunction("C"));
    EXPECT_FALSE(brushes.SetBrush(&stranger));
    EXPECT_EQ(log.TakeLines(), Lines{"[CBrushContainer::SetBrush] cannot find brush C"});
    stranger.SetFunction(nullptr);
    EXPECT_FALSE(brushes.SetBrush(&stranger));
    EXPECT_EQ(log.TakeLines(),
              (Lines{"[CTellurBrush::GetFunctionName] no function",
                     "[CBrushContainer::SetBrush] cannot find brush "}));

    CTellurBrush* pNew = pBrush->Clone();
    EXPECT_TRUE(brushes.SetBrush(pNew));
    EXPECT_EQ(calls, Calls{"~A"}); // the old one is gone
    EXPECT_EQ(brushes.FindBrush("A"), pNew);
    ASSERT_EQ(brushes.GetTools().size(), 2U);
    EXPECT_EQ(brushes.GetTools().back().get(), pNew);
    EXPECT_TRUE(brushes.SetBrush(pNew)); // is there already
    EXPECT_EQ(brushes.FindBrush("A"), pNew);
    EXPECT_EQ(calls.size(), 1U);
    brushes.GetNextBrushName(nullptr);
    EXPECT_EQ(log.TakeLines(), Lines{"[CBrushContainer::GetNextBrushName] no brush"});
    brushes.Clear();
    EXPECT_EQ(calls.size(), 2U);
}

TEST(CFunctionContainer, HoldsOnePrototypeOfAName)
{
    CLogCatcher log;
    Calls calls;
    {
        CFunctionContainer functions;
        EXPECT_FALSE(functions.AddFunction(nullptr));
        EXPECT_EQ(log.TakeLines(), Lines{"[CFunctionContainer::AddFunction] pFunction == NULL"});
        auto* pFunction = new CRecordingFunction("BlurFunction", &calls);
        EXPECT_TRUE(functions.AddFunction(pFunction));
        EXPECT_TRUE(functions.AddFunction(new CRecordingFunction("blurfunction", &calls)));
        CRecordingFunction second("BlurFunction", &calls);
        EXPECT_FALSE(functions.AddFunction(&second)); // and stays the caller's
        EXPECT_EQ(log.TakeLines(),
                  Lines{"[CFunctionContainer::AddFunction] function of name BlurFunction already "
                        "exists"});
        EXPECT_EQ(functions.FindFunction("BlurFunction"), pFunction);
        EXPECT_NE(functions.FindFunction("blurfunction"), pFunction);
        EXPECT_EQ(functions.FindFunction("Blur"), nullptr);
        EXPECT_EQ(functions.FindFunction(nullptr), nullptr);
        EXPECT_EQ(functions.GetFunctions().size(), 2U);
    }
    EXPECT_EQ(calls, (Calls{"~BlurFunction", "~BlurFunction", "~blurfunction"}));
    EXPECT_EQ(log.GetText(), "");
}
