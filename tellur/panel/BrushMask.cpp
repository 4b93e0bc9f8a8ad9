#include "tellur/panel/BrushMask.h"

#include "host/EditorHost.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"

std::string BrowseForMask(const std::string& strFrom)
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    const CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    if (pBrush == nullptr || pHost == nullptr)
    {
        return "";
    }
    const std::string strPath =
        pHost->BrowseForFile(FILE_DIALOG_OPEN,
                             nullptr,
                             strFrom.c_str(),
                             "data",
                             "Bitmap files (*.dds; *.png; *.jpg; *.tga)|*.dds|*.png|*.jpg|*.tga");
    return pBrush == GetPluginContext()->GetCurrentBrush() ? strPath : "";
}

void SetBrushMask(CTellurBrush& brush, const std::string& strPath)
{
    brush.SetMask(strPath.c_str());
    GetTerraformingState().ReleasePreview();
    GetTerraformingState().ApplyOverlay(EEditOverlay::On);
    if (!brush.IsMaskEnabled())
    {
        brush.SetMaskEnabled(true);
    }
}
