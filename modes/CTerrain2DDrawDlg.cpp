#include "modes/CTerrain2DDrawDlg.h"

#include "plugin/PluginContext.h"

namespace
{

constexpr uint32_t DIALOG_ID = 2111;

} // namespace

CTerrain2DDrawDlg::CTerrain2DDrawDlg()
    : CDialog(DIALOG_ID)
{
    EnableToolTips(true);
}

bool CTerrain2DDrawDlg::OnToolTipText(SToolTipText& tip)
{
    return GetPluginContext()->GetToolTipText(tip);
}
