// The panel as a whole: what opens and closes it, and where it stands.

#include "tests/editor/app/PanelFixture.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QScreen>

TEST_F(CPanel, ClosesAtItsFrameAsAtItsButton)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    QAction* pButton = m_Window->findChild<QToolBar*>("plugin-toolbar")->actions().front();
    EXPECT_EQ(pButton->text(), "Terrain");
    EXPECT_EQ(pButton->toolTip(), "Terrain");
    EXPECT_EQ(pButton->statusTip(), "Terrain");
    QAction* pSwitch = GetPanel()->toggleViewAction();
    pSwitch->trigger(); // of the menu of docks, before it was ever open
    ASSERT_TRUE(GetPanel()->isVisible());
    Click(Item(2133));
    const auto expectOpen = [&](bool bOpen)
    {
        EXPECT_EQ(GetPanel()->isVisible(), bOpen);
        EXPECT_EQ(GetPanel()->findChild<QScrollArea*>() != nullptr, bOpen);
        EXPECT_EQ(pButton->isChecked(), bOpen);
        EXPECT_EQ(pSwitch->isChecked(), bOpen);
        EXPECT_EQ(GetHost().GetSettings().IsPanelOpen(), bOpen);
    };
    const std::function<void()> switches[] = {
        [&] { Click(*GetPanel()->findChild<QWidget*>("qt_dockwidget_closebutton")); },
        [&] { pSwitch->trigger(); },
        [&] { Click(*m_Window->findChild<QToolBar*>("plugin-toolbar")->widgetForAction(pButton)); },
        [&]
        {
            GetPanel()->close();
        }};
    std::string strLimit = "30";
    for (const auto& close : switches)
    {
        Click(Item(2198));
        Key("ctrl+a");
        Type(strLimit.c_str());
        close();
        expectOpen(false);
        ASSERT_NO_FATAL_FAILURE(OpenPanel());
        expectOpen(true);
        EXPECT_EQ(Item<QLineEdit>(2198).text().toStdString(), strLimit);
        strLimit += "1";
    }
}

TEST_F(CPanel, ComesBackWhereItFloatedOrWasDocked)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    const QRect screen = m_Window->screen()->availableGeometry();
    const QRect place(300, 200, 420, 500);
    for (const bool bAway : {false, true})
    {
        SCOPED_TRACE(bAway);
        GetPanel()->setFloating(true);
        GetPanel()->setGeometry(bAway ? place.translated(5000, 4000) : place);
        Settle();
        m_Window->SetOnClosed([] { QApplication::closeAllWindows(); }); // as the program that ends
        m_Window->close();
        EXPECT_TRUE(GetHost().GetSettings().IsPanelOpen());
        Stop();
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_TRUE(GetPanel()->isVisible());
        EXPECT_TRUE(GetPanel()->isFloating());
        EXPECT_EQ(GetPanel()->size(), place.size());
        EXPECT_TRUE(screen.contains(GetPanel()->geometry()));
        EXPECT_EQ(GetPanel()->pos() == place.topLeft(), !bAway);
    }
    m_Window->addDockWidget(Qt::RightDockWidgetArea, GetPanel());
    GetPanel()->setFloating(false);
    m_Window->close();
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_TRUE(GetPanel()->isVisible() && !GetPanel()->isFloating());
    EXPECT_EQ(m_Window->dockWidgetArea(GetPanel()), Qt::RightDockWidgetArea);
}
