#include "editor/app/CAutosaveTimer.h"

#include "editor/autosave/CAutosave.h"

#include <utility>

namespace
{

constexpr int TURN_MS = 2000;
constexpr int COPYING_MS = 100; // until the copy is there

} // namespace

CAutosaveTimer::CAutosaveTimer(CAutosave& autosave, std::function<void(bool)> onTurn)
    : m_Autosave(autosave)
    , m_OnTurn(std::move(onTurn))
{
    m_Timer.setSingleShot(true);
    m_Timer.callOnTimeout([this] { TakeTurn(); });
}

void CAutosaveTimer::TakeTurn()
{
    m_Autosave.Tick(CAutosave::TimePoint::clock::now());
    const bool bChanged = m_Autosave.IsChanged();
    m_OnTurn(bChanged);
    const bool bCopying = m_Autosave.IsCopying();
    const int iPause = bCopying ? COPYING_MS : TURN_MS;
    if (!bCopying && !bChanged)
    {
        m_Timer.stop();
    }
    // A timer that runs is left alone: started anew by each event, it would never come to its end
    // while the user works.
    else if (!m_Timer.isActive() || m_Timer.interval() != iPause)
    {
        m_Timer.start(iPause);
    }
}
