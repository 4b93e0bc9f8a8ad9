#include "framework/widgets/CWindow.h"

#include "framework/core/Capture.h"
#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace
{

// Child windows of a scrolling window stand on what scrolls.
QWidget* FindGround(const CWindowNode& parent)
{
    auto* pArea = parent.GetAs<QAbstractScrollArea>();
    return pArea != nullptr ? pArea->viewport() : parent.GetWidget();
}

} // namespace

CWindow::CWindow() = default;

CWindow::~CWindow()
{
    if (m_bOwner)
    {
        DestroyWindow();
    }
    else if (m_Node != nullptr)
    {
        m_Node->Detach();
    }
}

bool CWindow::Create(CWindow& parent, uint32_t uId, const SRect& rect)
{
    return CreateControl(EControlKind::Space, nullptr, 0, parent, uId, rect);
}

bool CWindow::CreateControl(EControlKind eKind,
                            const char* pszText,
                            uint32_t uStyle,
                            CWindow& parent,
                            uint32_t uId,
                            const SRect& rect)
{
    if (m_Node != nullptr || parent.m_Node == nullptr)
    {
        return false;
    }
    QWidget* pGround = FindGround(*parent.m_Node);
    QWidget* pWidget = MakeControlWidget(eKind, pszText, uStyle, pGround, uId, &parent);
    CWindowNode::Find(pWidget)->Attach(*this, true);
    MoveWindow(rect);
    pWidget->show();
    return true;
}

void CWindow::DestroyWindow()
{
    if (m_Node != nullptr)
    {
        m_Node->Destroy();
    }
}

uintptr_t CWindow::GetHandle() const
{
    return m_Node != nullptr ? m_Node->GetHandle() : 0;
}

uint32_t CWindow::GetControlId() const
{
    return m_Node != nullptr ? m_Node->GetId() : 0;
}

CWindow* CWindow::GetParent() const
{
    return m_Node != nullptr ? m_Node->GetParent() : nullptr;
}

void CWindow::SetWindowText(const char* pszText)
{
    if (m_Node != nullptr)
    {
        SetWidgetText(*m_Node->GetWidget(), pszText);
    }
}

std::string CWindow::GetWindowText() const
{
    return m_Node != nullptr ? GetWidgetText(*m_Node->GetWidget()) : std::string();
}

void CWindow::EnableWindow(bool bEnable)
{
    if (m_Node != nullptr)
    {
        m_Node->GetWidget()->setEnabled(bEnable);
    }
}

bool CWindow::IsWindowEnabled() const
{
    return m_Node != nullptr && m_Node->GetWidget()->isEnabled();
}

void CWindow::ShowWindow(bool bShow)
{
    if (m_Node != nullptr)
    {
        m_Node->GetWidget()->setVisible(bShow);
        if (bShow && m_Node->GetWidget()->isWindow())
        {
            m_Node->GetWidget()->raise();
            m_Node->GetWidget()->activateWindow();
        }
    }
}

bool CWindow::IsWindowVisible() const
{
    return m_Node != nullptr && m_Node->GetWidget()->isVisible();
}

void CWindow::SetFocus()
{
    if (m_Node != nullptr)
    {
        m_Node->GetWidget()->setFocus(Qt::OtherFocusReason);
    }
}

bool CWindow::HasFocus() const
{
    const QWidget* pFocus = m_Node != nullptr ? QApplication::focusWidget() : nullptr;
    return pFocus != nullptr &&
           (pFocus == m_Node->GetWidget() || m_Node->GetWidget()->isAncestorOf(pFocus));
}

void CWindow::SetRedraw(bool bOn)
{
    if (m_Node != nullptr)
    {
        m_Node->GetWidget()->setUpdatesEnabled(bOn);
    }
}

void CWindow::Invalidate()
{
    if (m_Node != nullptr)
    {
        m_Node->GetWidget()->update();
    }
}

void CWindow::MoveWindow(const SRect& rect)
{
    if (m_Node != nullptr)
    {
        m_Node->GetWidget()->setGeometry(m_Node->FromPixels(rect));
    }
}

SRect CWindow::GetWindowRect() const
{
    return m_Node != nullptr ? m_Node->ToPixels(m_Node->GetWidget()->geometry()) : SRect{};
}

SRect CWindow::GetClientRect() const
{
    return m_Node != nullptr ? m_Node->ToPixels(QRect(QPoint(0, 0), FindGround(*m_Node)->size()))
                             : SRect{};
}

double CWindow::GetScale() const
{
    return m_Node != nullptr ? m_Node->GetScale() : 1.0;
}

void CWindow::SetWindowCapture()
{
    SetCapture(GetHandle());
}

void CWindow::EnableToolTips(bool bEnable)
{
    m_bToolTips = bEnable;
}

void CWindow::DoDefault()
{
    if (m_Node != nullptr)
    {
        m_Node->DoDefault();
    }
}
