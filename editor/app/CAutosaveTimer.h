#pragma once

#include <QTimer>

#include <functional>

class CAutosave;

// Gives the autosave its turns: after what happens in the window, and by itself as long as there is
// something to keep. Owned by the window. UI thread.
class CAutosaveTimer
{
public:
    // autosave: borrowed. onTurn: after each turn, with whether the level has changes that are not
    // saved.
    CAutosaveTimer(CAutosave& autosave, std::function<void(bool)> onTurn);

    void TakeTurn();

private:
    CAutosave& m_Autosave;
    std::function<void(bool)> m_OnTurn;
    QTimer m_Timer; // runs while there is something to keep
};
