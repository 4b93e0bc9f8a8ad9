#include "tellur/plugin/CTellurProcessExportTerrainToSTL.h"

#include "host/Notice.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CModeExportTerrainExtent.h"

const CRTTI CTellurProcessExportTerrainToSTL::s_RTTI("CTellurProcessExportTerrainToSTL",
                                                     ENGINE_CLASS_ACTION,
                                                     nullptr,
                                                     &CEditorProcess::s_RTTI,
                                                     CRTTI::FLAG_NONE);

bool CTellurProcessExportTerrainToSTL::Execute()
{
    World* pWorld = GetPluginContext()->GetWorld();
    Terrain* pTerrain = pWorld != nullptr ? pWorld->GetTerrain() : nullptr;
    if (pTerrain == nullptr)
    {
        return false;
    }
    const std::string strPath = AskForStlFile();
    if (strPath.empty())
    {
        return false;
    }
    const CSaveNotice notice;
    if (pTerrain->ExportToSTL(strPath.c_str(), nullptr))
    {
        notice.Say(strPath.c_str());
    }
    return true;
}
