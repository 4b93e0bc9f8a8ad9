#include "editor/app/CBrushList.h"

#include "editor/core/Words.h"

#include <QAction>
#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QStyle>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace
{

constexpr int PICTURE = 64;                  // side, Qt's pixels
constexpr char WIDEST[] = "Relative height"; // of the functions; names that are longer are cut
constexpr int DROP_MARK = 4;                 // width
constexpr int FIRST_COLUMNS = 3;             // that the list is never narrower than

bool IsStep(const QKeyEvent& event)
{
    switch (event.key())
    {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        return false;
    }
}

// Name and function stand below the picture; what is edited is the name.
class CBrushDelegate : public QStyledItemDelegate
{
public:
    CBrushDelegate(QObject* pParent, std::function<void(int, const QString&)> onRename)
        : QStyledItemDelegate(pParent)
        , m_OnRename(std::move(onRename))
    {
    }

    QWidget* createEditor(QWidget* pParent,
                          const QStyleOptionViewItem& /*option*/,
                          const QModelIndex& /*index*/) const override
    {
        auto* pEdit = new QLineEdit(pParent);
        pEdit->setObjectName("library-name");
        pEdit->setAccessibleName(Words("Name of the brush"));
        pEdit->setAlignment(Qt::AlignHCenter);
        return pEdit;
    }

    void setModelData(QWidget* pEditor,
                      QAbstractItemModel* /*pModel*/,
                      const QModelIndex& index) const override
    {
        const QString strName = static_cast<QLineEdit*>(pEditor)->text();
        if (strName != index.data(Qt::EditRole).toString())
        {
            m_OnRename(index.row(), strName);
        }
    }

    void updateEditorGeometry(QWidget* pEditor,
                              const QStyleOptionViewItem& option,
                              const QModelIndex& /*index*/) const override
    {
        const int iHeight = pEditor->sizeHint().height();
        pEditor->setGeometry(option.rect.left(),
                             option.rect.top() + PICTURE +
                                 (option.fontMetrics.height() - iHeight) / 2 + 2,
                             option.rect.width(),
                             iHeight);
    }

    // Otherwise a name would be cut at the width of the picture.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const auto* pList = qobject_cast<const QListView*>(option.widget);
        return pList != nullptr ? pList->gridSize() : QStyledItemDelegate::sizeHint(option, index);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* pOption, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(pOption, index);
        pOption->decorationPosition = QStyleOptionViewItem::Top;
        pOption->decorationAlignment = Qt::AlignHCenter | Qt::AlignVCenter;
        pOption->displayAlignment = Qt::AlignHCenter | Qt::AlignTop;
        pOption->textElideMode = Qt::ElideMiddle;
        pOption->text +=
            QChar(QChar::LineSeparator) + index.data(CBrushList::FUNCTION_ROLE).toString();
    }

private:
    std::function<void(int, const QString&)> m_OnRename;
};

} // namespace

CBrushList::CBrushList(QWidget* pParent, SEvents events)
    : QListWidget(pParent)
    , m_Events(std::move(events))
{
    const QFontMetrics metrics = fontMetrics();
    const QSize grid(
        std::max(PICTURE, metrics.horizontalAdvance(WIDEST) + 2 * metrics.averageCharWidth()),
        PICTURE + 3 * metrics.height() + metrics.leading());
    setIconSize({PICTURE, PICTURE});
    setGridSize(grid);
    setMinimumWidth(grid.width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // so that no row changes its width by it
    setFlow(QListView::LeftToRight);
    setWrapping(true);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers); // an action begins it
    setDragDropMode(QAbstractItemView::InternalMove);
    setDropIndicatorShown(false); // there is none beside the last one of a row; this draws its own
    setContextMenuPolicy(Qt::ActionsContextMenu);
    setItemDelegate(new CBrushDelegate(this, m_Events.onRename));
    m_DropTimer.setSingleShot(true);
    m_DropTimer.callOnTimeout(this, [this] { m_Events.onMove(m_iFrom, m_iTo); });
}

void CBrushList::Filter(const QString& strText)
{
    for (int i = 0; i < count(); ++i)
    {
        bool bShown = false;
        for (const int iRole : {int{Qt::DisplayRole}, FUNCTION_ROLE, FAULT_ROLE})
        {
            const QString strShown = item(i)->data(iRole).toString();
            bShown = bShown || strShown.contains(strText, Qt::CaseInsensitive);
        }
        setRowHidden(i, !bShown);
        if (!bShown)
        {
            item(i)->setSelected(false); // nobody removes what is not seen
        }
    }
}

int CBrushList::FindShown(int iFrom, int iStep) const
{
    int iRow = iFrom + iStep;
    while (iRow >= 0 && iRow < count() && isRowHidden(iRow))
    {
        iRow += iStep;
    }
    return iRow >= 0 && iRow < count() ? iRow : -1;
}

void CBrushList::Select(int iRow)
{
    // By itself a list heeds the keys that are held, which are those of an action.
    setCurrentRow(iRow, QItemSelectionModel::ClearAndSelect);
    scrollToItem(item(iRow));
}

QAction* CBrushList::FindAction(const QKeyEvent& event) const
{
    const QKeySequence keys(QKeyCombination(event.modifiers() & ~Qt::KeypadModifier,
                                            static_cast<Qt::Key>(event.key())));
    for (QAction* pAction : actions())
    {
        if (pAction->shortcuts().contains(keys))
        {
            return pAction;
        }
    }
    return nullptr;
}

bool CBrushList::event(QEvent* pEvent)
{
    // Some of the window's commands have the same keys; with the keyboard here they are the list's.
    if (pEvent->type() == QEvent::ShortcutOverride)
    {
        const auto& key = *static_cast<QKeyEvent*>(pEvent);
        if (IsStep(key) || FindAction(key) != nullptr)
        {
            pEvent->accept();
            return true;
        }
    }
    return QListWidget::event(pEvent);
}

void CBrushList::keyPressEvent(QKeyEvent* pEvent)
{
    // Keys that the field of a name leaves over come here, Enter among them, which has ended it.
    if (state() == EditingState)
    {
        return;
    }
    if (QAction* pAction = FindAction(*pEvent))
    {
        pAction->trigger();
        return;
    }
    // Sideways the rows are one: whoever goes on at the end of one comes to the next.
    const int iStep = pEvent->key() == Qt::Key_Left ? -1 : pEvent->key() == Qt::Key_Right ? 1 : 0;
    const int iRow = iStep != 0 && (pEvent->modifiers() & ~Qt::KeypadModifier) == 0
                         ? FindShown(currentRow(), iStep)
                         : -1;
    if (iRow >= 0)
    {
        Select(iRow);
        return;
    }
    QListWidget::keyPressEvent(pEvent);
}

int CBrushList::GetFirstWidth() const
{
    return FIRST_COLUMNS * gridSize().width() + PICTURE / 2 +
           style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

Qt::DropActions CBrushList::supportedDropActions() const
{
    return Qt::MoveAction;
}

// Among the rows of pictures at that height, since there is room behind the last one of each; below
// all of them it is the end.
CBrushList::SDropPlace CBrushList::FindDropPlace(const QPoint& at) const
{
    const auto getDistance = [](int iAt, int iFirst, int iLast)
    {
        return std::max({iFirst - iAt, iAt - iLast, 0});
    };
    SDropPlace place;
    int iBelow = 0;
    std::pair<int, int> nearest;
    for (int i = FindShown(-1, 1); i >= 0; i = FindShown(i, 1))
    {
        const QRect rect = visualRect(indexFromItem(item(i)));
        const std::pair<int, int> distance(getDistance(at.y(), rect.top(), rect.bottom()),
                                           getDistance(at.x(), rect.left(), rect.right()));
        iBelow = at.y() - rect.bottom();
        if (place.iRow < 0 || distance < nearest || iBelow > 0)
        {
            nearest = distance;
            place = {i, at.x() > rect.center().x() || iBelow > 0};
        }
    }
    return place;
}

void CBrushList::MarkDropPlace(const SDropPlace& place)
{
    m_DropPlace = place;
    viewport()->update();
}

// As the view's own drag, which would take the dragged item away where it ends as a move: the list
// shows the library, and the plug-in moves brushes.
void CBrushList::startDrag(Qt::DropActions /*actions*/)
{
    m_iDragged = currentRow();
    if (m_iDragged < 0)
    {
        return;
    }
    auto* pDrag = new QDrag(this); // Qt's, from exec on
    pDrag->setMimeData(model()->mimeData({currentIndex()}));
    pDrag->setPixmap(item(m_iDragged)->icon().pixmap(iconSize()));
    // The middle of the picture is what counts, so whoever looks at it there sees where it goes.
    pDrag->setHotSpot({iconSize().width() / 2, iconSize().height() / 2});
    pDrag->exec(Qt::MoveAction);
    m_iDragged = -1;
    MarkDropPlace({});
}

void CBrushList::dragMoveEvent(QDragMoveEvent* pEvent)
{
    QListWidget::dragMoveEvent(pEvent); // scrolls at the edges
    if (pEvent->source() == this && m_iDragged >= 0)
    {
        pEvent->accept();
        MarkDropPlace(FindDropPlace(pEvent->position().toPoint()));
    }
}

void CBrushList::dragLeaveEvent(QDragLeaveEvent* pEvent)
{
    QListWidget::dragLeaveEvent(pEvent);
    MarkDropPlace({});
}

void CBrushList::dropEvent(QDropEvent* pEvent)
{
    const SDropPlace place = FindDropPlace(pEvent->position().toPoint());
    pEvent->accept();
    stopAutoScroll();
    setState(QAbstractItemView::NoState);
    MarkDropPlace({});
    if (pEvent->source() == this && m_iDragged >= 0 && place.iRow >= 0)
    {
        const int iBefore = place.bBehind ? place.iRow + 1 : place.iRow;
        m_iFrom = m_iDragged;
        m_iTo = iBefore > m_iFrom ? iBefore - 1 : iBefore;
        m_DropTimer.start(0);
    }
}

void CBrushList::paintEvent(QPaintEvent* pEvent)
{
    QListWidget::paintEvent(pEvent);
    if (m_DropPlace.iRow >= 0 && m_DropPlace.iRow < count())
    {
        const QRect rect = visualRect(indexFromItem(item(m_DropPlace.iRow)));
        const int iEdge = m_DropPlace.bBehind ? rect.right() + 1 : rect.left();
        QPainter painter(viewport());
        painter.fillRect(
            QRect(std::max(iEdge - DROP_MARK / 2, 0), rect.top(), DROP_MARK, rect.height()),
            palette().color(QPalette::Highlight));
    }
}
