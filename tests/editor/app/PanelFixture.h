#pragma once

#include "editor/app/CPanelDock.h"
#include "engine/world/CEngineHost.h"
#include "tests/editor/app/EditorFixture.h"

#include <QInputDialog>
#include <QScrollArea>
#include <QToolBar>
#include <QTreeView>

#include <algorithm>

// The tool panel in the editor, worked with the mouse and the keys of an X server.
class CPanel : public CEditorFixture
{
protected:
    void OpenPanel()
    {
        auto* pToolBar = m_Window->findChild<QToolBar*>("plugin-toolbar");
        Click(*pToolBar->widgetForAction(pToolBar->actions().front()));
        ASSERT_TRUE(GetPanel()->isVisible());
    }

    QDockWidget* GetPanel() { return m_Window->findChild<QDockWidget*>("panel"); }

    // A control of the panel, brought into view.
    template <class TWidget = QWidget> TWidget& Item(int iId)
    {
        auto* pWidget = GetPanel()->findChild<TWidget*>(QString::number(iId));
        GetPanel()->findChild<QScrollArea*>()->ensureWidgetVisible(pWidget);
        Settle();
        return *pWidget;
    }

    // The cell of a property, with its editor; its text.
    QTreeView& Grid() { return Item<QTreeView>(2123); }

    void ClickProperty(const char* pszName)
    {
        QTreeView& grid = Grid();
        const QModelIndexList found = grid.model()->match(
            grid.model()->index(0, 0), Qt::DisplayRole, QString(pszName), 1, Qt::MatchExactly);
        ASSERT_FALSE(found.isEmpty()) << pszName;
        const QPoint at = grid.visualRect(found.front()).center();
        MoveTo(grid.viewport()->mapToGlobal(at) * grid.devicePixelRatioF());
        Do({"click", "1"});
    }

    std::string GetProperty(const char* pszName)
    {
        QTreeView& grid = Grid();
        const QModelIndexList found = grid.model()->match(
            grid.model()->index(0, 0), Qt::DisplayRole, QString(pszName), 1, Qt::MatchExactly);
        return found.isEmpty() ? "no such property"
                               : found.front().siblingAtColumn(1).data().toString().toStdString();
    }

    void Type(const char* pszText) { Do({"type", pszText}); }

    // Adds the current brush to the defined ones, under the name that is asked for.
    void AddBrush(const char* pszName)
    {
        QWidget& button = Item(2119);
        Answer<QInputDialog>([&] { Click(button); },
                             [&](QInputDialog&)
                             {
                                 Type(pszName);
                                 Key("Return");
                             });
    }

    float GetHighest()
    {
        const std::vector<float> heights = GetHeights();
        return *std::max_element(heights.begin(), heights.end());
    }

    std::string SaveHeights(const char* pszName)
    {
        const std::string strPath = m_Folder.Path(pszName);
        EXPECT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
            strPath.c_str(), nullptr, 0, 0));
        return ReadBytes(strPath);
    }
};
