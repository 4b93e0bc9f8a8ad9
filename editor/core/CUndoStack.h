#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class CUndo;

// The editor's one history. Owns every record from Add on. A record whose IsTransient is true takes
// no step of its own: it is dropped when the history comes to it.
class CUndoStack
{
public:
    CUndoStack();
    ~CUndoStack();
    CUndoStack(const CUndoStack&) = delete;
    CUndoStack& operator=(const CUndoStack&) = delete;

    // Takes ownership; null is ignored. What could be redone is destroyed.
    void Add(CUndo* pUndo);
    // One step back or forth. False when there is nothing to do.
    bool Undo();
    bool Redo();
    void Clear();
    // Tells every record, oldest first.
    void Notify(uintptr_t uCode);

    // Records that Undo would still take back; those that were taken back do not count.
    size_t GetCount() const { return m_Position; }

    size_t GetRedoCount() const { return m_Records.size() - m_Position; }

private:
    std::vector<std::unique_ptr<CUndo>> m_Records; // oldest first
    size_t m_Position = 0;                         // records before it are done, the rest undone
};
