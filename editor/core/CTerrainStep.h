#pragma once

#include "editor/core/CHeightStore.h"
#include "editor/core/IPreparedStep.h"
#include "host/CUndo.h"

class CLevelHeights;

// A step that replaced the whole terrain: an import, another resolution, a height map that was read
// again. Holds the terrain that is not there at present; undo and redo put it in place of the other
// one, which it then holds.
class CTerrainStep final : public CUndo, public IPreparedStep
{
public:
    explicit CTerrainStep(CLevelHeights& heights); // borrowed, outlives the record's last step

    void Hold(SHeightField&& before); // the terrain that was replaced

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
    SHeightField m_Ready; // taken from the store for the step that follows
};
