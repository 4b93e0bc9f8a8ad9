// What a window's object asks of it.

#include "framework/qt/CWindowNode.h"
#include "framework/widgets/IReportNode.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

QWidget* CWindowNode::GetGround() const
{
    auto* pArea = GetAs<QAbstractScrollArea>();
    return pArea != nullptr ? pArea->viewport() : m_pWidget;
}

void CWindowNode::SetText(const char* pszText)
{
    const QString strText = QString::fromUtf8(pszText);
    if (auto* pLabel = qobject_cast<QLabel*>(m_pWidget))
    {
        pLabel->setText(strText);
    }
    else if (auto* pButton = qobject_cast<QAbstractButton*>(m_pWidget))
    {
        pButton->setText(strText);
    }
    else if (auto* pEdit = qobject_cast<QLineEdit*>(m_pWidget))
    {
        pEdit->setText(strText);
    }
    else
    {
        m_pWidget->setWindowTitle(strText);
    }
}

std::string CWindowNode::GetText() const
{
    if (const auto* pLabel = qobject_cast<const QLabel*>(m_pWidget))
    {
        return pLabel->text().toStdString();
    }
    if (const auto* pButton = qobject_cast<const QAbstractButton*>(m_pWidget))
    {
        return pButton->text().toStdString();
    }
    if (const auto* pEdit = qobject_cast<const QLineEdit*>(m_pWidget))
    {
        return pEdit->text().toStdString();
    }
    if (const auto* pCombo = qobject_cast<const QComboBox*>(m_pWidget))
    {
        return pCombo->currentText().toStdString();
    }
    return m_pWidget->windowTitle().toStdString();
}

void CWindowNode::Enable(bool bEnable)
{
    m_pWidget->setEnabled(bEnable);
}

bool CWindowNode::IsEnabled() const
{
    return m_pWidget->isEnabled();
}

void CWindowNode::Show(bool bShow)
{
    m_pWidget->setVisible(bShow);
    if (bShow && m_pWidget->isWindow())
    {
        m_pWidget->raise();
        m_pWidget->activateWindow();
    }
}

bool CWindowNode::IsVisible() const
{
    return m_pWidget->isVisible();
}

void CWindowNode::Focus()
{
    m_pWidget->setFocus(Qt::OtherFocusReason);
}

bool CWindowNode::HasFocus() const
{
    const QWidget* pFocus = QApplication::focusWidget();
    return pFocus != nullptr && (pFocus == m_pWidget || m_pWidget->isAncestorOf(pFocus));
}

void CWindowNode::SetRedraw(bool bOn)
{
    m_pWidget->setUpdatesEnabled(bOn);
}

void CWindowNode::Invalidate()
{
    m_pWidget->update();
}

void CWindowNode::Move(const SRect& rect)
{
    m_pWidget->setGeometry(FromPixels(rect));
}

SRect CWindowNode::GetRect() const
{
    return ToPixels(m_pWidget->geometry());
}

SRect CWindowNode::GetRectIn(const IWindowNode& around) const
{
    const QWidget* pAround = static_cast<const CWindowNode&>(around).m_pWidget;
    return ToPixels(QRect(m_pWidget->mapTo(pAround, QPoint(0, 0)), m_pWidget->size()));
}

SRect CWindowNode::GetClientRect() const
{
    return ToPixels(QRect(QPoint(0, 0), GetGround()->size()));
}

double CWindowNode::GetScale() const
{
    return m_pWidget->devicePixelRatioF();
}

IButtonNode* CWindowNode::GetButton()
{
    auto* pButton = GetAs<QAbstractButton>();
    if (pButton == nullptr)
    {
        return nullptr;
    }
    if (!m_Button.has_value())
    {
        m_Button.emplace(*pButton);
    }
    return &*m_Button;
}

IListNode* CWindowNode::GetList()
{
    return GetCombo() == nullptr ? GetAs<IListNode>() : nullptr; // a drop-down has a list's rows
}

IComboNode* CWindowNode::GetCombo()
{
    return GetAs<IComboNode>();
}

IEditNode* CWindowNode::GetEdit()
{
    return GetAs<IEditNode>();
}

ISliderNode* CWindowNode::GetSlider()
{
    return GetAs<ISliderNode>();
}

ISpinNode* CWindowNode::GetSpin()
{
    return GetAs<ISpinNode>();
}

IReportNode* CWindowNode::GetReport()
{
    return GetAs<IReportNode>();
}

IDialogNode* CWindowNode::GetDialog()
{
    return GetAs<IDialogNode>();
}
