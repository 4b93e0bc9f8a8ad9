// The window around the views: menus, toolbar, context menu, dialogs, docks and the camera.

#include "editor/app/CKeysDialog.h"
#include "editor/app/CMessagesDock.h"
#include "editor/app/CNewLevelDialog.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginTools.h"
#include "host/Log.h"
#include "tests/editor/app/EditorFixture.h"
#include "tests/support/CLogCatcher.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QToolBar>
#include <QTreeWidget>

#include <cmath>

namespace
{

class CWindows : public CEditorFixture
{
protected:
    const CCamera& GetCamera()
    {
        return *GetHost().GetEngine().GetCWorld().GetCameraList().GetCameraOfView(
            GetView().GetViewId());
    }

    QStringList GetTexts(const QMenu& menu)
    {
        QStringList texts;
        for (const QAction* pAction : menu.actions())
        {
            texts << (pAction->isSeparator() ? "-" : pAction->text());
        }
        return texts;
    }
};

} // namespace

TEST_F(CWindows, ThePluginsMenuToolbarAndPanelWork)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    auto* pToolBar = m_Window->findChild<QToolBar*>("plugin-toolbar");
    ASSERT_NE(pToolBar, nullptr);
    EXPECT_EQ(pToolBar->windowTitle(), "Terrain");
    auto* pPanel = m_Window->findChild<QDockWidget*>("panel");
    EXPECT_FALSE(pPanel->isVisible());
    QWidget* pButton = pToolBar->widgetForAction(pToolBar->actions().front());
    Click(*pButton);
    EXPECT_TRUE(pPanel->isVisible());
    EXPECT_TRUE(pToolBar->actions().front()->isChecked());
    SavePicture("panel-open");
    Click(*pButton);
    EXPECT_FALSE(pPanel->isVisible());
    EXPECT_FALSE(pToolBar->actions().front()->isChecked());

    Click(*pButton);
    pPanel->close(); // by its own button
    EXPECT_FALSE(pToolBar->actions().front()->isChecked());
    EXPECT_FALSE(GetHost().GetSettings().IsPanelOpen());

    // Alt+T opens the menu; its first item is the plug-in's.
    Answer<QMenu>(
        [this] { Key("alt+t"); },
        [this](QMenu& menu)
        {
            ASSERT_EQ(GetTexts(menu), (QStringList{"Terrain", "-", "&Brush library and back"}));
            EXPECT_EQ(GetTexts(*menu.actions().front()->menu()),
                      (QStringList{"Save height map...",
                                   "Edit bitmap on terrain",
                                   "Export terrain extent to STL"}));
            menu.actions().front()->menu()->actions().last()->trigger();
            menu.close();
        });
    EXPECT_EQ(GetHost().GetCaption(), "Export terrain extent");
}

TEST_F(CWindows, TheContextMenuHasThePluginsItemUnderTheCursor)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush("SetHeightFunction", "m_Height", "60"));
    Click(*m_Window->findChild<QToolBar*>("plugin-toolbar")
               ->widgetForAction(
                   m_Window->findChild<QToolBar*>("plugin-toolbar")->actions().front()));
    Answer<QMenu>([this] { Click(GetView(), "3"); },
                  [this](QMenu& menu)
                  {
                      EXPECT_EQ(GetTexts(menu).front(), "Set m_Height to 20.00");
                      menu.actions().front()->trigger();
                      menu.close();
                  });
    MoveTo(GetView(), {0.5, 0.03});
    SVec3 hit;
    ASSERT_FALSE(GetView().GetInput().PickCursor(hit));
    Answer<QMenu>(
        [this] {
            Do({"click", "3"});
        },
        [this](QMenu& menu)
        {
            EXPECT_EQ(GetTexts(menu).filter("m_Height"), QStringList{}) << "the sky";
            menu.close();
        });
    // The stroke now sets what was picked, which is the height of the ground already.
    const std::vector<float> before = GetHeights();
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5});
    EXPECT_EQ(GetHeights(), before);
}

TEST_F(CWindows, AKeyThatTwoCommandsHaveBlocksTheDialog)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const auto choose = [](CKeysDialog& dialog, const char* pszText)
    {
        auto* pList = dialog.findChild<QTreeWidget*>("keys-list");
        const QList<QTreeWidgetItem*> found = pList->findItems(pszText, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << pszText;
        pList->setCurrentItem(found.front());
        dialog.findChild<QLineEdit*>("keys-edit")->setFocus();
    };
    Answer<CKeysDialog>(
        [this] { Trigger("edit.keys"); },
        [&](CKeysDialog& dialog)
        {
            auto* pList = dialog.findChild<QTreeWidget*>("keys-list");
            const auto getKey = [pList](const char* pszText)
            {
                return pList->findItems(pszText, Qt::MatchExactly).front()->text(1);
            };
            QPushButton* pOk = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
            choose(dialog, "Increase Tellur brush size");
            Key("f");
            EXPECT_FALSE(pOk->isEnabled());
            EXPECT_EQ(dialog.findChild<QLabel*>("keys-clash")->text().contains("Frame the spot"),
                      true);
            SavePicture("keys-clash");
            choose(dialog, "Increase Tellur brush size");
            Key("i");
            EXPECT_EQ(getKey("Increase Tellur brush size"), "I");
            EXPECT_TRUE(pOk->isEnabled());
            pOk->click();
        });
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    GetView().setFocus();
    MoveTo(GetView(), {0.5, 0.5});
    Key("i"); // the plug-in's own step, 1/1280 of the terrain's width
    EXPECT_FLOAT_EQ(m_Editor->FindInterface<IPluginTools>()->GetBrushExtent(), 40.25F);

    Stop(); // keys are kept
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    MoveTo(GetView(), {0.5, 0.5});
    Key("i");
    EXPECT_FLOAT_EQ(m_Editor->FindInterface<IPluginTools>()->GetBrushExtent(), 40.25F);
}

TEST_F(CWindows, MouseAndKeysMoveTheCamera)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    MoveTo(GetView(), {0.5, 0.6});
    SVec3 at;
    ASSERT_TRUE(GetView().GetInput().PickCursor(at));
    const SVec3 before = GetCamera().GetPosition();
    Do({"click", "4"}); // the wheel, towards the cursor
    SVec3 still;
    ASSERT_TRUE(GetView().GetInput().PickCursor(still));
    EXPECT_NEAR(still.x, at.x, 1.0F);
    EXPECT_NEAR(still.z, at.z, 1.0F);
    EXPECT_LT(GetCamera().GetPosition().y, before.y);

    const float fYaw = GetCamera().GetYaw();
    Do({"mousedown", "3"});
    MoveTo(GetView(), {0.7, 0.6});
    Do({"mouseup", "3"});
    EXPECT_NE(GetCamera().GetYaw(), fYaw);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "a drag is no click";

    Key("ctrl+8"); // from the north
    EXPECT_NEAR(GetCamera().GetForward().x, 0.0F, 1e-3F);
    EXPECT_GT(GetCamera().GetForward().z, 0.0F);
    const SVec3 north = GetCamera().GetPosition();
    Key("Prior");
    EXPECT_FLOAT_EQ(GetCamera().GetPosition().y, north.y + 10.0F);
    const float fNorth = GetCamera().GetYaw();
    Key("Right");
    EXPECT_FLOAT_EQ(GetCamera().GetYaw(), fNorth + 20.0F);

    MoveTo(GetView(), {0.5, 0.7});
    ASSERT_TRUE(GetView().GetInput().PickCursor(at));
    Key("f"); // the spot comes to the middle
    float fX = 0.0F;
    float fY = 0.0F;
    const SViewProjection view = GetView().GetNavigator().GetProjection(GetTerrain());
    ASSERT_TRUE(view.Project(at, fX, fY));
    EXPECT_NEAR(fX, view.iWidth / 2, view.iWidth / 8);
    EXPECT_NEAR(fY, view.iHeight / 2, view.iHeight / 8);

    const SVec3 start = GetCamera().GetPosition();
    Do({"keydown", "s"});
    EXPECT_TRUE(GetHost().IsCameraBackKeyDown());
    WaitFor([&] { return GetCamera().GetPosition().z != start.z; }, "the camera flies");
    Do({"keyup", "s"});
    EXPECT_FALSE(GetHost().IsCameraBackKeyDown());

    Key("z");
    EXPECT_TRUE(GetView().IsWireFrame());
}

TEST_F(CWindows, TheModeIsSuspendedWhileTheMouseMovesTheCamera)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    // A mode that gets its input back asks for a new picture of its view.
    const uint64_t& nRefreshes = GetHost().GetCounters().nRefreshes;
    uint64_t nBefore = nRefreshes;
    for (const char* pszButton : {"2", "3"})
    {
        SCOPED_TRACE(pszButton);
        MoveTo(GetView(), {0.5, 0.6});
        Do({"mousedown", pszButton});
        MoveTo(GetView(), {0.6, 0.6});
        MoveTo(GetView(), {0.7, 0.6});
        EXPECT_EQ(nRefreshes, nBefore);
        Do({"mouseup", pszButton});
        EXPECT_EQ(nRefreshes, ++nBefore);
    }
    Answer<QMenu>([this] { Click(GetView(), "3"); }, [](QMenu& menu) { menu.close(); });
    EXPECT_EQ(nRefreshes, nBefore) << "a click moves nothing";
    Drag(GetView(), {0.45, 0.5}, {0.55, 0.55}, 4);
    EXPECT_EQ(nRefreshes, nBefore);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U) << "the mode has its input again";
}

TEST_F(CWindows, MessagesOfTheLogAreShown)
{
    CLogCatcher log; // a log file
    ASSERT_NO_FATAL_FAILURE(Start());
    log.Clear();
    CrashLog("[CSomething::DoIt] a %s\n", "fault");
    LogR("[CSomething::DoIt] in ");
    LogR("pieces\n");
    EXPECT_TRUE(m_Window->GetMessages().GetText().endsWith("A fault\nIn pieces"));
    EXPECT_EQ(m_Window->GetMessages().GetLastLine(), "In pieces");
    EXPECT_EQ(log.GetText(), "[CSomething::DoIt] a fault\n[CSomething::DoIt] in pieces\n");
    CrashLog("[CSomething::DoIt] heights.png: broken\n[2] is no prefix\n");
    EXPECT_TRUE(
        m_Window->GetMessages().GetText().endsWith("\nheights.png: broken\n[2] is no prefix"));
    Stop(); // before the log
}

TEST_F(CWindows, ThePointUnderTheCursorIsTheOnePicked)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const double fScale = GetView().devicePixelRatioF();
    for (const QPointF& share : {QPointF(0.31, 0.55), QPointF(0.5, 0.5), QPointF(0.67, 0.71)})
    {
        for (size_t i = 0; i < 2; ++i)
        {
            CViewWidget& view = GetView(i);
            MoveTo(view, share);
            SVec3 hit;
            ASSERT_TRUE(view.GetInput().PickCursor(hit));
            // Where that point is drawn, against where the server says that the mouse is.
            const SViewProjection projection = view.GetNavigator().GetProjection(GetTerrain());
            float fX = 0.0F;
            float fY = 0.0F;
            ASSERT_TRUE(projection.Project(hit, fX, fY));
            const QPointF corner = view.mapToGlobal(QPointF(0.0, 0.0)) * fScale;
            const QPointF mouse = QPointF(QCursor::pos()) * fScale;
            EXPECT_NEAR(corner.x() + fX, mouse.x(), 1.0 + fScale * 0.5) << i;
            EXPECT_NEAR(corner.y() + fY, mouse.y(), 1.0 + fScale * 0.5) << i;
            EXPECT_EQ(projection.iWidth, static_cast<int>(std::lround(view.width() * fScale)));
        }
    }
}
