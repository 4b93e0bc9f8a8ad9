// The sun by a key that is held, by the time of day and by the light dock, in the window of an X
// server.

#include "editor/app/CLightDock.h"
#include "tests/editor/app/ToolKeysFixture.h"

#include <QComboBox>
#include <QSlider>

namespace
{

class CLight : public CToolKeys
{
protected:
    SRenderSettings& Render() { return m_Window->GetSettings().render; }

    CLightDock& Dock()
    {
        auto* pDock = m_Window->findChild<CLightDock*>("light");
        pDock->show();
        pDock->raise();
        Settle();
        return *pDock;
    }

    QSlider& Slider(int i) { return *Dock().findChildren<QSlider*>()[i]; }

    QComboBox& Times() { return *Dock().findChild<QComboBox*>(); }

    // The mean green of a view.
    double GetBrightness(size_t iView)
    {
        const QImage picture = Grab(GetView(iView));
        double dSum = 0.0;
        for (int y = 0; y < picture.height(); ++y)
        {
            for (int x = 0; x < picture.width(); ++x)
            {
                dSum += qGreen(picture.pixel(x, y));
            }
        }
        return dSum / (static_cast<double>(picture.width()) * picture.height());
    }
};

} // namespace

TEST_F(CLight, AHeldKeyAndTheMouseTurnTheSunInAllViews)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    MoveBy(0, 0);
    const SVec3 place = m_Watcher.hover;
    const double dBefore = GetBrightness(1);
    const double dScale = GetView().devicePixelRatioF();
    Hold("l");
    EXPECT_EQ(GetNote(), "sun 215°, 38° high");
    MoveBy(40, 0);
    EXPECT_NEAR(Render().fSunYaw, 215.0 + 20.0 / dScale, 0.6);
    MoveBy(40, 120);
    Repeat(Qt::Key_L, "l");
    EXPECT_NEAR(Render().fSunPitch, 38.0 - 30.0 / dScale, 0.6);
    EXPECT_EQ(m_Watcher.hover.x, place.x) << "the footprint stays";
    EXPECT_LT(GetBrightness(1), dBefore - 4.0) << "the other view is darker";
    EXPECT_EQ(Times().currentIndex(), -1);
    EXPECT_EQ(Slider(0).value(), std::lround(Render().fSunYaw));
    EXPECT_EQ(Slider(1).value(), std::lround(Render().fSunPitch));
    MoveBy(60, 200); // below the horizon
    EXPECT_EQ(Render().fSunPitch, 0.0F);
    Key("Escape");
    EXPECT_EQ(Render().fSunYaw, 215.0F);
    EXPECT_EQ(Render().fSunPitch, 38.0F);
    EXPECT_EQ(Times().currentText(), "As on maps");
    LetGo("l");
    MoveBy(60, 0);
    EXPECT_EQ(Render().fSunYaw, 215.0F) << "the mouse is the view's again";
    EXPECT_NE(m_Watcher.hover.x, place.x);

    MoveBy(0, 0);
    Render().fSunYaw = 355.0F;
    Hold("l");
    MoveBy(40, 0);
    const float fYaw = Render().fSunYaw;
    EXPECT_NEAR(fYaw, 355.0 + 20.0 / dScale - 360.0, 0.6) << "a whole turn begins again";
    Do({"mousedown", "1"}); // sculpts, and the sun stays
    EXPECT_TRUE(GetHost().GetInput().IsDragging());
    MoveBy(90, 0);
    Do({"mouseup", "1"});
    LetGo("l");
    EXPECT_EQ(Render().fSunYaw, fYaw);
}

TEST_F(CLight, TimesOfDayAreChosenShownAndKept)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Trigger("light.evening");
    Settle();
    EXPECT_EQ(Times().currentText(), "Evening");
    const QColor evening = Grab(GetView(1)).pixelColor(GetView(1).width() / 2, 4);
    Trigger("light.noon");
    Settle();
    EXPECT_EQ(Times().currentText(), "Noon");
    const QColor noon = Grab(GetView(1)).pixelColor(GetView(1).width() / 2, 4);
    EXPECT_GT(evening.red() - evening.blue(), noon.red() - noon.blue() + 30) << "the sky";
    Times().setFocus();
    Key("Down"); // the next one in the list
    EXPECT_EQ(Times().currentText(), "Afternoon");
    EXPECT_EQ(Render().fSunYaw, 145.0F);
    Slider(1).triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(Render().fSunPitch, 37.0F);
    EXPECT_EQ(Times().currentIndex(), -1);
    m_Window->GetSettings().bSmoothEdges = false;
    m_Window->close();
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(Render().fSunYaw, 145.0F);
    EXPECT_EQ(Render().fSunPitch, 37.0F);
    EXPECT_FALSE(m_Window->GetSettings().bSmoothEdges);
}
