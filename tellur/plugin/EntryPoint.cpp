// The library's entry: the one exported function, the one plug-in object, and the library's place
// among the resource modules while it is loaded.

#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "host/Export.h"
#include "tellur/plugin/IPluginImpl.h"
#include "tellur/resources/PluginResources.h"

namespace
{

struct SLibraryResources
{
    SLibraryResources() { RegisterResourceModule(&GetPluginResources()); }

    ~SLibraryResources() { UnregisterResourceModule(&GetPluginResources()); }

    SLibraryResources(const SLibraryResources&) = delete;
    SLibraryResources& operator=(const SLibraryResources&) = delete;
};

const SLibraryResources g_Resources;
IPluginImpl g_Plugin;

} // namespace

extern "C" TELLUR_API IPlugin*
InitializeMe(EditorHost* pEditorHost, uint32_t uPlugin, EngineHost* pEngineHost)
{
    return g_Plugin.Attach(pEditorHost, uPlugin, pEngineHost);
}
