#include "editor/core/CHostGround.h"

#include "editor/core/CHostHistory.h"
#include "editor/core/CHostInput.h"
#include "editor/core/CHostLevel.h"
#include "editor/core/CHostObservers.h"
#include "editor/core/CHostProtection.h"
#include "editor/core/IGroundFollower.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/GroundChange.h"
#include "engine/world/CWorld.h"
#include "host/Log.h"

#include <utility>

std::string GetGroundText(const SGroundAct& act)
{
    switch (act.eKind)
    {
    case EGround::Size:
        return Words("Size of the level");
    case EGround::Extend:
        return Words("Grow or crop");
    case EGround::Shift:
        return Words("Shift ground");
    case EGround::Turn:
        return act.iTurns == 2
                   ? Words("Turn ground half round")
                   : (act.iTurns == 1 ? Words("Turn ground right") : Words("Turn ground left"));
    case EGround::MirrorX:
        return Words("Mirror ground in x");
    case EGround::MirrorZ:
        return Words("Mirror ground in z");
    case EGround::Raise:
        break;
    }
    return act.fBy < 0.0F ? Words("Lower all ground") : Words("Raise all ground");
}

CHostGround::CHostGround(CWorld& world,
                         CHostInput& input,
                         CHostHistory& history,
                         CHostObservers& observers,
                         CHostProtection& protection,
                         CHostLevel& level)
    : m_World(world)
    , m_Input(input)
    , m_History(history)
    , m_Observers(observers)
    , m_Protection(protection)
    , m_Level(level)
{
}

bool CHostGround::Do(const SGroundAct& act)
{
    m_Input.EndDrag();
    m_Protection.End();
    m_History.EndStep();
    const CTerrain* pTerrain = m_World.GetCTerrain();
    const char* pszFault = pTerrain == nullptr ? "there is no level"
                                               : FindGroundFault(GetGroundMeasures(*pTerrain), act);
    if (pszFault != nullptr)
    {
        CrashLog("[CHostGround::Do] %s\n", pszFault);
        return false;
    }
    m_Observers.TellBefore({.eKind = EHostEvent::Reshaped});
    bool bDone = false;
    m_Input.Guard("CHostGround::Do", [&] { bDone = Change(act); });
    if (m_Follower != nullptr)
    {
        m_Input.Guard("CHostGround::Do", [&] { m_Follower->OnDone(bDone); });
    }
    m_Observers.Tell({.eKind = EHostEvent::Reshaped, .pGround = bDone ? &act : nullptr});
    return bDone;
}

// All that may fail comes before the terrain is another one.
bool CHostGround::Change(const SGroundAct& act)
{
    SHeightField field;
    std::unique_ptr<IGroundCompanion> pCompanion;
    return MakeChangedGround(*m_World.GetCTerrain(), act, field) &&
           (m_Follower == nullptr || m_Follower->Follow(act, m_bRepeating, pCompanion)) &&
           m_Level.GetHeights().Change(std::move(field), GetGroundText(act), std::move(pCompanion));
}
