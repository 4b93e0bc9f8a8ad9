#include "tellur/painting/CDrawDlgBitmap.h"

#include "framework/widgets/CFormWindow.h"
#include "host/Notice.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/DrawDlgBrowse.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IDrawDlg.h"
#include "tellur/painting/IPaintingPlugin.h"

CDrawDlgBitmap::CDrawDlgBitmap(CFormWindow& form, IDrawDlg& dialog)
    : m_Form(form)
    , m_Dialog(dialog)
{
    form.BindText(DRAW_BITMAP_FILE, m_File);
    form.OnEdit(DRAW_BITMAP_FILE, [this] { m_Dialog.UpdateControls(); });
    form.OnClick(DRAW_BITMAP_BROWSE, [this] { OnBrowse(); });
    form.OnClick(DRAW_SAVE, [this] { OnSave(); });
}

void CDrawDlgBitmap::Choose(const std::string& strPath)
{
    m_File = strPath;
    m_Form.WriteControls();
    m_Dialog.UpdateControls();
}

void CDrawDlgBitmap::Update(bool bPainting)
{
    m_Form.EnableItem(DRAW_SAVE, !m_File.empty());
    m_Form.EnableItem(DRAW_BITMAP_BROWSE, !bPainting);
}

void CDrawDlgBitmap::OnBrowse()
{
    m_Form.ReadControls();
    const std::string strPath =
        BrowseForDrawFile(FILE_DIALOG_SAVE,
                          nullptr,
                          m_File,
                          "Bitmap files (*.dds; *.png; *.jpg; *.tga)|*.dds|*.png|*.jpg|*.tga");
    if (!strPath.empty())
    {
        Choose(strPath);
    }
    m_Dialog.UpdateControls();
}

void CDrawDlgBitmap::OnSave()
{
    m_Form.ReadControls();
    CModeEditTerrainType* pMode = GetPluginPart<IPaintingPlugin>()->GetEditTerrainTypeMode();
    const CSaveNotice notice;
    if (!m_File.empty() && pMode != nullptr && pMode->SaveBitmap(m_File.c_str()))
    {
        notice.Say(m_File.c_str());
    }
}
