#include "editor/core/CLevelChanges.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/IHostObserver.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

CLevelChanges::CLevelChanges(CEditorHost& host)
    : m_Host(host)
{
}

void CLevelChanges::SetSaved()
{
    ++m_Savings;
    m_Host.GetLevelHeights().SetSaved();
    m_SavedSizes = GetSizes();
    m_SavedProtection = GetProtection();
    m_KnownRevision = GetRevision();
    m_bChanged = false;
}

bool CLevelChanges::IsModified(bool bNamed) const
{
    return GetTerrain() != nullptr &&
           (m_bChanged || GetRevision() != m_KnownRevision ||
            GetProtection() != m_SavedProtection ||
            m_Host.GetLevelHeights().GetFileState() != m_Host.GetUndoStack().GetStateId() ||
            (bNamed && !IsSame(GetSizes(), m_SavedSizes)));
}

void CLevelChanges::OnBeforeEvent(const SHostEvent& event)
{
    // A press drops a drag that was never released: its heights stay and no record knows of them.
    if (event.eKind == EHostEvent::ButtonDown)
    {
        NoteChange();
    }
}

void CLevelChanges::OnEvent(const SHostEvent& event)
{
    switch (event.eKind)
    {
    case EHostEvent::ButtonDown:
    case EHostEvent::MouseMove:
        return; // the stroke is not over
    case EHostEvent::ButtonUp:
    case EHostEvent::Action:
    case EHostEvent::Command:
    case EHostEvent::Protected:
        NoteChange(); // what came with a record was known before
        return;
    default:
        break; // a step, another level, or a stroke that was taken back
    }
    m_KnownRevision = GetRevision();
}

bool CLevelChanges::IsSame(const SSizes& a, const SSizes& b)
{
    return a.uCellsX == b.uCellsX && a.uCellsZ == b.uCellsZ && a.size.x == b.size.x &&
           a.size.y == b.size.y && a.size.z == b.size.z;
}

const CTerrain* CLevelChanges::GetTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}

uint64_t CLevelChanges::GetRevision() const
{
    const CTerrain* pTerrain = GetTerrain();
    return pTerrain != nullptr ? pTerrain->GetRevision() : 0;
}

uint64_t CLevelChanges::GetProtection() const
{
    const CTerrain* pTerrain = GetTerrain();
    return pTerrain != nullptr ? pTerrain->GetProtection().GetId() : 0;
}

CLevelChanges::SSizes CLevelChanges::GetSizes() const
{
    const CTerrain* pTerrain = GetTerrain();
    return pTerrain == nullptr ? SSizes()
                               : SSizes{pTerrain->GetCellsPerSide(),
                                        pTerrain->GetCellsPerSideZ(),
                                        pTerrain->GetSizeVector()};
}

void CLevelChanges::NoteChange()
{
    m_bChanged = m_bChanged || GetRevision() != m_KnownRevision;
    m_KnownRevision = GetRevision();
}
