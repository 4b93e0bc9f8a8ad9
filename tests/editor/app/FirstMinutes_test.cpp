// A level from nothing to a recording, as the user guide's first minutes tell it: keys and the
// mouse in the views, and no click anywhere else.

#include "editor/app/CNewLevelDialog.h"
#include "engine/terrain/CTerrain.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/DocumentsFixture.h"
#include "tests/support/TestPaths.h"

#include <QDockWidget>

#include <algorithm>

namespace
{

class CFirstMinutes : public CDocuments
{
protected:
    CFirstMinutes() { m_bTools = true; }

    // What a step does to the heights.
    enum class EChange
    {
        None,
        Some,
    };

    void Expect(EChange eChange, const char* pszStep)
    {
        const std::vector<float> now = GetHeights();
        EXPECT_EQ(now != m_Before, eChange == EChange::Some) << pszStep;
        m_Before = now;
    }

    void Stroke(const QPointF& from, const QPointF& to, const char* pszStep)
    {
        Drag(GetView(1), from, to);
        Expect(EChange::Some, pszStep);
    }

    void Hold(const char* pszKey, const std::function<void()>& work)
    {
        Do({"keydown", pszKey});
        work();
        Do({"keyup", pszKey});
    }

    void TypeFile(const char* pszKeys, const std::string& strPath)
    {
        Answer<QFileDialog>([&] { Key(pszKeys); },
                            [&](QFileDialog&)
                            {
                                Key("ctrl+a");
                                Do({"type", strPath.c_str()});
                                Key("Return");
                            });
    }

    void RaiseARidge(IPluginTools& tools)
    {
        MoveTo(GetView(1), {0.3, 0.3});
        Key("4");
        EXPECT_EQ(tools.GetFunctionName(), "RelativeHeightFunction");
        Hold("b", [this] { Do({"type", "6000"}); });
        Hold("n", [this] { Do({"type", "800"}); });
        EXPECT_FLOAT_EQ(tools.GetBrushExtent(), 6000.0F);
        Stroke({0.3, 0.3}, {0.7, 0.35}, "ridge");
        Stroke({0.32, 0.33}, {0.68, 0.38}, "ridge, second stroke");
        Stroke({0.4, 0.35}, {0.6, 0.32}, "ridge, third stroke");
        Key("x");
        Stroke({0.3, 0.55}, {0.7, 0.6}, "valley");
        EXPECT_LT(*std::min_element(m_Before.begin(), m_Before.end()), 1600.0F);
        Hold("shift", [this] { Stroke({0.35, 0.33}, {0.65, 0.36}, "smoothed"); });
        EXPECT_EQ(tools.GetFunctionName(), "RelativeHeightFunction");
    }

    void ShapeItByEveryTool(IPluginTools& tools)
    {
        Key("3");
        MoveTo(GetView(1), {0.5, 0.34});
        Key("p");
        Stroke({0.5, 0.34}, {0.6, 0.45}, "plateau at the height of the ridge");
        Key("5");
        Hold("n", [this] { Do({"type", "12"}); });
        Stroke({0.3, 0.45}, {0.4, 0.45}, "terrace");
        Key("6");
        Stroke({0.5, 0.58}, {0.6, 0.45}, "ramp");

        Key("4");
        const float fHighest = GetHighest();
        TypeFile("m", TELLUR_SOURCE_DIR "/data/samples/stripes.png");
        EXPECT_TRUE(tools.IsMaskEnabled());
        Stroke({0.3, 0.66}, {0.7, 0.66}, "valley through a mask");
        EXPECT_EQ(GetHighest(), fHighest);
        Key("m");
        EXPECT_FALSE(tools.IsMaskEnabled());
        const float fExtent = tools.GetBrushExtent();
        Hold("b", [&] { Do({"type", std::to_string(fExtent / 2.0F).c_str()}); });
        EXPECT_NEAR(tools.GetBrushExtent(), fExtent / 2.0F, 0.1F);
        Stroke({0.2, 0.7}, {0.4, 0.7}, "at half the size");
    }

    float GetHighest() { return *std::max_element(m_Before.begin(), m_Before.end()); }

    std::vector<float> m_Before;
};

} // namespace

TEST_F(CFirstMinutes, KeysAndTheMouseInTheViewsAreEnough)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    auto* pTools = m_Editor->FindInterface<IPluginTools>();
    CViewWidget& view = GetView(1);
    const CUndoStack& history = GetHost().GetUndoStack();
    Answer<CNewLevelDialog>([this] { Key("ctrl+n"); }, [this](CNewLevelDialog&) { Key("Return"); });
    ASSERT_NE(GetTerrain(), nullptr);
    const std::string strScript = m_Folder.Path("minutes.tellur");
    TypeFile("ctrl+shift+r", strScript);
    ASSERT_TRUE(m_Editor->GetRecorder()->IsRecording());
    Expect(EChange::Some, "a new level");

    RaiseARidge(*pTools);
    ShapeItByEveryTool(*pTools);
    const size_t nSteps = history.GetCount();
    for (const char* pszKeys : {"ctrl+z", "ctrl+z", "ctrl+z", "ctrl+shift+z", "ctrl+shift+z"})
    {
        Key(pszKeys);
        Expect(EChange::Some, pszKeys);
    }
    EXPECT_EQ(history.GetCount(), nSteps - 1);
    Hold("c", [this] { Stroke({0.7, 0.62}, {0.85, 0.7}, "a straight line"); });
    Key("3");
    MoveTo(view, {0.5, 0.57});
    Key("p");
    Stroke({0.5, 0.57}, {0.7, 0.65}, "plateau at the valley's height");

    const std::string strLevel = m_Folder.Path("minutes.level");
    TypeFile("ctrl+s", strLevel);
    EXPECT_FALSE(m_Window->isWindowModified());
    Key("ctrl+shift+r");
    ASSERT_FALSE(m_Editor->GetRecorder()->IsRecording());
    const std::string strSaved = ReadBytes(m_Folder.Path("minutes.height"));
    EXPECT_FALSE(strSaved.empty());
    EXPECT_TRUE(ReplayScript(strScript, m_Folder.Path("replayed.height")) == strSaved);
    EXPECT_FALSE(m_Window->findChild<QDockWidget*>("panel")->isVisible());
}
