#pragma once

#include "framework/widgets/CWindow.h"

class CImageList;

// A list view in report style: rows of texts in columns, the first one with an indentation and a
// picture. Rows and columns count from 0. Windows can be laid over a cell and follow it.
class TELLUR_API CListCtrl : public CWindow
{
public:
    ~CListCtrl() override;

    // Returns the place that the column got, -1 without a window. Widths are device pixels.
    int InsertColumn(int iColumn, const char* pszTitle, int iWidth);
    int GetColumnCount() const;
    int GetColumnWidth(int iColumn) const;
    void SetColumnWidth(int iColumn, int iWidth);

    int InsertItem(int iItem, const char* pszText); // its place; -1 without a window
    void DeleteItem(int iItem);
    void DeleteAllItems();
    int GetItemCount() const;
    void SetCellText(int iItem, int iColumn, const char* pszText);
    std::string GetCellText(int iItem, int iColumn) const;
    void SetItemData(int iItem, uintptr_t uData);
    uintptr_t GetItemData(int iItem) const;
    void SetItemIndent(int iItem, int iLevels);          // each as wide as a picture
    void SetItemImage(int iItem, int iImage);            // -1: none
    void SetItemToolTip(int iItem, const char* pszText); // before the list's own; empty: none
    // Sets the pictures that SetItemImage counts in, borrowed until others or null are set.
    void SetImageList(const CImageList* pImages);

    void SelectItem(int iItem); // -1: none; notifies nobody
    int GetSelectedItem() const;
    void EnsureVisible(int iItem);
    SRect GetCellRect(int iItem, int iColumn) const; // in the rows' area; empty when there is none
    // Finds the cell at a point of the rows' area. Answers false when there is none.
    bool HitTest(SPoint point, int& iItem, int& iColumn) const;

    // Lays a child window over a cell, leaving iLeft and iRight device pixels free; it moves with
    // the cell and hides while the cell cannot be seen. The window takes itself off when it ends.
    void PlaceOverCell(CWindow& window, int iItem, int iColumn, int iLeft, int iRight);
    void RemoveFromCell(CWindow& window);
};
