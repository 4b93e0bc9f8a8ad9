#pragma once

#include "editor/core/CUndoStack.h"
#include "editor/core/IStepKeeper.h"
#include "host/HostTypes.h"

#include <cstddef>
#include <string>

class CChangeCount;
class CHostInput;
class CHostObservers;
class CPluginRegistry;

// The steps of a host, back and forth: those of the level in its undo stack, and those of a stroke
// on the bitmap, which the plug-in keeps. Tells the observers of each. Owned by CEditorHost. UI
// thread.
class CHostHistory : private IUndoListener, private IStepKeeper
{
public:
    // Borrowed. changes: what a new record takes is counted there.
    CHostHistory(const CPluginRegistry& registry,
                 CHostInput& input,
                 CHostObservers& observers,
                 CChangeCount& changes);
    ~CHostHistory() override;
    CHostHistory(const CHostHistory&) = delete;
    CHostHistory& operator=(const CHostHistory&) = delete;

    // Takes ownership, also when it fails. strText: what made the record.
    void Add(CUndo* pUndo, std::string strText);

    // The same for a record of the host's own, which takes nBytes of memory. False when there was
    // none for it; it is undone then.
    bool AddStep(CUndo* pUndo, std::string strText, size_t nBytes);

    // What comes until EndStep is one step of the history, see CUndoStack; observers hear of both.
    // view: a press in another one ends it, and so do undo and redo, another level and another
    // terrain. A stroke that is dropped for want of memory takes all of the step back. False, and
    // nothing happens, while one is open.
    bool BeginStep(ViewId view);
    // Nothing when none is open, or with a view when it is another one's.
    void EndStep(ViewId view = NO_VIEW);

    bool IsStepOpen() const { return m_Stack.IsStepOpen(); }

    bool Undo(); // false when there is nothing
    bool Redo();
    bool GoToStep(size_t nPosition); // as CUndoStack::GoTo
    // Takes the last stroke on the bitmap back, or paints it again. Nothing without one.
    void StepPaint(bool bRedo);

    CUndoStack& GetStack() { return m_Stack; }

private:
    void Describe();

    // IUndoListener
    void OnBeforeStep(bool bRedo) override;
    void OnStep(bool bRedo) override;

    // IStepKeeper
    void OnPress(ViewId view) override;

    void OnDropped() override { m_Stack.CancelStep(); }

    const CPluginRegistry& m_Registry;
    CHostInput& m_Input;
    CHostObservers& m_Observers;
    CChangeCount& m_Changes;
    CUndoStack m_Stack;
    ViewId m_StepView = NO_VIEW; // of the step that is open
};
