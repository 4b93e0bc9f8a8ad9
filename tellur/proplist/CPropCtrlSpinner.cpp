#include "tellur/proplist/CPropCtrlSpinner.h"

#include "framework/core/Capture.h"
#include "framework/core/CursorPos.h"
#include "framework/widgets/CListCtrl.h"
#include "host/NumberText.h"
#include "host/Reflection.h"
#include "tellur/proplist/CPropCtrlEdit.h"
#include "tellur/proplist/CPropTextHooks.h"
#include "tellur/proplist/PropText.h"

#include <cstdlib>

namespace
{

constexpr double SPINNER_WIDTH = 0.75; // as SPropEditorPlace
// Where a field names no step; kept as it always was.
constexpr double DEFAULT_STEP = 0.125;
constexpr int OTHER_DIGITS = 10; // of types without a precision of their own
constexpr int TOP_EDGE = 1;      // where a drag that left at the bottom goes on, and the last row
constexpr int BOTTOM_GAP = 5;    // above the bottom, where a drag that left at the top goes on

int GetDigits(const CRTTIField& field)
{
    const ERTTIType eType = field.GetType();
    const bool bOwn = eType == RTTI_FLOAT || eType == RTTI_DOUBLE || GetComponentCount(field) > 0;
    return bOwn ? field.GetPrecision() : OTHER_DIGITS;
}

} // namespace

CPropCtrlSpinner::CPropCtrlSpinner(const SPropEditorContext& context, SPropRow& row, uint32_t uId)
    : CPropInPlaceCtrl(context, row, uId)
    , m_Step((row.pField->GetEditFlags() & RTTI_EDIT_HAS_STEP) != 0 ? row.pField->GetStep()
                                                                    : DEFAULT_STEP)
{
}

bool CPropCtrlSpinner::CreateEditor()
{
    if (!CreateSpin(m_Context.list, GetEditorId(), {}))
    {
        return false;
    }
    SetRange(0, 1); // the upper arrow counts upwards
    return true;
}

void CPropCtrlSpinner::SetValueText(const std::string& strText)
{
    m_ValueText = strText;
    if (!m_Row.bDifferent)
    {
        double fFirst = 0.0; // of a vector; a text that is no number counts as 0
        std::string_view strRest = strText;
        ParseNumber(TakeWord(strRest), fFirst);
        m_Value = ClampValue(*m_Row.pField, fFirst);
    }
}

SPropEditorPlace CPropCtrlSpinner::GetPlace() const
{
    return {.fWidth = SPINNER_WIDTH};
}

void CPropCtrlSpinner::Meet(CPropInPlaceCtrl& other)
{
    if (dynamic_cast<CPropCtrlEdit*>(&other) != nullptr)
    {
        SetBuddy(other.GetWindow().GetControlId());
    }
}

std::string CPropCtrlSpinner::FormatValue() const
{
    std::string strHook = m_Context.hooks.FormatNumber(m_Row, m_Value);
    if (!strHook.empty())
    {
        return strHook;
    }
    return FormatNumber(m_Value, GetDigits(*m_Row.pField));
}

void CPropCtrlSpinner::Change(int nUnits)
{
    // Different values have no number to count from.
    if (!m_Row.bDifferent && nUnits != 0)
    {
        m_Value = ClampValue(*m_Row.pField, m_Value + m_Step * nUnits);
        Apply(FormatValue());
    }
}

bool CPropCtrlSpinner::OnNotify(SNotification& notification)
{
    if (notification.eKind != ENotify::SpinDelta)
    {
        return false;
    }
    notification.bRefused = true; // the position means nothing here
    Change(notification.iValue);
    return true;
}

bool CPropCtrlSpinner::OnLButtonDown(const SMouseEvent& event)
{
    m_bDragging = true;
    m_LastY = event.screen.y;
    SetWindowCapture();
    return false; // the arrow under the cursor steps
}

bool CPropCtrlSpinner::OnMouseMove(const SMouseEvent& event)
{
    // Over the arrows a press only repeats; outside them it drags.
    if (!m_bDragging || GetClientRect().Contains(event.point))
    {
        return false;
    }
    StopRepeat();
    const int nMoved = m_LastY - event.screen.y;
    m_LastY = event.screen.y;
    // The jump to the other side of the screen is no movement.
    if (std::abs(nMoved) < GetScreenSize().y / 2)
    {
        Change(nMoved);
    }
    WrapCursor(event.screen, nMoved);
    return true;
}

void CPropCtrlSpinner::WrapCursor(SScreenPoint at, int nMoved)
{
    const int nHeight = GetScreenSize().y;
    if (nMoved > 0 && at.y < TOP_EDGE)
    {
        SetCursorPos({at.x, nHeight - BOTTOM_GAP});
    }
    else if (nMoved < 0 && at.y >= nHeight - TOP_EDGE)
    {
        SetCursorPos({at.x, TOP_EDGE});
    }
}

bool CPropCtrlSpinner::OnLButtonUp(const SMouseEvent& /*event*/)
{
    if (m_bDragging)
    {
        m_bDragging = false;
        ReleaseCapture();
    }
    return false;
}
