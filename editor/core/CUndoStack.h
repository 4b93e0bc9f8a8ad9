#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class CUndo;

// Is told of the steps of a stack, whoever takes them. Borrowed by the stack.
class IUndoListener
{
public:
    virtual ~IUndoListener() = default;
    virtual void OnBeforeStep(bool bRedo) = 0; // also when there turns out to be nothing to do
    virtual void OnStep(bool bRedo) = 0;
};

// The editor's one history. Owns every record from Add on. A record whose IsTransient is true takes
// no step of its own: it is dropped when the history comes to it.
class CUndoStack
{
public:
    CUndoStack();
    ~CUndoStack();
    CUndoStack(const CUndoStack&) = delete;
    CUndoStack& operator=(const CUndoStack&) = delete;

    void SetListener(IUndoListener* pListener) { m_Listener = pListener; } // null for none

    // Takes ownership; null is ignored. What could be redone is destroyed. strText: what made the
    // record, for a list of steps.
    void Add(CUndo* pUndo, std::string strText = {});
    // One step back or forth. False when there is nothing to do.
    bool Undo();
    bool Redo();
    // Steps back or forth until nPosition records are done: 0 undoes everything. False, and nothing
    // happens, when there are fewer records.
    bool GoTo(size_t nPosition);
    void Clear();
    void DropRedo(); // nothing can be redone any longer
    // Tells every record, oldest first.
    void Notify(uintptr_t uCode);

    // Records that Undo would still take back; those that were taken back do not count.
    size_t GetCount() const { return m_Position; }

    size_t GetRedoCount() const { return m_Records.size() - m_Position; }

    // The step's place in the list, counted from 1, and its text: "3 Set height". i: below GetCount
    // + GetRedoCount, oldest first.
    std::string GetText(size_t i) const;

    // Names the state that the steps so far have led to. Undo and redo come back to a state of
    // before; no state after Clear has a name of before.
    uint64_t GetStateId() const;

private:
    struct SRecord
    {
        std::unique_ptr<CUndo> pUndo;
        std::string strText;
        uint64_t uId = 0;
    };

    void Drop(size_t nPlace);
    void Tell(bool bRedo);

    std::vector<SRecord> m_Records; // oldest first
    size_t m_Position = 0;          // records before it are done, the rest undone
    uint64_t m_LastId = 0;
    uint64_t m_BaseId = 0; // the state before the first record
    IUndoListener* m_Listener = nullptr;
};
