#include "tellur/panel/CTellurBitmapButton.h"

#include "framework/drawing/CDrawContext.h"
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
    m_Pixels = {};
    m_CachedImage = m_Brush != nullptr ? m_Brush->GetBitmapImage() : nullptr;
}

void CTellurBitmapButton::DrawItem(const SDrawItem& item)
{
    CDrawContext& context = *item.pContext;
    const IImage* pImage = m_Brush != nullptr ? m_Brush->GetBitmapImage() : nullptr;
    if (pImage == nullptr)
    {
        DrawNoPicture(context, item.rect);
        return;
    }
    const int nBits = context.GetBitsPerPixel();
    if (pImage->GetRawData() == nullptr || (nBits != 32 && nBits != 16))
    {
        return; // a display of another depth shows nothing at all, kept on purpose
    }
    if (pImage != m_CachedImage)
    {
        m_Pixels = {};
        m_CachedImage = pImage;
    }
    if (!DrawGreyPixels(context, item.rect, *pImage, m_Pixels))
    {
        LogR("[CTellurBitmapButton::DrawItem] cannot create bitmap\n");
    }
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
    // The button may have another brush by the time the dialog is closed.
    if (!strPath.empty() && m_Brush == pBrush)
    {
        pBrush->LoadBitmap(strPath.c_str());
        m_Pixels = {}; // another image may lie at the old one's address
        Invalidate();
    }
}
