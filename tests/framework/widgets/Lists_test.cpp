#include "framework/drawing/CImageList.h"
#include "tests/framework/widgets/ControlsForm.h"

#include <QComboBox>
#include <QHeaderView>
#include <QListWidget>
#include <QTreeView>

namespace
{

class CLists : public CControlsForm
{
protected:
    CLists()
    {
        m_Form.Bind(ID_LIST, m_List);
        m_Form.Bind(ID_DROP, m_Drop);
        m_Form.Bind(ID_REPORT, m_Report);
        Note(ENotify::SelectionChanged, ID_LIST, "list");
        Note(ENotify::SelectionChanged, ID_DROP, "drop");
    }

    void FillReport(int nRows)
    {
        m_Report.InsertColumn(0, "Name", ToPixels(120));
        m_Report.InsertColumn(1, "Value", ToPixels(80));
        for (int i = 0; i < nRows; ++i)
        {
            m_Report.InsertItem(i, ("row " + std::to_string(i)).c_str());
            m_Report.SetCellText(i, 1, std::to_string(i * i).c_str());
            m_Report.SetItemData(i, 100 + static_cast<uintptr_t>(i));
        }
        QApplication::processEvents();
    }

    QTreeView* GetView() { return Find<QTreeView>(ID_REPORT); }

    QPoint GetCenter(int iItem, int iColumn)
    {
        return GetView()->visualRect(GetView()->model()->index(iItem, iColumn)).center();
    }

    CListBox m_List;
    CComboBox m_Drop;
    CListCtrl m_Report;
};

} // namespace

TEST_F(CLists, AListBoxKeepsTextsAndDataAndTellsOnlyOfThePersonsChoice)
{
    EXPECT_EQ(m_List.AddString("early"), -1) << "no window yet";
    Open();
    m_List.SetRedraw(false);
    for (const char* pszText : {"soft", "hard", "\xC3\xBC"})
    {
        const int iItem = m_List.AddString(pszText);
        m_List.SetItemData(iItem, 7 + static_cast<uintptr_t>(iItem));
    }
    m_List.SetRedraw(true);
    EXPECT_EQ(m_List.GetCount(), 3);
    EXPECT_EQ(m_List.GetCurSel(), -1);
    EXPECT_EQ(m_List.GetItemText(2), "\xC3\xBC");
    EXPECT_EQ(m_List.GetItemData(2), 9U);
    EXPECT_EQ(m_List.GetItemText(3) + m_List.GetItemText(-1), "");
    m_List.SetCurSel(1);
    EXPECT_EQ(m_List.GetCurSel(), 1);
    m_List.SetCurSel(-1);
    EXPECT_EQ(m_List.GetCurSel(), -1);
    EXPECT_EQ(TakeNotes(), Notes{});

    auto* pList = Find<QListWidget>(ID_LIST);
    const QPoint first = pList->visualItemRect(pList->item(0)).center();
    Click(pList->viewport(), first);
    EXPECT_EQ(m_List.GetCurSel(), 0);
    EXPECT_EQ(TakeNotes(), Notes{"list 0"});
    Click(pList->viewport(), first); // chosen again
    EXPECT_EQ(m_List.GetCurSel(), 0);
    EXPECT_EQ(TakeNotes(), Notes{"list 0"});
    QTest::mouseClick(pList->viewport(), Qt::RightButton, Qt::NoModifier, first);
    EXPECT_EQ(TakeNotes(), Notes{});
    QTest::keyClick(pList, Qt::Key_Down);
    EXPECT_EQ(m_List.GetCurSel(), 1);
    EXPECT_EQ(TakeNotes(), Notes{"list 0"});
    m_List.ResetContent();
    EXPECT_EQ(m_List.GetCount(), 0);
    EXPECT_EQ(TakeNotes(), Notes{});
}

TEST_F(CLists, ADropDownListTellsOnlyOfAnotherChoice)
{
    Open();
    for (const char* pszText : {"33x33", "65x65", "129x129"})
    {
        m_Drop.SetItemData(m_Drop.AddString(pszText), 5);
    }
    EXPECT_EQ(m_Drop.GetCurSel(), -1) << "filling selects nothing";
    EXPECT_EQ(m_Drop.FindString("65x65"), 1);
    EXPECT_EQ(m_Drop.FindString("65"), -1);
    EXPECT_EQ(m_Drop.GetItemData(1), 5U);
    m_Drop.SetCurSel(0);
    EXPECT_EQ(m_Drop.GetWindowText(), "33x33");
    EXPECT_EQ(TakeNotes(), Notes{});
    auto* pDrop = Find<QComboBox>(ID_DROP);
    QTest::keyClick(pDrop, Qt::Key_Down);
    EXPECT_EQ(m_Drop.GetCurSel(), 1);
    EXPECT_EQ(TakeNotes(), (Notes{"drop 0"}));

    // Opened and closed with the same item.
    m_Drop.ShowDropDown(true);
    QTest::keyClick(pDrop->view(), Qt::Key_Return);
    EXPECT_EQ(TakeNotes(), Notes{});
    m_Drop.ShowDropDown(true);
    QTest::keyClick(pDrop->view(), Qt::Key_Down);
    QTest::keyClick(pDrop->view(), Qt::Key_Return);
    EXPECT_EQ(m_Drop.GetCurSel(), 2);
    EXPECT_EQ(TakeNotes(), (Notes{"drop 0"}));
    m_Drop.ResetContent();
    EXPECT_EQ(m_Drop.GetCurSel(), -1);
}

TEST_F(CLists, AReportHasColumnsRowsIndentationAndPictures)
{
    CBitmap strip;
    ASSERT_TRUE(strip.CreateBitmap(32, 16, 1, 32, nullptr)); // two black pictures
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, 3, 3));
    images.Add(strip, MakeColor(0, 0, 255));
    Open();
    FillReport(4);
    EXPECT_EQ(m_Report.GetColumnWidth(0), ToPixels(120));
    m_Report.SetColumnWidth(0, ToPixels(150));
    EXPECT_EQ(m_Report.GetColumnWidth(0), ToPixels(150));
    EXPECT_EQ(GetView()->columnWidth(0), 150);
    EXPECT_EQ(m_Report.GetItemCount(), 4);
    m_Report.InsertItem(1, "between");
    EXPECT_EQ(m_Report.GetCellText(2, 0) + m_Report.GetCellText(2, 1), "row 11");
    m_Report.DeleteItem(1);
    EXPECT_EQ(m_Report.GetItemData(3), 103U);
    EXPECT_EQ(m_Report.GetCellText(9, 0) + m_Report.GetCellText(0, 9), "");
    const SRect cell = m_Report.GetCellRect(2, 1);
    EXPECT_EQ(cell.left, ToPixels(150));
    int iItem = -1;
    int iColumn = -1;
    EXPECT_TRUE(m_Report.HitTest({cell.left + 3, cell.top + 3}, iItem, iColumn));
    EXPECT_TRUE(iItem == 2 && iColumn == 1);
    EXPECT_FALSE(m_Report.HitTest({cell.left, 3000}, iItem, iColumn));
    EXPECT_TRUE(m_Report.GetCellRect(9, 0).IsEmpty());

    // The picture stands behind the indentation: two levels of 16 pixels.
    m_Report.SetImageList(&images);
    m_Report.SetItemIndent(2, 2);
    m_Report.SetItemImage(2, 1);
    const QRect row = GetView()->visualRect(GetView()->model()->index(2, 0));
    const QImage picture = GetView()->viewport()->grab(row).toImage();
    const auto isBlack = [&](int iX)
    {
        return picture.pixelColor(ToPixels(iX), picture.height() / 2) == QColor(Qt::black);
    };
    EXPECT_TRUE(isBlack(33) && isBlack(46));
    EXPECT_FALSE(isBlack(30));
    m_Report.SetImageList(nullptr);
    m_Report.DeleteAllItems();
    EXPECT_EQ(m_Report.GetItemCount(), 0);
}

TEST_F(CLists, AReportTellsOfSelectionClicksMenusAndColumns)
{
    const ENotify kinds[] = {ENotify::SelectionChanged,
                             ENotify::CellClicked,
                             ENotify::CellDoubleClicked,
                             ENotify::ContextMenu,
                             ENotify::ColumnResized};
    for (const ENotify eKind : kinds)
    {
        m_Form.On(eKind,
                  ID_REPORT,
                  [this](SNotification& notification)
                  {
                      m_Notes.push_back(std::to_string(static_cast<int>(notification.eKind)) + ":" +
                                        std::to_string(notification.iItem) + "," +
                                        std::to_string(notification.iColumn) + "," +
                                        std::to_string(notification.iValue));
                  });
    }
    const auto note = [](ENotify eKind, const std::string& strWhere)
    {
        return std::to_string(static_cast<int>(eKind)) + ":" + strWhere;
    };
    Open();
    FillReport(3);
    m_Report.SelectItem(2);
    EXPECT_EQ(m_Report.GetSelectedItem(), 2);
    EXPECT_EQ(TakeNotes(), Notes{});
    QWidget* pRows = GetView()->viewport();
    QTest::mouseClick(pRows, Qt::LeftButton, Qt::NoModifier, GetCenter(1, 1));
    EXPECT_EQ(
        TakeNotes(),
        (Notes{note(ENotify::SelectionChanged, "1,-1,0"), note(ENotify::CellClicked, "1,1,0")}));
    QTest::mouseDClick(pRows, Qt::LeftButton, Qt::NoModifier, GetCenter(1, 0));
    EXPECT_EQ(TakeNotes().back(), note(ENotify::CellDoubleClicked, "1,0,0"));
    QContextMenuEvent menu(
        QContextMenuEvent::Mouse, GetCenter(2, 0), pRows->mapToGlobal(GetCenter(2, 0)));
    TakeNotes();
    QApplication::sendEvent(pRows, &menu);
    EXPECT_EQ(TakeNotes(), (Notes{note(ENotify::ContextMenu, "2,0,0")}));
    QWidget* pHeader = GetView()->header()->viewport();
    const QPoint edge(119, pHeader->height() / 2);
    QTest::mousePress(pHeader, Qt::LeftButton, Qt::NoModifier, edge);
    QTest::mouseMove(pHeader, edge + QPoint(20, 0));
    QTest::mouseRelease(pHeader, Qt::LeftButton, Qt::NoModifier, edge + QPoint(20, 0));
    EXPECT_EQ(TakeNotes(),
              (Notes{note(ENotify::ColumnResized, "-1,0," + std::to_string(ToPixels(140)))}));
    m_Report.SelectItem(-1);
    EXPECT_EQ(m_Report.GetSelectedItem(), -1);
    m_Report.SelectItem(1);
    m_Report.DeleteItem(1); // by code, as selecting is: nobody hears of it
    m_Report.SelectItem(0);
    m_Report.DeleteAllItems();
    EXPECT_EQ(TakeNotes(), Notes{});
    EXPECT_EQ(m_Report.GetSelectedItem(), -1);
}

TEST_F(CLists, AnEditorLaidOverACellFollowsIt)
{
    Open();
    FillReport(60);
    CEdit editor;
    ASSERT_TRUE(editor.CreateEdit(0, m_Report, 500, {0, 0, 10, 10}));
    EXPECT_EQ(editor.GetParent(), &m_Report);
    const int iLeft = ToPixels(4);
    const int iRight = ToPixels(6);
    m_Report.PlaceOverCell(editor, 2, 1, iLeft, iRight);
    const auto getPlace = [&](int iItem)
    {
        const SRect cell = m_Report.GetCellRect(iItem, 1);
        return SRect{cell.left + iLeft, cell.top, cell.right - iRight, cell.bottom};
    };
    EXPECT_EQ(editor.GetWindowRect(), getPlace(2));
    m_Report.SetColumnWidth(0, ToPixels(60));
    EXPECT_EQ(editor.GetWindowRect(), getPlace(2));
    m_Report.InsertItem(0, "above");
    QApplication::processEvents();
    EXPECT_EQ(editor.GetWindowRect(), getPlace(3));
    m_Report.EnsureVisible(59);
    QApplication::processEvents();
    EXPECT_FALSE(editor.IsWindowVisible());
    m_Report.EnsureVisible(0);
    QApplication::processEvents();
    EXPECT_TRUE(editor.IsWindowVisible());
    EXPECT_EQ(editor.GetWindowRect(), getPlace(3));
    m_Report.DeleteItem(3);
    QApplication::processEvents();
    EXPECT_FALSE(editor.IsWindowVisible()) << "its row is gone";
    m_Report.PlaceOverCell(editor, 0, 1, 0, 0);
    EXPECT_TRUE(editor.IsWindowVisible());
    m_Report.RemoveFromCell(editor);
    EXPECT_FALSE(editor.IsWindowVisible());
    editor.DestroyWindow();
    m_Report.SetColumnWidth(0, ToPixels(90));
}
