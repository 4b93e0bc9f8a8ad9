// Strokes that are more than one drag: their images, what builds up while the button is held, and
// paths of clicked points. Each is one step of the history and of a recording.

#include "editor/app/CCursorNote.h"
#include "editor/core/IHostObserver.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/EditorFixture.h"

#include <QAction>
#include <QLabel>
#include <QProcess>

#include <algorithm>
#include <cmath>

namespace
{

constexpr size_t COLUMNS = 129; // 320 units
constexpr size_t ROWS = 65;     // 192 units: cells are not square either

class CStrokeImages : public CEditorFixture
{
protected:
    void StartOblong()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        SHeightField field;
        field.Allocate(COLUMNS, ROWS);
        field.size = {320.0F, 100.0F, 192.0F};
        std::fill_n(field.pHeights.get(), field.GetCount(), 20.0F);
        GetHost().TakeLevel(std::move(field));
        m_Window->GetViews().FrameAll();
        m_Flat = GetHeights();
        ASSERT_TRUE(m_Editor->GetRecorder()->Start(m_Folder.Path("recorded.tellur")));
        Settle();
    }

    // Of a place of the ground in the view from above, as a share of the view.
    QPointF At(float fX, float fZ)
    {
        CViewWidget& view = GetView(1);
        float fAtX = 0.0F;
        float fAtY = 0.0F;
        EXPECT_TRUE(
            view.GetNavigator().GetProjection(GetTerrain()).Project({fX, 20.0F, fZ}, fAtX, fAtY));
        const double fScale = view.devicePixelRatioF();
        return {static_cast<double>(fAtX) / (view.width() * fScale),
                static_cast<double>(fAtY) / (view.height() * fScale)};
    }

    void GoTo(float fX, float fZ) { MoveTo(GetView(1), At(fX, fZ)); }

    void DragTo(float fX, float fZ, float fToX, float fToZ)
    {
        Drag(GetView(1), At(fX, fZ), At(fToX, fToZ), 6);
    }

    void ClickAt(float fX, float fZ)
    {
        GoTo(fX, fZ);
        Do({"click", "1"});
    }

    float GetHeight(float fX, float fZ)
    {
        SVec3 at = {fX, 0.0F, fZ};
        EXPECT_TRUE(GetTerrain()->PickDown(at));
        return at.y;
    }

    SInputSettings& GetInput() { return m_Window->GetSettings().input; }

    // What is recorded until now gives the same heights, with as many steps.
    void ExpectReplay(size_t nSteps)
    {
        const std::string strHeights = m_Folder.Path("now.height");
        const std::string strScript = m_Folder.Path("recorded.tellur");
        EXPECT_EQ(GetHost().GetUndoStack().GetCount(), nSteps);
        ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
            strHeights.c_str(), nullptr, 0, 0));
        ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
        WriteBytes(strScript,
                   ReadBytes(strScript) + "expect_undo( " + std::to_string(nSteps) + " )\n");
        const std::string strAgain = ReplayScript(strScript, m_Folder.Path("again.height"));
        EXPECT_TRUE(strAgain == ReadBytes(strHeights));
    }

    // The largest difference of a vertex and its image; sees to it that both sides have changed.
    double GetAsymmetry(bool bX, bool bZ)
    {
        const std::vector<float> heights = GetHeights();
        double fMost = 0.0;
        bool bLeft = false;
        bool bRight = false;
        for (size_t z = 0; z < ROWS; ++z)
        {
            for (size_t x = 0; x < COLUMNS; ++x)
            {
                const size_t i = z * COLUMNS + x;
                const size_t iImage =
                    (bZ ? ROWS - 1 - z : z) * COLUMNS + (bX ? COLUMNS - 1 - x : x);
                fMost =
                    std::max(fMost, std::fabs(static_cast<double>(heights[i]) - heights[iImage]));
                const bool bChanged = heights[i] != 20.0F;
                bLeft = bLeft || (bChanged && i < iImage);
                bRight = bRight || (bChanged && i > iImage);
            }
        }
        EXPECT_TRUE(bLeft && bRight);
        return fMost;
    }

    float GetHighest()
    {
        const std::vector<float> heights = GetHeights();
        return *std::max_element(heights.begin(), heights.end());
    }

    std::string GetWords()
    {
        return m_Window->findChild<QLabel*>("status-stroke")->text().toStdString();
    }

    std::vector<float> m_Flat;
};

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
        input.BuildUp();
    }
    EXPECT_NEAR(GetHighest() - 20.0F, 4.0F * fOnce, 1e-3F);
    GoTo(80.0F, 60.0F);
    input.BuildUp();
    Do({"mouseup", "1"});
    const std::vector<float> built = GetHeights();
    EXPECT_LT(GetAsymmetry(true, false), 2e-4);
    GoTo(60.0F, 120.0F);
    Do({"mousedown", "1"});
    input.BuildUp();
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
    input.BuildUp(); // nothing any more
    EXPECT_TRUE(GetHeights() == high);
    ExpectReplay(2);
}

TEST_F(CStrokeImages, APathOfClickedPointsIsOneStroke)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    TakeBrush("SetHeightFunction", "m_Height", "60", "extent( 20.0 )", "disc");
    Key("k");
    ClickAt(60.0F, 60.0F);
    ClickAt(200.0F, 60.0F);
    Key("Escape");
    Key("Return"); // there is no path to draw
    EXPECT_TRUE(GetHeights() == m_Flat);
    EXPECT_EQ(GetWords(), "");

    Key("k");
    ClickAt(60.0F, 60.0F);
    ClickAt(300.0F, 160.0F);
    Key("BackSpace");
    ClickAt(200.0F, 60.0F);
    ClickAt(200.0F, 140.0F);
    SavePicture("path");
    ClickAt(60.0F, 60.0F); // the first one closes it
    EXPECT_EQ(GetWords(), "path of 3, closed");
    Key("BackSpace");
    Key("c");
    EXPECT_EQ(GetWords(), "path of 3, closed");
    EXPECT_TRUE(GetHeights() == m_Flat) << "clicks draw nothing";
    Key("Return");
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U);
    EXPECT_FLOAT_EQ(GetHeight(130.0F, 60.0F), 60.0F);
    EXPECT_FLOAT_EQ(GetHeight(200.0F, 100.0F), 60.0F);
    EXPECT_FLOAT_EQ(GetHeight(130.0F, 100.0F), 60.0F) << "the way back";
    EXPECT_FLOAT_EQ(GetHeight(80.0F, 120.0F), 20.0F);
    ExpectReplay(1);
}

TEST_F(CStrokeImages, AToolThatDrawsAlongNoPathRefusesOneAndEndsOneThatHasBegun)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    const auto getWords = [this]
    {
        return m_Window->findChild<QLabel*>("status-words")->text().toStdString();
    };
    const std::string strWhy = "Point height works where it is pressed and draws along no path";
    GoTo(60.0F, 60.0F);
    Key("k");
    EXPECT_EQ(GetView(1).GetNote().text(), "no tool");
    TakeBrush("PointHeightFunction", "none", "0");
    Key("k");
    EXPECT_EQ(GetView(1).GetNote().text().toStdString(), strWhy);
    EXPECT_EQ(GetWords(), "");
    EXPECT_FALSE(m_Window->findChild<QAction*>("path.set")->isChecked());
    TakeBrush();
    Key("k");
    ClickAt(60.0F, 60.0F);
    ClickAt(200.0F, 60.0F);
    EXPECT_EQ(GetWords(), "path of 2");
    TakeBrush("PointHeightFunction", "none", "0");
    m_Window->ShowState();
    Settle();
    EXPECT_EQ(GetWords(), "");
    EXPECT_EQ(getWords(), "The path is dropped: " + strWhy);
    TakeBrush();
    Key("Return");
    EXPECT_TRUE(GetHeights() == m_Flat);
}

TEST_F(CStrokeImages, ARampLeadsFromPointToPointAtTheHeightsOfBefore)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    TakeBrush("SetHeightFunction", "m_Height", "60", "extent( 20.0 )", "disc");
    DragTo(70.0F, 60.0F, 200.0F, 60.0F);
    TakeBrush("RampFunction", "m_SideInterpolation", "1", "extent( 8.0 )");
    Key("k");
    ClickAt(130.0F, 60.0F);
    ClickAt(130.0F, 20.0F);
    ClickAt(90.0F, 20.0F);
    ClickAt(90.0F, 60.0F);
    Key("Return");
    EXPECT_NEAR(GetHeight(130.0F, 40.0F), 40.0F, 2.0F);
    EXPECT_NEAR(GetHeight(110.0F, 20.0F), 20.0F, 0.01F);
    EXPECT_NEAR(GetHeight(90.0F, 40.0F), 40.0F, 2.0F);
    DragTo(190.0F, 60.0F, 250.0F, 150.0F); // the button draws again
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 3U);
    Key("ctrl+z");
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

TEST_F(CStrokeImages, AHeldKeySwitchesOnce)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    for (const QAction* pAction : m_Window->actions())
    {
        EXPECT_FALSE(pAction->isCheckable() && pAction->autoRepeat())
            << pAction->objectName().toStdString();
    }
}
