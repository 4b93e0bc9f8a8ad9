#pragma once

#include "editor/core/CUndoStack.h"

#include <cstddef>
#include <string>

class CChangeCount;
class CHostInput;
class CHostObservers;
class CPluginRegistry;

// The steps of a host, back and forth: those of the level in its undo stack, and those of a stroke
// on the bitmap, which the plug-in keeps. Tells the observers of each. Owned by CEditorHost. UI
// thread.
class CHostHistory : private IUndoListener
{
public:
    // Borrowed. changes: what a new record takes is counted there.
    CHostHistory(const CPluginRegistry& registry,
                 CHostInput& input,
                 CHostObservers& observers,
                 CChangeCount& changes);
    CHostHistory(const CHostHistory&) = delete;
    CHostHistory& operator=(const CHostHistory&) = delete;

    // Takes ownership, also when it fails. strText: what made the record.
    void Add(CUndo* pUndo, std::string strText);

    // The same for a record of the host's own, which takes nBytes of memory. False when there was
    // none for it; it is undone then.
    bool AddStep(CUndo* pUndo, std::string strText, size_t nBytes);

    bool Undo(); // false when there is nothing
    bool Redo();
    bool GoToStep(size_t nPosition); // as CUndoStack::GoTo
    // Takes the last stroke on the bitmap back, or paints it again. Nothing without one.
    void StepPaint(bool bRedo);

    CUndoStack& GetStack() { return m_Stack; }

private:
    // IUndoListener
    void OnBeforeStep(bool bRedo) override;
    void OnStep(bool bRedo) override;

    const CPluginRegistry& m_Registry;
    CHostInput& m_Input;
    CHostObservers& m_Observers;
    CChangeCount& m_Changes;
    CUndoStack m_Stack;
};
