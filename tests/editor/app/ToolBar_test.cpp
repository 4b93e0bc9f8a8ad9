// The editor's own toolbar: the same tools, numbers and commands as keys, menus and the panel.

#include "editor/app/CNumberBox.h"
#include "tests/editor/app/ToolKeysFixture.h"

#include <QMenu>
#include <QStatusBar>
#include <QToolButton>

namespace
{

class CToolBars : public CToolKeys
{
protected:
    QToolBar& Bar() { return *m_Window->findChild<QToolBar*>("editor-toolbar"); }

    QWidget& Button(const char* pszCommand)
    {
        return *Bar().widgetForAction(m_Window->GetCommands().Find(pszCommand));
    }

    CNumberBox& Number(const char* pszName) { return *Bar().findChild<CNumberBox*>(pszName); }

    QStringList GetChecked()
    {
        QStringList checked;
        for (const QAction* pAction : Bar().actions())
        {
            if (pAction->isChecked())
            {
                checked << pAction->objectName();
            }
        }
        return checked;
    }

    void Type(const char* pszName, const char* pszText, const char* pszEnd)
    {
        Click(*Number(pszName).findChild<QLineEdit*>());
        Key("ctrl+a");
        Do({"type", pszText});
        Key(pszEnd);
        EXPECT_EQ(QApplication::focusWidget(), &GetView()) << pszText << " " << pszEnd;
    }

    std::string GetTip(const char* pszCommand)
    {
        return m_Window->GetCommands().Find(pszCommand)->toolTip().toStdString();
    }
};

} // namespace

TEST_F(CToolBars, ShowsAndTakesTheToolAtHandAndItsNumbers)
{
    ASSERT_NO_FATAL_FAILURE(StartWatched());
    EXPECT_EQ(GetChecked(), QStringList());
    EXPECT_FALSE(Number("brush-size").isEnabled());
    Key("4");
    EXPECT_EQ(GetChecked(), QStringList("tool.relative_height"));
    Click(Button("tool.posterize"));
    EXPECT_EQ(Tools().GetFunctionName(), "PosterizeFunction");
    Click(Button("tool.posterize"));
    EXPECT_EQ(Tools().GetFunctionName(), "PosterizeFunction") << "it stays up";
    EXPECT_EQ(GetChecked(), QStringList("tool.posterize"));
    Key("ctrl+t");
    EXPECT_EQ(GetChecked(), QStringList());

    Click(Button("tool.relative_height"));
    MoveTo(GetView(), {0.5, 0.5});
    Key("bracketright");
    EXPECT_NEAR(Number("brush-size").value(), Get(EBrushValue::Extent), 0.05);
    Type("brush-size", "55.5", "Return");
    EXPECT_EQ(Get(EBrushValue::Extent), 55.5F);
    Type("brush-power", "0,5", "Return");
    EXPECT_EQ(Get(EBrushValue::Power), 0.5F);
    Type("brush-size", "7", "Escape");
    EXPECT_EQ(Get(EBrushValue::Extent), 55.5F);
    EXPECT_EQ(Number("brush-size").text(), "55.5");
    Click(Number("brush-size"), "4"); // the wheel, without the keyboard
    EXPECT_EQ(Get(EBrushValue::Extent), 55.5F);
    Number("brush-size").setFocus();
    Click(Number("brush-size"), "4");
    EXPECT_GT(Get(EBrushValue::Extent), 55.5F);

    const std::vector<float> before = GetHeights();
    Drag(GetView(), {0.45, 0.5}, {0.55, 0.55});
    EXPECT_NE(GetHeights(), before);
    Click(Button("edit.undo"));
    EXPECT_EQ(GetHeights(), before);
    Click(Button("edit.redo"));
    EXPECT_NE(GetHeights(), before);
    SavePicture("tool-bar");
}

TEST_F(CToolBars, NamesKeysAsTheyAreAndNeverWidensTheWindow)
{
    ASSERT_NO_FATAL_FAILURE(StartWatched());
    EXPECT_EQ(GetTip("tool.relative_height"), "Relative height (4)");
    EXPECT_EQ(GetTip("edit.undo"), "Undo (Ctrl+Z)");
    m_Editor->GetKeys().Set("tool.relative_height", {'L', 0});
    m_Editor->GetKeys().Set("brush.hold_size", {'Y', 0});
    m_Window->GetCommands().ApplyKeys();
    Key("l");
    EXPECT_EQ(GetChecked(), QStringList("tool.relative_height"));
    EXPECT_EQ(GetTip("tool.relative_height"), "Relative height (L)");
    EXPECT_TRUE(Number("brush-size").toolTip().contains("Y held with the mouse"))
        << Number("brush-size").toolTip().toStdString();

    // What the views and the ground look like is what the menus have.
    auto& views = *Bar().findChild<QToolButton*>("views-button");
    EXPECT_TRUE(views.menu()->actions().contains(m_Window->GetCommands().Find("view.grid")));
    Answer<QMenu>([&] { Click(*Bar().findChild<QToolButton*>("material-button")); },
                  [this](QMenu& menu)
                  {
                      for (const QAction* pAction : menu.actions())
                      {
                          EXPECT_EQ(pAction->isChecked(), pAction->text() == "terrain")
                              << "which a level without one has";
                          if (pAction->text() == "checker")
                          {
                              const QPoint at = menu.actionGeometry(menu.actions()[1]).center();
                              MoveTo(menu.mapToGlobal(at) * menu.devicePixelRatioF());
                              Do({"click", "1"});
                              return;
                          }
                      }
                      ADD_FAILURE() << "no such material";
                  });
    EXPECT_EQ(m_Editor->GetDocument().GetMaterial(), "data/materials/checker.mat");

    EXPECT_LT(Bar().minimumSizeHint().width(), 300);
    const int iWidth = std::max(900, m_Window->statusBar()->minimumSizeHint().width());
    m_Window->resize(iWidth, 600);
    Settle();
    EXPECT_EQ(m_Window->width(), iWidth);
    EXPECT_EQ(Bar().geometry().right() < iWidth, true) << "the rest is behind its last button";
    SavePicture("tool-bar-narrow");
}
