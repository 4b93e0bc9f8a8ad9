#include "editor/app/CImportPicture.h"

#include "editor/core/Words.h"

#include <QPainter>

namespace
{

constexpr int SIDE = 420; // of the picture, Qt's pixels
constexpr int LINES = 2;  // of text above and below it
constexpr int GAP = 4;
constexpr int DOT = 4; // radius of the mark on a corner

// The ends of a line say most: which corner, and what lies there.
QString FitLines(const QString& strText, int iWidth, const QFontMetrics& metrics)
{
    QStringList lines = strText.split('\n');
    for (QString& strLine : lines)
    {
        strLine = metrics.elidedText(strLine, Qt::ElideMiddle, iWidth);
    }
    return lines.join('\n');
}

} // namespace

CImportPicture::CImportPicture(QWidget* pParent)
    : QWidget(pParent)
{
    setObjectName("import-picture");
    setAccessibleName(Words("The level from above"));
}

QSize CImportPicture::sizeHint() const
{
    return {SIDE, SIDE + 2 * (LINES * fontMetrics().height() + GAP)};
}

void CImportPicture::Show(const QImage& image, const QStringList& corners)
{
    m_Image = image;
    m_Corners = corners;
    setAccessibleDescription(QStringList(corners).replaceInStrings("\n", ": ").join("; "));
    update();
}

QRect CImportPicture::PlaceImage() const
{
    const int iText = LINES * fontMetrics().height() + GAP;
    const QRect room = rect().adjusted(DOT, iText, -DOT, -iText);
    QRect place({}, m_Image.size().scaled(room.size(), Qt::KeepAspectRatio));
    place.moveCenter(room.center());
    return place;
}

void CImportPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_Image.isNull())
    {
        painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter, Words("No picture"));
        return;
    }
    const QRect place = PlaceImage();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, m_Image);
    painter.setRenderHint(QPainter::Antialiasing);
    const int iText = LINES * fontMetrics().height();
    const QPoint points[] = {
        place.topLeft(), place.topRight(), place.bottomLeft(), place.bottomRight()};
    for (qsizetype i = 0; i < m_Corners.size() && i < 4; ++i)
    {
        const bool bRight = i % 2 == 1;
        const bool bBelow = i / 2 == 1;
        // Each text has half of the width, however narrow the picture between them is.
        const QRect half(bRight ? width() / 2 : 0,
                         bBelow ? place.bottom() + GAP : place.top() - GAP - iText,
                         width() / 2,
                         iText);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(half,
                         static_cast<int>(bRight ? Qt::AlignRight : Qt::AlignLeft) |
                             static_cast<int>(bBelow ? Qt::AlignTop : Qt::AlignBottom),
                         FitLines(m_Corners[i], width() / 2 - GAP, fontMetrics()));
        // The origin is what the others are told from.
        painter.setPen(palette().color(QPalette::Base));
        painter.setBrush(palette().color(i == 0 ? QPalette::Highlight : QPalette::WindowText));
        painter.drawEllipse(points[i], DOT, DOT);
    }
}
