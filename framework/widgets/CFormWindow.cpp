#include "framework/widgets/CFormWindow.h"

#include "framework/core/ResourceModule.h"
#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"
#include "framework/widgets/CButton.h"
#include "framework/widgets/FieldText.h"
#include "host/Log.h"

#include <QAbstractButton>
#include <QApplication>

CFormWindow::CFormWindow(uint32_t uTemplateId)
    : m_TemplateId(uTemplateId)
{
}

// The controls go while the handlers are still there.
CFormWindow::~CFormWindow()
{
    DestroyWindow();
}

void CFormWindow::Bind(uint32_t uId, CWindow& control)
{
    m_Objects[uId] = &control;
}

void CFormWindow::BindValue(uint32_t uId, float& fValue)
{
    m_Variables.push_back({uId, &fValue});
}

void CFormWindow::BindText(uint32_t uId, std::string& strText)
{
    m_Variables.push_back({uId, &strText});
}

void CFormWindow::BindCheck(uint32_t uId, int& iState)
{
    m_Variables.push_back({uId, &iState});
}

void CFormWindow::On(ENotify eKind, uint32_t uId, FNotifyHandler onNotify)
{
    m_Handlers[{eKind, uId}] = std::move(onNotify);
}

void CFormWindow::OnClick(uint32_t uId, FHandler onClick)
{
    On(ENotify::Clicked, uId, [onClick = std::move(onClick)](SNotification&) { onClick(); });
}

void CFormWindow::OnTextChange(uint32_t uId, FHandler onChange)
{
    On(ENotify::TextChanged, uId, [onChange = std::move(onChange)](SNotification&) { onChange(); });
}

void CFormWindow::OnSelectionChange(uint32_t uId, FHandler onChange)
{
    On(ENotify::SelectionChanged,
       uId,
       [onChange = std::move(onChange)](SNotification&) { onChange(); });
}

void CFormWindow::OnScroll(FNotifyHandler onScroll)
{
    m_OnScroll = std::move(onScroll);
}

bool CFormWindow::OnChildNotify(SNotification& notification)
{
    if (notification.eKind == ENotify::FocusLost)
    {
        ShowAgain(notification.uId);
    }
    if (notification.eKind == ENotify::Scrolled && m_OnScroll)
    {
        m_OnScroll(notification);
        return true;
    }
    const auto found = m_Handlers.find({notification.eKind, notification.uId});
    if (found == m_Handlers.end())
    {
        return false;
    }
    found->second(notification);
    return true;
}

const SDialogResource* CFormWindow::FindTemplate() const
{
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
    {
        CrashLog("[CFormWindow::FindTemplate] no window system to show dialog %u\n", m_TemplateId);
        return nullptr;
    }
    const SDialogResource* pTemplate = FindDialogResource(m_TemplateId);
    if (pTemplate == nullptr)
    {
        CrashLog("[CFormWindow::FindTemplate] no dialog template %u\n", m_TemplateId);
    }
    return pTemplate;
}

void CFormWindow::AttachControls()
{
    for (const auto& [uId, pObject] : m_Objects)
    {
        CWindowNode* pNode = FindItem(uId);
        if (pNode != nullptr)
        {
            constexpr bool OWNER = false; // the form's
            pNode->Attach(*pObject, OWNER);
        }
    }
}

CWindowNode* CFormWindow::FindItem(uint32_t uId) const
{
    const auto found = IsWindow() ? m_Items.find(uId) : m_Items.end();
    return found != m_Items.end() ? found->second : nullptr;
}

void CFormWindow::ReadControls()
{
    for (SBoundVariable& bound : m_Variables)
    {
        const CWindowNode* pNode = FindItem(bound.uId);
        if (pNode == nullptr)
        {
            continue;
        }
        if (auto* const* ppValue = std::get_if<float*>(&bound.pVariable))
        {
            ReadFieldValue(GetWidgetText(*pNode->GetWidget()), **ppValue);
            bound.fShown = **ppValue;
        }
        else if (auto* const* ppText = std::get_if<std::string*>(&bound.pVariable))
        {
            **ppText = GetWidgetText(*pNode->GetWidget());
        }
        else
        {
            *std::get<int*>(bound.pVariable) = GetButtonCheck(*pNode);
        }
    }
}

void CFormWindow::WriteControls()
{
    // Each write notifies, and a handler may read the controls: what is written must not be what an
    // earlier write has changed.
    std::vector<std::pair<uint32_t, std::string>> texts;
    for (SBoundVariable& bound : m_Variables)
    {
        CWindowNode* pNode = FindItem(bound.uId);
        if (pNode == nullptr)
        {
            continue;
        }
        if (auto* const* ppValue = std::get_if<float*>(&bound.pVariable))
        {
            if (NeedsText(bound, *pNode))
            {
                texts.emplace_back(bound.uId, FormatFieldValue(**ppValue));
            }
            bound.fShown = **ppValue;
        }
        else if (auto* const* ppText = std::get_if<std::string*>(&bound.pVariable))
        {
            texts.emplace_back(bound.uId, **ppText);
        }
        else
        {
            SetButtonCheck(*pNode, *std::get<int*>(bound.pVariable));
        }
    }
    for (const auto& [uId, strText] : texts)
    {
        SetItemText(uId, strText.c_str());
    }
}

bool CFormWindow::NeedsText(const SBoundVariable& bound, const CWindowNode& node) const
{
    const float fValue = *std::get<float*>(bound.pVariable);
    const std::string strText = GetWidgetText(*node.GetWidget());
    float fTyped = fValue;
    const bool bTyping = node.GetWidget()->hasFocus() && !ReadFieldValue(strText, fTyped);
    return !ReadsAsValue(strText, fValue) && !(bTyping && fValue == bound.fShown);
}

void CFormWindow::ShowAgain(uint32_t uId)
{
    for (const SBoundVariable& bound : m_Variables)
    {
        auto* const* ppValue = std::get_if<float*>(&bound.pVariable);
        float fTyped = 0.0F;
        if (bound.uId == uId && ppValue != nullptr && !ReadFieldValue(GetItemText(uId), fTyped))
        {
            SetItemText(uId, FormatFieldValue(**ppValue).c_str());
        }
    }
}

void CFormWindow::SetItemText(uint32_t uId, const char* pszText)
{
    if (CWindowNode* pNode = FindItem(uId))
    {
        SetWidgetText(*pNode->GetWidget(), pszText);
    }
}

std::string CFormWindow::GetItemText(uint32_t uId) const
{
    const CWindowNode* pNode = FindItem(uId);
    return pNode != nullptr ? GetWidgetText(*pNode->GetWidget()) : std::string();
}

void CFormWindow::EnableItem(uint32_t uId, bool bEnable)
{
    if (CWindowNode* pNode = FindItem(uId))
    {
        pNode->GetWidget()->setEnabled(bEnable);
    }
}

bool CFormWindow::IsItemEnabled(uint32_t uId) const
{
    const CWindowNode* pNode = FindItem(uId);
    return pNode != nullptr && pNode->GetWidget()->isEnabled();
}

void CFormWindow::CheckItem(uint32_t uId, int iState)
{
    if (CWindowNode* pNode = FindItem(uId))
    {
        SetButtonCheck(*pNode, iState);
    }
}

int CFormWindow::GetItemCheck(uint32_t uId) const
{
    const CWindowNode* pNode = FindItem(uId);
    return pNode != nullptr ? GetButtonCheck(*pNode) : int{CHECK_OFF};
}

bool CFormWindow::PressItem(uint32_t uId)
{
    const CWindowNode* pNode = FindItem(uId);
    auto* pButton = pNode != nullptr ? pNode->GetAs<QAbstractButton>() : nullptr;
    if (pButton == nullptr || !pButton->isEnabled())
    {
        return false;
    }
    pButton->click();
    return true;
}

void CFormWindow::InvalidateItem(uint32_t uId)
{
    if (CWindowNode* pNode = FindItem(uId))
    {
        pNode->GetWidget()->update();
    }
}

bool CFormWindow::HasItem(uint32_t uId) const
{
    return FindItem(uId) != nullptr;
}

SRect CFormWindow::GetItemRect(uint32_t uId) const
{
    const CWindowNode* pNode = FindItem(uId);
    if (pNode == nullptr)
    {
        return {};
    }
    const QWidget* pItem = pNode->GetWidget();
    const QPoint corner = pItem->mapTo(GetNode()->GetWidget(), QPoint(0, 0));
    return pNode->ToPixels(QRect(corner, pItem->size()));
}
