#pragma once

#include "framework/widgets/IReportNode.h"

#include <QPointer>
#include <QStandardItemModel>
#include <QTreeView>

#include <vector>

class CImageList;
class CWindowNode;

// A flat list in columns whose first column has an indentation and a picture per row, and child
// widgets that lie over cells and follow them. Units are Qt's.
class CReportView : public QTreeView, public IReportNode
{
public:
    explicit CReportView(QWidget* pGround);

    const CImageList* GetImages() const { return m_pImages; }

    int GetIndentWidth(const QModelIndex& index) const;

    // IReportNode, in device pixels
    int InsertColumn(int iColumn, const char* pszTitle, int iWidth) override;
    int GetColumnCount() const override;
    int GetWidthOfColumn(int iColumn) const override;
    void SetWidthOfColumn(int iColumn, int iWidth) override;
    int InsertRow(int iRow, const char* pszText) override;
    void RemoveRow(int iRow) override;
    void RemoveRows() override;
    int GetRowCount() const override;
    void SetCellText(int iRow, int iColumn, const char* pszText) override;
    std::string GetCellText(int iRow, int iColumn) const override;
    void SetRowNumber(int iRow, uintptr_t uData) override;
    uintptr_t GetRowNumber(int iRow) const override;
    void SetIndent(int iRow, int iLevels) override;
    void SetImage(int iRow, int iImage) override;
    void SetRowTip(int iRow, const char* pszText) override;
    void SetImages(const CImageList* pImages) override;
    void Select(int iRow) override;
    int GetSelected() const override;
    void ShowRow(int iRow) override;
    SRect GetCellRect(int iRow, int iColumn) const override;
    bool FindCell(SPoint point, int& iRow, int& iColumn) const override;
    void PlaceWindow(CWindow& window, int iRow, int iColumn, int iLeft, int iRight) override;
    void RemoveWindow(CWindow& window) override;

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void scrollContentsBy(int iDx, int iDy) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    struct SPlaced
    {
        QPointer<QWidget> pWidget;
        QPersistentModelIndex cell; // follows rows that come and go
        int iLeft = 0;
        int iRight = 0;
    };

    int FromPixels(int iLength) const;
    QStandardItem* GetCell(int iRow, int iColumn) const;
    void Remove(const QWidget& widget);
    void FollowCells();
    void NotifyCell(int iKind, const QPoint& point, const QPoint& screen);
    void OnSelection();
    void OnSection(int iColumn, int iOldWidth, int iWidth);

    QStandardItemModel m_Model;
    const CImageList* m_pImages = nullptr;
    std::vector<SPlaced> m_Placed;
    bool m_bByCode = false; // a selection is being set by code, which notifies nobody
};
