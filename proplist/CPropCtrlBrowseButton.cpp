#include "proplist/CPropCtrlBrowseButton.h"

#include "framework/core/ChooseColor.h"
#include "framework/core/KeyState.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"
#include "host/Reflection.h"
#include "proplist/CPropListCtrl.h"
#include "proplist/PropText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace
{

constexpr uint32_t BROWSE_BITS =
    RTTI_EDIT_COLOR | RTTI_EDIT_BROWSE | RTTI_EDIT_BROWSE_FILE | RTTI_EDIT_BROWSE_FOLDER;

uint8_t ToByte(float fValue)
{
    return static_cast<uint8_t>(std::lround(std::clamp(fValue, 0.0F, 1.0F) * 255.0F));
}

} // namespace

CPropCtrlBrowseButton::CPropCtrlBrowseButton(CPropListCtrl& list, SPropRow& row, uint32_t uId)
    : CPropInPlaceCtrl(list, row, uId)
    , m_Kind(row.pField->GetEditFlags() & BROWSE_BITS)
{
}

bool CPropCtrlBrowseButton::CreateEditor()
{
    return CreateButton(EControlKind::PushButton, "...", CONTROL_NO_TAB, m_List, GetEditorId(), {});
}

void CPropCtrlBrowseButton::SetValueText(const std::string& strText)
{
    IPropListCtrlUser* pUser = m_List.GetUser();
    const CRTTIObject* pObject = m_Row.objects.empty() ? nullptr : m_Row.objects.front();
    if (pUser == nullptr || strText != pUser->GetNoChangeText(pObject))
    {
        m_ValueText = strText;
    }
}

bool CPropCtrlBrowseButton::OnNotify(SNotification& notification)
{
    if (notification.eKind != ENotify::Clicked)
    {
        return false;
    }
    Browse(IsKeyDown(EKey::Shift));
    return true;
}

void CPropCtrlBrowseButton::Browse(bool bShift)
{
    m_List.Browse(m_Row, m_Kind, bShift, *this);
}

bool CPropCtrlBrowseColorButton::CreateEditor()
{
    return CreateButton(EControlKind::OwnerDraw, "", CONTROL_NO_TAB, m_List, GetEditorId(), {});
}

void CPropCtrlBrowseColorButton::SetValueText(const std::string& strText)
{
    CPropCtrlBrowseButton::SetValueText(strText);
    float fRed = 0.0F;
    float fGreen = 0.0F;
    float fBlue = 0.0F;
    if (m_Row.bDifferent ||
        std::sscanf(GetValueText().c_str(), "%f %f %f", &fRed, &fGreen, &fBlue) != 3)
    {
        fRed = fGreen = fBlue = 0.0F;
    }
    m_Color = MakeColor(ToByte(fRed), ToByte(fGreen), ToByte(fBlue));
    EnableWindow(m_List.MayEdit(m_Row));
    Invalidate();
}

void CPropCtrlBrowseColorButton::DrawItem(const SDrawItem& item)
{
    CDrawContext& context = *item.pContext;
    const SRect inside = context.DrawPushButtonFrame(item.rect, (item.uState & ITEM_SELECTED) != 0);
    const int nGap = GetBorderWidth(context.GetScale());
    context.FillRect(inside.Deflate(nGap, nGap), m_Color);
    if ((item.uState & ITEM_FOCUS) != 0)
    {
        context.DrawFocusRect(inside);
    }
}

void CPropCtrlBrowseColorButton::Browse(bool /*bShift*/)
{
    uint32_t uColor = m_Color;
    if (!ChooseColor(uColor) || m_bAbandoned)
    {
        return;
    }
    char szText[96];
    std::snprintf(szText,
                  sizeof(szText),
                  "%f %f %f",
                  GetRed(uColor) / 255.0,
                  GetGreen(uColor) / 255.0,
                  GetBlue(uColor) / 255.0);
    std::vector<std::string> words = SplitWords(m_Row.strText);
    std::string strText = szText;
    for (size_t i = 3; i < words.size(); ++i)
    {
        strText += " " + words[i];
    }
    Apply(strText);
    if (!m_bAbandoned)
    {
        SetValueText(m_Row.strText);
    }
}
