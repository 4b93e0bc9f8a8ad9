#include "framework/qt/CFoldingGroup.h"

#include "framework/qt/WidgetAccess.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionGroupBox>
#include <QStylePainter>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace
{

constexpr double ARROW = 1.0; // of the height of the title's text

bool IsOwnKey(int iKey)
{
    return iKey == Qt::Key_Space || iKey == Qt::Key_Return || iKey == Qt::Key_Enter ||
           iKey == Qt::Key_Left || iKey == Qt::Key_Right;
}

} // namespace

CFoldingGroup::CFoldingGroup(const QString& strTitle, QWidget* pParent)
    : QGroupBox(strTitle, pParent)
    , m_pGround(new QWidget(this))
{
    setObjectName(strTitle); // by which an inspector or a test finds it
    setFocusPolicy(Qt::TabFocus);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pGround);
}

void CFoldingGroup::SetFolded(bool bFolded)
{
    if (m_bFolded == bFolded)
    {
        return;
    }
    m_bFolded = bFolded;
    const QWidget* pFocus = QApplication::focusWidget();
    if (bFolded && pFocus != nullptr && m_pGround->isAncestorOf(pFocus))
    {
        setFocus(Qt::OtherFocusReason); // where the keyboard was there is nothing to see
    }
    m_pGround->setVisible(!bFolded);
    setMaximumHeight(bFolded ? minimumSizeHint().height() : QWIDGETSIZE_MAX);
    updateGeometry();
    update();
}

int CFoldingGroup::GetArrowWidth() const
{
    return static_cast<int>(fontMetrics().height() * ARROW);
}

// Wide enough for the title and the arrow, which the style knows nothing of.
QSize CFoldingGroup::minimumSizeHint() const
{
    const QSize usual = QGroupBox::minimumSizeHint();
    const QRect title = GetTitleRect();
    const int iHeight = m_bFolded ? title.bottom() + 1 + fontMetrics().descent() : usual.height();
    return {std::max(usual.width(), title.right() + 1), iHeight};
}

QRect CFoldingGroup::GetTitleRect() const
{
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    QRect title =
        style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, this);
    title.setWidth(title.width() + GetArrowWidth());
    return title;
}

void CFoldingGroup::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    const QRect title = GetTitleRect();
    const QString strTitle = std::exchange(option.text, QString());
    // The frame alone: the title stands beside the arrow.
    if (m_bFolded)
    {
        option.subControls &= ~QStyle::SC_GroupBoxFrame;
    }
    painter.drawComplexControl(QStyle::CC_GroupBox, option);
    QStyleOption arrow;
    arrow.initFrom(this);
    arrow.rect = QRect(title.x(), title.y(), GetArrowWidth(), title.height());
    painter.drawPrimitive(
        m_bFolded ? QStyle::PE_IndicatorArrowRight : QStyle::PE_IndicatorArrowDown, arrow);
    const QRect text = title.adjusted(GetArrowWidth(), 0, 0, 0);
    painter.drawItemText(
        text, Qt::AlignVCenter, palette(), isEnabled(), strTitle, foregroundRole());
    if (hasFocus())
    {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = title;
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

void CFoldingGroup::mousePressEvent(QMouseEvent* pEvent)
{
    m_bPressed =
        pEvent->button() == Qt::LeftButton && GetTitleRect().contains(pEvent->position().toPoint());
    pEvent->setAccepted(m_bPressed);
}

void CFoldingGroup::mouseReleaseEvent(QMouseEvent* pEvent)
{
    const bool bPressed = std::exchange(m_bPressed, false);
    if (bPressed && GetTitleRect().contains(pEvent->position().toPoint()))
    {
        SetFolded(!m_bFolded);
    }
    pEvent->setAccepted(bPressed);
}

bool CFoldingGroup::event(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::ShortcutOverride && hasFocus() &&
        IsOwnKey(static_cast<const QKeyEvent*>(pEvent)->key()))
    {
        pEvent->accept(); // no shortcut of the program
        return true;
    }
    // What a control in it has left comes here, too.
    return (pEvent->type() == QEvent::KeyPress && hasFocus() &&
            TakeKey(static_cast<const QKeyEvent*>(pEvent)->key())) ||
           QGroupBox::event(pEvent);
}

bool CFoldingGroup::TakeKey(int iKey)
{
    switch (iKey)
    {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        SetFolded(!m_bFolded);
        return true;
    case Qt::Key_Left:
        SetFolded(true);
        return true;
    case Qt::Key_Right:
        SetFolded(false);
        return true;
    default:
        return false;
    }
}

namespace
{

QList<CFoldingGroup*> FindGroups(const CWindow& form)
{
    QList<CFoldingGroup*> groups;
    const QWidget* pForm = GetWidget(form);
    const auto boxes = pForm != nullptr ? pForm->findChildren<QGroupBox*>() : QList<QGroupBox*>();
    for (QGroupBox* pBox : boxes)
    {
        if (auto* pGroup = dynamic_cast<CFoldingGroup*>(pBox))
        {
            groups << pGroup;
        }
    }
    return groups;
}

} // namespace

QStringList GetFoldedGroups(const CWindow& form)
{
    QStringList titles;
    for (const CFoldingGroup* pGroup : FindGroups(form))
    {
        if (pGroup->IsFolded())
        {
            titles << pGroup->title();
        }
    }
    return titles;
}

void FoldGroups(const CWindow& form, const QStringList& titles)
{
    for (CFoldingGroup* pGroup : FindGroups(form))
    {
        pGroup->SetFolded(titles.contains(pGroup->title()));
    }
}
