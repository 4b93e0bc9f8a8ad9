#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
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
// no step of its own: it is dropped when the history comes to it. Where the records together take
// more memory than allowed the oldest ones go for good; the newest one always stays.
//
// Between BeginStep and EndStep all records that come are one step: undone from the last to the
// first, redone in the order in which they came. Undo and redo end it first.
class CUndoStack
{
public:
    CUndoStack();
    ~CUndoStack();
    CUndoStack(const CUndoStack&) = delete;
    CUndoStack& operator=(const CUndoStack&) = delete;

    void SetListener(IUndoListener* pListener) { m_Listener = pListener; } // null for none

    // Takes ownership, also when it fails; null is ignored. What could be redone is destroyed.
    // strText: what made the record, for a list of steps. nBytes: memory that the record takes, as
    // far as the caller knows. False, and the history is as it was, when there is no memory: the
    // record is then undone before it goes, because nothing else could undo it.
    bool Add(CUndo* pUndo, std::string strText = {}, size_t nBytes = 0);
    // The records that follow are one step, named after the first of them. False, and nothing
    // happens, while such a step is open.
    bool BeginStep();
    // The step is whole; there is none when no record came. Nothing when none is open.
    void EndStep();
    // Takes back what the open step has done so far, as if it had never begun; what could be redone
    // before it stays gone. Needs no memory. Nothing when none is open.
    void CancelStep();

    bool IsStepOpen() const { return m_bOpen; }

    // Bytes that all records may take together; 0 is no limit.
    void SetLimit(size_t nBytes);

    size_t GetLimit() const { return m_Limit; }

    // One step back or forth. False when there is nothing to do, or the record cannot do it (see
    // IPreparedStep).
    bool Undo();
    bool Redo();
    // Steps back or forth until nPosition records are done: 0 undoes everything. False, and nothing
    // happens, when there are fewer records; false, too, where a record on the way cannot take its
    // step, and the history stays there.
    bool GoTo(size_t nPosition);
    void Clear();
    void DropRedo(); // nothing can be redone any longer

    // Records that Undo would still take back; those that were taken back do not count.
    size_t GetCount() const { return m_Position; }

    size_t GetRedoCount() const { return m_Records.size() - m_Position; }

    // Oldest records that went because of the limit, since the last Clear.
    size_t GetGivenUpCount() const { return m_GivenUp; }

    // The step's number, which it keeps, and its text: "3 Set height". i: below GetCount +
    // GetRedoCount, oldest first.
    std::string GetText(size_t i) const;

    // More of a step, for a list of them: what Describe has said, and when its first record came.
    const std::string& GetDetail(size_t i) const { return m_Records[i].strDetail; }

    std::time_t GetTime(size_t i) const { return m_Records[i].time; }

    // Says of the newest step what and where it is: "14 points at 120, 80". Nothing where it has
    // been said, or without a step.
    void Describe(const std::string& strDetail);

    // Names the state that the steps so far have led to. Undo and redo come back to a state of
    // before; no state after Clear has a name of before, and neither has one whose way back was
    // given up.
    uint64_t GetStateId() const;

private:
    struct SRecord
    {
        std::vector<std::unique_ptr<CUndo>> parts; // never empty, oldest first
        std::string strText;
        uint64_t uId = 0;
        size_t nBytes = 0;
        std::string strDetail;
        std::time_t time = 0;
    };

    void MakeRoom(std::vector<std::unique_ptr<CUndo>>& first);
    void Drop(size_t nPlace);
    void KeepLimit();
    void Tell(bool bRedo);

    std::vector<SRecord> m_Records; // oldest first
    size_t m_Position = 0;          // records before it are done, the rest undone
    uint64_t m_LastId = 0;
    uint64_t m_BaseId = 0; // the state before the first record
    size_t m_Bytes = 0;    // of all records
    size_t m_Limit = 0;
    size_t m_GivenUp = 0;
    bool m_bOpen = false;       // a step was begun and has not ended
    bool m_bOpenRecord = false; // and has a record, which is the last one
    IUndoListener* m_Listener = nullptr;
};
