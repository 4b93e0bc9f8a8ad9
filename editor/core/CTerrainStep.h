#pragma once

#include "editor/core/CHeightStore.h"
#include "editor/core/IGroundFollower.h"
#include "editor/core/IPreparedStep.h"
#include "host/CUndo.h"

#include <memory>

class CLevelHeights;

// A step that replaced the whole terrain: an import, another resolution, ground that was reshaped,
// a height map that was read again. Holds the terrain that is not there at present; undo and redo
// put it in place of the other one, which it then holds.
class CTerrainStep final : public CUndo, public IPreparedStep
{
public:
    explicit CTerrainStep(CLevelHeights& heights); // borrowed, outlives the record's last step

    // The terrain that was replaced, and what went along with it; or null.
    void Hold(SHeightField&& before, std::unique_ptr<IGroundCompanion> pCompanion = nullptr);

    bool Prepare() override;

    bool IsTransient() const override { return false; }

    void Undo() override { Exchange(); }

    void Redo() override { Exchange(); }

    void OnNotify(uintptr_t) override {}

    size_t GetMemory() const { return m_Other.GetMemory(); } // bytes

private:
    void Exchange();

    CLevelHeights& m_Heights;
    CHeightStore m_Other;
    std::unique_ptr<IGroundCompanion> m_Companion;
    SHeightField m_Ready; // taken from the store for the step that follows
};
