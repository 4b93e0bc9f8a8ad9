// What the host does when the level or its terrain becomes another one.

#include "editor/core/CEditorHost.h"
#include "engine/world/CEngineHost.h"
#include "host/IPlugin.h"

#include <utility>

bool CEditorHost::NewLevel(uint32_t uCells, const SVec3& size)
{
    PrepareLevelChange();
    return m_Engine->GetCWorld().CreateTerrain(uCells, uCells, size) && FinishLevelChange();
}

bool CEditorHost::OpenLevel(const char* pszPath)
{
    PrepareLevelChange();
    return m_Engine->GetCWorld().OpenTerrain(pszPath) && FinishLevelChange();
}

void CEditorHost::TakeLevel(SHeightField&& field)
{
    PrepareLevelChange();
    m_Engine->GetCWorld().TakeTerrain(std::move(field));
    FinishLevelChange();
}

void CEditorHost::PrepareLevelChange()
{
    EndDrag();
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->ReleaseWorldResources();
    }
}

bool CEditorHost::FinishLevelChange()
{
    m_Undo.Clear(); // the records belong to the terrain that is gone
    m_LevelHeights.SetSaved();
    NotifyLevelChanged();
    Tell({.eKind = EHostEvent::LevelChanged});
    return true;
}

void CEditorHost::NotifyLevelChanged()
{
    NotifyPlugins(NOTIFY_LEVEL_CHANGED);
}

void CEditorHost::OnBeforeReplacement(bool bByPlugin)
{
    m_bReplaced = false;
    if (bByPlugin)
    {
        EndDrag(); // what it holds for a drag it is using itself at present
        return;
    }
    PrepareLevelChange();
}

void CEditorHost::OnReplaced(bool bNewStep)
{
    m_bReplaced = true;
    m_Changes.Clear(); // of the terrain that is gone
    if (bNewStep)
    {
        Tell({.eKind = EHostEvent::UndoAdded});
    }
    NotifyLevelChanged();
    Tell({.eKind = EHostEvent::TerrainReloaded});
}
