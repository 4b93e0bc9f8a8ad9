#include "editor/app/CKeysDialog.h"
#include "engine/world/CCamera.h"
#include "tests/editor/app/EditorFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QWheelEvent>

#include <cmath>

namespace
{

// A camera that is moved with the left button and modifiers, or with two fingers.
class CMouseBindings : public CEditorFixture
{
protected:
    CCamera& GetCamera()
    {
        return *GetHost().GetEngine().GetCWorld().GetCameraList().GetCameraOfView(
            GetView().GetViewId());
    }

    float GetDistance() // to the middle of the ground
    {
        const SVec3 at = GetCamera().GetPosition();
        return std::hypot(at.x - 160.0F, at.y - 20.0F, at.z - 160.0F);
    }

    // Goes with the button held under modifiers, which are let go first.
    void DragWith(const char* pszModifiers, const char* pszButton, double fToX, double fToY)
    {
        MoveTo(GetView(), {0.5, 0.5});
        Do({"keydown", pszModifiers, "mousedown", pszButton});
        MoveTo(GetView(), {0.5 + (fToX - 0.5) / 2, 0.5 + (fToY - 0.5) / 2});
        Do({"keyup", pszModifiers});
        MoveTo(GetView(), {fToX, fToY});
        Do({"mouseup", pszButton});
    }

    void Choose(CKeysDialog& dialog, const char* pszBox, const char* pszChord)
    {
        auto* pBox = dialog.findChild<QComboBox*>(pszBox);
        pBox->setCurrentIndex(pBox->findText(pszChord));
    }
};

} // namespace

TEST_F(CMouseBindings, TheLeftButtonMovesTheCameraWithModifiersAndSculptsWithout)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Answer<CKeysDialog>([this] { Trigger("edit.keys"); },
                        [&](CKeysDialog& dialog)
                        {
                            auto* pButtons = dialog.findChild<QDialogButtonBox*>();
                            Choose(dialog, "mouse-orbit", "Alt and left button");
                            Choose(dialog, "mouse-zoom", "Alt and left button");
                            EXPECT_FALSE(pButtons->button(QDialogButtonBox::Ok)->isEnabled())
                                << "two at once";
                            Choose(dialog, "mouse-zoom", "Shift and middle button");
                            EXPECT_TRUE(pButtons->button(QDialogButtonBox::Ok)->isEnabled());
                            dialog.accept();
                        });
    for (int iRun = 0; iRun < 2; ++iRun)
    {
        SCOPED_TRACE(iRun == 0 ? "chosen" : "after a restart");
        ASSERT_NO_FATAL_FAILURE(TakeBrush());
        const float fYaw = GetCamera().GetYaw();
        DragWith("alt", "1", 0.7, 0.5);
        EXPECT_GT(std::fabs(GetCamera().GetYaw() - fYaw), 10.0F);
        const float fFar = GetDistance();
        DragWith("shift", "2", 0.5, 0.3);
        EXPECT_LT(GetDistance(), 0.9F * fFar) << "upwards is closer";
        EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 0U);
        EXPECT_FALSE(GetHost().GetInput().IsDragging());
        const SVec3 before = GetCamera().GetPosition();
        Drag(GetView(), {0.45, 0.5}, {0.55, 0.5}, 4);
        EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U);
        EXPECT_EQ(GetCamera().GetPosition().x, before.x);
        if (iRun == 0)
        {
            m_Window->LeaveChanges();
            Stop();
            ASSERT_NO_FATAL_FAILURE(Start());
        }
    }
}

TEST_F(CMouseBindings, TwoFingersPanAndZoomWithCtrl)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    CViewWidget& view = GetView();
    const auto scroll = [&](const QPoint& pixels, Qt::KeyboardModifiers modifiers)
    {
        const QPointF at = QPointF(view.width(), view.height()) / 2;
        QWheelEvent event(at,
                          view.mapToGlobal(at),
                          pixels,
                          pixels * 8,
                          Qt::NoButton,
                          modifiers,
                          Qt::ScrollUpdate,
                          false);
        QCoreApplication::sendEvent(&view, &event);
    };
    MoveTo(view, {0.5, 0.5});
    SVec3 at;
    ASSERT_TRUE(view.GetInput().PickCursor(at));
    const float fYaw = GetCamera().GetYaw();
    scroll({40, 0}, Qt::NoModifier);
    float fX = 0.0F;
    float fY = 0.0F;
    ASSERT_TRUE(view.GetNavigator().GetProjection(GetTerrain()).Project(at, fX, fY));
    const auto fMiddle = static_cast<float>(view.width() * view.devicePixelRatioF() / 2);
    EXPECT_NEAR(fX - fMiddle, 40.0F * view.devicePixelRatioF(), 3.0F) << "the ground follows";
    EXPECT_EQ(GetCamera().GetYaw(), fYaw);
    const float fFar = GetDistance();
    scroll({0, 60}, Qt::ControlModifier);
    EXPECT_LT(GetDistance(), fFar);
    m_Window->GetSettings().input.mouse.bFingersPan = false;
    const float fNear = GetDistance();
    scroll({0, 60}, Qt::NoModifier);
    EXPECT_LT(GetDistance(), fNear) << "a wheel like any other";
}
