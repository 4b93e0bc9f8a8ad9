#pragma once

#include "editor/core/IHostObserver.h"
#include "engine/terrain/GroundChange.h"

#include <vector>

class CEditorHost;
struct SSymmetry;

// Keeps a centre of the symmetry that was chosen over the same place of the ground when that is
// changed as a whole, and when such a step is taken back or done again. Owned by the menus.
class CCentreKeeper : public IHostObserver
{
public:
    CCentreKeeper(CEditorHost& host, SSymmetry& symmetry); // borrowed
    ~CCentreKeeper() override;
    CCentreKeeper(const CCentreKeeper&) = delete;
    CCentreKeeper& operator=(const CCentreKeeper&) = delete;

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

private:
    struct SMove
    {
        uint64_t uState = 0; // of the history, after the act
        SGroundMeasures before;
        SGroundAct act;
    };

    const SMove* Find(uint64_t uState) const;
    void Move(const SGroundMeasures& before, const SGroundAct& act);

    CEditorHost& m_Host;
    SSymmetry& m_Symmetry;
    std::vector<SMove> m_Moves; // of this level
    SGroundMeasures m_Before;   // of the act under way
    uint64_t m_State = 0;       // before the undo under way
};
