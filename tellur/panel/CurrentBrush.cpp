#include "tellur/panel/CurrentBrush.h"

#include "host/EditorHost.h"
#include "tellur/context/PluginContext.h"

CTellurBrush* GetCurrentBrush()
{
    return GetPluginContext()->GetCurrentBrush();
}

void ShowBrush()
{
    if (EditorHost* pHost = GetPluginContext()->GetEditorHost())
    {
        pHost->RedrawViews();
    }
}
