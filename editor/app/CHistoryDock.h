#pragma once

#include <QDockWidget>

#include <cstddef>
#include <functional>
#include <string>

class CUndoStack;
class QListWidget;

// The undo history as a list, the state before the first step on top, which tells how many steps
// there were once before it. A click goes to that state.
class CHistoryDock : public QDockWidget
{
public:
    // stack: borrowed, outlives the dock. goTo: so many steps are to be done.
    CHistoryDock(QWidget* pParent, const CUndoStack& stack, std::function<void(size_t)> goTo);

    void Follow(); // shows the stack as it is now

private:
    void GoTo(int iRow);

    const CUndoStack& m_Stack;
    std::function<void(size_t)> m_GoTo;
    QListWidget* m_pList; // the dock's
    std::string m_Shown;  // tells one state of the stack from another
};
