#include "editor/app/BrushPicture.h"

#include "editor/core/Words.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace
{

constexpr int SAMPLES = 4; // along each side of a pixel of the picture, before it is smoothed

} // namespace

QIcon MakeBrushPicture(const uint8_t* pPixels, int iSide, const QSize& size, const QWidget& widget)
{
    const double fScale = widget.devicePixelRatioF();
    const QSize real = (QSizeF(size) * fScale).toSize();
    QPixmap picture(real);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    if (pPixels != nullptr && iSide > 0)
    {
        // The view of the bytes is read while it is here and copied by scaling.
        QImage shape(pPixels, iSide, iSide, iSide, QImage::Format_Grayscale8);
        if (iSide > real.width() * SAMPLES)
        {
            shape = shape.scaled(real * SAMPLES, Qt::IgnoreAspectRatio, Qt::FastTransformation);
        }
        painter.drawImage(QRect(QPoint(0, 0), real),
                          shape.scaled(real, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    else
    {
        painter.save();
        painter.scale(fScale, fScale);
        painter.setFont(widget.font());
        painter.setPen(Qt::white);
        painter.drawText(QRect(QPoint(0, 0), size),
                         Qt::AlignCenter | Qt::TextWordWrap,
                         QString(Words(NO_IMAGE)));
        painter.restore();
    }
    painter.setPen(widget.palette().color(QPalette::Mid));
    painter.drawRect(0, 0, real.width() - 1, real.height() - 1);
    painter.end();
    picture.setDevicePixelRatio(fScale);
    // A selected brush keeps its greys; a style would tint them.
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}
