#include "tellur/functions/TerrainPick.h"

#include "host/EditorHost.h"
#include "tellur/context/PluginContext.h"

namespace
{

EditorHost* GetHost()
{
    const PluginContext* pContext = GetPluginContext();
    return pContext != nullptr ? pContext->GetEditorHost() : nullptr;
}

} // namespace

int PickTerrainUnder(ViewId view, ViewPoint point, SVec3& hit)
{
    EditorHost* pHost = GetHost();
    return pHost != nullptr ? pHost->PickTerrain(view, point, hit, 0) : PICK_MISS;
}

void RedrawAllViews()
{
    if (EditorHost* pHost = GetHost())
    {
        pHost->RedrawViews();
    }
}
