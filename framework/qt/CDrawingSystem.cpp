#include "framework/qt/CDrawingSystem.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace
{

// In device pixels, so that a context over any buffer gives the same text whatever the screen is.
QFont MakeFont(double fScale)
{
    QFont font = QGuiApplication::font();
    const double fPixels = std::round(QFontInfo(font).pixelSize() * fScale);
    font.setPixelSize(static_cast<int>(std::clamp(fPixels, 1.0, 1000.0)));
    // Coverage is one value a pixel, not one for each of its colours.
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

QPalette::ColorRole GetRole(ESystemColor eColor)
{
    switch (eColor)
    {
    case ESystemColor::ButtonFace:
        return QPalette::Button;
    case ESystemColor::ButtonShadow:
        return QPalette::Dark;
    case ESystemColor::ButtonHighlight:
        return QPalette::Light;
    case ESystemColor::Light3D:
        return QPalette::Midlight;
    case ESystemColor::DarkShadow:
        return QPalette::Shadow;
    case ESystemColor::ButtonText:
        return QPalette::ButtonText;
    case ESystemColor::Window:
        return QPalette::Base;
    case ESystemColor::Highlight:
        return QPalette::Highlight;
    case ESystemColor::HighlightText:
        return QPalette::HighlightedText;
    case ESystemColor::WindowText:
    case ESystemColor::GrayText:
        break;
    }
    return QPalette::Text;
}

} // namespace

bool CDrawingSystem::IsReady() const
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

ColorRef CDrawingSystem::GetPaletteColor(ESystemColor eColor) const
{
    const QPalette::ColorGroup eGroup =
        eColor == ESystemColor::GrayText ? QPalette::Disabled : QPalette::Active;
    const QColor color = QGuiApplication::palette().color(eGroup, GetRole(eColor));
    return MakeColor(static_cast<uint8_t>(color.red()),
                     static_cast<uint8_t>(color.green()),
                     static_cast<uint8_t>(color.blue()));
}

SSize CDrawingSystem::GetTextSize(const char* pszUtf8, double fScale) const
{
    const QFontMetrics metrics(MakeFont(fScale));
    return {metrics.horizontalAdvance(MakeLine(pszUtf8)), metrics.height()};
}

void CDrawingSystem::CoverText(
    const char* pszUtf8, double fScale, const SRect& box, uint8_t* pCoverage, size_t uStride) const
{
    // The image has no pixels of its own: it draws into the caller's.
    QImage coverage(pCoverage,
                    box.GetWidth(),
                    box.GetHeight(),
                    static_cast<qsizetype>(uStride),
                    QImage::Format_Grayscale8);
    const QFont font = MakeFont(fScale);
    QPainter painter(&coverage);
    painter.setFont(font);
    // White on black: the brightness of a pixel is how far the text covers it.
    painter.setPen(Qt::white);
    painter.drawText(-box.left, QFontMetrics(font).ascent() - box.top, MakeLine(pszUtf8));
}
