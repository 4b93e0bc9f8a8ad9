#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

// Has what a person changes kept some seconds after it was changed: a process that is killed takes
// no more with it. Whatever a hand does in any window of the program may be a change; without it
// nothing is done. Owned by the window. UI thread.
class CKeepTimer : public QObject
{
public:
    // mayKeep: false while something is under way; it is asked again then. keep: looks itself
    // whether there is anything to keep.
    CKeepTimer(std::function<bool()> mayKeep, std::function<void()> keep);

    bool eventFilter(QObject* pReceiver, QEvent* pEvent) override;

private:
    void TakeTurn();

    std::function<bool()> m_MayKeep;
    std::function<void()> m_Keep;
    QTimer m_Timer;
};
