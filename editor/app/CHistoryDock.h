#pragma once

#include <QDockWidget>

#include <functional>

class CUndoStack;
class QListWidget;

// The undo history as a list, the state before the first step on top. A click goes to that state.
class CHistoryDock : public QDockWidget
{
public:
    // stack: borrowed, outlives the dock. onStep: after a click has changed the terrain.
    CHistoryDock(QWidget* pParent, CUndoStack& stack, std::function<void()> onStep);

    void Follow(); // shows the stack as it is now

private:
    void GoTo(int iRow);

    CUndoStack& m_Stack;
    std::function<void()> m_OnStep;
    QListWidget* m_pList; // the dock's
};
