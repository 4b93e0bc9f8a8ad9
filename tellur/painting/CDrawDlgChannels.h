#pragma once

#include "tellur/painting/ChannelRules.h"

class CFormWindow;
class IDrawDlg;

// The channel boxes of the draw dialog: which channels are shown and painted on. A member of the
// form whose controls it binds.
class CDrawDlgChannels
{
public:
    CDrawDlgChannels(CFormWindow& form, IDrawDlg& dialog); // both kept for as long as this lives

    void Choose(uint32_t uChannels); // EPaintChannel
    // Enables and checks the boxes after a mask (EPaintChannel). bPainting: they count now.
    void Update(uint32_t uChannels, bool bPainting);

private:
    void OnBox(EChannelBox eBox);

    CFormWindow& m_Form;
    IDrawDlg& m_Dialog;
};
