#include "editor/core/CHostLevel.h"

#include "editor/core/CChangeCount.h"
#include "editor/core/CHostHistory.h"
#include "editor/core/CHostInput.h"
#include "editor/core/CHostObservers.h"
#include "editor/core/CHostProtection.h"
#include "editor/core/CPluginRegistry.h"
#include "engine/world/CWorld.h"
#include "host/IPlugin.h"

#include <utility>

CHostLevel::CHostLevel(CWorld& world,
                       CHostHistory& history,
                       const CPluginRegistry& registry,
                       CHostInput& input,
                       CHostObservers& observers,
                       CHostProtection& protection,
                       CChangeCount& changes,
                       const std::string& strScratch)
    : m_World(world)
    , m_History(history)
    , m_Registry(registry)
    , m_Input(input)
    , m_Observers(observers)
    , m_Protection(protection)
    , m_Changes(changes)
    , m_Heights(world, history.GetStack(), *this, strScratch)
{
}

bool CHostLevel::New(uint32_t uCells, const SVec3& size)
{
    Prepare();
    const bool bMade = m_World.CreateTerrain(uCells, uCells, size);
    if (bMade)
    {
        Finish();
    }
    return bMade;
}

bool CHostLevel::Open(const char* pszPath)
{
    Prepare();
    const bool bOpen = m_World.OpenTerrain(pszPath);
    if (bOpen)
    {
        Finish();
    }
    return bOpen;
}

void CHostLevel::Take(SHeightField&& field)
{
    Prepare();
    m_World.TakeTerrain(std::move(field));
    Finish();
}

void CHostLevel::Prepare()
{
    // The drag ends while the terrain that it works on is still there.
    m_Input.EndDrag();
    m_Protection.End();
    m_History.EndStep();
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->ReleaseWorldResources();
    }
}

void CHostLevel::Finish()
{
    m_History.GetStack().Clear(); // the records belong to the terrain that is gone
    // After the stack, whose state has a new name now: that state is the saved one.
    m_Heights.SetSaved();
    m_Input.Notify(NOTIFY_LEVEL_CHANGED);
    m_Observers.Tell({.eKind = EHostEvent::LevelChanged});
}

void CHostLevel::TellReloaded()
{
    m_Input.Notify(NOTIFY_LEVEL_CHANGED);
    if (!m_bReplaced)
    {
        // The file may have other heights all the same.
        m_Observers.Tell({.eKind = EHostEvent::TerrainReloaded});
    }
}

bool CHostLevel::IsTerrainHeld() const
{
    return m_Input.IsDragging();
}

void CHostLevel::OnBeforeReplacement(bool bByPlugin)
{
    m_bReplaced = false;
    if (bByPlugin)
    {
        m_Protection.End();
        m_Input.EndDrag(false); // what it holds for a drag it is using itself at present
        m_History.EndStep();
        return;
    }
    Prepare();
}

void CHostLevel::OnReplaced(EReplacement eBy)
{
    m_bReplaced = true;
    m_Changes.Clear(); // of the terrain that is gone
    if (eBy != EReplacement::Step)
    {
        m_Observers.Tell({.eKind = EHostEvent::UndoAdded});
    }
    m_Input.Notify(NOTIFY_LEVEL_CHANGED);
    m_Observers.Tell({.eKind = EHostEvent::TerrainReloaded, .bTold = eBy != EReplacement::NewStep});
}
