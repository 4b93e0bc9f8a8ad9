#pragma once

#include <cstdint>

// One record of the editor's undo stack. Owned by the host once EditorHost::AddUndo has it.
class CUndo
{
public:
    virtual ~CUndo() = default;
    virtual bool IsTransient() const = 0; // true: the host may drop it without a step back
    virtual void Undo() = 0;
    virtual void Redo() = 0;
    virtual void OnNotify(uintptr_t uCode) = 0;
};
