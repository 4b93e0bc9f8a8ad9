#pragma once

#include <cstdint>

// One record of the editor's undo stack. A plug-in makes it with what has been done already, fills
// it, and hands it to EditorHost::AddUndo, which owns it from then on; it keeps no pointer. UI
// thread.
//
// Undo and Redo come in turns and in the order of the stack: Undo finds the level as it was right
// after the edit, Redo as it was right before, bit for bit. They ask the World for the terrain.
// An editor ends a drag before a step; a script may step within one.
// They write the level and redraw, add no records and change no modes. A host that has no memory
// for the record calls Undo at once, inside AddUndo, and destroys it.
//
// Records are destroyed when another edit follows an undo, when the stack's limit of memory is
// reached, when the level goes, and before the library is closed. By then the terrain may be
// another one: the destructor frees memory and touches nothing else.
class CUndo
{
public:
    virtual ~CUndo() = default;
    // Asked before each step: true drops the record instead, and the step goes on to the next one.
    virtual bool IsTransient() const = 0;
    virtual void Undo() = 0;                    // back to before the edit
    virtual void Redo() = 0;                    // to after the edit
    virtual void OnNotify(uintptr_t uCode) = 0; // a host's own codes; ours sends none
};
