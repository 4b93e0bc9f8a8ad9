#include "editor/app/CCentreKeeper.h"

#include "editor/core/CEditorHost.h"
#include "editor/view/SSymmetry.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <algorithm>

CCentreKeeper::CCentreKeeper(CEditorHost& host, SSymmetry& symmetry)
    : m_Host(host)
    , m_Symmetry(symmetry)
{
    m_Host.GetObservers().Add(this);
}

CCentreKeeper::~CCentreKeeper()
{
    m_Host.GetObservers().Remove(this);
}

void CCentreKeeper::OnBeforeEvent(const SHostEvent& event)
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    if (event.eKind == EHostEvent::Reshaped && pTerrain != nullptr)
    {
        m_Before = GetGroundMeasures(*pTerrain);
    }
    else if (event.eKind == EHostEvent::Undo)
    {
        m_State = m_Host.GetUndoStack().GetStateId();
    }
}

void CCentreKeeper::OnEvent(const SHostEvent& event)
{
    const uint64_t uState = m_Host.GetUndoStack().GetStateId();
    if (event.eKind == EHostEvent::LevelChanged)
    {
        m_Moves.clear();
    }
    else if (event.eKind == EHostEvent::Reshaped && event.pGround != nullptr)
    {
        m_Moves.push_back({uState, m_Before, *event.pGround});
        Move(m_Before, *event.pGround);
    }
    else if (event.eKind == EHostEvent::Redo)
    {
        if (const SMove* pMove = Find(uState))
        {
            Move(pMove->before, pMove->act);
        }
    }
    else if (event.eKind == EHostEvent::Undo)
    {
        if (const SMove* pMove = Find(m_State))
        {
            Move(GetMeasuresAfter(pMove->before, pMove->act),
                 GetWayBack(pMove->before, pMove->act));
        }
    }
}

const CCentreKeeper::SMove* CCentreKeeper::Find(uint64_t uState) const
{
    const auto found = std::find_if(
        m_Moves.begin(), m_Moves.end(), [&](const SMove& move) { return move.uState == uState; });
    return found != m_Moves.end() ? &*found : nullptr;
}

// Without one of its own the centre is the middle, wherever that is.
void CCentreKeeper::Move(const SGroundMeasures& before, const SGroundAct& act)
{
    if (m_Symmetry.bOwnCentre)
    {
        m_Symmetry.centre = MovePlace(before, act, m_Symmetry.centre);
    }
}
