#include "editor/core/CUndoStack.h"

#include "editor/core/IPreparedStep.h"
#include "host/CUndo.h"
#include "host/Log.h"

#include <algorithm>
#include <new>
#include <utility>

namespace
{

constexpr size_t FIRST_CAPACITY = 64;

bool IsReady(CUndo& undo)
{
    auto* pStep = dynamic_cast<IPreparedStep*>(&undo);
    return pStep == nullptr || pStep->Prepare();
}

} // namespace

CUndoStack::CUndoStack() = default;

CUndoStack::~CUndoStack() = default;

bool CUndoStack::Add(CUndo* pUndo, std::string strText, size_t nBytes)
{
    if (pUndo == nullptr)
    {
        return true;
    }
    std::unique_ptr<CUndo> pOwned(pUndo);
    try
    {
        if (m_Position == m_Records.capacity()) // what can be redone stays where this fails
        {
            m_Records.reserve(std::max(FIRST_CAPACITY, 2 * m_Position));
        }
    }
    catch (const std::bad_alloc&)
    {
        pOwned->Undo();
        CrashLog("[CUndoStack::Add] no memory to remember the step; it is taken back\n");
        return false;
    }
    DropRedo();
    m_Records.push_back({std::move(pOwned), std::move(strText), ++m_LastId, nBytes});
    m_Position = m_Records.size();
    m_Bytes += nBytes;
    KeepLimit();
    return true;
}

void CUndoStack::SetLimit(size_t nBytes)
{
    m_Limit = nBytes;
    KeepLimit();
}

// Undone records are a way forward from where the history is, so they go from their far end.
void CUndoStack::KeepLimit()
{
    while (m_Limit > 0 && m_Bytes > m_Limit && m_Records.size() > 1)
    {
        if (m_Position > 1)
        {
            // The state behind the record that goes is the oldest one that undo still reaches.
            m_BaseId = m_Records.front().uId;
            ++m_GivenUp;
            --m_Position;
            Drop(0);
        }
        else
        {
            Drop(m_Records.size() - 1);
        }
    }
}

bool CUndoStack::Undo()
{
    if (m_Listener != nullptr)
    {
        m_Listener->OnBeforeStep(false);
    }
    while (m_Position > 0)
    {
        CUndo& undo = *m_Records[m_Position - 1].pUndo;
        // Asked before anything moves: where the step cannot be taken the history stays as it is.
        if (!IsReady(undo))
        {
            return false;
        }
        --m_Position;
        if (!undo.IsTransient())
        {
            undo.Undo();
            Tell(false);
            return true;
        }
        Drop(m_Position);
    }
    return false;
}

bool CUndoStack::Redo()
{
    if (m_Listener != nullptr)
    {
        m_Listener->OnBeforeStep(true);
    }
    while (m_Position < m_Records.size())
    {
        CUndo& undo = *m_Records[m_Position].pUndo;
        if (!IsReady(undo))
        {
            return false;
        }
        if (!undo.IsTransient())
        {
            undo.Redo();
            ++m_Position;
            Tell(true);
            return true;
        }
        Drop(m_Position);
    }
    return false;
}

bool CUndoStack::GoTo(size_t nPosition)
{
    if (nPosition > m_Records.size())
    {
        return false;
    }
    while (m_Position > nPosition && Undo())
    {
    }
    while (m_Position < nPosition && Redo())
    {
    }
    return true;
}

void CUndoStack::Clear()
{
    m_Position = 0;
    m_Records.clear();
    m_Bytes = 0;
    m_GivenUp = 0;
    m_BaseId = ++m_LastId;
}

void CUndoStack::DropRedo()
{
    while (m_Records.size() > m_Position)
    {
        Drop(m_Records.size() - 1);
    }
}

std::string CUndoStack::GetText(size_t i) const
{
    return std::to_string(m_GivenUp + i + 1) + " " + m_Records[i].strText;
}

uint64_t CUndoStack::GetStateId() const
{
    return m_Position > 0 ? m_Records[m_Position - 1].uId : m_BaseId;
}

void CUndoStack::Drop(size_t nPlace)
{
    m_Bytes -= m_Records[nPlace].nBytes;
    m_Records.erase(m_Records.begin() + static_cast<std::ptrdiff_t>(nPlace));
}

void CUndoStack::Tell(bool bRedo)
{
    if (m_Listener != nullptr)
    {
        m_Listener->OnStep(bRedo);
    }
}
