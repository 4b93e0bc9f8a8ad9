#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/DrawLimits.h"
#include "framework/drawing/PixelFormat.h"
#include "host/Log.h"

#include <QtGui/QFontInfo>
#include <QtGui/QFontMetrics>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <cmath>

namespace
{

// pszWhere names the operation in the line.
bool CanDrawText(const char* pszWhere, const char* pszUtf8)
{
    const char* pszFault = pszUtf8 == nullptr ? "text is null" : nullptr;
    if (pszFault == nullptr &&
        qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
    {
        pszFault = "no application to take the font from";
    }
    if (pszFault != nullptr)
    {
        CrashLog("[CDrawContext::%s] %s\n", pszWhere, pszFault);
    }
    return pszFault == nullptr;
}

// In device pixels, so that a context over any buffer gives the same text whatever the screen is.
QFont MakeFont(double fScale)
{
    QFont font = QGuiApplication::font();
    const double fPixels = std::round(QFontInfo(font).pixelSize() * fScale);
    font.setPixelSize(static_cast<int>(std::clamp(fPixels, 1.0, 1000.0)));
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

QString MakeLine(const char* pszUtf8)
{
    QString strLine = QString::fromUtf8(pszUtf8);
    for (QChar& character : strLine)
    {
        if (character == u'\n' || character == u'\r' || character == u'\t')
        {
            character = u' ';
        }
    }
    return strLine;
}

SRect PlaceText(const SRect& rect, SSize size, uint32_t uFlags)
{
    const int iLeft =
        (uFlags & TEXT_CENTER) != 0 ? rect.left + (rect.GetWidth() - size.cx) / 2 : rect.left;
    const int iTop =
        (uFlags & TEXT_VCENTER) != 0 ? rect.top + (rect.GetHeight() - size.cy) / 2 : rect.top;
    return {iLeft, iTop, iLeft + size.cx, iTop + size.cy};
}

} // namespace

bool CDrawContext::DrawText(const char* pszUtf8, const SRect& rect, uint32_t uFlags)
{
    if (!CanDrawText("DrawText", pszUtf8))
    {
        return false;
    }
    const QFont font = MakeFont(m_Scale);
    const QFontMetrics metrics(font);
    const QString strLine = MakeLine(pszUtf8);
    const SRect area = LimitRect(rect);
    const SSize size = {metrics.horizontalAdvance(strLine), metrics.height()};
    const SRect text = PlaceText(area, size, uFlags);
    const SRect box = text.Intersect(area).Intersect(GetClipBox());
    if (box.IsEmpty())
    {
        return true;
    }
    // The font engine gives how far each pixel is covered; colours are mixed here, at every depth
    // alike.
    QImage coverage(box.GetWidth(), box.GetHeight(), QImage::Format_Grayscale8);
    if (coverage.isNull())
    {
        CrashLog("[CDrawContext::DrawText] no memory for the text\n");
        return false;
    }
    coverage.fill(Qt::black);
    QPainter painter(&coverage);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(text.left - box.left, text.top - box.top + metrics.ascent(), strLine);
    painter.end();
    if ((uFlags & TEXT_TRANSPARENT) == 0)
    {
        FillRect(box, m_State.uBack);
    }
    BlendCoverage(box, coverage.constBits(), static_cast<size_t>(coverage.bytesPerLine()));
    return true;
}

void CDrawContext::BlendCoverage(const SRect& box, const uint8_t* pCoverage, size_t uStride)
{
    CPixelBuffer& target = *GetTarget();
    const int nBits = target.GetBitsPerPixel();
    const int nBytes = nBits / 8;
    for (int y = box.top; y < box.bottom; ++y, pCoverage += uStride)
    {
        uint8_t* pPixel = GetPixelOf(target.GetRow(y), box.left, nBits);
        for (int i = 0; i < box.GetWidth(); ++i, pPixel += nBytes)
        {
            if (pCoverage[i] != 0)
            {
                BlendPixel(pPixel, m_State.uText, pCoverage[i], nBits);
            }
        }
    }
}

SSize CDrawContext::GetTextSize(const char* pszUtf8) const
{
    if (!CanDrawText("GetTextSize", pszUtf8))
    {
        return {};
    }
    const QFontMetrics metrics(MakeFont(m_Scale));
    return {metrics.horizontalAdvance(MakeLine(pszUtf8)), metrics.height()};
}
