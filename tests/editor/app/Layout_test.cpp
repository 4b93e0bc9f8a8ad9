// The window fits its screen whatever is open in it, and comes back as it was left.

#include "tests/editor/app/PanelFixture.h"

#include <QAction>
#include <QDataStream>
#include <QDialog>
#include <QGroupBox>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QSettings>
#include <QTimer>

namespace
{

class CLayout : public CPanel
{
protected:
    QDockWidget& Dock(const char* pszName) { return *m_Window->findChild<QDockWidget*>(pszName); }

    QRect GetRoom() { return m_Window->screen()->availableGeometry(); }

    void Resize(const QSize& size)
    {
        m_Window->resize(size);
        ASSERT_TRUE(WaitFor([&] { return m_Window->size() == size; }, "the window has its size"));
        Settle();
    }

    void WriteSettings(const QVariantMap& values)
    {
        const std::string strFile = m_Folder.Path("config/tellur/editor.ini");
        std::filesystem::create_directories(m_Folder.Path("config/tellur"));
        QSettings file(QString::fromStdString(strFile), QSettings::IniFormat);
        for (auto it = values.begin(); it != values.end(); ++it)
        {
            file.setValue(it.key(), it.value());
        }
    }
};

} // namespace

TEST_F(CLayout, FitsTheScreenAndLeavesTheViewsTheirRoom)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_TRUE(GetRoom().contains(m_Window->geometry())) << "a first window";
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    for (const QSize& size :
         {QSize(800, 476), QSize(900, 600), QSize(1024, 768), QSize(1280, 800), QSize(1600, 976)})
    {
        if (size.width() > GetRoom().width())
        {
            continue; // at this scale
        }
        SCOPED_TRACE(size.width());
        ASSERT_NO_FATAL_FAILURE(Resize(size));
        Trigger("view.reset");
        Settle();
        EXPECT_EQ(m_Window->size(), size) << "nothing makes it larger";
        EXPECT_TRUE(GetPanel()->isVisible());
        EXPECT_EQ(Dock("history").isVisible(), size.width() > 1100);
        EXPECT_GE(m_Window->GetViews().width(), 400);
        EXPECT_GE(m_Window->GetViews().height(), size.height() / 2);
        EXPECT_GE(GetPanel()->width(), 300);
        SavePicture(("layout-" + std::to_string(size.width())).c_str());
        // What is opened beside that narrows the views to what they need, and then the docks.
        for (const char* pszName : {"history", "processes", "light", "library"})
        {
            Dock(pszName).show();
        }
        Settle();
        EXPECT_EQ(m_Window->size(), size);
        EXPECT_GE(m_Window->GetViews().width(), 400);
    }
}

TEST_F(CLayout, FitsTheScreenWhenALargerOneHadIt)
{
    QWidget other; // on a screen that is not there any more
    other.setGeometry(1900, 700, 3000, 2000);
    QByteArray kept = other.saveGeometry();
    QDataStream stream(&kept, QIODevice::ReadWrite);
    constexpr qint64 SCREEN_WIDTH = 4 + 2 + 2 + 16 + 16 + 4 + 1 + 1; // in what Qt keeps
    ASSERT_TRUE(stream.device()->seek(SCREEN_WIDTH));
    stream << qint32(5120); // it was much wider
    for (const bool bBroken : {false, true})
    {
        SCOPED_TRACE(bBroken);
        WriteSettings({{"window/geometry", bBroken ? QByteArray("no place") : kept},
                       {"views/kinds", bBroken ? "Below" : "Side"}});
        ASSERT_NO_FATAL_FAILURE(Start());
        EXPECT_TRUE(GetRoom().contains(m_Window->geometry()));
        EXPECT_EQ(GetView().GetKind(), bBroken ? EViewKind::Perspective : EViewKind::Side);
        EXPECT_EQ(m_Window->GetViews().GetViews().size(), bBroken ? 2U : 1U);
        Stop();
        const bool bKept = std::filesystem::exists(m_Folder.Path("config/tellur/editor.ini.bak"));
        EXPECT_EQ(bKept, bBroken);
    }
}

TEST_F(CLayout, ResetBringsBackWhatAFirstWindowHas)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    const QRect panel = GetPanel()->geometry();
    auto* pGroup = GetPanel()->findChild<QGroupBox*>("Current brush");
    const int iOpen = pGroup->height();
    MoveTo(pGroup->mapToGlobal(QPoint(12, 8)) * pGroup->devicePixelRatioF());
    Do({"click", "1"});
    ASSERT_LT(pGroup->height(), iOpen / 2);
    Trigger("view.four");
    Dock("history").setFloating(true);
    Dock("messages").close();
    m_Window->addDockWidget(Qt::RightDockWidgetArea, GetPanel());
    Settle();
    ASSERT_NE(m_Window->dockWidgetArea(GetPanel()), Qt::LeftDockWidgetArea);
    Trigger("view.reset");
    // Docks move to their places in steps.
    EXPECT_TRUE(WaitFor([&]
                        { return std::abs(GetPanel()->geometry().width() - panel.width()) < 3; },
                        "the panel has its width"));
    Settle();
    EXPECT_EQ(m_Window->GetViews().GetViews().size(), 2U);
    EXPECT_TRUE(Dock("history").isVisible() && !Dock("history").isFloating());
    EXPECT_TRUE(Dock("messages").isVisible());
    EXPECT_NEAR(GetPanel()->geometry().left(), panel.left(), 2);
    EXPECT_EQ(pGroup->height(), iOpen);
}

TEST_F(CLayout, FoldedGroupsOfThePanelStayFolded)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    const auto click = [this](const char* pszTitle)
    {
        auto* pGroup = GetPanel()->findChild<QGroupBox*>(pszTitle);
        MoveTo(pGroup->mapToGlobal(QPoint(12, 8)) * pGroup->devicePixelRatioF());
        Do({"click", "1"});
    };
    const auto isFolded = [this](const char* pszTitle)
    {
        return !GetPanel()->findChild<QGroupBox*>(pszTitle)->findChild<QWidget*>()->isVisible();
    };
    click("Current brush");
    click("Tool");
    EXPECT_TRUE(isFolded("Current brush") && isFolded("Tool"));
    EXPECT_FALSE(isFolded("Defined brushes"));
    SavePicture("panel-folded");
    // F6 goes to what can be worked, and not to a title.
    Key("F6");
    Key("F6");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "2113") << "the list of brushes";
    click("Tool");
    for (const bool bRestart : {false, true})
    {
        GetPanel()->close();
        if (bRestart)
        {
            m_Window->close();
            Stop();
            ASSERT_NO_FATAL_FAILURE(Start());
        }
        ASSERT_NO_FATAL_FAILURE(OpenPanel());
        EXPECT_TRUE(isFolded("Current brush")) << bRestart;
        EXPECT_FALSE(isFolded("Tool") || isFolded("Defined brushes")) << bRestart;
    }
}

TEST_F(CLayout, SwitchesAndChoicesHaveMarks)
{
    m_bTools = true;
    ASSERT_NO_FATAL_FAILURE(Start());
    const auto isMarked = [this](const char* pszCommand)
    {
        return m_Window->GetCommands().Find(pszCommand)->isChecked();
    };
    const std::pair<const char*, const char*> switches[] = {
        {"z", "view.wire"}, {"g", "view.grid"}, {"F11", "view.alone"}, {"ctrl+t", "tool.toggle"}};
    for (const auto& [pszKey, pszCommand] : switches)
    {
        const bool bBefore = isMarked(pszCommand);
        Key(pszKey);
        EXPECT_EQ(isMarked(pszCommand), !bBefore) << pszCommand;
        Key(pszKey);
        EXPECT_EQ(isMarked(pszCommand), bBefore) << pszCommand;
    }
    Key("3");
    EXPECT_TRUE(isMarked("tool.set_height") && isMarked("tool.toggle"));
    Key("4");
    EXPECT_TRUE(isMarked("tool.relative_height") && !isMarked("tool.set_height"));
    Trigger("view.two"); // as it is already
    EXPECT_TRUE(isMarked("view.two"));
    m_Editor->GetDocument().SetMaterial("data/materials/slope.mat");
    Answer<QMenu>([this] { Key("alt+l"); },
                  [](QMenu& menu)
                  {
                      auto* pMaterials = menu.findChild<QMenu*>("materials");
                      emit pMaterials->aboutToShow();
                      QStringList marked;
                      for (const QAction* pAction : pMaterials->actions())
                      {
                          marked += pAction->isChecked() ? pAction->text() : QString();
                      }
                      EXPECT_EQ(marked.join(""), "slope");
                      menu.close();
                  });
    for (const QDockWidget* pDock : m_Window->findChildren<QDockWidget*>())
    {
        EXPECT_TRUE(pDock->toggleViewAction()->isCheckable()) << pDock->objectName().toStdString();
    }
}

TEST_F(CLayout, NoTitleOfADialogIsCut)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    constexpr int FRAME = 80; // buttons of a usual frame
    for (const char* pszCommand :
         {"symmetry.turns", "turn.fixed", "protection.slope", "brush.pen", "file.new"})
    {
        SCOPED_TRACE(pszCommand);
        Answer<QDialog>([&] { Trigger(pszCommand); },
                        [](QDialog& dialog)
                        {
                            const int iTitle =
                                dialog.fontMetrics().horizontalAdvance(dialog.windowTitle());
                            EXPECT_GE(dialog.width(), iTitle + FRAME);
                            dialog.reject();
                        });
    }
    const QString strTitle = "A title that is much longer than what the box says";
    Answer<QMessageBox>([&] { QMessageBox::information(m_Window.get(), strTitle, "Yes."); },
                        [&](QMessageBox& box)
                        {
                            EXPECT_GE(box.width(),
                                      box.fontMetrics().horizontalAdvance(strTitle) + FRAME);
                            box.accept();
                        });
}
