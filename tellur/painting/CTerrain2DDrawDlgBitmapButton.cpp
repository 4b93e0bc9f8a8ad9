#include "tellur/painting/CTerrain2DDrawDlgBitmapButton.h"

#include "host/Image.h"
#include "host/Log.h"

CTerrain2DDrawDlgBitmapButton::CTerrain2DDrawDlgBitmapButton() = default;

CTerrain2DDrawDlgBitmapButton::~CTerrain2DDrawDlgBitmapButton() = default;

void CTerrain2DDrawDlgBitmapButton::SetImage(const IImage* pImage)
{
    m_Image.reset(IL_CreateImageFromImage(pImage, EImageFormat::Indexed8));
    m_Pixels = {};
    Invalidate();
}

void CTerrain2DDrawDlgBitmapButton::DrawItem(const SDrawItem& item)
{
    if (m_Image == nullptr)
    {
        DrawNoPicture(*item.pContext, item.rect);
    }
    else if (!DrawGreyPixels(*item.pContext, item.rect, *m_Image, m_Pixels))
    {
        LogR("[CTerrain2DDrawDlgBitmapButton::DrawItem] cannot create bitmap\n");
    }
}
