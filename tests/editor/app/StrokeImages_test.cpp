// Strokes that are more than one drag: their images, and what builds up while the button is held.
// Each is one step of the history and of a recording.

#include "editor/core/IHostObserver.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/StrokeImagesFixture.h"

#include <QProcess>

#include <algorithm>
#include <cmath>

namespace
{

// Ctrl is let go while the plug-in works on the first move of a stroke.
class CHasty : public IHostObserver
{
public:
    explicit CHasty(CEditorHost& host)
        : m_Host(host)
    {
        m_Host.GetObservers().Add(this);
    }

    ~CHasty() override { m_Host.GetObservers().Remove(this); }

    CHasty(const CHasty&) = delete;
    CHasty& operator=(const CHasty&) = delete;

    void OnBeforeEvent(const SHostEvent& event) override
    {
        if (event.eKind == EHostEvent::MouseMove && m_Host.GetInput().IsDragging())
        {
            EXPECT_EQ(QProcess::execute("xdotool", {"keyup", "ctrl"}), 0);
        }
    }

private:
    CEditorHost& m_Host;
};

} // namespace

TEST_F(CStrokeImages, EveryToolDrawsItsImagesAsOneStep)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    size_t nSteps = 0;

    struct SRow
    {
        const char* pszKey;
        const char* pszFunction;
        const char* pszField;
        const char* pszMore;
        const char* pszWords;
        bool bX;
        bool bZ;
    };

    const SRow rows[] = {
        {"F7", "RelativeHeightFunction", "m_Height", "", "mirror x", true, false},
        {"F7", "SetHeightFunction", "m_Height", "fade_factor( 60.0 )", "mirror x", true, false},
        {"F8", "SetHeightFunction", "m_Height", "", "mirror z", false, true},
        {"F8", "RampFunction", "m_SideInterpolation", "", "mirror z", false, true},
        {"F7", "PointHeightFunction", "m_Height", "", "mirror x", true, false},
    };
    Key("F9"); // turned, which the mirrors put off
    for (const SRow& row : rows)
    {
        SCOPED_TRACE(row.pszFunction);
        Key(row.pszKey);
        EXPECT_EQ(GetWords(), row.pszWords);
        if (std::string(row.pszFunction) == "RampFunction") // which finds no slope on the flat
        {
            TakeBrush("SetHeightFunction", "m_Height", "60");
            DragTo(110.0F, 40.0F, 112.0F, 40.0F);
            ++nSteps;
        }
        TakeBrush(row.pszFunction, row.pszField, "0.5", row.pszMore);
        DragTo(60.0F, 60.0F, 110.0F, 40.0F);
        ++nSteps;
        EXPECT_EQ(GetHost().GetUndoStack().GetCount(), nSteps);
        EXPECT_LT(GetAsymmetry(row.bX, row.bZ), 2e-4);
        const std::vector<float> drawn = GetHeights();
        for (size_t i = 0; i < nSteps; ++i)
        {
            Key("ctrl+z");
        }
        EXPECT_TRUE(GetHeights() == m_Flat);
        Do({"key", "--repeat", QString::number(nSteps), "ctrl+shift+z"});
        EXPECT_TRUE(GetHeights() == drawn);
        Do({"key", "--repeat", QString::number(nSteps), "ctrl+z"});
        nSteps = 0;
        Key(row.pszKey); // off
    }
}

TEST_F(CStrokeImages, WhatFallsOffTheTerrainHasNoImageAndEscapeTakesAllBack)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    Key("F9");
    EXPECT_EQ(GetWords(), "turned 4");
    TakeBrush("RelativeHeightFunction", "m_Height", "30");
    DragTo(140.0F, 80.0F, 170.0F, 70.0F);
    DragTo(30.0F, 96.0F, 40.0F, 96.0F);
    const std::vector<float> turned = GetHeights();
    GoTo(200.0F, 60.0F);
    Do({"mousedown", "1"});
    GoTo(200.0F, 90.0F);
    EXPECT_FALSE(GetHeights() == turned);
    Key("Escape");
    Do({"mouseup", "1"});
    EXPECT_TRUE(GetHeights() == turned);
    TakeBrush("RelativeHeightFunction", "m_Height", "30", "fade_factor( 90.0 )");
    DragTo(200.0F, 60.0F, 200.0F, 90.0F);
    SavePicture("turned");
    ExpectReplay(3);
}

TEST_F(CStrokeImages, AnUndoOrAnotherEndOfTheDragEndsItWithItsImages)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    GetInput().symmetry.bAcrossX = true;
    TakeBrush("RelativeHeightFunction", "m_Height", "30", "fade_factor( 90.0 )");
    GoTo(60.0F, 60.0F);
    Do({"mousedown", "1"});
    GoTo(90.0F, 60.0F);
    GetHost().GetInput().EndDrag(); // as whatever ends one does
    EXPECT_LT(GetAsymmetry(true, false), 2e-4);
    EXPECT_FALSE(GetHost().GetHistory().IsStepOpen());
    Do({"mouseup", "1"});
    const std::vector<float> ended = GetHeights();
    GoTo(60.0F, 120.0F);
    Do({"mousedown", "1"});
    Key("ctrl+z");
    Do({"mouseup", "1"});
    EXPECT_TRUE(GetHeights() == ended);
    EXPECT_EQ(GetHost().GetUndoStack().GetRedoCount(), 1U);
    Key("ctrl+shift+z");
    EXPECT_LT(GetAsymmetry(true, false), 2e-4);
    ExpectReplay(2);
}

TEST_F(CStrokeImages, AHeldStrokeBuildsUpInPlace)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    CViewInput& input = GetView(1).GetInput();
    TakeBrush("RelativeHeightFunction", "m_Height", "5");
    Key("j");
    EXPECT_EQ(GetWords(), "builds up");
    GetInput().iBuildsASecond = 0; // the test is the clock
    GetInput().symmetry.bAcrossX = true;
    GoTo(60.0F, 60.0F);
    Do({"mousedown", "1"});
    const float fOnce = GetHighest() - 20.0F;
    ASSERT_GT(fOnce, 4.0F);
    for (int i = 0; i < 3; ++i)
    {
        input.GetStroke().BuildUp();
    }
    EXPECT_NEAR(GetHighest() - 20.0F, 4.0F * fOnce, 1e-3F);
    GoTo(80.0F, 60.0F);
    input.GetStroke().BuildUp();
    Do({"mouseup", "1"});
    const std::vector<float> built = GetHeights();
    EXPECT_LT(GetAsymmetry(true, false), 2e-4);
    GoTo(60.0F, 120.0F);
    Do({"mousedown", "1"});
    input.GetStroke().BuildUp();
    EXPECT_FALSE(GetHeights() == built);
    Key("Escape");
    Do({"mouseup", "1"});
    EXPECT_TRUE(GetHeights() == built);
    EXPECT_EQ(GetHost().GetUndoStack().GetRedoCount(), 0U);

    GetInput().iBuildsASecond = SInputSettings::MOST_BUILDS;
    Do({"mousedown", "1"});
    WaitFor([this] { return GetHighest() >= 95.0F; }, "the clock builds up");
    Do({"mouseup", "1"});
    const std::vector<float> high = GetHeights();
    input.GetStroke().BuildUp(); // nothing any more
    EXPECT_TRUE(GetHeights() == high);
    ExpectReplay(2);
}

TEST_F(CStrokeImages, ThatComeLaterHaveTheBrushAndTheKeysOfTheHand)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    IPluginTools& tools = *m_Editor->FindInterface<IPluginTools>();
    for (const bool bImages : {false, true})
    {
        TakeBrush("RelativeHeightFunction", "m_Height", "30", "fade_factor( 90.0 )");
        GetInput().symmetry.bAcrossX = bImages;
        GoTo(60.0F, 60.0F);
        Do({"mousedown", "1"});
        GoTo(70.0F, 60.0F);
        Trigger("action.7.1"); // a larger brush
        Trigger("action.7.1");
        EXPECT_EQ(tools.GetBrushExtent() > 40.0F, !bImages);
        GoTo(90.0F, 60.0F);
        Do({"mouseup", "1"});
        Trigger("action.7.1");
        EXPECT_GT(tools.GetBrushExtent(), 40.0F);
        EXPECT_TRUE(!bImages || GetAsymmetry(true, false) < 2e-4);
        Key("ctrl+z");
    }
    EXPECT_TRUE(GetHeights() == m_Flat);

    // What Ctrl lets only raise finds nothing to do.
    TakeBrush("SetHeightFunction", "m_Height", "5", "fade_factor( 90.0 )");
    const CHasty hasty(GetHost());
    Do({"keydown", "ctrl"});
    ClickAt(60.0F, 60.0F);
    EXPECT_TRUE(GetHeights() == m_Flat);
    ClickAt(60.0F, 60.0F);
    EXPECT_LT(GetAsymmetry(true, false), 2e-4);
}
