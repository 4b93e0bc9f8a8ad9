#include "tellur/proplist/CPropCtrlBrowseButton.h"

#include "framework/core/ChooseColor.h"
#include "framework/core/KeyState.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"
#include "framework/widgets/CListCtrl.h"
#include "host/NumberText.h"
#include "host/Reflection.h"
#include "tellur/proplist/CPropBrowser.h"
#include "tellur/proplist/CPropRowModel.h"
#include "tellur/proplist/CPropTextHooks.h"
#include "tellur/proplist/PropText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr uint32_t BROWSE_BITS =
    RTTI_EDIT_COLOR | RTTI_EDIT_BROWSE | RTTI_EDIT_BROWSE_FILE | RTTI_EDIT_BROWSE_FOLDER;

constexpr int DIGITS = 6; // of a color's parts

constexpr double BROWSE_WIDTH = 1.3; // as SPropEditorPlace
constexpr double COLOR_WIDTH = 2.0;

uint8_t ToByte(float fValue)
{
    return static_cast<uint8_t>(std::lround(std::clamp(fValue, 0.0F, 1.0F) * 255.0F));
}

} // namespace

CPropCtrlBrowseButton::CPropCtrlBrowseButton(const SPropEditorContext& context,
                                             SPropRow& row,
                                             uint32_t uId)
    : CPropInPlaceCtrl(context, row, uId)
    , m_Kind(row.pField->GetEditFlags() & BROWSE_BITS)
{
}

bool CPropCtrlBrowseButton::CreateEditor()
{
    return CreateButton(
        EControlKind::PushButton, "...", CONTROL_NO_TAB, m_Context.list, GetEditorId(), {});
}

void CPropCtrlBrowseButton::SetValueText(const std::string& strText)
{
    IPropListCtrlUser* pUser = m_Context.model.GetUser();
    const CRTTIObject* pObject = m_Row.objects.empty() ? nullptr : m_Row.objects.front();
    if (pUser == nullptr || strText != pUser->GetNoChangeText(pObject))
    {
        m_ValueText = strText;
    }
}

SPropEditorPlace CPropCtrlBrowseButton::GetPlace() const
{
    return {.fWidth = BROWSE_WIDTH};
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
    m_Context.browser.Browse(m_Row, m_Kind, bShift, *this);
}

bool CPropCtrlBrowseColorButton::CreateEditor()
{
    return CreateButton(
        EControlKind::OwnerDraw, "", CONTROL_NO_TAB, m_Context.list, GetEditorId(), {});
}

void CPropCtrlBrowseColorButton::SetValueText(const std::string& strText)
{
    CPropCtrlBrowseButton::SetValueText(strText);
    std::array<float, 3> parts = {};
    std::string_view strRest = GetValueText();
    const bool bRead =
        std::all_of(parts.begin(),
                    parts.end(),
                    [&](float& fPart) { return ParseNumber(TakeWord(strRest), fPart); });
    m_Color = bRead && !m_Row.bDifferent
                  ? MakeColor(ToByte(parts[0]), ToByte(parts[1]), ToByte(parts[2]))
                  : MakeColor(0, 0, 0);
    EnableWindow(m_Context.hooks.MayEdit(m_Row));
    Invalidate();
}

SPropEditorPlace CPropCtrlBrowseColorButton::GetPlace() const
{
    return {.fWidth = COLOR_WIDTH, .bFillsAlone = true};
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
    // The row may have gone while the dialog was open.
    if (!ChooseColor(uColor) || m_bAbandoned)
    {
        return;
    }
    std::vector<std::string> words = SplitWords(m_Row.strText);
    words.resize(std::max(words.size(), size_t{3})); // what follows the color stays
    words[0] = FormatNumber(GetRed(uColor) / 255.0, DIGITS);
    words[1] = FormatNumber(GetGreen(uColor) / 255.0, DIGITS);
    words[2] = FormatNumber(GetBlue(uColor) / 255.0, DIGITS);
    Apply(JoinWords(words));
    if (!m_bAbandoned)
    {
        SetValueText(m_Row.strText);
    }
}
