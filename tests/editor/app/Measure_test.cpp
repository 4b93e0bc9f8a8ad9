#include "editor/app/CCursorNote.h"
#include "engine/world/CCamera.h"
#include "tests/editor/app/EditorFixture.h"

#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>

#include <cmath>

namespace
{

constexpr float RISE = 0.1F; // of the ground, a unit eastward

// Ruler, probe and walk over a plane that rises to the east.
class CMeasure : public CEditorFixture
{
protected:
    void StartOnPlane()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        CTerrain* pTerrain = GetHost().GetEngine().GetCWorld().GetCTerrain();
        std::vector<float> row(pTerrain->GetVerticesX());
        for (size_t i = 0; i < row.size(); ++i)
        {
            row[i] = RISE * 10.0F * static_cast<float>(i);
        }
        for (uint32_t uRow = 0; uRow < pTerrain->GetVerticesZ(); ++uRow)
        {
            pTerrain->SetRowHeights(0, uRow, row.data(), pTerrain->GetVerticesX());
        }
        m_Window->GetViews().RequestFrames();
        Settle();
    }

    QString GetText(const char* pszLabel) { return m_Window->findChild<QLabel*>(pszLabel)->text(); }

    // The numbers of a text in their order.
    std::vector<float> GetNumbers(const char* pszLabel)
    {
        std::vector<float> numbers;
        auto found = QRegularExpression("-?\\d+(\\.\\d+)?").globalMatch(GetText(pszLabel));
        while (found.hasNext())
        {
            numbers.push_back(found.next().captured().toFloat());
        }
        return numbers;
    }

    SVec3 PickIn(CViewWidget& view, double fX, double fY)
    {
        SVec3 hit;
        const double fScale = view.devicePixelRatioF();
        EXPECT_TRUE(view.GetNavigator().Pick(GetTerrain(),
                                             static_cast<float>(view.width() * fScale * fX),
                                             static_cast<float>(view.height() * fScale * fY),
                                             hit));
        return hit;
    }

    CCamera& GetCamera()
    {
        return *GetHost().GetEngine().GetCWorld().GetCameraList().GetCameraOfView(
            GetView().GetViewId());
    }

    float GetEye() // over the ground
    {
        const SVec3 at = GetCamera().GetPosition();
        return at.y - GetTerrain()->GetHeightAt(at.x, at.z);
    }
};

} // namespace

TEST_F(CMeasure, TheRulerMeasuresAlongItsLineAndChangesNothing)
{
    ASSERT_NO_FATAL_FAILURE(StartOnPlane());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    CViewWidget& top = GetView(1);
    MoveTo(top, {0.3, 0.5});
    Key("y");
    Drag(top, {0.3, 0.5}, {0.6, 0.45});
    const SVec3 from = PickIn(top, 0.3, 0.5);
    const SVec3 to = PickIn(top, 0.6, 0.45);
    const float fDistance = std::hypot(to.x - from.x, to.z - from.z);
    const float fUp = RISE * (to.x - from.x);
    const std::vector<float> numbers = GetNumbers("measure-line");
    const std::vector<float> expected = {from.x,
                                         from.z,
                                         to.x,
                                         to.z,
                                         fDistance,
                                         std::hypot(fDistance, fUp),
                                         fUp,
                                         fUp,
                                         0.0F,
                                         std::atan(fUp / fDistance) * 57.29578F};
    ASSERT_EQ(numbers.size(), 11U) << GetText("measure-line").toStdString();
    const float fPixel = PickIn(top, 0.3, 0.5).x - PickIn(top, 0.3 - 1.0 / top.width(), 0.5).x;
    for (size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_NEAR(numbers[i], expected[i], 2 * fPixel + 0.06F) << "number " << i;
    }
    EXPECT_NEAR(numbers[10], numbers[9], 0.2F) << "a plane is nowhere steeper than its line";
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 0U);

    // Escape gives up a line that is being drawn, and ends the ruler where none is.
    MoveTo(top, {0.4, 0.6});
    Do({"mousedown", "1"});
    MoveTo(top, {0.5, 0.6});
    Key("Escape");
    Do({"mouseup", "1"});
    EXPECT_TRUE(GetNumbers("measure-line").empty());
    Key("Escape");
    Drag(top, {0.4, 0.5}, {0.5, 0.5}, 4);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U) << "the button sculpts again";
    Key("y");
    Key("u"); // the button does one of the two
    Click(top);
    EXPECT_TRUE(GetNumbers("measure-line").empty());
    EXPECT_TRUE(GetHost().GetProtection().IsAny());
}

TEST_F(CMeasure, TheProbeStaysAndFollowsTheGround)
{
    ASSERT_NO_FATAL_FAILURE(StartOnPlane());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    CViewWidget& top = GetView(1);
    MoveTo(top, {0.5, 0.5});
    Key("o");
    Settle();
    const SVec3 at = PickIn(top, 0.5, 0.5);
    std::vector<float> before = GetNumbers("measure-probe");
    ASSERT_EQ(before.size(), 4U);
    EXPECT_NEAR(before[0], at.x, 2.0F);
    EXPECT_NEAR(before[2], RISE * before[0], 0.05F);
    EXPECT_NEAR(before[3], 5.7F, 0.11F);
    Drag(top, {0.48, 0.5}, {0.52, 0.5}, 6);
    Settle();
    const std::vector<float> after = GetNumbers("measure-probe");
    EXPECT_EQ(after[0], before[0]);
    EXPECT_GT(after[2], before[2] + 1.0F);
    // From the context menu the place is that of the menu.
    MoveTo(top, {0.3, 0.4});
    Answer<QMenu>(
        [&] {
            Do({"click", "3"});
        },
        [](QMenu& menu)
        {
            for (QAction* pAction : menu.actions())
            {
                if (pAction->text().contains("robe under"))
                {
                    pAction->trigger();
                }
            }
            menu.close();
        });
    Settle();
    EXPECT_NEAR(GetNumbers("measure-probe")[0], PickIn(top, 0.3, 0.4).x, 2.0F);
    Trigger("measure.drop_probe");
    Settle();
    EXPECT_EQ(GetText("measure-probe"), "");
}

TEST_F(CMeasure, SteepGroundStandsOutByTheAngle)
{
    ASSERT_NO_FATAL_FAILURE(StartOnPlane()); // 5.7 degrees
    MoveTo(GetView(1), {0.2, 0.2});
    const auto look = [this]
    {
        const QImage picture = Grab(GetView(1));
        return picture.pixelColor(picture.width() / 2, picture.height() / 2);
    };
    const QColor plain = look();
    Key("F3");
    EXPECT_EQ(look(), plain) << "not so steep";
    const auto ask = [this](double dAngle)
    {
        Answer<QDialog>([this] { Trigger("measure.steep_angle"); },
                        [dAngle](QDialog& dialog)
                        {
                            dialog.findChild<QDoubleSpinBox*>()->setValue(dAngle);
                            dialog.accept();
                        });
        Settle();
    };
    ask(4.0);
    const QColor steep = look();
    EXPECT_GT(steep.red() - steep.blue(), 80) << "orange";
    ask(8.0);
    const QColor near = look();
    EXPECT_GT(near.blue() - near.red(), 40) << "blue";
    Key("F3");
    EXPECT_EQ(look(), plain);
}

TEST_F(CMeasure, AWalkKeepsTheEyeOverTheGround)
{
    ASSERT_NO_FATAL_FAILURE(StartOnPlane());
    MoveTo(GetView(), {0.5, 0.5});
    const float fFlown = GetEye();
    EXPECT_GT(fFlown, 20.0F);
    Key("F5");
    EXPECT_NEAR(GetEye(), 1.8F, 0.01F);
    Do({"click", "4"}); // the wheel
    const float fHigher = GetEye();
    EXPECT_GT(fHigher, 1.9F);
    SVec3 before = GetCamera().GetPosition();
    MoveTo(GetView(), {0.5, 0.5});
    Do({"mousedown", "3"});
    MoveTo(GetView(), {0.6, 0.5});
    MoveTo(GetView(), {0.8, 0.5});
    Do({"mouseup", "3"});
    EXPECT_GT(GetCamera().GetYaw(), 10.0F) << "looks to the right, which is east";
    EXPECT_EQ(GetCamera().GetPosition().x, before.x);
    Do({"keydown", "w"});
    WaitFor([&] { return GetCamera().GetPosition().x > before.x + 0.5F; }, "it walks");
    Do({"keyup", "w"});
    EXPECT_NEAR(GetEye(), fHigher, 0.01F) << "up the plane";
    Key("F5");
    Do({"keydown", "e"});
    WaitFor([&] { return GetEye() > fHigher + 1.0F; }, "it flies again");
    Do({"keyup", "e"});
    MoveTo(GetView(1), {0.5, 0.5});
    Key("F5");
    EXPECT_TRUE(GetView(1).GetNote().text().contains("only a perspective view"));
    MoveTo(GetView(), {0.5, 0.5});
    Key("F5");
    Do({"click", "4"});
    const float fHighest = GetEye();
    EXPECT_GT(fHighest, fHigher + 0.1F);
    m_Window->LeaveChanges(); // in the middle of the walk
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_NEAR(m_Window->GetSettings().fEyeHeight, fHighest, 0.01F);
}
