// What the keys of an editor do to the tool at hand.

#include "host/ReflectionFields.h"
#include "tellur/modes/CTerraformingState.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <algorithm>
#include <limits>

namespace
{

class CPluginToolsTest : public CPluginFixture
{
protected:
    CPluginToolsTest()
    {
        Initialize();
        m_Face.lastPick = {40.0F, 0.0F, 40.0F};
    }

    CTellurBrush& Current() { return *m_Plugin->GetCurrentBrush(); }

    std::string GetField(const char* pszField)
    {
        const CRTTIObject* pObject = Current().GetRTTIObject();
        return pObject->FindField(pszField)->ToString(pObject);
    }

    void SetField(CTellurBrush& brush, const char* pszField, const char* pszValue)
    {
        CRTTIObject* pObject = brush.GetRTTIObject();
        pObject->FindField(pszField)->FromString(pObject, pszValue);
    }

    CTellurBrush& Tool(const char* pszFunction)
    {
        return *m_Plugin->GetBrushContainer()->FindBrush(pszFunction);
    }

    bool IsLogged() { return !m_Log.TakeLines().empty(); }
};

} // namespace

TEST_F(CPluginToolsTest, ATakenToolStaysUpAndTheLastOneComesBackWithoutALine)
{
    ASSERT_TRUE(m_Plugin->TakeTool(nullptr));
    EXPECT_STREQ(Current().GetFunctionName(), "RelativeHeightFunction") << "there was none yet";
    OpenPanel();
    TakeCalls();
    for (int i = 0; i < 2; ++i)
    {
        ASSERT_TRUE(m_Plugin->TakeTool("RampFunction"));
        EXPECT_EQ(&Current(), &Tool("RampFunction"));
        EXPECT_TRUE(IsTerraformingOn());
        const Lines calls = TakeCalls();
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "Panel.RefreshBrushControls()"), 1 - i);
    }
    EXPECT_FALSE(m_Plugin->TakeTool("NoFunction"));
    EXPECT_EQ(&Current(), &Tool("RampFunction"));

    m_Plugin->OnAction(1, 0, 1);
    ASSERT_EQ(m_Plugin->GetCurrentBrush(), nullptr);
    ASSERT_TRUE(m_Plugin->TakeTool(nullptr));
    EXPECT_EQ(&Current(), &Tool("RampFunction"));

    // One that was replaced while it was away: the one that is in its place.
    m_Plugin->OnAction(1, 0, 1);
    m_Plugin->GetBrushContainer()->SetBrush(Tool("RampFunction").Clone());
    ASSERT_TRUE(m_Plugin->TakeTool(nullptr));
    EXPECT_EQ(&Current(), &Tool("RampFunction"));

    EnterSilentMode(9)->bMayLeave = false;
    EXPECT_FALSE(m_Plugin->TakeTool("BlurFunction")) << "the mode that is current stays";
    EXPECT_FALSE(IsLogged());
}

TEST_F(CPluginToolsTest, ValuesStayInTheirRanges)
{
    EXPECT_EQ(m_Plugin->SetBrushValue(EBrushValue::Power, 0.5F), 0.0F) << "no brush";
    m_Plugin->TakeTool("SetHeightFunction");

    const struct
    {
        EBrushValue eValue;
        float fSet;
        float fGot;
    } cases[] = {
        {EBrushValue::Extent, 25.0F, 25.0F},
        {EBrushValue::Extent, 1.0F, 5.0F}, // half a cell
        {EBrushValue::Extent, 1.0e9F, 80.0F},
        {EBrushValue::Extent, std::numeric_limits<float>::quiet_NaN(), 80.0F},
        {EBrushValue::Power, 0.25F, 0.25F},
        {EBrushValue::Power, -1.0F, 0.0F},
        {EBrushValue::Power, 2.0F, 1.0F},
        {EBrushValue::Hardness, 70.0F, 70.0F},
        {EBrushValue::Hardness, 101.0F, 100.0F},
        {EBrushValue::Hardness, -0.5F, 0.0F},
    };

    for (const auto& test : cases)
    {
        EXPECT_EQ(m_Plugin->SetBrushValue(test.eValue, test.fSet), test.fGot) << test.fSet;
        EXPECT_EQ(m_Plugin->GetBrushValue(test.eValue), test.fGot);
    }
    EXPECT_EQ(Current().GetExtent(), 80.0F);
    EXPECT_EQ(Current().GetPowerModifier(), 1.0F);
    EXPECT_EQ(Current().GetHardness(), 0.0F);
}

TEST_F(CPluginToolsTest, OnlyWhatHasAnInverseOrAHeightOrKeysSaysSo)
{
    // The places of the six on the panel, in menus and under the digits.
    const char* places[] = {"BlurFunction",
                            "PointHeightFunction",
                            "SetHeightFunction",
                            "RelativeHeightFunction",
                            "PosterizeFunction",
                            "RampFunction"};
    const std::vector<SToolOffer> tools = m_Plugin->GetTools();
    ASSERT_GE(tools.size(), std::size(places));
    for (size_t i = 0; i < std::size(places); ++i)
    {
        EXPECT_STREQ(tools[i].pszFunction, places[i]);
    }
    for (const SToolOffer& tool : tools)
    {
        const std::string strName = tool.pszFunction;
        ASSERT_TRUE(m_Plugin->TakeTool(tool.pszFunction));
        float fHeight = 0.0F;
        EXPECT_EQ(m_Plugin->InvertTool(fHeight), strName == "RelativeHeightFunction") << strName;
        EXPECT_EQ(m_Plugin->SetToolHeight(12.5F), strName == "SetHeightFunction") << strName;
        EXPECT_EQ(m_Plugin->HeedsMinMax(),
                  strName == "BlurFunction" || strName == "SetHeightFunction" ||
                      strName == "RampFunction")
            << strName;
    }
    m_Plugin->TakeTool("RelativeHeightFunction");
    EXPECT_EQ(GetField("m_Height"), "-500");
    float fHeight = 0.0F;
    m_Plugin->InvertTool(fHeight);
    EXPECT_EQ(fHeight, 500.0F);
    m_Plugin->TakeTool("SetHeightFunction");
    EXPECT_EQ(GetField("m_Height"), "12.5");
}

TEST_F(CPluginToolsTest, SmoothingHasTheExtentAndMaskOfTheToolAndTheRestOfTheBlur)
{
    WriteGrey("grey.png", 1, 1, {128});
    WriteGrey("other.png", 1, 1, {64});
    EXPECT_FALSE(m_Plugin->BeginSmoothing()) << "no tool";
    Tool("BlurFunction").SetPowerModifier(0.75F);
    Tool("BlurFunction").SetMask("other.png");
    Tool("BlurFunction").SetMaskEnabled(true);
    SetField(Tool("BlurFunction"), "m_NeighbourhoodSize", "4");
    m_Plugin->TakeTool("RelativeHeightFunction");
    CTellurBrush& tool = Current();
    tool.SetExtent(30.0F);
    tool.SetPowerModifier(0.25F);
    for (const bool bMask : {false, true})
    {
        if (bMask)
        {
            tool.SetMask("grey.png");
            tool.SetMaskEnabled(true);
        }
        ASSERT_TRUE(m_Plugin->BeginSmoothing());
        EXPECT_STREQ(Current().GetFunctionName(), "BlurFunction");
        EXPECT_NE(&Current(), &Tool("BlurFunction"));
        EXPECT_EQ(Current().GetExtent(), 30.0F);
        EXPECT_EQ(Current().GetPowerModifier(), 0.75F);
        EXPECT_EQ(GetField("m_NeighbourhoodSize"), "4");
        EXPECT_EQ(Current().GetMaskPath(), bMask ? "grey.png" : "");
        EXPECT_EQ(Current().IsMaskEnabled(), bMask);
        m_Plugin->EndSmoothing();
        EXPECT_EQ(&Current(), &tool);
    }
    EXPECT_EQ(Tool("BlurFunction").GetMaskPath(), "other.png");
    EXPECT_EQ(Tool("BlurFunction").GetExtent(), 3200.0F);

    // Not in the middle of a drag, and what became current meanwhile stays.
    m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    EXPECT_FALSE(m_Plugin->BeginSmoothing());
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    EXPECT_EQ(&Current(), &tool);
    ASSERT_TRUE(m_Plugin->BeginSmoothing());
    m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    m_Plugin->TakeTool("RampFunction");
    m_Plugin->OnMouseMove(1, 1, 0, 0, 0, 1, 0, 0);
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    m_Plugin->EndSmoothing();
    EXPECT_EQ(&Current(), &Tool("RampFunction"));
    ASSERT_TRUE(m_Plugin->BeginSmoothing());
    m_Plugin->OnAction(1, 0, 1); // the mode is left, and the brush with it
    m_Plugin->EndSmoothing();
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), nullptr);
    m_Plugin->TakeTool(nullptr);
    EXPECT_EQ(&Current(), &Tool("RampFunction"));

    // A tool that is gone: the one in its place.
    ASSERT_TRUE(m_Plugin->BeginSmoothing());
    m_Plugin->GetBrushContainer()->SetBrush(Tool("RampFunction").Clone());
    m_Plugin->EndSmoothing();
    EXPECT_EQ(&Current(), &Tool("RampFunction"));
    EXPECT_FALSE(IsLogged());
}
