#include "tellur/proplist/CPropCtrlCheckbox.h"

#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"
#include "framework/widgets/CListCtrl.h"
#include "tellur/proplist/CPropTextHooks.h"
#include "tellur/proplist/PropText.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

bool CPropCtrlCheckbox::CreateEditor()
{
    return CreateButton(
        EControlKind::OwnerDraw, "", CONTROL_NO_TAB, m_Context.list, GetEditorId(), {});
}

void CPropCtrlCheckbox::SetValueText(const std::string& strText)
{
    m_ValueText = strText;
    const std::string strShown = m_Context.hooks.FormatText(m_Row, strText);
    m_State = m_Row.bDifferent                   ? CHECK_UNDETERMINED
              : std::atoi(strShown.c_str()) == 0 ? CHECK_OFF
                                                 : CHECK_ON;
    SetWindowText(m_Row.bDifferent ? PROP_DIFFERENT_VALUES
                                   : (m_State == CHECK_ON ? "true" : "false"));
    Invalidate();
}

bool CPropCtrlCheckbox::OnNotify(SNotification& notification)
{
    if (notification.eKind != ENotify::Clicked && notification.eKind != ENotify::DoubleClicked)
    {
        return false;
    }
    // Kept as it always was: different values count as set, so a click makes all of them false.
    const std::string strNew = m_State == CHECK_OFF ? "1" : "0";
    Apply(strNew);
    if (!m_bAbandoned)
    {
        SetValueText(m_Row.strText); // what the objects hold now
    }
    return true;
}

void CPropCtrlCheckbox::DrawBox(CDrawContext& context, const SRect& box, bool bDisabled) const
{
    const ColorRef uInk =
        GetSystemColor(bDisabled ? ESystemColor::GrayText : ESystemColor::WindowText);
    const int nLine = GetBorderWidth(context.GetScale());
    const SRect inside = context.DrawEdge(box, EEdge::Sunken, 0);
    context.FillRect(inside, GetSystemColor(ESystemColor::Window));
    if (m_State == CHECK_UNDETERMINED)
    {
        context.FillRect(inside.Deflate(2 * nLine, 2 * nLine),
                         GetSystemColor(ESystemColor::ButtonShadow));
    }
    else if (m_State == CHECK_ON)
    {
        const SPen before = context.SetPen({EPenStyle::Solid, 2 * nLine, uInk});
        const int nStep = std::max(1, inside.GetWidth() / 5);
        const SPoint low = {inside.left + 2 * nStep, inside.bottom - nStep - nLine};
        context.DrawLine({inside.left + nStep, low.y - nStep}, low);
        context.DrawLine(low, {inside.right - nStep / 2, inside.top + nStep / 2});
        context.SetPen(before);
    }
}

void CPropCtrlCheckbox::DrawItem(const SDrawItem& item)
{
    CDrawContext& context = *item.pContext;
    const int nLine = GetBorderWidth(context.GetScale());
    const bool bDisabled = (item.uState & (ITEM_DISABLED | ITEM_GRAYED)) != 0;
    context.FillRect(item.rect, GetSystemColor(ESystemColor::Window));
    const std::string strText = GetWindowText();
    const int nSide = std::min(context.GetTextSize(strText.c_str()).cy, item.rect.GetHeight());
    const int iTop = item.rect.top + (item.rect.GetHeight() - nSide) / 2;
    const SRect box = {
        item.rect.left + 2 * nLine, iTop, item.rect.left + 2 * nLine + nSide, iTop + nSide};
    DrawBox(context, box, bDisabled);
    const ColorRef uBefore = context.SetTextColor(
        GetSystemColor(bDisabled ? ESystemColor::GrayText : ESystemColor::WindowText));
    const SRect text = {box.right + 4 * nLine, item.rect.top, item.rect.right, item.rect.bottom};
    context.DrawText(strText.c_str(), text, TEXT_LEFT | TEXT_VCENTER | TEXT_TRANSPARENT);
    context.SetTextColor(uBefore);
    if ((item.uState & ITEM_FOCUS) != 0)
    {
        context.DrawFocusRect(item.rect);
    }
}
