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

using Parts = std::vector<std::unique_ptr<CUndo>>;

bool IsReady(const Parts& parts)
{
    return std::all_of(parts.begin(),
                       parts.end(),
                       [](const std::unique_ptr<CUndo>& pPart)
                       {
                           auto* pStep = dynamic_cast<IPreparedStep*>(pPart.get());
                           return pStep == nullptr || pStep->Prepare();
                       });
}

bool IsTransient(const Parts& parts)
{
    return std::all_of(parts.begin(),
                       parts.end(),
                       [](const std::unique_ptr<CUndo>& pPart) { return pPart->IsTransient(); });
}

// A part that takes no step of its own does nothing beside others either.
void UndoParts(const Parts& parts)
{
    for (auto it = parts.rbegin(); it != parts.rend(); ++it)
    {
        if (!(*it)->IsTransient())
        {
            (*it)->Undo();
        }
    }
}

void RedoParts(const Parts& parts)
{
    for (const std::unique_ptr<CUndo>& pPart : parts)
    {
        if (!pPart->IsTransient())
        {
            pPart->Redo();
        }
    }
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
    Parts first;
    try
    {
        MakeRoom(first);
    }
    catch (const std::bad_alloc&)
    {
        pOwned->Undo();
        CrashLog("[CUndoStack::Add] no memory to remember the step; it is taken back\n");
        return false;
    }
    if (m_bOpenRecord)
    {
        SRecord& record = m_Records.back();
        record.parts.push_back(std::move(pOwned));
        record.uId = ++m_LastId; // the step leads to another state now
        record.nBytes += nBytes;
    }
    else
    {
        DropRedo();
        first.push_back(std::move(pOwned));
        m_Records.push_back(
            {std::move(first), std::move(strText), ++m_LastId, nBytes, {}, std::time(nullptr)});
        m_bOpenRecord = m_bOpen;
    }
    m_Position = m_Records.size();
    m_Bytes += nBytes;
    KeepLimit();
    return true;
}

// For one more record; what can be redone stays where this fails.
void CUndoStack::MakeRoom(Parts& first)
{
    if (m_bOpenRecord)
    {
        Parts& parts = m_Records.back().parts;
        if (parts.size() == parts.capacity())
        {
            parts.reserve(2 * parts.size());
        }
        return;
    }
    first.reserve(1);
    if (m_Position == m_Records.capacity())
    {
        m_Records.reserve(std::max(FIRST_CAPACITY, 2 * m_Position));
    }
}

bool CUndoStack::BeginStep()
{
    return !std::exchange(m_bOpen, true);
}

void CUndoStack::EndStep()
{
    m_bOpen = false;
    m_bOpenRecord = false;
}

void CUndoStack::CancelStep()
{
    if (m_bOpenRecord)
    {
        UndoParts(m_Records.back().parts);
        Drop(--m_Position);
    }
    EndStep();
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
    EndStep();
    while (m_Position > 0)
    {
        const Parts& parts = m_Records[m_Position - 1].parts;
        // Asked before anything moves: where the step cannot be taken the history stays as it is.
        if (!IsReady(parts))
        {
            return false;
        }
        --m_Position;
        if (!IsTransient(parts))
        {
            UndoParts(parts);
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
    EndStep();
    while (m_Position < m_Records.size())
    {
        const Parts& parts = m_Records[m_Position].parts;
        if (!IsReady(parts))
        {
            return false;
        }
        if (!IsTransient(parts))
        {
            RedoParts(parts);
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
    bool bTaken = true;
    // Records that take no step of their own may go on the way, which is no fault.
    while (bTaken && m_Position > nPosition)
    {
        bTaken = Undo() || m_Position <= nPosition;
    }
    while (bTaken && m_Position < std::min(nPosition, m_Records.size()))
    {
        bTaken = Redo() || m_Position == m_Records.size();
    }
    return bTaken;
}

void CUndoStack::Clear()
{
    m_Position = 0;
    m_Records.clear();
    m_Bytes = 0;
    m_GivenUp = 0;
    m_bOpenRecord = false; // what follows in an open step is the first of it
    m_BaseId = ++m_LastId;
}

void CUndoStack::DropRedo()
{
    while (m_Records.size() > m_Position)
    {
        Drop(m_Records.size() - 1);
    }
}

void CUndoStack::Describe(const std::string& strDetail)
{
    if (m_Position > 0 && m_Records[m_Position - 1].strDetail.empty())
    {
        m_Records[m_Position - 1].strDetail = strDetail;
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
