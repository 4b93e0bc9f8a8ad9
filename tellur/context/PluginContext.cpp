#include "tellur/context/PluginContext.h"

#include "host/World.h"

#include <utility>

namespace
{

PluginContext* g_pContext = nullptr;

} // namespace

PluginContext* GetPluginContext()
{
    return g_pContext;
}

PluginContext* SetPluginContext(PluginContext* pContext)
{
    return std::exchange(g_pContext, pContext);
}

World* GetCurrentWorld()
{
    return g_pContext != nullptr ? g_pContext->GetWorld() : nullptr;
}

Terrain* GetCurrentTerrain()
{
    World* pWorld = GetCurrentWorld();
    return pWorld != nullptr ? pWorld->GetTerrain() : nullptr;
}
