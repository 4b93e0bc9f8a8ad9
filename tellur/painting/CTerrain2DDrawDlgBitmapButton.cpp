#include "tellur/painting/CTerrain2DDrawDlgBitmapButton.h"

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/GreyPixels.h"
#include "host/Image.h"
#include "host/Log.h"

CTerrain2DDrawDlgBitmapButton::CTerrain2DDrawDlgBitmapButton() = default;

CTerrain2DDrawDlgBitmapButton::~CTerrain2DDrawDlgBitmapButton() = default;

void CTerrain2DDrawDlgBitmapButton::SetImage(const IImage* pImage)
{
    m_Image.reset(IL_CreateImageFromImage(pImage, EImageFormat::Indexed8));
    m_Bits = 0;
    Invalidate();
}

void CTerrain2DDrawDlgBitmapButton::DrawItem(const SDrawItem& item)
{
    CDrawContext& context = *item.pContext;
    if (m_Image == nullptr)
    {
        context.SetPen({});
        context.SetBrush(0);
        context.Rectangle(item.rect);
        return;
    }
    const int nBits = context.GetBitsPerPixel();
    if (m_Bits != nBits)
    {
        m_Width = static_cast<int>(m_Image->GetWidth());
        m_Height = static_cast<int>(m_Image->GetHeight());
        m_Bits = nBits;
        const size_t nPixels = size_t{m_Image->GetWidth()} * m_Image->GetHeight();
        MakeGreyPixels(m_Image->GetRawData(), nPixels, nBits, m_Pixels);
    }
    CBitmap bitmap;
    if (m_Pixels.empty() ||
        !bitmap.CreateBitmap(m_Width, m_Height, context.GetPlanes(), nBits, m_Pixels.data()))
    {
        LogR("[CTerrain2DDrawDlgBitmapButton::DrawItem] cannot create bitmap\n");
        return;
    }
    CDrawContext memory = CDrawContext::CreateCompatible(context);
    memory.SelectBitmap(&bitmap);
    context.StretchBlt(item.rect, memory, {0, 0, m_Width, m_Height});
}
