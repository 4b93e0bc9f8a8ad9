#include "framework/widgets/CFormWindow.h"

#include "framework/core/IWindowSystem.h"
#include "framework/core/ResourceModule.h"
#include "framework/widgets/CButton.h"
#include "framework/widgets/FieldText.h"
#include "framework/widgets/IWindowFactory.h"
#include "framework/widgets/IWindowNode.h"
#include "host/Log.h"

#include <utility>

// Null without a control, or with one that is no button.
static IButtonNode* GetButton(IWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetButton() : nullptr;
}

// What is no button is off.
static int GetCheck(const IButtonNode* pButton)
{
    return pButton != nullptr ? pButton->GetCheck() : int{CHECK_OFF};
}

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

void CFormWindow::OnEdit(uint32_t uId, FHandler onEdit)
{
    OnTextChange(uId,
                 [this, onEdit = std::move(onEdit)]
                 {
                     if (!m_bWriting)
                     {
                         onEdit();
                     }
                 });
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
        // What was being typed and is no number yet gives way to the value; see WriteControls.
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
    IWindowSystem* pSystem = OpenWindowSystem();
    if (pSystem == nullptr)
    {
        return nullptr;
    }
    if (!pSystem->GetWindows().IsReady())
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
        IWindowNode* pNode = FindItem(uId);
        if (pNode != nullptr)
        {
            constexpr bool OWNER = false; // the form's
            pNode->Attach(*pObject, OWNER);
        }
    }
    for (const SBoundVariable& bound : m_Variables)
    {
        IWindowNode* pNode = FindItem(bound.uId);
        IEditNode* pEdit = pNode != nullptr ? pNode->GetEdit() : nullptr;
        if (pEdit != nullptr && std::holds_alternative<float*>(bound.pVariable))
        {
            pEdit->SetNumeric(true);
        }
    }
}

IWindowNode* CFormWindow::FindItem(uint32_t uId) const
{
    // The controls end with the form's window and nobody takes them out, so they count only while
    // it is there.
    const auto found = IsWindow() ? m_Items.find(uId) : m_Items.end();
    return found != m_Items.end() ? found->second : nullptr;
}

void CFormWindow::ReadControls()
{
    for (SBoundVariable& bound : m_Variables)
    {
        IWindowNode* pNode = FindItem(bound.uId);
        if (pNode == nullptr)
        {
            continue;
        }
        if (auto* const* ppValue = std::get_if<float*>(&bound.pVariable))
        {
            ReadFieldValue(pNode->GetText(), **ppValue);
            bound.fShown = **ppValue;
        }
        else if (auto* const* ppText = std::get_if<std::string*>(&bound.pVariable))
        {
            **ppText = pNode->GetText();
        }
        else
        {
            *std::get<int*>(bound.pVariable) = GetCheck(pNode->GetButton());
        }
    }
}

void CFormWindow::WriteControls(uint32_t uOnly)
{
    // Each write notifies, and a handler may read the controls: what is written must not be what an
    // earlier write has changed.
    std::vector<std::pair<uint32_t, std::string>> texts;
    for (SBoundVariable& bound : m_Variables)
    {
        IWindowNode* pNode = FindItem(bound.uId);
        if (pNode == nullptr || (uOnly != 0 && bound.uId != uOnly))
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
        else if (IButtonNode* pButton = pNode->GetButton())
        {
            pButton->SetCheck(*std::get<int*>(bound.pVariable));
        }
    }
    // A handler of one of these texts may write the controls again, inside this loop.
    const bool bBefore = std::exchange(m_bWriting, true);
    for (const auto& [uId, strText] : texts)
    {
        SetItemText(uId, strText.c_str());
    }
    m_bWriting = bBefore;
}

bool CFormWindow::NeedsText(const SBoundVariable& bound, const IWindowNode& node) const
{
    const float fValue = *std::get<float*>(bound.pVariable);
    const std::string strText = node.GetText();
    // A text that is no number yet, such as "-", is somebody's typing as long as the variable is
    // the one that was shown last.
    float fTyped = fValue;
    const bool bTyping = node.HasFocus() && !ReadFieldValue(strText, fTyped);
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
    if (IWindowNode* pNode = FindItem(uId))
    {
        pNode->SetText(pszText);
    }
}

std::string CFormWindow::GetItemText(uint32_t uId) const
{
    const IWindowNode* pNode = FindItem(uId);
    return pNode != nullptr ? pNode->GetText() : std::string();
}

void CFormWindow::EnableItem(uint32_t uId, bool bEnable)
{
    if (IWindowNode* pNode = FindItem(uId))
    {
        pNode->Enable(bEnable);
    }
}

bool CFormWindow::IsItemEnabled(uint32_t uId) const
{
    const IWindowNode* pNode = FindItem(uId);
    return pNode != nullptr && pNode->IsEnabled();
}

void CFormWindow::CheckItem(uint32_t uId, int iState)
{
    if (IButtonNode* pButton = GetButton(FindItem(uId)))
    {
        pButton->SetCheck(iState);
    }
}

int CFormWindow::GetItemCheck(uint32_t uId) const
{
    return GetCheck(GetButton(FindItem(uId)));
}

bool CFormWindow::PressItem(uint32_t uId)
{
    IWindowNode* pNode = FindItem(uId);
    IButtonNode* pButton = GetButton(pNode);
    if (pButton == nullptr || !pNode->IsEnabled())
    {
        return false;
    }
    pButton->Click();
    return true;
}

SRect CFormWindow::GetItemRect(uint32_t uId) const
{
    const IWindowNode* pNode = FindItem(uId);
    return pNode != nullptr ? pNode->GetRectIn(*GetNode()) : SRect();
}
