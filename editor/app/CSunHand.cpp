#include "editor/app/CSunHand.h"

#include "editor/app/CCursorNote.h"
#include "editor/app/CViewInput.h"
#include "editor/app/KeyChords.h"
#include "editor/core/CKeyBindings.h"
#include "editor/core/Words.h"
#include "editor/view/SRenderSettings.h"

#include <QKeyEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr int NOTE_MS = 500;
constexpr double YAW_DEGREES = 0.5; // a pixel
constexpr double PITCH_DEGREES = 0.25;
constexpr float TURN = 360.0F;
constexpr float UPRIGHT = 90.0F;

} // namespace

CSunHand::CSunHand(SRenderSettings* pRender,
                   const CKeyBindings& keys,
                   CViewInput& input,
                   CCursorNote& note,
                   std::function<void()> onTurn,
                   std::function<void()> onEnd)
    : m_pRender(pRender)
    , m_Keys(keys)
    , m_Input(input)
    , m_Note(note)
    , m_OnTurn(std::move(onTurn))
    , m_OnEnd(std::move(onEnd))
{
    m_NoteTimer.setInterval(NOTE_MS);
    m_NoteTimer.callOnTimeout([this] { Show(); });
}

bool CSunHand::IsOwnKey(const QKeyEvent& event) const
{
    const SKeyCommand* pCommand = m_Keys.FindById(SUN_COMMAND);
    return pCommand != nullptr && pCommand->key.uKey != 0 && pCommand->key == GetChord(event);
}

bool CSunHand::Press(const QKeyEvent& event)
{
    if (IsHeld() && event.key() == Qt::Key_Escape)
    {
        Set(m_Yaw, m_Pitch);
        End();
        return true;
    }
    if (m_pRender == nullptr || !IsOwnKey(event))
    {
        return false;
    }
    // A drag goes on as it began.
    if (!event.isAutoRepeat() && !IsHeld() && m_Input.IsIdle())
    {
        m_bHeld = true;
        m_Held = SHeldKey::Of(event);
        m_Yaw = m_pRender->fSunYaw;
        m_Pitch = m_pRender->fSunPitch;
        // Where the cursor is not in the view, its first move there is the beginning.
        m_Start = m_Input.IsInside() ? std::optional<QPointF>(m_At) : std::nullopt;
        m_NoteTimer.start();
        Show();
    }
    return true;
}

bool CSunHand::Release(const QKeyEvent& event)
{
    if (!IsHeld() || !m_Held.IsReleasedBy(event))
    {
        return false;
    }
    End();
    return true;
}

bool CSunHand::TakesKey(const QKeyEvent& event) const
{
    return IsHeld() && (event.key() == Qt::Key_Escape || event.key() == m_Held.iKey);
}

bool CSunHand::Move(const QPointF& position)
{
    m_At = position;
    if (!IsHeld())
    {
        return false;
    }
    if (!m_Start)
    {
        m_Start = position;
    }
    const double fYaw = static_cast<double>(m_Yaw) + (position.x() - m_Start->x()) * YAW_DEGREES;
    const double fPitch =
        static_cast<double>(m_Pitch) - (position.y() - m_Start->y()) * PITCH_DEGREES;
    Set(static_cast<float>(fYaw), static_cast<float>(fPitch));
    return true;
}

void CSunHand::Set(float fYaw, float fPitch)
{
    m_pRender->fSunYaw = fYaw - std::floor(fYaw / TURN) * TURN;
    m_pRender->fSunPitch = std::clamp(fPitch, 0.0F, UPRIGHT);
    m_OnTurn();
    Show();
}

void CSunHand::Show()
{
    m_Note.ShowValue(QString(Words("sun %1°, %2° high"))
                         .arg(std::lround(m_pRender->fSunYaw))
                         .arg(std::lround(m_pRender->fSunPitch)));
}

void CSunHand::End()
{
    if (std::exchange(m_bHeld, false))
    {
        m_NoteTimer.stop();
        m_OnEnd();
    }
}
