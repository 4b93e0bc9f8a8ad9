#include "editor/app/CKeepTimer.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

namespace
{

constexpr int KEEP_MS = 2000; // the most that a kill costs

// The end of what a hand does; a button that is held has more to come. What is done to a window's
// frame comes as its new size and place alone.
bool MayChange(const QObject& receiver, const QEvent& event)
{
    const QEvent::Type eType = event.type();
    if (eType == QEvent::Resize || eType == QEvent::Move || eType == QEvent::WindowStateChange)
    {
        return event.spontaneous() && receiver.isWidgetType() &&
               static_cast<const QWidget&>(receiver).isWindow();
    }
    return eType == QEvent::MouseButtonRelease || eType == QEvent::TabletRelease ||
           eType == QEvent::KeyRelease || eType == QEvent::Wheel || eType == QEvent::Drop;
}

} // namespace

CKeepTimer::CKeepTimer(std::function<bool()> mayKeep, std::function<void()> keep)
    : m_MayKeep(std::move(mayKeep))
    , m_Keep(std::move(keep))
{
    m_Timer.setSingleShot(true);
    m_Timer.setInterval(KEEP_MS);
    m_Timer.callOnTimeout([this] { TakeTurn(); });
    QCoreApplication::instance()->installEventFilter(this);
}

bool CKeepTimer::eventFilter(QObject* pReceiver, QEvent* pEvent)
{
    // One that runs is left alone: started anew by each event, it would never come to its end.
    if (MayChange(*pReceiver, *pEvent) && !m_Timer.isActive())
    {
        m_Timer.start();
    }
    return false;
}

void CKeepTimer::TakeTurn()
{
    if (QApplication::mouseButtons() != Qt::NoButton || !m_MayKeep())
    {
        m_Timer.start();
        return;
    }
    m_Keep();
}
