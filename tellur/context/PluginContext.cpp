#include "tellur/context/PluginContext.h"

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
