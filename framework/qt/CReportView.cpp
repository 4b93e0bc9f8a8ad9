#include "framework/qt/CReportView.h"

#include "framework/drawing/CImageList.h"
#include "framework/qt/CWindowNode.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace
{

enum ERole : int
{
    ROLE_INDENT = Qt::UserRole + 1,
    ROLE_IMAGE,
};

constexpr int DEFAULT_INDENT = 16; // without pictures
constexpr int IMAGE_GAP = 3;       // between picture and text

class CReportDelegate : public QStyledItemDelegate
{
public:
    explicit CReportDelegate(CReportView& view)
        : QStyledItemDelegate(&view)
        , m_View(view)
    {
    }

    void paint(QPainter* pPainter,
               const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem text = option;
        const int iIndent = m_View.GetIndentWidth(index);
        if (iIndent > 0)
        {
            // The ground, that of a selected row too, covers the indentation, which the base class
            // would leave out of the narrower rectangle.
            QStyleOptionViewItem ground = option;
            ground.showDecorationSelected = true;
            m_View.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, pPainter, &m_View);
            DrawImage(*pPainter, option.rect, index);
            text.rect.adjust(iIndent, 0, 0, 0);
        }
        QStyledItemDelegate::paint(pPainter, text, index);
        // A line under each row and between the columns.
        pPainter->setPen(option.palette.color(QPalette::AlternateBase).darker(110));
        pPainter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
        pPainter->drawLine(option.rect.topRight(), option.rect.bottomRight());
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        // As high as the editors that are laid over the cells.
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), std::max(size.height(), option.fontMetrics.height() + 8)};
    }

private:
    void DrawImage(QPainter& painter, const QRect& cell, const QModelIndex& index) const
    {
        const QVariant image = index.data(ROLE_IMAGE);
        CPixelBuffer pixels;
        if (!image.isValid() || m_View.GetImages() == nullptr ||
            !m_View.GetImages()->GetImage(image.toInt(), pixels))
        {
            return;
        }
        const QImage picture(pixels.GetRow(0),
                             pixels.GetWidth(),
                             pixels.GetHeight(),
                             pixels.GetStride(),
                             QImage::Format_ARGB32);
        const int iLevels = index.data(ROLE_INDENT).toInt();
        painter.drawImage(cell.left() + iLevels * pixels.GetWidth(),
                          cell.top() + (cell.height() - pixels.GetHeight()) / 2,
                          picture);
    }

    CReportView& m_View;
};

} // namespace

CReportView::CReportView(QWidget* pGround)
    : QTreeView(pGround)
{
    setModel(&m_Model);
    setItemDelegate(new CReportDelegate(*this)); // the view's
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setExpandsOnDoubleClick(false);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(true);
    connect(
        selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { OnSelection(); });
    connect(header(), &QHeaderView::sectionResized, this, &CReportView::OnSection);
}

void CReportView::SetImages(const CImageList* pImages)
{
    m_pImages = pImages;
    viewport()->update();
}

void CReportView::SetIndent(int iRow, int iLevels)
{
    m_Model.setData(m_Model.index(iRow, 0), iLevels, ROLE_INDENT);
}

void CReportView::SetImage(int iRow, int iImage)
{
    m_Model.setData(m_Model.index(iRow, 0), iImage < 0 ? QVariant() : QVariant(iImage), ROLE_IMAGE);
}

void CReportView::Select(int iRow)
{
    m_bByCode = true;
    if (iRow < 0 || iRow >= m_Model.rowCount())
    {
        clearSelection();
        setCurrentIndex(QModelIndex());
    }
    else
    {
        setCurrentIndex(m_Model.index(iRow, 0));
    }
    m_bByCode = false;
}

int CReportView::GetSelected() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}

int CReportView::GetIndentWidth(const QModelIndex& index) const
{
    if (index.column() != 0)
    {
        return 0;
    }
    const int iLevel = m_pImages != nullptr ? m_pImages->GetImageSize().cx : DEFAULT_INDENT;
    const int iImage = m_pImages != nullptr && index.data(ROLE_IMAGE).isValid()
                           ? m_pImages->GetImageSize().cx + IMAGE_GAP
                           : 0;
    return index.data(ROLE_INDENT).toInt() * iLevel + iImage;
}

void CReportView::Remove(const QWidget& widget)
{
    std::erase_if(m_Placed,
                  [&widget](const SPlaced& placed)
                  { return placed.pWidget == nullptr || placed.pWidget == &widget; });
}

void CReportView::FollowCells()
{
    for (const SPlaced& placed : m_Placed)
    {
        if (placed.pWidget != nullptr)
        {
            // A cell that is gone has no place, which hides the window that lay over it.
            const QRect cell = placed.cell.isValid() ? visualRect(placed.cell) : QRect();
            const QRect place = cell.adjusted(placed.iLeft, 0, -placed.iRight, 0);
            placed.pWidget->setGeometry(place);
            placed.pWidget->setVisible(!place.isEmpty() && viewport()->rect().intersects(place));
        }
    }
}

void CReportView::NotifyCell(int iKind, const QPoint& point, const QPoint& screen)
{
    CWindowNode* pNode = CWindowNode::Find(this);
    const QModelIndex index = indexAt(point);
    if (pNode != nullptr)
    {
        SNotification notification;
        notification.eKind = static_cast<ENotify>(iKind);
        notification.iItem = index.row();
        notification.iColumn = index.column();
        notification.screen = {screen.x(), screen.y()};
        pNode->Notify(notification);
    }
}

void CReportView::OnSelection()
{
    CWindowNode* pNode = m_bByCode ? nullptr : CWindowNode::Find(this);
    if (pNode != nullptr)
    {
        SNotification notification;
        notification.eKind = ENotify::SelectionChanged;
        notification.iItem = GetSelected();
        pNode->Notify(notification);
    }
}

void CReportView::OnSection(int iColumn, int /*iOldWidth*/, int iWidth)
{
    FollowCells();
    // Sections change when rows, columns and the window do, too; a person drags.
    const bool bByPerson = QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    CWindowNode* pNode = bByPerson ? CWindowNode::Find(this) : nullptr;
    if (pNode != nullptr)
    {
        SNotification notification;
        notification.eKind = ENotify::ColumnResized;
        notification.iColumn = iColumn;
        notification.iValue = pNode->ToPixels(QRect(0, 0, iWidth, 1)).right;
        pNode->Notify(notification);
    }
}

void CReportView::mousePressEvent(QMouseEvent* pEvent)
{
    // The press may select a row, and whoever is told of that may end the list.
    const QPointer<CReportView> pThis(this);
    QTreeView::mousePressEvent(pEvent);
    if (pThis != nullptr && pEvent->button() == Qt::LeftButton)
    {
        NotifyCell(static_cast<int>(ENotify::CellClicked),
                   pEvent->position().toPoint(),
                   pEvent->globalPosition().toPoint());
    }
}

void CReportView::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    NotifyCell(static_cast<int>(ENotify::CellDoubleClicked),
               pEvent->position().toPoint(),
               pEvent->globalPosition().toPoint());
}

void CReportView::contextMenuEvent(QContextMenuEvent* pEvent)
{
    // From the keyboard: at the row that is selected.
    const QPoint point = pEvent->reason() == QContextMenuEvent::Keyboard
                             ? visualRect(currentIndex()).center()
                             : pEvent->pos();
    NotifyCell(static_cast<int>(ENotify::ContextMenu), point, viewport()->mapToGlobal(point));
}

void CReportView::scrollContentsBy(int iDx, int iDy)
{
    QTreeView::scrollContentsBy(iDx, iDy);
    FollowCells();
}

void CReportView::resizeEvent(QResizeEvent* pEvent)
{
    QTreeView::resizeEvent(pEvent);
    FollowCells();
}
