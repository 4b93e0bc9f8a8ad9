#pragma once

#include "framework/widgets/CDialog.h"

// The tool window "Edit bitmap on terrain", dialog 2111. Owned by the plug-in object, which makes
// it at the first command; closing it only hides it. It has its controls and tips; what they do
// joins with the paint layer.
class CTerrain2DDrawDlg : public CDialog
{
public:
    CTerrain2DDrawDlg();

protected:
    bool OnToolTipText(SToolTipText& tip) override;
};
