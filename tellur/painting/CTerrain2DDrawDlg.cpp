#include "tellur/painting/CTerrain2DDrawDlg.h"

#include "host/ModeManager.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IPaintingPlugin.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"
#include "tellur/painting/PaintLayer.h"

namespace
{

// The buttons that are an operation of the user and no more.
struct SUserCommand
{
    uint32_t uButton;
    void (ITerrain2DDrawDlgUser::*pCommand)();
};

constexpr SUserCommand USER_COMMANDS[] = {{DRAW_UNDO, &ITerrain2DDrawDlgUser::Undo},
                                          {DRAW_REDO, &ITerrain2DDrawDlgUser::Redo}};

} // namespace

CTerrain2DDrawDlg::CTerrain2DDrawDlg()
    : CDialog(DRAW_DIALOG)
    , m_Bitmap(*this, *this)
    , m_Layer(*this, *this)
    , m_Brush(*this, *this)
    , m_Extent(*this, *this)
    , m_Channels(*this, *this)
    , m_Functions(*this, *this)
    , m_Colors(*this, *this)
{
    OnClick(DRAW_EDIT, [this] { SwitchEditing(); });
    for (const SUserCommand& command : USER_COMMANDS)
    {
        OnClick(command.uButton,
                [this, &command]
                {
                    if (ITerrain2DDrawDlgUser* pUser = NeedUser())
                    {
                        (pUser->*command.pCommand)();
                    }
                });
    }
    EnableToolTips(true);
}

void CTerrain2DDrawDlg::OnInit()
{
    m_Layer.SetupSlider();
    m_Brush.SetupSliders();
    m_Extent.SetupSlider();
    WriteControls();
    UpdateControls();
}

ITerrain2DDrawDlgUser* CTerrain2DDrawDlg::NeedUser()
{
    if (m_User == nullptr)
    {
        UpdateControls();
    }
    return m_User;
}

void CTerrain2DDrawDlg::SetUser(ITerrain2DDrawDlgUser* pUser)
{
    m_User = pUser;
    if (m_User == nullptr)
    {
        return;
    }
    m_Brush.Take(*m_User);
    m_Layer.Take(*m_User);
    WriteControls();
    UpdateControls();
}

void CTerrain2DDrawDlg::UpdateControls()
{
    // What is being typed counts already, since the buttons go by it.
    ReadControls();
    const bool bPainting = IsPaintingModeOn();
    EnableItem(DRAW_EDIT, !GetBitmapFile().empty());
    CheckItem(DRAW_EDIT, bPainting ? CHECK_ON : CHECK_OFF);
    m_Bitmap.Update(bPainting);
    m_Extent.Update();
    if (m_User == nullptr)
    {
        return;
    }
    m_Channels.Update(m_User->GetChannelMask(), bPainting);
    m_Colors.ShowChannels(m_User->GetChannelMask());
    m_Functions.Update(*m_User, bPainting);
}

void CTerrain2DDrawDlg::SwitchEditing()
{
    auto* pPlugin = GetPluginPart<IPaintingPlugin>();
    ReadControls();
    if (IsPaintingModeOn())
    {
        pPlugin->SetMode(NO_MODE, 0);
    }
    else
    {
        pPlugin->SetMode(pPlugin->GetEditTerrainTypeModeId(), 0);
        // The mode has read its bitmap, whose palette may bring other colours.
        LoadColours();
    }
    UpdateControls();
    m_Extent.ShowText(); // pixels count from now on, or have another width
}

void CTerrain2DDrawDlg::SetExtentPointer(float* pExtent)
{
    m_Extent.SetPointer(pExtent);
}

void CTerrain2DDrawDlg::LoadColours()
{
    m_Colors.Load();
}

void CTerrain2DDrawDlg::SetBrushShape(const IImage* pImage, const char* pszPath)
{
    m_Brush.SetShape(pImage, pszPath);
}

void CTerrain2DDrawDlg::ChooseBitmapFile(const std::string& strPath)
{
    m_Bitmap.Choose(strPath);
}

bool CTerrain2DDrawDlg::ChooseBrushShape(const std::string& strPath)
{
    return m_Brush.ChooseShape(strPath);
}

bool CTerrain2DDrawDlg::ChooseFunction(const char* pszName)
{
    return m_Functions.Choose(pszName);
}

void CTerrain2DDrawDlg::ChooseColor(const float* pColor)
{
    m_Colors.Choose(pColor);
}

void CTerrain2DDrawDlg::ChooseChannelMask(uint32_t uChannels)
{
    m_Channels.Choose(uChannels);
}

void CTerrain2DDrawDlg::ChooseExtent(float fExtent)
{
    m_Extent.Choose(fExtent);
}

bool CTerrain2DDrawDlg::OnToolTipText(SToolTipText& tip)
{
    return GetPluginContext()->GetToolTipText(tip);
}
