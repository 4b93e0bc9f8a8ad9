#pragma once

#include "engine/terrain/SGroundAct.h"

#include <string>

class CHostHistory;
class CHostInput;
class CHostLevel;
class CHostObservers;
class CHostProtection;
class CWorld;
class IGroundFollower;

// For a list of steps: what the act does.
std::string GetGroundText(const SGroundAct& act);

// What a person does to the ground of the open level as a whole, each time as one step of the
// history: its size, its edges, where it lies. Ends a drag and an open step before, and tells the
// observers before and after. Owned by CEditorHost. UI thread.
class CHostGround
{
public:
    // Borrowed.
    CHostGround(CWorld& world,
                CHostInput& input,
                CHostHistory& history,
                CHostObservers& observers,
                CHostProtection& protection,
                CHostLevel& level);
    CHostGround(const CHostGround&) = delete;
    CHostGround& operator=(const CHostGround&) = delete;

    // False after one logged line, or when the user cancels, and nothing has changed: there is no
    // level, it cannot take the act, what lies over it cannot follow, or there is no memory.
    bool Do(const SGroundAct& act);

    void SetFollower(IGroundFollower* pFollower) { m_Follower = pFollower; } // borrowed; or null

    // While it is set, acts come that a run before this one has done already.
    void SetRepeating(bool bRepeating) { m_bRepeating = bRepeating; }

private:
    bool Change(const SGroundAct& act);

    CWorld& m_World;
    CHostInput& m_Input;
    CHostHistory& m_History;
    CHostObservers& m_Observers;
    CHostProtection& m_Protection;
    CHostLevel& m_Level;
    IGroundFollower* m_Follower = nullptr;
    bool m_bRepeating = false;
};
