#include "tellur/panel/CTellurBitmapButton.h"

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/GreyPixels.h"
#include "host/EditorHost.h"
#include "host/Image.h"
#include "host/Log.h"
#include "tellur/context/PluginContext.h"
#include "tellur/stroke/ITellurBrush.h"

namespace
{

constexpr const char* FOLDER = "data/brushes";
constexpr const char* FILTER = "Bitmap files (*.dds;*.jpg;*.png)|*.dds|*.jpg|*.png";

} // namespace

void CTellurBitmapButton::SetBrush(ITellurBrush* pBrush)
{
    m_Brush = pBrush;
    m_Pixels.clear();
    m_CachedBits = 0;
    m_CachedImage = m_Brush != nullptr ? m_Brush->GetBitmapImage() : nullptr;
}

bool CTellurBitmapButton::MakePixels(const IImage& image, int nBitsPerPixel)
{
    const size_t nPixels = size_t{image.GetWidth()} * image.GetHeight();
    const uint8_t* pGrey = image.GetRawData();
    m_Pixels.clear();
    m_CachedImage = &image;
    m_CachedBits = nBitsPerPixel;
    const bool bShown = nBitsPerPixel == 32 || nBitsPerPixel == 16;
    return pGrey != nullptr && bShown && MakeGreyPixels(pGrey, nPixels, nBitsPerPixel, m_Pixels);
}

void CTellurBitmapButton::DrawItem(const SDrawItem& item)
{
    CDrawContext& context = *item.pContext;
    const IImage* pImage = m_Brush != nullptr ? m_Brush->GetBitmapImage() : nullptr;
    if (pImage == nullptr)
    {
        context.SetPen({});
        context.SetBrush(0);
        context.Rectangle(item.rect);
        return;
    }
    const int nBits = context.GetBitsPerPixel();
    if ((m_Pixels.empty() || pImage != m_CachedImage || nBits != m_CachedBits) &&
        !MakePixels(*pImage, nBits))
    {
        return; // a display of another depth shows nothing at all, kept on purpose
    }
    const auto iWidth = static_cast<int>(pImage->GetWidth());
    const auto iHeight = static_cast<int>(pImage->GetHeight());
    CBitmap bitmap;
    if (!bitmap.CreateBitmap(iWidth, iHeight, context.GetPlanes(), nBits, m_Pixels.data()))
    {
        LogR("[CTellurBitmapButton::DrawItem] cannot create bitmap\n");
        return;
    }
    CDrawContext memory = CDrawContext::CreateCompatible(context);
    memory.SelectBitmap(&bitmap);
    context.StretchBlt(item.rect, memory, {0, 0, iWidth, iHeight});
}

bool CTellurBitmapButton::OnLButtonDown(const SMouseEvent& /*event*/)
{
    DoDefault();
    ReleasePress(); // its release goes to the dialog
    ChooseImage();
    return true;
}

bool CTellurBitmapButton::OnKeyDown(const SKeyEvent& key)
{
    if (key.uKey != KEY_SPACE)
    {
        return false;
    }
    ChooseImage();
    return true;
}

void CTellurBitmapButton::ChooseImage()
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    ITellurBrush* pBrush = m_Brush;
    if (pBrush == nullptr || pHost == nullptr)
    {
        return;
    }
    const std::string strPath =
        pHost->BrowseForFile(FILE_DIALOG_OPEN, nullptr, pBrush->GetBitmapPath(), FOLDER, FILTER);
    if (!strPath.empty() && m_Brush == pBrush)
    {
        pBrush->LoadBitmap(strPath.c_str());
        m_Pixels.clear(); // another image may lie at the old one's address
        Invalidate();
    }
}
