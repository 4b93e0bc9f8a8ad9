#include "editor/app/CViewFrame.h"

#include "editor/app/CViewWidget.h"
#include "editor/core/Words.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace
{

constexpr int FRAME = 2; // pixels on each side
constexpr int CORNER = 6;
constexpr double SMALL = 0.85; // of the window's font

} // namespace

CViewFrame::CViewFrame()
    : m_pLayout(new QVBoxLayout(this))
{
    m_pLayout->setContentsMargins(FRAME, FRAME, FRAME, FRAME);
}

void CViewFrame::SetView(CViewWidget& view)
{
    m_pLayout->addWidget(&view);
    auto* pName = new QLabel(Words(GetViewName(view.GetKind())), &view); // the view's
    pName->setObjectName("view-name");
    pName->setAttribute(Qt::WA_TransparentForMouseEvents);
    pName->setStyleSheet("background: rgba(24, 26, 30, 130); color: white; border-radius: 3px;"
                         "padding: 1px 5px;");
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * SMALL);
    pName->setFont(small);
    pName->adjustSize();
    pName->move(CORNER, CORNER);
}

void CViewFrame::SetActive(bool bActive)
{
    if (m_bActive != bActive)
    {
        m_bActive = bActive;
        update();
    }
}

void CViewFrame::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(),
                            palette().color(m_bActive ? QPalette::Highlight : QPalette::Window));
}
