#include "tellur/painting/CDrawDlgChannels.h"

#include "framework/widgets/CButton.h"
#include "framework/widgets/CFormWindow.h"
#include "host/IPaintLayer.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IDrawDlg.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"

namespace
{

uint32_t GetBoxId(size_t iBox)
{
    return DRAW_RGB_VISIBLE + static_cast<uint32_t>(iBox);
}

} // namespace

CDrawDlgChannels::CDrawDlgChannels(CFormWindow& form, IDrawDlg& dialog)
    : m_Form(form)
    , m_Dialog(dialog)
{
    for (size_t i = 0; i < CHANNEL_BOXES; ++i)
    {
        form.OnClick(GetBoxId(i), [this, i] { OnBox(static_cast<EChannelBox>(i)); });
    }
}

void CDrawDlgChannels::Choose(uint32_t uChannels)
{
    if (ITerrain2DDrawDlgUser* pUser = m_Dialog.GetUser())
    {
        pUser->SetChannelMask(uChannels);
    }
    m_Dialog.UpdateControls();
}

void CDrawDlgChannels::Update(uint32_t uChannels, bool bPainting)
{
    const bool bBoxes = (uChannels & PAINT_FREE_COLORS) != 0 && bPainting;
    for (size_t i = 0; i < CHANNEL_BOXES; ++i)
    {
        const bool bSet = (uChannels & GetChannelBit(static_cast<EChannelBox>(i))) != 0;
        m_Form.EnableItem(GetBoxId(i), bBoxes);
        m_Form.CheckItem(GetBoxId(i), bBoxes && bSet ? CHECK_ON : CHECK_OFF);
    }
}

void CDrawDlgChannels::OnBox(EChannelBox eBox)
{
    if (ITerrain2DDrawDlgUser* pUser = m_Dialog.GetUser())
    {
        const uint32_t uChannels = pUser->GetChannelMask();
        const uint32_t uClicked = GetClickedMask(uChannels, eBox);
        if (uClicked != uChannels)
        {
            pUser->SetChannelMask(uClicked);
        }
    }
    m_Dialog.UpdateControls();
}
