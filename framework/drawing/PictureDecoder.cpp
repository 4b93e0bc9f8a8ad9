#include "framework/drawing/PictureDecoder.h"

#include "framework/drawing/CPixelBuffer.h"

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtGui/QImageReader>

#include <cstring>
#include <utility>

bool DecodePicture(const uint8_t* pPng, size_t nBytes, CPixelBuffer& pixels)
{
    if (pPng == nullptr || nBytes == 0)
    {
        return false;
    }
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(pPng),
                                               static_cast<qsizetype>(nBytes));
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly))
    {
        return false;
    }
    QImageReader reader(&buffer, "png");
    const QSize size = reader.size();
    if (size.width() > MAX_PICTURE_SIDE || size.height() > MAX_PICTURE_SIDE)
    {
        return false;
    }
    const QImage image = reader.read().convertToFormat(QImage::Format_ARGB32);
    CPixelBuffer decoded;
    if (image.isNull() || !decoded.Create(image.width(), image.height(), 32))
    {
        return false;
    }
    for (int y = 0; y < image.height(); ++y)
    {
        std::memcpy(
            decoded.GetRow(y), image.constScanLine(y), static_cast<size_t>(image.width()) * 4);
    }
    pixels = std::move(decoded);
    return true;
}
