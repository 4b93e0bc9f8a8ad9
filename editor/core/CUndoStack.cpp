#include "editor/core/CUndoStack.h"

#include "host/CUndo.h"

#include <utility>

CUndoStack::CUndoStack() = default;

CUndoStack::~CUndoStack() = default;

void CUndoStack::Add(CUndo* pUndo, std::string strText)
{
    if (pUndo == nullptr)
    {
        return;
    }
    m_Records.resize(m_Position);
    m_Records.push_back({std::unique_ptr<CUndo>(pUndo), std::move(strText), ++m_LastId});
    m_Position = m_Records.size();
}

bool CUndoStack::Undo()
{
    if (m_Listener != nullptr)
    {
        m_Listener->OnBeforeStep(false);
    }
    while (m_Position > 0)
    {
        --m_Position;
        if (!m_Records[m_Position].pUndo->IsTransient())
        {
            m_Records[m_Position].pUndo->Undo();
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
        if (!m_Records[m_Position].pUndo->IsTransient())
        {
            m_Records[m_Position].pUndo->Redo();
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
    m_BaseId = ++m_LastId;
}

void CUndoStack::DropRedo()
{
    m_Records.resize(m_Position);
}

void CUndoStack::Notify(uintptr_t uCode)
{
    for (const SRecord& record : m_Records)
    {
        record.pUndo->OnNotify(uCode);
    }
}

std::string CUndoStack::GetText(size_t i) const
{
    return std::to_string(i + 1) + " " + m_Records[i].strText;
}

uint64_t CUndoStack::GetStateId() const
{
    return m_Position > 0 ? m_Records[m_Position - 1].uId : m_BaseId;
}

void CUndoStack::Drop(size_t nPlace)
{
    m_Records.erase(m_Records.begin() + static_cast<std::ptrdiff_t>(nPlace));
}

void CUndoStack::Tell(bool bRedo)
{
    if (m_Listener != nullptr)
    {
        m_Listener->OnStep(bRedo);
    }
}
