#include "editor/app/COverlayBar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMainWindow>

COverlayBar::COverlayBar(QMainWindow& window, Qt::Edge eEdge, const QString& strName)
    : QFrame(&window)
    , m_Window(window)
    , m_Edge(eEdge)
    , m_pRow(new QHBoxLayout(this))
{
    setObjectName(strName);
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true); // the ground is behind it
    const int iMargin = m_pRow->spacing();
    m_pRow->setContentsMargins(iMargin, iMargin / 2, iMargin, iMargin / 2);
    hide();
    m_Window.installEventFilter(this);
}

bool COverlayBar::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // Docks that come and go move the middle without a change of the window's own size.
    const bool bMoved = pEvent->type() == QEvent::Resize || pEvent->type() == QEvent::Move ||
                        pEvent->type() == QEvent::LayoutRequest;
    if (bMoved && isVisible())
    {
        Place();
    }
    return QFrame::eventFilter(pWatched, pEvent);
}

void COverlayBar::showEvent(QShowEvent* pEvent)
{
    if (QWidget* pMiddle = m_Window.centralWidget())
    {
        pMiddle->removeEventFilter(this); // it may be another one than last time
        pMiddle->installEventFilter(this);
    }
    Place();
    QFrame::showEvent(pEvent);
}

void COverlayBar::Place()
{
    const QWidget* pMiddle = m_Window.centralWidget();
    const QRect room = pMiddle != nullptr ? pMiddle->geometry() : m_Window.rect();
    const int iHeight = sizeHint().height();
    setGeometry(room.x(),
                m_Edge == Qt::TopEdge ? room.y() : room.bottom() + 1 - iHeight,
                room.width(),
                iHeight);
    raise();
}
