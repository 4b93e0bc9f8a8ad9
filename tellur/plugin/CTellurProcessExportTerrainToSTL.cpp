#include "tellur/plugin/CTellurProcessExportTerrainToSTL.h"

#include "host/Notice.h"
#include "host/Terrain.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CModeExportTerrainExtent.h"

const CRTTI CTellurProcessExportTerrainToSTL::s_RTTI("CTellurProcessExportTerrainToSTL",
                                                     ENGINE_CLASS_ACTION,
                                                     nullptr,
                                                     &CEditorProcess::s_RTTI,
                                                     CRTTI::FLAG_NONE);

bool CTellurProcessExportTerrainToSTL::Execute()
{
    Terrain* pTerrain = GetCurrentTerrain();
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
