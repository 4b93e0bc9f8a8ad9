#include "editor/app/CBrushHand.h"

#include "editor/app/CCursorNote.h"
#include "editor/app/CViewInput.h"
#include "editor/app/KeyChords.h"
#include "editor/app/ToolTexts.h"
#include "editor/core/CKeyBindings.h"
#include "editor/core/Words.h"

#include <QKeyEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr int NOTE_MS = 500;
constexpr double DOUBLE_PIXELS = 120.0; // that make an extent twice as large
constexpr double WHOLE_PIXELS = 250.0;  // from 0 to 1
constexpr double COUNT_PIXELS = 20.0;   // for one more
constexpr double HEIGHT_PIXELS = 200.0; // for as much as it was, at least LEAST_HEIGHT
constexpr double LEAST_HEIGHT = 20.0;

bool IsShare(EBrushValue eValue)
{
    return eValue == EBrushValue::Power || eValue == EBrushValue::Hardness;
}

// The amount of a function that counts, and what it counts; null for one that has a height.
const char* GetCounted(const std::string& strFunction)
{
    return strFunction == "PosterizeFunction" ? Words("levels")
           : strFunction == "BlurFunction"    ? Words("neighbourhood")
                                              : nullptr;
}

// A sign of a number, or what corrects one.
bool IsNumberKey(const QKeyEvent& event)
{
    const QString strText = event.text();
    const bool bDigit = strText.size() == 1 && QString("0123456789.,").contains(strText);
    return bDigit || event.key() == Qt::Key_Minus || event.key() == Qt::Key_Backspace;
}

bool IsEndKey(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter ||
           event.key() == Qt::Key_Escape;
}

} // namespace

struct CBrushHand::SValue
{
    const char* pszCommand;
    const char* pszName;
    EBrushValue eValue;
};

const CBrushHand::SValue CBrushHand::VALUES[] = {
    {"size", TextKey("brush"), EBrushValue::Extent},
    {"power", TextKey("power"), EBrushValue::Power},
    {"hardness", TextKey("hardness"), EBrushValue::Hardness},
    {"amount", "", EBrushValue::Amount},
};

CBrushHand::CBrushHand(IPluginTools* pTools,
                       const CKeyBindings& keys,
                       CViewInput& input,
                       CCursorNote& note,
                       std::function<void()> onEnd)
    : m_pTools(pTools)
    , m_Keys(keys)
    , m_Input(input)
    , m_Note(note)
    , m_OnEnd(std::move(onEnd))
{
    m_NoteTimer.setInterval(NOTE_MS);
    m_NoteTimer.callOnTimeout([this] { Show(); });
}

const CBrushHand::SValue* CBrushHand::FindValue(const QKeyEvent& event) const
{
    const SKeyChord chord = GetChord(event);
    for (const SValue& value : VALUES)
    {
        const SKeyCommand* pCommand = m_Keys.FindById(std::string(HAND_COMMAND) + value.pszCommand);
        if (pCommand != nullptr && chord.uKey != 0 && pCommand->key == chord)
        {
            return &value;
        }
    }
    return nullptr;
}

bool CBrushHand::IsSameTool() const
{
    return m_Function == m_pTools->GetFunctionName();
}

bool CBrushHand::Press(const QKeyEvent& event)
{
    if (!IsHeld())
    {
        const SValue* pValue = FindValue(event);
        return pValue != nullptr && (event.isAutoRepeat() || Begin(*pValue, event));
    }
    // Another tool has come while the key was held, whose value this is not.
    if (!IsSameTool())
    {
        End();
        return false;
    }
    if (event.key() == Qt::Key_Escape)
    {
        m_Typed.clear();
        Set(m_Old);
        End();
        return true;
    }
    if (!IsNumberKey(event) && !IsEndKey(event))
    {
        return event.key() == m_Held.iKey || FindValue(event) != nullptr;
    }
    Type(event);
    return true;
}

bool CBrushHand::Begin(const SValue& value, const QKeyEvent& event)
{
    const bool bTool = m_pTools != nullptr && !m_pTools->GetFunctionName().empty() &&
                       (m_pTools->IsTerraforming() ||
                        (m_pTools->IsPainting() && value.eValue == EBrushValue::Extent));
    if (!m_Input.IsIdle())
    {
        return true; // a drag goes on as it began
    }
    if (!bTool)
    {
        m_Note.ShowValue(Words(NO_TOOL));
        return true;
    }
    if (std::isnan(m_pTools->GetBrushValue(value.eValue)))
    {
        m_Note.ShowValue(Words(NO_AMOUNT));
        return true;
    }
    m_pValue = &value;
    m_Held = SHeldKey::Of(event);
    m_Function = m_pTools->GetFunctionName();
    m_Old = m_pTools->GetBrushValue(value.eValue);
    m_From = m_Old;
    // Where the cursor is not in the view, its first move there is the beginning.
    m_Start = m_Input.IsInside() ? std::optional<QPointF>(m_At) : std::nullopt;
    m_Typed.clear();
    m_NoteTimer.start();
    Show();
    return true;
}

bool CBrushHand::Release(const QKeyEvent& event)
{
    if (!IsHeld() || !m_Held.IsReleasedBy(event))
    {
        return false;
    }
    TakeTyped();
    End();
    return true;
}

bool CBrushHand::TakesKey(const QKeyEvent& event) const
{
    return IsHeld() && (IsNumberKey(event) || IsEndKey(event) || event.key() == m_Held.iKey);
}

void CBrushHand::Type(const QKeyEvent& event)
{
    if (IsEndKey(event))
    {
        TakeTyped();
    }
    else if (event.key() == Qt::Key_Backspace)
    {
        m_Typed.chop(1);
    }
    else
    {
        // Some keyboards have the comma in the place of the decimal point.
        m_Typed += event.text() == "," ? QString(".") : event.text();
    }
    Show();
}

void CBrushHand::TakeTyped()
{
    bool bNumber = false;
    const float fTyped = std::exchange(m_Typed, QString()).toFloat(&bNumber);
    if (bNumber && IsSameTool())
    {
        Set(fTyped);
    }
    m_From = m_pTools->GetBrushValue(m_pValue->eValue);
    m_Start = m_At; // the mouse goes on from here
}

bool CBrushHand::Move(const QPointF& position)
{
    m_At = position;
    if (!IsHeld())
    {
        return false;
    }
    if (!IsSameTool())
    {
        End();
        return false;
    }
    // As long as a number is being typed the mouse changes nothing; it then goes on from where it
    // is.
    if (!m_Start || !m_Typed.isEmpty())
    {
        m_Start = position;
        return true;
    }
    // To the right and upwards is more.
    const double fPixels = position.x() - m_Start->x() - (position.y() - m_Start->y());
    if (IsShare(m_pValue->eValue))
    {
        // From 1 on a hardness changes nothing more, so the mouse ends there; more can be typed.
        const double fShare = static_cast<double>(m_From) + fPixels / WHOLE_PIXELS;
        Set(RoundShare(static_cast<float>(std::clamp(fShare, 0.0, 1.0))));
    }
    else if (m_pValue->eValue == EBrushValue::Extent)
    {
        const double fExtent = static_cast<double>(m_From) * std::exp2(fPixels / DOUBLE_PIXELS);
        Set(RoundExtent(static_cast<float>(fExtent)));
    }
    else
    {
        const bool bCount = GetCounted(m_Function) != nullptr;
        const double fFrom = static_cast<double>(m_From);
        const double fPixel =
            bCount ? 1.0 / COUNT_PIXELS : std::max(std::fabs(fFrom), LEAST_HEIGHT) / HEIGHT_PIXELS;
        Set(static_cast<float>(std::round(fFrom + fPixels * fPixel)));
    }
    return true;
}

void CBrushHand::Set(float fValue)
{
    m_pTools->SetBrushValue(m_pValue->eValue, fValue);
    m_Input.RepeatHover(); // where the key went down
    Show();
}

void CBrushHand::Show()
{
    const float fValue = m_pTools->GetBrushValue(m_pValue->eValue);
    const bool bAmount = m_pValue->eValue == EBrushValue::Amount;
    const char* pszCounted = GetCounted(m_Function);
    const char* pszName = !bAmount                ? Words(m_pValue->pszName)
                          : pszCounted != nullptr ? pszCounted
                                                  : Words("height");
    const QString strValue = !m_Typed.isEmpty()          ? m_Typed
                             : IsShare(m_pValue->eValue) ? GetShareText(fValue)
                             : bAmount && pszCounted != nullptr
                                 ? QString::number(std::lround(fValue))
                                 : GetExtentText(fValue);
    m_Note.ShowValue(QString(pszName) + " " + strValue);
}

void CBrushHand::End()
{
    if (std::exchange(m_pValue, nullptr) != nullptr)
    {
        m_NoteTimer.stop();
        m_OnEnd();
    }
}
