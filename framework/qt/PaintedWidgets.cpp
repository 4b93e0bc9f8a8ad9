// Widgets whose look is drawn by the objects bound to them, in device pixels.

#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"
#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <cmath>

namespace
{

// Room for the widget's device pixels, filled with the button face; false for an empty widget.
bool PrepareSurface(const QWidget& widget, CPixelBuffer& pixels)
{
    const double fScale = widget.devicePixelRatioF();
    const int iWidth = static_cast<int>(std::lround(widget.width() * fScale));
    const int iHeight = static_cast<int>(std::lround(widget.height() * fScale));
    if ((pixels.GetWidth() != iWidth || pixels.GetHeight() != iHeight) &&
        !pixels.Create(iWidth, iHeight, 32))
    {
        return false;
    }
    CDrawContext(pixels).FillRect(pixels.GetBounds(), GetSystemColor(ESystemColor::ButtonFace));
    return true;
}

void ShowSurface(QWidget& widget, const CPixelBuffer& pixels)
{
    QImage image(pixels.GetRow(0),
                 pixels.GetWidth(),
                 pixels.GetHeight(),
                 pixels.GetStride(),
                 QImage::Format_RGB32);
    image.setDevicePixelRatio(widget.devicePixelRatioF());
    QPainter(&widget).drawImage(0, 0, image);
}

} // namespace

void CPaintedArea::paintEvent(QPaintEvent*)
{
    CWindowNode* pNode = CWindowNode::Find(this);
    if (pNode != nullptr && pNode->GetObject() != nullptr && PrepareSurface(*this, m_Pixels))
    {
        CDrawContext context(m_Pixels, devicePixelRatioF());
        pNode->Paint(context);
        ShowSurface(*this, m_Pixels);
    }
}

QSize CPaintedButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int iPadding = metrics.height() + metrics.height() / 4;
    return {metrics.horizontalAdvance(text()) + iPadding, QPushButton::sizeHint().height()};
}

void CPaintedButton::SetOwnerDraw()
{
    m_OwnerDraw = true;
    setProperty("ownerDrawn", true); // seen from outside: its text is not what it shows
    setCheckable(false);
    update();
}

void CPaintedButton::paintEvent(QPaintEvent* pEvent)
{
    CWindowNode* pNode = CWindowNode::Find(this);
    if (!m_OwnerDraw || pNode == nullptr || pNode->GetObject() == nullptr)
    {
        isChecked() && isEnabled() ? PaintChecked() : QPushButton::paintEvent(pEvent);
        return;
    }
    if (PrepareSurface(*this, m_Pixels))
    {
        CDrawContext context(m_Pixels, devicePixelRatioF());
        const uint32_t uState = (isDown() ? uint32_t{ITEM_SELECTED} : 0) |
                                (isEnabled() ? 0 : uint32_t{ITEM_DISABLED}) |
                                (hasFocus() ? uint32_t{ITEM_FOCUS} : 0);
        pNode->DrawItem({&context, m_Pixels.GetBounds(), uState});
        ShowSurface(*this, m_Pixels);
    }
}

// In the selection's colour: a button that is merely darker tells nothing on a dark ground.
void CPaintedButton::PaintChecked()
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.palette.setColor(QPalette::Button, palette().color(QPalette::Highlight));
    option.palette.setColor(QPalette::ButtonText, palette().color(QPalette::HighlightedText));
    painter.drawControl(QStyle::CE_PushButton, option);
}

// The second press of a double click is not the first half of another click.
void CPaintedButton::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    CWindowNode* pNode = CWindowNode::Find(this);
    if (!m_OwnerDraw || pNode == nullptr)
    {
        QPushButton::mouseDoubleClickEvent(pEvent);
        return;
    }
    pEvent->accept();
    pNode->Notify(ENotify::DoubleClicked);
}
