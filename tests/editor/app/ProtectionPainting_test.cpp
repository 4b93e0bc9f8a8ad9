// Ground is protected with the mouse in the view, and a stroke leaves it alone there.

#include "editor/app/CNumbersDialog.h"
#include "editor/script/CRecorder.h"
#include "tests/editor/app/EditorFixture.h"

#include <QDoubleSpinBox>
#include <QStatusBar>

namespace
{

class CProtectionPainting : public CEditorFixture
{
protected:
    size_t Count() { return GetTerrain()->GetProtection().GetCount(); }

    size_t GetSteps() { return GetHost().GetUndoStack().GetCount(); }

    // Vertices whose height is no longer that of the flat level.
    size_t CountChanged(bool bProtected)
    {
        const std::vector<float> heights = GetHeights();
        size_t nChanged = 0;
        for (uint32_t i = 0; i < heights.size(); ++i)
        {
            const bool bHere = GetTerrain()->GetProtection().IsProtected(i % 33, i / 33);
            nChanged += bHere == bProtected && heights[i] != 20.0F ? 1U : 0U;
        }
        return nChanged;
    }
};

} // namespace

TEST_F(CProtectionPainting, TheMouseProtectsAndStrokesLeaveItAlone)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    TakeBrush();
    CRecorder recorder(GetHost(), m_Editor->GetPlugin());
    ASSERT_TRUE(recorder.Start(m_Folder.Path("painted.tellur")));
    CViewWidget& view = GetView(1); // from above
    MoveTo(view, {0.5, 0.5});
    const QImage plain = Grab(GetView(0));
    Key("u");
    Drag(view, {0.4, 0.5}, {0.6, 0.5});
    const size_t nProtected = Count();
    EXPECT_GT(nProtected, 20U);
    EXPECT_EQ(GetSteps(), 1U);
    EXPECT_EQ(CountChanged(true) + CountChanged(false), 0U);
    EXPECT_NE(Grab(GetView(0)), plain) << "the other view shows it, too";
    SavePicture("protection");

    // Escape takes a stroke back, Ctrl protects no longer, a click is enough.
    MoveTo(view, {0.5, 0.3});
    Do({"mousedown", "1"});
    MoveTo(view, {0.6, 0.3});
    EXPECT_GT(Count(), nProtected);
    Key("Escape");
    Do({"mouseup", "1"});
    EXPECT_EQ(Count(), nProtected);
    EXPECT_EQ(GetSteps(), 1U);
    Do({"keydown", "ctrl"});
    MoveTo(view, {0.5, 0.5});
    Do({"click", "1"});
    Do({"keyup", "ctrl"});
    EXPECT_LT(Count(), nProtected);
    EXPECT_EQ(GetSteps(), 2U);

    // The tool works around it, and goes on as it began. What undo brings back is what was there.
    Key("u");
    MoveTo(view, {0.3, 0.5});
    Do({"mousedown", "1"});
    Key("u");
    EXPECT_TRUE(GetHost().GetInput().IsDragging());
    MoveTo(view, {0.7, 0.5});
    Do({"mouseup", "1"});
    EXPECT_GT(CountChanged(false), 20U);
    EXPECT_EQ(CountChanged(true), 0U);
    const std::vector<float> sculpted = GetHeights();
    Trigger("protection.clear");
    EXPECT_EQ(Count(), 0U);
    Key("ctrl+z");
    Key("ctrl+z");
    EXPECT_EQ(CountChanged(true) + CountChanged(false), 0U);
    Key("ctrl+z");
    EXPECT_EQ(Count(), nProtected);
    GetHost().GoToStep(3);
    EXPECT_EQ(GetHeights(), sculpted);
    ASSERT_TRUE(recorder.Stop());
    const std::string strNow = m_Folder.Path("now.height");
    ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
        strNow.c_str(), nullptr, 0, 0));
    EXPECT_EQ(ReplayScript(m_Folder.Path("painted.tellur"), m_Folder.Path("replayed.height")),
              ReadBytes(strNow));
}

TEST_F(CProtectionPainting, DialogsProtectHeightsAndAreaAroundAndNothingWhenCancelled)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const auto answer = [this](const char* pszCommand, int iBox, double fValue, bool bAccept)
    {
        Answer<CNumbersDialog>([&] { Trigger(pszCommand); },
                               [&](CNumbersDialog& dialog)
                               {
                                   dialog.findChildren<QDoubleSpinBox*>()[iBox]->setValue(fValue);
                                   bAccept ? dialog.accept() : dialog.reject();
                               });
    };
    GetHost().GetProtection().Do({EProtect::Disc, 100.0F, 100.0F, 5.0F});
    Settle(); // the menu follows
    EXPECT_EQ(Count(), 1U);
    answer("protection.grow", 0, 2.0, false);
    EXPECT_EQ(Count(), 1U);
    answer("protection.grow", 0, 2.0, true);
    EXPECT_EQ(Count(), 13U);
    answer("protection.heights", 0, 20.5, true); // from there up: nothing is that high
    EXPECT_EQ(GetSteps(), 2U);
    answer("protection.heights", 1, 20.0, true);
    EXPECT_EQ(Count(), size_t{33} * 33);
    Key("ctrl+z");
    EXPECT_EQ(Count(), 13U);
    answer("protection.slope", 0, 45.0, true); // flat
    EXPECT_EQ(Count(), 13U);
}
