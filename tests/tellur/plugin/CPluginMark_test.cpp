// What the plug-in tells about the tool at hand, for the mark in a host's views.

#include "host/Reflection.h"
#include "tests/tellur/plugin/PluginFixture.h"

namespace
{

class CPluginMarkTest : public CPluginFixture
{
protected:
    CPluginMarkTest()
    {
        Initialize();
        m_Face.lastPick = {40.0F, 0.0F, 40.0F};
    }

    CTellurBrush& Take(const char* pszFunction)
    {
        EXPECT_TRUE(m_Plugin->TakeTool(pszFunction));
        return *m_Plugin->GetCurrentBrush();
    }

    bool SetField(const char* pszField, const char* pszValue)
    {
        CRTTIObject* pObject = m_Plugin->GetCurrentBrush()->GetRTTIObject();
        return pObject->FindField(pszField)->FromString(pObject, pszValue);
    }

    SToolMark Get(bool bSmooth = false)
    {
        SToolMark mark;
        EXPECT_TRUE(m_Plugin->GetMark(bSmooth, mark));
        return mark;
    }
};

} // namespace

TEST_F(CPluginMarkTest, TellsKindSignAndNumbersOfEachTool)
{
    SToolMark none;
    EXPECT_FALSE(m_Plugin->GetMark(false, none));

    const struct
    {
        const char* pszFunction;
        EToolKind eKind;
        EToolSign eCtrl; // with the key held
        EToolSign eMax;  // with the field, where there is one
    } cases[] = {
        {"RelativeHeightFunction", EToolKind::Add, EToolSign::Raise, EToolSign::Raise},
        {"SetHeightFunction", EToolKind::Level, EToolSign::RaiseOnly, EToolSign::LowerOnly},
        {"BlurFunction", EToolKind::Smooth, EToolSign::RaiseOnly, EToolSign::LowerOnly},
        {"PosterizeFunction", EToolKind::Terrace, EToolSign::Neutral, EToolSign::LowerOnly},
        {"PointHeightFunction", EToolKind::Point, EToolSign::Neutral, EToolSign::Neutral},
        {"RampFunction", EToolKind::Ramp, EToolSign::RaiseOnly, EToolSign::LowerOnly},
    };

    for (const auto& test : cases)
    {
        SCOPED_TRACE(test.pszFunction);
        CTellurBrush& brush = Take(test.pszFunction);
        brush.SetExtent(24.0F);
        brush.SetPowerModifier(0.5F);
        brush.SetHardness(0.25F);
        brush.SetVerticalDistance(30.0F);
        m_FrontEnd.keys = {EKey::Control};
        const SToolMark mark = Get();
        m_FrontEnd.keys = {};
        EXPECT_EQ(mark.eKind, test.eKind);
        EXPECT_EQ(mark.eSign, test.eCtrl);
        EXPECT_EQ(mark.fExtent, 24.0F);
        EXPECT_EQ(mark.fPower, 0.5F);
        EXPECT_EQ(mark.fBand, 30.0F);
        const bool bRamp = test.eKind == EToolKind::Ramp;
        EXPECT_EQ(mark.fHardness, bRamp ? 0.0F : 0.25F);
        EXPECT_EQ(mark.pShape, bRamp ? nullptr : brush.GetBitmapImage());
        EXPECT_TRUE(test.eMax != EToolSign::LowerOnly || SetField("m_Mode", "mode_max"));
        EXPECT_EQ(Get().eSign, test.eMax);
    }
    Take("RelativeHeightFunction");
    SetField("m_Height", "-5");
    EXPECT_EQ(Get().eSign, EToolSign::Lower);
    m_Plugin->GetCurrentBrush()->SetPowerModifier(-0.5F);
    EXPECT_EQ(Get().eSign, EToolSign::Raise) << "a negative power turns it round";
    Take("SetHeightFunction");
    SetField("m_Height", "120");
    EXPECT_EQ(Get().eTarget, EToolTarget::Height);
    EXPECT_EQ(Get().fHeight, 120.0F);
    SetField("m_PickHeight", "1");
    EXPECT_EQ(Get().eTarget, EToolTarget::Picked);
}

TEST_F(CPluginMarkTest, TellsWhatWouldSmoothAndTheEndsOfARampThatIsDrawn)
{
    Take("BlurFunction").SetHardness(0.75F);
    Take("RampFunction").SetExtent(16.0F);
    SetField("m_SideInterpolation", "0.25");
    SetField("m_FrontBackInterpolation", "0.5");
    const SToolMark smooth = Get(true);
    EXPECT_EQ(smooth.eKind, EToolKind::Smooth);
    EXPECT_EQ(smooth.fExtent, 16.0F) << "of the tool at hand";
    EXPECT_EQ(smooth.fHardness, 0.75F);

    EXPECT_FALSE(Get().bLaid);
    m_Plugin->OnLButtonDown(1, 0, 0, 0, 0, 0);
    m_Face.lastPick = {60.0F, 0.0F, 30.0F};
    m_Plugin->OnMouseMove(1, 0, 0, 0, 0, 0, 0, 0);
    const SToolMark ramp = Get();
    EXPECT_TRUE(ramp.bLaid);
    EXPECT_EQ(ramp.first.x, 40.0F);
    EXPECT_EQ(ramp.second.z, 30.0F);
    EXPECT_EQ(ramp.fSideShare, 0.25F);
    EXPECT_EQ(ramp.fEndShare, 0.25F);
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    EXPECT_FALSE(Get().bLaid);
}
