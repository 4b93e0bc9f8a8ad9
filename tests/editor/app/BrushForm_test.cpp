// How the brush is put down: the pressure of a pen, and a brush that turns with the stroke.

#include "editor/app/CPenDialog.h"
#include "editor/app/CViewWidget.h"
#include "engine/terrain/CTerrain.h"
#include "host/World.h"
#include "tests/editor/app/EditorFixture.h"
#include "tests/support/TestPaths.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QPointingDevice>
#include <QPushButton>
#include <QSlider>
#include <QTabletEvent>

#include <algorithm>

namespace
{

class CBrushForm : public CEditorFixture
{
protected:
    // The half brush leads with its right half.
    void TakeHalf(const char* pszHeight)
    {
        TakeBrush("RelativeHeightFunction",
                  "m_Height",
                  pszHeight,
                  "bitmap() { path( \"" TELLUR_SOURCE_DIR
                  "/tests/scripts/images/right-half-16.png\" ) } extent( 80.0 )");
    }

    // What a pen that touches reports before the mouse event that goes with it.
    void Pen(QWidget& view, QEvent::Type eType, double fPressure)
    {
        static const QPointingDevice PEN("pen",
                                         7,
                                         QInputDevice::DeviceType::Stylus,
                                         QPointingDevice::PointerType::Pen,
                                         QInputDevice::Capability::Pressure,
                                         1,
                                         1);
        QTabletEvent event(eType,
                           &PEN,
                           {1.0, 1.0},
                           {1.0, 1.0},
                           fPressure,
                           0.0F,
                           0.0F,
                           0.0F,
                           0.0,
                           0.0F,
                           Qt::NoModifier,
                           Qt::LeftButton,
                           eType == QEvent::TabletRelease ? Qt::NoButton : Qt::LeftButton);
        QCoreApplication::sendEvent(&view, &event);
        EXPECT_FALSE(event.isAccepted()); // the mouse event is still to come
    }

    // From left to right, pressed harder and harder.
    void DragPen(QWidget& view)
    {
        MoveTo(view, {0.2, 0.5});
        Pen(view, QEvent::TabletPress, 0.1);
        Do({"mousedown", "1"});
        for (int i = 1; i <= 6; ++i)
        {
            Pen(view, QEvent::TabletMove, 0.1 + 0.15 * i);
            MoveTo(view, {0.2 + 0.1 * i, 0.5});
        }
        Pen(view, QEvent::TabletRelease, 0.0);
        Do({"mouseup", "1"});
    }

    float At(uint32_t uColumn, uint32_t uRow)
    {
        return GetHeights()[size_t{uRow} * GetTerrain()->GetVerticesX() + uColumn];
    }

    // The highest vertex of a column.
    float GetCrest(uint32_t uColumn)
    {
        float fCrest = 0.0F;
        for (uint32_t z = 0; z < GetTerrain()->GetVerticesZ(); ++z)
        {
            fCrest = std::max(fCrest, At(uColumn, z));
        }
        return fCrest;
    }
};

} // namespace

TEST_F(CBrushForm, APenThatIsPressedHarderRaisesMoreAndARecordingHasIt)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    TakeBrush("RelativeHeightFunction", "m_Height", "50", "extent( 60.0 )");
    const std::string strScript = m_Folder.Path("pen.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));
    DragPen(GetView(1));
    const std::vector<float> pen = GetHeights();
    float fBefore = 22.0F;
    for (uint32_t uColumn = 10; uColumn <= 22; uColumn += 3)
    {
        EXPECT_GT(GetCrest(uColumn), fBefore + 3.0F) << uColumn;
        fBefore = GetCrest(uColumn);
    }
    // The mouse has all of the power again, and the pressure is nobody's without a pen.
    Key("ctrl+z");
    Drag(GetView(1), {0.2, 0.5}, {0.8, 0.5});
    EXPECT_NEAR(GetCrest(10), 70.0F, 2.0F);
    Key("ctrl+z");

    // A light touch is made a strong one by the curve, in the dialog.
    Answer<CPenDialog>(
        [this] { Trigger("brush.pen"); },
        [](CPenDialog& dialog)
        {
            dialog.findChild<QSlider*>()->setValue(-20);
            dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        });
    DragPen(GetView(1));
    EXPECT_GT(GetCrest(10), 50.0F);
    m_Window->GetSettings().input.form.bPen = false;
    Key("ctrl+z");
    DragPen(GetView(1));
    EXPECT_NEAR(GetCrest(10), 70.0F, 2.0F);

    const std::string strHeights = m_Folder.Path("now.height");
    ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
        strHeights.c_str(), nullptr, 0, 0));
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    EXPECT_EQ(ReplayScript(strScript, m_Folder.Path("replayed.height")), ReadBytes(strHeights));
    EXPECT_NE(ReadBytes(strScript).find("\npressure( 0."), std::string::npos);
}

TEST_F(CBrushForm, APathHasAllOfThePowerAfterALightPen)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    TakeBrush("RelativeHeightFunction", "m_Height", "50", "extent( 60.0 )");
    CViewWidget& view = GetView(1);
    MoveTo(view, {0.3, 0.4});
    Pen(view, QEvent::TabletPress, 0.2);
    Do({"mousedown", "1"});
    Pen(view, QEvent::TabletRelease, 0.0);
    Do({"mouseup", "1"});
    const std::string strScript = m_Folder.Path("path.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));
    Key("k");
    for (const double fX : {0.3, 0.6})
    {
        MoveTo(view, {fX, 0.6});
        Do({"click", "1"});
    }
    Key("Return");
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    const std::string strText = ReadBytes(strScript);
    EXPECT_NE(strText.find("\npress_at( "), std::string::npos);
    EXPECT_EQ(strText.find("\npressure( "), std::string::npos);
}

TEST_F(CBrushForm, ABrushTurnsWithTheStrokeAndByAnAngle)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    TakeHalf("50");
    const std::string strScript = m_Folder.Path("turned.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));
    CViewWidget& view = GetView(1);
    Trigger("turn.along");
    // Down: the half that leads is the lower one, and nothing lies behind the press.
    Drag(view, {0.5, 0.4}, {0.5, 0.7});
    SVec3 press;
    SVec3 release;
    ASSERT_TRUE(view.GetNavigator().Pick(GetTerrain(),
                                         0.5F * static_cast<float>(view.width()),
                                         0.4F * static_cast<float>(view.height()),
                                         press));
    ASSERT_TRUE(view.GetNavigator().Pick(GetTerrain(),
                                         0.5F * static_cast<float>(view.width()),
                                         0.7F * static_cast<float>(view.height()),
                                         release));
    const auto uColumn = static_cast<uint32_t>(press.x / 10.0F);
    EXPECT_GT(At(uColumn, static_cast<uint32_t>((release.z + 25.0F) / 10.0F)), 50.0F);
    EXPECT_NEAR(At(uColumn, static_cast<uint32_t>((press.z - 30.0F) / 10.0F)), 20.0F, 1e-3F);
    Key("ctrl+z");

    // By 15 degrees six times: a dab has its lower half.
    Trigger("turn.none");
    for (int i = 0; i < 6; ++i)
    {
        Key("period");
    }
    EXPECT_FLOAT_EQ(m_Window->GetSettings().input.form.fDegrees, 90.0F);
    MoveTo(view, {0.5, 0.5});
    Do({"click", "1"});
    EXPECT_GT(At(16, 19), At(16, 13) + 20.0F);
    EXPECT_NEAR(At(13, 18), At(19, 18), 1.0F);
    Key("ctrl+z");

    // At random no two points are alike, and all of it is in the recording.
    Trigger("turn.random");
    Drag(view, {0.3, 0.5}, {0.7, 0.5});
    const std::string strHeights = m_Folder.Path("now.height");
    ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
        strHeights.c_str(), nullptr, 0, 0));
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    EXPECT_EQ(ReplayScript(strScript, m_Folder.Path("replayed.height")), ReadBytes(strHeights));
    const std::string strText = ReadBytes(strScript);
    EXPECT_GT(std::count(strText.begin() + strText.rfind("press_at"), strText.end(), '['), 8);
}
