#include "framework/widgets/CWindow.h"

#include "framework/core/Capture.h"
#include "framework/core/IWindowSystem.h"
#include "framework/widgets/IWindowFactory.h"
#include "framework/widgets/IWindowNode.h"

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
    // Whoever has a window has the window system open.
    const SControlResource control = {uId, eKind, pszText, 0, 0, uStyle};
    OpenWindowSystem()->GetWindows().MakeControl(control, parent)->Attach(*this, true);
    MoveWindow(rect);
    ShowWindow(true);
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
        m_Node->SetText(pszText);
    }
}

std::string CWindow::GetWindowText() const
{
    return m_Node != nullptr ? m_Node->GetText() : std::string();
}

void CWindow::EnableWindow(bool bEnable)
{
    if (m_Node != nullptr)
    {
        m_Node->Enable(bEnable);
    }
}

bool CWindow::IsWindowEnabled() const
{
    return m_Node != nullptr && m_Node->IsEnabled();
}

void CWindow::ShowWindow(bool bShow)
{
    if (m_Node != nullptr)
    {
        m_Node->Show(bShow);
    }
}

bool CWindow::IsWindowVisible() const
{
    return m_Node != nullptr && m_Node->IsVisible();
}

void CWindow::SetFocus()
{
    if (m_Node != nullptr)
    {
        m_Node->Focus();
    }
}

bool CWindow::HasFocus() const
{
    return m_Node != nullptr && m_Node->HasFocus();
}

void CWindow::SetRedraw(bool bOn)
{
    if (m_Node != nullptr)
    {
        m_Node->SetRedraw(bOn);
    }
}

void CWindow::Invalidate()
{
    if (m_Node != nullptr)
    {
        m_Node->Invalidate();
    }
}

void CWindow::MoveWindow(const SRect& rect)
{
    if (m_Node != nullptr)
    {
        m_Node->Move(rect);
    }
}

SRect CWindow::GetWindowRect() const
{
    return m_Node != nullptr ? m_Node->GetRect() : SRect{};
}

SRect CWindow::GetClientRect() const
{
    return m_Node != nullptr ? m_Node->GetClientRect() : SRect{};
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
