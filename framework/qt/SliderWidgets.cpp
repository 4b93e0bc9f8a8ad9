// Sliders and spin buttons: what they were told to do goes out as codes and steps.

#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>

#include <algorithm>

namespace
{

constexpr int FIRST_REPEAT_MS = 400;
constexpr int REPEAT_MS = 60;
constexpr int PAGES_IN_RANGE = 5;

// What a repeat of an arrow that is held counts for, by how many came before it.
struct SPace
{
    int nRepeats;
    int iSteps;
};

constexpr SPace PACES[] = {{110, 100}, {90, 50}, {70, 20}, {50, 10}, {35, 5}, {20, 2}};

// Keys repeat about twice as often as arrows.
constexpr int KEYS_IN_REPEAT = 2;

int GetPace(int nRepeats)
{
    for (const SPace& pace : PACES)
    {
        if (nRepeats >= pace.nRepeats)
        {
            return pace.iSteps;
        }
    }
    return 1;
}

struct SActionCode
{
    int iAction;
    EScrollCode eCode;
};

constexpr SActionCode ACTION_CODES[] = {
    {QAbstractSlider::SliderSingleStepAdd, EScrollCode::LineRight},
    {QAbstractSlider::SliderSingleStepSub, EScrollCode::LineLeft},
    {QAbstractSlider::SliderPageStepAdd, EScrollCode::PageRight},
    {QAbstractSlider::SliderPageStepSub, EScrollCode::PageLeft},
    {QAbstractSlider::SliderToMinimum, EScrollCode::Left},
    {QAbstractSlider::SliderToMaximum, EScrollCode::Right},
    {QAbstractSlider::SliderMove, EScrollCode::ThumbTrack},
};

} // namespace

CSliderWidget::CSliderWidget(QWidget* pGround)
    : QSlider(Qt::Horizontal, pGround)
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
    CSliderWidget::SetSliderRange(0, 100);
    connect(this, &QAbstractSlider::actionTriggered, this, &CSliderWidget::OnAction);
    connect(this, &QAbstractSlider::sliderReleased, this, &CSliderWidget::OnReleased);
}

void CSliderWidget::SetPageSize(int iPage)
{
    m_bOwnPage = true;
    setPageStep(std::max(1, iPage));
}

void CSliderWidget::SetSliderRange(int iMin, int iMax)
{
    setRange(iMin, iMax);
    if (!m_bOwnPage)
    {
        setPageStep(std::max(1, (iMax - iMin) / PAGES_IN_RANGE));
    }
}

void CSliderWidget::OnAction(int iAction)
{
    const auto* pFound =
        std::find_if(std::begin(ACTION_CODES),
                     std::end(ACTION_CODES),
                     [iAction](const SActionCode& code) { return code.iAction == iAction; });
    CWindowNode* pNode = CWindowNode::Find(this);
    if (pFound == std::end(ACTION_CODES) || pNode == nullptr)
    {
        return;
    }
    SNotification notification;
    notification.eKind = ENotify::Scrolled;
    notification.eScroll = pFound->eCode;
    // At this time the position has moved and the value has not followed yet, so a step can be
    // taken back. A thumb that is dragged stays under the mouse.
    const int iWanted = sliderPosition();
    if (pFound->eCode == EScrollCode::ThumbTrack)
    {
        notification.iValue = iWanted;
    }
    else
    {
        setSliderPosition(value()); // the handler moves it
    }
    const QPointer<CSliderWidget> pThis(this);
    if (!pNode->Notify(notification) && pThis != nullptr)
    {
        setSliderPosition(iWanted);
    }
}

void CSliderWidget::OnReleased()
{
    CWindowNode* pNode = CWindowNode::Find(this);
    if (pNode != nullptr)
    {
        SNotification notification;
        notification.eKind = ENotify::Scrolled;
        notification.eScroll = EScrollCode::ThumbPosition;
        notification.iValue = value();
        pNode->Notify(notification);
    }
}

void CSliderWidget::wheelEvent(QWheelEvent* pEvent)
{
    const int iDelta = pEvent->angleDelta().y();
    if (iDelta != 0)
    {
        triggerAction(iDelta > 0 ? SliderPageStepAdd : SliderPageStepSub);
    }
    pEvent->accept();
}

CSpinWidget::CSpinWidget(QWidget* pGround)
    : QWidget(pGround)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

void CSpinWidget::SetRange(int iLower, int iUpper)
{
    m_Lower = iLower;
    m_Upper = iUpper;
    SetPos(m_Pos);
}

void CSpinWidget::SetPos(int iPos)
{
    m_Pos = std::clamp(iPos, std::min(m_Lower, m_Upper), std::max(m_Lower, m_Upper));
}

void CSpinWidget::SetBuddy(uint32_t uBuddyId)
{
    const CWindowNode* pOwn = CWindowNode::Find(this);
    QWidget* pBuddy = nullptr;
    // The groups of a form are widgets of their own, so controls of one form need not be
    // neighbours.
    for (QWidget* pWidget : window()->findChildren<QWidget*>())
    {
        const CWindowNode* pNode = CWindowNode::Find(pWidget);
        if (pNode != nullptr && pNode->GetId() == uBuddyId &&
            pNode->GetParent() == pOwn->GetParent())
        {
            pBuddy = pWidget;
        }
    }
    m_BuddyId = pBuddy != nullptr ? uBuddyId : 0;
    if (pBuddy != nullptr)
    {
        pBuddy->installEventFilter(this);
    }
}

void CSpinWidget::StepBy(bool bUp, int iSteps)
{
    CWindowNode* pNode = CWindowNode::Find(this);
    if (pNode == nullptr)
    {
        return;
    }
    SNotification notification;
    notification.eKind = ENotify::SpinDelta;
    // Up leads towards the upper end of the range, which may be the smaller number.
    notification.iValue = bUp == (m_Upper >= m_Lower) ? iSteps : -iSteps;
    const QPointer<CSpinWidget> pThis(this);
    pNode->Notify(notification);
    if (pThis != nullptr && !notification.bRefused)
    {
        SetPos(m_Pos + notification.iValue);
    }
}

QSize CSpinWidget::sizeHint() const
{
    const int iHeight = fontMetrics().height();
    return {iHeight, iHeight + iHeight / 2};
}

void CSpinWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    const QRect upper(0, 0, width(), height() / 2);
    const QRect lower(0, upper.height(), width(), height() - upper.height());
    for (const int iArrow : {1, -1})
    {
        QStyleOptionButton button;
        button.initFrom(this);
        button.rect = iArrow > 0 ? upper : lower;
        button.state |= m_iHeld == iArrow ? QStyle::State_Sunken : QStyle::State_Raised;
        style()->drawPrimitive(QStyle::PE_PanelButtonBevel, &button, &painter, this);
        option.rect = button.rect.adjusted(2, 1, -2, -1);
        style()->drawPrimitive(iArrow > 0 ? QStyle::PE_IndicatorArrowUp
                                          : QStyle::PE_IndicatorArrowDown,
                               &option,
                               &painter,
                               this);
    }
}

void CSpinWidget::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton)
    {
        m_iHeld = pEvent->position().toPoint().y() < height() / 2 ? 1 : -1;
        // Started before the step, because whoever hears of the step may stop it.
        m_Timer.start(FIRST_REPEAT_MS, this);
        m_nRepeats = 0;
        update();
        Step(m_iHeld > 0);
    }
}

void CSpinWidget::mouseReleaseEvent(QMouseEvent*)
{
    m_iHeld = 0;
    m_Timer.stop();
    update();
}

void CSpinWidget::timerEvent(QTimerEvent*)
{
    m_Timer.start(REPEAT_MS, this);
    StepBy(m_iHeld > 0, GetPace(m_nRepeats++));
}

bool CSpinWidget::eventFilter(QObject*, QEvent* pEvent)
{
    const auto* pKey = pEvent->type() == QEvent::KeyPress && isEnabled()
                           ? static_cast<const QKeyEvent*>(pEvent)
                           : nullptr;
    if (pKey == nullptr || (pKey->key() != Qt::Key_Up && pKey->key() != Qt::Key_Down))
    {
        return false;
    }
    m_nRepeats = pKey->isAutoRepeat() ? m_nRepeats + 1 : 0;
    StepBy(pKey->key() == Qt::Key_Up, GetPace(m_nRepeats / KEYS_IN_REPEAT));
    return true;
}
