#pragma once

#include "editor/core/IPreparedStep.h"
#include "engine/terrain/CProtectionEdit.h"
#include "host/CUndo.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

class CHostInput;
class CWorld;

// A step that changed which vertices are protected. Strokes are undone and redone between such
// steps, so each meets the protection that it was made under.
class CProtectionStep final : public CUndo, public IPreparedStep
{
public:
    // Borrowed, outlive the record's last step. uBefore, uAfter: ids of the protection.
    CProtectionStep(CWorld& world, const CHostInput& input, uint64_t uBefore, uint64_t uAfter);

    // What has changed; to be called before the first step. Needs no memory.
    void SetSquares(std::vector<SProtectedSquare>&& squares) { m_Squares = std::move(squares); }

    // False while a stroke runs, whose ground may not become another kind meanwhile.
    bool Prepare() override;

    bool IsTransient() const override { return false; }

    void Undo() override;
    void Redo() override;

    void OnNotify(uintptr_t) override {}

    size_t GetMemory() const; // bytes

private:
    CWorld& m_World;
    const CHostInput& m_Input;
    std::vector<SProtectedSquare> m_Squares;
    uint64_t m_Before;
    uint64_t m_After;
};
