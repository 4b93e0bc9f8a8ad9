#pragma once

#include <QPointer>
#include <QStandardItemModel>
#include <QTreeView>

#include <vector>

class CImageList;
class CWindowNode;

// A flat list in columns whose first column has an indentation and a picture per row, and child
// widgets that lie over cells and follow them. Units are Qt's.
class CReportView : public QTreeView
{
public:
    explicit CReportView(QWidget* pGround);

    QStandardItemModel& GetModel() { return m_Model; }

    const CImageList* GetImages() const { return m_pImages; }

    void SetImages(const CImageList* pImages);
    // Rows and columns that are not there are ignored.
    void SetIndent(int iRow, int iLevels);
    void SetImage(int iRow, int iImage);
    void Select(int iRow); // notifies nobody
    int GetSelected() const;

    int GetIndentWidth(const QModelIndex& index) const;

    void Place(QWidget& widget, int iRow, int iColumn, int iLeft, int iRight);
    void Remove(const QWidget& widget);
    void FollowCells();

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

    void NotifyCell(int iKind, const QPoint& point, const QPoint& screen);
    void OnSelection();
    void OnSection(int iColumn, int iOldWidth, int iWidth);

    QStandardItemModel m_Model;
    const CImageList* m_pImages = nullptr;
    std::vector<SPlaced> m_Placed;
    bool m_bByCode = false;
};
