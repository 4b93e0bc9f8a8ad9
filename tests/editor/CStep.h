#pragma once

#include "host/CUndo.h"

// A step of the history that changes nothing.
class CStep : public CUndo
{
public:
    bool IsTransient() const override { return false; }

    void Undo() override {}

    void Redo() override {}

    void OnNotify(uintptr_t) override {}
};
