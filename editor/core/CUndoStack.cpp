#include "editor/core/CUndoStack.h"

#include "host/CUndo.h"

CUndoStack::CUndoStack() = default;

CUndoStack::~CUndoStack() = default;

void CUndoStack::Add(CUndo* pUndo)
{
    if (pUndo == nullptr)
    {
        return;
    }
    m_Records.resize(m_Position);
    m_Records.emplace_back(pUndo);
    m_Position = m_Records.size();
}

bool CUndoStack::Undo()
{
    while (m_Position > 0)
    {
        --m_Position;
        if (!m_Records[m_Position]->IsTransient())
        {
            m_Records[m_Position]->Undo();
            return true;
        }
        m_Records.erase(m_Records.begin() + static_cast<std::ptrdiff_t>(m_Position));
    }
    return false;
}

bool CUndoStack::Redo()
{
    while (m_Position < m_Records.size())
    {
        if (!m_Records[m_Position]->IsTransient())
        {
            m_Records[m_Position]->Redo();
            ++m_Position;
            return true;
        }
        m_Records.erase(m_Records.begin() + static_cast<std::ptrdiff_t>(m_Position));
    }
    return false;
}

void CUndoStack::Clear()
{
    m_Position = 0;
    m_Records.clear();
}

void CUndoStack::Notify(uintptr_t uCode)
{
    for (const std::unique_ptr<CUndo>& pRecord : m_Records)
    {
        pRecord->OnNotify(uCode);
    }
}
